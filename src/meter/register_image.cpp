// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/register_image.h"

#include <algorithm>
#include <utility>

namespace vlt {

void RegisterImage::Put(ReadFunction function, int address, RegisterData data) {
  pieces_.push_back({function, address, std::move(data)});
}

std::span<const std::uint8_t> RegisterImage::Of(const Parameter& parameter, int index) const {
  const int address = AddressOf(parameter, index);
  const int size = 2 * parameter.Words();
  // What was read last counts.
  const auto piece = std::find_if(pieces_.rbegin(), pieces_.rend(), [&](const Piece& candidate) {
    const int offset = address - candidate.address;
    return candidate.function == parameter.function && offset >= 0 &&
           offset + size <= static_cast<int>(candidate.data.size());
  });
  if (piece == pieces_.rend()) return {};
  return std::span(piece->data)
      .subspan(static_cast<std::size_t>(address - piece->address), static_cast<std::size_t>(size));
}

bool RegisterImage::Has(const RegisterSpan& span) const {
  return std::any_of(pieces_.begin(), pieces_.end(), [&](const Piece& piece) {
    const int end = piece.address + static_cast<int>(piece.data.size());
    return piece.function == span.function && piece.address <= span.address &&
           span.address + 2 * span.count <= end;
  });
}

int RegisterImage::CodeOf(const Parameter& parameter, int index, int absent) const {
  const auto bytes = Of(parameter, index);
  return bytes.empty() ? absent : CodeAt(parameter, bytes, 0);
}

}  // namespace vlt
