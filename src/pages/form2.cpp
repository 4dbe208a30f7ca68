#include "pages/form2.h"

#include "link/device_queries.h"
#include "pages/unit_text.h"

namespace vlt {
namespace {

constexpr int kThirdChannel = 2;
constexpr int kFlowKind = 1;
constexpr int kSingleType = 0;

constexpr int kChannelBlock = 0x0000;  // 32 registers
// The computed channel answers from its kind on, without damping in front and the three signal fields behind.
constexpr int kThirdChannelBlock = 0x0002;  // 21 registers
constexpr int kThermalBlock = 0x03F0;       // 8 registers

// What a read asks of the units, each at most once.
enum UnitMark { kKindMark, kUnitMark };

}  // namespace

Form2::Form2(App& app)
    : ChannelPage(app, {.name = "Form2",
                        .section = "RANGE",
                        .title = 1170,
                        .set_started = 3992,
                        .set_completed = 4002,
                        .read_started = 4012,
                        .read_completed = 4022,
                        .channel = &SharedState::RangeChannel,
                        .unit_track = &SharedState::RangeUnitTrack}) {
  SetFields(Table());
  SetWriteOrder({&cmbKind, &UNIT_SYSTEMCombo, &TypeCheckCombo, &FULL_SCALE1Text, &FULL_SCALE2Text,
                 &CALORIE_FULL_SCALE1Text, &CALORIE_FULL_SCALE2Text, &HYSTERISISText, &OUTPUT_BURNOUTCombo,
                 &BURNOUT_TIMERText, &OUTPUT_LIMIT_HighText, &OUTPUT_LIMIT_LowText, &RATE_LIMITText,
                 &RATE_LIMIT_TIMERText, &DAMPINGText, &LOW_FLOW_OUTPUT_CUTText, &ZEROText, &SPANText});
  TypeCheckCombo.on_click = [this] { TypeCheckCombo_Click(); };
}

std::vector<Field> Form2::Table() {
  std::vector<Field> table;
  for (auto part : {KindFields(), ScaleFields(), OutputFields(), SignalFields(), ThermalFields()}) {
    table.insert(table.end(), part.begin(), part.end());
  }
  return table;
}

std::vector<Field> Form2::KindFields() {
  return {
      {.box = &DAMPING,
       .text = &DAMPINGText,
       .address = 0x0000,
       .decimals = {1, 1},
       .caption = 830,
       .key = "DUMPING_Data"},
      {.box = &chkKind,
       .list = &cmbKind,
       .address = 0x0002,
       .caption = 4964,
       .key = "RANGE_KIND_Data",
       .code_of_index = [this](int index) { return KindIsFixed() ? kFlowKind : index; },
       .index_of_code = [this](int code) { return !KindIsFixed()      ? code
                                                  : code == kFlowKind ? 0
                                                                      : -1; }},
      {.box = &UNIT_SYSTEM,
       .list = &UNIT_SYSTEMCombo,
       .address = 0x0004,
       .caption = 1900,
       .key = "RANGE_UNIT_Data"},
      {.box = &TypeCheck,
       .list = &TypeCheckCombo,
       .address = 0x0006,
       .caption = 820,
       .key = "RANGE_TYPE_Data"},
  };
}

std::vector<Field> Form2::ScaleFields() {
  return {
      {.box = &FULL_SCALE1,
       .text = &FULL_SCALE1Text,
       .address = 0x0008,
       .wire = Wire::kDouble,
       .show = ShowAs::kPlain,
       .caption = 1171,
       .unit = &Label2(7),
       .unit_kind = UnitKind::kFlow,
       .key = "FULL_SCALE1_Data",
       .unit_key = "FULL_SCALE1_Unit"},
      {.box = &FULL_SCALE2,
       .text = &FULL_SCALE2Text,
       .address = 0x0010,
       .wire = Wire::kDouble,
       .show = ShowAs::kPlain,
       .caption = 1172,
       .unit = &Label2(6),
       .unit_kind = UnitKind::kFlow,
       .key = "FULL_SCALE2_Data",
       .unit_key = "FULL_SCALE2_Unit"},
      {.box = &HYSTERISIS,
       .text = &HYSTERISISText,
       .address = 0x0018,
       .decimals = {2, 2},
       .caption = 980,
       .key = "RANGE_HYSTERISIS_Data"},
  };
}

std::vector<Field> Form2::OutputFields() {
  return {
      {.box = &OUTPUT_BURNOUT,
       .list = &OUTPUT_BURNOUTCombo,
       .address = 0x001A,
       .caption = 911,
       .key = "OUTPUT_BURNOUT_Data"},
      {.box = &BURNOUT_TIMER,
       .text = &BURNOUT_TIMERText,
       .address = 0x001C,
       .caption = 920,
       .key = "RANGE_BURNOUT_TIMER_Data"},
      {.box = &OUTPUT_LIMIT_Low,
       .text = &OUTPUT_LIMIT_LowText,
       .address = 0x001E,
       .caption = 1470,
       .key = "OUTPUT_LIMIT_Low_Data"},
      {.box = &OUTPUT_LIMIT_High,
       .text = &OUTPUT_LIMIT_HighText,
       .address = 0x0020,
       .caption = 1480,
       .key = "OUTPUT_LIMIT_High_Data"},
      {.box = &RATE_LIMIT_TIMER,
       .text = &RATE_LIMIT_TIMERText,
       .address = 0x0022,
       .caption = 1150,
       .key = "RATE_LIMIT_TIMER_Data"},
  };
}

std::vector<Field> Form2::SignalFields() {
  return {
      {.box = &RATE_LIMIT,
       .text = &RATE_LIMITText,
       .address = 0x0024,
       .wire = Wire::kDouble,
       .show = ShowAs::kDigits,
       .digits = 8,
       .caption = 1140,
       .unit = &Label2(8),
       .unit_kind = UnitKind::kFlow,
       .key = "RATE_LIMIT_Data",
       .unit_key = "RATE_LIMIT_Unit"},
      {.box = &LOW_FLOW_OUTPUT_CUT,
       .text = &LOW_FLOW_OUTPUT_CUTText,
       .address = 0x002C,
       .wire = Wire::kDouble,
       .show = ShowAs::kDigits,
       .digits = 8,
       .caption = 1960,
       .unit = &Label2(9),
       .unit_kind = UnitKind::kFlow,
       .key = "LOW_FLOW_OUTPUT_CUT_Data",
       .unit_key = "LOW_FLOW_OUTPUT_CUT_Unit"},
      {.box = &ZERO,
       .text = &ZEROText,
       .address = 0x0034,
       .wire = Wire::kDouble,
       .show = ShowAs::kPlain,
       .caption = 1176,
       .unit = &Label2(12),
       .unit_kind = UnitKind::kFlow,
       .key = "ZERO_Data",
       .unit_key = "ZERO_Unit"},
      {.box = &SPAN,
       .text = &SPANText,
       .address = 0x003C,
       .decimals = {2, 2},
       .caption = 1177,
       .key = "SPAN_Data"},
  };
}

std::vector<Field> Form2::ThermalFields() {
  return {
      {.box = &CALORIE_FULL_SCALE1,
       .text = &CALORIE_FULL_SCALE1Text,
       .address = 0x03F0,
       .wire = Wire::kDouble,
       .show = ShowAs::kDigits,
       .digits = 8,
       .caption = 1173,
       .by_channel = false,
       .unit = &HRangelbl(0),
       .unit_kind = UnitKind::kHeatFlow,
       .key = "H_FULL_SCALE1_Data",
       .unit_key = "H_FULL_SCALE1_Unit"},
      {.box = &CALORIE_FULL_SCALE2,
       .text = &CALORIE_FULL_SCALE2Text,
       .address = 0x03F8,
       .wire = Wire::kDouble,
       .show = ShowAs::kDigits,
       .digits = 8,
       .caption = 1174,
       .by_channel = false,
       .unit = &HRangelbl(1),
       .unit_kind = UnitKind::kHeatFlow,
       .key = "H_FULL_SCALE2_Data",
       .unit_key = "H_FULL_SCALE2_Unit"},
  };
}

void Form2::BuildLists() {
  const CodeContext codes = app().Codes();
  FillList(OUTPUT_BURNOUTCombo, ListTexts(codes, 9));
  FillList(TypeCheckCombo, ListTexts(codes, 8));
  LoadUnits();
  FillKinds(false);
}

void Form2::FillUnits() {
  BuildFlowUnitNames(app());
  FillList(UNIT_SYSTEMCombo, app().state.FlowUnitNames);
}

void Form2::FillKinds(bool fixed) {
  if (fixed) {
    FillList(cmbKind, {app().Text(2220)});
  } else {
    FillList(cmbKind, {app().Text(2180), app().Text(2220)});
  }
}

void Form2::Form_Load() {
  AskConfigUnderLock();
  ChannelPage::Form_Load();
}

void Form2::Form_Activate() {
  ChannelPage::Form_Activate();
  UpdateKinds();
  EnableThermal();
}

void Form2::C02_RANGE_FrmInit() {
  SetPageCaptions();
  for (const int percent : {0, 1, 2, 3}) Label2(percent).SetCaption(app().Text(10));
  Label3.ForEach([this](Label& label) { label.SetCaption(app().Text(100)); });
  for (TextBox* text : {&FULL_SCALE1Text, &FULL_SCALE2Text, &RATE_LIMITText, &LOW_FLOW_OUTPUT_CUTText,
                        &ZEROText, &CALORIE_FULL_SCALE1Text, &CALORIE_FULL_SCALE2Text}) {
    text->SetMaxLength(9);
  }
  for (TextBox* text : {&HYSTERISISText, &DAMPINGText}) text->SetMaxLength(5);
  for (TextBox* text :
       {&OUTPUT_LIMIT_HighText, &OUTPUT_LIMIT_LowText, &BURNOUT_TIMERText, &RATE_LIMIT_TIMERText}) {
    text->SetMaxLength(3);
  }
}

void Form2::Taihi_Form2() {
  ControlsToSlots();
  // The parameter file keeps the first thermal full scale at both keys.
  app().slots.At("RANGE", "H_FULL_SCALE2_Data") = app().slots.At("RANGE", "H_FULL_SCALE1_Data");
}

void Form2::ReadBlocks() {
  const bool third = Channel() == kThirdChannel;
  const int start = ChannelBase() + (third ? kThirdChannelBlock : kChannelBlock);
  const int registers = third ? 21 : 32;
  Frame reply;
  const bool answered = Exchange(0x03, start, registers, reply);
  AskConfig();
  UpdateKinds();
  if (answered) ShowBlock(0x03, start, registers, reply);
  if (app().state.SpecClass == 0 && Channel() == 0) ReadBlock(0x03, kThermalBlock, 8);
}

void Form2::LearnUnit(const Field& field) {
  if (field.unit_kind != UnitKind::kFlow) return;
  const bool ask_kind = FirstInThisRead(kKindMark);
  const bool ask_unit = FirstInThisRead(kUnitMark);
  if (ask_kind) GetRangeKind(app(), Channel());
  if (ask_unit) {
    ReadUnitSystem(app());
    if (UnitsAreStale()) RefillUnits();
    GetRangeUnit(app(), Channel());
  }
  if (ask_kind || ask_unit) ShowFlowUnits();
}

std::string Form2::UnitText(const Field& field) {
  return field.unit_kind == UnitKind::kHeatFlow ? HeatFlowUnitText(app()) : RangeUnitText(app(), Channel());
}

void Form2::FieldWasRead(const Field& field, int code) {
  const auto channel = static_cast<std::size_t>(Channel());
  if (field.list == &cmbKind) {
    FirstInThisRead(kKindMark);
    app().state.RangeKind.at(channel) = code;
    ShowFlowUnits();
  } else if (field.list == &UNIT_SYSTEMCombo) {
    FirstInThisRead(kUnitMark);
    app().state.RangeUnit.at(channel) = code;
    ReadUnitSystem(app());
    RefillUnits();
    UNIT_SYSTEMCombo.SetListIndex(code);
    ShowFlowUnits();
  }
}

void Form2::ShowFlowUnits() {
  ShowUnitsOf(UnitKind::kFlow);
  ClearFlowCache(app());
}

void Form2::ChannelSelect_Click(int index) {
  const bool measured = index != kThirdChannel;
  Depend(DAMPING, DAMPINGText, measured);
  Depend(LOW_FLOW_OUTPUT_CUT, LOW_FLOW_OUTPUT_CUTText, measured);
  Depend(ZERO, ZEROText, measured);
  Depend(SPAN, SPANText, measured);
  TakeChannel(index);
  UpdateKinds();
  EnableThermal();
  ShowUnitsOf(UnitKind::kFlow);
}

void Form2::UpdateKinds() {
  // Without an answer about the pipes the list stays as it is.
  const bool two_pipes = HasTwoPipes() || (Config() < 0 && KindIsFixed());
  const bool fixed = Channel() == kThirdChannel && two_pipes;
  if (fixed == KindIsFixed()) return;
  if (fixed) remembered_kind_ = cmbKind.ListIndex();
  FillKinds(fixed);
  cmbKind.SetListIndex(fixed ? 0 : remembered_kind_);
}

void Form2::TypeCheckCombo_Click() {
  if (TypeCheckCombo.ListIndex() < 0) return;
  const bool second = TypeCheckCombo.ListIndex() != kSingleType;
  Depend(FULL_SCALE2, FULL_SCALE2Text, second);
  Depend(HYSTERISIS, HYSTERISISText, second);
  EnableThermal();
}

void Form2::EnableThermal() {
  const SharedState& state = app().state;
  const bool one_pipe = state.PathMode != 2 && state.SpecClass != 1;
  if (!one_pipe) {
    CALORIE_FULL_SCALE1.SetValue(0);
    CALORIE_FULL_SCALE2.SetValue(0);
  }
  const bool first = one_pipe && Channel() == 0;
  Depend(CALORIE_FULL_SCALE1, CALORIE_FULL_SCALE1Text, first);
  Depend(CALORIE_FULL_SCALE2, CALORIE_FULL_SCALE2Text,
         first && state.SpecClass == 0 && TypeCheckCombo.ListIndex() > kSingleType);
}

}  // namespace vlt
