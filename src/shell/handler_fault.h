// SPDX-License-Identifier: GPL-3.0-or-later
// What the program does when a handler ends by an exception that nobody foresaw.
#pragma once

#include <string>

#include "state/app.h"

namespace vlt {

// Tells the operator in a box and in status panel 1, with the exception's own words, and gives the normal
// pointer back, without which the main window drops every click. Files are whole whatever the handler was
// about: each is written by one move or one append. The lock of the interface belongs to the objects that
// took it. While a box of this kind is up, further ones only reach the status line.
void TellHandlerFault(App& app, const std::string& what);

}  // namespace vlt
