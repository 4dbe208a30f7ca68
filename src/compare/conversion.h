// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a value of one meter means the same in another, and what it is there.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "compare/side.h"

namespace vlt {

struct Conversion {
  // What is to be written into the meter; empty when the row is unfit.
  std::vector<std::uint8_t> raw;
  bool converted = false;  // it is another number than the source holds
  std::string reason;      // why it is unfit, in the language of `to`; empty when it fits
};

// `cell` is a known cell of a side with the facts `from`; `to` is what is known of the meter. The same unit
// gives the same bytes. Another one is converted where the result is exact in the meter's register; so is a
// code of another model or mode, where the meter has it.
// `output_channel` is the channel that the meter's output follows, for a place that is one.
Conversion ConvertFor(const SideCell& cell, const ToldFacts& from, const ToldFacts& to,
                      int output_channel = 0);

// The identities tell the same meter: ID number, specification and type are known and alike.
bool SameMeter(const MeterIdentity& a, const MeterIdentity& b);

}  // namespace vlt
