// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/closing.h"

#include "link/port.h"

namespace vlt {

void CloseAllForms(App& app) {
  for (Form* form : app.windows.Open()) {
    if (app.windows.Exists(form)) app.windows.Unload(form->Name());
  }
  bool closed = false;
  ClosePort(app, closed);
  app.state.PortIsOpen = closed;
}

}  // namespace vlt
