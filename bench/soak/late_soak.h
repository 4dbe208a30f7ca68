// SPDX-License-Identifier: GPL-3.0-or-later
// Many exchanges with meters that answer late, not at all, or damaged, on virtual time.
// Before each one the meters get new contents, so that every reply tells to which question it was given.
#pragma once

#include <cstdint>

namespace vlt::test {

struct LateSoak {
  std::int64_t exchanges = 0;
  std::uint32_t seed = 1;
  bool events = false;  // paced by what arrives
  double late_share = 0.3;
  double lost_share = 0.05;
  double damaged_share = 0.05;
  int latest_ms = 1'050;  // within the patience behind the shortest limit
};

struct LateSoakResult {
  std::int64_t good = 0;      // read what the meter held when it was asked
  std::int64_t missing = 0;   // told as without a valid reply
  std::int64_t wrong = 0;     // read what another register, station or moment held
  std::int64_t unproven = 0;  // writes told as proven that the meter has not done
  std::int64_t late = 0;      // requests that were answered late
};

LateSoakResult SoakLateReplies(const LateSoak& soak);

}  // namespace vlt::test
