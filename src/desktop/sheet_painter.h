// SPDX-License-Identifier: GPL-3.0-or-later
// Paints a sheet of shapes: on the screen, on paper, into a picture.
#pragma once

#include <QFont>
#include <QRectF>

#include "platform/sheet.h"

class QPainter;

namespace vlt {

enum class Ground { kPaper, kDark };

struct SheetLook {
  QFont font;  // its family; the size comes from the sheet
  Ground ground = Ground::kPaper;
};

// As large as `room` allows, in its middle.
void PaintSheet(QPainter& painter, const Sheet& sheet, const QRectF& room, const SheetLook& look);

}  // namespace vlt
