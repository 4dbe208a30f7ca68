// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/process_values.h"

#include "calc/spacing_check.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr const char* kSection = "PROCESS SETTING";

struct ListSlot {
  const char* key;
  std::optional<int> ProcessValues::*value;
  int entries;  // of the calculator's list
};

constexpr ListSlot kLists[] = {
    {"PIPE_MATERIAL_Data", &ProcessValues::pipe, kOwnPipe + 1},
    {"LINING_MATERIAL_Data", &ProcessValues::lining, kOwnLining + 1},
    {"KIND_OF_FLUID_Data", &ProcessValues::fluid, kOwnFluid + 1},
    {"SENSOR_MOUNT_Data", &ProcessValues::mount, 2},
    {"SENSOR_TYPE_Data", &ProcessValues::sensor, 12},
};

struct TextSlot {
  const char* key;
  const char* unit_key;
  SpacingField field;
  std::string ProcessValues::*value;
};

constexpr TextSlot kTexts[] = {
    {"OUTER_DIAMETER_Data", "OUTER_DIAMETER_Unit", SpacingField::kOuterDiameter,
     &ProcessValues::outer_diameter},
    {"WALL_THICKNESS_Data", "WALL_THICKNESS_Unit", SpacingField::kWallThickness,
     &ProcessValues::wall_thickness},
    {"LINING_THICKNESS_Data", "LINING_THICKNESS_Unit", SpacingField::kLiningThickness,
     &ProcessValues::lining_thickness},
    {"PIPE_S_V_Data", "PIPE_S_V_Unit", SpacingField::kPipeVelocity, &ProcessValues::pipe_velocity},
    {"LINING_S_V_Data", "LINING_S_V_Unit", SpacingField::kLiningVelocity, &ProcessValues::lining_velocity},
    {"FLUID_S_V_Data", "FLUID_S_V_Unit", SpacingField::kFluidVelocity, &ProcessValues::fluid_velocity},
};

std::optional<int> ListIndex(const std::string& slot, int entries) {
  const auto number = ParseWhole(slot);
  return number && *number >= 0 && *number < entries ? number : std::nullopt;
}

// The unit system that a value was kept in: that of its unit, and of the program where none was kept.
int UnitFlagOf(const std::string& unit, SpacingField field, int program_flag) {
  for (const int flag : {0, 1}) {
    if (unit.find(UnitOf(field, flag)) != std::string::npos) return flag;
  }
  return program_flag;
}

std::string TextIn(int unit_flag, const std::string& kept, int kept_flag, SpacingField field) {
  const auto number = ParseNumber(kept);
  const bool same = (kept_flag != 0) == (unit_flag != 0);
  return number && !same ? ConvertedText(field, *number, unit_flag) : kept;
}

}  // namespace

ProcessValues ReadProcessValues(App& app, int unit_flag) {
  if (Form* page = app.windows.Find("Form10")) page->Taihi();
  ProcessValues values;
  for (const ListSlot& slot : kLists) {
    const auto index = ListIndex(app.slots.At(kSection, slot.key), slot.entries);
    values.*slot.value = index;
    if (index) ++values.count;
  }
  for (const TextSlot& slot : kTexts) {
    const std::string kept(Trim(app.slots.At(kSection, slot.key)));
    if (kept.empty()) continue;
    const int kept_flag = UnitFlagOf(app.slots.At(kSection, slot.unit_key), slot.field, app.state.UnitFlag);
    values.*slot.value = TextIn(unit_flag, kept, kept_flag, slot.field);
    ++values.count;
  }
  return values;
}

}  // namespace vlt
