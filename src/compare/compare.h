// SPDX-License-Identifier: GPL-3.0-or-later
// The window of this folder, and the menu items that lead to it.
#pragma once

#include "state/app.h"

namespace vlt {

// Makes frmCompare known, and its items in the main window's file menu.
void RegisterCompareWindows(App& app);

}  // namespace vlt
