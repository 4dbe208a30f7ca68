#include "pages/form4.h"

#include <algorithm>

#include "link/device_queries.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

// Where a field lies: the channel registers are next to each other, the outputs 20H apart but for the fourth,
// the thermal ones 1AH apart.
enum Group { kChannelGroup, kOutputGroup, kThermalGroup };

constexpr int kChannelBlock = 0x04A8;  // 4 registers
constexpr int kOutputBlock = 0x005A;   // 16 registers each for DO1 to DO3
constexpr int kOutputStride = 0x20;
constexpr int kFourthOutput = 0x0410;
constexpr int kThermalBlock = 0x0430;  // 52 registers
constexpr int kThermalStride = 0x1A;
constexpr int kLastOutput = 3;

constexpr int kOneChannel = 1;      // of GetChannelConfig
constexpr int kFlowFunctions = 10;  // entries of the output list before the thermal ones
constexpr int kAllFunctions = 19;
constexpr int kReserveOutput = 1;  // only DO2 offers RESERVE

}  // namespace

Form4::Form4(App& app)
    : ParameterPage(
          app, "Form4",
          {chkCheck, ReadParameter, SetParameter, SaveParameter, "STATUS", 3994, 4004, 4014, 4024}) {
  SetFields(Table());
  functions_ = FunctionTable();
  SELECT_Check.on_click = [this] { SELECT_Check_Click(); };
  MODE_DO_1.on_click = [this] { MODE_DO_1_Click(); };
  CH_Combo.on_click = [this] { CH_Combo_Click(); };
  OUTPUT_DO_1Combo.on_click = [this] { OUTPUT_DO_1Combo_Click(); };
  DigitalOutputSelect.ForEach([this](OptionButton& option) {
    option.on_click = [this, &option] { DigitalOutputSelect_Click(option.Index()); };
  });
  for (OptionButton* option :
       {&optDO1FlowSWHigh, &optDO1FlowSWLow, &optFLOW_SWITCH_T_HIGH, &optFLOW_SWITCH_T_LOW}) {
    option->on_click = [this] { OUTPUT_DO_1Combo_Click(); };
  }
}

