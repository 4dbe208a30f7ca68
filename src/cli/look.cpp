// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/look.h"

#include <algorithm>
#include <functional>

#include "cli/trouble.h"
#include "values/number_text.h"
#include "window/chart.h"
#include "window/drawing.h"

namespace vlt {
namespace {

using Part = std::vector<int>;

template <class T>
const T& As(const Control& control) {
  return static_cast<const T&>(control);
}

// How one kind of control is looked at. What is null is not there.
struct Look {
  ControlKind kind;
  std::string (*text)(const Control&);
  std::string (*value)(const Control&);
  // The sizes that the numbers of a part stay below, and the lowest number.
  Part (*sizes)(const Control&);
  int lowest;
  std::string (*part)(const Control&, const Part&);
};

std::string Ticked(bool ticked) { return ticked ? "ticked" : "unticked"; }

std::span<const ChartPoint> ShownPoints(const Control& control) { return As<Chart>(control).Shown(); }

std::string PointText(const ChartPoint& point) {
  return GeneralText(point.x) + " " + (point.IsHole() ? "-" : GeneralText(point.y));
}

const Look kLooks[] = {
    {ControlKind::kCheckBox, nullptr, [](const Control& c) { return Ticked(As<CheckBox>(c).Ticked()); },
     nullptr, 0, nullptr},
    {ControlKind::kOptionButton, nullptr,
     [](const Control& c) { return Ticked(As<OptionButton>(c).Value()); }, nullptr, 0, nullptr},
    {ControlKind::kTextBox, [](const Control& c) { return As<TextBox>(c).Text(); }, nullptr, nullptr, 0,
     nullptr},
    {ControlKind::kComboBox, [](const Control& c) { return As<ComboBox>(c).Text(); },
     [](const Control& c) { return std::to_string(As<ComboBox>(c).ListIndex()); },
     [](const Control& c) { return Part{As<ComboBox>(c).Count()}; }, 0,
     [](const Control& c, const Part& at) {
       return As<ComboBox>(c).Items()[static_cast<std::size_t>(at[0])];
     }},
    {ControlKind::kTab,
     [](const Control& c) { return As<TabControl>(c).TabCaption(As<TabControl>(c).Tab()); },
     [](const Control& c) { return std::to_string(As<TabControl>(c).Tab()); },
     [](const Control& c) { return Part{As<TabControl>(c).Count()}; }, 0,
     [](const Control& c, const Part& at) { return As<TabControl>(c).TabCaption(at[0]); }},
    {ControlKind::kStatusBar, [](const Control& c) { return As<StatusBar>(c).Panel(1); }, nullptr,
     [](const Control& c) { return Part{As<StatusBar>(c).PanelCount() + 1}; }, 1,
     [](const Control& c, const Part& at) { return As<StatusBar>(c).Panel(at[0]); }},
    {ControlKind::kProgressBar,
     [](const Control& c) {
       const auto& bar = As<ProgressBar>(c);
       return std::to_string(bar.Value()) + "/" + std::to_string(bar.Max());
     },
     nullptr, nullptr, 0, nullptr},
    {ControlKind::kTimer, nullptr,
     [](const Control& c) { return std::string(As<Timer>(c).Running() ? "running" : "stopped"); }, nullptr, 0,
     nullptr},
    {ControlKind::kGrid, nullptr, nullptr,
     [](const Control& c) {
       return Part{As<Grid>(c).Rows(), As<Grid>(c).Columns()};
     },
     0, [](const Control& c, const Part& at) { return As<Grid>(c).Cell(at[0], at[1]); }},
    {ControlKind::kChart, [](const Control& c) { return As<Chart>(c).Y().title; },
     [](const Control& c) { return std::to_string(ShownPoints(c).size()); },
     [](const Control& c) { return Part{static_cast<int>(ShownPoints(c).size()) + 1}; }, 1,
     [](const Control& c, const Part& at) {
       return PointText(ShownPoints(c)[static_cast<std::size_t>(at[0]) - 1]);
     }},
    {ControlKind::kPicture, [](const Control& c) { return As<Picture>(c).Art(); }, nullptr, nullptr, 0,
     nullptr},
    {ControlKind::kDrawing, [](const Control& c) { return As<Drawing>(c).Note(); },
     [](const Control& c) { return std::to_string(As<Drawing>(c).Shown().Items().size()); }, nullptr, 0,
     nullptr},
};

const Look* LookOf(const Control& control) {
  const auto* look = std::find_if(std::begin(kLooks), std::end(kLooks),
                                  [&](const Look& row) { return row.kind == control.Kind(); });
  return look == std::end(kLooks) ? nullptr : look;
}

std::string PartText(const Place& place) {
  const Look* look = LookOf(*place.control);
  const Part sizes = look != nullptr && look->sizes != nullptr ? look->sizes(*place.control) : Part{};
  const bool there =
      !sizes.empty() && std::equal(place.part.begin(), place.part.end(), sizes.begin(), sizes.end(),
                                   [&](int at, int size) { return at >= look->lowest && at < size; });
  if (!there) throw Trouble{ScriptStatus::kUnknown, "there is no part " + place.Name()};
  return look->part(*place.control, place.part);
}

// What goes beyond the value: why an exchange with it failed, and where it comes from.
void AddNotes(const Control& control, std::vector<std::string>& fields) {
  const bool known = control.Origin() != ValueOrigin::kNone;
  if (known || !control.Mark().empty()) fields.push_back(control.Mark());
  if (known) fields.insert(fields.end(), {OriginOf(control), control.OriginText()});
}

// Of a row that has a box; a title whose rows are ticked in part counts as such.
std::string TickText(RowTick tick) {
  return tick == RowTick::kSome ? "partly" : Ticked(tick == RowTick::kOn);
}

std::vector<std::string> GridRow(const Place& place, const Grid& grid, int row) {
  std::vector<std::string> fields{Place{place.form, place.control, {row}}.Name()};
  for (int column = 0; column < grid.Columns(); ++column) {
    fields.push_back(grid.IsHidden(column) ? std::string() : grid.Cell(row, column));
  }
  if (grid.Ticked(row) != RowTick::kNoBox) fields.push_back(TickText(grid.Ticked(row)));
  return fields;
}

}  // namespace

std::string TextOf(const Place& place) {
  if (!place.part.empty()) return PartText(place);
  const Look* look = LookOf(*place.control);
  return look != nullptr && look->text != nullptr ? look->text(*place.control) : place.control->Caption();
}

std::string StateOf(const Control& control) {
  if (!control.Visible()) return "hidden";
  return control.Enabled() ? "enabled" : "disabled";
}

std::string OriginOf(const Control& control) {
  return std::string(kOriginWords[static_cast<std::size_t>(control.Origin())]);
}

std::string ValueOf(const Control& control) {
  const Look* look = LookOf(control);
  return look != nullptr && look->value != nullptr ? look->value(control) : std::string();
}

std::vector<std::vector<std::string>> Description(const Place& place) {
  const Control& control = *place.control;
  if (!place.part.empty()) return {{place.Name(), TextOf(place)}};
  std::vector<std::vector<std::string>> lines{
      {place.Name(), TextOf(place), StateOf(control), ValueOf(control)}};
  AddNotes(control, lines.front());
  if (control.Kind() == ControlKind::kStatusBar) {
    for (int panel = 2; panel <= As<StatusBar>(control).PanelCount(); ++panel) {
      const Place part{place.form, place.control, {panel}};
      lines.push_back({part.Name(), TextOf(part)});
    }
  }
  if (control.Kind() == ControlKind::kGrid) {
    const auto& grid = As<Grid>(control);
    for (int row = 0; row < grid.Rows(); ++row) lines.push_back(GridRow(place, grid, row));
  }
  return lines;
}

}  // namespace vlt
