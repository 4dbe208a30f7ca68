// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form3.h"

#include "meter/device_queries.h"
#include "meter/facts.h"
#include "meter/total_table.h"

namespace vlt {
namespace {

constexpr int kStopped = 1;   // of the modes
constexpr int kUnitMark = 0;  // a read asks the unit at most once

// The last total unit of an English meter, acre-foot, has no metric counterpart.
constexpr int kUnitWithoutMetric = 8;

}  // namespace

Form3::Form3(App& app)
    : ChannelPage(app, {.name = "Form3",
                        .texts = {.title = 1610,
                                  .set_started = 3993,
                                  .set_completed = 4003,
                                  .read_started = 4013,
                                  .read_completed = 4023},
                        .channel = &SharedState::TotalChannel,
                        .unit_track = &SharedState::TotalUnitTrack}) {
  column().SetFields(Table());
  MODECombo.on_click = [this] { MODECombo_Click(); };
}

std::vector<Field> Form3::Table() {
  return {
      Bind(TotalRow("unit"), UNIT_SYSTEM, UNIT_SYSTEMCombo),
      Bind(TotalRow("mode"), Mode, MODECombo),
      Bind(TotalRow("rate"), ConstantCheck, ConstantCheckText, &Label2(10)),
      Bind(TotalRow("preset"), F_TOTAL_PRESET, F_TOTAL_PRESETText, &Label2(1)),
      Bind(TotalRow("pulse_width"), PULSE_WIDTH_1, PULSE_WIDTH_1Combo),
      Bind(TotalRow("burnout"), OUTPUT_BURNOUT, OUTPUT_BURNOUTCombo),
      Bind(TotalRow("burnout_timer"), BURNOUT_TIMER, BURNOUT_TIMERText, &Label3(0)),
      Bind(TotalRow("thermal_rate"), H_TOTAL_ConstantCheck, H_TOTAL_ConstantText, &HSekisanlbl(0)),
      Bind(TotalRow("thermal_preset"), C_TOTAL_PRESETCheck, C_TOTAL_PRESETText, &HSekisanlbl(1)),
  };
}

void Form3::BuildLists() {
  ChannelPage::BuildLists();
  LoadUnits();
}

void Form3::SubGetUnitForm3() { column().FillList(UNIT_SYSTEMCombo); }

void Form3::Form_Activate() {
  std::string& unit = app().slots[SlotOf("TOTAL", "TOTAL_UNIT_Data")];
  if (app().state.UnitFlag == 0 && unit == std::to_string(kUnitWithoutMetric)) {
    unit.clear();
    app().state.TotalUnit.at(static_cast<std::size_t>(Channel())) = 0;
  }
  ChannelPage::Form_Activate();
  // With nothing selected the dependent parameters rest as the list says.
  MODECombo_Click();
}

void Form3::C03_SEKISAN_FrmInit() { SetChannelCaptions({{&UNIT_SYSTEM, 4660}, {&Label2(0), 80}}); }

std::vector<CheckBox*> Form3::Boxes() {
  std::vector<CheckBox*> boxes = {&Mode,           &UNIT_SYSTEM,   &ConstantCheck, &F_TOTAL_PRESET,
                                  &OUTPUT_BURNOUT, &BURNOUT_TIMER, &PULSE_WIDTH_1};
  if (HasHeat(app().state)) boxes.insert(boxes.end(), {&H_TOTAL_ConstantCheck, &C_TOTAL_PRESETCheck});
  return boxes;
}

void Form3::All_OnOff(int value) {
  if (!HasHeat(app().state)) {
    H_TOTAL_ConstantCheck.SetValue(0);
    C_TOTAL_PRESETCheck.SetValue(0);
  }
  ChannelPage::All_OnOff(value);
}

void Form3::ReadBlocks() {
  column().ReadBlock(kTotalBlock);
  AskConfig();
  if (HasHeatRegisters(app().state) && Channel() == 0) column().ReadBlock(kThermalTotalBlock);
}

void Form3::LearnUnit(const Field& field) {
  if (field.parameter->unit != UnitKind::kTotal || !column().FirstInThisRead(kUnitMark)) return;
  ReadUnitSystem(app());
  if (UnitsAreStale()) RefillUnits();
  GetTotalUnit(app(), Channel());
  ShowTotalUnits();
}

void Form3::FieldWasRead(const Field& field, int code) {
  if (field.list != &UNIT_SYSTEMCombo) return;
  column().FirstInThisRead(kUnitMark);
  ReadUnitSystem(app());
  RefillUnits();
  LearnFrom(app().state, {field.parameter, Channel()}, code);
  UNIT_SYSTEMCombo.SetListIndex(app().state.TotalUnit.at(static_cast<std::size_t>(Channel())));
  ShowTotalUnits();
}

void Form3::ShowTotalUnits() {
  column().ShowUnitsOf(UnitKind::kTotal);
  ClearTotalCache(app());
}

void Form3::ChannelSelect_Click(int index) {
  TakeChannel(index);
  AskUnderLock(app(), *this, [this] {
    GetTotalUnit(app(), Channel());
    if (!IsSingleChannel(app().state) || !HasTwoPipes()) GetHeatTotalUnit(app());
  });
  column().ShowUnitsOf(UnitKind::kTotal);
  column().ShowUnitsOf(UnitKind::kHeatTotal);
}

void Form3::MODECombo_Click() {
  struct Row {
    CheckBox* box;
    Control* entry;
    Label* label;
    bool heat;
  };
  const bool stopped = MODECombo.ListIndex() == kStopped;
  // The unit stands in its own list and has no label beside it.
  Depend(UNIT_SYSTEM, UNIT_SYSTEMCombo, stopped);
  for (const Row& row : {Row{&ConstantCheck, &ConstantCheckText, &Label2(10), false},
                         Row{&F_TOTAL_PRESET, &F_TOTAL_PRESETText, &Label2(1), false},
                         Row{&PULSE_WIDTH_1, &PULSE_WIDTH_1Combo, &Label2(0), false},
                         Row{&H_TOTAL_ConstantCheck, &H_TOTAL_ConstantText, &HSekisanlbl(0), true},
                         Row{&C_TOTAL_PRESETCheck, &C_TOTAL_PRESETText, &HSekisanlbl(1), true}}) {
    const bool on = stopped && (!row.heat || HasHeat(app().state));
    Depend(*row.box, *row.entry, on);
    row.label->SetEnabled(on);
  }
}

}  // namespace vlt
