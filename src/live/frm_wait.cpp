// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/frm_wait.h"

#include "resources/text_ids.h"

namespace vlt {
namespace {}  // namespace

frmWait::frmWait(App& app) : Form(app.windows, "frmWait", FormPlace::kWindow), app_(app) {
  cmdCan.on_click = [this] { cmdCan_Click(); };
}

void frmWait::Form_Load() {
  SetCaption(app_.Text(text::kLoaderName));
  cmdCan.SetCaption(app_.Text(text::kCancel));
}

void frmWait::cmdCan_Click() { app_.state.WaitCancel = 1; }

}  // namespace vlt
