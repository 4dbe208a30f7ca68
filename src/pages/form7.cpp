// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form7.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

#include "meter/maintenance_table.h"
#include "resources/text_ids.h"
#include "state/form_lock.h"
#include "state/tested_meters.h"
#include "values/codecs.h"
#include "values/input_check.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr int kTestOff = 0;
constexpr int kTestOn = 1;

const std::vector<std::string> kPointItems = {"4", "20"};

bool IsBlank(const TextBox& box) { return Trim(box.Text()).empty(); }

bool Counts(const CheckBox& box) { return box.Enabled() && box.Ticked(); }

}  // namespace

Form7::Form7(App& app)
    : ParameterPage(app, "Form7",
                    {.title = 1070,
                     .set_started = 3996,
                     .set_completed = 4006,
                     .read_started = 4016,
                     .read_completed = 4026}),
      outputs_{AnalogOutput{AO_Check,
                            ADJUSTMENT,
                            ADJUSTMENTCombo,
                            ADJUSTMENText,
                            UpDown1,
                            AO_DEFINITIONCheck,
                            AO_DEFINITIONText,
                            UpDown2,
                            501,
                            kAo1AdjustmentBlock,
                            {&MaintenanceRow("ao1_adjustment_4ma"), &MaintenanceRow("ao1_adjustment_20ma")}},
               AnalogOutput{AO2_Check,
                            ADJUSTMENT2,
                            ADJUSTMENTCombo2,
                            ADJUSTMENText2,
                            UpDown3,
                            AO2_DEFINITIONCheck,
                            AO2_DEFINITIONText,
                            UpDown4,
                            502,
                            kAo2AdjustmentBlock,
                            {&MaintenanceRow("ao2_adjustment_4ma"), &MaintenanceRow("ao2_adjustment_20ma")}}},
      // In this order: the first that is chosen is set.
      checks_{DigitalCheck{OUTPUT_DOOption, OUTPUT_DOCombo},
              DigitalCheck{SEKISAN_PULSEOption, SEKISAN_PULSEText},
              DigitalCheck{OUTPUT_DO2_FREQUENCYCheck, OUTPUT_DO2_FREQUENCYtxt}} {
  column().SetFields(Table());
  TieOutput(outputs_[0], outputs_[1]);
  TieOutput(outputs_[1], outputs_[0]);
  TieTexts();
  for (const DigitalCheck& check : checks_) check.option.on_click = [this] { BoxClicked(chkDO); };
  // Boxes that stand for a group and have no entry of their own.
  for (CheckBox* box : {&AO_Check, &AO2_Check, &TEMPCheck}) {
    box->on_click = [this, box] { BoxClicked(*box); };
  }
  ReleaseParameter.on_click = [this] { ReleaseParameter_Click(); };
}

std::vector<Field> Form7::Table() {
  std::vector<Field> fields;
  for (const AnalogOutput& output : outputs_) {
    const int index = &output == &outputs_[0] ? 0 : 1;
    for (const Parameter* row : output.rows) fields.push_back(Bind(*row, output.adjustment, output.value));
    fields.push_back(Bind(MaintenanceRow("ao_check"), output.check, output.percent, &lblPercent(index)));
  }
  fields.push_back(Bind(MaintenanceRow("do_check"), chkDO, OUTPUT_DOCombo));
  fields.push_back(Bind(MaintenanceRow("pulse_check"), chkDO, SEKISAN_PULSEText, &lblPulseUnit));
  fields.push_back(
      Bind(MaintenanceRow("frequency_check"), chkDO, OUTPUT_DO2_FREQUENCYtxt, &lblFrequencyUnit));
  fields.push_back(Bind(MaintenanceRow("test_input"), TEST_MODECheck, INPUT_DATAText, &lblInputUnit));
  fields.push_back(
      Bind(MaintenanceRow("tracking_time"), TEST_MODECheck, TRACKING_TIMEText, &lblTrackingUnit));
  fields.push_back(Bind(MaintenanceRow("supply_input"), CONFIRM_TSCheck, CONFIRM_TStxt));
  fields.push_back(Bind(MaintenanceRow("return_input"), CONFIRM_TRCheck, CONFIRM_TRtxt));
  return fields;
}

void Form7::TieOutput(AnalogOutput& output, AnalogOutput& other) {
  output.point.on_click = [this, &output] { ADJUSTMENTCombo_Click(output); };
  output.value.on_change = [this, &output] { AdjustText_Change(output); };
  output.check.on_click = [this, &output, &other] { AO_DEFINITIONCheck_Click(output, other); };
  output.percent.on_change = [this, &output, &other] { PercentText_Change(output, other); };
  TieSpin(output.value_spin, output.value);
  TieSpin(output.percent_spin, output.percent);
}

