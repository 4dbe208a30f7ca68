// SPDX-License-Identifier: GPL-3.0-or-later
// The unit that a value carries by what the meter has told of itself, without brackets. Each brings its unit
// list of the shared state up to date first. A code that the list does not have gives an empty text.
#pragma once

#include <string>

#include "state/app.h"
#include "values/unit_kind.h"

namespace vlt {

// The unit that a code stands for; base units and fixed ones have no code. Empty for a code without a text
// and for UnitKind::kNone. A flow is a flow here, whatever the kind of a range says.
std::string UnitName(UnitKind kind, int code, int unit_flag, int lang_offset);

// Of any kind; `channel` counts for the units that each channel has of its own. Empty for UnitKind::kNone.
std::string UnitText(App& app, UnitKind kind, int channel);

// The same for a meter whose facts are `state`, without touching any list.
std::string UnitText(const SharedState& state, UnitKind kind, int channel);

// "[mm]" as "mm".
std::string WithoutBrackets(std::string text);

// A unit that never changes, so that a page need not ask the meter for it.
constexpr bool IsFixedUnit(UnitKind kind) { return kind >= UnitKind::kPercent; }

}  // namespace vlt
