// SPDX-License-Identifier: GPL-3.0-or-later
// The unit that a value carries by what the meter has told of itself, without brackets. Each brings its unit
// list of the shared state up to date first. A code that the list does not have gives an empty text.
#pragma once

#include <string>

#include "state/app.h"
#include "values/unit_kind.h"

namespace vlt {

// Of the measured value of channel 0 to 2: a velocity or a flow, as its kind says.
std::string RangeUnitText(App& app, int channel);
// Of the totalizer of channel 0 to 2.
std::string TotalUnitText(App& app, int channel);
std::string HeatFlowUnitText(App& app);
std::string HeatTotalUnitText(App& app);
std::string TemperatureUnitText(App& app);

// Of any kind; `channel` counts for the units that each channel has of its own. Empty for UnitKind::kNone.
std::string UnitText(App& app, UnitKind kind, int channel);

// The same for a meter whose facts are `state`, without touching any list.
std::string UnitText(const SharedState& state, UnitKind kind, int channel);

// "[mm]" as "mm".
std::string WithoutBrackets(std::string text);

// A unit that never changes, so that a page need not ask the meter for it.
constexpr bool IsFixedUnit(UnitKind kind) { return kind >= UnitKind::kPercent; }

}  // namespace vlt
