// SPDX-License-Identifier: GPL-3.0-or-later
// Where gestures of widgets enter the logic, and what the focus does on the way.
//
// Leaving a text field runs its check. The check may show a message box and take the focus back; then the
// press that moved the focus away must not count, be it by mouse, mnemonic or short cut.
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

class QWidget;

namespace vlt {

class InputGate : public QObject {
 public:
  // Filters the application's events while it lives.
  InputGate();
  ~InputGate() override;

  // Runs one gesture. Gestures nest: one may wait inside another one's handler.
  template <class F>
  void Run(F&& gesture) {
    const Depth depth(*this);
    gesture();
  }
  bool Idle() const { return depth_ == 0; }
  // Called whenever the outermost gesture has returned.
  std::function<void()> on_idle;

  // Runs the check of a field that loses the focus. The check returns false when it wants the focus back.
  void FieldLeft(Qt::FocusReason reason, const std::function<bool()>& check);

  // Gives the focus to `target`, which is about to act without having it (a short cut, a mnemonic, a
  // program's click). False when the field that had it keeps it: the action is off.
  bool TakeFocus(QWidget* target);

 private:
  struct Depth {
    explicit Depth(InputGate& gate) : owner(gate) { ++owner.depth_; }
    ~Depth() {
      if (--owner.depth_ == 0 && owner.on_idle) owner.on_idle();
    }
    InputGate& owner;
  };

  bool eventFilter(QObject* watched, QEvent* event) override;

  int depth_ = 0;
  int refusals_ = 0;  // checks that kept the focus or showed a box
  int blocked_ = 0;   // windows that a modal box has blocked so far
  bool drop_next_press_ = false;
};

}  // namespace vlt
