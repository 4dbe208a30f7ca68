// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/figures.h"

#if __has_include(<malloc.h>)
#include <malloc.h>
#endif

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace vlt::bench {
namespace {

constexpr long kGrowthAllowed = 16L * 1024;

std::size_t BytesInUse() {
#ifdef __GLIBC__
  return mallinfo2().uordblks;
#else
  return 0;
#endif
}

}  // namespace

double NowMs() {
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now().time_since_epoch())
      .count();
}

double ProcessorMs() { return 1e3 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

double Median(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

double MedianMs(int runs, const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < runs; ++i) {
    const Stopwatch watch;
    work();
    times.push_back(watch.Ms());
  }
  return Median(std::move(times));
}

void PrintRatio(const char* base, double base_ms, const char* what, double what_ms, int decimals) {
  std::printf("%s %.*f ms, %s %.*f ms, ratio %.2f\n", base, decimals, base_ms, what, decimals, what_ms,
              what_ms / base_ms);
}

void MemoryMeter::Begin() { early_ = BytesInUse(); }
void MemoryMeter::End() { late_ = BytesInUse(); }
bool MemoryMeter::IsFlat() const { return Growth() < kGrowthAllowed; }

std::int64_t Argument(int argc, char** argv, int at, std::int64_t otherwise) {
  return argc > at ? std::atoll(argv[at]) : otherwise;
}

const char* PacingName(bool events) { return events ? "event timing" : "pattern"; }

}  // namespace vlt::bench
