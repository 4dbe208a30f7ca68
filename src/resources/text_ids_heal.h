// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts about a link that was lost and comes back, and about runs that ended without Stop.
#pragma once

namespace vlt::text {

// What became of the port. %1 the port with its device ("COM3 (/dev/ttyUSB0)"), %2 seconds.
inline constexpr int kPortLost = 4722;      // %1
inline constexpr int kPortUnsure = 4723;    // %1
inline constexpr int kPortSeen = 4724;      // %1 the port, %2 the device that it is now
inline constexpr int kPortCameBack = 4725;  // %1, %2
inline constexpr int kMeterSilent = 4726;   // %1
inline constexpr int kMeterOther = 4727;    // %1, %2 what differs
// What differs between two meters. %1 what answers, %2 what answered before.
inline constexpr int kOtherIdNumber = 4728;
inline constexpr int kOtherSpecification = 4729;
inline constexpr int kOtherUnitSystem = 4730;
// The marks of a gap in a log, without a comma. %1 the port, %2 and %3 date and time.
inline constexpr int kGapBegins = 4731;   // %1, %2
inline constexpr int kGapEnds = 4732;     // %1, %2, %3
inline constexpr int kGapOfMeter = 1554;  // %1 one of the two, %2 ID numbers
// In the place of a link's settings, while its port is away.
inline constexpr int kLinkLost = 4733;
// Of a station, behind a gap. %1 what differs.
inline constexpr int kStationOther = 4734;

// Runs that ended without Stop.
inline constexpr int kRunFound = 4740;   // %1 the run, as kRunInShort
inline constexpr int kRunsFound = 4741;  // the same for several: %1 the latest, %2 how many
inline constexpr int kRunsTitle = 4742;
inline constexpr int kRunFile = 4743;
inline constexpr int kRunPage = 4744;
inline constexpr int kRunStarted = 4745;
inline constexpr int kRunLastRecord = 4746;
inline constexpr int kRunLength = 4747;
inline constexpr int kRunRecords = 4748;  // %1 records, %2 bytes
inline constexpr int kRunBytes = 4749;    // %1 bytes
inline constexpr int kRunNoRecord = 4750;
inline constexpr int kRunHalfLine = 4751;  // behind the length
inline constexpr int kRunGone = 4752;      // %1 why the file can't be read
inline constexpr int kRunsShow = 4753;     // button
inline constexpr int kRunsSeen = 4754;     // button
inline constexpr int kRunsExplained = 4756;
inline constexpr int kRunInShort = 4757;  // %1 file, %2 its last record, %3 how many records
inline constexpr int kRunCount = 4758;    // %1

}  // namespace vlt::text
