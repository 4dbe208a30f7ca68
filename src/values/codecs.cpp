// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/codecs.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <stdexcept>

#include "values/noise.h"

namespace vlt {
namespace {

template <typename Word>
Word BigEndian(std::span<const std::uint8_t> frame, std::size_t start) {
  if (start > frame.size() || frame.size() - start < sizeof(Word)) {
    throw std::out_of_range("register value outside of its frame");
  }
  Word word = 0;
  for (const std::uint8_t byte : frame.subspan(start, sizeof(Word))) {
    word = static_cast<Word>((word << 8) | byte);
  }
  return word;
}

template <typename Word>
std::array<std::uint8_t, sizeof(Word)> ToBigEndian(Word word) {
  std::array<std::uint8_t, sizeof(Word)> bytes{};
  for (std::size_t i = sizeof(Word); i-- > 0;) {
    bytes[i] = static_cast<std::uint8_t>(word & 0xFF);
    word = static_cast<Word>(word >> 8);
  }
  return bytes;
}

}  // namespace

std::int32_t BytesToInt16(std::span<const std::uint8_t> frame, std::size_t start) {
  return static_cast<std::int16_t>(BigEndian<std::uint16_t>(frame, start));
}

std::int32_t BytesToUInt16(std::span<const std::uint8_t> frame, std::size_t start) {
  return BigEndian<std::uint16_t>(frame, start);
}

std::int32_t BytesToInt32(std::span<const std::uint8_t> frame, std::size_t start) {
  return static_cast<std::int32_t>(BigEndian<std::uint32_t>(frame, start));
}

float BytesToSingle(std::span<const std::uint8_t> frame, std::size_t start) {
  return std::bit_cast<float>(BigEndian<std::uint32_t>(frame, start));
}

double BytesToDouble(std::span<const std::uint8_t> frame, std::size_t start) {
  return std::bit_cast<double>(BigEndian<std::uint64_t>(frame, start));
}

std::array<std::uint8_t, 2> Int16ToBytes(std::int32_t value) {
  return ToBigEndian(static_cast<std::uint16_t>(value));
}

std::array<std::uint8_t, 4> Int32ToBytes(std::int32_t value) {
  return ToBigEndian(static_cast<std::uint32_t>(value));
}

std::array<std::uint8_t, 8> DoubleToBytes(double value) {
  return ToBigEndian(std::bit_cast<std::uint64_t>(value));
}

std::string DoubleToHex(double value, bool high_first) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::array<std::uint8_t, 8> bytes = DoubleToBytes(value);
  if (!high_first) std::reverse(bytes.begin(), bytes.end());
  std::string text;
  for (const std::uint8_t byte : bytes) {
    if (!text.empty()) text += ' ';
    text += kDigits[byte >> 4];
    text += kDigits[byte & 0x0F];
  }
  return text;
}

double CutDigits(double value, int digits) {
  const double power = std::pow(10.0, std::abs(digits));
  const double scaled = digits < 0 ? value / power : value * power;
  if (!std::isfinite(scaled)) return value;
  const double cut = std::trunc(WithoutNoise(scaled));
  return digits < 0 ? cut * power : cut / power;
}

}  // namespace vlt
