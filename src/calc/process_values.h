// SPDX-License-Identifier: GPL-3.0-or-later
// What the process page last knew of the pipe, from the slots that it shares with the parameter file.
#pragma once

#include <string>
#include <vector>

#include "calc/spacing.h"
#include "state/app.h"

namespace vlt {

// A field of the calculator as the process page knows it.
struct ProcessValue {
  enum class State {
    kThere,
    kNotThere,    // the page knows nothing
    kOtherPipe,   // it was read from another channel or meter than the page shows
    kNotOffered,  // the calculator's list has no such entry
  };
  SpacingField field = SpacingField::kOuterDiameter;
  State state = State::kNotThere;
  int index = -1;     // of a list
  std::string shown;  // of a typed field in the unit system that was asked for; of a list its entry
};

// All fields in the order of the window. An open process page is asked to keep what it shows first.
std::vector<ProcessValue> ReadProcessValues(App& app, int unit_flag);

}  // namespace vlt
