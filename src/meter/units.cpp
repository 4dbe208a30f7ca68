// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/units.h"

#include <array>

#include "link/device_queries.h"
#include "resources/string_table.h"
#include "values/unit_names.h"

namespace vlt {
namespace {

constexpr int kVelocityKind = 0;

// Texts of the fixed units from UnitKind::kPercent on; they stand between brackets.
constexpr std::array kFixedTexts = {10, 100, 70, 110, 4963, 40, 131, 130};

std::string NameAt(const std::vector<std::string>& names, int code) {
  const bool known = code >= 0 && static_cast<std::size_t>(code) < names.size();
  return known ? names[static_cast<std::size_t>(code)] : std::string();
}

std::string FixedUnitText(const SharedState& state, UnitKind kind) {
  const auto at = static_cast<std::size_t>(kind) - static_cast<std::size_t>(UnitKind::kPercent);
  return at < kFixedTexts.size() ? WithoutBrackets(LookupText(kFixedTexts[at] + state.LangOffset))
                                 : std::string();
}

std::string BaseUnitText(const SharedState& state, UnitKind kind) {
  return BuildBaseUnitNames(state.UnitFlag).at(static_cast<std::size_t>(kind));
}

std::string FlowUnitText(const SharedState& state, int channel) {
  const auto at = static_cast<std::size_t>(channel);
  if (state.RangeKind.at(at) == kVelocityKind) return BaseUnitText(state, UnitKind::kVelocity);
  return NameAt(BuildFlowUnitNames(state.UnitFlag), state.RangeUnit.at(at));
}

// The list of the shared state that a unit comes from.
void BuildLists(App& app, UnitKind kind, int channel) {
  switch (kind) {
    case UnitKind::kFlow:
      if (app.state.RangeKind.at(static_cast<std::size_t>(channel)) == kVelocityKind) {
        BuildBaseUnitNames(app);
      } else {
        BuildFlowUnitNames(app);
      }
      break;
    case UnitKind::kTotal:
      BuildTotalUnitNames(app);
      break;
    case UnitKind::kHeatFlow:
      BuildHeatFlowUnitNames(app);
      break;
    case UnitKind::kHeatTotal:
      BuildHeatTotalUnitNames(app);
      break;
    case UnitKind::kTemperature:
      BuildTempUnitNames(app);
      break;
    default:
      if (!IsFixedUnit(kind)) BuildBaseUnitNames(app);
  }
}

}  // namespace

std::string WithoutBrackets(std::string text) {
  if (text.starts_with('[') && text.ends_with(']')) text = text.substr(1, text.size() - 2);
  return text;
}

std::string RangeUnitText(App& app, int channel) { return UnitText(app, UnitKind::kFlow, channel); }

std::string TotalUnitText(App& app, int channel) { return UnitText(app, UnitKind::kTotal, channel); }

std::string HeatFlowUnitText(App& app) { return UnitText(app, UnitKind::kHeatFlow, 0); }

std::string HeatTotalUnitText(App& app) { return UnitText(app, UnitKind::kHeatTotal, 0); }

std::string TemperatureUnitText(App& app) { return UnitText(app, UnitKind::kTemperature, 0); }

std::string UnitText(App& app, UnitKind kind, int channel) {
  BuildLists(app, kind, channel);
  return UnitText(app.state, kind, channel);
}

std::string UnitText(const SharedState& state, UnitKind kind, int channel) {
  switch (kind) {
    case UnitKind::kFlow:
      return FlowUnitText(state, channel);
    case UnitKind::kTotal:
      return NameAt(BuildTotalUnitNames(state.UnitFlag),
                    state.TotalUnit.at(static_cast<std::size_t>(channel)));
    case UnitKind::kHeatFlow:
      return NameAt(BuildHeatFlowUnitNames(state.LangOffset), state.HeatFlowUnit);
    case UnitKind::kHeatTotal:
      return NameAt(BuildHeatTotalUnitNames(state.LangOffset), state.HeatTotalUnit);
    case UnitKind::kTemperature:
      return NameAt(BuildTempUnitNames(state.LangOffset), state.TempUnit);
    default:
      return IsFixedUnit(kind) ? FixedUnitText(state, kind) : BaseUnitText(state, kind);
  }
}

}  // namespace vlt
