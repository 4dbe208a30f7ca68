// SPDX-License-Identifier: GPL-3.0-or-later
// Maintenance: adjusts and checks the analog outputs, checks the digital ones, drives the test mode with its
// simulated input, and shows the measured temperature inputs. What it has begun goes on in the meter until
// ReleaseParameter ends it, whatever page is open.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "meter/quiet_query.h"
#include "pages/parameter_page.h"

namespace vlt {

class Form7 : public ParameterPage {
 public:
  explicit Form7(App& app);

  void C11_MENTE_FrmInit();
  void FrmInit() override { C11_MENTE_FrmInit(); }
  // Copies to and from the shared texts; the parameter file knows nothing of them.
  void Taihi_Form7();
  void Taihi() override { Taihi_Form7(); }
  void SetteiHannei() override;
  void Form_Activate() override;
  void Form_Deactivate() override;
  void Text_Box_Enable() override { EnableControls(); }
  void Text_Box_Able() override { EnableControls(); }

  // Ends the test state of the meter.
  PushButton ReleaseParameter{*this, "ReleaseParameter"};

  CheckBox AO_Check{*this, "AO_Check"};
  CheckBox ADJUSTMENT{*this, "ADJUSTMENT"};
  ComboBox ADJUSTMENTCombo{*this, "ADJUSTMENTCombo"};  // the point, in mA
  TextBox ADJUSTMENText{*this, "ADJUSTMENText"};
  UpDown UpDown1{*this, "UpDown1"};
  CheckBox AO_DEFINITIONCheck{*this, "AO_DEFINITIONCheck"};
  TextBox AO_DEFINITIONText{*this, "AO_DEFINITIONText"};
  UpDown UpDown2{*this, "UpDown2"};

  CheckBox AO2_Check{*this, "AO2_Check"};
  CheckBox ADJUSTMENT2{*this, "ADJUSTMENT2"};
  ComboBox ADJUSTMENTCombo2{*this, "ADJUSTMENTCombo2"};
  TextBox ADJUSTMENText2{*this, "ADJUSTMENText2"};
  UpDown UpDown3{*this, "UpDown3"};
  CheckBox AO2_DEFINITIONCheck{*this, "AO2_DEFINITIONCheck"};
  TextBox AO2_DEFINITIONText{*this, "AO2_DEFINITIONText"};
  UpDown UpDown4{*this, "UpDown4"};

  // Units by analog output.
  ControlArray<Label> lblPointUnit{*this, "lblPointUnit", Indexes(2)};
  ControlArray<Label> lblPercent{*this, "lblPercent", Indexes(2)};

  CheckBox chkDO{*this, "chkDO"};
  FrameBox FrameDO{*this, "FrameDO"};
  // One of the three checks at a time; the third is no check box, whatever its name says.
  OptionButton OUTPUT_DOOption{*this, "OUTPUT_DOOption", Control::kNoIndex, "chkDO"};
  ComboBox OUTPUT_DOCombo{*this, "OUTPUT_DOCombo"};
  OptionButton SEKISAN_PULSEOption{*this, "SEKISAN_PULSEOption", Control::kNoIndex, "chkDO"};
  TextBox SEKISAN_PULSEText{*this, "SEKISAN_PULSEText"};
  Label lblPulseUnit{*this, "lblPulseUnit"};
  OptionButton OUTPUT_DO2_FREQUENCYCheck{*this, "OUTPUT_DO2_FREQUENCYCheck", Control::kNoIndex, "chkDO"};
  TextBox OUTPUT_DO2_FREQUENCYtxt{*this, "OUTPUT_DO2_FREQUENCYtxt"};
  Label lblFrequencyUnit{*this, "lblFrequencyUnit"};

  CheckBox TEST_MODECheck{*this, "TEST_MODECheck"};
  Label lblInputData{*this, "lblInputData"};
  TextBox INPUT_DATAText{*this, "INPUT_DATAText"};
  Label lblInputUnit{*this, "lblInputUnit"};
  Label lblTrackingTime{*this, "lblTrackingTime"};
  TextBox TRACKING_TIMEText{*this, "TRACKING_TIMEText"};
  Label lblTrackingUnit{*this, "lblTrackingUnit"};

