// SPDX-License-Identifier: GPL-3.0-or-later
// What a read-out has brought from a meter: registers by function and address.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "meter/parameter.h"

namespace vlt {

class RegisterImage {
 public:
  // The contents of registers from `address` on.
  void Put(ReadFunction function, int address, RegisterData data);
  bool Empty() const { return pieces_.empty(); }
  // The bytes of a parameter of a channel or output; none when they were not all read.
  std::span<const std::uint8_t> Of(const Parameter& parameter, int index) const;
  // Whether all registers of a span were read in one piece.
  bool Has(const RegisterSpan& span) const;
  // The code of a parameter, or `absent`.
  int CodeOf(const Parameter& parameter, int index, int absent) const;

 private:
  struct Piece {
    ReadFunction function;
    int address;
    RegisterData data;
  };
  std::vector<Piece> pieces_;
};

}  // namespace vlt
