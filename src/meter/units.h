// SPDX-License-Identifier: GPL-3.0-or-later
// The unit that a value carries, without brackets.
#pragma once

#include <optional>
#include <string>

#include "meter/parameter.h"
#include "state/meter_facts.h"
#include "values/unit_kind.h"

namespace vlt {

// The kind of a range that counts velocities.
inline constexpr int kVelocityKind = 0;

// The unit that a code stands for; base units and fixed ones have no code. Empty for a code without a text
// and for UnitKind::kNone. A flow is a flow here, whatever the kind of a range says.
std::string UnitName(UnitKind kind, int code, int unit_flag, Language language);

// By what is known of a meter; `channel` counts for the units that each channel has of its own. A flow is a
// velocity where the kind of the channel's range says so.
std::string UnitText(const MeterFacts& facts, Language language, UnitKind kind, int channel);
std::string UnitText(const ToldFacts& facts, UnitKind kind, int channel);

// The code of that unit, or -1 for a velocity: what tells it from others of its kind and unit system, in any
// language. 0 for units that have no code.
int UnitCode(const MeterFacts& facts, UnitKind kind, int channel);

// The kind of unit that the codes of a row are, where the list of them depends on the unit system.
std::optional<UnitKind> NamesUnit(const Parameter& row);

// "[mm]" as "mm".
std::string WithoutBrackets(std::string text);

// A unit that never changes, so that a page need not ask the meter for it.
constexpr bool IsFixedUnit(UnitKind kind) { return kind >= UnitKind::kPercent; }

}  // namespace vlt
