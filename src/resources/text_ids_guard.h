// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts about settings that are not sent, since the meter is not what they were entered for.
#pragma once

namespace vlt::text {

// Why a value is not sent. %1 the unit that it was entered, read or kept for; %2 that of the meter, for the
// first of each pair its unit system. kGuardNoPlace: %1 the channel, output or group that the meter lacks.
inline constexpr int kGuardTypedSystem = 4561;
inline constexpr int kGuardTypedUnit = 4562;
inline constexpr int kGuardReadSystem = 4563;
inline constexpr int kGuardReadUnit = 4564;
inline constexpr int kGuardFileSystem = 4565;
inline constexpr int kGuardFileUnit = 4566;
inline constexpr int kGuardNoPlace = 4567;

// The status line. kNothingSet: %1 the field, %2 why. kFactSilent: %1 the fact, %2 why. kFactUnknown: %1 the
// fact, %2 the number that the meter has told.
inline constexpr int kNothingSet = 4568;
inline constexpr int kFactSilent = 4569;
inline constexpr int kFactUnknown = 4571;

// Of an entry: typed, or kept in a file, while another unit stood beside it. %1 that unit, %2 the file.
inline constexpr int kOriginTypedFor = 4572;
inline constexpr int kGuardFileFor = 4573;
// Of an entry that has no text for what the meter says of itself. %1 the number.
inline constexpr int kMeansNothing = 4574;

}  // namespace vlt::text
