// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/comparison_export.h"

#include <algorithm>
#include <array>

#include "files/csv_log.h"
#include "files/settings_file.h"
#include "resources/string_table.h"
#include "resources/text_ids_compare.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

Language LanguageOf(const Comparison& comparison) { return comparison.Left().facts.Spoken(); }

// "This meter", "Snapshot full.txt", and who it is.
std::string TitleOf(const CompareSide& side, Language language) {
  return FormatText(LookupText(text::kSideTitles + static_cast<int>(side.kind), language),
                    {LastComponent(side.name)});
}

std::string IdentityOf(const CompareSide& side, Language language) {
  const MeterIdentity& who = side.identity;
  return FormatText(
      LookupText(text::kIdentityLine, language),
      {who.id_number, who.specification, who.type, who.version, who.unit_system, who.path_mode, who.date});
}

std::string RemarkOf(const ComparisonRow& row, const RowRemark& remark) {
  return remark ? remark(row) : row.note;
}

// --- CSV
// ---------------------------------------------------------------------------------------------------------

// A text that a spreadsheet would take for a formula carries an apostrophe in front.
std::string Cell(std::string text) {
  const bool is_sign = !text.empty() && std::string_view("+-=@").find(text.front()) != std::string_view::npos;
  if (is_sign && !ParseNumber(text)) text.insert(0, 1, '\'');
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

std::string Line(const std::vector<std::string>& cells) {
  std::string line;
  for (const std::string& cell : cells) line += (&cell == cells.data() ? "" : ",") + Cell(cell);
  return line + "\r\n";
}

// --- sheets
// ------------------------------------------------------------------------------------------------------

// Millimetres on A4.
constexpr double kWidth = 210;
constexpr double kHeight = 297;
constexpr double kLeft = 15;
constexpr double kRight = 195;
constexpr double kTop = 16;
constexpr double kBottom = 279;
constexpr double kFoot = 287;
constexpr double kRowHeight = 4.6;
constexpr double kTextSize = 2.6;

struct Column {
  double x;
  double room;  // in half-width characters
  int title;    // text id
};
constexpr Column kColumns[] = {{kLeft, 38, text::kParameterColumn},
                               {82, 19, text::kLeftColumn},
                               {116, 19, text::kRightColumn},
                               {150, 26, text::kStateColumn}};
constexpr double kRoomOfPage = 105;

// In half-width characters.
double WidthOf(std::string_view character) {
  constexpr unsigned char kThreeBytes = 0xE0;
  const auto first = static_cast<unsigned char>(character.front());
  // Half-width katakana lie in EF BD A1 to EF BE 9F.
  const bool half = character.starts_with("\xEF\xBD") || character.starts_with("\xEF\xBE");
  return first >= kThreeBytes && !half ? 2 : 1;
}

// The text in lines that have room, parted at blanks where there are some. At least one.
std::vector<std::string> Wrapped(std::string_view text, double room) {
  std::vector<std::string> lines;
  while (!text.empty() || lines.empty()) {
    double width = 0;
    std::size_t end = 0;
    std::size_t blank = 0;
    while (end < text.size()) {
      const std::string_view character = FirstChars(text.substr(end), 1);
      if (character == " ") blank = end;
      width += WidthOf(character);
      if (width > room) break;
      end += character.size();
    }
    if (end < text.size() && blank > 0) end = blank;
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end);
    while (text.starts_with(' ')) text.remove_prefix(1);
  }
  return lines;
}

class SheetWriter {
 public:
  SheetWriter(const Comparison& comparison, const ComparisonSheetParts& parts)
      : comparison_(comparison), parts_(parts), language_(LanguageOf(comparison)) {}

  std::vector<Sheet> Write() {
    NewPage();
    Head();
    Columns();
    for (const ComparisonRow& row : comparison_.Rows()) {
      const bool shown = std::find(parts_.shown.begin(), parts_.shown.end(), row.state) != parts_.shown.end();
      if (shown) Row(row);
    }
    Feet();
    return std::move(pages_);
  }

 private:
  std::string Word(int id) const { return LookupText(id, language_); }
  Sheet& Page() { return pages_.back(); }

  void NewPage() {
    pages_.emplace_back(kWidth, kHeight);
    y_ = kTop;
  }

  void Head() {
    Page().Text({.size = 5, .bold = true}, {kLeft, y_}, Word(text::kComparisonTitle));
    Page().Text({.size = kTextSize, .ink = Ink::kQuiet, .side = TextSide::kRight}, {kRight, y_},
                parts_.stamp);
    for (const CompareSide* side : {&comparison_.Left(), &comparison_.Right()}) {
      const int column = side == &comparison_.Left() ? text::kLeftColumn : text::kRightColumn;
      y_ += 6;
      Page().Text({.size = 3.2, .bold = true}, {kLeft, y_}, Word(column) + ": " + TitleOf(*side, language_));
      y_ += 4.4;
      Page().Text({.size = kTextSize}, {kLeft, y_}, IdentityOf(*side, language_));
      for (const std::string& remark : side->remarks) {
        for (const std::string& line : Wrapped(remark, kRoomOfPage)) {
          if (!HasRoom(1)) NewPage();
          y_ += kRowHeight;
          Page().Text({.size = kTextSize, .ink = Ink::kWarning}, {kLeft, y_}, line);
        }
      }
    }
    y_ += 7;
    Page().Text({.size = 3.2, .bold = true}, {kLeft, y_}, SummaryText(comparison_, language_));
    y_ += 7;
  }

