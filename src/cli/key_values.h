// SPDX-License-Identifier: GPL-3.0-or-later
// Arguments of the form KEY=VALUE.
#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>

#include "cli/script.h"
#include "state/app.h"

namespace vlt {

using KeyValues = std::map<std::string_view, std::string>;

// The values by their keys, which are those of `keys`. Throws Trouble for an argument of another form, a key
// that is not among them, and one that is there twice.
KeyValues ReadKeyValues(const App& app, const Arguments& arguments, std::span<const std::string_view> keys);

}  // namespace vlt
