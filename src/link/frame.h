// SPDX-License-Identifier: GPL-3.0-or-later
// Frames of Modbus RTU: requests, the size of their replies, the frame check. Frames are byte arrays sized
// exactly to the frame, the two bytes of the frame check included: the whole array goes onto the line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vlt {

using Frame = std::vector<std::uint8_t>;

// Added to the function of a request that the meter refuses.
inline constexpr int kExceptionBit = 0x80;
// Station, function with that bit, code, check.
inline constexpr std::size_t kExceptionBytes = 5;

// Frame check over frame[0..count-1]: CRC-16 with the reflected polynomial A001H, started at FFFFH. The low
// byte is sent first.
void CalcCrc(std::span<const std::uint8_t> frame, int count, std::uint8_t& crcHigh, std::uint8_t& crcLow);
// The last two bytes are the check over those ahead of them. False for a frame of less than two bytes.
bool IsCheckGood(std::span<const std::uint8_t> frame);

// The word at bytes 4 and 5 of a write's reply: the number of registers (function 10H) or the value (06).
// EchoWordEqual reads it as signed, EchoWordMatch as unsigned when `is_unsigned` is 1. False for a reply that
// is too short.
bool EchoWordEqual(std::span<const std::uint8_t> reply, int expected);
bool EchoWordMatch(std::span<const std::uint8_t> reply, int expected, int is_unsigned);

// Requests with room for their check. `function` is 3 (holding registers) or 4 (input registers); `address`
// counts bytes, `count` 16-bit words. Of `value` the low 16 bits are sent. `data` holds whole words, high
// byte first.
Frame ReadRequest(int station, int function, int address, int count);
Frame WriteRegisterRequest(int station, int address, int value);
Frame WriteRegistersRequest(int station, int address, std::span<const std::uint8_t> data);

// The size of the reply to `request`: 2n + 5 bytes for a read of n words (its data begin at index 3), 8 for a
// write.
std::size_t ReplySize(std::span<const std::uint8_t> request);
// A frame of zeros of that size.
Frame ReplyFor(std::span<const std::uint8_t> request);

}  // namespace vlt