std::vector<Field> Form4::Table() {
  const auto point = [](TextBox& text, int address, int caption, Group group, Label& unit, const char* key,
                        const char* unit_key, CheckBox& box) {
    return Field{.box = &box,
                 .text = &text,
                 .address = static_cast<std::uint16_t>(address),
                 .wire = Wire::kDouble,
                 .show = ShowAs::kDigits,
                 .digits = 8,
                 .caption = caption,
                 .group = group,
                 .unit = &unit,
                 .unit_kind = UnitKind::kOwn,
                 .key = key,
                 .unit_key = unit_key};
  };
  CheckBox& all = SELECT_Check;
  return {
      {.box = &all,
       .list = &CH_Combo,
       .address = kChannelBlock,
       .caption = 179,
       .group = kChannelGroup,
       .key = "CH_SELECT"},
      {.box = &all,
       .list = &OUTPUT_DO_1Combo,
       .address = 0x005A,
       .caption = 199,
       .group = kOutputGroup,
       .key = "DO_OUTPUT_Data"},
      {.box = &all,
       .list = &DO1_AlarmCombo,
       .address = 0x005C,
       .caption = 242,
       .group = kOutputGroup,
       .key = "DO_ALARM_Data"},
      {.box = &all,
       .options = {&optDO1FlowSWHigh, &optDO1FlowSWLow},
       .address = 0x005E,
       .caption = 243,
       .group = kOutputGroup,
       .key = "DO_FLOW_SW_Data",
       .index_of_code = [](int code) { return code == 0 ? 0 : 1; }},
      point(DO1_RyuryoText(0), 0x0060, 243, kOutputGroup, LabelRyuryoUnit(0), "DO_FLOW_SW_HIGH_Data",
            "DO_FLOW_SW_HIGH_Unit", all),
      point(DO1_RyuryoText(1), 0x0068, 243, kOutputGroup, LabelRyuryoUnit(1), "DO_FLOW_SW_LOW_Data",
            "DO_FLOW_SW_LOW_Unit", all),
      point(DO1_SekisanText, 0x0070, 244, kOutputGroup, LabelSekisanUnit, "DO_TOTAL_SW_Data",
            "DO_TOTAL_SW_Unit", all),
      {.box = &all,
       .list = &MODE_DO_1Combo,
       .address = 0x0078,
       .caption = 617,
       .group = kOutputGroup,
       .key = "DO_CONTACT_ACTION_Data"},
      {.box = &all,
       .options = {&optFLOW_SWITCH_T_HIGH, &optFLOW_SWITCH_T_LOW},
       .address = kThermalBlock,
       .caption = 607,
       .group = kThermalGroup,
       .key = "H_FLOW_SW_Data",
       .index_of_code = [](int code) { return code == 0 ? 0 : 1; }},
      point(H_RyuryoText(0), 0x0432, 607, kThermalGroup, LabelHRyuryoUnit(0), "H_FLOW_SW_HIGH_Data",
            "H_FLOW_SW_HIGH_Unit", all),
      point(H_RyuryoText(1), 0x043A, 607, kThermalGroup, LabelHRyuryoUnit(1), "H_FLOW_SW_LOW_Data",
            "H_FLOW_SW_LOW_Unit", all),
      point(H_TOTALText, 0x0442, 608, kThermalGroup, LabelHSekisanUnit, "H_TOTAL_SW_Data", "H_TOTAL_SW_Unit",
            all),
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

void Form4::BuildLists() {
  const CodeContext codes = app().Codes();
  FillList(CH_Combo, ListTexts(codes, 43));
  FillList(DO1_AlarmCombo, ListTexts(codes, 15));
  FillList(MODE_DO_1Combo, ListTexts(codes, 16));
  BuildFlowUnitNames(app());
  BuildTotalUnitNames(app());
  BuildHeatFlowUnitNames(app());
  BuildHeatTotalUnitNames(app());
  FillOutputList();
}

void Form4::FillOutputList() {
  std::vector<std::string> items = ListTexts(app().Codes(), 14);
  if (Output() != kReserveOutput) items.resize(kAllFunctions);
  if (app().state.PathMode == 2 || app().state.SpecClass == 1) items.resize(kFlowFunctions);
  if (items == OUTPUT_DO_1Combo.Items()) return;
  const int index = OUTPUT_DO_1Combo.ListIndex();
  FillList(OUTPUT_DO_1Combo, items);
  OUTPUT_DO_1Combo.SetListIndex(index);
  OUTPUT_DO_1Combo_Click();
}

void Form4::Form_Load() {
  ParameterPage::Form_Load();
  DigitalOutputSelect(Output()).SetValue(true);
  SELECT_Check_Click();
  MODE_DO_1_Click();
}

void Form4::SetteiHannei() {
  // The list must hold what the slot may select before the slots are shown.
  FillOutputList();
  ParameterPage::SetteiHannei();
  SELECT_Check_Click();
}

void Form4::Form_Activate() {
  channel_config_ = AskChannelConfig(app(), *this);
  const bool single = app().state.SpecClass == 1;
  DigitalOutputSelect(2).SetEnabled(!single);
  DigitalOutputSelect(kLastOutput).SetEnabled(!single);
  FillOutputList();
  SELECT_Check_Click();
  ParameterPage::Form_Activate();
}

void Form4::C05_STATUS_FrmInit() {
  SetCaption(app().Text(720));
  SetCaptions({{&ReadParameter, 2030},
               {&SetParameter, 1650},
               {&SaveParameter, 2140},
               {&chkCheck, text::kSelectAll},
               {&lblChannel, 179},
               {&lblOutput, 199},
               {&LabelAlarm, 242},
               {&LabelRyuryoSW, 243},
               {&LabelSekisanSW, 244},
               {&LabelHRyuryoSW, 607},
               {&LabelHSekisanSW, 608},
               {&optDO1FlowSWHigh, 2460},
               {&optDO1FlowSWLow, 2470},
               {&optFLOW_SWITCH_T_HIGH, 621},
               {&optFLOW_SWITCH_T_LOW, 622},
               {&MODE_DO_1, 617}});
  constexpr const char* kOutputs[] = {"DO1", "DO2", "DO3", "DO4"};
  DigitalOutputSelect.ForEach([&](OptionButton& option) { option.SetCaption(kOutputs[option.Index()]); });
  SELECT_Check.SetCaption(kOutputs[Output()]);
  BuildFlowUnitNames(app());
  BuildTotalUnitNames(app());
  ShowUnits();
}

void Form4::Taihi_Form4() { ControlsToSlots(); }

void Form4::Text_Box_Enable() {
  SELECT_Check_Click();
  MODE_DO_1_Click();
}

void Form4::Text_Box_Able() {
  SELECT_Check_Click();
  MODE_DO_1_Click();
}

void Form4::DigitalOutputSelect_Click(int index) {
  if (app().state.UiLocked) {
    // A running exchange goes on with the output that it began with.
    DigitalOutputSelect(Output()).SetValue(true);
    return;
  }
  app().state.OutputIndex = index;
  SELECT_Check.SetCaption(DigitalOutputSelect(index).Caption());
  FillOutputList();
}

void Form4::SELECT_Check_Click() {
  const bool on = SELECT_Check.Ticked();
  const bool one_channel = channel_config_ == kOneChannel;
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

void Form4::CH_Combo_Click() { ShowUnitCaptions(); }

void Form4::ShowUnitCaptions() {
  for (const Field& field : Fields()) {
    if (field.unit != nullptr) SetUnitCaption(field);
  }
}

std::string Form4::UnitText(const Field& field) {
  const auto name = [](const std::vector<std::string>& names, int code) {
    return code >= 0 && code < static_cast<int>(names.size()) ? names[static_cast<std::size_t>(code)]
                                                              : std::string();
  };
  const SharedState& state = app().state;
  if (field.group == kThermalGroup) {
    return field.text == &H_TOTALText ? name(state.HeatTotalUnitNames, state.HeatTotalUnit)
                                      : name(state.HeatFlowUnitNames, state.HeatFlowUnit);
  }
  const auto channel = static_cast<std::size_t>(std::max(CH_Combo.ListIndex(), 0));
  if (field.text == &DO1_SekisanText) return name(state.TotalUnitNames, state.TotalUnit[channel]);
  if (state.RangeKind[channel] == 0)
    return state.BaseUnitNames.at(static_cast<std::size_t>(UnitKind::kVelocity));
  return name(state.FlowUnitNames, state.RangeUnit[channel]);
}

// --- exchanges -----------------------------------------------------------------------------------------

// A parameter file may name an output that there is not.
int Form4::Output() const {
  const int index = app().state.OutputIndex;
  return index >= 0 && index <= kLastOutput ? index : 0;
}

int Form4::AddressOf(const Field& field) {
  const int output = Output();
  switch (field.group) {
    case kChannelGroup:
      return field.address + 2 * output;
    case kThermalGroup:
      return field.address + kThermalStride * output;
    default:
      break;
  }
  if (output == kLastOutput) return field.address - kOutputBlock + kFourthOutput;
  return field.address + kOutputStride * output;
}

void Form4::ReadBlocks() {
  const bool single = app().state.SpecClass != 0;
  if (!single) ReadBlock(0x03, kChannelBlock, 4);
  if (Output() == kLastOutput) {
    ReadBlock(0x03, kFourthOutput, 16);
  } else {
    ReadBlock(0x03, kOutputBlock, single ? 32 : 48);
  }
  ReadUnits();
  if (!single) ReadBlock(0x03, kThermalBlock, 52);
}

void Form4::ReadUnits() {
  const int channel = std::max(CH_Combo.ListIndex(), 0);
  GetRangeKind(app(), channel);
  GetRangeUnit(app(), channel);
  GetTotalUnit(app(), channel);
  if (app().state.SpecClass == 0) {
    GetHeatFlowUnit(app());
    GetHeatTotalUnit(app());
  }
  ShowUnitCaptions();
}

bool Form4::FieldTakesPart(const Field& field) {
  if (!SELECT_Check.Ticked()) return false;
  // Only the switch point of the direction that the meter uses has a meaning; the other text is left alone.
  for (const Function& function : functions_) {
    for (int i = 0; function.points != nullptr && i < 2; ++i) {
      if (field.text == &(*function.points)(i)) return DirectionOf(function) == i;
    }
  }
  return true;
}

void Form4::FieldWasRead(const Field& field, int) {
  if (field.list == nullptr) OUTPUT_DO_1Combo_Click();
}

ParameterColumn::Outcome Form4::WriteFields() {
  if (!SELECT_Check.Ticked() || OUTPUT_DO_1Combo.ListIndex() < 0) return Outcome::kGoOn;
  std::vector<const Control*> entries = {&OUTPUT_DO_1Combo};
  if (app().state.SpecClass == 0) entries.insert(entries.begin(), &CH_Combo);
  Outcome outcome = WriteInOrder(entries);
  if (outcome == Outcome::kGoOn) outcome = WriteFunction();
  if (outcome == Outcome::kGoOn && MODE_DO_1.Ticked()) outcome = WriteField(FieldOf(MODE_DO_1Combo));
  return outcome;
}

ParameterColumn::Outcome Form4::WriteFunction() {
  const Function* chosen = ChosenFunction();
  if (chosen == nullptr) return Outcome::kGoOn;
  if (chosen->value != nullptr) return WriteField(FieldOf(*chosen->value));
  const int direction = DirectionOf(*chosen);
  if (direction < 0) return Outcome::kGoOn;
  return WriteInOrder({chosen->directions[0], &(*chosen->points)(direction)});
}

}  // namespace vlt
