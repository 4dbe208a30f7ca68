// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts about files, typed numbers and the lock of the program folder.
#pragma once

namespace vlt::text {

// What a box says of a typed number with a comma.
inline constexpr int kCommaTyped = 4380;

// Why a typed value can't be sent, in the middle of a sentence.
inline constexpr int kComma = 4381;
// What became of a typed number that was sent. %1 as it was typed, %2 as it was sent.
inline constexpr int kSentWhole = 4382;
inline constexpr int kSentAsZero = 4383;
// %1 the least, %2 the greatest station number.
inline constexpr int kStationLimits = 4384;

// Why a file can't be used, in the middle of a sentence.
inline constexpr int kFileIsDevice = 4385;
inline constexpr int kFileIsPipe = 4386;
inline constexpr int kFileIsSocket = 4387;
inline constexpr int kFileLargerThan = 4388;  // %1 "4 MB"

// The journal of runs. %1 the sentence that says why it can't be read.
inline constexpr int kRunsNotRead = 4389;

// The lock of the program folder. %1 its file, %2 one of the owners below; kLockOwner: %1 the number of the
// process, %2 its machine.
inline constexpr int kLockTakenOver = 4390;
inline constexpr int kLockElsewhere = 4391;
inline constexpr int kLockUnsure = 4392;
inline constexpr int kLockOwner = 4393;
inline constexpr int kLockNoOwner = 4394;

}  // namespace vlt::text
