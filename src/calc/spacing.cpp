// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/spacing.h"

#include <cmath>
#include <cstddef>

#include "values/codecs.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr double kInchesPerMm = 0.0393700787;
constexpr double kFeetPerMetre = 3.28083989;

constexpr const char* kSmall = "小型";
constexpr const char* kMedium = "中型";
constexpr const char* kLarge = "大型";

constexpr SensorRecord kSensors[] = {
    {"Q-Path", 4, 2500, 42, 8.854263, 6.58, 5.92, 6.46, false},
    {"Q-Path", 4, 2500, 42, 8.854263, 6.58, 5.92, 6.46, false},
    {"Q-Path", 2, 2500, 42, 8.854263, 6.58, 5.92, 6.46, true},
    {"Q-Path", 2, 2500, 42, 8.854263, 6.58, 5.92, 6.46, true},
    {kSmall, 1, 2505, 42, 13.456327, 10, 9.07, 27, false},
    {kSmall, 2, 2505, 42, 6.728164, 5, 4.5, 13.5, false},
    {kMedium, 1, 2505, 42, 13.456327, 10, 9.07, 27, false},
    {kLarge, 0.5, 2505, 42, 24.490516, 18.2, 16.4, 16.4, false},
    {kLarge, 1, 2505, 42, 24.490516, 18.2, 16.4, 16.4, false},
    {kSmall, 2, 2500, 42, 8.342923, 6.2, 5.58, 16.4, false},
    {"小口径", 2, 2500, 42, 8.342923, 6.2, 5.58, 13.9, false},
    {"高温用", 2, 2830, 49, 12.194025, 8, 9.2, 20.2, false},
};

// Own values are typed; their rows are never used.
constexpr double kPipes[] = {3000, 3141, 2307, 2260, 2604, 3080, 2505, 3000, 2307, 2307, 2644, 2307, 0};
constexpr double kLinings[] = {0, 2505, 3000, 1510, 1240, 3280, 2307, 3700};
constexpr double kFluids[] = {1440, 1522, 1487, 1376, 1180, 1327, 904,  1230, 1668,
                              1338, 1497, 1122, 1325, 1530, 1250, 1390, 414,  474.673};

constexpr int kCrossings[] = {2, 1, 4, 8};

using Why = SpacingFailure::Why;

bool IsIn(int index, std::size_t count) { return index >= 0 && static_cast<std::size_t>(index) < count; }

double Number(const std::string& text, SpacingField field) {
  if (text.empty()) return 0;
  const auto number = ParseNumber(text);
  if (!number) throw SpacingFailure{Why::kNotANumber, field};
  return *number;
}

double Length(const SpacingInputs& inputs, const std::string& text, SpacingField field) {
  const double number = Number(text, field);
  return inputs.unit_flag != 0 ? ToMillimetre(number) : number;
}

// Where a velocity comes from: what was typed, else the row of its list.
struct VelocitySource {
  const std::optional<std::string>& typed;
  SpacingField typed_field;
  std::span<const double> table;
  int index;
  SpacingField list_field;
};

double Velocity(const SpacingInputs& inputs, const VelocitySource& source) {
  if (source.typed) {
    const double number = Number(*source.typed, source.typed_field);
    return inputs.unit_flag != 0 ? ToMetrePerSecond(number) : number;
  }
  if (!IsIn(source.index, source.table.size())) throw SpacingFailure{Why::kNothingChosen, source.list_field};
  return source.table[static_cast<std::size_t>(source.index)];
}

double Radians(const SensorRecord& sensor) { return sensor.wedge_angle / 180.0 * FncPi(); }

void Refract(SoundLayer& layer, const SensorRecord& sensor, SpacingField field) {
  if (layer.velocity != 0) {
    const auto angle = FncASin(layer.velocity / sensor.wedge_velocity * std::sin(Radians(sensor)));
    if (!angle) throw SpacingFailure{Why::kTotalReflection, field};
    layer.angle = *angle;
  }
  layer.run = std::tan(layer.angle) * layer.thickness;
}

