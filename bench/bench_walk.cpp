// SPDX-License-Identifier: GPL-3.0-or-later
// Persons who walk through the program at random, on virtual time: that no value reaches a meter in another
// unit than it was shown in, and no write a channel that the meter has not.
//
//   bench_walk [WALKS [FIRST_SEED [STEPS]]]     100,000 walks of 40 steps without them
//
// A walk with a fault is shortened and printed as a script. Exit status 1 when there was one.
#include <cstdio>
#include <cstdlib>

#include "bench/figures.h"
#include "bench/soak/guard_walk.h"

int main(int argc, char** argv) {
  using namespace vlt::bench;
  using namespace vlt::test;
  constexpr int kWalks = 100'000;
  constexpr int kSteps = 40;
  constexpr int kMostFaults = 5;
  const int walks = static_cast<int>(Argument(argc, argv, 1, kWalks));
  const auto first = static_cast<unsigned>(Argument(argc, argv, 2, 1));
  const int steps = static_cast<int>(Argument(argc, argv, 3, kSteps));
  std::int64_t writes = 0;
  std::int64_t refusals = 0;
  int faults = 0;
  int walked = 0;
  for (; walked < walks && faults < kMostFaults; ++walked) {
    const unsigned seed = first + static_cast<unsigned>(walked);
    const auto walk = RandomWalk(seed, steps);
    const WalkResult result = Walk(seed, walk);
    writes += result.writes;
    refusals += result.refusals;
    if (result.fault.empty()) continue;
    ++faults;
    const WalkResult shortest = Walk(seed, Shortened(seed, walk));
    std::printf("seed %u: %s\n", seed, shortest.fault.c_str());
    for (const std::string& line : shortest.script) std::printf("  %s\n", line.c_str());
  }
  std::printf("%d walks of %d steps: %lld writes judged, %lld sets refused, %d faults\n", walked, steps,
              static_cast<long long>(writes), static_cast<long long>(refusals), faults);
  return faults == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
