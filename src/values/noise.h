// SPDX-License-Identifier: GPL-3.0-or-later
// Doubles without their binary noise.
#pragma once

namespace vlt {

// Significant digits that a double carries without noise.
inline constexpr int kDoubleDigits = 15;

// The value that the text of so many digits denotes. A number that is not finite comes back as it is.
double WithoutNoise(double value);

}  // namespace vlt
