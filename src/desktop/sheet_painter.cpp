// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/sheet_painter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <algorithm>
#include <cmath>

#include "desktop/qt_text.h"

namespace vlt {
namespace {

struct InkRow {
  Ink ink;
  QRgb on_paper;
  QRgb on_dark;
};

constexpr InkRow kInks[] = {
    {Ink::kText, 0xFF1B2630, 0xFFE6EBEF},      {Ink::kQuiet, 0xFF66727E, 0xFF9AA6B2},
    {Ink::kRule, 0xFFB9C2CA, 0xFF55606B},      {Ink::kPipe, 0xFFAEB8C2, 0xFF5C6874},
    {Ink::kLining, 0xFFE3C99A, 0xFF7D6740},    {Ink::kFluid, 0xFFDCEFF9, 0xFF1F3F52},
    {Ink::kHousing, 0xFF6F8294, 0xFF8396A8},   {Ink::kWedge, 0xFFF4E3B2, 0xFFAE9A5C},
    {Ink::kElement, 0xFF8A1C1C, 0xFFFF8A80},   {Ink::kSound, 0xFFD02F2F, 0xFFFF6E64},
    {Ink::kDimension, 0xFF155A9C, 0xFF7CB8F0}, {Ink::kWarning, 0xFFB54708, 0xFFF5A524},
};

QColor ColourOf(Ink ink, Ground ground) {
  for (const InkRow& row : kInks) {
    if (row.ink == ink) return QColor::fromRgba(ground == Ground::kPaper ? row.on_paper : row.on_dark);
  }
  return Qt::black;
}

constexpr double kArrowLength = 2.4;  // of the sheet's units
constexpr double kArrowHalf = 0.55;

class SheetPainter {
 public:
  SheetPainter(QPainter& painter, const Sheet& sheet, const QRectF& room, const SheetLook& look)
      : painter_(painter),
        look_(look),
        scale_(std::min(room.width() / sheet.Width(), room.height() / sheet.Height())) {
    const QSizeF size(sheet.Width() * scale_, sheet.Height() * scale_);
    origin_ = room.center() - QPointF(size.width() / 2, size.height() / 2);
  }

  void Paint(const SheetItem& item) {
    const QColor colour = ColourOf(item.ink, look_.ground);
    switch (item.kind) {
      case SheetKind::kArea:
        painter_.setPen(Qt::NoPen);
        painter_.setBrush(colour);
        painter_.drawPolygon(Points(item));
        return;
      case SheetKind::kLine:
        return PaintLine(item, colour);
      case SheetKind::kText:
        return PaintText(item, colour);
    }
  }

 private:
  QPointF At(const SheetPoint& point) const { return origin_ + QPointF(point.x, point.y) * scale_; }

  QPolygonF Points(const SheetItem& item) const {
    QPolygonF points;
    for (const SheetPoint& point : item.points) points << At(point);
    return points;
  }

  void PaintLine(const SheetItem& item, const QColor& colour) {
    QPen pen(colour, std::max(item.width * scale_, 0.8));
    pen.setJoinStyle(Qt::RoundJoin);
    pen.setCapStyle(item.ends == LineEnds::kPlain ? Qt::RoundCap : Qt::FlatCap);
    if (item.dashed) {
      const double unit = scale_ / pen.widthF();
      pen.setCapStyle(Qt::FlatCap);
      pen.setDashPattern({2.2 * unit, 1.2 * unit});
    }
    painter_.setPen(pen);
    painter_.setBrush(Qt::NoBrush);
    const QPolygonF points = Points(item);
    painter_.drawPolyline(points);
    const auto count = points.size();
    if (item.ends == LineEnds::kPlain || count < 2) return;
    PaintArrow(points[count - 2], points[count - 1], colour);
    if (item.ends == LineEnds::kTwoArrows) PaintArrow(points[1], points[0], colour);
  }

  void PaintArrow(const QPointF& from, const QPointF& tip, const QColor& colour) {
    const QPointF way = tip - from;
    const double length = std::hypot(way.x(), way.y());
    if (length <= 0) return;
    const QPointF along = way / length * scale_;
    const QPointF across(-along.y(), along.x());
    const QPointF foot = tip - along * kArrowLength;
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(colour);
    painter_.drawPolygon(QPolygonF{tip, foot + across * kArrowHalf, foot - across * kArrowHalf});
  }

  void PaintText(const SheetItem& item, const QColor& colour) {
    QFont font = look_.font;
    font.setBold(item.bold);
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(item.size * scale_))));
    const QString text = ToQt(item.text);
    // Measured for this painter's device, whose letters may be wider than the screen's.
    const double width = QFontMetricsF(font, painter_.device()).horizontalAdvance(text);
    const double back = item.side == TextSide::kLeft ? 0 : item.side == TextSide::kMiddle ? width / 2 : width;
    painter_.setPen(colour);
    painter_.setFont(font);
    painter_.save();
    painter_.translate(At(item.points.front()));
    if (item.upwards) painter_.rotate(-90);
    painter_.drawText(QPointF(-back, 0), text);
    painter_.restore();
  }

  QPainter& painter_;
  const SheetLook& look_;
  double scale_;
  QPointF origin_;
};

}  // namespace

void PaintSheet(QPainter& painter, const Sheet& sheet, const QRectF& room, const SheetLook& look) {
  if (sheet.Empty() || room.isEmpty()) return;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  SheetPainter on(painter, sheet, room, look);
  for (const SheetItem& item : sheet.Items()) on.Paint(item);
  painter.restore();
}

}  // namespace vlt
