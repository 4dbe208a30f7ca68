// SPDX-License-Identifier: GPL-3.0-or-later
// Colours of controls on the screen.
#pragma once

#include <QPalette>

namespace vlt {

// False for a number of the system's palette, which is no colour.
bool IsOwnColour(unsigned bgr);

// A palette with a control's own colour for `ground` and letters that can be read on it; the system's palette
// for a control that has none.
QPalette OnColour(unsigned bgr, QPalette::ColorRole ground, QPalette::ColorRole letters);

}  // namespace vlt
