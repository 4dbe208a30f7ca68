// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/colours.h"

namespace vlt {
namespace {

constexpr unsigned kSystemColour = 0x80000000;

QColor FromBlueGreenRed(unsigned bgr) {
  return QColor(static_cast<int>(bgr & 0xFF), static_cast<int>(bgr >> 8 & 0xFF),
                static_cast<int>(bgr >> 16 & 0xFF));
}

}  // namespace

bool IsOwnColour(unsigned bgr) { return (bgr & kSystemColour) == 0; }

QPalette OnColour(unsigned bgr, QPalette::ColorRole ground, QPalette::ColorRole letters) {
  if (!IsOwnColour(bgr)) return QPalette();
  const QColor colour = FromBlueGreenRed(bgr);
  QPalette palette;
  palette.setColor(ground, colour);
  palette.setColor(letters, colour.lightness() > 127 ? Qt::black : Qt::white);
  return palette;
}

}  // namespace vlt
