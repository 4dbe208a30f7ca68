// SPDX-License-Identifier: GPL-3.0-or-later
// The energy tab of the process page: what the heat calculation of the meter works with. A column of its own,
// which is read, set and saved apart from the installation.
#pragma once

#include "pages/parameter_column.h"

namespace vlt {

class HeatColumn : public ColumnRules {
 public:
  // The controls are those of `page`.
  HeatColumn(App& app, Form& page);

  // What the page makes the column from; then SetUp binds it, once.
  ColumnParts Parts();
  void SetUp();

  // True when the temperature unit or any enabled parameter is ticked.
  bool Check_On_Heat();
  // Ticks all (1) or clears them.
  void All_OnOff_Netsuryou(int value) { column().TickAll(value); }

  void ReadParameterHeat_Click() { column().ReadParameter_Click(); }
  void SetParameterHeat_Click() { column().SetParameter_Click(); }
  void SaveParameterHeat_Click() { column().SaveParameter_Click(); }
  void chkCheckHeat_Click() { All_OnOff_Netsuryou(chkCheckHeat.Value()); }

 private:
  App& app_;
  Form& page_;

 public:
  CheckBox chkCheckHeat{page_, "chkCheckHeat"};
  PushButton ReadParameterHeat{page_, "ReadParameterHeat"};
  PushButton SetParameterHeat{page_, "SetParameterHeat"};
  PushButton SaveParameterHeat{page_, "SaveParameterHeat"};

  // Units.
  CheckBox TEMPERATURECheck{page_, "TEMPERATURECheck"};
  ComboBox TEMPERATURECombo{page_, "TEMPERATURECombo"};
  CheckBox HEAT_FLOW_RATECheck{page_, "HEAT_FLOW_RATECheck"};
  ComboBox HEAT_FLOW_RATECombo{page_, "HEAT_FLOW_RATECombo"};
  CheckBox HEAT_FLOW_RATE_SekisanCheck{page_, "HEAT_FLOW_RATE_SekisanCheck"};
  ComboBox HEAT_FLOW_RATE_SekisanCombo{page_, "HEAT_FLOW_RATE_SekisanCombo"};

  // What the plant does. Coefficients: C while it cools, H while it heats.
  CheckBox MODECheck{page_, "MODECheck"};
  ComboBox MODECombo{page_, "MODECombo"};
  CheckBox RUNCheck{page_, "RUNCheck"};
  ComboBox RUNCombo{page_, "RUNCombo"};
  CheckBox CTEMPCONVCheck{page_, "CTEMPCONVCheck"};
  TextBox CTEMPCONVText{page_, "CTEMPCONVText"};
  CheckBox HTEMPCONVCheck{page_, "HTEMPCONVCheck"};
  TextBox HTEMPCONVText{page_, "HTEMPCONVText"};
  CheckBox SWITCH_TEMPERATURECheck{page_, "SWITCH_TEMPERATURECheck"};
  TextBox SWITCH_TEMPERATUREText{page_, "SWITCH_TEMPERATUREText"};
  CheckBox HYSTERESISCheck{page_, "HYSTERESISCheck"};
  TextBox HYSTERESISText{page_, "HYSTERESISText"};

  // Supply and return: measured and calibrated, or a fixed setting.
  CheckBox TEMPERATURE_INPUT_SIGNALCheck{page_, "TEMPERATURE_INPUT_SIGNALCheck"};
  ComboBox TEMPERATURE_INPUT_SIGNALCombo{page_, "TEMPERATURE_INPUT_SIGNALCombo"};
  CheckBox SUPPLY_TEMPERATURECheck{page_, "SUPPLY_TEMPERATURECheck"};
  ComboBox SUPPLY_TEMPERATURECombo{page_, "SUPPLY_TEMPERATURECombo"};
  CheckBox SET_UP_SUPPLY_TEMPERATURECheck{page_, "SET_UP_SUPPLY_TEMPERATURECheck"};
  TextBox SET_UP_SUPPLY_TEMPERATUREText{page_, "SET_UP_SUPPLY_TEMPERATUREText"};
  CheckBox SUPPLY_TEMP_ZEROCheck{page_, "SUPPLY_TEMP_ZEROCheck"};
  TextBox SUPPLY_TEMP_ZEROText{page_, "SUPPLY_TEMP_ZEROText"};
  CheckBox SUPPLY_TEMP_SPANCheck{page_, "SUPPLY_TEMP_SPANCheck"};
  TextBox SUPPLY_TEMP_SPANText{page_, "SUPPLY_TEMP_SPANText"};
  CheckBox SUPPLY_TEMP_FILTERCheck{page_, "SUPPLY_TEMP_FILTERCheck"};
  TextBox SUPPLY_TEMP_FILTERText{page_, "SUPPLY_TEMP_FILTERText"};
  CheckBox RETURNER_TEMPERATURECheck{page_, "RETURNER_TEMPERATURECheck"};
  ComboBox RETURNER_TEMPERATURECombo{page_, "RETURNER_TEMPERATURECombo"};
  CheckBox SET_UP_RETURNER_TEMPERATURECheck{page_, "SET_UP_RETURNER_TEMPERATURECheck"};
  TextBox SET_UP_RETURNER_TEMPERATUREText{page_, "SET_UP_RETURNER_TEMPERATUREText"};
  CheckBox RETURNER_TEMP_ZEROCheck{page_, "RETURNER_TEMP_ZEROCheck"};
  TextBox RETURNER_TEMP_ZEROText{page_, "RETURNER_TEMP_ZEROText"};
  CheckBox RETURNER_TEMP_SPANCheck{page_, "RETURNER_TEMP_SPANCheck"};
  TextBox RETURNER_TEMP_SPANText{page_, "RETURNER_TEMP_SPANText"};
  CheckBox RETURNER_TEMP_FILTERCheck{page_, "RETURNER_TEMP_FILTERCheck"};
  TextBox RETURNER_TEMP_FILTERText{page_, "RETURNER_TEMP_FILTERText"};

  // Of change, hysteresis, set supply, set return, supply zero, return zero.
  ControlArray<Label> lblTemp{page_, "lblTemp", Indexes(6)};
  // Of supply and return.
  ControlArray<Label> lblPer{page_, "lblPer", Indexes(2)};
  ControlArray<Label> lblSec{page_, "lblSec", Indexes(2)};

 private:
  std::vector<Field> Table();
  bool AnythingSelected() override { return Check_On_Heat(); }
  std::vector<CheckBox*> Boxes() override;
  void All_OnOff(int value) override { All_OnOff_Netsuryou(value); }
  void ReadBlocks() override;
  // The block brings its units itself.
  void LearnUnit(const Field&) override {}
  void FieldWasRead(const Field& field, int code) override;
  std::string StatusName(const Field& field) override;

  void RUNCombo_Click();
  void SUPPLY_TEMPERATURECombo_Click();
  void RETURNER_TEMPERATURECombo_Click();
};

}  // namespace vlt
