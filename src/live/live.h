// The windows that watch the meter.
#pragma once

#include "state/app.h"

namespace vlt {

// Registers the measure page (Form9) and the RAS page (Form8).
void RegisterLiveWindows(App& app);

}  // namespace vlt
