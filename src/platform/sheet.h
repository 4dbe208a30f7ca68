// SPDX-License-Identifier: GPL-3.0-or-later
// A drawing as a list of shapes, without pixels and without a toolkit: what a window shows, a printer prints
// and a file keeps is the same list.
//
// Lengths are in the sheet's own unit, x to the right and y downwards from the upper left corner. On paper
// one unit is one millimetre; a window scales the sheet to the room that it has.
#pragma once

#include <string>
#include <vector>

namespace vlt {

struct SheetPoint {
  double x = 0;
  double y = 0;
  bool operator==(const SheetPoint&) const = default;
};

// What a shape stands for; whoever paints gives it a colour that can be told apart on its ground.
enum class Ink : unsigned char {
  kText,
  kQuiet,  // notes, ranges, thin rules
  kRule,   // lines of tables and of the hand-written part
  kPipe,
  kLining,
  kFluid,
  kHousing,
  kWedge,
  kElement,  // what sends and receives
  kSound,
  kDimension,
  kWarning,
};

enum class SheetKind : unsigned char { kArea, kLine, kText };
enum class LineEnds : unsigned char { kPlain, kOneArrow, kTwoArrows };  // one: at the last point
enum class TextSide : unsigned char { kLeft, kMiddle, kRight };         // where the point lies in the text

struct SheetItem {
  SheetKind kind = SheetKind::kLine;
  Ink ink = Ink::kText;
  std::vector<SheetPoint> points;  // of a text: the one point of its base line

  double width = 0.25;  // of a line
  bool dashed = false;
  LineEnds ends = LineEnds::kPlain;

  std::string text;
  double size = 0;  // of a text: height of its letters' box
  TextSide side = TextSide::kLeft;
  bool bold = false;
  bool upwards = false;  // turned to be read from the right
  bool operator==(const SheetItem&) const = default;
};

struct LineStyle {
  Ink ink = Ink::kText;
  double width = 0.25;
  bool dashed = false;
  LineEnds ends = LineEnds::kPlain;
};

struct TextStyle {
  double size = 3.4;
  Ink ink = Ink::kText;
  TextSide side = TextSide::kLeft;
  bool bold = false;
  bool upwards = false;
};

class Sheet {
 public:
  Sheet() = default;
  Sheet(double width, double height) : width_(width), height_(height) {}

  double Width() const { return width_; }
  double Height() const { return height_; }
  bool Empty() const { return items_.empty(); }
  const std::vector<SheetItem>& Items() const { return items_; }

  void Area(Ink ink, std::vector<SheetPoint> outline);
  void Box(Ink ink, double x, double y, double width, double height);
  void Line(const LineStyle& style, std::vector<SheetPoint> points);
  // An empty text adds nothing.
  void Text(const TextStyle& style, SheetPoint at, const std::string& text);
  // All of another sheet, its corner at `corner`.
  void Place(const Sheet& other, SheetPoint corner);

  bool operator==(const Sheet&) const = default;

 private:
  double width_ = 0;
  double height_ = 0;
  std::vector<SheetItem> items_;
};

}  // namespace vlt
