// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/process_values.h"

#include <optional>

#include "calc/spacing_check.h"
#include "link/modbus.h"
#include "link/port.h"
#include "values/code_tables.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

using State = ProcessValue::State;
using enum SpacingField;

struct FieldSlot {
  SpacingField field;
  Slot slot;
  Slot unit = Slot::kNone;  // of a typed field
  int codes = 0;            // code table of a list
  int entries = 0;          // that the calculator offers of it
};

constexpr Slot SlotOfKey(std::string_view key) { return SlotOf("PROCESS SETTING", key); }

constexpr FieldSlot kFields[] = {
    {.field = kOuterDiameter,
     .slot = SlotOfKey("OUTER_DIAMETER_Data"),
     .unit = SlotOfKey("OUTER_DIAMETER_Unit")},
    {.field = kPipeMaterial, .slot = SlotOfKey("PIPE_MATERIAL_Data"), .codes = 1, .entries = kOwnPipe + 1},
    {.field = kWallThickness,
     .slot = SlotOfKey("WALL_THICKNESS_Data"),
     .unit = SlotOfKey("WALL_THICKNESS_Unit")},
    {.field = kPipeVelocity, .slot = SlotOfKey("PIPE_S_V_Data"), .unit = SlotOfKey("PIPE_S_V_Unit")},
    {.field = kLiningMaterial,
     .slot = SlotOfKey("LINING_MATERIAL_Data"),
     .codes = 2,
     .entries = kOwnLining + 1},
    {.field = kLiningThickness,
     .slot = SlotOfKey("LINING_THICKNESS_Data"),
     .unit = SlotOfKey("LINING_THICKNESS_Unit")},
    {.field = kLiningVelocity, .slot = SlotOfKey("LINING_S_V_Data"), .unit = SlotOfKey("LINING_S_V_Unit")},
    {.field = kFluid, .slot = SlotOfKey("KIND_OF_FLUID_Data"), .codes = 3, .entries = kOwnFluid + 1},
    {.field = kFluidVelocity, .slot = SlotOfKey("FLUID_S_V_Data"), .unit = SlotOfKey("FLUID_S_V_Unit")},
    {.field = kMount, .slot = SlotOfKey("SENSOR_MOUNT_Data"), .codes = 4, .entries = 2},
    {.field = kSensor, .slot = SlotOfKey("SENSOR_TYPE_Data"), .codes = 6, .entries = 12},
};

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

// What a page shows beside its own values of another channel or meter, it marks; here they would be taken for
// those of one pipe. What was typed over them is the page's own.
bool IsOfOtherPipe(App& app, const OriginRecord& record, const std::string& kept) {
  using Source = OriginRecord::Source;
  const bool was_read = record.source == Source::kRead || record.source == Source::kSet;
  if (!was_read || record.awaited || record.typed || record.value != kept) return false;
  ValuePlace shown = record.place;
  shown.meter = {.port = app.state.PortIsOpen ? app.state.OpenedPort : PortNumber(app),
                 .station = StationNumber(app)};
  shown.id_number = app.state.MeterIdNo;
  shown.index = app.state.ProcessChannel;
  return ChangeOf(record.place, shown) != PlaceChange::kNone;
}

void ReadList(App& app, const FieldSlot& slot, const std::string& kept, ProcessValue& value) {
  constexpr int kMostEntries = 1000;
  const auto number = ParseNumber(kept);
  if (!number || *number < 0 || *number >= kMostEntries) return;
  const int index = static_cast<int>(*number);
  const std::string entry = CodeToText(app.Codes(), slot.codes, index);
  value.shown = entry.empty() ? "(" + kept + ")" : entry;
  value.state = index < slot.entries ? State::kThere : State::kNotOffered;
  value.index = value.state == State::kThere ? index : -1;
}

void ReadTyped(App& app, const FieldSlot& slot, const std::string& kept, int unit_flag, ProcessValue& value) {
  if (kept.empty()) return;
  const int kept_flag = UnitFlagOf(app.slots[slot.unit], slot.field, app.state.UnitFlag);
  value.shown = TextIn(unit_flag, kept, kept_flag, slot.field);
  value.state = State::kThere;
}

}  // namespace

std::vector<ProcessValue> ReadProcessValues(App& app, int unit_flag) {
  if (Form* page = app.windows.Find("Form10")) page->Taihi();
  std::vector<ProcessValue> values;
  for (const FieldSlot& slot : kFields) {
    const std::string kept(Trim(app.slots[slot.slot]));
    ProcessValue value;
    value.field = slot.field;
    if (slot.codes != 0) {
      ReadList(app, slot, kept, value);
    } else {
      ReadTyped(app, slot, kept, unit_flag, value);
    }
    const bool known = value.state != State::kNotThere;
    if (known && IsOfOtherPipe(app, app.origins.Of(slot.slot), kept)) value.state = State::kOtherPipe;
    values.push_back(std::move(value));
  }
  return values;
}

}  // namespace vlt