  FrameBox Frame6{*this, "Frame6"};
  CheckBox TEMPCheck{*this, "TEMPCheck"};
  CheckBox CONFIRM_TSCheck{*this, "CONFIRM_TSCheck"};
  TextBox CONFIRM_TStxt{*this, "CONFIRM_TStxt"};
  CheckBox CONFIRM_TRCheck{*this, "CONFIRM_TRCheck"};
  TextBox CONFIRM_TRtxt{*this, "CONFIRM_TRtxt"};

 private:
  // An analog output, and the text that was entered or read last for each point of its adjustment.
  struct AnalogOutput {
    CheckBox& group;
    CheckBox& adjustment;
    ComboBox& point;
    TextBox& value;
    UpDown& value_spin;
    CheckBox& check;
    TextBox& percent;
    UpDown& percent_spin;
    int name;  // text id
    const Block& block;
    std::array<const Parameter*, 2> rows;  // by point
    int shown_point = -1;
    std::string AdjustText4 = {};
    std::string AdjustText20 = {};

    std::string& TextOf(int index) { return index == 0 ? AdjustText4 : AdjustText20; }
  };
  // A check of the digital outputs.
  struct DigitalCheck {
    OptionButton& option;
    Control& entry;
  };

  std::vector<Field> Table();
  void TieOutput(AnalogOutput& output, AnalogOutput& other);
  void TieTexts();
  void BuildLists() override;
  void EnableCommands(bool enabled) override;
  std::vector<CheckBox*> Boxes() override;

  // What the shape of the meter and the ticks allow.
  void FollowShape();
  void EnableControls();
  void EnableOutput(const AnalogOutput& output) const;
  void BoxClicked(CheckBox& box) override;
  // A text that is no number is told and cleared.
  void CheckOrClear(TextBox& box);
  void ShowHints();
  void ShowPointHint(const AnalogOutput& output);

  void ADJUSTMENTCombo_Click(AnalogOutput& output);
  void AdjustText_Change(AnalogOutput& output);
  // Both analog outputs are checked by one register, so both show one value.
  void AO_DEFINITIONCheck_Click(const AnalogOutput& output, const AnalogOutput& other);
  void PercentText_Change(const AnalogOutput& output, const AnalogOutput& other);
  void TieSpin(UpDown& spin, TextBox& text);
  void Spin(TextBox& text, int step);

  bool AnythingSelected() override;
  bool AnythingToSet() override;
  bool TestModeIsToEnd() const;
  void ReadBlocks() override;
  void ReadAdjustment(AnalogOutput& output);
  // What is shown of a point whose text was `typed` before.
  std::string AdjustmentText(const Parameter& row, std::span<const std::uint8_t> bytes,
                             const std::string& typed);
  bool ReadChecks();
  // The meter has told the block; false without an answer.
  bool ReadAndNote(const Block& block);
  bool FieldTakesPart(const Field& field) override;
  bool IsShown(const Field& field) override;
  // The meter has told the text of a point, shown or not.
  void NoteBehind(const AnalogOutput& output, const Parameter& row, const std::string& value);
  bool MaySet() override;
  void PlanWrites(WritePlan& plan) override;
  void PlanOutput(WritePlan& plan, const AnalogOutput& output);
  void PlanTestMode(WritePlan& plan);
  void WriteProven(const PlannedWrite& write) override { NoteTest(write); }
  void WriteFailed(const PlannedWrite& write, WriteResult result) override;
  // A write that begins the test state.
  void NoteTest(const PlannedWrite& write);
  std::string FailureName(const Field& field) override;

  void ReleaseParameter_Click();
  // One write and one read; false when the meter has not confirmed the end.
  bool EndTestState();

  std::array<AnalogOutput, 2> outputs_;
  std::array<DigitalCheck, 3> checks_;
};

}  // namespace vlt
