// SPDX-License-Identifier: GPL-3.0-or-later
// System: what concerns the meter as a whole, its identification, the memory initialisation, and the read-out
// of all settings into a report.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "meter/quiet_query.h"
#include "meter/read_all.h"
#include "meter/system_table.h"
#include "pages/entry.h"
#include "pages/parameter_page.h"

namespace vlt {

class Form6 : public ParameterPage {
 public:
  explicit Form6(App& app);

  void C06_SYSTEM_FrmInit();
  void FrmInit() override { C06_SYSTEM_FrmInit(); }
  void Taihi_Form6() { ParameterPage::Taihi(); }
  void Taihi() override { Taihi_Form6(); }
  // Empty slots leave their controls alone.
  void SetteiHannei() override;
  void Form_Load() override;
  void Form_Activate() override;
  void All_OnOff(int value) override;
  void Text_Box_Enable() override;
  // Ends the read-out of all settings.
  const Control* StopButton() const override { return &cmdStopReadAll; }
  // The report's name can be given while it is being read.
  bool StaysUsable(const Control& control) const override { return &control == &Save_As; }

  ListEntry UNIT_SYSTEMCombo{*this, fields_, SystemRow("unit"), "UNIT_SYSTEM", "UNIT_SYSTEMCombo"};
  ListEntry LANGUAGECombo{*this, fields_, SystemRow("language"), "LANGUAGE", "LANGUAGECombo"};
  NumberEntry IDNUM_CONFIGText{*this, fields_, SystemRow("id_number"), "IDNUM_CONFIGCheck",
                               "IDNUM_CONFIGText"};
  NumberEntry SPEC_Text{*this, fields_, SystemRow("specification"), "SPEC", "SPEC_Text"};
  NumberEntry CONTROL_BOARDText{*this, fields_, SystemRow("version"), "chkVersionInfo", "CONTROL_BOARDText"};
  TextBox txtType{*this, "txtType"};
  ListEntry SYSTEM_MODECombo{*this, fields_, SystemRow("operation_mode"), "SYSTEM_MODECheck",
                             "SYSTEM_MODECombo"};

  FrameBox Frame8{*this, "Frame8"};  // measure setup
  ListEntry MEASUREMENT_MODECombo{*this, fields_, SystemRow("measurement_mode"), "MEASUREMENT_MODECheck",
                                  "MEASUREMENT_MODECombo"};
  ListEntry CALCULATIONCombo{*this, fields_, SystemRow("calculation"), "CALCULATIONCheck",
                             "CALCULATIONCombo"};
  ListEntry A01_OUT_SOURCECombo{*this, fields_, SystemRow("ao1_source"), "A01_OUT_SOURCE",
                                "A01_OUT_SOURCECombo"};
  ListEntry A02_OUT_SOURCECombo{*this, fields_, SystemRow("ao2_source"), "A02_OUT_SOURCE",
                                "A02_OUT_SOURCECombo"};

  FrameBox FrameMemory{*this, "FrameMemory"};
  PushButton CommandMemoryInit{*this, "CommandMemoryInit"};

  CheckBox Read_All_Set_Data{*this, "Read_All_Set_Data"};
  Label Label3{*this, "Label3"};
  TextBox FileName{*this, "FileName"};  // shows what Save_As has chosen
  PushButton Save_As{*this, "Save_As"};
  PushButton cmdStopReadAll{*this, "cmdStopReadAll"};
  Timer tmrSaveAs{*this, "tmrSaveAs"};  // waits for the end of what Save_As was pressed in

 private:
  MeterFacts FactsOfList(const Field& field) override;
  // What is known of the meter, had it this measurement mode.
  MeterFacts FactsInMode(int mode) const;
  bool IsSource(const Field& field) const;
  void EnableCommands(bool enabled) override;
  bool AnythingSelected() override;
  std::vector<CheckBox*> Boxes() override;
  void BoxClicked(CheckBox& box) override;
  void ReadBlocks() override;
  void ReadMeasureSetup();
  void BlockFailed(const Block& block) override;
  void FieldWasRead(const Field& field, int code) override;
  std::string ReadRemark() override { return remark_; }
  bool MaySet() override;
  void PlanWrites(WritePlan& plan) override;
  std::optional<int> ModeOfSet();
  // Empty for a field that may be set.
  std::string WhyNotOffered(const Field& field);
  // False when the operator ends the set that some of them are left out of.
  bool GoesOnWithoutSources();
  void WriteProven(const PlannedWrite& write) override;
  void WriteFailed(const PlannedWrite& write, WriteResult result) override;
  bool ReadsBack() override { return !specification_changed_; }

  void UnitWasRead();
  void LanguageWasRead(int language);
  void EnableMeasureSetup();
  void MEASUREMENT_MODECheck_Click();
  void MEASUREMENT_MODECombo_Click();
  // The sources that the measurement mode offers, each list keeping its selection where it can.
  void RebuildOutSourceLists();
  void CheckFourDigits(TextBox& box);

  void CommandMemoryInit_Click();
  void Save_As_Click();
  void tmrSaveAs_Timer();
  // Asks if Save_As was pressed and nobody was asked yet.
  void AskForName();
  void Read_All_Set_Data_Click();
  void cmdStopReadAll_Click() { stop_requested_ = true; }
  void ReadAll();
  void ShowProgress(int number, int count, const std::string& what);
  // Writes it. What was lost, and why there is no report; empty when all is well.
  std::string Report(const MeterSettings& settings);
  std::string LostText(const MeterSettings& settings) const;
  // Why there is no report; empty when there is one.
  std::string SaveReportTo(const std::string& file, const MeterSettings& settings, const std::string& lost);
  bool MayReplace(const std::string& file, const std::string& lost);

  bool SilentRead() const { return column().IsReadingBack(); }

  ChannelConfig config_ = ChannelConfig::kUnknown;
  // Sources that the running set leaves out, and why.
  std::vector<std::pair<const Field*, std::string>> left_out_;
  bool specification_changed_ = false;
  bool stop_requested_ = false;
  bool asks_for_name_ = false;
  std::string remark_;  // of the running read
};

}  // namespace vlt
