// SPDX-License-Identifier: GPL-3.0-or-later
// Total: the totalizer of a channel, and rate and preset of the heat totalizer.
#pragma once

#include "meter/total_table.h"
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

  ListEntry MODECombo{*this, fields_, TotalRow("mode"), "Mode", "MODECombo"};
  // The total rate, the quantity of one pulse.
  NumberEntry ConstantCheckText{
      *this, fields_, TotalRow("rate"), "ConstantCheck", "ConstantCheckText", LabelName{"Label2", 10}};
  NumberEntry F_TOTAL_PRESETText{
      *this, fields_, TotalRow("preset"), "F_TOTAL_PRESET", "F_TOTAL_PRESETText", LabelName{"Label2", 1}};
  ListEntry PULSE_WIDTH_1Combo{*this, fields_, TotalRow("pulse_width"), "PULSE_WIDTH_1",
                               "PULSE_WIDTH_1Combo"};
  NumberEntry H_TOTAL_ConstantText{*this,
                                   fields_,
                                   TotalRow("thermal_rate"),
                                   "H_TOTAL_ConstantCheck",
                                   "H_TOTAL_ConstantText",
                                   LabelName{"HSekisanlbl", 0}};
  NumberEntry C_TOTAL_PRESETText{*this,
                                 fields_,
                                 TotalRow("thermal_preset"),
                                 "C_TOTAL_PRESETCheck",
                                 "C_TOTAL_PRESETText",
                                 LabelName{"HSekisanlbl", 1}};

  Label PulseWidthUnit{*this, "Label2", 0};

 private:
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
