// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts of the live readings' logs and remarks. They live in the block 4310 to 4339.
#pragma once

namespace vlt::text {

// The log of a run. %1 its file, %2 the records in it, %3 its folder, %4 how many more it takes, %5 date and
// time at which the next file is due.
inline constexpr int kLogRecords = 4310;  // %1, %2, %3
inline constexpr int kLogRoll = 4311;     // %1 to %5
// %1 the kind of wave that was chosen, %2 the number of the method, %3 the kind in its place.
inline constexpr int kKindNotOffered = 4312;
// %1 names of channels with date and time, "CH2 2026/11/24 10:00:05".
inline constexpr int kOldColumns = 4313;

}  // namespace vlt::text
