// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of this folder.
#pragma once

#include "state/app.h"

namespace vlt {

// Makes frmCalc known.
void RegisterCalcWindows(App& app);

}  // namespace vlt
