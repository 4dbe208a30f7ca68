// SPDX-License-Identifier: GPL-3.0-or-later
// Total: the totalizer of a channel, and rate and preset of the heat totalizer.
#pragma once

#include "pages/channel_page.h"

namespace vlt {

class Form3 : public ChannelPage {
 public:
  explicit Form3(App& app);

  // Captions and lengths of the page.
  void C03_SEKISAN_FrmInit();
  void FrmInit() override { C03_SEKISAN_FrmInit(); }
  void Taihi_Form3() { ChannelPage::Taihi(); }
  void Taihi() override { Taihi_Form3(); }
  void Form_Activate() override;
  // Ticks no heat parameter that the meter does not have.
  void All_OnOff(int value) override;
  // Fills the unit list for the unit system in force.
  void SubGetUnitForm3();

  CheckBox Mode{*this, "Mode"};
  ComboBox MODECombo{*this, "MODECombo"};
  // The total rate, the quantity of one pulse.
  CheckBox ConstantCheck{*this, "ConstantCheck"};
  TextBox ConstantCheckText{*this, "ConstantCheckText"};
  CheckBox F_TOTAL_PRESET{*this, "F_TOTAL_PRESET"};
  TextBox F_TOTAL_PRESETText{*this, "F_TOTAL_PRESETText"};
  CheckBox PULSE_WIDTH_1{*this, "PULSE_WIDTH_1"};
  ComboBox PULSE_WIDTH_1Combo{*this, "PULSE_WIDTH_1Combo"};
  CheckBox H_TOTAL_ConstantCheck{*this, "H_TOTAL_ConstantCheck"};
  TextBox H_TOTAL_ConstantText{*this, "H_TOTAL_ConstantText"};
  CheckBox C_TOTAL_PRESETCheck{*this, "C_TOTAL_PRESETCheck"};
  TextBox C_TOTAL_PRESETText{*this, "C_TOTAL_PRESETText"};

  // Units: 10 total rate, 1 total preset; milliseconds: 0 pulse width.
  ControlArray<Label> Label2{*this, "Label2", {0, 1, 10}};
  ControlArray<Label> Label3{*this, "Label3", Indexes(1)};
  ControlArray<Label> HSekisanlbl{*this, "HSekisanlbl", Indexes(2)};

 private:
  std::vector<Field> Table();
  std::vector<CheckBox*> Boxes() override;
  void ReadBlocks() override;
  void BuildLists() override;
  void FillUnits() override { SubGetUnitForm3(); }
  // A totalizer that runs locks the boxes of its set-up; a read shows those that are ticked all the same.
  bool FieldTakesPart(const Field& field) override { return field.box->Ticked(); }
  void LearnUnit(const Field& field) override;
  void FieldWasRead(const Field& field, int code) override;
  void ChannelSelect_Click(int index) override;
  void MODECombo_Click();

  // The unit of the channel came from the meter.
  void ShowTotalUnits();
};

}  // namespace vlt
