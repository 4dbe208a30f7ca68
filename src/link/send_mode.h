// SPDX-License-Identifier: GPL-3.0-or-later
// The kinds of exchange.
#pragma once

namespace vlt {

// How an attempt is paced and how often it is repeated.
enum SendMode {
  kModeOrdinary = 0,   // ordinary reads and writes
  kModeStore = 1,      // the store register: one attempt whatever RetryNo says
  kModeLongBlock = 2,  // the long block of measured values: waits longer at 9600 baud
  kModeStations = 3,   // several stations on one line: one long attempt, a pause behind a good one
  kModeUnitQuery = 4,  // unit system and per-channel units: one long attempt
};

}  // namespace vlt
