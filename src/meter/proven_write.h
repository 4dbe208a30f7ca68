// SPDX-License-Identifier: GPL-3.0-or-later
// One parameter written as its page writes it, and proven: the meter's echo, and then its registers read
// back.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "link/registers.h"
#include "meter/catalogue.h"
#include "state/app.h"

namespace vlt {

enum class WriteEnd : std::uint8_t {
  kStored,     // the registers, read back, hold what was sent
  kRefused,    // the meter answered with an exception
  kNotProven,  // the registers hold something else, or could not be read back
  kNotSent,    // nothing went to the meter
};

struct ProvenWrite {
  WriteEnd end = WriteEnd::kNotSent;
  std::string reason;  // in the language in force; empty for kStored
  // What the registers held when they were read back; empty when they were not.
  std::vector<std::uint8_t> came_back;
};

// Writes `raw` (2 * Words() bytes) and reads it back. The port must be open and the interface locked. A value
// that the page writes together with another one (backlight and lights-out time) is written with the one that
// the meter holds. A row that the meter computes is not sent. A lost port ends as kNotProven or, before
// anything was sent, as kNotSent. What pages have read before counts as outdated, unless the meter refuses.
// `facts` are the units and the language that a value in a reason is shown by; without them those of the App.
ProvenWrite WriteProven(App& app, const ParameterPlace& place, std::span<const std::uint8_t> raw,
                        const ToldFacts& facts);
ProvenWrite WriteProven(App& app, const ParameterPlace& place, std::span<const std::uint8_t> raw);

// One parameter read for itself into `raw`, by the registers of its row alone, as ReadRegistersProven. Empty
// without proof.
ExchangeReport ReadPlace(App& app, const ParameterPlace& place, std::vector<std::uint8_t>& raw);

// "stored", "refused", ... in the language of the offset.
std::string WriteEndText(WriteEnd end, Language language);

}  // namespace vlt
