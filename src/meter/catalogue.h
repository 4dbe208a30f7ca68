// SPDX-License-Identifier: GPL-3.0-or-later
// The whole catalogue: all groups of parameters in one place, in the order in which they are shown, kept and
// written, and what a person calls a parameter and the place where a meter has it.
#pragma once

#include <compare>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "meter/parameter.h"

namespace vlt {

// In which order a page writes the rows of its group. A row that is not named comes after those that are.
using WriteOrder = std::span<const Parameter* const>;

struct ParameterGroup {
  std::string_view name;  // what stands before the "." of its rows: "process"
  int title = 0;          // text id
  std::span<const Parameter> rows;
  WriteOrder write_order;
};

// In the order of the pages.
std::span<const ParameterGroup> ParameterGroups();
const ParameterGroup& GroupOf(const Parameter& row);
// Where a row comes when its group is written: smaller numbers first, no two rows of a group alike.
std::ptrdiff_t PlaceInWriting(const Parameter& row);

// The row of a whole name ("process.outer_diameter"), or null.
const Parameter* FindParameter(std::string_view name);

// Places that any parameter has at most: the digital outputs.
inline constexpr int kMostPlaces = 4;

// One parameter of a meter: a row, and the channel or output that it is read from, counted from 0.
struct ParameterPlace {
  const Parameter* row = nullptr;
  int index = 0;

  int Address() const { return AddressOf(*row, index); }
  bool operator==(const ParameterPlace&) const = default;
};

// The place of a row in the catalogue's order: groups in their order, in each group place by place, in each
// place row by row. A list of places sorted by it reads like the pages.
bool InCatalogueOrder(const ParameterPlace& a, const ParameterPlace& b);

// Whether a meter of this shape has a place: as ExistsIn, and the units of the heat calculation too where the
// meter on two pipes does not calculate heat, because its outputs' thermal switches go by them.
bool HasPlace(const ParameterPlace& place, const MeterFacts& facts);

// Every parameter that a meter of this shape has, in catalogue order. What the meter measures is none of
// them: the two temperature inputs of the maintenance page change with every read.
std::vector<ParameterPlace> PlacesOf(const MeterFacts& facts);

inline std::string PlaceName(const Parameter& row, int index) { return PlaceName(row.location, index); }
// The index of such a name among the places of a row, an empty name for the first of them; -1 for none.
int PlaceIndexOf(const Parameter& row, std::string_view name);
// "PROCESS SETTING", as the page is called.
std::string GroupTitle(const ParameterGroup& group, Language language);
// What a person calls a row within its group, no two alike: "OUTER DIAMETER", "SUPPLY TEMP. CALIBRATION
// ZERO".
std::string RowTitle(const Parameter& row, Language language);
// Group, place and row in one line, for messages: "RANGE CH1 FULL SCALE 1".
std::string PlaceTitle(const ParameterPlace& place, Language language);

}  // namespace vlt
