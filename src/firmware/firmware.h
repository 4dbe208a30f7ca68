// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of the firmware tool: frmMaint_MAIN, frmMaint_Wait, frmMaint_COMM.
#pragma once

#include "state/app.h"

namespace vlt {

void RegisterFirmwareWindows(App& app);

}  // namespace vlt
