// SPDX-License-Identifier: GPL-3.0-or-later
// How far apart two clamp-on sensors are fixed on a pipe: Snell's law through wedge, pipe wall, lining and
// fluid. Pure functions of the inputs; the tables are those of the meter.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace vlt {

// One row a sensor type, in the order of code table 6.
struct SensorRecord {
  const char* size_class;
  double frequency_mhz;
  int wedge_velocity;        // m/s
  std::int16_t wedge_angle;  // degrees from the pipe's normal
  double wedge_path;         // mm from the sending element to the pipe
  double wedge_height;       // mm, of the element above the pipe
  double WedgeRun;           // mm along the pipe from the element to where the sound enters it
  double MountOffset;        // mm along the pipe from the element to the edge that the spacing is measured at
  bool mounts_on_scale;      // fixed at the steps of a scale
};
std::span<const SensorRecord> SensorRecords();

// Sound velocities in m/s by list index (code tables 1, 2, 3). The last row of each is "own value".
std::span<const double> PipeVelocities();
std::span<const double> LiningVelocities();
std::span<const double> FluidVelocities();
inline constexpr int kOwnPipe = 12;
inline constexpr int kOwnLining = 7;
inline constexpr int kOwnFluid = 17;
inline constexpr int kNoLining = 0;

// How often the sound crosses the fluid, by mount index (V, Z, W, WW); nothing for any other index.
std::optional<int> FluidCrossings(int mount);
inline constexpr double kScaleStepMm = 3;

// As typed, in the unit system of `unit_flag` (0 metric, else English). An empty text counts as 0.
struct SpacingInputs {
  int unit_flag = 0;
  int sensor = 0;
  int pipe = 0;
  int lining = 0;
  int fluid = 0;
  int mount = 0;
  std::string outer_diameter = {};
  std::string wall_thickness = {};
  std::string lining_thickness = {};
  // A typed velocity, or nothing where that of the list holds.
  std::optional<std::string> pipe_velocity = {};
  std::optional<std::string> lining_velocity = {};
  std::optional<std::string> fluid_velocity = {};
  bool operator==(const SpacingInputs&) const = default;
};

enum class SpacingField {
  kOuterDiameter,
  kWallThickness,
  kPipeVelocity,
  kLiningThickness,
  kLiningVelocity,
  kFluidVelocity,
  kPipeMaterial,
  kLiningMaterial,
  kFluid,
  kMount,
  kSensor,
  kResult,
};

// A layer that the sound crosses.
struct SoundLayer {
  double velocity = 0;   // m/s; 0: there is no such layer
  double thickness = 0;  // mm; of the fluid: the inner diameter
  double angle = 0;      // radians from the pipe's normal
  double run = 0;        // mm along the pipe for one crossing
};

struct SpacingResult {
  double outer_diameter = 0;  // mm
  SoundLayer wall;
  SoundLayer lining;
  SoundLayer fluid;
  double sum = 0;  // mm along the pipe from element to element
  double spacing =
      0;  // mm, as the sensors are to be fixed: never below 0, on the scale of those that have one
  std::string result1;
  std::string result2;  // step of the scale; empty for sensors without one
};

struct SpacingFailure {
  enum class Why {
    kNotANumber,
    kNothingChosen,    // a list without a selection
    kTotalReflection,  // the sound does not get out of the wedge into this layer
    kOverflow,
  };
  Why why;
  SpacingField field;
  bool operator==(const SpacingFailure&) const = default;
};

std::variant<SpacingResult, SpacingFailure> CalculateSpacing(const SpacingInputs& inputs);

double FncPi();
// Nothing at 1 or beyond, where there is no angle or its tangent has no value.
std::optional<double> FncASin(double x);
double ToMillimetre(double inch);
double FromMillimetre(double mm);
double ToMetrePerSecond(double feet_per_second);
double FromMetrePerSecond(double metre_per_second);

}  // namespace vlt
