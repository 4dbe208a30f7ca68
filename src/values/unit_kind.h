// SPDX-License-Identifier: GPL-3.0-or-later
// Which unit a value carries.
#pragma once

namespace vlt {

enum class UnitKind {
  // By unit system; the entries of BuildBaseUnitNames in their order.
  kLength,
  kVelocity,
  kViscosity,
  kVoltage,
  // By what the meter has been set to.
  kFlow,   // of a channel's measured value: a velocity or a flow, as its kind says
  kTotal,  // of a channel
  kHeatFlow,
  kHeatTotal,
  kTemperature,
  // Fixed.
  kPercent,
  kSecond,
  kMillisecond,
  kMicrosecond,
  kMinute,
  kHertz,
  kPulsesPerSecond,
  kPulses,
  kNone,
};

}  // namespace vlt
