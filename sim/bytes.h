// SPDX-License-Identifier: GPL-3.0-or-later
// Bytes on the wire: big-endian values, hexadecimal text, the frame check.
#pragma once

#include <bit>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

using Bytes = std::vector<std::uint8_t>;

// A moment in microseconds on the caller's own time line; it only has to grow.
using Micros = std::int64_t;

// Appends the lowest `width` bytes of `value`, most significant first.
void AppendBig(Bytes& out, std::uint64_t value, int width);

// Reads `data.size()` bytes (at most 8) as one unsigned number, most significant first.
std::uint64_t ReadBig(std::span<const std::uint8_t> data);

// Check value of a frame: CRC-16 with polynomial A001H (reflected), start FFFFH. Its low byte goes first.
std::uint16_t FrameCheck(std::span<const std::uint8_t> frame);

// Appends the frame check of what `frame` holds.
void AppendCheck(Bytes& frame);

// "01 03 00 D0": two upper-case digits a byte, one blank between.
std::string ToHex(std::span<const std::uint8_t> data);

// Reverse of ToHex; blanks may stand anywhere between pairs or be left out. False for anything else.
bool FromHex(std::string_view text, Bytes& out);

}  // namespace sim
