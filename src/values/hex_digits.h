// SPDX-License-Identifier: GPL-3.0-or-later
// Register contents and addresses as upper-case hexadecimal digits, without blanks.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace vlt {

// Two digits a byte: "00002CA6".
std::string HexDigits(std::span<const std::uint8_t> bytes);
// The low digits of a number, so many of them: 0xD2 with 4 gives "00D2".
std::string HexDigits(unsigned number, int digits);

}  // namespace vlt
