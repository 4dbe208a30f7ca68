// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form4.h"

#include <algorithm>

#include "meter/device_queries.h"
#include "meter/status_table.h"
#include "meter/units.h"

namespace vlt {
namespace {

constexpr int kLastOutput = 3;

}  // namespace

Form4::Form4(App& app)
    : ParameterPage(app, "Form4",
                    {.title = 720,
                     .set_started = 3994,
                     .set_completed = 4004,
                     .read_started = 4014,
                     .read_completed = 4024}),
      chooser_(app, DigitalOutputSelect, &SharedState::OutputIndex,
               [this](int index) { DigitalOutputSelect_Click(index); }) {
  column().SetFields(Table());
  functions_ = FunctionTable();
  CH_Combo.on_click = [this] { CH_Combo_Click(); };
  OUTPUT_DO_1Combo.on_click = [this] { OUTPUT_DO_1Combo_Click(); };
  MODE_DO_1.on_click = [this] { MODE_DO_1_Click(); };
  for (OptionButton* option :
       {&optDO1FlowSWHigh, &optDO1FlowSWLow, &optFLOW_SWITCH_T_HIGH, &optFLOW_SWITCH_T_LOW}) {
    option->on_click = [this] { OUTPUT_DO_1Combo_Click(); };
  }
}

std::vector<Field> Form4::Table() {
  CheckBox& all = SELECT_Check;
  return {
      Bind(StatusRow("channel"), all, CH_Combo),
      Bind(StatusRow("function"), all, OUTPUT_DO_1Combo),
      Bind(StatusRow("alarm"), all, DO1_AlarmCombo),
      Bind(StatusRow("flow_switch"), all, optDO1FlowSWHigh, optDO1FlowSWLow),
      Bind(StatusRow("flow_switch_high"), all, DO1_RyuryoText(0), &LabelRyuryoUnit(0)),
      Bind(StatusRow("flow_switch_low"), all, DO1_RyuryoText(1), &LabelRyuryoUnit(1)),
      Bind(StatusRow("total_switch"), all, DO1_SekisanText, &LabelSekisanUnit),
      Bind(StatusRow("contact_action"), all, MODE_DO_1Combo),
      Bind(StatusRow("thermal_switch"), all, optFLOW_SWITCH_T_HIGH, optFLOW_SWITCH_T_LOW),
      Bind(StatusRow("thermal_switch_high"), all, H_RyuryoText(0), &LabelHRyuryoUnit(0)),
      Bind(StatusRow("thermal_switch_low"), all, H_RyuryoText(1), &LabelHRyuryoUnit(1)),
      Bind(StatusRow("thermal_total_switch"), all, H_TOTALText, &LabelHSekisanUnit),
  };
}

std::vector<Form4::Function> Form4::FunctionTable() {
  return {
      {.index = 4, .name = 242, .controls = {&LabelAlarm, &DO1_AlarmCombo}, .value = &DO1_AlarmCombo},
      {.index = 5,
       .name = 243,
       .controls = {&LabelRyuryoSW, &optDO1FlowSWHigh, &optDO1FlowSWLow},
       .directions = {&optDO1FlowSWHigh, &optDO1FlowSWLow},
       .points = &DO1_RyuryoText,
       .units = &LabelRyuryoUnit},
      {.index = 6,
       .name = 244,
       .controls = {&LabelSekisanSW, &DO1_SekisanText, &LabelSekisanUnit},
       .value = &DO1_SekisanText},
      {.index = 13,
       .name = 607,
       .controls = {&LabelHRyuryoSW, &optFLOW_SWITCH_T_HIGH, &optFLOW_SWITCH_T_LOW},
       .directions = {&optFLOW_SWITCH_T_HIGH, &optFLOW_SWITCH_T_LOW},
       .points = &H_RyuryoText,
       .units = &LabelHRyuryoUnit},
      {.index = 14,
       .name = 608,
       .controls = {&LabelHSekisanSW, &H_TOTALText, &LabelHSekisanUnit},
       .value = &H_TOTALText},
  };
}

// --- lists, captions, enabling -------------------------------------------------------------------------

void Form4::FillOutputList() { column().FillList(OUTPUT_DO_1Combo); }

void Form4::Form_Load() {
  ParameterPage::Form_Load();
  chooser_.Show();
}

void Form4::SetteiHannei() {
  // The list must hold what the slot may select before the slots are shown.
  FillOutputList();
  ParameterPage::SetteiHannei();
  SELECT_Check_Click();
}

void Form4::Form_Activate() {
  config_ = AskChannelConfig(app(), *this);
  const int outputs = LocationCount(Location::kOutput, app().state);
  for (const int output : {2, kLastOutput}) DigitalOutputSelect(output).SetEnabled(output < outputs);
  FillOutputList();
  SELECT_Check_Click();
  ParameterPage::Form_Activate();
}

void Form4::C05_STATUS_FrmInit() {
  SetPageCaptions({{&lblChannel, 179},
                   {&lblOutput, 199},
                   {&LabelAlarm, 242},
                   {&LabelRyuryoSW, 243},
                   {&LabelSekisanSW, 244},
                   {&LabelHRyuryoSW, 607},
                   {&LabelHSekisanSW, 608},
                   {&MODE_DO_1, 617}});
  constexpr const char* kOutputs[] = {"DO1", "DO2", "DO3", "DO4"};
  DigitalOutputSelect.ForEach([&](OptionButton& option) { option.SetCaption(kOutputs[option.Index()]); });
  SELECT_Check.SetCaption(kOutputs[Output()]);
}

void Form4::BoxClicked(CheckBox&) { SELECT_Check_Click(); }

void Form4::Text_Box_Enable() { SELECT_Check_Click(); }

void Form4::Text_Box_Able() { SELECT_Check_Click(); }

void Form4::DigitalOutputSelect_Click(int index) {
  if (chooser_.Take(index)) column().ShowHints();
  SELECT_Check.SetCaption(DigitalOutputSelect(index).Caption());
  FillOutputList();
}

void Form4::SELECT_Check_Click() {
  const bool on = SELECT_Check.Ticked();
  const bool one_channel = config_ == ChannelConfig::kOneChannel;
  if (on && one_channel) CH_Combo.SetListIndex(0);
  CH_Combo.SetEnabled(on && !one_channel);
  OUTPUT_DO_1Combo.SetEnabled(on);
  MODE_DO_1.SetEnabled(on);
  MODE_DO_1_Click();
  OUTPUT_DO_1Combo_Click();
}

void Form4::MODE_DO_1_Click() { MODE_DO_1Combo.SetEnabled(MODE_DO_1.Enabled() && MODE_DO_1.Ticked()); }

void Form4::OUTPUT_DO_1Combo_Click() {
  for (const Function& function : functions_) {
    for (Control* control : function.controls) control->SetEnabled(false);
    for (int i = 0; function.points != nullptr && i < 2; ++i) {
      (*function.points)(i).SetEnabled(false);
      (*function.units)(i).SetEnabled(false);
    }
  }
  const Function* chosen = ChosenFunction();
  if (chosen == nullptr || !SELECT_Check.Ticked()) return;
  for (Control* control : chosen->controls) control->SetEnabled(true);
  const int direction = DirectionOf(*chosen);
  if (direction < 0) return;
  (*chosen->points)(direction).SetEnabled(true);
  (*chosen->units)(direction).SetEnabled(true);
}

const Form4::Function* Form4::ChosenFunction() const {
  for (const Function& function : functions_) {
    if (function.index == OUTPUT_DO_1Combo.ListIndex()) return &function;
  }
  return nullptr;
}

int Form4::DirectionOf(const Function& function) {
  for (int i = 0; i < 2; ++i) {
    const OptionButton* option = function.directions[static_cast<std::size_t>(i)];
    if (option != nullptr && option->Value()) return i;
  }
  return -1;
}

// The units of the newly chosen channel; a file that is being shown brings its own.
void Form4::CH_Combo_Click() {
  if (column().IsRestoring()) {
    column().ShowUnits();
  } else {
    ShowUnitsInForce();
  }
}

void Form4::ShowUnitsInForce() {
  column().ShowUnits();
  column().ForgetUnitCaptions();
}

int Form4::Channel() const { return std::max(CH_Combo.ListIndex(), 0); }

// --- exchanges -----------------------------------------------------------------------------------------

void Form4::ReadBlocks() {
  if (HasSeveralChannels(app().state)) column().ReadBlock(kOutputChannelBlock);
  const Block& block = Output() == kLastOutput       ? kFourthOutputBlock
                       : HasThirdOutput(app().state) ? kOutputBlock
                                                     : kTwoOutputsBlock;
  RegisterData data;
  const bool answered = column().FetchBlock(block, data);
  AskUnits();
  if (answered) column().ShowBlock(block, data);
  if (HasHeatRegisters(app().state)) column().ReadBlock(kThermalOutputBlock);
}

void Form4::AskUnits() {
  ReadUnitSystem(app());
  GetRangeKind(app(), Channel());
  GetRangeUnit(app(), Channel());
  GetTotalUnit(app(), Channel());
  if (HasHeatRegisters(app().state)) {
    GetHeatFlowUnit(app());
    GetHeatTotalUnit(app());
  }
  ShowUnitsInForce();
}

bool Form4::FieldTakesPart(const Field& field) {
  // Only the switch point of the direction that the meter uses has a meaning; the other text is left alone.
  for (const Function& function : functions_) {
    for (int i = 0; function.points != nullptr && i < 2; ++i) {
      if (field.text == &(*function.points)(i)) return DirectionOf(function) == i;
    }
  }
  return true;
}

void Form4::PlanWrites(WritePlan& plan) {
  if (OUTPUT_DO_1Combo.ListIndex() < 0) return;
  if (HasSeveralChannels(app().state)) column().PlanField(plan, column().FieldOf(CH_Combo));
  column().PlanField(plan, column().FieldOf(OUTPUT_DO_1Combo));
  PlanFunction(plan);
  if (MODE_DO_1.Ticked()) column().PlanField(plan, column().FieldOf(MODE_DO_1Combo));
}

void Form4::PlanFunction(WritePlan& plan) {
  const Function* chosen = ChosenFunction();
  if (chosen == nullptr) return;
  if (chosen->value != nullptr) return column().PlanField(plan, column().FieldOf(*chosen->value));
  const int direction = DirectionOf(*chosen);
  if (direction >= 0) column().PlanInOrder(plan, {chosen->directions[0], &(*chosen->points)(direction)});
}

}  // namespace vlt
