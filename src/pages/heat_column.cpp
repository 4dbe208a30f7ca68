// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/heat_column.h"

#include <utility>

#include "meter/device_queries.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

// Entries of the operation list.
constexpr int kCooling = 0;
constexpr int kHeating = 1;
constexpr int kBoth = 2;
// Entries of the lists that tell where a temperature comes from.
constexpr int kMeasured = 0;
constexpr int kFixed = 1;
// A list that shows nothing: nobody has told yet, so nothing is ruled out.
constexpr int kUnknown = -1;

}  // namespace

HeatColumn::HeatColumn(App& app, Form& page) : app_(app), page_(page) {}

ColumnParts HeatColumn::Parts() {
  return {.all = chkCheckHeat,
          .read = ReadParameterHeat,
          .set = SetParameterHeat,
          .save = SaveParameterHeat,
          .set_started = text::kSettingOfProcessSettingWasStarted,
          .set_completed = text::kSettingOfProcessSettingWasCompleted,
          .read_started = text::kReadingOfProcessSettingWasStarted,
          .read_completed = text::kReadingOfProcessSettingWasCompleted};
}

void HeatColumn::SetUp() {
  column().SetFields(InRowOrder(std::exchange(fields_, {})));
  ReadParameterHeat.on_click = [this] { ReadParameterHeat_Click(); };
  SetParameterHeat.on_click = [this] { SetParameterHeat_Click(); };
  SaveParameterHeat.on_click = [this] { SaveParameterHeat_Click(); };
  chkCheckHeat.on_click = [this] { chkCheckHeat_Click(); };
  RUNCombo.on_click = [this] { RUNCombo_Click(); };
  SUPPLY_TEMPERATURECombo.on_click = [this] { SUPPLY_TEMPERATURECombo_Click(); };
  RETURNER_TEMPERATURECombo.on_click = [this] { RETURNER_TEMPERATURECombo_Click(); };
}

bool HeatColumn::Check_On_Heat() { return TEMPERATURECombo.box.Ticked() || column().IsAnyTicked(); }

std::vector<CheckBox*> HeatColumn::Boxes() {
  return {&TEMPERATURECombo.box,
          &HEAT_FLOW_RATECombo.box,
          &HEAT_FLOW_RATE_SekisanCombo.box,
          &MODECombo.box,
          &RUNCombo.box,
          &SWITCH_TEMPERATUREText.box,
          &HYSTERESISText.box,
          &HTEMPCONVText.box,
          &CTEMPCONVText.box,
          &SUPPLY_TEMPERATURECombo.box,
          &SET_UP_SUPPLY_TEMPERATUREText.box,
          &RETURNER_TEMPERATURECombo.box,
          &TEMPERATURE_INPUT_SIGNALCombo.box,
          &SUPPLY_TEMP_ZEROText.box,
          &SUPPLY_TEMP_SPANText.box,
          &SUPPLY_TEMP_FILTERText.box,
          &RETURNER_TEMP_ZEROText.box,
          &RETURNER_TEMP_SPANText.box,
          &RETURNER_TEMP_FILTERText.box,
          &SET_UP_RETURNER_TEMPERATUREText.box};
}

void HeatColumn::ReadBlocks() { column().ReadBlock(kHeatBlock); }

// The units hold for the captions of this page at once, and for every other page that shows them.
void HeatColumn::FieldWasRead(const Field& field, int) {
  if (field.list == &TEMPERATURECombo) {
    ClearTempCache(app_);
    column().ShowUnitsOf(UnitKind::kTemperature);
  } else if (field.list == &HEAT_FLOW_RATECombo) {
    ClearHeatFlowCache(app_);
  } else if (field.list == &HEAT_FLOW_RATE_SekisanCombo) {
    ClearHeatTotalCache(app_);
  }
}

// The same captions stand twice on the tab; the status line says which one is meant.
std::string HeatColumn::StatusName(const Field& field) {
  struct Side {
    const TextBox* entry;
    int name;  // text id
  };
  const Side sides[] = {
      {&CTEMPCONVText, text::kCooling},
      {&HTEMPCONVText, text::kHeating},
      {&SET_UP_SUPPLY_TEMPERATUREText, text::kSupplyTemp},
      {&SUPPLY_TEMP_ZEROText, text::kSupplyTemp},
      {&SUPPLY_TEMP_SPANText, text::kSupplyTemp},
      {&SUPPLY_TEMP_FILTERText, text::kSupplyTemp},
      {&SET_UP_RETURNER_TEMPERATUREText, text::kReturnTemp},
      {&RETURNER_TEMP_ZEROText, text::kReturnTemp},
      {&RETURNER_TEMP_SPANText, text::kReturnTemp},
      {&RETURNER_TEMP_FILTERText, text::kReturnTemp},
  };
  for (const Side& side : sides) {
    if (side.entry == field.text) return app_.Text(side.name) + " " + FailureName(field);
  }
  return FailureName(field);
}

void HeatColumn::RUNCombo_Click() {
  const int run = RUNCombo.ListIndex();
  const bool both = run == kBoth || run == kUnknown;
  Depend(CTEMPCONVText, both || run == kCooling);
  Depend(HTEMPCONVText, both || run == kHeating);
  Depend(SWITCH_TEMPERATUREText, both);
  Depend(HYSTERESISText, both);
}

void HeatColumn::SUPPLY_TEMPERATURECombo_Click() {
  const int source = SUPPLY_TEMPERATURECombo.ListIndex();
  Depend(SUPPLY_TEMP_ZEROText, source != kFixed);
  Depend(SUPPLY_TEMP_SPANText, source != kFixed);
  Depend(SUPPLY_TEMP_FILTERText, source != kFixed);
  Depend(SET_UP_SUPPLY_TEMPERATUREText, source != kMeasured);
}

void HeatColumn::RETURNER_TEMPERATURECombo_Click() {
  const int source = RETURNER_TEMPERATURECombo.ListIndex();
  Depend(RETURNER_TEMP_ZEROText, source != kFixed);
  Depend(RETURNER_TEMP_SPANText, source != kFixed);
  Depend(RETURNER_TEMP_FILTERText, source != kFixed);
  Depend(SET_UP_RETURNER_TEMPERATUREText, source != kMeasured);
}

}  // namespace vlt
