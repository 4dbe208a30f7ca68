// SPDX-License-Identifier: GPL-3.0-or-later
// Settings sent to a simulated meter over a line that loses, delays and damages frames, to a meter that
// refuses writes and swallows them, each row judged by what the meter's memory holds afterwards. On virtual
// time.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vlt::test {

struct WriteSoakPlan {
  std::int64_t writes = 0;    // at least so many rows are written
  double fault_share = 0.01;  // of each kind of trouble, by rows
  unsigned seed = 1;
  bool events = false;  // paced by what arrives
};

struct WriteSoakResult {
  std::int64_t writes = 0;  // rows that something was sent for
  std::int64_t batches = 0;
  std::int64_t faults = 0;  // rows that met one
  std::int64_t stored = 0;
  std::int64_t refused = 0;
  std::int64_t not_proven = 0;
  std::int64_t not_sent = 0;        // rows that did not fit the meter
  std::int64_t wrongly_stored = 0;  // called stored, and the meter holds something else
  std::int64_t unexplained = 0;     // not stored, and no reason told
};

WriteSoakResult SoakWrites(const WriteSoakPlan& plan);

struct RestoreSoakResult {
  std::int64_t restores = 0;
  std::int64_t equal = 0;         // the meter's registers are those of the restore point
  std::int64_t called_equal = 0;  // and it was told so
  std::int64_t rows = 0;          // sent in all of them
  std::vector<std::string> left;  // the first rows that were not equal, for a look
};

// Meters of all shapes, set to one state, kept, set to another (also in unit system and path mode), and
// restored.
RestoreSoakResult SoakRestores(std::int64_t restores, unsigned seed = 1, bool events = false);

}  // namespace vlt::test
