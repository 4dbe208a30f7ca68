// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form6.h"

#include <algorithm>
#include <utility>

#include "files/csv_question.h"
#include "files/file_report.h"
#include "link/modbus.h"
#include "meter/device_queries.h"
#include "meter/offered_codes.h"
#include "meter/settings_report.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_pages.h"
#include "state/form_lock.h"
#include "values/input_check.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kTwoPipes = 2;     // of MEASUREMENT_MODECombo
constexpr int kSettleMs = 3000;  // the meter works on its memory
constexpr int kAskAgainMs = 100;
constexpr int kLanguagePanel = 2;
constexpr const char* kFactoryUser = "Factory";

}  // namespace

Form6::Form6(App& app)
    : ParameterPage(app, "Form6",
                    {.title = 650,
                     .set_started = 3997,
                     .set_completed = text::kSettingOfSystemWasCompleted,
                     .read_started = 4017,
                     .read_completed = 4027}) {
  // Version and type have one tick.
  fields_.push_back(Bind(SystemRow("type"), CONTROL_BOARDText.box, txtType));
  BindEntries();
  for (TextBox* box : {&IDNUM_CONFIGText, &SPEC_Text}) {
    box->on_lost_focus = [this, box] { CheckFourDigits(*box); };
  }
  MEASUREMENT_MODECombo.on_click = [this] { MEASUREMENT_MODECombo_Click(); };
  CommandMemoryInit.on_click = [this] { CommandMemoryInit_Click(); };
  Save_As.on_click = [this] { Save_As_Click(); };
  tmrSaveAs.on_timer = [this] { tmrSaveAs_Timer(); };
  tmrSaveAs.SetInterval(kAskAgainMs);
  Read_All_Set_Data.on_click = [this] { Read_All_Set_Data_Click(); };
  cmdStopReadAll.on_click = [this] { cmdStopReadAll_Click(); };
  FileName.SetLocked(true);
  cmdStopReadAll.SetEnabled(false);
}

// --- life of the page --------------------------------------------------------------------------------------

void Form6::Form_Load() {
  ParameterPage::Form_Load();
  Read_All_Set_Data_Click();
}

void Form6::SetteiHannei() {
  for (const Field& field : column().Fields()) {
    if (!app().slots[field.parameter->slot].empty()) column().RestoreEntry(field);
  }
}

void Form6::Form_Activate() {
  config_ = AskChannelConfig(app(), *this);
  EnableMeasureSetup();
  RebuildOutSourceLists();
  ParameterPage::Form_Activate();
}

void Form6::EnableCommands(bool enabled) {
  ParameterPage::EnableCommands(enabled);
  CommandMemoryInit.SetEnabled(enabled);
}

void Form6::C06_SYSTEM_FrmInit() {
  SetPageCaptions({{&Frame8, 401},
                   {&FrameMemory, 1685},
                   {&CommandMemoryInit, 1686},
                   {&Read_All_Set_Data, 1700},
                   {&Label3, 1010},
                   {&Save_As, 2150},
                   {&cmdStopReadAll, text::kStop}});
}

// --- boxes and lists ---------------------------------------------------------------------------------------

bool Form6::AnythingSelected() { return IsAnyChecked(*this); }

std::vector<CheckBox*> Form6::Boxes() {
  std::vector<CheckBox*> boxes = column().DistinctBoxes();
  std::erase(boxes, &SPEC_Text.box);
  boxes.push_back(&Read_All_Set_Data);
  return boxes;
}

void Form6::All_OnOff(int value) {
  // A new specification costs the meter's memory: in passing it is ticked by the factory alone, and what was
  // ticked before is cleared for everybody else.
  SPEC_Text.box.SetValue(value == 1 && app().state.UserInfo == kFactoryUser ? 1 : 0);
  column().TickAll(value);
}

void Form6::Text_Box_Enable() {
  ColumnRules::Text_Box_Enable();
  SPEC_Text.SetEnabled(SPEC_Text.box.Ticked());
}

void Form6::BoxClicked(CheckBox& box) {
  if (&box == &MEASUREMENT_MODECombo.box) return MEASUREMENT_MODECheck_Click();
  column().FollowBox(box);
}

void Form6::MEASUREMENT_MODECheck_Click() {
  column().FollowBox(MEASUREMENT_MODECombo.box);
  if (MEASUREMENT_MODECombo.box.Ticked()) {
    MEASUREMENT_MODECombo_Click();
  } else {
    CALCULATIONCombo.box.SetValue(0);
    Depend(CALCULATIONCombo, false);
  }
}

