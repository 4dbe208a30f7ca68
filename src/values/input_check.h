// SPDX-License-Identifier: GPL-3.0-or-later
// The first test of a typed number, character by character.
#pragma once

#include <string_view>

namespace vlt {

// 1 for an empty text (length below 1), 0 for an acceptable number, -1 otherwise. length counts characters
// (code points), as CharCount gives them. A sign is taken at the first place only, a point or comma only
// behind it; a text with two points passes, and ParseNumber then decides.
int IsNumericText(std::string_view text, int length);
// The same for the whole text.
int IsNumericText(std::string_view text);

// Text id of what a box says of a text that is no number: that it has a comma, or that it is none.
int NoNumberText(std::string_view text);
// The same when a field is left with `text`; 0 for a text that passes IsNumericText and has no comma, an
// empty one too.
int TypedNumberFault(std::string_view text);

}  // namespace vlt
