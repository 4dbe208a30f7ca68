// The windows that watch the meter.
#pragma once

#include "state/app.h"

namespace vlt {

// Registers the measure page (Form9), the RAS page (Form8), and several stations (Form12) with its
// frmWait.
void RegisterLiveWindows(App& app);

}  // namespace vlt
