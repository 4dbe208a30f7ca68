// SPDX-License-Identifier: GPL-3.0-or-later
// The parameter pages of the program.
#pragma once

#include "state/app.h"

namespace vlt {

// Registers every page under its name ("Form10").
void RegisterPages(App& app);

}  // namespace vlt
