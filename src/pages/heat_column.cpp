// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/heat_column.h"

#include "meter/device_queries.h"
#include "meter/heat_table.h"
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
  column().SetFields(Table());
  ReadParameterHeat.on_click = [this] { ReadParameterHeat_Click(); };
  SetParameterHeat.on_click = [this] { SetParameterHeat_Click(); };
  SaveParameterHeat.on_click = [this] { SaveParameterHeat_Click(); };
  chkCheckHeat.on_click = [this] { chkCheckHeat_Click(); };
  RUNCombo.on_click = [this] { RUNCombo_Click(); };
  SUPPLY_TEMPERATURECombo.on_click = [this] { SUPPLY_TEMPERATURECombo_Click(); };
  RETURNER_TEMPERATURECombo.on_click = [this] { RETURNER_TEMPERATURECombo_Click(); };
}

std::vector<Field> HeatColumn::Table() {
  return {
      Bind(HeatRow("temperature_unit"), TEMPERATURECheck, TEMPERATURECombo),
      Bind(HeatRow("flow_unit"), HEAT_FLOW_RATECheck, HEAT_FLOW_RATECombo),
      Bind(HeatRow("total_unit"), HEAT_FLOW_RATE_SekisanCheck, HEAT_FLOW_RATE_SekisanCombo),
      Bind(HeatRow("mode"), MODECheck, MODECombo),
      Bind(HeatRow("operation"), RUNCheck, RUNCombo),
      Bind(HeatRow("change_temperature"), SWITCH_TEMPERATURECheck, SWITCH_TEMPERATUREText, &lblTemp(0)),
      Bind(HeatRow("hysteresis"), HYSTERESISCheck, HYSTERESISText, &lblTemp(1)),
      Bind(HeatRow("heating_coefficient"), HTEMPCONVCheck, HTEMPCONVText),
      Bind(HeatRow("cooling_coefficient"), CTEMPCONVCheck, CTEMPCONVText),
      Bind(HeatRow("supply_source"), SUPPLY_TEMPERATURECheck, SUPPLY_TEMPERATURECombo),
      Bind(HeatRow("supply_temperature"), SET_UP_SUPPLY_TEMPERATURECheck, SET_UP_SUPPLY_TEMPERATUREText,
           &lblTemp(2)),
      Bind(HeatRow("return_source"), RETURNER_TEMPERATURECheck, RETURNER_TEMPERATURECombo),
      Bind(HeatRow("return_temperature"), SET_UP_RETURNER_TEMPERATURECheck, SET_UP_RETURNER_TEMPERATUREText,
           &lblTemp(3)),
      Bind(HeatRow("input_signal"), TEMPERATURE_INPUT_SIGNALCheck, TEMPERATURE_INPUT_SIGNALCombo),
      Bind(HeatRow("supply_zero"), SUPPLY_TEMP_ZEROCheck, SUPPLY_TEMP_ZEROText, &lblTemp(4)),
      Bind(HeatRow("supply_span"), SUPPLY_TEMP_SPANCheck, SUPPLY_TEMP_SPANText, &lblPer(0)),
      Bind(HeatRow("return_zero"), RETURNER_TEMP_ZEROCheck, RETURNER_TEMP_ZEROText, &lblTemp(5)),
      Bind(HeatRow("return_span"), RETURNER_TEMP_SPANCheck, RETURNER_TEMP_SPANText, &lblPer(1)),
      Bind(HeatRow("supply_damping"), SUPPLY_TEMP_FILTERCheck, SUPPLY_TEMP_FILTERText, &lblSec(0)),
      Bind(HeatRow("return_damping"), RETURNER_TEMP_FILTERCheck, RETURNER_TEMP_FILTERText, &lblSec(1)),
  };
}

bool HeatColumn::Check_On_Heat() { return TEMPERATURECheck.Ticked() || column().IsAnyTicked(); }

std::vector<CheckBox*> HeatColumn::Boxes() {
  return {&TEMPERATURECheck,
          &HEAT_FLOW_RATECheck,
          &HEAT_FLOW_RATE_SekisanCheck,
          &MODECheck,
          &RUNCheck,
          &SWITCH_TEMPERATURECheck,
          &HYSTERESISCheck,
          &HTEMPCONVCheck,
          &CTEMPCONVCheck,
          &SUPPLY_TEMPERATURECheck,
          &SET_UP_SUPPLY_TEMPERATURECheck,
          &RETURNER_TEMPERATURECheck,
          &TEMPERATURE_INPUT_SIGNALCheck,
          &SUPPLY_TEMP_ZEROCheck,
          &SUPPLY_TEMP_SPANCheck,
          &SUPPLY_TEMP_FILTERCheck,
          &RETURNER_TEMP_ZEROCheck,
          &RETURNER_TEMP_SPANCheck,
          &RETURNER_TEMP_FILTERCheck,
          &SET_UP_RETURNER_TEMPERATURECheck};
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
  Depend(CTEMPCONVCheck, CTEMPCONVText, both || run == kCooling);
  Depend(HTEMPCONVCheck, HTEMPCONVText, both || run == kHeating);
  Depend(SWITCH_TEMPERATURECheck, SWITCH_TEMPERATUREText, both);
  Depend(HYSTERESISCheck, HYSTERESISText, both);
}

void HeatColumn::SUPPLY_TEMPERATURECombo_Click() {
  const int source = SUPPLY_TEMPERATURECombo.ListIndex();
  Depend(SUPPLY_TEMP_ZEROCheck, SUPPLY_TEMP_ZEROText, source != kFixed);
  Depend(SUPPLY_TEMP_SPANCheck, SUPPLY_TEMP_SPANText, source != kFixed);
  Depend(SUPPLY_TEMP_FILTERCheck, SUPPLY_TEMP_FILTERText, source != kFixed);
  Depend(SET_UP_SUPPLY_TEMPERATURECheck, SET_UP_SUPPLY_TEMPERATUREText, source != kMeasured);
}

void HeatColumn::RETURNER_TEMPERATURECombo_Click() {
  const int source = RETURNER_TEMPERATURECombo.ListIndex();
  Depend(RETURNER_TEMP_ZEROCheck, RETURNER_TEMP_ZEROText, source != kFixed);
  Depend(RETURNER_TEMP_SPANCheck, RETURNER_TEMP_SPANText, source != kFixed);
  Depend(RETURNER_TEMP_FILTERCheck, RETURNER_TEMP_FILTERText, source != kFixed);
  Depend(SET_UP_RETURNER_TEMPERATURECheck, SET_UP_RETURNER_TEMPERATUREText, source != kMeasured);
}

}  // namespace vlt
