// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/units.h"

#include <array>

#include "meter/range_table.h"
#include "meter/total_table.h"
#include "resources/string_table.h"
#include "values/unit_names.h"

namespace vlt {
namespace {

// Texts of the fixed units from UnitKind::kPercent on; they stand between brackets.
constexpr std::array kFixedTexts = {10, 100, 70, 110, 4963, 40, 131, 130};

std::string NameAt(const std::vector<std::string>& names, int code) {
  const bool known = code >= 0 && static_cast<std::size_t>(code) < names.size();
  return known ? names[static_cast<std::size_t>(code)] : std::string();
}

std::string FixedUnitText(UnitKind kind, Language language) {
  const auto at = static_cast<std::size_t>(kind) - static_cast<std::size_t>(UnitKind::kPercent);
  return at < kFixedTexts.size() ? WithoutBrackets(LookupText(kFixedTexts[at], language)) : std::string();
}

// A range of velocities has their unit and no code of its own.
bool IsVelocity(const MeterFacts& state, int channel) {
  return state.RangeKind.at(static_cast<std::size_t>(channel)) == kVelocityKind;
}

// The code that the meter has told for a unit.
int CodeOf(const MeterFacts& state, UnitKind kind, int channel) {
  const auto at = static_cast<std::size_t>(channel);
  switch (kind) {
    case UnitKind::kFlow:
      return state.RangeUnit.at(at);
    case UnitKind::kTotal:
      return state.TotalUnit.at(at);
    case UnitKind::kHeatFlow:
      return state.HeatFlowUnit;
    case UnitKind::kHeatTotal:
      return state.HeatTotalUnit;
    case UnitKind::kTemperature:
      return state.TempUnit;
    default:
      return 0;
  }
}

}  // namespace

std::string WithoutBrackets(std::string text) {
  if (text.starts_with('[') && text.ends_with(']')) text = text.substr(1, text.size() - 2);
  return text;
}

std::string UnitName(UnitKind kind, int code, int unit_flag, Language language) {
  switch (kind) {
    case UnitKind::kFlow:
      return NameAt(BuildFlowUnitNames(unit_flag), code);
    case UnitKind::kTotal:
      return NameAt(BuildTotalUnitNames(unit_flag), code);
    case UnitKind::kHeatFlow:
      return NameAt(BuildHeatFlowUnitNames(language), code);
    case UnitKind::kHeatTotal:
      return NameAt(BuildHeatTotalUnitNames(language), code);
    case UnitKind::kTemperature:
      return NameAt(BuildTempUnitNames(language), code);
    default:
      return IsFixedUnit(kind) ? FixedUnitText(kind, language)
                               : BuildBaseUnitNames(unit_flag).at(static_cast<std::size_t>(kind));
  }
}

int UnitCode(const MeterFacts& facts, UnitKind kind, int channel) {
  return kind == UnitKind::kFlow && IsVelocity(facts, channel) ? -1 : CodeOf(facts, kind, channel);
}

std::string UnitText(const MeterFacts& facts, Language language, UnitKind kind, int channel) {
  if (kind == UnitKind::kFlow && IsVelocity(facts, channel)) kind = UnitKind::kVelocity;
  return UnitName(kind, CodeOf(facts, kind, channel), facts.UnitFlag, language);
}

std::string UnitText(const ToldFacts& facts, UnitKind kind, int channel) {
  return UnitText(facts, facts.Spoken(), kind, channel);
}

std::optional<UnitKind> NamesUnit(const Parameter& row) {
  if (&row == &RangeRow("unit")) return UnitKind::kFlow;
  if (&row == &TotalRow("unit")) return UnitKind::kTotal;
  return {};
}

}  // namespace vlt
