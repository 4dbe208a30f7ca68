// SPDX-License-Identifier: GPL-3.0-or-later
// Status: what drives each digital output, on which channel, with which switch points and contact action.
#pragma once

#include "meter/quiet_query.h"
#include "pages/chooser.h"
#include "pages/parameter_page.h"

namespace vlt {

class Form4 : public ParameterPage {
 public:
  explicit Form4(App& app);

  void C05_STATUS_FrmInit();
  void FrmInit() override { C05_STATUS_FrmInit(); }
  void Taihi_Form4() { ParameterPage::Taihi(); }
  void Taihi() override { Taihi_Form4(); }
  void SetteiHannei() override;
  void Form_Load() override;
  void Form_Activate() override;
  bool IsChoice(const Control& control) const override { return chooser_.Has(control); }
  void Text_Box_Enable() override;
  void Text_Box_Able() override;

  ControlArray<OptionButton> DigitalOutputSelect{*this, "DigitalOutputSelect", Indexes(4)};
  CheckBox SELECT_Check{*this, "SELECT_Check"};  // stands for the whole output
  Label lblChannel{*this, "lblChannel"};
  ComboBox CH_Combo{*this, "CH_Combo"};
  Label lblOutput{*this, "lblOutput"};
  ComboBox OUTPUT_DO_1Combo{*this, "OUTPUT_DO_1Combo"};

  Label LabelAlarm{*this, "LabelAlarm"};
  ComboBox DO1_AlarmCombo{*this, "DO1_AlarmCombo"};

  // Switch points come in pairs: index 0 for the high direction, 1 for the low one.
  Label LabelRyuryoSW{*this, "LabelRyuryoSW"};
  OptionButton optDO1FlowSWHigh{*this, "optDO1FlowSWHigh", Control::kNoIndex, "optDO1FlowSW"};
  OptionButton optDO1FlowSWLow{*this, "optDO1FlowSWLow", Control::kNoIndex, "optDO1FlowSW"};
  ControlArray<TextBox> DO1_RyuryoText{*this, "DO1_RyuryoText", Indexes(2)};
  ControlArray<Label> LabelRyuryoUnit{*this, "LabelRyuryoUnit", Indexes(2)};

  Label LabelSekisanSW{*this, "LabelSekisanSW"};
  TextBox DO1_SekisanText{*this, "DO1_SekisanText"};
  Label LabelSekisanUnit{*this, "LabelSekisanUnit"};

  Label LabelHRyuryoSW{*this, "LabelHRyuryoSW"};
  OptionButton optFLOW_SWITCH_T_HIGH{*this, "optFLOW_SWITCH_T_HIGH", Control::kNoIndex, "optFLOW_SWITCH_T"};
  OptionButton optFLOW_SWITCH_T_LOW{*this, "optFLOW_SWITCH_T_LOW", Control::kNoIndex, "optFLOW_SWITCH_T"};
  ControlArray<TextBox> H_RyuryoText{*this, "H_RyuryoText", Indexes(2)};
  ControlArray<Label> LabelHRyuryoUnit{*this, "LabelHRyuryoUnit", Indexes(2)};

  Label LabelHSekisanSW{*this, "LabelHSekisanSW"};
  TextBox H_TOTALText{*this, "H_TOTALText"};
  Label LabelHSekisanUnit{*this, "LabelHSekisanUnit"};

  CheckBox MODE_DO_1{*this, "MODE_DO_1"};
  ComboBox MODE_DO_1Combo{*this, "MODE_DO_1Combo"};

 private:
  // A function of the output that has details: what it enables and what it writes.
  struct Function {
    int index;  // of OUTPUT_DO_1Combo
    int name;   // text id for the failure box
    std::vector<Control*> controls;
    // With a direction the point of the set option belongs to it, and shows only then.
    std::array<OptionButton*, 2> directions = {};
    const ControlArray<TextBox>* points = nullptr;
    const ControlArray<Label>* units = nullptr;
    Control* value = nullptr;  // the one entry of a function without a direction
  };

  std::vector<Field> Table();
  std::vector<Function> FunctionTable();
  std::vector<CheckBox*> Boxes() override { return {&SELECT_Check, &MODE_DO_1}; }
  void BoxClicked(CheckBox& box) override;
  int IndexOf(Location) override { return Output(); }
  int Output() const { return chooser_.Index(); }
  // The channel that the output follows, whose units its switch points have.
  int Channel() const;
  void ReadBlocks() override;
  void AskUnits();
  void PlanWrites(WritePlan& plan) override;
  void PlanFunction(WritePlan& plan);
  bool FieldTakesPart(const Field& field) override;
  int UnitChannel(const Field&) override { return Channel(); }
  void LearnUnit(const Field&) override {}  // AskUnits has asked for all of them
  const Function* ChosenFunction() const;
  static int DirectionOf(const Function& function);

  void DigitalOutputSelect_Click(int index);
  void SELECT_Check_Click();
  void CH_Combo_Click();
  void OUTPUT_DO_1Combo_Click();
  void MODE_DO_1_Click();
  // The functions that the meter's shape and the current output offer, keeping the chosen one.
  void FillOutputList();
  // The units in force are shown; what was kept of others is void.
  void ShowUnitsInForce();

  Chooser chooser_;
  std::vector<Function> functions_;
  ChannelConfig config_ = ChannelConfig::kUnknown;
};

}  // namespace vlt
