// SPDX-License-Identifier: GPL-3.0-or-later
// Names of the texts of what is read as proof: the block 4290 to 4299.
#pragma once

namespace vlt::text {

// Why a value is not relied on. kCodeNotUnderstood: %1 the parameter, %2 its code.
inline constexpr int kReadingsDiffer = 4290;
inline constexpr int kCodeNotUnderstood = 4291;

}  // namespace vlt::text
