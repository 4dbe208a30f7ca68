// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/spacing_texts.h"

#include "resources/string_table.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

struct Caption {
  SpacingField field;
  int text_id;
};

constexpr Caption kCaptions[] = {
    {SpacingField::kOuterDiameter, 1240},  {SpacingField::kWallThickness, 2880},
    {SpacingField::kPipeVelocity, 2050},   {SpacingField::kLiningThickness, 1110},
    {SpacingField::kLiningVelocity, 1100}, {SpacingField::kFluidVelocity, 2200},
    {SpacingField::kPipeMaterial, 2060},   {SpacingField::kLiningMaterial, 1120},
    {SpacingField::kFluid, 2210},          {SpacingField::kMount, 790},
    {SpacingField::kSensor, 800},          {SpacingField::kResult, 3926},
};

std::string TypedText(SpacingField field, const SpacingInputs& inputs) {
  switch (field) {
    case SpacingField::kOuterDiameter:
      return inputs.outer_diameter;
    case SpacingField::kWallThickness:
      return inputs.wall_thickness;
    case SpacingField::kLiningThickness:
      return inputs.lining_thickness;
    case SpacingField::kPipeVelocity:
      return inputs.pipe_velocity.value_or("");
    case SpacingField::kLiningVelocity:
      return inputs.lining_velocity.value_or("");
    case SpacingField::kFluidVelocity:
      return inputs.fluid_velocity.value_or("");
    default:
      return {};
  }
}

}  // namespace

std::string FieldCaption(SpacingField field, const TextOf& text) {
  for (const Caption& row : kCaptions) {
    if (row.field == field) return text(row.text_id);
  }
  return {};
}

std::string FaultText(const InputFault& fault, const TextOf& text) {
  const std::string caption = FieldCaption(fault.field, text);
  switch (fault.why) {
    case InputFault::Why::kMissing:
      return FormatText(text(text::kFieldMissing), {caption});
    case InputFault::Why::kNotANumber:
      return caption + ": " + text(text::kNotANumber);
    case InputFault::Why::kOutOfRange:
      return caption + ": " + text(text::kOutOfLimits);
    case InputFault::Why::kNothingChosen:
      return FormatText(text(text::kNothingChosen), {caption});
    case InputFault::Why::kNoBore:
      break;
  }
  return text(text::kNoBore);
}

std::string FailureText(const SpacingFailure& failure, const SpacingInputs& inputs, const TextOf& text) {
  const std::string caption = FieldCaption(failure.field, text);
  switch (failure.why) {
    case SpacingFailure::Why::kNotANumber:
      return FormatText(text(text::kFieldNotANumber), {caption, TypedText(failure.field, inputs)});
    case SpacingFailure::Why::kNothingChosen:
      return FormatText(text(text::kNothingChosen), {caption});
    case SpacingFailure::Why::kTotalReflection:
      return FormatText(text(text::kTotalReflection), {caption});
    case SpacingFailure::Why::kOverflow:
      break;
  }
  return text(text::kTooLarge);
}

}  // namespace vlt
