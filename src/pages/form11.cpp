// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form11.h"

#include <algorithm>
#include <array>

#include "link/registers.h"
#include "meter/details_table.h"
#include "meter/device_queries.h"
#include "meter/quiet_query.h"
#include "pages/spin.h"
#include "resources/text_ids.h"
#include "values/codecs.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kNormalMode = 0;  // of OperationMode
constexpr int kHighSpeedMode = 1;
constexpr int kFewestCounts = 4;  // transmissions, which only the high-speed mode has
constexpr double kSpinStep = 1;
constexpr double kLeastWord = -32768;
constexpr double kGreatestWord = 32767;

// The kinds of wave that not every measuring method has; the received waves are always there.
constexpr const char* kReceivedWave = "ForwardReceiveOption";
constexpr std::array kComputedWaves = {"ForwardFilterOption", "ReverseFilterOption", "CorrelationCalOption"};
// The first method judges the received wave as it comes in: nothing is filtered or correlated.
constexpr int kMethodWithoutComputedWaves = 0;

constexpr int kTabNames[] = {3390, 3540, text::kWaveform};

}  // namespace

bool Form11::Automatic::Has(const Control& control) const {
  return std::find(inputs.begin(), inputs.end(), &control) != inputs.end();
}

Form11::Form11(App& app)
    : ParameterPage(app, "Form11",
                    {.title = 2000,
                     .set_started = 3990,
                     .set_completed = 4000,
                     .read_started = 4010,
                     .read_completed = 4020,
                     .not_set = 4140}),
      chooser_(app, DetailChSelect, &SharedState::DetailChannel,
               [this](int index) { DetailChSelect_Click(index); }),
      automatics_{{&TriggerLevelCheck,
                   &TriggerLevelCtlAutoOption,
                   &TriggerLevelCtlManualOption,
                   {&TriggerLevelInput}},
                  {&WindowTimeCheck,
                   &WindowTimeCtlAutoOption,
                   &WindowTimeCtlManualOption,
                   {&OpenTimeFInput, &OpenTimeRInput}},
                  {&AgcCheck, &AgcCtlAutoOption, &AgcCtlManualOption, {&AgcForwardInput, &AgcReverseInput}}} {
  column().SetFields(Table());
  TieControls();
}

std::vector<Field> Form11::Table() {
  std::vector<Field> fields = {
      Bind(DetailsRow("send_count"), SendCountCheck, SendCountCombo),
      Bind(DetailsRow("trigger_control"), TriggerLevelCheck, TriggerLevelCtlAutoOption,
           TriggerLevelCtlManualOption),
      Bind(DetailsRow("trigger_level"), TriggerLevelCheck, TriggerLevelInput, &lblTriggerLevelUnit),
      Bind(DetailsRow("window_control"), WindowTimeCheck, WindowTimeCtlAutoOption, WindowTimeCtlManualOption),
      Bind(DetailsRow("open_time_up"), WindowTimeCheck, OpenTimeFInput, &lblOpenTimeUnit(0)),
      Bind(DetailsRow("open_time_down"), WindowTimeCheck, OpenTimeRInput, &lblOpenTimeUnit(1)),
      Bind(DetailsRow("saturation"), SaturateLevelCheck, SaturateLevelInput),
      Bind(DetailsRow("measuring_method"), MeasureMethodCheck, MeasureMethodCombo),
      Bind(DetailsRow("signal_balance"), ReceiveBalanceCheck, ReceiveBalanceInput),
      Bind(DetailsRow("send_pattern"), SendPatternCheck, SendPatternCombo),
      Bind(DetailsRow("gain_control"), AgcCheck, AgcCtlAutoOption, AgcCtlManualOption),
      Bind(DetailsRow("gain_up"), AgcCheck, AgcForwardInput, &lblAgcUnit(0)),
      Bind(DetailsRow("gain_down"), AgcCheck, AgcReverseInput, &lblAgcUnit(1)),
      Bind(DetailsRow("signal_peak"), ReceivePeakCheck, ReceivePeakCombo),
      Bind(DetailsRow("send_wait_time"), chkTRWaitTim, txtTRWaitTim, &lblTRWaitTimUnit),
  };
  for (Field& field : fields) {
    field.no_option = "1";
  }
  return fields;
}

void Form11::TieControls() {
  for (const Automatic& automatic : automatics_) {
    automatic.by_itself->on_click = [this] { EnableInputs(); };
    automatic.by_hand->on_click = [this] { EnableInputs(); };
  }
  TieSpin(TriggerLevelUpDown, TriggerLevelInput, kSpinStep, kLeastWord, kGreatestWord);
  TieSpin(SaturateLevelUpDown, SaturateLevelInput, kSpinStep, kLeastWord, kGreatestWord);
  TieSpin(ReceiveBalanceUpDown, ReceiveBalanceInput, kSpinStep, kLeastWord, kGreatestWord);
}

// --- lists, captions, enabling -------------------------------------------------------------------------

void Form11::BuildLists() {
  counts_of_mode_ = app().state.OperationMode;
  ParameterPage::BuildLists();
}

MeterFacts Form11::FactsOfList(const Field& field) {
  MeterFacts facts = ParameterPage::FactsOfList(field);
  facts.OperationMode = counts_of_mode_;
  return facts;
}

void Form11::C09_DENPAN_FrmInit() {
  for (int tab = 0; tab < DetailTabs.Count(); ++tab) {
    DetailTabs.SetTabCaption(tab, app().Text(kTabNames[tab]));
  }
  SetPageCaptions({{&lblChannel, 179},
                   {&DetailChSelect(0), 182},
                   {&DetailChSelect(1), 183},
                   {&TriggerLevelCheck, 871},
                   {&lblTriggerLevel, 870},
                   {&WindowTimeCheck, 530},
                   {&lblOpenTimeF, 560},
                   {&lblOpenTimeR, 570},
                   {&AgcCheck, 170},
                   {&lblAgcForward, 171},
                   {&lblAgcReverse, 172}});
}