void Form7::TieTexts() {
  for (const Field& field : column().Fields()) {
    if (field.text == nullptr) continue;
    TextBox& text = *field.text;
    text.on_lost_focus = [this, &text] { CheckOrClear(text); };
    if (text.Locked()) text.on_lost_focus = nullptr;
  }
}

// --- life of the page ------------------------------------------------------------------------------------

void Form7::BuildLists() {
  ParameterPage::BuildLists();
  for (const AnalogOutput& output : outputs_) FillList(output.point, kPointItems);
}

void Form7::C11_MENTE_FrmInit() {
  SetPageCaptions({{&ReleaseParameter, text::kTestCancel},
                   {&AO_Check, 501},
                   {&AO2_Check, 502},
                   {&lblPointUnit(0), text::kMilliampere},
                   {&lblPointUnit(1), text::kMilliampere},
                   {&chkDO, 247},
                   {&FrameDO, text::kCheck},
                   {&OUTPUT_DOOption, 241},
                   {&SEKISAN_PULSEOption, 1600},
                   {&OUTPUT_DO2_FREQUENCYCheck, 503},
                   {&TEST_MODECheck, text::kTestMode},
                   {&lblInputData, 2040},
                   {&lblTrackingTime, 860},
                   {&TEMPCheck, 554}});
  ShowHints();
}

void Form7::ShowHints() {
  for (const AnalogOutput& output : outputs_) ShowPointHint(output);
  for (const DigitalCheck& check : checks_) check.option.SetHint(check.entry.Hint());
  chkDO.SetHint("");
  const Parameter& test_mode = MaintenanceRow("test_mode");
  TEST_MODECheck.SetHint(FieldHint(app(), test_mode, test_mode.address));
}

void Form7::ShowPointHint(const AnalogOutput& output) {
  const Parameter& row = *output.rows[output.point.ListIndex() == 1 ? 1 : 0];
  const std::string hint = FieldHint(app(), row, row.address);
  output.value.SetHint(hint);
  output.adjustment.SetHint(hint);
}

void Form7::SetteiHannei() {
  const MaintenanceTexts& kept = app().state.Maintenance;
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    outputs_[i].AdjustText4 = kept.adjustments[i].text_4ma;
    outputs_[i].AdjustText20 = kept.adjustments[i].text_20ma;
    outputs_[i].point.SetListIndex(kept.adjustments[i].point);
    if (kept.adjustments[i].point >= 0)
      outputs_[i].value.SetText(outputs_[i].TextOf(kept.adjustments[i].point));
    outputs_[i].percent.SetText(kept.ao_percent);
  }
  OUTPUT_DOCombo.SetListIndex(kept.do_index);
  SEKISAN_PULSEText.SetText(kept.pulse);
  OUTPUT_DO2_FREQUENCYtxt.SetText(kept.do2_frequency);
  INPUT_DATAText.SetText(kept.input_data);
  TRACKING_TIMEText.SetText(kept.tracking_time);
}

void Form7::Taihi_Form7() {
  MaintenanceTexts& kept = app().state.Maintenance;
  for (std::size_t i = 0; i < outputs_.size(); ++i) {
    kept.adjustments[i] = {.point = outputs_[i].point.ListIndex(),
                           .text_4ma = outputs_[i].AdjustText4,
                           .text_20ma = outputs_[i].AdjustText20};
  }
  kept.ao_percent = Trim(IsBlank(AO_DEFINITIONText) ? AO2_DEFINITIONText.Text() : AO_DEFINITIONText.Text());
  kept.do_index = OUTPUT_DOCombo.ListIndex();
  kept.pulse = Trim(SEKISAN_PULSEText.Text());
  kept.do2_frequency = Trim(OUTPUT_DO2_FREQUENCYtxt.Text());
  kept.input_data = Trim(INPUT_DATAText.Text());
  kept.tracking_time = Trim(TRACKING_TIMEText.Text());
}

void Form7::Form_Activate() {
  AskChannelConfig(app(), *this);
  FollowShape();
  // Behind the lock, which releases every button. A page that was hidden still holds its values.
  ParameterPage::Form_Activate();
}

void Form7::Form_Deactivate() {
  Taihi_Form7();
  ParameterPage::Form_Deactivate();
}

void Form7::EnableCommands(bool enabled) {
  ParameterPage::EnableCommands(enabled);
  ReleaseParameter.SetEnabled(enabled);
}

// --- what is enabled -------------------------------------------------------------------------------------

