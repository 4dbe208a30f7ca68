// SPDX-License-Identifier: GPL-3.0-or-later
// A line of output: an event and its fields. Written with tabs the fields stand one after the other in the
// order of their shape; as JSON each has a name.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vlt {

// The event and its fields, all of them texts.
using EventFields = std::vector<std::string>;

// What the fields of an event are called, with a mark behind the name for what JSON makes of the text:
//   #     a number, null when there is none
//   ?     a number where the text is one
//   *     the value of the parameter that the field "name" names: a number when the parameter is one
//   ...   the rest of the fields as a list
// The last fields of an event may be missing.
inline constexpr std::string_view kFieldMarks = "#?*.";
struct EventShape {
  static constexpr std::size_t kMost = 10;
  std::string_view event;
  std::array<std::string_view, kMost> names;
};

// Every event that the companion tells of with fields of its own.
std::span<const EventShape> EventShapes();
// What the fields of an event are called; of one that is not among the shapes all of them are the list
// "fields".
std::span<const std::string_view> NamesOf(std::string_view event);
// The row of a grid: its name and its cells.
std::span<const std::string_view> GridRowNames();

// "status<TAB>NAME<TAB>TEXT". In a field "\t", "\n", "\r" and "\\" stand for tab, line feed, carriage return
// and backslash.
std::string TabbedLine(const EventFields& fields);
std::string EscapedField(const std::string& field);

// {"event":"status","name":"...","text":"..."}. A byte that is no UTF-8 becomes U+FFFD.
std::string JsonLine(const EventFields& fields, std::span<const std::string_view> names);

}  // namespace vlt
