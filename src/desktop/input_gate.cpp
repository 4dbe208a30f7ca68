// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/input_gate.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace vlt {

InputGate::InputGate() { QCoreApplication::instance()->installEventFilter(this); }

InputGate::~InputGate() {
  if (QCoreApplication::instance() != nullptr) QCoreApplication::instance()->removeEventFilter(this);
}

void InputGate::FieldLeft(Qt::FocusReason reason, const std::function<bool()>& check) {
  // A menu, another window or the program itself takes the focus without the operator leaving the field.
  const bool leaves = reason == Qt::MouseFocusReason || reason == Qt::TabFocusReason ||
                      reason == Qt::BacktabFocusReason || reason == Qt::ShortcutFocusReason;
  if (!leaves) return;
  const int blocked_before = blocked_;
  bool passed = true;
  Run([&] { passed = check(); });
  // A box has eaten the release of the mouse button, so the press must not reach its target either.
  if (passed && blocked_ == blocked_before) return;
  ++refusals_;
  drop_next_press_ = reason == Qt::MouseFocusReason;
}

bool InputGate::TakeFocus(QWidget* target) {
  const int before = refusals_;
  if (!target->hasFocus()) target->setFocus(Qt::ShortcutFocusReason);
  return refusals_ == before;
}

bool InputGate::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::WindowBlocked:
      ++blocked_;
      return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      // The press that moved the focus is the next one that a widget gets; windows see it before that.
      if (!drop_next_press_ || !watched->isWidgetType()) return false;
      drop_next_press_ = false;
      return true;
    case QEvent::MouseButtonRelease:
      drop_next_press_ = false;
      return false;
    case QEvent::ShortcutOverride:
      // The key that ends an open list is the list's alone, and presses no button of the window beneath.
      if (QApplication::activePopupWidget() != nullptr) event->accept();
      return false;
    default:
      return false;
  }
}

}  // namespace vlt
