// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/register_image.h"

#include <ranges>
#include <utility>

namespace vlt {

void RegisterImage::Put(ReadFunction function, int address, RegisterData data) {
  pieces_.push_back({function, address, std::move(data)});
}

std::span<const std::uint8_t> RegisterImage::Of(const Parameter& parameter, int index) const {
  const int address = AddressOf(parameter, index);
  const int size = 2 * parameter.Words();
  // What was read last counts.
  for (const Piece& piece : std::views::reverse(pieces_)) {
    const int offset = address - piece.address;
    const bool inside = offset >= 0 && offset + size <= static_cast<int>(piece.data.size());
    if (piece.function != parameter.function || !inside) continue;
    return std::span(piece.data).subspan(static_cast<std::size_t>(offset), static_cast<std::size_t>(size));
  }
  return {};
}

int RegisterImage::CodeOf(const Parameter& parameter, int index, int absent) const {
  const auto bytes = Of(parameter, index);
  return bytes.empty() ? absent : CodeAt(parameter, bytes, 0);
}

}  // namespace vlt
