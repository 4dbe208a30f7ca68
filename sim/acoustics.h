// SPDX-License-Identifier: GPL-3.0-or-later
// What the meter works out from its process settings: angles, times and spacing of the sensors.
#pragma once

#include "sim/memory.h"

namespace sim {

struct Layer {
  double velocity = 0;   // m/s
  double angle = 0;      // radians from the normal of the pipe's wall
  double thickness = 0;  // m
};

// The path of the sound, in SI units whatever the meter's unit system is.
struct SoundPath {
  Layer wedge, pipe, lining, fluid;  // the fluid's thickness is the inner diameter
  double diameter = 0;               // outer, m
  double viscosity = 0;              // m2/s
  int crossings = 1;                 // of the fluid: 1 in Z, 2 in V, 4 in W, 8 in WW mounting
  double spacing = 0;                // between the sensors, m; below 0 when they would have to overlap
  double delay = 0;                  // s outside of the fluid
  double time = 0;                   // s altogether, in fluid at rest

  double Area() const;  // cross section of the fluid, m2
  // Seconds by which the way against a flow of `velocity` m/s takes longer than the way with it.
  double Difference(double velocity) const;
};

// `holding` has the process registers at 00D0H plus `distance`.
SoundPath PathFor(const Memory& holding, std::uint32_t distance, bool english);

// Turns the process settings at `distance` into the other unit system: mm to inch, m/s to ft/s, or back.
void ConvertProcess(Memory& holding, std::uint32_t distance, bool to_english);

inline constexpr double kFeetPerMetre = 1 / 0.3048;

}  // namespace sim
