// SPDX-License-Identifier: GPL-3.0-or-later
// What went over the line since the program started, and what one operation of a window had of it.
#pragma once

#include <cstdint>
#include <string>

namespace vlt {

// Counted by each exchange with the meter.
struct LineTally {
  std::int64_t exchanges = 0;
  std::int64_t failed = 0;
  std::string first_failure;  // text of the first failed exchange since it was last emptied
};

// Told when an operation has ended.
struct OperationReport {
  std::string window;   // "Form10"
  std::string command;  // the control that began it: "ReadParameter"
  std::int64_t exchanges = 0;
  std::int64_t failed = 0;
  std::string first_failure;  // why the first failed exchange failed; empty when none did
  bool port_failed = false;   // the port could not be opened
  std::string refused;        // why nothing was sent, though the line was good; mostly empty
};

}  // namespace vlt
