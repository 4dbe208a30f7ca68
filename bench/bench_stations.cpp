// SPDX-License-Identifier: GPL-3.0-or-later
// Several stations in turn, on virtual time: what a long run costs, and that no value is shown or logged
// under a station or an item that did not send it.
//
//   bench_stations [POLLS]       1,000,000 polls of 31 stations without it, a fault in 2 % of the answers
//
// Then a day of 31 stations with the shortest cycle that they may have. Exit status 1 when a value is wrong
// or memory grows.
#include <cstdio>

#include "bench/figures.h"
#include "bench/soak/station_soak.h"

namespace {

using namespace vlt::test;
using namespace vlt::bench;

constexpr int kStations = 31;
constexpr int kShortestCycle = 16;  // seconds: more than 500 ms a station
constexpr std::int64_t kPassesOfADay = 24 * 3600 / kShortestCycle;
constexpr double kFaultShare = 0.02;

bool Soak(std::int64_t polls) {
  const Stopwatch watch;
  const SoakResult r =
      SoakStations({.passes = (polls + kStations - 1) / kStations, .fault_share = kFaultShare});
  std::printf(
      "%lld polls, %lld bad answers: %lld values right, %lld told as missing, %lld of another station, "
      "%lld stale, %lld unreadable, %lld differ on the screen\n",
      static_cast<long long>(r.polls), static_cast<long long>(r.faults), static_cast<long long>(r.good),
      static_cast<long long>(r.missing), static_cast<long long>(r.foreign), static_cast<long long>(r.stale),
      static_cast<long long>(r.unreadable), static_cast<long long>(r.screen_differs));
  std::printf("of the other channel of the same station, which no frame tells: %lld\n",
              static_cast<long long>(r.swapped));
  std::printf("%.0f s of processor time\n", watch.UsedMs() / 1e3);
  return r.foreign + r.stale + r.unreadable + r.screen_differs == 0;
}

bool Day() {
  MemoryMeter memory;
  double begun = 0;
  double ended = 0;
  const auto weigh = [&](std::int64_t pass) {
    if (pass == 100) memory.Begin(), begun = ProcessorMs();
    if (pass == kPassesOfADay) memory.End(), ended = ProcessorMs();
  };
  const SoakResult r = SoakStations(
      {.passes = kPassesOfADay, .cycle_seconds = kShortestCycle, .second_channel = 0, .after_pass = weigh});
  std::printf("%.2f hours, a pass each %d s: %lld records in %d file(s), %lld values, %lld missing\n",
              static_cast<double>(r.elapsed_ms) / 3.6e6, kShortestCycle, static_cast<long long>(r.passes),
              r.files, static_cast<long long>(r.good), static_cast<long long>(r.missing));
  std::printf("%.2f ms of processor time a pass, memory %+ld bytes\n",
              (ended - begun) / static_cast<double>(kPassesOfADay - 100), memory.Growth());
  return memory.IsFlat() && r.passes >= kPassesOfADay && r.missing == 0 && r.good == r.passes * kStations * 2;
}

}  // namespace

int main(int argc, char** argv) {
  const bool right = Soak(Argument(argc, argv, 1, 1'000'000));
  return Day() && right ? 0 : 1;
}
