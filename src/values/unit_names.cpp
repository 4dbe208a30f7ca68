// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/unit_names.h"

#include "values/code_tables.h"

namespace vlt {

std::vector<std::string> BuildFlowUnitNames(int flag) { return CodeTexts({.unit_flag = flag}, 7); }

std::vector<std::string> BuildTotalUnitNames(int flag) { return CodeTexts({.unit_flag = flag}, 11); }

std::vector<std::string> BuildHeatFlowUnitNames(Language language) {
  return CodeTexts({.language = language}, 61);
}

std::vector<std::string> BuildHeatTotalUnitNames(Language language) {
  return CodeTexts({.language = language}, 62);
}

std::vector<std::string> BuildTempUnitNames(Language language) {
  return CodeTexts({.language = language}, 60);
}

std::array<std::string, 4> BuildBaseUnitNames(int flag) {
  if (flag == 0) return {"mm", "m/s", "E-6m2/s", "Vpp"};
  return {"inch", "ft/s", "E-6ft2/s", "Vpp"};
}

std::array<std::string, 4> SubGetUnitForm10(int unit, int style) {
  if (unit == 0 && style == 0) return {"m/s", "mm", "℃", "°"};
  if (unit == 0 && style == 1) return {"m/s", "mm", "degC", "deg"};
  if (unit == 1 && style == 0) return {"ft/s", "inch", "°F", "°"};
  return {"ft/s", "inch", "degF", "deg"};
}

}  // namespace vlt
