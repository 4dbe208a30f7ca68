// SPDX-License-Identifier: GPL-3.0-or-later
// Persons who walk through the program at random, on meters whose keys somebody else presses (bench_walk
// takes a hundred thousand of them).
#include <gtest/gtest.h>

#include "bench/soak/guard_walk.h"

namespace vlt::test {
namespace {

TEST(GuardWalk, NothingReachesAMeterInAnotherUnitThanItWasShownIn) {
  std::int64_t writes = 0;
  std::int64_t refusals = 0;
  for (unsigned seed = 1; seed <= 150; ++seed) {
    const WalkResult result = Walk(seed, RandomWalk(seed, 40));
    writes += result.writes;
    refusals += result.refusals;
    std::string script;
    for (const std::string& line : result.script) script += line + "\n";
    EXPECT_EQ(result.fault, "") << "seed " << seed << "\n" << script;
  }
  EXPECT_GT(writes, 300);
  EXPECT_GT(refusals, 2);
}

}  // namespace
}  // namespace vlt::test