std::vector<CheckBox*> Form7::Boxes() {
  return {&AO_Check,        &ADJUSTMENT,     &AO_DEFINITIONCheck,
          &AO2_Check,       &ADJUSTMENT2,    &AO2_DEFINITIONCheck,
          &chkDO,           &TEST_MODECheck, &TEMPCheck,
          &CONFIRM_TSCheck, &CONFIRM_TRCheck};
}

void Form7::FollowShape() {
  const bool single = IsSingleChannel(app().state);
  if (single) {
    for (CheckBox* box : {&AO2_Check, &ADJUSTMENT2, &AO2_DEFINITIONCheck}) box->SetValue(0);
    ADJUSTMENTCombo2.SetListIndex(-1);
    AO2_DEFINITIONText.SetText("");
    OUTPUT_DO2_FREQUENCYCheck.SetValue(false);
  }
  AO2_Check.SetEnabled(!single);
  const bool heat = MayHaveHeat(app().state);
  if (!heat) TEMPCheck.SetValue(0);
  TEMPCheck.SetEnabled(heat);
  Frame6.SetEnabled(heat);
  EnableControls();
}

void Form7::EnableControls() {
  for (const AnalogOutput& output : outputs_) EnableOutput(output);
  const bool digital = Counts(chkDO);
  for (const DigitalCheck& check : checks_) {
    const bool exists = &check.option != &OUTPUT_DO2_FREQUENCYCheck || !IsSingleChannel(app().state);
    check.option.SetEnabled(digital && exists);
    check.entry.SetEnabled(digital && exists && check.option.Value());
  }
  const bool test = Counts(TEST_MODECheck);
  INPUT_DATAText.SetEnabled(test);
  TRACKING_TIMEText.SetEnabled(test);
  const bool inputs = Counts(TEMPCheck);
  CONFIRM_TSCheck.SetEnabled(inputs);
  CONFIRM_TRCheck.SetEnabled(inputs);
  CONFIRM_TStxt.SetEnabled(Counts(CONFIRM_TSCheck));
  CONFIRM_TRtxt.SetEnabled(Counts(CONFIRM_TRCheck));
}

void Form7::EnableOutput(const AnalogOutput& output) const {
  const bool on = Counts(output.group);
  for (Control* control :
       {static_cast<Control*>(&output.adjustment), static_cast<Control*>(&output.check),
        static_cast<Control*>(&output.value_spin), static_cast<Control*>(&output.percent_spin)}) {
    control->SetEnabled(on);
  }
  output.point.SetEnabled(Counts(output.adjustment));
  output.value.SetEnabled(Counts(output.adjustment));
  output.percent.SetEnabled(Counts(output.check));
}

// An entry that gets enabled is checked.
void Form7::BoxClicked(CheckBox&) {
  std::vector<TextBox*> disabled;
  for (const Field& field : column().Fields()) {
    if (field.text != nullptr && !field.text->Enabled() && !field.text->Locked()) {
      disabled.push_back(field.text);
    }
  }
  EnableControls();
  for (TextBox* text : disabled) {
    if (text->Enabled()) CheckOrClear(*text);
  }
}

void Form7::CheckOrClear(TextBox& box) {
  const int fault = TypedNumberFault(box.Text());
  if (fault == 0) return;
  app().Show(app().Text(fault));
  if (fault == text::kNotANumber) box.SetText("");
  box.SetFocus();
}

// --- analog outputs --------------------------------------------------------------------------------------

void Form7::ADJUSTMENTCombo_Click(AnalogOutput& output) {
  const int point = output.point.ListIndex();
  // A text that was typed before any point was chosen belongs to the one that is chosen now.
  const bool adopts = output.shown_point < 0 && point >= 0 && output.TextOf(point).empty();
  output.shown_point = point;
  if (adopts) {
    AdjustText_Change(output);
    output.value.Enter(output.value.Text());
  } else if (point >= 0) {
    output.value.SetText(output.TextOf(point));
  }
  ShowPointHint(output);
}

void Form7::AdjustText_Change(AnalogOutput& output) {
  if (output.shown_point >= 0) output.TextOf(output.shown_point) = Trim(output.value.Text());
}

void Form7::AO_DEFINITIONCheck_Click(const AnalogOutput& output, const AnalogOutput& other) {
  if (output.check.Ticked() && !IsSingleChannel(app().state)) {
    // The value of the output that is in use counts, and a value more than none.
    const bool takes = IsBlank(output.percent) || (Counts(other.check) && !IsBlank(other.percent));
    const AnalogOutput& from = takes ? other : output;
    const AnalogOutput& to = takes ? output : other;
    to.percent.SetText(from.percent.Text());
  }
  BoxClicked(output.check);
}