void Form6::MEASUREMENT_MODECombo_Click() {
  const int mode = MEASUREMENT_MODECombo.ListIndex();
  const bool two_pipes = mode < 0 ? config_ == ChannelConfig::kTwoPipes : mode == kTwoPipes;
  Depend(CALCULATIONCombo, two_pipes && !IsSingleChannel(app().state));
  RebuildOutSourceLists();
}

void Form6::EnableMeasureSetup() {
  const bool on = !IsSingleChannel(app().state);
  Frame8.SetEnabled(on);
  for (const Control* entry :
       {&MEASUREMENT_MODECombo, &CALCULATIONCombo, &A01_OUT_SOURCECombo, &A02_OUT_SOURCECombo}) {
    const Field& field = column().FieldOf(*entry);
    if (!on) field.box->SetValue(0);
    const bool calculation = entry == &CALCULATIONCombo;
    Depend(*field.box, *field.list, on && (!calculation || config_ == ChannelConfig::kTwoPipes));
  }
}

// The lists of sources follow the mode that the page shows, whatever the meter is; while it shows none, that
// of the meter counts.
MeterFacts Form6::FactsOfList(const Field& field) {
  MeterFacts facts = ParameterPage::FactsOfList(field);
  if (!IsSource(field)) return facts;
  const int mode = MEASUREMENT_MODECombo.ListIndex();
  return FactsInMode(mode >= 0 ? mode : PathModeOf(KnownChannelConfig(facts)));
}

MeterFacts Form6::FactsInMode(int mode) const {
  MeterFacts facts = app().state;
  if (!HasSeveralChannels(facts)) facts.SpecClass = kFullModel;
  facts.PathMode = mode;
  return facts;
}

bool Form6::IsSource(const Field& field) const {
  return field.list == &A01_OUT_SOURCECombo || field.list == &A02_OUT_SOURCECombo;
}

void Form6::RebuildOutSourceLists() {
  for (const ComboBox* list : {&A01_OUT_SOURCECombo, &A02_OUT_SOURCECombo}) column().FillList(*list);
}

// These two are emptied when they hold no number.
void Form6::CheckFourDigits(TextBox& box) {
  const int fault = TypedNumberFault(box.Text());
  if (fault == 0) return;
  if (fault == text::kNotANumber) box.SetText("");
  app().Show(app().Text(fault));
  box.SetFocus();
}

// --- reading -----------------------------------------------------------------------------------------------

void Form6::ReadBlocks() {
  remark_.clear();
  config_ = AskChannelConfig(app());
  EnableMeasureSetup();
  RebuildOutSourceLists();
  if (UNIT_SYSTEMCombo.box.Ticked() || LANGUAGECombo.box.Ticked() || IDNUM_CONFIGText.box.Ticked()) {
    column().ReadBlock(kDeviceBlock);
  }
  if (SPEC_Text.box.Ticked()) column().ReadBlock(kSpecificationBlock);
  if (CONTROL_BOARDText.box.Ticked()) {
    column().ReadBlock(kVersionBlock);
    column().ReadBlock(kTypeBlock);
  }
  ReadMeasureSetup();
  if (Read_All_Set_Data.Ticked() && !SilentRead()) ReadAll();
}

void Form6::ReadMeasureSetup() {
  const struct {
    const CheckBox& box;
    const Block& block;
  } kReads[] = {{SYSTEM_MODECombo.box, kOperationModeBlock},
                {MEASUREMENT_MODECombo.box, kMeasurementModeBlock},
                {CALCULATIONCombo.box, kCalculationBlock},
                {A01_OUT_SOURCECombo.box, kFirstSourceBlock},
                {A02_OUT_SOURCECombo.box, kSecondSourceBlock}};
  for (const auto& read : kReads) {
    if (read.box.Enabled() && read.box.Ticked()) column().ReadBlock(read.block);
  }
}

// A list that has a read of its own shows nothing when that fails; the others keep what they show.
void Form6::BlockFailed(const Block& block) {
  if (block.count != 1) return;
  for (const Field& field : column().Fields()) {
    if (field.list != nullptr && field.parameter->address == block.address) field.Select(-1);
  }
}

void Form6::FieldWasRead(const Field& field, int code) {
  if (field.list == &UNIT_SYSTEMCombo) UnitWasRead();
  if (field.list == &LANGUAGECombo) LanguageWasRead(code);
}

