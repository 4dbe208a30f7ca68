// SPDX-License-Identifier: GPL-3.0-or-later
// Register contents and addresses as upper-case hexadecimal digits.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace vlt {

// Two digits a byte: "00002CA6", or with a blank between the bytes "00 00 2C A6".
std::string HexDigits(std::span<const std::uint8_t> bytes, std::string_view between = {});
// The low digits of a number, so many of them: 0xD2 with 4 gives "00D2".
std::string HexDigits(unsigned number, int digits);

}  // namespace vlt
