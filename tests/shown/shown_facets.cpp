// SPDX-License-Identifier: GPL-3.0-or-later
#include "shown/shown_facets.h"

#include "desktop/layouts/layouts.h"
#include "values/hex_digits.h"
#include "values/number_text.h"
#include "window/chart.h"
#include "window/drawing.h"

namespace vlt::test {
namespace {

// One line of text, however many it has.
std::string OneLine(const std::string& text) {
  std::string line;
  for (const char c : text) line += c == '\n' ? "\\n" : std::string(1, c);
  return line;
}

// The button face of the system has two digits more.
std::string Colour(unsigned bgr) { return HexDigits(bgr, bgr > 0xFFFFFF ? 8 : 6); }

class Teller {
 public:
  Teller(Facets& facets, std::string form) : facets_(facets), form_(std::move(form)) {}

  void Tell(const Control& control) {
    name_ = control.FullName();
    Look(control);
    Put("", State(control) + control.Caption());
    Put(".hint", control.Hint());
    Put(".mark", control.Mark());
    if (control.Origin() != ValueOrigin::kNone) {
      Put(".origin", std::to_string(static_cast<int>(control.Origin())) + " " + control.OriginText());
    }
    switch (control.Kind()) {
      case ControlKind::kCheckBox:
        return Is(".ticked", As<CheckBox>(control).Value() != 0);
      case ControlKind::kOptionButton:
        return Is(".chosen", As<OptionButton>(control).Value());
      case ControlKind::kTextBox:
        return Text(As<TextBox>(control));
      case ControlKind::kComboBox:
        return List(As<ComboBox>(control));
      case ControlKind::kLabel:
        return Ground(As<Label>(control).BackColour(), kButtonFaceColour);
      case ControlKind::kPushButton:
        return Ground(As<PushButton>(control).BackColour(), kButtonFaceColour);
      case ControlKind::kTimer:
        return Is(".running", As<Timer>(control).Running());
      case ControlKind::kStatusBar:
        return Panels(As<StatusBar>(control));
      case ControlKind::kProgressBar:
        return Progress(As<ProgressBar>(control));
      case ControlKind::kTab:
        return Tabs(As<TabControl>(control));
      case ControlKind::kGrid:
        return Cells(As<Grid>(control));
      case ControlKind::kChart:
        return Axes(As<Chart>(control));
      case ControlKind::kPicture:
        return Put(".art", As<Picture>(control).Art());
      case ControlKind::kDrawing:
        return Put(".note", As<Drawing>(control).Note());
      case ControlKind::kMenuItem:
        return Is(".usable", As<MenuItem>(control).Usable());
      case ControlKind::kFrame:
      case ControlKind::kUpDown:
        return;
    }
  }

