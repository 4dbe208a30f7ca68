// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sheet.h"

#include <utility>

namespace vlt {

void Sheet::Area(Ink ink, std::vector<SheetPoint> outline) {
  SheetItem item;
  item.kind = SheetKind::kArea;
  item.ink = ink;
  item.points = std::move(outline);
  items_.push_back(std::move(item));
}

void Sheet::Box(Ink ink, double x, double y, double width, double height) {
  Area(ink, {{x, y}, {x + width, y}, {x + width, y + height}, {x, y + height}});
}

void Sheet::Line(const LineStyle& style, std::vector<SheetPoint> points) {
  SheetItem item;
  item.kind = SheetKind::kLine;
  item.ink = style.ink;
  item.points = std::move(points);
  item.width = style.width;
  item.dashed = style.dashed;
  item.ends = style.ends;
  items_.push_back(std::move(item));
}

void Sheet::Text(const TextStyle& style, SheetPoint at, const std::string& text) {
  if (text.empty()) return;
  SheetItem item;
  item.kind = SheetKind::kText;
  item.ink = style.ink;
  item.points = {at};
  item.text = text;
  item.size = style.size;
  item.side = style.side;
  item.bold = style.bold;
  item.upwards = style.upwards;
  items_.push_back(std::move(item));
}

void Sheet::Place(const Sheet& other, SheetPoint corner) {
  for (SheetItem item : other.items_) {
    for (SheetPoint& point : item.points) point = {point.x + corner.x, point.y + corner.y};
    items_.push_back(std::move(item));
  }
}

}  // namespace vlt
