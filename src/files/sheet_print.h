// SPDX-License-Identifier: GPL-3.0-or-later
// Sheets on paper, and what the operator is told of it: the same in every window that prints.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "platform/sheet.h"
#include "state/app.h"

namespace vlt {

// False, with a box that says so, where the program has nothing that prints.
bool HasPrinter(App& app);

// Asks for a printer and prints; HasPrinter has said yes. What goes into a status line when the sheets were
// handed to the queue; nothing when the operator cancelled, or when a box has told why it did not work.
std::optional<std::string> PrintSheets(App& app, std::span<const Sheet> sheets, const std::string& title);

}  // namespace vlt
