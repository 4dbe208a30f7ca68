// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/closing.h"

#include "link/port.h"

namespace vlt {

void StopWork(App& app) {
  for (Form* form : app.windows.Open()) {
    const Control* button = app.windows.Exists(form) ? form->StopButton() : nullptr;
    auto* stop = button == nullptr ? nullptr : dynamic_cast<PushButton*>(form->Find(button->FullName()));
    if (stop != nullptr) stop->Press();
  }
}

void CloseAllForms(App& app) {
  for (Form* form : app.windows.Open()) {
    if (app.windows.Exists(form)) app.windows.Unload(form->Name());
  }
  bool closed = false;
  ClosePort(app, closed);
  app.state.PortIsOpen = closed;
}

}  // namespace vlt
