// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/frm_about.h"

#include "resources/text_ids.h"
#include "resources/version.h"
#include "shell/splash.h"

namespace vlt {
namespace {}  // namespace

frmAbout::frmAbout(App& app) : Form(app.windows, "frmAbout", FormPlace::kWindow), app_(app) {
  cmdOK.on_click = [this] { cmdOK_Click(); };
}

void frmAbout::Form_Load() {
  SetCaption(app_.Text(text::kVersionInfo));
  lblTitle.SetCaption(app_.Text(text::kProductName));
  lblVersion.SetCaption(VersionText(VersionSuffix(app_.state)));
  cmdOK.SetCaption(app_.Text(text::kOk));
}

void frmAbout::cmdOK_Click() { List().Unload(Name()); }

}  // namespace vlt
