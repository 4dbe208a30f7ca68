// SPDX-License-Identifier: GPL-3.0-or-later
// Where the controls of a window lie: one table a window, read by one builder.
//
// A table is read from top to bottom and fills a flow that runs downwards. Containers (columns, groups, tabs)
// open a flow of their own and end with End(). Names are full names of controls ("Label8(0)"). Tab order
// follows the table.
#pragma once

#include <array>
#include <span>
#include <string_view>

namespace vlt {

enum class LayoutKind : unsigned char {
  kColumns,     // flows side by side; each begins with kColumn, kEnd ends them all
  kColumn,      //
  kSide,        // a column that is no wider than it needs
  kGroup,       // a box with a title: of a frame control, or a text id, or none
  kTabs,        // pages of a tab control; each begins with kTab, kEnd ends them all
  kTab,         //
  kEnd,         //
  kRow,         // cells of a grid: caption or tick, entry, unit, ...; an empty name leaves a cell free
  kCells,       // a row of a table of values: entries as narrow as the window asks, all of them equal
  kStrip,       // one beside the other; ">" takes the room that is left, "*name" is a title
  kWide,        // one control that takes the whole width and the height that is left
  kText,        // a label with room for so many lines, whatever it says; it wraps, and scrolls
  kSpace,       // takes the height that is left
  kNavigation,  // the frame's column of page buttons; ">" as in a strip
  kPageArea,    // the frame's place for pages; kEmptyPage comes behind it
  kEmptyPage,   // what the place shows while no page is open; ends with kEnd
  kBackdrop,    // a picture behind the whole window, which gets its size; the flow lies at its bottom
};

inline constexpr std::size_t kLayoutNames = 14;

// What a grid asks of its window, in its logical units (fifteen to a pixel).
struct GridShape {
  std::span<const int> columns;  // how wide each is; the last one takes what the others leave
  int width = 0;
  int height = 0;  // 0: as high as the room that there is
};

struct LayoutItem {
  LayoutKind kind;
  std::array<std::string_view, kLayoutNames> names{};
  int text_id = 0;
  // In narrow letters; entries have room for the widest total and for the text of `text_id`.
  bool narrow = false;
  // The row is repeated for each number from `first` to `last`, which stands for every "#" in its names.
  // 0 as the last one: it is there once, as it stands.
  int first = 0;
  int last = 0;
  int lines = 0;
  GridShape grid = {};  // of kWide
};

template <class... Names>
constexpr LayoutItem MakeItem(LayoutKind kind, Names... names) {
  static_assert(sizeof...(names) <= kLayoutNames);
  return {kind, {std::string_view(names)...}};
}

namespace layout {

constexpr LayoutItem Columns() { return {LayoutKind::kColumns}; }
constexpr LayoutItem Column() { return {LayoutKind::kColumn}; }
constexpr LayoutItem Side() { return {LayoutKind::kSide}; }
constexpr LayoutItem Group(const char* frame) { return MakeItem(LayoutKind::kGroup, frame); }
constexpr LayoutItem TitledGroup(int text_id) { return {LayoutKind::kGroup, {}, text_id}; }
constexpr LayoutItem Box() { return {LayoutKind::kGroup}; }
constexpr LayoutItem Tabs(const char* control) { return MakeItem(LayoutKind::kTabs, control); }
constexpr LayoutItem Tab() { return {LayoutKind::kTab}; }
constexpr LayoutItem End() { return {LayoutKind::kEnd}; }
template <class... Names>
constexpr LayoutItem Row(Names... names) {
  return MakeItem(LayoutKind::kRow, names...);
}
template <class... Names>
constexpr LayoutItem Cells(Names... names) {
  return MakeItem(LayoutKind::kCells, names...);
}
template <class... Names>
constexpr LayoutItem Strip(Names... names) {
  return MakeItem(LayoutKind::kStrip, names...);
}
// A row or strip once for each number: Repeat(1, 31, Row("lblStation(#)", "txtStation(#)")).
constexpr LayoutItem Repeat(int first, int last, LayoutItem row) {
  row.first = first;
  row.last = last;
  return row;
}
// Cells of a list that is tight, in narrow letters; its entries have room for the text of an id too.
constexpr LayoutItem Narrow(LayoutItem cells, int text_id) {
  cells.narrow = true;
  cells.text_id = text_id;
  return cells;
}
constexpr LayoutItem Wide(const char* control) { return MakeItem(LayoutKind::kWide, control); }
// A grid that takes the whole width. Without a shape its window sets one (Grid::SetColumnWidth).
constexpr LayoutItem Wide(const char* grid, GridShape shape) {
  LayoutItem item = MakeItem(LayoutKind::kWide, grid);
  item.grid = shape;
  return item;
}
// How wide these columns are together.
template <std::size_t N>
constexpr int Sum(const int (&columns)[N]) {
  int sum = 0;
  for (const int column : columns) sum += column;
  return sum;
}
constexpr LayoutItem Text(const char* label, int lines) {
  LayoutItem text = MakeItem(LayoutKind::kText, label);
  text.lines = lines;
  return text;
}
constexpr LayoutItem Space() { return {LayoutKind::kSpace}; }
template <class... Names>
constexpr LayoutItem Navigation(Names... names) {
  return MakeItem(LayoutKind::kNavigation, names...);
}
constexpr LayoutItem PageArea() { return {LayoutKind::kPageArea}; }
constexpr LayoutItem EmptyPage() { return {LayoutKind::kEmptyPage}; }
constexpr LayoutItem Backdrop(const char* picture) { return MakeItem(LayoutKind::kBackdrop, picture); }

}  // namespace layout

enum class WindowStyle : unsigned char {
  kPage,
  kFrame,
  kDialog,    // as large as its controls ask
  kTool,      // a dialog that a person may make larger, and that does not stand in the way of the main window
  kWorkshop,  // a dialog that begins as large as the screen allows
  kSplash,
};

struct WindowLayout {
  const char* form;
  WindowStyle style;
  std::span<const LayoutItem> items;
  const char* accept = "";     // button that the enter key presses
  const char* cancel = "";     // button that the escape key presses
  bool enter_is_dead = false;  // the enter key does nothing, also on the button that has the focus
};

}  // namespace vlt
