// SPDX-License-Identifier: GPL-3.0-or-later
// What a script can see of a control.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/names.h"

namespace vlt {

// What a person reads in it: the text of a field, the selected entry of a list, the caption of the rest; of a
// status bar the first panel, of a tab its caption, of a chart its Y title, of a progress bar "3/10".
// Of a part: a status bar's panel (from 1), an entry of a list or a tab (from 0), a grid's cell (row and
// column from 0), a chart's shown point (from 1; "X Y", "X -" for a hole). Throws Trouble for a part that is
// not there.
std::string TextOf(const Place& place);

// "enabled", "disabled" or "hidden".
std::string StateOf(const Control& control);

// "ticked" or "unticked" of a check box or an option; the index of a list's selection or of the tab, -1 for
// none; "running" or "stopped" of a timer; the number of a chart's shown points; else empty.
std::string ValueOf(const Control& control);

// Where the value of an entry comes from, one of kOriginWords.
inline constexpr std::string_view kOriginWords[] = {"none", "read", "typed", "file", "outdated"};
std::string OriginOf(const Control& control);

// One row of fields for each line that tells of the control: name, text, state, value, and, where there is
// something to tell, why an exchange failed, the origin and its words; behind it the name and
// the text of each further panel, the name and the cells of each row of a grid (those of a hidden column are
// empty).
std::vector<std::vector<std::string>> Description(const Place& place);

}  // namespace vlt
