// SPDX-License-Identifier: GPL-3.0-or-later
// The calculation against results worked out by an independent program in high precision, and its failures.
#include <gtest/gtest.h>

#include "calc/spacing.h"
#include "calc/spacing_check.h"
#include "calc/spacing_drawing.h"

namespace vlt::test {
namespace {

struct SpacingCase {
  int unit_flag, sensor, pipe, lining, fluid, mount;
  const char *outer_diameter, *wall, *lining_thickness, *pipe_velocity, *lining_velocity, *fluid_velocity;
  const char *result1, *result2;
};

constexpr SpacingCase kCases[] = {
#include "calc/spacing_cases.inc"
};

SpacingInputs InputsOf(const SpacingCase& row) {
  const auto own = [](bool typed, const char* text) {
    return typed ? std::optional<std::string>(text) : std::nullopt;
  };
  return {.unit_flag = row.unit_flag,
          .sensor = row.sensor,
          .pipe = row.pipe,
          .lining = row.lining,
          .fluid = row.fluid,
          .mount = row.mount,
          .outer_diameter = row.outer_diameter,
          .wall_thickness = row.wall,
          .lining_thickness = row.lining_thickness,
          .pipe_velocity = own(row.pipe == kOwnPipe, row.pipe_velocity),
          .lining_velocity = own(row.lining == kOwnLining, row.lining_velocity),
          .fluid_velocity = own(row.fluid == kOwnFluid, row.fluid_velocity)};
}

TEST(Spacing, EqualsTheIndependentProgramToTheLastDigit) {
  EXPECT_GE(std::size(kCases), 60u);
  int number = 0;
  for (const SpacingCase& row : kCases) {
    SCOPED_TRACE("case " + std::to_string(++number));
    const auto outcome = CalculateSpacing(InputsOf(row));
    if (const auto* failure = std::get_if<SpacingFailure>(&outcome)) {
      EXPECT_STREQ(row.result1, "total reflection");
      EXPECT_EQ(failure->why, SpacingFailure::Why::kTotalReflection);
      continue;
    }
    const auto& result = std::get<SpacingResult>(outcome);
    EXPECT_EQ(result.result1, row.result1);
    EXPECT_EQ(result.result2, row.result2);
  }
}

SpacingInputs SteelPipe() { return {.sensor = 4, .outer_diameter = "100", .wall_thickness = "5"}; }

struct FailureCase {
  const char* name;
  void (*spoil)(SpacingInputs&);
  SpacingFailure::Why why;
  SpacingField field;
};

using enum SpacingFailure::Why;
using enum SpacingField;

const FailureCase kFailures[] = {
    {"two points", [](auto& i) { i.outer_diameter = "1.2.3"; }, kNotANumber, kOuterDiameter},
    {"decimal comma", [](auto& i) { i.wall_thickness = "3,8"; }, kNotANumber, kWallThickness},
    {"blank", [](auto& i) { i.pipe_velocity = " "; }, kNotANumber, kPipeVelocity},
    {"lining", [](auto& i) { i.lining = 1, i.lining_thickness = "x"; }, kNotANumber, kLiningThickness},
    {"wall first", [](auto& i) { i.wall_thickness = i.outer_diameter = "-"; }, kNotANumber, kWallThickness},
    {"endless", [](auto& i) { i.outer_diameter = std::string(400, '9'); }, kNotANumber, kOuterDiameter},
    {"too large", [](auto& i) { i.outer_diameter = std::string(308, '9'), i.mount = 3; }, kOverflow, kResult},
    {"no fluid chosen", [](auto& i) { i.fluid = -1; }, kNothingChosen, kFluid},
    {"no sensor chosen", [](auto& i) { i.sensor = 12; }, kNothingChosen, kSensor},
    {"grazing wall", [](auto& i) { i.pipe_velocity = "3744"; }, kTotalReflection, kPipeVelocity},
    {"grazing fluid", [](auto& i) { i.fluid_velocity = "-3744"; }, kTotalReflection, kFluidVelocity},
};

TEST(Spacing, FailuresNameTheField) {
  for (const FailureCase& row : kFailures) {
    SCOPED_TRACE(row.name);
    SpacingInputs inputs = SteelPipe();
    row.spoil(inputs);
    const auto outcome = CalculateSpacing(inputs);
    ASSERT_TRUE(std::holds_alternative<SpacingFailure>(outcome));
    EXPECT_EQ(std::get<SpacingFailure>(outcome), (SpacingFailure{row.why, row.field}));
  }
}

TEST(Spacing, TheArcSineEndsBelowOne) {
  EXPECT_NEAR(*FncASin(0.5), FncPi() / 6, 1e-15);
  EXPECT_TRUE(FncASin(0.9999999));
  for (const double x : {1.0, -1.0, 1.5, std::numeric_limits<double>::quiet_NaN()}) EXPECT_FALSE(FncASin(x));
}

TEST(Spacing, ConversionsAreThoseOfTheTables) {
  EXPECT_NE(ToMillimetre(1), 25.4) << "the tables' factor is not exact";
  EXPECT_NEAR(ToMillimetre(1), 25.4, 1e-7);
  EXPECT_EQ(ConvertedText(SpacingField::kOuterDiameter, 60.5, 1), "2.3819");
  EXPECT_EQ(ConvertedText(SpacingField::kOuterDiameter, 2.3819, 0), "60.50");
  EXPECT_EQ(ConvertedText(SpacingField::kFluidVelocity, 1440, 1), "4724");
}

struct RangeCase {
  SpacingField field;
  int unit_flag;
  const char *below, *lowest, *highest, *above;
};

constexpr RangeCase kRanges[] = {
    {SpacingField::kOuterDiameter, 0, "5.99", "6", "6200", "6200.01"},
    {SpacingField::kOuterDiameter, 1, "0.2361", "0.2362", "244.1", "244.101"},
    {SpacingField::kPipeVelocity, 0, "999", "1000", "3700", "3701"},
    {SpacingField::kLiningVelocity, 1, "3279", "3280", "12140", "12141"},
    {SpacingField::kWallThickness, 0, "0.09", "0.1", "100", "100.01"},
    {SpacingField::kWallThickness, 1, "0.0038", "0.0039", "3.938", "3.9381"},
    {SpacingField::kFluidVelocity, 0, "299", "300", "2500", "2501"},
    {SpacingField::kFluidVelocity, 1, "983", "984", "8203", "8204"},
    {SpacingField::kLiningThickness, 0, "0", "0.01", "100.00", "101"},
    {SpacingField::kLiningThickness, 1, "0.0002", "0.0003", "3.9380", "4"},
};

TEST(SpacingCheck, TheLimitsThemselvesAreAllowed) {
  for (const RangeCase& row : kRanges) {
    SCOPED_TRACE(row.above);
    EXPECT_FALSE(IsInRange(row.field, row.below, row.unit_flag));
    EXPECT_TRUE(IsInRange(row.field, row.lowest, row.unit_flag));
    EXPECT_TRUE(IsInRange(row.field, row.highest, row.unit_flag));
    EXPECT_FALSE(IsInRange(row.field, row.above, row.unit_flag));
  }
  EXPECT_FALSE(IsInRange(SpacingField::kOuterDiameter, "1.2.3", 0));
}

TEST(SpacingCheck, APipeNeedsABore) {
  SpacingInputs inputs = SteelPipe();
  EXPECT_EQ(FindInputFault(inputs), std::nullopt);
  inputs.outer_diameter = "10";
  EXPECT_EQ(FindInputFault(inputs)->why, InputFault::Why::kNoBore);
  inputs.outer_diameter = "11";
  inputs.lining_thickness = "2";
  EXPECT_EQ(FindInputFault(inputs), std::nullopt) << "there is no lining";
  inputs.lining = 1;
  EXPECT_EQ(FindInputFault(inputs)->why, InputFault::Why::kNoBore);
  inputs.lining_thickness = "";
  EXPECT_EQ(*FindInputFault(inputs), (InputFault{InputFault::Why::kMissing, SpacingField::kLiningThickness}));
}

// The first sensor above the pipe, the second where the sound ends: above, or below after an odd number of
// crossings.
TEST(Spacing, TheSectionShowsBothSensorsWhereTheyAreMounted) {
  for (const int mount : {0, 1}) {
    SpacingInputs inputs = SteelPipe();
    inputs.mount = mount;
    const auto outcome = CalculateSpacing(inputs);
    const Sheet sheet =
        DrawSpacing(inputs, std::get<SpacingResult>(outcome), [](int) { return std::string("text"); });
    std::vector<SheetItem> elements;
    double middle = 0;
    for (const SheetItem& item : sheet.Items()) {
      if (item.ink == Ink::kElement) elements.push_back(item);
      if (item.ink == Ink::kPipe && middle == 0) middle = (item.points.front().y + item.points.back().y) / 2;
    }
    ASSERT_EQ(elements.size(), 2u) << mount;
    EXPECT_LT(elements[0].points[0].y, middle);
    EXPECT_EQ(elements[1].points[0].y < middle, FluidCrossings(mount).value() % 2 == 0) << mount;
    EXPECT_LT(elements[0].points[1].x, elements[1].points[1].x);
  }
}

}  // namespace
}  // namespace vlt::test
