// SPDX-License-Identifier: GPL-3.0-or-later
// All captions and messages, in two languages side by side.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace vlt {

// The text of an id plus the language's offset: id (below 5000) gives the Japanese text, id + 5000 the
// English one. Throws std::out_of_range for an id that is not in the table: a fault of the caller, never of
// the operator.
const char* LookupText(int id);

// text with "%1" to "%9" replaced by the arguments in order; "%%" gives "%". A placeholder without an
// argument stays as it is.
std::string FormatText(std::string_view text, std::initializer_list<std::string_view> args);

}  // namespace vlt