void Form11::SetteiHannei() {
  ParameterPage::SetteiHannei();
  // What no file and no meter has told is automatic, as in a file without the key.
  for (const Automatic& automatic : automatics_) {
    if (!automatic.by_hand->Value()) automatic.by_itself->SetValue(true);
  }
  EnableInputs();
}

void Form11::Form_Activate() {
  chooser_.Show();
  const ChannelConfig config = AskChannelConfig(app(), *this);
  // The run of a tab keeps its channel.
  if (!IsLive()) chooser_.EnableAll(config == ChannelConfig::kTwoPaths || config == ChannelConfig::kTwoPipes);
  ShowSendCounts(app().state.OperationMode);
  ParameterPage::Form_Activate();
}

bool Form11::IsChoice(const Control& control) const {
  return chooser_.Has(control) || ParameterPage::IsChoice(control);
}

void Form11::DetailChSelect_Click(int index) {
  if (chooser_.Take(index)) column().ShowHints();
}

int Form11::CSIndex_SendKaisu(int count) {
  constexpr std::array kCounts = {8, 16, 32, 64, 128, 256};
  const auto at = std::find(kCounts.begin(), kCounts.end(), count);
  return at == kCounts.end() ? -1 : static_cast<int>(at - kCounts.begin());
}

void Form11::ShowSendCounts(int operation_mode) {
  if (operation_mode == counts_of_mode_) return;
  const int count = static_cast<int>(ParseNumber(SendCountCombo.Text()).value_or(0));
  int index = CSIndex_SendKaisu(count);
  const bool is_there = index >= 0 || (operation_mode == kHighSpeedMode && count == kFewestCounts);
  if (is_there && operation_mode != kNormalMode) ++index;
  counts_of_mode_ = operation_mode;
  column().FillList(SendCountCombo);
  SendCountCombo.SetListIndex(index);
}

void Form11::EnableInputs() {
  for (const Automatic& automatic : automatics_) {
    for (TextBox* input : automatic.inputs) input->SetEnabled(automatic.GivesValues());
  }
  TriggerLevelUpDown.SetEnabled(TriggerLevelInput.Enabled());
  SaturateLevelUpDown.SetEnabled(SaturateLevelInput.Enabled());
  ReceiveBalanceUpDown.SetEnabled(ReceiveBalanceInput.Enabled());
}

void Form11::BoxClicked(CheckBox& box) {
  for (const Automatic& automatic : automatics_) {
    if (automatic.box == &box) return FollowAutomatic(automatic);
  }
  column().FollowBox(box);
  EnableInputs();
}

void Form11::FollowAutomatic(const Automatic& automatic) {
  for (OptionButton* option : {automatic.by_itself, automatic.by_hand}) {
    option->SetEnabled(automatic.box->Ticked());
  }
  EnableInputs();
  for (TextBox* input : automatic.inputs) {
    if (input->Enabled()) CheckNumber(app(), *input);
  }
}

void Form11::Text_Box_Enable() {
  ColumnRules::Text_Box_Enable();
  EnableInputs();
}

void Form11::Text_Box_Able() {
  ColumnRules::Text_Box_Able();
  EnableInputs();
}

// --- exchanges -----------------------------------------------------------------------------------------

void Form11::ReadBlocks() {
  RegisterData data;
  if (!column().FetchBlock(kDetailsBlock, data)) return;
  if (SendCountCheck.Ticked()) {
    // What a count is depends on the mode, which the meter's own display may have changed meanwhile.
    const int mode = GetOperationMode(app());
    ShowSendCounts(mode < 0 ? kNormalMode : mode);
  }
  column().ShowBlock(kDetailsBlock, data);
}

void Form11::BlockFailed(const Block&) {
  app().Show(app().Text(text::kCommunicationError), MessageIcon::kStop);
}

void Form11::FieldWasRead(const Field& field, int) {
  if (field.list == &MeasureMethodCombo) Set_SyusyuSyubetu();
}

void Form11::PlanWrites(WritePlan& plan) {
  for (const Field* field : column().FieldsAsWritten()) {
    const bool left_to_meter = std::any_of(automatics_.begin(), automatics_.end(), [&](const Automatic& a) {
      return a.Has(field->Entry()) && !a.GivesValues();
    });
    const bool no_count = field->list == &SendCountCombo && SendCountCombo.Text().empty();
    if (!left_to_meter && !no_count) column().PlanField(plan, *field);
  }
}

bool Form11::Read_Houshiki(int& method) { return Read_HoushikiCH(chooser_.Index(), method); }

bool Form11::Read_HoushikiCH(int channel, int& method) {
  RegisterData data;
  const Parameter& row = DetailsRow("measuring_method");
  if (!ReadRegisters(app(), {.address = AddressOf(row, channel), .count = row.Words()}, data)) {
    app().Show(app().Text(text::kCommunicationError), MessageIcon::kStop);
    return false;
  }
  method = CodeAt(row, data, 0);
  return true;
}

void Form11::Set_SyusyuSyubetu() {
  const bool offered = MeasureMethodCombo.ListIndex() != kMethodWithoutComputedWaves;
  bool lost = false;
  for (const char* name : kComputedWaves) {
    auto* option = static_cast<OptionButton*>(Find(name));
    if (option == nullptr) continue;
    option->SetEnabled(offered);
    lost = lost || (option->Value() && !offered);
  }
  auto* received = static_cast<OptionButton*>(Find(kReceivedWave));
  if (lost && received != nullptr) received->SetValue(true);
}

}  // namespace vlt