// What the pages keep of units is asked anew.
void Form6::UnitWasRead() {
  const int channels = LocationCount(Location::kChannel, app().state);
  for (int channel = 0; channel < channels; ++channel) RefreshChannelUnits(app(), channel);
  ClearProcessCache(app());
  if (!LacksHeatRegisters(app().state)) RefreshHeatUnits(app());
}

void Form6::LanguageWasRead(int language) {
  app().state.SystemLangFlag = language;
  const std::string name = CodeWord(SystemRow("language"), app().state, language);
  if (!name.empty() && app().frame != nullptr) app().frame->Status().SetPanel(kLanguagePanel, name);
}

// --- setting -----------------------------------------------------------------------------------------------

bool Form6::MaySet() {
  specification_changed_ = false;
  if (!GoesOnWithoutSources()) return false;
  if (!SPEC_Text.box.Ticked() || Trim(SPEC_Text.Text()).empty()) return true;
  return app().AskYesNo(
      app().Text(text::kSpecificationWarning) + "\n" + app().Text(text::kSpecificationQuestion),
      MessageIcon::kQuestion);
}

void Form6::PlanWrites(WritePlan& plan) {
  left_out_.clear();
  for (const Field* field : column().FieldsAsWritten()) {
    if (!ExistsIn(*field->parameter, app().state, 0)) continue;
    if (const std::string reason = WhyNotOffered(*field); !reason.empty()) {
      left_out_.push_back({field, reason});
    } else {
      column().PlanField(plan, *field);
    }
  }
}

// The mode that the meter is in when a set comes to the sources: the one that the set brings, or its own.
std::optional<int> Form6::ModeOfSet() {
  const Field& mode = column().FieldOf(MEASUREMENT_MODECombo);
  if (mode.Ticked() && mode.Selected() >= 0) return mode.Selected();
  if (config_ == ChannelConfig::kUnknown) config_ = AskChannelConfig(app(), *this);
  if (config_ == ChannelConfig::kUnknown) return std::nullopt;
  return static_cast<int>(config_) - 1;
}

// The lists follow the mode that the page shows, which need not be the meter's. A meter whose mode is not
// known judges for itself.
std::string Form6::WhyNotOffered(const Field& field) {
  if (!IsSource(field) || !field.Ticked() || field.Selected() < 0) return {};
  const auto mode = ModeOfSet();
  if (!mode || IsOffered({field.parameter, 0}, FactsInMode(*mode), field.CodeOf(field.Selected()))) return {};
  return FormatText(app().Text(text::kSourceNotOffered),
                    {field.ShownText(), CodeWord(SystemRow("measurement_mode"), app().state, *mode)});
}

// Each of them is a field that was not set, told before the first frame.
bool Form6::GoesOnWithoutSources() {
  for (const auto& [field, reason] : left_out_) {
    const std::string name = FailureName(*field);
    field->Mark(reason);
    const std::string told = FormatText("%1: %2", {name, reason});
    app().Status(told);
    if (app().AskOkCancel(FormatText(
            "%1 %2\n%3", {name, app().Text(text::kDataNotSet), app().Text(text::kContinueQuestion)})))
      continue;
    app().Status(FormatText("%1 %2", {app().Text(text::kSettingOfSystemWasCompleted), told}));
    return false;
  }
  return true;
}

// The meter's mode is asked anew where it is needed next.
void Form6::WriteFailed(const PlannedWrite& write, WriteResult result) {
  const bool mode = write.field == &column().FieldOf(MEASUREMENT_MODECombo);
  if (mode && result != WriteResult::kRefused) config_ = ChannelConfig::kUnknown;
}

void Form6::WriteProven(const PlannedWrite& write) {
  if (write.field == &column().FieldOf(MEASUREMENT_MODECombo)) config_ = ChannelConfig::kUnknown;
  if (write.field != &column().FieldOf(SPEC_Text)) return;
  specification_changed_ = true;
  // What this set has written before is gone with the rest.
  column().Origins().ExchangeEnded();
  app().origins.MemoryWasReset();
  WaitMs(app(), kSettleMs);
  app().windows.SetMousePointer(kNormalPointer);
  app().Show(app().Text(text::kSpecificationChanged));
}

