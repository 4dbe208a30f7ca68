// SPDX-License-Identifier: GPL-3.0-or-later
// What a window shows, as text: for each control its facets, by "Label2(7)", "Label2(7).hint", ... A facet
// that holds nothing, or what a new control holds, is not there.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "window/form.h"

namespace vlt::test {

using Facets = std::map<std::string, std::string>;

Facets FacetsOf(const Form& form);

// "NAME: AFTER" for each facet that is not the same in both, "-" for one that has gone; those of `except` and
// its facets are left out.
std::vector<std::string> Differences(const Facets& before, const Facets& after,
                                     const std::string& except = {});

}  // namespace vlt::test
