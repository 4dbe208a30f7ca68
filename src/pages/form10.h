// SPDX-License-Identifier: GPL-3.0-or-later
// Process setting: pipe, lining, fluid and sensor of a channel, the sensor spacing that the meter computes
// from them, and the zero adjustment. A tab of its own holds the heat calculation.
#pragma once

#include "pages/chooser.h"
#include "pages/heat_column.h"
#include "pages/parameter_page.h"

namespace vlt {

class Form10 : public ParameterPage {
 public:
  explicit Form10(App& app);

  // Captions, units and lengths of the page.
  void C01_SECHI_FrmInit();
  void FrmInit() override { C01_SECHI_FrmInit(); }
  void Taihi_Form10() { ParameterPage::Taihi(); }
  void Taihi() override { Taihi_Form10(); }
  bool IsChoice(const Control& control) const override { return chooser_.Has(control); }
  bool IsMasterBox(const Control& control) const override;
  void Form_Load() override;
  void Form_Activate() override;

  // Tab 0 is the installation, tab 1 the energy mode.
  TabControl SetParameter2{*this, "SetParameter2", 2};

  Label lblChannel{*this, "lblChannel"};
  ControlArray<OptionButton> ChannelSelect{*this, "ChannelSelect", Indexes(2)};
  FrameBox FrameZero{*this, "FrameZero"};
  PushButton CmdBtnClear{*this, "CmdBtnClear"};
  PushButton CmdBtnAdjust{*this, "CmdBtnAdjust"};

  CheckBox OUTER_DIAMETER{*this, "OUTER_DIAMETER"};
  TextBox OUTER_DIAMETERText{*this, "OUTER_DIAMETERText"};
  ControlArray<Label> Label8{*this, "Label8", Indexes(2)};
  CheckBox PIPE_MATERIAL{*this, "PIPE_MATERIAL"};
  ComboBox PIPE_MATERIALCombo{*this, "PIPE_MATERIALCombo"};
  // The sound velocity of the pipe, whatever the name says.
  CheckBox TRANS_FREQUENCY{*this, "TRANS_FREQUENCY"};
  TextBox TRANS_FREQUENCYText{*this, "TRANS_FREQUENCYText"};
  ControlArray<Label> Label12{*this, "Label12", Indexes(1)};
  CheckBox WALL_THICKNESS{*this, "WALL_THICKNESS"};
  TextBox WALL_THICKNESSText{*this, "WALL_THICKNESSText"};
  CheckBox LINING_MATERIAL{*this, "LINING_MATERIAL"};
  ComboBox LINING_MATERIALCombo{*this, "LINING_MATERIALCombo"};
  CheckBox LINING_S_V{*this, "LINING_S_V"};
  TextBox LINING_S_VText{*this, "LINING_S_VText"};
  ControlArray<Label> Label1{*this, "Label1", Indexes(2)};
  CheckBox LINING_THICKNESS{*this, "LINING_THICKNESS"};
  TextBox LINING_THICKNESSText{*this, "LINING_THICKNESSText"};
  ControlArray<Label> Label2{*this, "Label2", Indexes(1)};
  CheckBox KIND_OF_FLUID{*this, "KIND_OF_FLUID"};
  ComboBox KIND_OF_FLUIDCombo{*this, "KIND_OF_FLUIDCombo"};
  CheckBox FLUID_S_V{*this, "FLUID_S_V"};
  TextBox FLUID_S_VText{*this, "FLUID_S_VText"};
  CheckBox VISCOSITY{*this, "VISCOSITY"};
  TextBox VISCOSITYText{*this, "VISCOSITYText"};
  ControlArray<Label> Label3{*this, "Label3", Indexes(1)};
  CheckBox SENSOR_MOUNT{*this, "SENSOR_MOUNT"};
  ComboBox SENSOR_MOUNTCombo{*this, "SENSOR_MOUNTCombo"};
  CheckBox SENSOR_TYPE{*this, "SENSOR_TYPE"};
  ComboBox SENSOR_TYPECombo{*this, "SENSOR_TYPECombo"};
  CheckBox SENSOR_SPACINGCheck{*this, "SENSOR_SPACINGCheck"};
  TextBox SENSOR_SPACINGText{*this, "SENSOR_SPACINGText"};
  ControlArray<Label> Label5{*this, "Label5", Indexes(1)};
  TextBox SENSOR_SPACING2Text{*this, "SENSOR_SPACING2Text"};

  HeatColumn Heat{app(), *this};

 private:
  std::vector<Field> Table();
  // True when the spacing or any enabled parameter is ticked.
  bool Check_On();
  bool AnythingSelected() override { return Check_On(); }
  bool ChannelIsChosen() override { return chooser_.IsEnabled(); }
  int IndexOf(Location) override { return chooser_.Index(); }
  std::vector<CheckBox*> Boxes() override;
  void ReadBlocks() override;
  std::vector<int> CodesOfList(const Field& field, const MeterFacts& facts) override;
  void EnableCommands(bool enabled) override;

  void ShowHeatTab(bool there);
  void ChannelSelect_Click(int index);
  void PIPE_MATERIALCombo_Click();
  void KIND_OF_FLUIDCombo_Click();
  void LINING_MATERIALCombo_Click();
  // Zero adjustment: asks, then writes `value` (0 clear, 1 set zero) at once, whatever is ticked.
  void AdjustZero(const PushButton& command, int value, int question);

  Chooser chooser_;
};

}  // namespace vlt
