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
                        .unit = &TotalRow("unit"),
                        .burnout = &TotalRow("burnout"),
                        .burnout_timer = &TotalRow("burnout_timer"),
                        .channel = &SharedState::TotalChannel,
                        .unit_track = &SharedState::TotalUnitTrack}) {
  BindEntries();
  MODECombo.on_click = [this] { MODECombo_Click(); };
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

void Form3::C03_SEKISAN_FrmInit() {
  SetChannelCaptions({{&UNIT_SYSTEMCombo.box, 4660}, {&PulseWidthUnit, 80}});
}

std::vector<CheckBox*> Form3::Boxes() {
  std::vector<CheckBox*> boxes = {&MODECombo.box,          &UNIT_SYSTEMCombo.box,    &ConstantCheckText.box,
                                  &F_TOTAL_PRESETText.box, &OUTPUT_BURNOUTCombo.box, &BURNOUT_TIMERText.box,
                                  &PULSE_WIDTH_1Combo.box};
  if (HasHeat(app().state)) boxes.insert(boxes.end(), {&H_TOTAL_ConstantText.box, &C_TOTAL_PRESETText.box});
  return boxes;
}

void Form3::All_OnOff(int value) {
  if (!HasHeat(app().state)) {
    H_TOTAL_ConstantText.box.SetValue(0);
    C_TOTAL_PRESETText.box.SetValue(0);
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
  Depend(UNIT_SYSTEMCombo, stopped);
  for (const Row& row :
       {Row{&ConstantCheckText.box, &ConstantCheckText, &*ConstantCheckText.unit, false},
        Row{&F_TOTAL_PRESETText.box, &F_TOTAL_PRESETText, &*F_TOTAL_PRESETText.unit, false},
        Row{&PULSE_WIDTH_1Combo.box, &PULSE_WIDTH_1Combo, &PulseWidthUnit, false},
        Row{&H_TOTAL_ConstantText.box, &H_TOTAL_ConstantText, &*H_TOTAL_ConstantText.unit, true},
        Row{&C_TOTAL_PRESETText.box, &C_TOTAL_PRESETText, &*C_TOTAL_PRESETText.unit, true}}) {
    const bool on = stopped && (!row.heat || HasHeat(app().state));
    Depend(*row.box, *row.entry, on);
    row.label->SetEnabled(on);
  }
}

}  // namespace vlt
