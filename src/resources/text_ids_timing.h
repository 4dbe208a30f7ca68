// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts of the timing of exchanges: the block 4551 to 4619.
#pragma once

namespace vlt::text {

inline constexpr int kEventTiming = 4551;
inline constexpr int kEventTimingHint = 4552;

}  // namespace vlt::text
