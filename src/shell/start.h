// SPDX-License-Identifier: GPL-3.0-or-later
// From the start of the process to the splash.
#pragma once

#include "state/app.h"

namespace vlt {

// Makes the windows of this folder known: MDIForm1, the splash windows, frmMssg, frmAbout, FrmCSet.
void RegisterShellWindows(App& app);
// Those and the pages.
void RegisterAllWindows(App& app);

// What a start begins with: the settings of this folder into the shared state, without a window, a box, or a
// guard against another instance. False when they name no known hardware variant; StartFaultReason then names
// the file and the key.
bool ReadStartSettings(App& app);

enum class StartResult {
  kEnded,       // the process was asked to end
  kSplashRuns,  // a splash window is shown; its timer carries on
};

// The start routine. All windows must be registered. Ends the process silently when another instance runs,
// and with a message box when the settings name no known hardware variant; a missing settings file is such
// a case. StartFaultReason and a line on the error output then name the file and the key. The serial port is
// not touched.
StartResult StartUp(App& app);

}  // namespace vlt
