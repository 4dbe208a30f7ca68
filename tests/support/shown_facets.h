// SPDX-License-Identifier: GPL-3.0-or-later
// What a window shows, as text: the facets of each control by its full name and theirs, as {"Label2(7)", ""}
// for its caption, {"Label2(7)", "hint"}, ... A facet that holds nothing, or what a new control holds, is not
// there.
#pragma once

#include <map>
#include <string>
#include <utility>

#include "window/form.h"

namespace vlt::test {

using Facets = std::map<std::pair<std::string, std::string>, std::string>;

// Moments and durations are not told: "2026/11/24 10:00:16" and "16.3 s" are "DATE" and "# s". Of an origin
// only the kind is.
Facets FacetsOf(const Form& form);

// The facets of `after` that are not the same in `before`; an empty text is one that has gone. Of a row of a
// grid, a cell that has stayed is "~".
Facets Changes(const Facets& before, const Facets& after);

}  // namespace vlt::test
