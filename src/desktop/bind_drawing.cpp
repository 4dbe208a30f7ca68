// SPDX-License-Identifier: GPL-3.0-or-later
// Drawings.
#include <QPainter>
#include <QWidget>

#include "desktop/binding_kinds.h"
#include "desktop/fonts.h"
#include "desktop/qt_text.h"
#include "desktop/sheet_painter.h"
#include "window/drawing.h"

namespace vlt {
namespace {

constexpr QSize kUsualSize(648, 404);
constexpr int kMargin = 6;
constexpr float kVeil = 0.78F;     // over a drawing that does not hold any more
constexpr int kLightGround = 128;  // lightness

class SheetView : public QWidget {
 public:
  explicit SheetView(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  }
  QSize sizeHint() const override { return kUsualSize; }
  QSize minimumSizeHint() const override { return kUsualSize / 2; }

  void Show(const Sheet& sheet, const QString& note) {
    sheet_ = sheet;
    note_ = note;
    setAccessibleDescription(note);
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QColor ground = palette().color(QPalette::Base);
    painter.fillRect(rect(), ground);
    const Ground kind = ground.lightness() < kLightGround ? Ground::kDark : Ground::kPaper;
    PaintSheet(painter, sheet_, QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -kMargin),
               {font(), kind});
    if (!note_.isEmpty()) {
      QColor veil = ground;
      veil.setAlphaF(kVeil);
      painter.fillRect(rect(), veil);
      PaintNote(painter, ground);
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
  }

 private:
  // On a ground of its own, so that it can be read over the faint drawing.
  void PaintNote(QPainter& painter, const QColor& ground) {
    constexpr int kRoom = 12;
    const QRect wide = rect().adjusted(4 * kRoom, 0, -4 * kRoom, 0);
    const int flags = Qt::AlignCenter | Qt::TextWordWrap;
    const QRect text = painter.boundingRect(wide, flags, note_);
    painter.fillRect(text.adjusted(-kRoom, -kRoom, kRoom, kRoom), ground);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(wide, flags, note_);
  }

  Sheet sheet_;
  QString note_;
};

class DrawingBinding : public Binding {
 public:
  DrawingBinding(Drawing& drawing, BindContext& context, QWidget* parent)
      : Binding(drawing, context, new SheetView(parent)), drawing_(drawing) {}

 private:
  void PushState() override {
    static_cast<SheetView*>(Widget())->Show(drawing_.Shown(), ToQt(drawing_.Note()));
  }
  Drawing& drawing_;
};

}  // namespace

std::unique_ptr<Binding> BindDrawing(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<DrawingBinding>(static_cast<Drawing&>(control), context, parent);
}

}  // namespace vlt
