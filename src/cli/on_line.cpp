// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/on_line.h"

#include "cli/trouble.h"
#include "link/port.h"
#include "resources/text_ids_words.h"
#include "state/form_lock.h"

namespace vlt {

App& OnLine::Free(App& app) {
  if (!app.platform.process.BecomeOnlyInstance()) {
    throw Trouble{ScriptStatus::kDiffers, app.Text(text::kOtherInstance)};
  }
  if (!IsLineFree(app)) throw Trouble{ScriptStatus::kDiffers, app.Text(text::kLineTaken)};
  return app;
}

OnLine::OnLine(App& app, Form& holder, Port port) : operation_(Free(app), holder, Operation::kUnnamed) {
  if (port == Port::kOpen && !OpenPort(app)) {
    throw Trouble{ScriptStatus::kDiffers, app.state.PortFaultReason};
  }
}

}  // namespace vlt
