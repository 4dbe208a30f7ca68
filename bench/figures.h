// SPDX-License-Identifier: GPL-3.0-or-later
// What every bench measures with: time, processor time, memory, medians and ratios.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

namespace vlt::bench {

// Milliseconds of a clock that never goes back, the same one for all processes of the machine.
double NowMs();
// Milliseconds of processor time that this process has used.
double ProcessorMs();

// Time and processor time since it was made.
class Stopwatch {
 public:
  double Ms() const { return NowMs() - start_; }
  double UsedMs() const { return ProcessorMs() - used_; }
  // Percent of a core.
  double Share() const { return 100 * UsedMs() / Ms(); }

 private:
  double start_ = NowMs();
  double used_ = ProcessorMs();
};

// The middle one; of an even count the upper of the two. There must be one.
double Median(std::vector<double> values);
// Of so many runs of `work`, in milliseconds.
double MedianMs(int runs, const std::function<void()>& work);

// "NAME A ms, NAME B ms, ratio R", the second one in units of the first.
void PrintRatio(const char* base, double base_ms, const char* what, double what_ms, int decimals = 2);

// Whether memory grows from one moment to another.
class MemoryMeter {
 public:
  // The moment from which on it may not grow.
  void Begin();
  // The last moment that counts.
  void End();
  // Bytes between both; 0 on a machine that does not tell.
  long Growth() const { return static_cast<long>(late_) - static_cast<long>(early_); }
  // No more than the heap's own play.
  bool IsFlat() const;

 private:
  std::size_t early_ = 0;
  std::size_t late_ = 0;
};

// The number at a place of the command line, or another one where there is none.
std::int64_t Argument(int argc, char** argv, int at, std::int64_t otherwise);

// How exchanges are paced, in the order in which benches try both: of `events`.
const char* PacingName(bool events);

}  // namespace vlt::bench
