// SPDX-License-Identifier: GPL-3.0-or-later
// The screen of a list of windows: shows each form that becomes visible and hands on what a person does.
#pragma once

#include <QObject>
#include <functional>
#include <map>
#include <memory>
#include <string_view>
#include <vector>

#include "desktop/form_view.h"
#include "desktop/input_gate.h"
#include "desktop/layouts/layouts.h"
#include "desktop/refresh_queue.h"
#include "window/form.h"

class QStackedWidget;

namespace vlt {

class Desktop : public QObject {
 public:
  // Looks up a layout table, and the text of an id in the language in force.
  using Layouts = std::function<const WindowLayout*(std::string_view form)>;
  using Texts = std::function<QString(int id)>;

  // Becomes the observer of `windows`, which must outlive it. No window may exist yet.
  Desktop(Windows& windows, Texts texts, Layouts layouts = FindLayout);
  ~Desktop() override;

  // Who keeps the place of the main window; before it is shown.
  void SetPlaceKeeper(PlaceKeeper keeper) { context_.place = std::move(keeper); }

  // Told of a handler that broke off: what it says. All else goes on.
  std::function<void(const std::string& what)> on_failure;
  void TellFailure(const std::string& what);

  // The view of a form that exists, or null.
  FormView* View(std::string_view form) const;
  // Brings the screen up to date now instead of with the next event.
  void Flush() { refresh_.Flush(); }

 private:
  void Loaded(Form& form);
  void Unloaded(Form& form);
  void PointerChanged();
  void Close(const std::string& form);
  // Puts the topmost page on top, or the empty frame's picture.
  void ArrangePages();
  void Sweep();
  void EndWhenEmpty();
  FormView* FrameView() const;
  QWidget* FrameWidget() const;

  Windows& windows_;
  RefreshQueue refresh_;
  InputGate gate_;
  ViewContext context_;
  std::map<const Form*, std::unique_ptr<FormView>> views_;
  // Views of unloaded forms, until no gesture of them can be under way.
  std::vector<std::unique_ptr<FormView>> gone_;
  bool hourglass_ = false;
};

}  // namespace vlt
