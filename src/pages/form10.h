// SPDX-License-Identifier: GPL-3.0-or-later
// Process setting: pipe, lining, fluid and sensor of a channel, the sensor spacing that the meter computes
// from them, and the zero adjustment. A tab of its own holds the heat calculation.
#pragma once

#include "meter/process_table.h"
#include "pages/chooser.h"
#include "pages/entry.h"
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

  NumberEntry OUTER_DIAMETERText{*this,
                                 fields_,
                                 ProcessRow("outer_diameter"),
                                 "OUTER_DIAMETER",
                                 "OUTER_DIAMETERText",
                                 LabelName{"Label8", 0}};
  ListEntry PIPE_MATERIALCombo{*this, fields_, ProcessRow("pipe_material"), "PIPE_MATERIAL",
                               "PIPE_MATERIALCombo"};
  // The sound velocity of the pipe, whatever the name says.
  NumberEntry TRANS_FREQUENCYText{*this,
                                  fields_,
                                  ProcessRow("pipe_sound_velocity"),
                                  "TRANS_FREQUENCY",
                                  "TRANS_FREQUENCYText",
                                  LabelName{"Label12", 0}};
  NumberEntry WALL_THICKNESSText{*this,
                                 fields_,
                                 ProcessRow("wall_thickness"),
                                 "WALL_THICKNESS",
                                 "WALL_THICKNESSText",
                                 LabelName{"Label8", 1}};
  ListEntry LINING_MATERIALCombo{*this, fields_, ProcessRow("lining_material"), "LINING_MATERIAL",
                                 "LINING_MATERIALCombo"};
  NumberEntry LINING_S_VText{*this,        fields_,          ProcessRow("lining_sound_velocity"),
                             "LINING_S_V", "LINING_S_VText", LabelName{"Label1", 0}};
  NumberEntry LINING_THICKNESSText{*this,
                                   fields_,
                                   ProcessRow("lining_thickness"),
                                   "LINING_THICKNESS",
                                   "LINING_THICKNESSText",
                                   LabelName{"Label2", 0}};
  ListEntry KIND_OF_FLUIDCombo{*this, fields_, ProcessRow("fluid"), "KIND_OF_FLUID", "KIND_OF_FLUIDCombo"};
  NumberEntry FLUID_S_VText{*this,       fields_,         ProcessRow("fluid_sound_velocity"),
                            "FLUID_S_V", "FLUID_S_VText", LabelName{"Label1", 1}};
  NumberEntry VISCOSITYText{*this,       fields_,         ProcessRow("viscosity"),
                            "VISCOSITY", "VISCOSITYText", LabelName{"Label3", 0}};
  ListEntry SENSOR_MOUNTCombo{*this, fields_, ProcessRow("sensor_mount"), "SENSOR_MOUNT",
                              "SENSOR_MOUNTCombo"};
  ListEntry SENSOR_TYPECombo{*this, fields_, ProcessRow("sensor_type"), "SENSOR_TYPE", "SENSOR_TYPECombo"};
  NumberEntry SENSOR_SPACINGText{*this,
                                 fields_,
                                 ProcessRow("sensor_spacing"),
                                 "SENSOR_SPACINGCheck",
                                 "SENSOR_SPACINGText",
                                 LabelName{"Label5", 0}};
  TextBox SENSOR_SPACING2Text{*this, "SENSOR_SPACING2Text"};

  HeatColumn Heat{app(), *this};

 private:
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
