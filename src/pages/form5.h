// SPDX-License-Identifier: GPL-3.0-or-later
// Display: what the meter's two display rows show, with which decimal point, and the backlight.
#pragma once

#include "meter/quiet_query.h"
#include "pages/parameter_page.h"

namespace vlt {

class Form5 : public ParameterPage {
 public:
  explicit Form5(App& app);

  void C04_HYOJI_FrmInit();
  void FrmInit() override { C04_HYOJI_FrmInit(); }
  void Taihi_Form5() { ParameterPage::Taihi(); }
  void Taihi() override { Taihi_Form5(); }
  void Form_Load() override;
  void Form_Activate() override;
  void Text_Box_Enable() override;

  FrameBox FrameDisplay1{*this, "FrameDisplay1"};
  Label lblChannel1{*this, "lblChannel1"};
  ComboBox CHCombo1{*this, "CHCombo1"};
  CheckBox Selection1{*this, "Selection1"};
  ComboBox Selection1Combo{*this, "Selection1Combo"};
  CheckBox Flow_Unit1{*this, "Flow_Unit1"};
  ComboBox Flow_Unit1Combo{*this, "Flow_Unit1Combo"};

  FrameBox FrameDisplay2{*this, "FrameDisplay2"};
  Label lblChannel2{*this, "lblChannel2"};
  ComboBox CHCombo2{*this, "CHCombo2"};
  CheckBox Selection2{*this, "Selection2"};
  ComboBox Selection2Combo{*this, "Selection2Combo"};
  CheckBox Flow_Unit2{*this, "Flow_Unit2"};
  ComboBox Flow_Unit2Combo{*this, "Flow_Unit2Combo"};

  CheckBox LCD_Check{*this, "LCD_Check"};
  // 0 always on, 1 off after the lights-out time.
  ControlArray<OptionButton> optLCD{*this, "optLCD", Indexes(2)};
  Label lblLCD_Time{*this, "lblLCD_Time"};
  ComboBox cmbLCD_Time{*this, "cmbLCD_Time"};
  Label lblTimeUnit{*this, "lblTimeUnit"};

 private:
  // One row of the meter's display.
  struct Row {
    ComboBox& channel;
    CheckBox& selection_box;
    ComboBox& selection;
    CheckBox& decimal_box;
    ComboBox& decimal;
    int name;            // text id
    int read_code = -1;  // what the running read has brought, or -1
  };

  std::vector<Field> Table();
  std::vector<Field> RowFields(Row& row, const Parameter& channel, const Parameter& item,
                               const Parameter& decimal);
  void BuildLists() override;
  MeterFacts FactsOfList(const Field& field) override;
  std::vector<int> CodesOfList(const Field& field, const MeterFacts& facts) override;
  void ReadBlocks() override;
  void PlanWrites(WritePlan& plan) override;
  void PlanBacklight(WritePlan& plan);
  void BoxClicked(CheckBox& box) override;
  void FieldWasRead(const Field& field, int code) override;
  std::string FailureName(const Field& field) override;

  // Fill one list each: channels, the items a row can show on its channel, decimal points.
  void SubGetCHForm5(ComboBox& list);
  void SubGetSelectForm5(Row& row);
  void SubGetUnitForm5(ComboBox& list);
  // Rebuilds a row's selection list for its channel, keeping the chosen item where the list still has it.
  void RebuildSelection(Row& row);
  void SelectCode(Row& row, int code);

  void CHCombo1_Click() { RebuildSelection(rows_[0]); }
  void CHCombo2_Click() { RebuildSelection(rows_[1]); }
  void Selection1Combo_Click() { FollowSelection(rows_[0]); }
  void Selection2Combo_Click() { FollowSelection(rows_[1]); }
  void FollowSelection(Row& row);
  void EnableChannels();
  void LCD_Check_Click();
  void optLCD_Click() { EnableTime(); }
  void EnableTime();

  std::array<Row, 2> rows_;
  ChannelConfig config_ = ChannelConfig::kUnknown;
};

}  // namespace vlt
