// SPDX-License-Identifier: GPL-3.0-or-later
// Range: what the analog output and the measured value of a channel mean.
#pragma once

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

  CheckBox DAMPING{*this, "DAMPING"};
  TextBox DAMPINGText{*this, "DAMPINGText"};
  CheckBox chkKind{*this, "chkKind"};
  ComboBox cmbKind{*this, "cmbKind"};
  CheckBox TypeCheck{*this, "TypeCheck"};
  ComboBox TypeCheckCombo{*this, "TypeCheckCombo"};
  CheckBox FULL_SCALE1{*this, "FULL_SCALE1"};
  TextBox FULL_SCALE1Text{*this, "FULL_SCALE1Text"};
  CheckBox FULL_SCALE2{*this, "FULL_SCALE2"};
  TextBox FULL_SCALE2Text{*this, "FULL_SCALE2Text"};
  CheckBox HYSTERISIS{*this, "HYSTERISIS"};
  TextBox HYSTERISISText{*this, "HYSTERISISText"};
  CheckBox OUTPUT_LIMIT_Low{*this, "OUTPUT_LIMIT_Low"};
  TextBox OUTPUT_LIMIT_LowText{*this, "OUTPUT_LIMIT_LowText"};
  CheckBox OUTPUT_LIMIT_High{*this, "OUTPUT_LIMIT_High"};
  TextBox OUTPUT_LIMIT_HighText{*this, "OUTPUT_LIMIT_HighText"};
  CheckBox RATE_LIMIT_TIMER{*this, "RATE_LIMIT_TIMER"};
  TextBox RATE_LIMIT_TIMERText{*this, "RATE_LIMIT_TIMERText"};
  CheckBox RATE_LIMIT{*this, "RATE_LIMIT"};
  TextBox RATE_LIMITText{*this, "RATE_LIMITText"};
  CheckBox LOW_FLOW_OUTPUT_CUT{*this, "LOW_FLOW_OUTPUT_CUT"};
  TextBox LOW_FLOW_OUTPUT_CUTText{*this, "LOW_FLOW_OUTPUT_CUTText"};
  CheckBox ZERO{*this, "ZERO"};
  TextBox ZEROText{*this, "ZEROText"};
  CheckBox SPAN{*this, "SPAN"};
  TextBox SPANText{*this, "SPANText"};
  CheckBox CALORIE_FULL_SCALE1{*this, "CALORIE_FULL_SCALE1"};
  TextBox CALORIE_FULL_SCALE1Text{*this, "CALORIE_FULL_SCALE1Text"};
  CheckBox CALORIE_FULL_SCALE2{*this, "CALORIE_FULL_SCALE2"};
  TextBox CALORIE_FULL_SCALE2Text{*this, "CALORIE_FULL_SCALE2Text"};

  // Units of the measured value: 7 and 6 full scales, 8 rate limit, 9 cut off, 12 zero. Percent: 0
  // hysteresis, 1 and 2 output limits, 3 span.
  ControlArray<Label> Label2{*this, "Label2", {0, 1, 2, 3, 6, 7, 8, 9, 12}};
  // Seconds: burnout, rate limit, damping.
  ControlArray<Label> Label3{*this, "Label3", Indexes(3)};
  ControlArray<Label> HRangelbl{*this, "HRangelbl", Indexes(2)};

 private:
  std::vector<Field> Table();
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