void Form7::PercentText_Change(const AnalogOutput& output, const AnalogOutput& other) {
  if (Counts(output.check) && Counts(other.check)) other.percent.SetText(output.percent.Text());
}

void Form7::TieSpin(UpDown& spin, TextBox& text) {
  spin.on_up = [this, &text] { Spin(text, 1); };
  spin.on_down = [this, &text] { Spin(text, -1); };
}

// The text becomes a whole number in plain form. It stays where the next one would not fit the field.
void Form7::Spin(TextBox& text, int step) {
  const auto number = IsBlank(text) ? 0.0 : ParseNumber(text.Text());
  if (!number) return;
  const Parameter& row = *column().FieldOf(text).parameter;
  for (const double next : {std::trunc(*number) + step, std::trunc(*number)}) {
    const std::string plain = PlainText(next);
    const bool fits = static_cast<int>(CharCount(plain)) <= row.length.In(app().state.UnitFlag);
    if (!fits || EncodeText(row, app().state, plain).fault != TextFault::kNone) continue;
    text.Enter(plain);
    return;
  }
}

// --- reading ---------------------------------------------------------------------------------------------

bool Form7::AnythingSelected() { return IsAnyChecked(*this); }

void Form7::ReadBlocks() {
  AskChannelConfig(app());
  FollowShape();
  for (AnalogOutput& output : outputs_) {
    if (Counts(output.adjustment)) ReadAdjustment(output);
  }
  if (ReadChecks() && Counts(chkDO) && OUTPUT_DO2_FREQUENCYCheck.Value()) ReadAndNote(kFrequencyCheckBlock);
  if (Counts(CONFIRM_TSCheck)) column().ReadBlock(kSupplyInputBlock);
  if (Counts(CONFIRM_TRCheck)) column().ReadBlock(kReturnInputBlock);
}

void Form7::ReadAdjustment(AnalogOutput& output) {
  RegisterData data;
  if (!column().FetchBlock(output.block, data)) return;
  std::array<std::string, 2> texts;
  for (int point = 0; point < 2; ++point) {
    const auto index = static_cast<std::size_t>(point);
    const Parameter& row = *output.rows[index];
    const auto at = static_cast<std::size_t>(row.address - output.block.address);
    texts[index] = AdjustmentText(row, std::span(data).subspan(at, 2), output.TextOf(point));
    NoteBehind(output, row, texts[index]);
  }
  column().ShowBlock(output.block, data);
  output.AdjustText4 = texts[0];
  output.AdjustText20 = texts[1];
  if (output.shown_point >= 0) output.value.SetText(output.TextOf(output.shown_point));
}

// A number that was typed with a sign keeps it while it is what the meter holds.
std::string Form7::AdjustmentText(const Parameter& row, std::span<const std::uint8_t> bytes,
                                  const std::string& typed) {
  const double sent = std::trunc(ParseNumber(typed).value_or(0));
  if (sent < 0) {
    const std::vector<std::uint8_t> held = EncodeText(row, app().state, typed).bytes;
    if (std::equal(held.begin(), held.end(), bytes.begin(), bytes.end())) return PlainText(sent);
  }
  return vlt::ShowValue(row, app().state, bytes, 0);
}

void Form7::NoteBehind(const AnalogOutput& output, const Parameter& row, const std::string& value) {
  for (const Field& field : column().Fields()) {
    if (field.text == &output.value && field.parameter == &row) {
      column().Origins().WasReadBehind(field, value);
    }
  }
}

// False when the meter has not answered.
bool Form7::ReadChecks() {
  const bool digital = Counts(chkDO) && (OUTPUT_DOOption.Value() || SEKISAN_PULSEOption.Value());
  const bool wanted =
      Counts(AO_DEFINITIONCheck) || Counts(AO2_DEFINITIONCheck) || digital || Counts(TEST_MODECheck);
  return !wanted || ReadAndNote(kTestBlock);
}

bool Form7::ReadAndNote(const Block& block) {
  RegisterData data;
  if (!column().FetchBlock(block, data)) return false;
  column().ShowBlock(block, data);
  const auto is_set = [&](const Parameter& row) {
    const int at = row.address - block.address;
    return at >= 0 && at < static_cast<int>(data.size()) &&
           CodeAt(row, data, static_cast<std::size_t>(at)) != 0;
  };
  const bool checked = std::any_of(std::begin(kOutputChecks), std::end(kOutputChecks),
                                   [&](const Parameter* row) { return is_set(*row); });
  if (checked || is_set(MaintenanceRow("test_mode"))) MeterIsInTest(app());
  return true;
}

