// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/art.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

#include "desktop/qt_text.h"

namespace vlt {
namespace {

constexpr int kSignSize = 28;
constexpr QRgb kSignColour = 0xFFFFC98A;

// Two transducers on a pipe and the sound path between them, on a field of 28 by 28.
QPainterPath SensorSign() {
  QPainterPath path;
  path.moveTo(1, 10);
  path.lineTo(27, 10);
  path.moveTo(1, 24);
  path.lineTo(27, 24);
  path.addRoundedRect(3, 4, 7, 6, 1, 1);
  path.addRoundedRect(18, 4, 7, 6, 1, 1);
  path.moveTo(8, 10);
  path.lineTo(14, 24);
  path.lineTo(20, 10);
  return path;
}

// A thermometer beside a rising wave.
QPainterPath HeatSign() {
  QPainterPath path;
  path.moveTo(6, 16);
  path.lineTo(6, 5);
  path.arcTo(6, 2, 6, 6, 180, -180);
  path.lineTo(12, 16);
  path.arcTo(4, 15, 10, 10, 55, -290);
  path.moveTo(9, 9);
  path.lineTo(9, 18);
  for (int x : {18, 23}) {
    path.moveTo(x, 24);
    path.cubicTo(x - 5, 18, x + 5, 12, x, 5);
  }
  return path;
}

// As fine as the densest screen shows it.
QPixmap Sign(const QPainterPath& path) {
  const int scale = qCeil(qApp->devicePixelRatio());
  QPixmap pixmap(kSignSize * scale, kSignSize * scale);
  pixmap.setDevicePixelRatio(scale);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(QColor(kSignColour), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.drawPath(path);
  return pixmap;
}

}  // namespace

QIcon ApplicationIcon() {
  // The sizes that title bars and task lists show: each one that is added is decoded at the start.
  QIcon icon;
  for (int size : {16, 32, 48, 64}) icon.addFile(QString(":/art/icon_%1.png").arg(size));
  return icon;
}

QPixmap Artwork(const std::string& name) {
  if (name == "logo") return QPixmap(":/art/icon_48.png");
  if (name == "sensor") return Sign(SensorSign());
  if (name == "heat") return Sign(HeatSign());
  return QPixmap(":/art/" + ToQt(name) + ".png");
}

}  // namespace vlt
