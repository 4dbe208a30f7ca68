// SPDX-License-Identifier: GPL-3.0-or-later
// Names of texts about where the values of the pages come from.
#pragma once

namespace vlt::text {

// Where a value comes from. kOriginRead, kOriginSet: %1 the meter and its channel or output, %2 date and
// time. kOriginTypedOver: %1 what stood there before, %2 where that came from. kOriginFile: %1 the file.
inline constexpr int kOriginRead = 2551;
inline constexpr int kOriginSet = 2552;
inline constexpr int kOriginTyped = 2553;
inline constexpr int kOriginTypedOver = 2554;
inline constexpr int kOriginFile = 2555;

// What has changed since a value was read. %1 where it came from.
inline constexpr int kOutdatedMeter = 2556;
inline constexpr int kOutdatedMemory = 2557;
inline constexpr int kOutdatedChannel = 2558;
inline constexpr int kOutdatedOutput = 2559;
inline constexpr int kOutdatedUnitSystem = 2560;
inline constexpr int kOutdatedUnit = 2561;
inline constexpr int kOutdatedSent = 2565;

// A meter that was read whole, in the comparison. %1 its name.
inline constexpr int kOutdatedSide = 2566;

// Why an entry still shows what it showed before a read. %1 the reason.
inline constexpr int kOriginNotRead = 2562;

// Titles of pages with values that were typed and not set. %1 the page's title, %2 how many.
inline constexpr int kTitleOneNotSet = 2563;
inline constexpr int kTitleNotSet = 2564;

}  // namespace vlt::text
