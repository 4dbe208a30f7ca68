// SPDX-License-Identifier: GPL-3.0-or-later
// Sets, comparisons, snapshots and restores with undo by the companion's words, on a line where each request
// may meet a fault, judged by what the meter's memory holds. On virtual time.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vlt::test {

enum class RoundKind : std::uint8_t { kSet, kCompare, kSnapshot, kRestore };
inline constexpr std::size_t kRoundKinds = 4;

struct RoundPlan {
  bool events = false;  // paced by what arrives
  // By kind. A restore is followed by another one that undoes it.
  std::array<std::int64_t, kRoundKinds> rounds{};
  unsigned seed = 1;
  // Of each kind of fault, by requests; each round has its own share between them.
  double least_share = 0.01;
  double most_share = 0.05;
  int slow_ms = 0;  // and so late comes each reply
};

struct RoundCount {
  std::int64_t rounds = 0;
  std::int64_t good = 0;          // told as done: stored, equal, whole, restored
  std::int64_t wrong_values = 0;  // told or written, and never held or wanted
  std::int64_t false_good = 0;    // told as done, and the memory says otherwise
  std::int64_t wrong_points = 0;  // restore points with a value that the meter did not hold
  std::int64_t at_odds = 0;       // the status, the text and the events say different things
};

struct RoundResult {
  std::array<RoundCount, kRoundKinds> of;
  std::int64_t requests = 0;
  std::int64_t faults = 0;
  std::vector<std::string> told;  // of the first rounds that were not right, for a look

  const RoundCount& Of(RoundKind kind) const { return of.at(static_cast<std::size_t>(kind)); }
  bool Right() const;
};

RoundResult SoakRounds(const RoundPlan& plan);

}  // namespace vlt::test
