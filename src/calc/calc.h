// The windows of this folder.
#pragma once

#include "state/app.h"

namespace vlt {

// Makes frmCalc known.
void RegisterCalcWindows(App& app);

}  // namespace vlt
