#include "meter/units.h"

#include <array>

#include "link/device_queries.h"

namespace vlt {
namespace {

constexpr int kVelocityKind = 0;

// Texts of the fixed units from UnitKind::kPercent on; they stand between brackets.
constexpr std::array kFixedTexts = {10, 100, 70, 110, 4963, 40, 131, 130};

std::string NameAt(const std::vector<std::string>& names, int code) {
  const bool known = code >= 0 && static_cast<std::size_t>(code) < names.size();
  return known ? names[static_cast<std::size_t>(code)] : std::string();
}

std::string WithoutBrackets(std::string text) {
  if (text.starts_with('[') && text.ends_with(']')) text = text.substr(1, text.size() - 2);
  return text;
}

std::string FixedUnitText(const App& app, UnitKind kind) {
  const auto at = static_cast<std::size_t>(kind) - static_cast<std::size_t>(UnitKind::kPercent);
  return at < kFixedTexts.size() ? WithoutBrackets(app.Text(kFixedTexts[at])) : std::string();
}

}  // namespace

std::string RangeUnitText(App& app, int channel) {
  const auto at = static_cast<std::size_t>(channel);
  if (app.state.RangeKind.at(at) == kVelocityKind) {
    BuildBaseUnitNames(app);
    return NameAt(app.state.BaseUnitNames, static_cast<int>(UnitKind::kVelocity));
  }
  BuildFlowUnitNames(app);
  return NameAt(app.state.FlowUnitNames, app.state.RangeUnit.at(at));
}

std::string TotalUnitText(App& app, int channel) {
  BuildTotalUnitNames(app);
  return NameAt(app.state.TotalUnitNames, app.state.TotalUnit.at(static_cast<std::size_t>(channel)));
}

std::string HeatFlowUnitText(App& app) {
  BuildHeatFlowUnitNames(app);
  return NameAt(app.state.HeatFlowUnitNames, app.state.HeatFlowUnit);
}

std::string HeatTotalUnitText(App& app) {
  BuildHeatTotalUnitNames(app);
  return NameAt(app.state.HeatTotalUnitNames, app.state.HeatTotalUnit);
}

std::string TemperatureUnitText(App& app) {
  BuildTempUnitNames(app);
  return NameAt(app.state.TempUnitNames, app.state.TempUnit);
}

std::string UnitText(App& app, UnitKind kind, int channel) {
  switch (kind) {
    case UnitKind::kFlow:
      return RangeUnitText(app, channel);
    case UnitKind::kTotal:
      return TotalUnitText(app, channel);
    case UnitKind::kHeatFlow:
      return HeatFlowUnitText(app);
    case UnitKind::kHeatTotal:
      return HeatTotalUnitText(app);
    case UnitKind::kTemperature:
      return TemperatureUnitText(app);
    default:
      break;
  }
  if (IsFixedUnit(kind)) return FixedUnitText(app, kind);
  BuildBaseUnitNames(app);
  return NameAt(app.state.BaseUnitNames, static_cast<int>(kind));
}

}  // namespace vlt
