// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/hex_digits.h"

namespace vlt {

std::string HexDigits(unsigned number, int digits) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text(static_cast<std::size_t>(digits), '0');
  for (auto at = text.rbegin(); at != text.rend(); ++at, number >>= 4U) *at = kDigits[number & 0xFU];
  return text;
}

std::string HexDigits(std::span<const std::uint8_t> bytes, std::string_view between) {
  std::string text;
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text += between;
    text += HexDigits(byte, 2);
  }
  return text;
}

}  // namespace vlt
