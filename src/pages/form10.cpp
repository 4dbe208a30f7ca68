#include "pages/form10.h"

#include "link/device_queries.h"
#include "link/modbus.h"
#include "link/port.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

constexpr int kSecondChannelBase = 0x1388;
constexpr int kProcessBlock = 0x00D0;  // 18 registers, function 03
constexpr int kSpacingBlock = 0x0080;  // 3 registers, function 04
constexpr int kZeroAdjust = 0x0140;
constexpr int kTwoPipes = 3;  // of GetChannelConfig

// The last entry of a material or fluid list is "own value": it unlocks the sound velocity.
constexpr int kOwnPipe = 12;
constexpr int kOwnFluid = 17;
constexpr int kOwnLining = 7;
constexpr int kNoLining = 0;

constexpr Decimals kLengthDecimals{2, 4};
constexpr Decimals kSpacingDecimals{2, 3};  // the meter gives the spacing one place less in inches

}  // namespace

Form10::Form10(App& app)
    : ParameterPage(
          app, "Form10",
          {chkCheck, ReadParameter, SetParameter, SaveParameter, "PROCESS SETTING", 3991, 4001, 4011, 4021}) {
  SetFields(Table());
  SetWriteOrder({&OUTER_DIAMETERText, &PIPE_MATERIALCombo, &TRANS_FREQUENCYText, &WALL_THICKNESSText,
                 &LINING_MATERIALCombo, &LINING_S_VText, &LINING_THICKNESSText, &KIND_OF_FLUIDCombo,
                 &FLUID_S_VText, &VISCOSITYText, &SENSOR_MOUNTCombo, &SENSOR_TYPECombo});
  PIPE_MATERIALCombo.on_click = [this] { PIPE_MATERIALCombo_Click(); };
  KIND_OF_FLUIDCombo.on_click = [this] { KIND_OF_FLUIDCombo_Click(); };
  LINING_MATERIALCombo.on_click = [this] { LINING_MATERIALCombo_Click(); };
  ChannelSelect.ForEach([this](OptionButton& option) {
    option.on_click = [this, &option] { ChannelSelect_Click(option.Index()); };
  });
  CmdBtnClear.on_click = [this] { AdjustZero(0, 3962); };
  CmdBtnAdjust.on_click = [this] { AdjustZero(1, 3963); };
}

std::vector<Field> Form10::Table() {
  const auto length = [](CheckBox& box, TextBox& text, std::uint16_t address, int caption, Label& unit) {
    return Field{.box = &box,
                 .text = &text,
                 .address = address,
                 .wire = Wire::kInt32,
                 .decimals = kLengthDecimals,
                 .caption = caption,
                 .unit = &unit,
                 .unit_kind = UnitKind::kLength};
  };
  const auto velocity = [](CheckBox& box, TextBox& text, std::uint16_t address, int caption, Label& unit) {
    return Field{.box = &box,
                 .text = &text,
                 .address = address,
                 .caption = caption,
                 .unit = &unit,
                 .unit_kind = UnitKind::kVelocity};
  };
  // In address order, which is the order of reading: a list comes before the field that it unlocks.
  return {
      CodeField(SENSOR_TYPE, SENSOR_TYPECombo, 0x00D0, 800, "SENSOR_TYPE_Data"),
      Kept(length(OUTER_DIAMETER, OUTER_DIAMETERText, 0x00D2, 1240, Label8(0)), "OUTER_DIAMETER_Data",
           "OUTER_DIAMETER_Unit"),
      CodeField(PIPE_MATERIAL, PIPE_MATERIALCombo, 0x00D6, 2060, "PIPE_MATERIAL_Data"),
      Kept(velocity(TRANS_FREQUENCY, TRANS_FREQUENCYText, 0x00D8, 2050, Label12(0)), "PIPE_S_V_Data",
           "PIPE_S_V_Unit"),
      Kept(length(WALL_THICKNESS, WALL_THICKNESSText, 0x00DA, 2880, Label8(1)), "WALL_THICKNESS_Data",
           "WALL_THICKNESS_Unit"),
      CodeField(LINING_MATERIAL, LINING_MATERIALCombo, 0x00DE, 1120, "LINING_MATERIAL_Data"),
      Kept(velocity(LINING_S_V, LINING_S_VText, 0x00E0, 1100, Label1(0)), "LINING_S_V_Data",
           "LINING_S_V_Unit"),
      Kept(length(LINING_THICKNESS, LINING_THICKNESSText, 0x00E2, 1110, Label2(0)), "LINING_THICKNESS_Data",
           "LINING_THICKNESS_Unit"),
      CodeField(KIND_OF_FLUID, KIND_OF_FLUIDCombo, 0x00E6, 2210, "KIND_OF_FLUID_Data"),
      Kept(velocity(FLUID_S_V, FLUID_S_VText, 0x00E8, 2200, Label1(1)), "FLUID_S_V_Data", "FLUID_S_V_Unit"),
      {.box = &VISCOSITY,
       .text = &VISCOSITYText,
       .address = 0x00EA,
       .wire = Wire::kDouble,
       .show = ShowAs::kDigits,
       .digits = 7,
       .caption = 2020,
       .unit = &Label3(0),
       .unit_kind = UnitKind::kViscosity,
       .key = "VISCOSITY_Data",
       .unit_key = "VISCOSITY_Unit"},
      CodeField(SENSOR_MOUNT, SENSOR_MOUNTCombo, 0x00F2, 790, "SENSOR_MOUNT_Data"),
      Kept(SpacingField(SENSOR_SPACINGText, 0x0080, Wire::kInt32, &Label5(0)), "SENSOR_SPACING_Data",
           "SENSOR_SPACING_Unit"),
      Kept(SpacingField(SENSOR_SPACING2Text, 0x0084, Wire::kUInt16, nullptr), "SENSOR_SPACING2_Data",
           nullptr),
  };
}

