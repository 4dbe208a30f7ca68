// SPDX-License-Identifier: GPL-3.0-or-later
// Register bytes to values and back. The meter's order everywhere: the byte at the lower index, and the
// register at the lower address, is the more significant one. Data begin at byte 3 of a read reply and at
// byte 7 of a write request with function 10H.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace vlt {

// -32768 to 32767.
constexpr std::int32_t BytesToInt16(std::uint8_t high, std::uint8_t low) {
  return static_cast<std::int16_t>(static_cast<std::uint16_t>((high << 8) | low));
}

// 0 to 65535.
constexpr std::int32_t BytesToUInt16(std::uint8_t high, std::uint8_t low) { return (high << 8) | low; }

// b0 is the most significant byte.
constexpr std::int32_t BytesToInt32(std::uint8_t b0, std::uint8_t b1, std::uint8_t b2, std::uint8_t b3) {
  return static_cast<std::int32_t>((static_cast<std::uint32_t>(b0) << 24) |
                                   (static_cast<std::uint32_t>(b1) << 16) |
                                   (static_cast<std::uint32_t>(b2) << 8) | static_cast<std::uint32_t>(b3));
}

// The same three from a frame; start is the index of the most significant byte. A frame that is too short
// throws std::out_of_range (a fault of the caller).
std::int32_t BytesToInt16(std::span<const std::uint8_t> frame, std::size_t start);
std::int32_t BytesToUInt16(std::span<const std::uint8_t> frame, std::size_t start);
std::int32_t BytesToInt32(std::span<const std::uint8_t> frame, std::size_t start);

// IEEE 754 single (4 bytes) and double (8 bytes) from a frame, bounds as above.
float BytesToSingle(std::span<const std::uint8_t> frame, std::size_t start);
double BytesToDouble(std::span<const std::uint8_t> frame, std::size_t start);

// The low 16 bits, high byte first; signed and unsigned words alike.
std::array<std::uint8_t, 2> Int16ToBytes(std::int32_t value);
std::array<std::uint8_t, 4> Int32ToBytes(std::int32_t value);
std::array<std::uint8_t, 8> DoubleToBytes(double value);

// Eight upper-case hexadecimal pairs with a blank between them. high_first: the most significant byte leads,
// else the least significant one.
std::string DoubleToHex(double value, bool high_first);

// Cuts value to so many decimals, toward zero, never rounded: 2.999 gives 2.99. The product with the power of
// ten passes through 15 significant digits first, which takes the binary noise away, so 1.15 stays 1.15. A
// negative count cuts whole digits (12345 at -2 gives 12300). A number that is not finite comes back as it
// is.
double CutDigits(double value, int digits);

}  // namespace vlt