  void Columns() {
    for (const Column& column : kColumns) {
      Page().Text({.size = kTextSize, .bold = true}, {column.x, y_}, Word(column.title));
    }
    Page().Line({.ink = Ink::kRule}, {{kLeft, y_ + 1.4}, {kRight, y_ + 1.4}});
    y_ += 1.4;
  }

  bool HasRoom(std::size_t lines) const { return y_ + static_cast<double>(lines) * kRowHeight <= kBottom; }

  void Heading() {
    y_ += kRowHeight + 1;
    Page().Text({.size = kTextSize, .bold = true}, {kLeft, y_}, group_);
  }

  static std::string Value(const SideCell& cell) {
    return cell.text + (cell.unit.empty() || cell.text.empty() ? "" : " " + cell.unit);
  }

  // Stands in front of its first row, and again on each page that it reaches.
  void Group(const ComparisonRow& row, std::size_t lines) {
    const std::string name = PlaceName(*row.place.row, row.place.index);
    const std::string title =
        GroupTitle(GroupOf(*row.place.row), language_) + (name.empty() ? "" : " " + name);
    const bool is_new = title != group_;
    group_ = title;
    if (!HasRoom(lines + (is_new ? 2 : 0))) {
      NewPage();
      Columns();
      Heading();
    } else if (is_new) {
      Heading();
    }
  }

  void Row(const ComparisonRow& row) {
    const std::string remark = RemarkOf(row, parts_.remark);
    const std::string note = remark.empty() ? "" : ": " + remark;
    const std::array<std::string, 4> texts = {RowTitle(*row.place.row, language_), Value(row.left),
                                              Value(row.right), RowStateText(row.state, language_) + note};
    std::array<std::vector<std::string>, 4> cells;
    std::size_t lines = 0;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      cells[i] = Wrapped(texts[i], kColumns[i].room);
      lines = std::max(lines, cells[i].size());
    }
    Group(row, lines);
    const TextStyle style{.size = kTextSize, .bold = row.state == RowState::kDifferent};
    for (std::size_t line = 0; line < lines; ++line) {
      y_ += kRowHeight;
      for (std::size_t i = 0; i < cells.size(); ++i) {
        if (line < cells[i].size()) Page().Text(style, {kColumns[i].x, y_}, cells[i][line]);
      }
    }
  }

  void Feet() {
    const std::string all = std::to_string(pages_.size());
    for (std::size_t i = 0; i < pages_.size(); ++i) {
      const TextStyle style{.size = kTextSize, .ink = Ink::kQuiet, .side = TextSide::kRight};
      pages_[i].Text({.size = kTextSize, .ink = Ink::kQuiet}, {kLeft, kFoot}, parts_.program);
      pages_[i].Text(style, {kRight, kFoot}, FormatText(Word(text::kPageOf), {std::to_string(i + 1), all}));
    }
  }

  const Comparison& comparison_;
  const ComparisonSheetParts& parts_;
  Language language_;
  std::vector<Sheet> pages_;
  double y_ = 0;
  std::string group_;
};

}  // namespace

std::string ComparisonCsv(const Comparison& comparison, const std::string& stamp, const RowRemark& tell) {
  const Language language = LanguageOf(comparison);
  const auto word = [&](int id) { return std::string(LookupText(id, language)); };
  std::string csv(kByteOrderMark);
  csv += Line({word(text::kComparisonTitle), stamp});
  for (const CompareSide* side : {&comparison.Left(), &comparison.Right()}) {
    const int column = side == &comparison.Left() ? text::kLeftColumn : text::kRightColumn;
    csv += Line({word(column), TitleOf(*side, language), IdentityOf(*side, language)});
    for (const std::string& remark : side->remarks) csv += Line({word(column), remark});
  }
  csv += Line({SummaryText(comparison, language)});
  csv += Line({word(text::kGroupColumn), word(text::kPlaceColumn), word(text::kParameterColumn),
               word(text::kLeftColumn), word(text::kUnitColumn), word(text::kRightColumn),
               word(text::kUnitColumn), word(text::kStateColumn), word(text::kNoteColumn)});
  for (const ComparisonRow& row : comparison.Rows()) {
    csv += Line({GroupTitle(GroupOf(*row.place.row), language), PlaceName(*row.place.row, row.place.index),
                 RowTitle(*row.place.row, language), row.left.text, row.left.unit, row.right.text,
                 row.right.unit, RowStateText(row.state, language), RemarkOf(row, tell)});
  }
  return csv;
}

std::vector<Sheet> ComparisonSheets(const Comparison& comparison, const ComparisonSheetParts& parts) {
  return SheetWriter(comparison, parts).Write();
}

}  // namespace vlt
