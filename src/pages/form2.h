// SPDX-License-Identifier: GPL-3.0-or-later
// Range: what the analog output and the measured value of a channel mean.
#pragma once

#include "meter/range_table.h"
#include "pages/channel_page.h"

namespace vlt {

class Form2 : public ChannelPage {
 public:
  explicit Form2(App& app);

  // Captions and lengths of the page.
  void C02_RANGE_FrmInit();
  void FrmInit() override { C02_RANGE_FrmInit(); }
  // The parameter file keeps the first thermal full scale at both keys.
  void Taihi_Form2();
  void Taihi() override { Taihi_Form2(); }
  void Form_Load() override;
  void Form_Activate() override;

  NumberEntry DAMPINGText{*this,     fields_,       RangeRow("damping"),
                          "DAMPING", "DAMPINGText", LabelName{"Label3", 2}};
  ListEntry cmbKind{*this, fields_, RangeRow("kind"), "chkKind", "cmbKind"};
  ListEntry TypeCheckCombo{*this, fields_, RangeRow("type"), "TypeCheck", "TypeCheckCombo"};
  NumberEntry FULL_SCALE1Text{*this,         fields_,           RangeRow("full_scale_1"),
                              "FULL_SCALE1", "FULL_SCALE1Text", LabelName{"Label2", 7}};
  NumberEntry FULL_SCALE2Text{*this,         fields_,           RangeRow("full_scale_2"),
                              "FULL_SCALE2", "FULL_SCALE2Text", LabelName{"Label2", 6}};
  NumberEntry HYSTERISISText{*this,        fields_,          RangeRow("hysteresis"),
                             "HYSTERISIS", "HYSTERISISText", LabelName{"Label2", 0}};
  NumberEntry OUTPUT_LIMIT_LowText{*this,
                                   fields_,
                                   RangeRow("output_limit_low"),
                                   "OUTPUT_LIMIT_Low",
                                   "OUTPUT_LIMIT_LowText",
                                   LabelName{"Label2", 1}};
  NumberEntry OUTPUT_LIMIT_HighText{*this,
                                    fields_,
                                    RangeRow("output_limit_high"),
                                    "OUTPUT_LIMIT_High",
                                    "OUTPUT_LIMIT_HighText",
                                    LabelName{"Label2", 2}};
  NumberEntry RATE_LIMIT_TIMERText{*this,
                                   fields_,
                                   RangeRow("rate_limit_timer"),
                                   "RATE_LIMIT_TIMER",
                                   "RATE_LIMIT_TIMERText",
                                   LabelName{"Label3", 1}};
  NumberEntry RATE_LIMITText{*this,        fields_,          RangeRow("rate_limit"),
                             "RATE_LIMIT", "RATE_LIMITText", LabelName{"Label2", 8}};
  NumberEntry LOW_FLOW_OUTPUT_CUTText{*this,
                                      fields_,
                                      RangeRow("cut_off"),
                                      "LOW_FLOW_OUTPUT_CUT",
                                      "LOW_FLOW_OUTPUT_CUTText",
                                      LabelName{"Label2", 9}};
  NumberEntry ZEROText{*this, fields_, RangeRow("zero"), "ZERO", "ZEROText", LabelName{"Label2", 12}};
  NumberEntry SPANText{*this, fields_, RangeRow("span"), "SPAN", "SPANText", LabelName{"Label2", 3}};
  NumberEntry CALORIE_FULL_SCALE1Text{*this,
                                      fields_,
                                      RangeRow("thermal_full_scale_1"),
                                      "CALORIE_FULL_SCALE1",
                                      "CALORIE_FULL_SCALE1Text",
                                      LabelName{"HRangelbl", 0}};
  NumberEntry CALORIE_FULL_SCALE2Text{*this,
                                      fields_,
                                      RangeRow("thermal_full_scale_2"),
                                      "CALORIE_FULL_SCALE2",
                                      "CALORIE_FULL_SCALE2Text",
                                      LabelName{"HRangelbl", 1}};

 private:
  void ReadBlocks() override;
  void BuildLists() override;
  void FillUnits() override;
  MeterFacts FactsOfList(const Field& field) override;
  void LearnUnit(const Field& field) override;
  void FieldWasRead(const Field& field, int code) override;
  void ChannelSelect_Click(int index) override;
  void TypeCheckCombo_Click();

  void UpdateKinds();
  // The thermal full scales exist for CH1 of a full model with one pipe.
  void EnableThermal();
  // Kind or unit of the channel came from the meter.
  void ShowFlowUnits();

  // CH3 of two pipes is computed and knows the flow alone: its list has one entry.
  bool kind_is_fixed_ = false;
  int remembered_kind_ = -1;  // choice in the list of two while the list of one is shown
};

}  // namespace vlt
