// SPDX-License-Identifier: GPL-3.0-or-later
// What the process page last knew of the pipe, from the slots that it shares with the parameter file.
#pragma once

#include <optional>
#include <string>

#include "calc/spacing.h"
#include "state/app.h"

namespace vlt {

struct ProcessValues {
  // By list index; nothing where the page knows nothing.
  std::optional<int> pipe;
  std::optional<int> lining;
  std::optional<int> fluid;
  std::optional<int> mount;
  std::optional<int> sensor;
  // Texts in the unit system that was asked for; empty where the page knows nothing.
  std::string outer_diameter;
  std::string wall_thickness;
  std::string lining_thickness;
  std::string pipe_velocity;
  std::string lining_velocity;
  std::string fluid_velocity;
  int count = 0;  // how many of all these are there
};

// An open process page is asked to keep what it shows first.
ProcessValues ReadProcessValues(App& app, int unit_flag);

}  // namespace vlt