// The layers with all that the inputs say of them, not yet the way of the sound.
SpacingResult ReadPipe(const SpacingInputs& inputs) {
  using enum SpacingField;
  SpacingResult pipe;
  pipe.wall.thickness = Length(inputs, inputs.wall_thickness, kWallThickness);
  pipe.outer_diameter = Length(inputs, inputs.outer_diameter, kOuterDiameter);
  if (inputs.lining != kNoLining) {
    pipe.lining.thickness = Length(inputs, inputs.lining_thickness, kLiningThickness);
  }
  pipe.fluid.thickness = pipe.outer_diameter - 2 * (pipe.lining.thickness + pipe.wall.thickness);
  pipe.wall.velocity =
      Velocity(inputs, {inputs.pipe_velocity, kPipeVelocity, kPipes, inputs.pipe, kPipeMaterial});
  pipe.lining.velocity =
      Velocity(inputs, {inputs.lining_velocity, kLiningVelocity, kLinings, inputs.lining, kLiningMaterial});
  pipe.fluid.velocity =
      Velocity(inputs, {inputs.fluid_velocity, kFluidVelocity, kFluids, inputs.fluid, kFluid});
  return pipe;
}

void FollowSound(SpacingResult& result, const SensorRecord& sensor) {
  Refract(result.wall, sensor, SpacingField::kPipeVelocity);
  Refract(result.lining, sensor, SpacingField::kLiningVelocity);
  Refract(result.fluid, sensor, SpacingField::kFluidVelocity);
}

// Mounts that the meter does not know leave the spacing at 0.
double SpacingOf(SpacingResult& result, const SensorRecord& sensor, int mount) {
  const auto crossings = FluidCrossings(mount);
  if (!crossings) return 0;
  const double one_side = result.wall.run + sensor.WedgeRun + result.lining.run;
  result.sum = 2 * one_side + *crossings * result.fluid.run;
  const double spacing = result.sum - 2 * sensor.MountOffset;
  if (!std::isfinite(spacing)) throw SpacingFailure{Why::kOverflow, SpacingField::kResult};
  return spacing < 0 ? 0 : spacing;
}

// The texts of the result, and the spacing as they have it.
void WriteResult(SpacingResult& result, double spacing, const SensorRecord& sensor, bool metric) {
  result.spacing = spacing;
  if (sensor.mounts_on_scale) {
    const double steps = std::trunc(spacing / kScaleStepMm);
    result.spacing = steps * kScaleStepMm;
    result.result2 = GeneralText(steps);
    result.result1 = GeneralText(metric ? result.spacing : CutDigits(FromMillimetre(result.spacing), 3));
  } else if (metric) {
    result.result1 = GroupedText(CutDigits(spacing, 2), 2);
  } else {
    result.result1 = GroupedText(CutDigits(FromMillimetre(spacing), 3), 3);
  }
}

}  // namespace

std::span<const SensorRecord> SensorRecords() { return kSensors; }
std::span<const double> PipeVelocities() { return kPipes; }
std::span<const double> LiningVelocities() { return kLinings; }
std::span<const double> FluidVelocities() { return kFluids; }

std::optional<int> FluidCrossings(int mount) {
  if (!IsIn(mount, std::size(kCrossings))) return std::nullopt;
  return kCrossings[mount];
}

std::variant<SpacingResult, SpacingFailure> CalculateSpacing(const SpacingInputs& inputs) {
  try {
    if (!IsIn(inputs.sensor, std::size(kSensors))) {
      return SpacingFailure{Why::kNothingChosen, SpacingField::kSensor};
    }
    const SensorRecord& sensor = kSensors[inputs.sensor];
    SpacingResult result = ReadPipe(inputs);
    FollowSound(result, sensor);
    WriteResult(result, SpacingOf(result, sensor, inputs.mount), sensor, inputs.unit_flag == 0);
    return result;
  } catch (const SpacingFailure& failure) {
    return failure;
  }
}

double FncPi() { return 4 * std::atan(1.0); }

std::optional<double> FncASin(double x) {
  if (!(std::abs(x) < 1)) return std::nullopt;
  return std::atan(x / std::sqrt(1 - x * x));
}

double ToMillimetre(double inch) { return inch / kInchesPerMm; }
double FromMillimetre(double mm) { return mm * kInchesPerMm; }
double ToMetrePerSecond(double feet_per_second) { return feet_per_second / kFeetPerMetre; }
double FromMetrePerSecond(double metre_per_second) { return metre_per_second * kFeetPerMetre; }

}  // namespace vlt
