// SPDX-License-Identifier: GPL-3.0-or-later
// The sheet that a fitter takes along: inputs, result, drawing, date, and room to write by hand. A4, upright.
#pragma once

#include <string>
#include <vector>

#include "calc/spacing_drawing.h"
#include "platform/sheet.h"

namespace vlt {

// A line of the list of inputs as the window shows it.
struct SheetRow {
  std::string caption;
  std::string value;
  std::string unit;
  std::string range;
};

struct SheetParts {
  std::string title;
  std::string stamp;    // date and time
  std::string program;  // who has made it
  std::vector<SheetRow> inputs;
  std::vector<SheetRow> results;
  Sheet drawing;
};

Sheet MakeSpacingSheet(const SheetParts& parts, const TextOf& text);

}  // namespace vlt