void Form6::CommandMemoryInit_Click() {
  if (!app().AskOkCancel(app().Text(text::kInitQuestion))) return;
  Operation operation(app(), *this, CommandMemoryInit.Name(), text::kInitializationOfMemoryWasStarted);
  if (!operation.OpenPortOrTell()) return;
  // The meter begins at once and may not answer any more: the reply says nothing.
  WriteRegister(app(), kMemoryInitRegister, kMemoryInitValue);
  app().origins.MemoryWasReset();
  WaitMs(app(), kSettleMs);
  operation.ShowNormalPointer();
  app().Show(app().Text(text::kInitializationOfMemoryWasCompleted));
  operation.End(app().Text(text::kInitializationOfMemoryWasCompleted));
}

// --- all settings ------------------------------------------------------------------------------------------

// A dialog would hold up the exchange inside of which the button was pressed.
void Form6::Save_As_Click() {
  asks_for_name_ = true;
  if (List().IsInside()) {
    tmrSaveAs.SetRunning(true);
  } else {
    AskForName();
  }
}

void Form6::tmrSaveAs_Timer() {
  if (!List().IsInside()) AskForName();
}

void Form6::AskForName() {
  tmrSaveAs.SetRunning(false);
  if (!std::exchange(asks_for_name_, false)) return;
  if (const auto file = AskCsvFile(app(), {.kind = text::kInitialvalue, .all_files = false}))
    FileName.SetText(*file);
}

void Form6::Read_All_Set_Data_Click() {
  for (Control* control : {static_cast<Control*>(&Label3), static_cast<Control*>(&FileName),
                           static_cast<Control*>(&Save_As), static_cast<Control*>(&cmdStopReadAll)}) {
    control->SetVisible(Read_All_Set_Data.Ticked());
  }
}

void Form6::ReadAll() {
  stop_requested_ = false;
  cmdStopReadAll.SetEnabled(true);
  bool told_of_loss = false;  // every reader behind it fails for the same reason
  SettingsReader reader(
      app(),
      {.began = [this](int number, int count, const std::string& what) { ShowProgress(number, count, what); },
       .failed =
           [this, &told_of_loss] {
             if (!told_of_loss) app().Show(app().Text(text::kCommunicationError), MessageIcon::kStop);
             told_of_loss = app().state.Lost.away;
           },
       .stop =
           [this] {
             AskForName();
             return stop_requested_;
           }});
  const bool ended = reader.ReadAll();
  cmdStopReadAll.SetEnabled(false);
  remark_ = ended ? Report(reader.Settings()) : app().Text(text::kReadAllStopped);
}

void Form6::ShowProgress(int number, int count, const std::string& what) {
  app().Status(
      FormatText(app().Text(text::kReadAllProgress), {std::to_string(number), std::to_string(count), what}));
}

std::string Form6::Report(const MeterSettings& settings) {
  AskForName();
  const std::string lost = LostText(settings);
  const std::string problem = SaveReportTo(std::string(Trim(FileName.Text())), settings, lost);
  return lost + (lost.empty() || problem.empty() ? "" : "   ") + problem;
}

std::string Form6::LostText(const MeterSettings& settings) const {
  // A meter that is not there has lost nothing.
  const std::vector<std::string> parts =
      settings.registers.Empty() ? std::vector<std::string>() : LostParts(settings);
  if (parts.empty()) return {};
  constexpr std::size_t kMostNames = 4;
  const std::size_t named = std::min(parts.size(), kMostNames);
  std::string names;
  for (std::size_t i = 0; i < named; ++i) names += (i > 0 ? ", " : "") + parts[i];
  if (named == parts.size()) return FormatText(app().Text(text::kNotRead), {names});
  return FormatText(app().Text(text::kNotReadMore), {names, std::to_string(parts.size() - named)});
}

std::string Form6::SaveReportTo(const std::string& file, const MeterSettings& settings,
                                const std::string& lost) {
  if (file.empty()) return app().Text(text::kNoReportName);
  // A meter that is not there leaves an older report alone.
  if (settings.registers.Empty()) return app().Text(text::kNothingRead);
  if (!lost.empty() && !MayReplace(file, lost)) return app().Text(text::kReportKept);
  const FileError error = SaveReport(app(), settings, file);
  if (error == FileError::kGood) return {};
  return NotWrittenText(app(), file, error);
}

// A complete report is worth more than one that lacks parts.
bool Form6::MayReplace(const std::string& file, const std::string& lost) {
  std::string earlier;
  if (app().platform.files.Read(file, earlier) != FileError::kGood || !IsCompleteReport(earlier)) return true;
  return app().AskYesNo(FormatText(app().Text(text::kReplaceReport), {LastComponent(file), lost}),
                        MessageIcon::kQuestion);
}

}  // namespace vlt
