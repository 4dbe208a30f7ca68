// SPDX-License-Identifier: GPL-3.0-or-later
// Sets, comparisons, snapshots and restores with undo by the companion's words over lines with every kind of
// fault, on virtual time, in the pattern and then in event timing: that no value is wrong, nothing is told as
// done that is not, and no restore point tells another value than the meter held.
//
//   bench_rounds [SETS [COMPARES [SNAPSHOTS [RESTORES [SEED]]]]]     10,000 500 200 200 1 without them
//
// Exit status 1 when one of these is not so.
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

#include "bench/figures.h"
#include "bench/soak/round_soak.h"

int main(int argc, char** argv) {
  using namespace vlt::bench;
  using namespace vlt::test;
  RoundPlan plan{.rounds = {10'000, 500, 200, 200}};
  for (int i = 1; i < argc && i <= static_cast<int>(kRoundKinds); ++i) {
    plan.rounds.at(static_cast<std::size_t>(i) - 1) = Argument(argc, argv, i, 0);
  }
  plan.seed = static_cast<unsigned>(Argument(argc, argv, 5, plan.seed));
  constexpr const char* kNames[] = {"sets", "compares", "snapshots", "restores"};
  bool right = true;
  for (const bool events : {false, true}) {
    plan.events = events;
    const Stopwatch watch;
    const RoundResult result = SoakRounds(plan);
    std::printf("%s: %lld requests, %lld with a fault; %.0f s of processor time\n", PacingName(events),
                static_cast<long long>(result.requests), static_cast<long long>(result.faults),
                watch.UsedMs() / 1e3);
    for (std::size_t i = 0; i < kRoundKinds; ++i) {
      const RoundCount& of = result.of.at(i);
      std::printf(
          "  %6lld %-9s %6lld told as done, %lld wrong values, %lld falsely done, %lld wrong points, "
          "%lld at odds\n",
          static_cast<long long>(of.rounds), kNames[i], static_cast<long long>(of.good),
          static_cast<long long>(of.wrong_values), static_cast<long long>(of.false_good),
          static_cast<long long>(of.wrong_points), static_cast<long long>(of.at_odds));
    }
    for (const std::string& told : result.told) std::printf("    %s\n", told.c_str());
    right = right && result.Right();
  }
  return right ? EXIT_SUCCESS : EXIT_FAILURE;
}
