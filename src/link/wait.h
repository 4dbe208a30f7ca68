// SPDX-License-Identifier: GPL-3.0-or-later
// Waits of the link. Every one lets events run, so a caller must not assume that nothing changed across it.
#pragma once

#include "state/app.h"

namespace vlt {

// Lets events run until strictly more than `ms` milliseconds have passed, at least once.
void WaitMs(App& app, int ms);

// The rest that the line gets behind an exchange before the next one. Event timing has none: each request
// waits itself until the line has been silent, so that events run once and that is all.
void RestMs(App& app, int ms);

}  // namespace vlt
