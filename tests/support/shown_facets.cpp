// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/shown_facets.h"

#include <regex>
#include <sstream>

#include "desktop/layouts/layouts.h"
#include "values/hex_digits.h"
#include "values/number_text.h"
#include "window/chart.h"
#include "window/drawing.h"
#include "window/form.h"

namespace vlt::test {
namespace {

// One line of text, however many it has, without what the clock has put into it.
std::string Told(const std::string& text) {
  static const std::pair<std::regex, const char*> kLeftOut[] = {
      {std::regex("\n"), "\\n"},
      {std::regex(R"((\d{4}/\d\d/\d\d )?\d\d:\d\d(:\d\d)?|\d{14})"), "DATE"},
  };
  const auto is_there = [&](const char* sign) { return text.find(sign) != std::string::npos; };
  if (!is_there("\n") && !is_there(":") && !is_there("_2")) return text;
  std::string told = text;
  for (const auto& [what, instead] : kLeftOut) told = std::regex_replace(told, what, instead);
  return told;
}

// The button face of the system has two digits more.
std::string Colour(unsigned bgr) { return HexDigits(bgr, bgr > 0xFFFFFF ? 8 : 6); }

class Teller {
 public:
  explicit Teller(Facets& facets) : facets_(facets) {}

  void Tell(const Control& control) {
    static const char* const kOrigins[] = {"", "read", "typed", "from a file", "outdated"};
    name_ = control.FullName();
    const Font& font = control.GetFont();
    if (!font.name.empty()) {
      Put("font", font.name + " " + std::to_string(font.size) + (font.bold ? " bold" : ""));
    }
    if (!control.Enabled()) Put("state", "grey");
    if (!control.Visible()) Put("state", "hidden");
    Put("", control.Caption());
    Put("hint", control.Hint());
    if (!control.Mark().empty()) Put("mark", "mark \"" + control.Mark() + "\"");
    Put("origin", kOrigins[static_cast<int>(control.Origin())]);
    TellKind(control);
  }

