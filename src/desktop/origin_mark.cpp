// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/origin_mark.h"

#include <QEvent>
#include <QPainter>

namespace vlt {
namespace {

constexpr int kInset = 2;  // above and below, so that marks of two rows don't meet
constexpr int kDot = 2;
constexpr int kDotPitch = 4;
constexpr int kQuietAlpha = 150;  // of the colour of letters, for what needs no attention

void PaintRead(QPainter& painter, const QRect& area, QColor letters) {
  letters.setAlpha(kQuietAlpha);
  painter.fillRect(area.right(), area.top(), 1, area.height(), letters);
}

void PaintTyped(QPainter& painter, const QRect& area, const QColor& bar) { painter.fillRect(area, bar); }

void PaintFile(QPainter& painter, const QRect& area, const QColor& letters) {
  painter.fillRect(area.left(), area.top(), 1, area.height(), letters);
  painter.fillRect(area.left(), area.top(), area.width(), 1, letters);
  painter.fillRect(area.left(), area.bottom(), area.width(), 1, letters);
}

void PaintOutdated(QPainter& painter, const QRect& area, const QColor& letters) {
  for (int y = area.top(); y + kDot <= area.bottom() + 1; y += kDotPitch) {
    painter.fillRect(area.right() - kDot + 1, y, kDot, kDot, letters);
  }
}

}  // namespace

OriginMark::OriginMark(QWidget& entry) : QWidget(entry.parentWidget()), entry_(&entry) {
  setObjectName("origin of " + entry.objectName());
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setFocusPolicy(Qt::NoFocus);
  entry.installEventFilter(this);
  hide();
}

void OriginMark::Set(ValueOrigin origin) {
  if (origin_ == origin) return;
  origin_ = origin;
  Follow();
  update();
}

void OriginMark::Follow() {
  if (entry_ == nullptr) return;
  if (parentWidget() != entry_->parentWidget()) setParent(entry_->parentWidget());
  const QRect place = entry_->geometry();
  setGeometry(place.left() - kWidth - kDistance, place.top() + kInset, kWidth, place.height() - 2 * kInset);
  setVisible(origin_ != ValueOrigin::kNone && !entry_->isHidden());
  raise();
}

bool OriginMark::eventFilter(QObject* watched, QEvent* event) {
  if (watched != entry_) return false;
  switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
    case QEvent::ParentChange:
      Follow();
      break;
    default:
      break;
  }
  return false;
}

void OriginMark::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QColor letters = palette().color(QPalette::Active, QPalette::WindowText);
  switch (origin_) {
    case ValueOrigin::kRead:
      return PaintRead(painter, rect(), letters);
    case ValueOrigin::kTyped:
      return PaintTyped(painter, rect(), palette().color(QPalette::Active, QPalette::Highlight));
    case ValueOrigin::kFile:
      return PaintFile(painter, rect(), letters);
    case ValueOrigin::kOutdated:
      return PaintOutdated(painter, rect(), letters);
    case ValueOrigin::kNone:
      break;
  }
}

}  // namespace vlt
