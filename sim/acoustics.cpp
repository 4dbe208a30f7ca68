// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/acoustics.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <span>

namespace sim {

namespace {

// Sound velocities in m/s by code; the code after the last one takes the velocity that was set.
constexpr double kPipe[] = {3206, 3141, 2400, 2260, 2460, 3080, 2505, 3000, 1150, 1400, 1330, 1350};
constexpr double kLining[] = {2505, 2505, 2500, 1900, 1240, 3200, 2400};
constexpr double kFluid[] = {1482, 1510, 1497, 1610, 1168, 1306, 889,  1207, 1665,
                             1325, 1480, 1121, 1308, 1423, 1350, 1170, 600};
constexpr int kCrossings[] = {2, 1, 4, 8};  // by mounting code: V, Z, W, WW

constexpr double kWedgeVelocity = 2730;
constexpr double kWedgeDelay = 7.5e-6;      // both wedges and the cable
constexpr double kWedgeContact = 0.005;     // from the wedge's edge to where the sound enters the pipe
constexpr double kMetricLength = 1e-5;      // 0.01 mm
constexpr double kEnglishLength = 2.54e-6;  // 0.0001 inch

double ByCode(std::span<const double> table, int code, double own) {
  return code >= 0 && code < static_cast<int>(table.size()) ? table[code] : own;
}

double WedgeAngle(int sensor_type) { return (38 + 0.5 * sensor_type) * std::numbers::pi / 180; }

Layer Refract(const Layer& wedge, double velocity, double thickness) {
  velocity = std::max(velocity, 1.0);
  // Beyond the critical angle nothing would pass; the meter goes on with a flat ray as a real one does.
  const double sine = std::min(std::sin(wedge.angle) * velocity / wedge.velocity, 0.98);
  return {velocity, std::asin(sine), thickness};
}

double Reach(const Layer& layer) { return layer.thickness * std::tan(layer.angle); }
double Transit(const Layer& layer) { return layer.thickness / std::cos(layer.angle) / layer.velocity; }

}  // namespace

double SoundPath::Area() const { return std::numbers::pi / 4 * fluid.thickness * fluid.thickness; }

double SoundPath::Difference(double velocity) const {
  return 2 * crossings * fluid.thickness * std::tan(fluid.angle) * velocity /
         (fluid.velocity * fluid.velocity);
}

SoundPath PathFor(const Memory& holding, std::uint32_t distance, bool english) {
  const auto code = [&](std::uint32_t at) { return static_cast<int>(holding.Word(at + distance)); };
  const auto length = [&](std::uint32_t at) {
    return holding.Long(at + distance) * (english ? kEnglishLength : kMetricLength);
  };
  const double speed = english ? 0.3048 : 1;

  SoundPath path;
  path.wedge = {kWedgeVelocity, WedgeAngle(code(0x00D0)), 0};
  path.diameter = length(0x00D2);
  const double lining = code(0x00DE) == 0 ? 0 : length(0x00E2);
  const double inner = std::max(path.diameter - 2 * (length(0x00DA) + lining), 1e-3);
  path.pipe = Refract(path.wedge, ByCode(kPipe, code(0x00D6), code(0x00D8) * speed), length(0x00DA));
  path.lining = Refract(path.wedge, ByCode(kLining, code(0x00DE), code(0x00E0) * speed), lining);
  path.fluid = Refract(path.wedge, ByCode(kFluid, code(0x00E6), code(0x00E8) * speed), inner);
  path.viscosity = holding.Double(0x00EA + distance) * 1e-6 * speed * speed;
  path.crossings = kCrossings[std::clamp(code(0x00F2), 0, 3)];
  path.spacing =
      2 * (Reach(path.pipe) + Reach(path.lining)) + path.crossings * Reach(path.fluid) - 2 * kWedgeContact;
  path.delay = kWedgeDelay + 2 * (Transit(path.pipe) + Transit(path.lining));
  path.time = path.delay + path.crossings * Transit(path.fluid);
  return path;
}

void ConvertProcess(Memory& holding, std::uint32_t distance, bool to_english) {
  const auto scaled = [&](double value, double factor) {
    return std::round(to_english ? value * factor : value / factor);
  };
  for (std::uint32_t at : {0x00D2u, 0x00DAu, 0x00E2u}) {
    const double value = scaled(holding.Long(at + distance), kMetricLength / kEnglishLength);
    holding.PutLong(at + distance, static_cast<std::int64_t>(std::min(value, 2147483647.0)));
  }
  for (std::uint32_t at : {0x00D8u, 0x00E0u, 0x00E8u}) {
    const double value = scaled(holding.Word(at + distance), kFeetPerMetre);
    holding.PutWord(at + distance, static_cast<int>(std::min(value, 32767.0)));
  }
  const double factor = kFeetPerMetre * kFeetPerMetre;
  const double viscosity = holding.Double(0x00EA + distance);
  holding.PutDouble(0x00EA + distance, to_english ? viscosity * factor : viscosity / factor);
}

}  // namespace sim
