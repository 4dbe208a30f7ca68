// SPDX-License-Identifier: GPL-3.0-or-later
// The unit text lists of a unit system. flag is 0 for metric, else English.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "resources/string_table.h"

namespace vlt {

std::vector<std::string> BuildFlowUnitNames(int flag);                // 18
std::vector<std::string> BuildTotalUnitNames(int flag);               // 8 metric, 9 English
std::vector<std::string> BuildHeatFlowUnitNames(Language language);   // 7, the same in both unit systems
std::vector<std::string> BuildHeatTotalUnitNames(Language language);  // 7, the same in both unit systems
std::vector<std::string> BuildTempUnitNames(Language language);       // 3

// Length, velocity, viscosity, voltage: "mm", "m/s", "E-6m2/s", "Vpp" or "inch", "ft/s", "E-6ft2/s", "Vpp".
std::array<std::string, 4> BuildBaseUnitNames(int flag);

// The lists by their own names.
inline constexpr auto& FlowUnitNames = BuildFlowUnitNames;
inline constexpr auto& TotalUnitNames = BuildTotalUnitNames;
inline constexpr auto& HeatFlowUnitNames = BuildHeatFlowUnitNames;
inline constexpr auto& HeatTotalUnitNames = BuildHeatTotalUnitNames;
inline constexpr auto& TempUnitNames = BuildTempUnitNames;
inline constexpr auto& BaseUnitNames = BuildBaseUnitNames;

// Velocity, length, temperature, angle. unit 0 metric, 1 English; style 0 writes the degree signs, 1 spells
// them in letters. Any other pair gives the English units in letters.
std::array<std::string, 4> SubGetUnitForm10(int unit, int style);

}  // namespace vlt
