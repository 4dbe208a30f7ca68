// SPDX-License-Identifier: GPL-3.0-or-later
// Finding windows and controls by the names that a script gives them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "window/form.h"

namespace vlt {

// A control, or a part of one.
struct Place {
  Form* form = nullptr;
  Control* control = nullptr;
  std::vector<int> part;  // panel, entry or row; row and column; empty is the whole control
  // "Form10.Label2(1)"; with the part in square brackets behind it.
  std::string Name() const;
};

// The visible window that lies on top: windows above all others before ordinary ones, these before the pages,
// the main window below all. Null when no window is visible.
Form* TopWindow(const Windows& windows);

// "FULL_SCALE1" on the topmost window and, when that is a page, on the main window around it.
// "Form2.Label2(7)" on a window that is open, visible or not. A part stands in square brackets:
// "StatusBar1[2]", "Grid[3,1]". Throws Trouble.
Place FindControl(const Windows& windows, std::string_view name);

// The window of this name. Throws Trouble when it is not known or not open.
Form& FindForm(const Windows& windows, std::string_view name);

}  // namespace vlt
