// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form10.h"

#include "meter/device_queries.h"
#include "meter/quiet_query.h"
#include "pages/parameter_column_guard.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

// The last entry of a material or fluid list is "own value": it unlocks the sound velocity.
constexpr int kOwnPipe = 12;
constexpr int kOwnFluid = 17;
constexpr int kOwnLining = 7;
constexpr int kNoLining = 0;

// The zero adjustment.
constexpr int kClear = 0;
constexpr int kSetZero = 1;

}  // namespace

Form10::Form10(App& app)
    : ParameterPage(app, "Form10",
                    {.title = 1640,
                     .set_started = text::kSettingOfProcessSettingWasStarted,
                     .set_completed = text::kSettingOfProcessSettingWasCompleted,
                     .read_started = 4011,
                     .read_completed = 4021}),
      chooser_(app, ChannelSelect, &SharedState::ProcessChannel,
               [this](int index) { ChannelSelect_Click(index); }) {
  // Both values of the spacing have one tick.
  fields_.push_back(Bind(ProcessRow("sensor_spacing_2"), SENSOR_SPACINGText.box, SENSOR_SPACING2Text));
  BindEntries();
  PIPE_MATERIALCombo.on_click = [this] { PIPE_MATERIALCombo_Click(); };
  KIND_OF_FLUIDCombo.on_click = [this] { KIND_OF_FLUIDCombo_Click(); };
  LINING_MATERIALCombo.on_click = [this] { LINING_MATERIALCombo_Click(); };
  CmdBtnClear.on_click = [this] { AdjustZero(CmdBtnClear, kClear, text::kClearZeroQuestion); };
  CmdBtnAdjust.on_click = [this] { AdjustZero(CmdBtnAdjust, kSetZero, text::kSetZeroQuestion); };
  AddColumn(Heat.Parts(), Heat);
  Heat.SetUp();
}

// The page offers the two mounts that every sensor pair allows.
std::vector<int> Form10::CodesOfList(const Field& field, const MeterFacts& facts) {
  std::vector<int> codes = ParameterPage::CodesOfList(field, facts);
  if (field.list == &SENSOR_MOUNTCombo) codes.resize(2);
  return codes;
}

void Form10::Form_Load() {
  // Until the captions come, a coefficient has room for one character less.
  for (TextBox* coefficient : {&Heat.HTEMPCONVText, &Heat.CTEMPCONVText}) coefficient->SetMaxLength(5);
  ParameterPage::Form_Load();
  // With nothing selected the dependent parameters rest as their lists say.
  PIPE_MATERIALCombo_Click();
  KIND_OF_FLUIDCombo_Click();
  LINING_MATERIALCombo_Click();
}

void Form10::Form_Activate() {
  chooser_.Show();
  chooser_.EnableAll(AskChannelConfig(app(), *this) == ChannelConfig::kTwoPipes);
  ShowHeatTab(MayHaveHeat(app().state));
  // Behind the lock, which releases every button.
  ParameterPage::Form_Activate();
}

// A tab that is not there any more is left.
void Form10::ShowHeatTab(bool there) {
  if (!there) SetParameter2.SetTab(0);
  SetParameter2.SetTabEnabled(1, there);
}

bool Form10::IsMasterBox(const Control& control) const {
  return &control == &Heat.chkCheckHeat || ParameterPage::IsMasterBox(control);
}

void Form10::EnableCommands(bool enabled) {
  ParameterPage::EnableCommands(enabled);
  CmdBtnClear.SetEnabled(enabled);
  CmdBtnAdjust.SetEnabled(enabled);
}

void Form10::C01_SECHI_FrmInit() {
  SetParameter2.SetTabCaption(0, app().Text(559));
  SetParameter2.SetTabCaption(1, app().Text(553));
  SetPageCaptions({{&lblChannel, 179},
                   {&ChannelSelect(0), 182},
                   {&ChannelSelect(1), 183},
                   {&FrameZero, text::kZeroAdjustment},
                   {&CmdBtnClear, 3880},
                   {&CmdBtnAdjust, 1911},
                   {&Heat.ReadParameterHeat, 2030},
                   {&Heat.SetParameterHeat, 1650},
                   {&Heat.SaveParameterHeat, 2140},
                   {&Heat.chkCheckHeat, text::kSelectAll}});
}

bool Form10::Check_On() { return SENSOR_SPACINGText.box.Ticked() || column().IsAnyTicked(); }

std::vector<CheckBox*> Form10::Boxes() {
  return {&SENSOR_SPACINGText.box,   &OUTER_DIAMETERText.box,   &PIPE_MATERIALCombo.box,
          &TRANS_FREQUENCYText.box,  &WALL_THICKNESSText.box,   &KIND_OF_FLUIDCombo.box,
          &FLUID_S_VText.box,        &LINING_MATERIALCombo.box, &LINING_S_VText.box,
          &LINING_THICKNESSText.box, &VISCOSITYText.box,        &SENSOR_MOUNTCombo.box,
          &SENSOR_TYPECombo.box};
}

void Form10::ReadBlocks() {
  column().ReadBlock(kProcessBlock);
  column().ReadBlock(kSpacingBlock);
}

void Form10::ChannelSelect_Click(int index) {
  if (chooser_.Take(index)) column().ShowHints();
}

void Form10::PIPE_MATERIALCombo_Click() {
  Depend(TRANS_FREQUENCYText, PIPE_MATERIALCombo.ListIndex() == kOwnPipe);
}

void Form10::KIND_OF_FLUIDCombo_Click() {
  Depend(FLUID_S_VText, KIND_OF_FLUIDCombo.ListIndex() == kOwnFluid);
}

void Form10::LINING_MATERIALCombo_Click() {
  Depend(LINING_THICKNESSText, LINING_MATERIALCombo.ListIndex() != kNoLining);
  Depend(LINING_S_VText, LINING_MATERIALCombo.ListIndex() == kOwnLining);
}

void Form10::AdjustZero(const PushButton& command, int value, int question) {
  const int address = kZeroAdjustRegister + LocationOffset(Location::kPipe, chooser_.Index());
  if (!app().AskOkCancel(app().Text(question))) return;
  Operation operation(app(), *this, command.Name(), text::kSettingOfProcessSettingWasStarted);
  if (!operation.OpenPortOrTell()) return;
  if (const std::string refusal = PlaceRefusal(app(), {&ProcessRow("outer_diameter"), chooser_.Index()});
      !refusal.empty()) {
    operation.Refuse(refusal);
    RunHook(&FormHooks::Form_Activate);
    return;
  }
  const bool done = WriteRegister(app(), address, value).Proven();
  app().Show(app().Text(text::kZeroAdjustment) + "  " +
                 app().Text(done ? text::kASetupWasCompleted : text::kASetupWasNotCompleted),
             done ? MessageIcon::kInformation : MessageIcon::kStop);
  operation.End(app().Text(text::kSettingOfProcessSettingWasCompleted) + " " + app().state.LastErrorText);
}

}  // namespace vlt