 private:
  template <class T>
  static const T& As(const Control& control) {
    return static_cast<const T&>(control);
  }
  void Put(const std::string& facet, const std::string& text) {
    if (!text.empty()) facets_[name_ + facet] = OneLine(text);
  }
  void Is(const char* facet, bool holds) {
    if (holds) Put(facet, "yes");
  }
  static std::string State(const Control& control) {
    if (!control.Visible()) return "(hidden) ";
    return control.Enabled() ? "" : "(disabled) ";
  }
  void Look(const Control& control) {
    const Font& font = control.GetFont();
    if (!font.name.empty()) {
      Put(".font", font.name + " " + std::to_string(font.size) + (font.bold ? " bold" : ""));
    }
  }
  void Ground(unsigned colour, unsigned usual) {
    if (colour != usual) Put(".ground", Colour(colour));
  }
  void Text(const TextBox& box) {
    Put(".text", box.Text());
    if (box.MaxLength() > 0) Put(".most", std::to_string(box.MaxLength()));
    Is(".locked", box.Locked());
    Ground(box.BackColour(), kWindowColour);
  }
  void List(const ComboBox& box) {
    std::string items;
    for (const std::string& item : box.Items()) items += (items.empty() ? "" : " | ") + item;
    Put(".items", items);
    if (box.ListIndex() >= 0) Put(".chosen", std::to_string(box.ListIndex()) + " " + box.Text());
  }
  // The first panel of the main window's bar bears the time, which is virtual.
  void Panels(const StatusBar& bar) {
    for (int at = 1; at <= bar.PanelCount(); ++at) Put("." + std::to_string(at), bar.Panel(at));
  }
  void Progress(const ProgressBar& bar) {
    Put(".at", std::to_string(bar.Value()) + "/" + std::to_string(bar.Max()));
  }
  void Tabs(const TabControl& tabs) {
    for (int at = 0; at < tabs.Count(); ++at) {
      const std::string caption = (tabs.TabEnabled(at) ? "" : "(disabled) ") + tabs.TabCaption(at);
      Put("." + std::to_string(at), caption + (tabs.Tab() == at ? " <" : ""));
    }
  }
  void Cells(const Grid& grid) {
    const GridShape* shape = FindGridShape(form_, grid.Name());
    const auto shown = [&](int own, int of_layout) { return std::to_string(shape ? of_layout : own); };
    std::string widths;
    for (int at = 0; at < grid.Columns(); ++at) {
      widths += " " + shown(grid.ColumnWidth(at), shape ? shape->columns[static_cast<std::size_t>(at)] : 0);
    }
    Put(".columns", widths.substr(1));
    Put(".size", shown(grid.Width(), shape ? shape->width : 0) + " x " +
                     shown(grid.Height(), shape ? shape->height : 0) + (grid.IsDense() ? " dense" : "") +
                     (grid.Follows() ? " follows" : ""));
    if (grid.SelectedRow() > 0) Put(".selected", std::to_string(grid.SelectedRow()));
    for (int row = 0; row < grid.Rows(); ++row) {
      std::string cells;
      for (int at = 0; at < grid.Columns(); ++at) cells += (at == 0 ? "" : " | ") + grid.Cell(row, at);
      const int look = static_cast<int>(grid.Style(row)) * 10 + static_cast<int>(grid.Ticked(row));
      if (look != 0) cells += " {" + std::to_string(look) + "}";
      Put("(" + ZeroPadded(row, 3) + ")", cells);
    }
  }
  void Axis(const char* facet, const ChartAxis& axis) {
    Put(facet, GeneralText(axis.min) + " to " + GeneralText(axis.max) + " " + axis.title);
  }
  void Axes(const Chart& chart) {
    Axis(".x", chart.X());
    Axis(".y", chart.Y());
    for (int at = 0; at < chart.SeriesCount(); ++at) {
      Put("." + std::to_string(at), chart.SeriesName(at) + " " + Colour(chart.Colour(at)) +
                                        (chart.Style(at) == SeriesStyle::kFaint ? " faint " : " ") +
                                        std::to_string(chart.Shown(at).size()));
    }
  }

  Facets& facets_;
  std::string form_;
  std::string name_;
};

}  // namespace

Facets FacetsOf(const Form& form) {
  Facets facets{{"", form.Caption() + (form.HasCloseCommand() ? "" : " (no close)")}};
  Teller teller(facets, form.Name());
  for (const Control* control : form.Controls()) teller.Tell(*control);
  return facets;
}

std::vector<std::string> Differences(const Facets& before, const Facets& after, const std::string& except) {
  std::vector<std::string> lines;
  const auto is_told = [&](const std::string& name) {
    return except.empty() || (name != except && !name.starts_with(except + "."));
  };
  for (const auto& [name, text] : after) {
    const auto old = before.find(name);
    if (is_told(name) && (old == before.end() || old->second != text)) {
      lines.emplace_back(name).append(": ").append(text);
    }
  }
  for (const auto& [name, text] : before) {
    if (is_told(name) && !after.contains(name)) lines.push_back(name + ": -");
  }
  return lines;
}

}  // namespace vlt::test