 private:
  void TellKind(const Control& control) {
    switch (control.Kind()) {
      case ControlKind::kCheckBox:
        return Is("ticked", As<CheckBox>(control).Value() != 0);
      case ControlKind::kOptionButton:
        return Choice(As<OptionButton>(control));
      case ControlKind::kTextBox:
        return Text(As<TextBox>(control));
      case ControlKind::kComboBox:
        return List(As<ComboBox>(control));
      case ControlKind::kLabel:
        return Ground(As<Label>(control).BackColour(), kButtonFaceColour);
      case ControlKind::kPushButton:
        return Ground(As<PushButton>(control).BackColour(), kButtonFaceColour);
      case ControlKind::kTimer:
        return Is("running", As<Timer>(control).Running());
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
        return Put("art", As<Picture>(control).Art());
      case ControlKind::kDrawing:
        return Put("note", As<Drawing>(control).Note());
      case ControlKind::kMenuItem:
        return Is("usable", As<MenuItem>(control).Usable());
      case ControlKind::kFrame:
      case ControlKind::kUpDown:
        return;
    }
  }
  template <class T>
  static const T& As(const Control& control) {
    return static_cast<const T&>(control);
  }
  void Put(const std::string& facet, const std::string& text) {
    if (!text.empty()) facets_[{name_, facet}] = Told(text);
  }
  void Is(const char* facet, bool holds) {
    if (holds) Put(facet, facet);
  }
  // A group of options tells which one is chosen.
  void Choice(const OptionButton& option) {
    std::string& chosen = facets_[{option.Group(), "choice"}];
    if (option.Value()) chosen += (chosen.empty() ? "" : " and ") + name_;
    if (chosen.empty()) facets_.erase({option.Group(), "choice"});
  }
  void Ground(unsigned colour, unsigned usual) {
    if (colour != usual) Put("ground", Colour(colour));
  }
  void Text(const TextBox& box) {
    Put("text", box.Text());
    if (box.MaxLength() > 0) Put("most", std::to_string(box.MaxLength()));
    Is("locked", box.Locked());
    Ground(box.BackColour(), kWindowColour);
  }
  void List(const ComboBox& box) {
    std::string items;
    for (const std::string& item : box.Items()) items += (items.empty() ? "" : " | ") + item;
    Put("items", items);
    if (box.ListIndex() >= 0) Put("text", std::to_string(box.ListIndex()) + " " + box.Text());
  }
  // Without how long something took.
  void Panels(const StatusBar& bar) {
    static const std::regex kTook(R"(\d+(\.\d+)? (s|%)(?![^ ,]))");
    for (int at = 1; at <= bar.PanelCount(); ++at) {
      Put("panel " + std::to_string(at), std::regex_replace(bar.Panel(at), kTook, "# $2"));
    }
  }
  void Progress(const ProgressBar& bar) {
    Put("at", std::to_string(bar.Value()) + "/" + std::to_string(bar.Max()));
  }
  void Tabs(const TabControl& tabs) {
    for (int at = 0; at < tabs.Count(); ++at) {
      const std::string caption = (tabs.TabEnabled(at) ? "" : "(grey) ") + tabs.TabCaption(at);
      Put("tab " + std::to_string(at), caption + (tabs.Tab() == at ? " <" : ""));
    }
  }
  void Cells(const Grid& grid) {
    const GridShape* shape = FindGridShape(static_cast<const Form&>(grid.Owner()).Name(), grid.Name());
    const auto shown = [&](int own, int of_layout) { return std::to_string(shape ? of_layout : own); };
    std::string widths;
    for (int at = 0; at < grid.Columns(); ++at) {
      widths += " " + shown(grid.ColumnWidth(at), shape ? shape->columns[static_cast<std::size_t>(at)] : 0);
    }
    Put("columns", widths.substr(1));
    Put("size", shown(grid.Width(), shape ? shape->width : 0) + " x " +
                    shown(grid.Height(), shape ? shape->height : 0) + (grid.IsDense() ? " dense" : "") +
                    (grid.Follows() ? " follows" : ""));
    if (grid.SelectedRow() > 0) Put("selected", std::to_string(grid.SelectedRow()));
    const std::string name = name_;
    for (int row = 0; row < grid.Rows(); ++row) {
      name_ = name + "(" + std::to_string(row) + ")";
      std::string cells;
      for (int at = 0; at < grid.Columns(); ++at) cells += (at == 0 ? "" : " | ") + grid.Cell(row, at);
      const int look = static_cast<int>(grid.Style(row)) * 10 + static_cast<int>(grid.Ticked(row));
      if (look != 0) cells += " {" + std::to_string(look) + "}";
      Put("row", cells);
    }
  }
  void Axis(const char* facet, const ChartAxis& axis) {
    Put(facet, GeneralText(axis.min) + " to " + GeneralText(axis.max) + " " + axis.title);
  }
  void Axes(const Chart& chart) {
    Axis("x", chart.X());
    Axis("y", chart.Y());
    const std::string name = name_;
    for (int at = 0; at < chart.SeriesCount(); ++at) {
      name_ = name + "(" + std::to_string(at) + ")";
      Put("series", chart.SeriesName(at) + " " + Colour(chart.Colour(at)) +
                        (chart.Style(at) == SeriesStyle::kFaint ? " faint " : " ") +
                        std::to_string(chart.Shown(at).size()));
    }
  }

  Facets& facets_;
  std::string name_;
};

std::vector<std::string> CellsOf(const std::string& row) {
  static const std::regex kBetween(R"( \| )");
  return {std::sregex_token_iterator(row.begin(), row.end(), kBetween, -1), {}};
}

std::string ChangedCells(const std::string& before, const std::string& after) {
  const std::vector<std::string> old = CellsOf(before), now = CellsOf(after);
  if (old.size() != now.size()) return after;
  std::string told;
  for (std::size_t at = 0; at < now.size(); ++at) {
    told += (at == 0 ? "" : " | ") + (now[at] == old[at] ? "~" : now[at]);
  }
  return told;
}

}  // namespace

Facets FacetsOf(const Form& form) {
  Facets facets;
  // The numbers of a title stand for themselves: they count.
  static const std::regex kNumber("[0-9]+");
  const std::string title = Told(form.Caption());
  std::string numbers;
  for (std::sregex_iterator at(title.begin(), title.end(), kNumber), end; at != end; ++at) {
    numbers += (numbers.empty() ? "" : " ") + at->str();
  }
  if (!title.empty()) facets[{"", "title"}] = std::regex_replace(title, kNumber, "#");
  if (!numbers.empty()) facets[{"", "# in the title"}] = numbers;
  if (!form.HasCloseCommand()) facets[{"", "close"}] = "no close";
  Teller teller(facets);
  for (const Control* control : form.Controls()) teller.Tell(*control);
  return facets;
}

Facets Changes(const Facets& before, const Facets& after) {
  Facets changes;
  for (const auto& [name, text] : after) {
    const auto old = before.find(name);
    if (old == before.end()) {
      changes[name] = text;
    } else if (old->second != text) {
      changes[name] = name.second == "row" ? ChangedCells(old->second, text) : text;
    }
  }
  for (const auto& [name, text] : before) {
    if (!after.contains(name)) changes[name];
  }
  return changes;
}

}  // namespace vlt::test
