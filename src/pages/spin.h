// SPDX-License-Identifier: GPL-3.0-or-later
// The arrows beside a number field.
#pragma once

#include "window/control.h"

namespace vlt {

// Makes each arrow change the number of `box` by `step`, between `least` and `greatest`. An empty field
// counts as 0; a text that is no number stays as it is. Nothing is sent.
void TieSpin(UpDown& arrows, TextBox& box, double step, double least, double greatest);

}  // namespace vlt
