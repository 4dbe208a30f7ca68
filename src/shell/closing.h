// SPDX-License-Identifier: GPL-3.0-or-later
// The end of all windows.
#pragma once

#include "state/app.h"

namespace vlt {

// Presses the stop buttons that can be pressed: work and runs on the line end behind the exchange in hand.
void StopWork(App& app);

// Unloads every window of the list, then closes the port and keeps the result of that in PortIsOpen.
void CloseAllForms(App& app);

}  // namespace vlt
