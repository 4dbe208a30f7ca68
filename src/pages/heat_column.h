// SPDX-License-Identifier: GPL-3.0-or-later
// The energy tab of the process page: what the heat calculation of the meter works with. A column of its own,
// which is read, set and saved apart from the installation.
#pragma once

#include "meter/heat_table.h"
#include "pages/entry.h"
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
  Fields fields_;  // that entries put down, until SetUp

 public:
  CheckBox chkCheckHeat{page_, "chkCheckHeat"};
  PushButton ReadParameterHeat{page_, "ReadParameterHeat"};
  PushButton SetParameterHeat{page_, "SetParameterHeat"};
  PushButton SaveParameterHeat{page_, "SaveParameterHeat"};

  // Units.
  ListEntry TEMPERATURECombo{page_, fields_, HeatRow("temperature_unit"), "TEMPERATURECheck",
                             "TEMPERATURECombo"};
  ListEntry HEAT_FLOW_RATECombo{page_, fields_, HeatRow("flow_unit"), "HEAT_FLOW_RATECheck",
                                "HEAT_FLOW_RATECombo"};
  ListEntry HEAT_FLOW_RATE_SekisanCombo{page_, fields_, HeatRow("total_unit"), "HEAT_FLOW_RATE_SekisanCheck",
                                        "HEAT_FLOW_RATE_SekisanCombo"};

  // What the plant does. Coefficients: C while it cools, H while it heats.
  ListEntry MODECombo{page_, fields_, HeatRow("mode"), "MODECheck", "MODECombo"};
  ListEntry RUNCombo{page_, fields_, HeatRow("operation"), "RUNCheck", "RUNCombo"};
  NumberEntry CTEMPCONVText{page_, fields_, HeatRow("cooling_coefficient"), "CTEMPCONVCheck",
                            "CTEMPCONVText"};
  NumberEntry HTEMPCONVText{page_, fields_, HeatRow("heating_coefficient"), "HTEMPCONVCheck",
                            "HTEMPCONVText"};
  NumberEntry SWITCH_TEMPERATUREText{page_,
                                     fields_,
                                     HeatRow("change_temperature"),
                                     "SWITCH_TEMPERATURECheck",
                                     "SWITCH_TEMPERATUREText",
                                     LabelName{"lblTemp", 0}};
  NumberEntry HYSTERESISText{
      page_, fields_, HeatRow("hysteresis"), "HYSTERESISCheck", "HYSTERESISText", LabelName{"lblTemp", 1}};

  // Supply and return: measured and calibrated, or a fixed setting.
  ListEntry TEMPERATURE_INPUT_SIGNALCombo{page_, fields_, HeatRow("input_signal"),
                                          "TEMPERATURE_INPUT_SIGNALCheck", "TEMPERATURE_INPUT_SIGNALCombo"};
  ListEntry SUPPLY_TEMPERATURECombo{page_, fields_, HeatRow("supply_source"), "SUPPLY_TEMPERATURECheck",
                                    "SUPPLY_TEMPERATURECombo"};
  NumberEntry SET_UP_SUPPLY_TEMPERATUREText{page_,
                                            fields_,
                                            HeatRow("supply_temperature"),
                                            "SET_UP_SUPPLY_TEMPERATURECheck",
                                            "SET_UP_SUPPLY_TEMPERATUREText",
                                            LabelName{"lblTemp", 2}};
  NumberEntry SUPPLY_TEMP_ZEROText{page_,
                                   fields_,
                                   HeatRow("supply_zero"),
                                   "SUPPLY_TEMP_ZEROCheck",
                                   "SUPPLY_TEMP_ZEROText",
                                   LabelName{"lblTemp", 4}};
  NumberEntry SUPPLY_TEMP_SPANText{page_,
                                   fields_,
                                   HeatRow("supply_span"),
                                   "SUPPLY_TEMP_SPANCheck",
                                   "SUPPLY_TEMP_SPANText",
                                   LabelName{"lblPer", 0}};
  NumberEntry SUPPLY_TEMP_FILTERText{page_,
                                     fields_,
                                     HeatRow("supply_damping"),
                                     "SUPPLY_TEMP_FILTERCheck",
                                     "SUPPLY_TEMP_FILTERText",
                                     LabelName{"lblSec", 0}};
  ListEntry RETURNER_TEMPERATURECombo{page_, fields_, HeatRow("return_source"), "RETURNER_TEMPERATURECheck",
                                      "RETURNER_TEMPERATURECombo"};
  NumberEntry SET_UP_RETURNER_TEMPERATUREText{page_,
                                              fields_,
                                              HeatRow("return_temperature"),
                                              "SET_UP_RETURNER_TEMPERATURECheck",
                                              "SET_UP_RETURNER_TEMPERATUREText",
                                              LabelName{"lblTemp", 3}};
  NumberEntry RETURNER_TEMP_ZEROText{page_,
                                     fields_,
                                     HeatRow("return_zero"),
                                     "RETURNER_TEMP_ZEROCheck",
                                     "RETURNER_TEMP_ZEROText",
                                     LabelName{"lblTemp", 5}};
  NumberEntry RETURNER_TEMP_SPANText{page_,
                                     fields_,
                                     HeatRow("return_span"),
                                     "RETURNER_TEMP_SPANCheck",
                                     "RETURNER_TEMP_SPANText",
                                     LabelName{"lblPer", 1}};
  NumberEntry RETURNER_TEMP_FILTERText{page_,
                                       fields_,
                                       HeatRow("return_damping"),
                                       "RETURNER_TEMP_FILTERCheck",
                                       "RETURNER_TEMP_FILTERText",
                                       LabelName{"lblSec", 1}};

 private:
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
