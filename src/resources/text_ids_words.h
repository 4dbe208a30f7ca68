// SPDX-License-Identifier: GPL-3.0-or-later
// Names of what the companion's words tell: the block 3153 to 3199.
#pragma once

namespace vlt::text {

// Names of parameters and their places. %1 what was written, %2 the names that are near or the places.
// kNoPlace: %2 the place, %3 those that there are.
inline constexpr int kNoParameter = 3153;
inline constexpr int kNoParameterButNear = 3154;
inline constexpr int kNoPlaces = 3155;
inline constexpr int kNoPlace = 3156;
inline constexpr int kWhichPlace = 3157;
inline constexpr int kNotInThisMeter = 3158;

// The line and the meter. kMeterUnknown: %1 why.
inline constexpr int kOtherInstance = 3159;
inline constexpr int kLineTaken = 3160;
inline constexpr int kMeterUnknown = 3161;
inline constexpr int kWordStopped = 3162;

// One parameter. kNameAndReason: %1 the parameter and its place, %2 the reason. kNotByWord: %1 the parameter.
inline constexpr int kNameAndReason = 3163;
inline constexpr int kNotByWord = 3164;

// Arguments KEY=VALUE. %1 what was written, %2 the keys. kNoNumberOf: %1 the key, %2 its value, %3 the least,
// %4 the greatest number. kVelocityOfList: %1 the key, %2 that of the list, %3 the entry of an own value.
// kNeedsBeside: %1 the key, %2 and %3 those of which one is needed.
inline constexpr int kNoKey = 3165;
inline constexpr int kNoKeyButNear = 3166;
inline constexpr int kNoEquals = 3167;
inline constexpr int kKeyTwice = 3168;
inline constexpr int kNoNumberOf = 3169;
inline constexpr int kVelocityOfList = 3170;
inline constexpr int kNeedsBeside = 1553;

// Snapshots and comparison. %1 the file. kSnapshotPartly: %1 how many, %2 of how many parameters. kOnlyWord:
// %1 the word, %2 what was written.
inline constexpr int kNoSnapshotThere = 3171;
inline constexpr int kSnapshotPartly = 3172;
inline constexpr int kNeitherFile = 3173;
inline constexpr int kNoFields = 3174;
inline constexpr int kOnlyWord = 3175;

// Restoring. kNotASnapshot: %1 the file. kRestoredPartly: %1 how many. kRestoredWithRemarks: %1 how many, %2
// the file.
inline constexpr int kNotASnapshot = 3176;
inline constexpr int kNotVerified = 3177;
inline constexpr int kRestoredPartly = 3178;
inline constexpr int kRestoredWithRemarks = 3179;

}  // namespace vlt::text