bool Form7::FieldTakesPart(const Field& field) {
  if (!field.Ticked()) return false;
  for (const DigitalCheck& check : checks_) {
    if (&field.Entry() == &check.entry) return check.option.Enabled() && check.option.Value();
  }
  return IsShown(field);
}

bool Form7::IsShown(const Field& field) {
  for (const AnalogOutput& output : outputs_) {
    if (field.text != &output.value) continue;
    const int point = output.point.ListIndex();
    return point >= 0 && field.parameter == output.rows[static_cast<std::size_t>(point)];
  }
  return true;
}

// --- setting ---------------------------------------------------------------------------------------------

bool Form7::AnythingToSet() { return AnythingSelected() || TestModeIsToEnd(); }

// A test mode that was set here before is switched off by clearing its box.
bool Form7::TestModeIsToEnd() const {
  return !TEST_MODECheck.Ticked() && !IsBlank(INPUT_DATAText) && !IsBlank(TRACKING_TIMEText);
}

bool Form7::MaySet() {
  if (!TEST_MODECheck.Ticked()) return true;
  for (TextBox* text : {&INPUT_DATAText, &TRACKING_TIMEText}) {
    if (!IsBlank(*text)) continue;
    text->SetMark(app().Text(text::kTestNeedsValue));
    text->SetFocus();
    return false;
  }
  return true;
}

void Form7::PlanWrites(WritePlan& plan) {
  for (const AnalogOutput& output : outputs_) PlanOutput(plan, output);
  for (const DigitalCheck& check : checks_) {
    if (!check.option.Enabled() || !check.option.Value()) continue;
    column().PlanField(plan, column().FieldOf(check.entry));
    break;
  }
  PlanTestMode(plan);
}

void Form7::PlanOutput(WritePlan& plan, const AnalogOutput& output) {
  for (const Field& field : column().Fields()) {
    if (field.text == &output.value && FieldTakesPart(field)) column().PlanField(plan, field);
  }
  column().PlanField(plan, column().FieldOf(output.percent));
}

void Form7::PlanTestMode(WritePlan& plan) {
  const bool on = TEST_MODECheck.Ticked();
  if (!on && !TestModeIsToEnd()) return;
  plan.Add({.name = app().Text(on ? text::kTestMode : text::kTestCancel),
            .address = MaintenanceRow("test_mode").address,
            .write = WriteWith::kSingle,
            .data = EncodeCode(on ? kTestOn : kTestOff)});
  if (on) column().PlanInOrder(plan, {&INPUT_DATAText, &TRACKING_TIMEText});
}

void Form7::WriteFailed(const PlannedWrite& write, WriteResult result) {
  if (result != WriteResult::kRefused) NoteTest(write);
}

void Form7::NoteTest(const PlannedWrite& write) {
  const bool checks = std::any_of(std::begin(kOutputChecks), std::end(kOutputChecks),
                                  [&](const Parameter* row) { return row->address == write.address; });
  const bool tests =
      write.address == MaintenanceRow("test_mode").address && BytesToInt16(write.data, 0) != kTestOff;
  if (checks || tests) MeterIsInTest(app());
}

std::string Form7::FailureName(const Field& field) {
  for (const AnalogOutput& output : outputs_) {
    const std::string name = app().Text(output.name) + " ";
    if (field.text == &output.value) return name + app().Text(text::kAdjustment);
    if (field.text == &output.percent) return name + app().Text(text::kCheck);
  }
  if (field.list == &OUTPUT_DOCombo) return app().Text(text::kDigitalCheckName);
  return ParameterPage::FailureName(field);
}

// --- end of the test state -------------------------------------------------------------------------------

void Form7::ReleaseParameter_Click() {
  Operation operation(app(), *this, ReleaseParameter.Name(), text::kTestModeCancellationWasStarted);
  if (!operation.OpenPortOrTell()) return;
  if (EndTestState()) {
    MeterTestHasEnded(app());
    operation.End(app().Text(text::kTestModeCancellationWasCompleted) + " " + app().state.LastErrorText);
    return;
  }
  const std::string failure = app().Text(text::kTestMode) + " " + app().Text(text::kItHasNotCanceled);
  operation.ShowNormalPointer();
  app().Show(failure, MessageIcon::kStop);
  operation.End(failure + " " + app().state.LastErrorText);
}

bool Form7::EndTestState() {
  RegisterData data;
  return WriteRegister(app(), kTestStateBlock.address, kTestOff).Proven() &&
         ReadRegisters(app(), SpanOf(kTestStateBlock, 0), data) && BytesToInt16(data, 0) == kTestOff;
}

}  // namespace vlt
