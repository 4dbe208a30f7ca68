// SPDX-License-Identifier: GPL-3.0-or-later
// A binding ties one control to one widget: what the control holds is pushed into the widget, what a person
// does with the widget becomes a gesture on the control. Neither knows the other.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <optional>

#include "desktop/input_gate.h"
#include "desktop/origin_mark.h"
#include "desktop/refresh_queue.h"
#include "window/control.h"

namespace vlt {

struct GridShape;

struct BindContext {
  RefreshQueue& refresh;
  InputGate& gate;
  // The text of an id in the language in force, for words that no control carries.
  std::function<QString(int id)> text = {};
};

class Binding : public QObject, public Refreshable {
 public:
  ~Binding() override;

  QWidget* Widget() const { return widget_; }
  const Control& Bound() const { return control_; }
  // Letter that presses the button together with Alt; null for none. Only buttons have one.
  virtual void SetMnemonic(QChar) {}
  // What a tooltip tells behind the control's own hint: the keys that press it.
  void SetKeys(const QString& keys);
  // Shows it in larger letters.
  void MakeTitle();
  // The room of a grid and its columns, where the grid itself says nothing of them. `shape` outlives the
  // binding.
  virtual void TakeShape(const GridShape& /*shape*/) {}
  // Its text is as wide as it is let, in as many lines as that takes; also what has no blanks, as a path.
  virtual void WrapText() {}
  // Shows it in narrow letters.
  void MakeNarrow();
  // The control is about to go: no gesture and no refresh reaches it any more.
  void Detach();

  void Refresh() override;
  // Told when the widget needs another room than before.
  std::function<void()> on_size_change;

 protected:
  Binding(Control& control, BindContext& context, QWidget* widget);
  virtual void PushState() = 0;
  // False when a change of the control is nothing that anybody sees, and is pushed at a later refresh.
  virtual bool IsSeen() { return true; }
  // What the widget shows only a part of, for its tooltip; else empty.
  virtual QString CutText() const { return {}; }
  void MarkForRefresh();

  // Runs a gesture; the widget then shows what the control holds, whether it took the gesture or not.
  template <class F>
  void Gesture(F&& gesture) {
    if (detached_) return;
    context_.gate.Run(gesture);
    MarkForRefresh();
  }
  BindContext& Context() const { return context_; }
  bool Detached() const { return detached_; }

 private:
  std::optional<QSize> Room() const;
  void PushCommon();
  void PushToolTip();
  void PushMark();
  void PushOrigin();

  Control& control_;
  BindContext& context_;
  QPointer<QWidget> widget_;
  QPointer<OriginMark> origin_mark_;  // from the first value on whose origin is known
  QString keys_;
  bool title_ = false;
  bool narrow_ = false;
  bool marked_ = false;
  bool detached_ = false;
};

}  // namespace vlt
