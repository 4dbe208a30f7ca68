// SPDX-License-Identifier: GPL-3.0-or-later
// The check of an entry with limits, as the pages with a live run make it.
#pragma once

#include "state/app.h"

namespace vlt {

// True for a number from `low` to `high`. Otherwise a box says what is wrong, and the text is marked with the
// focus on it.
bool CheckEntry(App& app, TextBox& box, double low, double high);

}  // namespace vlt
