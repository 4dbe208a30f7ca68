// SPDX-License-Identifier: GPL-3.0-or-later
// The windows that watch the meter.
#pragma once

#include "state/app.h"

namespace vlt {

// Registers the measure page (Form9), the RAS page (Form8), several stations (Form12) with its frmWait, and
// the live tabs of the transit-time page (Form11).
void RegisterLiveWindows(App& app);

}  // namespace vlt
