// SPDX-License-Identifier: GPL-3.0-or-later
// Units and ranges of the calculator's fields, and what keeps inputs from describing a pipe.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "calc/spacing.h"

namespace vlt {

// The meter's limits as texts, in pairs of lower and upper one: outer diameter, sound velocity of pipe and
// lining, wall thickness, fluid velocity, lining thickness. `unit_flag` is 0 for metric, else English.
using RangeTexts = std::array<std::string_view, 10>;
RangeTexts SubGetUnitRange(int unit_flag);

// Place of the lower limit of a typed field; the upper one is behind it.
std::size_t RangeOf(SpacingField field);

// Length, velocity, viscosity, voltage.
std::array<std::string, 4> SubGetUnitForm1(int unit_flag);
// "mm", "m/s", ...: the unit of a typed field.
std::string UnitOf(SpacingField field, int unit_flag);

// The value of `text` is on or between the limits of its field; false for a text that is no number.
bool IsInRange(SpacingField field, const std::string& text, int unit_flag);

// What keeps inputs from describing a pipe that can be drawn and fitted: typed fields in their order, then
// the lists.
struct InputFault {
  enum class Why { kMissing, kNotANumber, kOutOfRange, kNothingChosen, kNoBore };
  Why why;
  SpacingField field;
  bool operator==(const InputFault&) const = default;
};
std::optional<InputFault> FindInputFault(const SpacingInputs& inputs);

// A value from one unit system in the other, with the decimals that its field has there.
std::string ConvertedText(SpacingField field, double value, int to_unit_flag);

}  // namespace vlt
