// SPDX-License-Identifier: GPL-3.0-or-later
// A person who walks through the program at random, on meters whose keys somebody else presses: pages opened
// and hidden, values typed, read and set, units and modes changed, meters exchanged, lines lost, settings
// restored. What reaches the meters is judged by their memory: a number must mean there what the unit beside
// its entry said, and nothing may be written to a channel or output that the meter has not. On virtual time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vlt::test {

struct WalkStep {
  int kind = 0;
  unsigned dice = 0;  // all that is random in the step
};

struct WalkResult {
  // What was found wrong first; empty when nothing was.
  std::string fault;
  // The steps as a script of the companion; what a person at the meter does stands in its comments.
  std::vector<std::string> script;
  std::int64_t writes = 0;    // that were judged
  std::int64_t refusals = 0;  // sets of which nothing was sent
};

std::vector<WalkStep> RandomWalk(unsigned seed, int steps);
// The seed also decides which meters there are.
WalkResult Walk(unsigned seed, const std::vector<WalkStep>& steps);
// A faulty walk without the steps that its fault does not need.
std::vector<WalkStep> Shortened(unsigned seed, std::vector<WalkStep> steps);

}  // namespace vlt::test
