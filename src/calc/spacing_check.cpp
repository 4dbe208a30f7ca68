// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/spacing_check.h"

#include <utility>

#include "values/input_check.h"
#include "values/number_text.h"
#include "values/unit_names.h"

namespace vlt {
namespace {

constexpr RangeTexts kMetric = {"6.00",   "6200.00", "1000", "3700", "0.10",
                                "100.00", "300",     "2500", "0.01", "100.00"};
constexpr RangeTexts kEnglish = {"0.2362", "244.100", "3280", "12140",  "0.0039",
                                 "3.9380", "984",     "8203", "0.0003", "3.9380"};

struct TypedField {
  SpacingField field;
  std::size_t range;
  bool is_length;
};

constexpr TypedField kTyped[] = {
    {SpacingField::kOuterDiameter, 0, true},   {SpacingField::kWallThickness, 4, true},
    {SpacingField::kPipeVelocity, 2, false},   {SpacingField::kLiningThickness, 8, true},
    {SpacingField::kLiningVelocity, 2, false}, {SpacingField::kFluidVelocity, 6, false},
};

const TypedField& Typed(SpacingField field) {
  for (const TypedField& row : kTyped) {
    if (row.field == field) return row;
  }
  return kTyped[0];
}

using Why = InputFault::Why;

std::optional<InputFault> FaultOf(SpacingField field, const std::string& text, int unit_flag) {
  if (text.empty()) return InputFault{Why::kMissing, field};
  if (IsNumericText(text) != 0 || !ParseNumber(text)) {
    return InputFault{Why::kNotANumber, field};
  }
  if (!IsInRange(field, text, unit_flag)) return InputFault{Why::kOutOfRange, field};
  return std::nullopt;
}

double ValueOf(const std::string& text) { return ParseNumber(text).value_or(0); }

}  // namespace

RangeTexts SubGetUnitRange(int unit_flag) { return unit_flag == 0 ? kMetric : kEnglish; }

std::size_t RangeOf(SpacingField field) { return Typed(field).range; }

std::array<std::string, 4> SubGetUnitForm1(int unit_flag) { return BuildBaseUnitNames(unit_flag); }

std::string UnitOf(SpacingField field, int unit_flag) {
  return SubGetUnitForm1(unit_flag)[Typed(field).is_length ? 0 : 1];
}

bool IsInRange(SpacingField field, const std::string& text, int unit_flag) {
  const auto number = ParseNumber(text);
  const RangeTexts limits = SubGetUnitRange(unit_flag);
  const std::size_t at = RangeOf(field);
  return number && *number >= *ParseNumber(limits[at]) && *number <= *ParseNumber(limits[at + 1]);
}

std::optional<InputFault> FindInputFault(const SpacingInputs& inputs) {
  using enum SpacingField;
  struct Entry {
    SpacingField field;
    bool wanted;
    std::string text;
  };
  const bool lined = inputs.lining > kNoLining;
  for (const Entry& entry :
       {Entry{kOuterDiameter, true, inputs.outer_diameter},
        Entry{kWallThickness, true, inputs.wall_thickness},
        Entry{kPipeVelocity, inputs.pipe_velocity.has_value(), inputs.pipe_velocity.value_or("")},
        Entry{kLiningThickness, lined, inputs.lining_thickness},
        Entry{kLiningVelocity, inputs.lining_velocity.has_value(), inputs.lining_velocity.value_or("")},
        Entry{kFluidVelocity, inputs.fluid_velocity.has_value(), inputs.fluid_velocity.value_or("")}}) {
    if (!entry.wanted) continue;
    if (const auto fault = FaultOf(entry.field, entry.text, inputs.unit_flag)) return fault;
  }
  for (const auto& [field, index] :
       {std::pair(kPipeMaterial, inputs.pipe), std::pair(kLiningMaterial, inputs.lining),
        std::pair(kFluid, inputs.fluid), std::pair(kMount, inputs.mount),
        std::pair(kSensor, inputs.sensor)}) {
    if (index < 0) return InputFault{Why::kNothingChosen, field};
  }
  const double layers = ValueOf(inputs.wall_thickness) + (lined ? ValueOf(inputs.lining_thickness) : 0);
  if (ValueOf(inputs.outer_diameter) <= 2 * layers) return InputFault{Why::kNoBore, kWallThickness};
  return std::nullopt;
}

std::string ConvertedText(SpacingField field, double value, int to_unit_flag) {
  if (Typed(field).is_length) {
    return to_unit_flag == 0 ? FixedText(ToMillimetre(value), 2) : FixedText(FromMillimetre(value), 4);
  }
  return FixedText(to_unit_flag == 0 ? ToMetrePerSecond(value) : FromMetrePerSecond(value), 0);
}

}  // namespace vlt
