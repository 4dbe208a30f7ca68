// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of the settings report as data: sections in their order, and in each its rows.
#pragma once

#include <array>
#include <span>

#include "meter/parameter.h"

namespace vlt {

// What stands before a value.
enum class Sign : std::uint8_t {
  kNone,
  kApostrophe,  // a spreadsheet then takes the number as text and keeps its zeros
};

// One line. Its value is that of its parameter; of several, the first stands in front and the others behind a
// blank, parted by "/".
struct ReportRow {
  std::array<const Parameter*, 3> parameters = {};
  // Text ids of the label, joined by blanks; none: the literal, or the caption of the first parameter.
  std::array<int, 3> label = {};
  const char* literal = nullptr;     // a label that is the same in every language
  const char* behind = "";           // the label
  int words = 0;                     // text id of what follows the label without a blank
  bool words_in_both_forms = false;  // or only in the report of all channels
  bool output_name = false;          // the name of the output ("DO1") stands before the label
  Sign sign = Sign::kNone;
  int unit_text = 0;  // text id of the unit, where it is another than the parameter's
  bool unit_in_label = false;
};

struct ReportSection {
  int heading = 0;                     // text id, in brackets
  int subheading = 0;                  // text id behind it
  Location places = Location::kMeter;  // what the columns stand for
  std::span<const ReportRow> rows;
};

std::span<const ReportSection> ReportSections();

}  // namespace vlt
