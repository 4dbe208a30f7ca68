// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/process_values.h"

#include "calc/spacing_check.h"
#include "link/modbus.h"
#include "link/port.h"
#include "meter/identification.h"
#include "meter/process_table.h"
#include "meter/value_text.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

using State = ProcessValue::State;
using enum SpacingField;

struct FieldRow {
  SpacingField field;
  const Parameter* row;
  int entries = 0;  // of a list: those that the calculator offers
};

constexpr FieldRow kFields[] = {
    {kOuterDiameter, &ProcessRow("outer_diameter")},
    {kPipeMaterial, &ProcessRow("pipe_material"), kOwnPipe + 1},
    {kWallThickness, &ProcessRow("wall_thickness")},
    {kPipeVelocity, &ProcessRow("pipe_sound_velocity")},
    {kLiningMaterial, &ProcessRow("lining_material"), kOwnLining + 1},
    {kLiningThickness, &ProcessRow("lining_thickness")},
    {kLiningVelocity, &ProcessRow("lining_sound_velocity")},
    {kFluid, &ProcessRow("fluid"), kOwnFluid + 1},
    {kFluidVelocity, &ProcessRow("fluid_sound_velocity")},
    {kMount, &ProcessRow("sensor_mount"), 2},
    {kSensor, &ProcessRow("sensor_type"), 12},
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
  shown.id_number = KnownIdNumber(app.state);
  shown.index = app.state.ProcessChannel;
  return ChangeOf(record.place, shown) != PlaceChange::kNone;
}

void ReadList(App& app, const FieldRow& of, const std::string& kept, ProcessValue& value) {
  constexpr int kMostEntries = 1000;
  const int index = ParseWhole(kept).value_or(-1);
  if (index < 0 || index >= kMostEntries) return;
  const std::string entry = CodeWord(*of.row, app.state, index);
  value.shown = entry.empty() ? "(" + kept + ")" : entry;
  value.state = index < of.entries ? State::kThere : State::kNotOffered;
  value.index = value.state == State::kThere ? index : -1;
}

void ReadTyped(App& app, const FieldRow& of, const std::string& kept, int unit_flag, ProcessValue& value) {
  if (kept.empty()) return;
  const int kept_flag = UnitFlagOf(app.slots[of.row->unit_slot], of.field, app.state.UnitFlag);
  value.shown = TextIn(unit_flag, kept, kept_flag, of.field);
  value.state = State::kThere;
}

}  // namespace

std::vector<ProcessValue> ReadProcessValues(App& app, int unit_flag) {
  if (Form* page = app.windows.Find("Form10")) page->Taihi();
  std::vector<ProcessValue> values;
  for (const FieldRow& of : kFields) {
    const std::string kept(Trim(app.slots[of.row->slot]));
    ProcessValue value;
    value.field = of.field;
    if (of.row->IsCode()) {
      ReadList(app, of, kept, value);
    } else {
      ReadTyped(app, of, kept, unit_flag, value);
    }
    const bool known = value.state != State::kNotThere;
    if (known && IsOfOtherPipe(app, app.origins.Of(of.row->slot), kept)) value.state = State::kOtherPipe;
    values.push_back(std::move(value));
  }
  return values;
}

}  // namespace vlt