// What the meter computes: read by its own function and never written.
Field Form10::SpacingField(TextBox& text, std::uint16_t address, Wire wire, Label* unit) {
  return {.box = &SENSOR_SPACINGCheck,
          .text = &text,
          .address = address,
          .wire = wire,
          .decimals = unit != nullptr ? kSpacingDecimals : Decimals{},
          .caption = 1380,
          .function = 0x04,
          .read_only = true,
          .unit = unit,
          .unit_kind = unit != nullptr ? UnitKind::kLength : UnitKind::kNone};
}

void Form10::BuildLists() {
  const CodeContext codes = app().Codes();
  FillList(PIPE_MATERIALCombo, ListTexts(codes, 1));
  FillList(LINING_MATERIALCombo, ListTexts(codes, 2));
  FillList(KIND_OF_FLUIDCombo, ListTexts(codes, 3));
  // The page offers the two mounts that every sensor pair allows.
  FillList(SENSOR_MOUNTCombo, {app().Text(3140), app().Text(3150)});
  FillList(SENSOR_TYPECombo, ListTexts(codes, 6));
}

void Form10::Form_Load() {
  SetParameter2.SetTab(0);
  ParameterPage::Form_Load();
  ChannelSelect(Channel()).SetValue(true);
  // With nothing selected the dependent parameters rest as their lists say.
  PIPE_MATERIALCombo_Click();
  KIND_OF_FLUIDCombo_Click();
  LINING_MATERIALCombo_Click();
}

void Form10::Form_Activate() {
  ChannelSelect(Channel()).SetValue(true);
  const int config = AskChannelConfig(app(), *this);
  ChannelSelect(0).SetEnabled(true);
  ChannelSelect(1).SetEnabled(config == kTwoPipes);
  SetParameter2.SetTabEnabled(1, app().state.PathMode != 2 && app().state.SpecClass != 1);
  // Behind the lock, which releases every button.
  ParameterPage::Form_Activate();
}

void Form10::EnableCommands(bool enabled) {
  ParameterPage::EnableCommands(enabled);
  CmdBtnClear.SetEnabled(enabled);
  CmdBtnAdjust.SetEnabled(enabled);
}

