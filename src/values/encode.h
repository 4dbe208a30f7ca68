// SPDX-License-Identifier: GPL-3.0-or-later
// A shown number to the integer that a register holds: cut to the shown decimals, times the scale, cut again.
#pragma once

#include <cstdint>
#include <optional>

namespace vlt {

// value cut to so many decimals (0 or more) and multiplied by 10 to that power, free of binary noise: 123.456
// with 2 gives 12345. Nothing when value is not finite or the result is beyond 64 bits.
std::optional<std::int64_t> ScaledInteger(double value, int decimals);

// The same for a register of a given width; nothing when the result is outside of its range, so that a page
// can report the field instead of sending another number.
std::optional<std::int32_t> ScaledInt16(double value, int decimals);   // -32768 to 32767
std::optional<std::int32_t> ScaledUInt16(double value, int decimals);  // 0 to 65535
std::optional<std::int32_t> ScaledInt32(double value, int decimals);   // 32 bits, signed

}  // namespace vlt
