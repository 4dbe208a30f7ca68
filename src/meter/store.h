// SPDX-License-Identifier: GPL-3.0-or-later
// The store command: register 0150H reads 0 when idle, and 1 is written to it to make the meter keep in its
// non-volatile memory what was set.
#pragma once

#include "state/app.h"

namespace vlt {

// The register of the command: 1 asks for a store, 0 tells that none is under way.
inline constexpr int kStoreRegister = 0x0150;

// True when the meter has confirmed the store. Opens the port; when that fails a message box says so. A meter
// that is not idle, does not answer, or takes longer than some 350 ms gives false with nothing shown.
bool SaveToDevice(App& app);

// True when the meter is idle. Any failure counts as false.
bool ReadSaveStatus(App& app);

// True when the meter has echoed the request to store. A port that cannot be opened is told in a message box.
bool WriteSaveRequest(App& app);

}  // namespace vlt
