// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/bytes.h"

namespace sim {

void AppendBig(Bytes& out, std::uint64_t value, int width) {
  for (int shift = 8 * (width - 1); shift >= 0; shift -= 8) {
    out.push_back(static_cast<std::uint8_t>(value >> shift));
  }
}

std::uint64_t ReadBig(std::span<const std::uint8_t> data) {
  std::uint64_t value = 0;
  for (std::uint8_t byte : data) value = value << 8 | byte;
  return value;
}

std::uint16_t FrameCheck(std::span<const std::uint8_t> frame) {
  std::uint16_t check = 0xFFFF;
  for (std::uint8_t byte : frame) {
    check ^= byte;
    for (int bit = 0; bit < 8; ++bit) {
      const bool carry = check & 1;
      check >>= 1;
      if (carry) check ^= 0xA001;
    }
  }
  return check;
}

void AppendCheck(Bytes& frame) {
  const std::uint16_t check = FrameCheck(frame);
  frame.push_back(static_cast<std::uint8_t>(check));
  frame.push_back(static_cast<std::uint8_t>(check >> 8));
}

std::string ToHex(std::span<const std::uint8_t> data) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  std::string text;
  for (std::uint8_t byte : data) {
    if (!text.empty()) text += ' ';
    text += kDigits[byte >> 4];
    text += kDigits[byte & 15];
  }
  return text;
}

namespace {

int Digit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

}  // namespace

bool FromHex(std::string_view text, Bytes& out) {
  out.clear();
  std::size_t i = 0;
  while (i < text.size()) {
    if (text[i] == ' ') {
      ++i;
      continue;
    }
    const int high = Digit(text[i]);
    const int low = i + 1 < text.size() ? Digit(text[i + 1]) : -1;
    if (high < 0 || low < 0) return false;
    out.push_back(static_cast<std::uint8_t>(high << 4 | low));
    i += 2;
  }
  return true;
}

}  // namespace sim
