// SPDX-License-Identifier: GPL-3.0-or-later
// Transit time: how the meter sends, receives and judges the signals of a path. The other two tabs, the
// condition of the paths and their waves, are parts of this window that live readings add.
#pragma once

#include "pages/chooser.h"
#include "pages/parameter_page.h"

namespace vlt {

class Form11 : public ParameterPage {
 public:
  explicit Form11(App& app);

  void C09_DENPAN_FrmInit();
  void FrmInit() override { C09_DENPAN_FrmInit(); }
  void Taihi_Form11() { ParameterPage::Taihi(); }
  void Taihi() override { Taihi_Form11(); }
  void SetteiHannei() override;
  void Form_Activate() override;
  void Text_Box_Enable() override;
  bool IsChoice(const Control& control) const override;

  // The measuring method of the channel of this page, or of channel 0 or 1, from the meter. The port must be
  // open and the interface locked. False when the meter has not answered: a box has said so, and `method` is
  // as it was.
  bool Read_Houshiki(int& method);
  bool Read_HoushikiCH(int channel, int& method);
  // Offers the kinds of wave that the method in MeasureMethodCombo has. When the chosen one is not among them
  // the received wave takes its place. Nothing while no tab with these options is there.
  void Set_SyusyuSyubetu();
  // Place of a transmission count in the list of the ordinary operation mode (8, 16, ... 256), or -1.
  static int CSIndex_SendKaisu(int count);

  // 0 details, 1 condition, 2 waves.
  TabControl DetailTabs{*this, "DetailTabs", 3};
  // For the readings of the other tabs: their state, what they are doing, what they have done.
  StatusBar StatusBar2{*this, "StatusBar2", 3};

  Label lblChannel{*this, "lblChannel"};
  ControlArray<OptionButton> DetailChSelect{*this, "DetailChSelect", Indexes(2)};

  CheckBox SendPatternCheck{*this, "SendPatternCheck"};
  ComboBox SendPatternCombo{*this, "SendPatternCombo"};
  CheckBox SendCountCheck{*this, "SendCountCheck"};
  ComboBox SendCountCombo{*this, "SendCountCombo"};
  CheckBox MeasureMethodCheck{*this, "MeasureMethodCheck"};
  ComboBox MeasureMethodCombo{*this, "MeasureMethodCombo"};
  CheckBox chkTRWaitTim{*this, "chkTRWaitTim"};
  TextBox txtTRWaitTim{*this, "txtTRWaitTim"};
  Label lblTRWaitTimUnit{*this, "lblTRWaitTimUnit"};

  CheckBox SaturateLevelCheck{*this, "SaturateLevelCheck"};
  TextBox SaturateLevelInput{*this, "SaturateLevelInput"};
  UpDown SaturateLevelUpDown{*this, "SaturateLevelUpDown"};
  CheckBox ReceiveBalanceCheck{*this, "ReceiveBalanceCheck"};
  TextBox ReceiveBalanceInput{*this, "ReceiveBalanceInput"};
  UpDown ReceiveBalanceUpDown{*this, "ReceiveBalanceUpDown"};
  CheckBox ReceivePeakCheck{*this, "ReceivePeakCheck"};
  ComboBox ReceivePeakCombo{*this, "ReceivePeakCombo"};

  CheckBox TriggerLevelCheck{*this, "TriggerLevelCheck"};
  OptionButton TriggerLevelCtlAutoOption{*this, "TriggerLevelCtlAutoOption", Control::kNoIndex,
                                         "TriggerLevelCtl"};
  OptionButton TriggerLevelCtlManualOption{*this, "TriggerLevelCtlManualOption", Control::kNoIndex,
                                           "TriggerLevelCtl"};
  Label lblTriggerLevel{*this, "lblTriggerLevel"};
  TextBox TriggerLevelInput{*this, "TriggerLevelInput"};
  UpDown TriggerLevelUpDown{*this, "TriggerLevelUpDown"};
  Label lblTriggerLevelUnit{*this, "lblTriggerLevelUnit"};

  CheckBox WindowTimeCheck{*this, "WindowTimeCheck"};
  OptionButton WindowTimeCtlAutoOption{*this, "WindowTimeCtlAutoOption", Control::kNoIndex, "WindowTimeCtl"};
  OptionButton WindowTimeCtlManualOption{*this, "WindowTimeCtlManualOption", Control::kNoIndex,
                                         "WindowTimeCtl"};
  Label lblOpenTimeF{*this, "lblOpenTimeF"};
  TextBox OpenTimeFInput{*this, "OpenTimeFInput"};
  Label lblOpenTimeR{*this, "lblOpenTimeR"};
  TextBox OpenTimeRInput{*this, "OpenTimeRInput"};
  // Of the up and the down stream value.
  ControlArray<Label> lblOpenTimeUnit{*this, "lblOpenTimeUnit", Indexes(2)};

  CheckBox AgcCheck{*this, "AgcCheck"};
  OptionButton AgcCtlAutoOption{*this, "AgcCtlAutoOption", Control::kNoIndex, "AgcCtl"};
  OptionButton AgcCtlManualOption{*this, "AgcCtlManualOption", Control::kNoIndex, "AgcCtl"};
  Label lblAgcForward{*this, "lblAgcForward"};
  TextBox AgcForwardInput{*this, "AgcForwardInput"};
  Label lblAgcReverse{*this, "lblAgcReverse"};
  TextBox AgcReverseInput{*this, "AgcReverseInput"};
  ControlArray<Label> lblAgcUnit{*this, "lblAgcUnit", Indexes(2)};

 private:
  // Values that the meter finds by itself, or that the operator gives by hand.
  struct Automatic {
    CheckBox* box;
    OptionButton* by_itself;
    OptionButton* by_hand;
    std::vector<TextBox*> inputs;
    bool GivesValues() const { return box->Ticked() && by_hand->Value(); }
    bool Has(const Control& control) const;
  };

  std::vector<Field> Table();
  void TieControls();
  bool ChannelIsChosen() override { return chooser_.IsEnabled(); }
  int IndexOf(Location) override { return chooser_.Index(); }
  void BuildLists() override;
  MeterFacts FactsOfList(const Field& field) override;
  void BoxClicked(CheckBox& box) override;
  void Text_Box_Able() override;
  void ReadBlocks() override;
  void BlockFailed(const Block& block) override;
  void FieldWasRead(const Field& field, int code) override;
  void PlanWrites(WritePlan& plan) override;

  void DetailChSelect_Click(int index);
  // The list of transmission counts as an operation mode has it; the count that is selected stays when the
  // mode has it, too.
  void ShowSendCounts(int operation_mode);
  // Options and inputs follow their box; a number that gets enabled is checked.
  void FollowAutomatic(const Automatic& automatic);
  // Inputs and arrows follow boxes and options.
  void EnableInputs();

  Chooser chooser_;
  std::vector<Automatic> automatics_;
  int counts_of_mode_ = 0;  // operation mode that the list of transmission counts is for
};

}  // namespace vlt
