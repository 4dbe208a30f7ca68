// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/spacing_sheet.h"

#include "resources/text_ids.h"

namespace vlt {
namespace {

constexpr double kPageWidth = 210;
constexpr double kPageHeight = 297;
constexpr double kLeft = 15;
constexpr double kRight = kPageWidth - 15;
constexpr double kTextSize = 3.4;
constexpr double kRow = 5.6;

// Columns of the inputs, and the box of the results beside them.
constexpr double kValueX = 82;
constexpr double kUnitX = 85;
constexpr double kRangeX = 98;
constexpr double kInputsRight = 127;
constexpr double kResultX = kLeft + kDrawingSideX;

constexpr double kListY = 36;
constexpr double kBetween = 10;
constexpr double kNoteLine = 8.5;
constexpr double kFootY = kPageHeight - 10;

const LineStyle kThin{.ink = Ink::kRule, .width = 0.15};
const LineStyle kThick{.ink = Ink::kText, .width = 0.4};

class Page {
 public:
  Page(const SheetParts& parts, const TextOf& text)
      : parts_(parts), text_(text), sheet_(kPageWidth, kPageHeight) {}

  Sheet Make() {
    AddHead();
    AddInputs();
    AddResults();
    y_ += kBetween;
    sheet_.Place(parts_.drawing, {kLeft, y_});
    y_ += kDrawingHeight + kBetween;
    AddNotes();
    AddFoot();
    return sheet_;
  }

 private:
  void AddHead() {
    sheet_.Text({.size = 6, .bold = true}, {kLeft, 22}, parts_.title);
    sheet_.Text({.size = kTextSize, .side = TextSide::kRight}, {kRight, 22}, parts_.stamp);
    sheet_.Line(kThick, {{kLeft, 25}, {kRight, 25}});
  }

  void AddTitle(double x, double y, int text_id) {
    sheet_.Text({.size = 4, .ink = Ink::kDimension, .bold = true}, {x, y}, text_(text_id));
  }

  void AddInputs() {
    AddTitle(kLeft, kListY - 2.5, text::kSheetInputs);
    sheet_.Text({.size = 3, .ink = Ink::kQuiet}, {kRangeX, kListY - 2.5}, text_(text::kSheetRange));
    y_ = kListY;
    sheet_.Line(kThin, {{kLeft, y_}, {kInputsRight, y_}});
    for (const SheetRow& row : parts_.inputs) {
      y_ += kRow;
      const double base = y_ - 1.7;
      sheet_.Text({.size = kTextSize}, {kLeft, base}, row.caption);
      sheet_.Text({.size = kTextSize, .side = TextSide::kRight, .bold = true}, {kValueX, base}, row.value);
      sheet_.Text({.size = kTextSize}, {kUnitX, base}, row.unit);
      sheet_.Text({.size = 3, .ink = Ink::kQuiet}, {kRangeX, base}, row.range);
      sheet_.Line(kThin, {{kLeft, y_}, {kInputsRight, y_}});
    }
  }

  void AddResults() {
    AddTitle(kResultX, kListY - 2.5, 3926);
    double y = kListY;
    sheet_.Line(kThin, {{kResultX, y}, {kRight, y}});
    for (const SheetRow& row : parts_.results) {
      sheet_.Text({.size = kTextSize}, {kResultX, y + 5}, row.caption);
      sheet_.Text({.size = 7.5, .ink = Ink::kDimension, .side = TextSide::kRight, .bold = true},
                  {kRight - 12, y + 14}, row.value);
      sheet_.Text({.size = 4}, {kRight - 10, y + 14}, row.unit);
      y += 18;
      sheet_.Line(kThin, {{kResultX, y}, {kRight, y}});
    }
  }

  void AddNotes() {
    AddTitle(kLeft, y_, text::kSheetNotes);
    y_ += 9;
    constexpr double kPart = (kRight - kLeft) / 3;
    double x = kLeft;
    for (const int id : {text::kSheetPoint, text::kSheetFitter, text::kSheetDate}) {
      sheet_.Text({.size = 3, .ink = Ink::kQuiet}, {x, y_ - 1.2}, text_(id));
      sheet_.Line(kThin, {{x, y_}, {x + kPart - 4, y_}});
      x += kPart;
    }
    while (y_ + 2 * kNoteLine < kFootY) {
      y_ += kNoteLine;
      sheet_.Line(kThin, {{kLeft, y_}, {kRight, y_}});
    }
  }

  void AddFoot() { sheet_.Text({.size = 2.8, .ink = Ink::kQuiet}, {kLeft, kFootY}, parts_.program); }

  const SheetParts& parts_;
  const TextOf& text_;
  Sheet sheet_;
  double y_ = 0;  // where the next part begins
};

}  // namespace

Sheet MakeSpacingSheet(const SheetParts& parts, const TextOf& text) { return Page(parts, text).Make(); }

}  // namespace vlt
