#include "pages/unit_text.h"

#include "link/device_queries.h"

namespace vlt {
namespace {

constexpr int kVelocityKind = 0;
constexpr std::size_t kVelocityName = 1;  // in BaseUnitNames

std::string NameAt(const std::vector<std::string>& names, int code) {
  const bool known = code >= 0 && static_cast<std::size_t>(code) < names.size();
  return known ? names[static_cast<std::size_t>(code)] : std::string();
}

}  // namespace

std::string RangeUnitText(App& app, int channel) {
  const auto at = static_cast<std::size_t>(channel);
  if (app.state.RangeKind.at(at) == kVelocityKind) {
    BuildBaseUnitNames(app);
    return app.state.BaseUnitNames.at(kVelocityName);
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

}  // namespace vlt