void Form10::C01_SECHI_FrmInit() {
  SetCaption(app().Text(1640));
  SetParameter2.SetTabCaption(0, app().Text(559));
  SetParameter2.SetTabCaption(1, app().Text(553));
  SetCaptions({{&lblChannel, 179},
               {&ChannelSelect(0), 182},
               {&ChannelSelect(1), 183},
               {&FrameZero, 760},
               {&CmdBtnClear, 3880},
               {&CmdBtnAdjust, 1911},
               {&ReadParameter, 2030},
               {&SetParameter, 1650},
               {&SaveParameter, 2140},
               {&chkCheck, text::kSelectAll}});
  ShowNames();
  BuildBaseUnitNames(app());
  ShowUnits();
  SetMaxLengths();
}

void Form10::SetMaxLengths() {
  struct Row {
    TextBox* text;
    int metric;
    int english;
  };
  for (const Row& row :
       {Row{&OUTER_DIAMETERText, 7, 8}, Row{&TRANS_FREQUENCYText, 4, 5}, Row{&WALL_THICKNESSText, 6, 6},
        Row{&FLUID_S_VText, 4, 4}, Row{&LINING_S_VText, 4, 5}, Row{&LINING_THICKNESSText, 6, 6},
        Row{&VISCOSITYText, 20, 20}}) {
    row.text->SetMaxLength(app().state.UnitFlag == 0 ? row.metric : row.english);
  }
}

void Form10::Taihi_Form10() { ControlsToSlots(); }

bool Form10::Check_On() { return SENSOR_SPACINGCheck.Ticked() || IsAnyTicked(); }

std::vector<CheckBox*> Form10::Boxes() {
  return {&SENSOR_SPACINGCheck, &OUTER_DIAMETER, &PIPE_MATERIAL,   &TRANS_FREQUENCY, &WALL_THICKNESS,
          &KIND_OF_FLUID,       &FLUID_S_V,      &LINING_MATERIAL, &LINING_S_V,      &LINING_THICKNESS,
          &VISCOSITY,           &SENSOR_MOUNT,   &SENSOR_TYPE};
}

bool Form10::ChannelIsChosen() { return ChannelSelect(Channel()).Enabled(); }

int Form10::Channel() const { return app().state.ProcessChannel == 1 ? 1 : 0; }

int Form10::ChannelBase() { return Channel() == 1 ? kSecondChannelBase : 0; }

void Form10::ReadBlocks() {
  ReadBlock(0x03, kProcessBlock + ChannelBase(), 18);
  ReadBlock(0x04, kSpacingBlock + ChannelBase(), 3);
}

void Form10::ChannelSelect_Click(int index) {
  if (!app().state.UiLocked) {
    app().state.ProcessChannel = index;
  } else {
    // A running exchange goes on with the channel that it began with.
    ChannelSelect(Channel()).SetValue(true);
  }
}

void Form10::PIPE_MATERIALCombo_Click() {
  Depend(TRANS_FREQUENCY, TRANS_FREQUENCYText, PIPE_MATERIALCombo.ListIndex() == kOwnPipe);
}

void Form10::KIND_OF_FLUIDCombo_Click() {
  Depend(FLUID_S_V, FLUID_S_VText, KIND_OF_FLUIDCombo.ListIndex() == kOwnFluid);
}

void Form10::LINING_MATERIALCombo_Click() {
  Depend(LINING_THICKNESS, LINING_THICKNESSText, LINING_MATERIALCombo.ListIndex() != kNoLining);
  Depend(LINING_S_V, LINING_S_VText, LINING_MATERIALCombo.ListIndex() == kOwnLining);
}

void Form10::AdjustZero(int value, int question) {
  Frame request = WriteRegisterRequest(StationNumber(app()), kZeroAdjust + ChannelBase(), value);
  if (!app().AskOkCancel(app().Text(question))) return;
  Begin(3991);
  if (!OpenPort(app())) {
    PortFailed();
    return;
  }
  Frame reply = ReplyFor(request);
  const bool done = SendReceive(app(), request, reply) && EchoWordEqual(reply, value);
  app().Show(app().Text(760) + "  " + app().Text(done ? 4141 : 4140),
             done ? MessageIcon::kInformation : MessageIcon::kStop);
  End(app().Text(4001) + " " + app().state.LastErrorText);
}

}  // namespace vlt
