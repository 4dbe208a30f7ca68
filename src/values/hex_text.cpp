// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/hex_text.h"

namespace vlt {

std::string HexText(unsigned number, int digits) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text(static_cast<std::size_t>(digits), '0');
  for (auto at = text.rbegin(); at != text.rend(); ++at, number >>= 4U) *at = kDigits[number & 0xFU];
  return text;
}

std::string HexText(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (const std::uint8_t byte : bytes) text += HexText(byte, 2);
  return text;
}

}  // namespace vlt
