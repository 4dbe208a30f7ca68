#include "pages/form3.h"

#include "link/device_queries.h"
#include "pages/unit_text.h"

namespace vlt {
namespace {

constexpr int kTotalBlock = 0x0040;  // 13 registers
constexpr int kHeatBlock = 0x0400;   // 8 registers
constexpr int kStopped = 1;          // of the modes
constexpr int kUnitMark = 0;         // a read asks the unit at most once

// The last total unit of an English meter, acre-foot, has no metric counterpart.
constexpr int kUnitWithoutMetric = 8;

}  // namespace

Form3::Form3(App& app)
    : ChannelPage(app, {.name = "Form3",
                        .section = "TOTAL",
                        .title = 1610,
                        .set_started = 3993,
                        .set_completed = 4003,
                        .read_started = 4013,
                        .read_completed = 4023,
                        .channel = &SharedState::TotalChannel,
                        .unit_track = &SharedState::TotalUnitTrack}) {
  std::vector<Field> table = Table();
  for (const Field& field : HeatFields()) table.push_back(field);
  SetFields(std::move(table));
  SetWriteOrder({&MODECombo, &UNIT_SYSTEMCombo, &ConstantCheckText, &F_TOTAL_PRESETText, &PULSE_WIDTH_1Combo,
                 &OUTPUT_BURNOUTCombo, &BURNOUT_TIMERText, &H_TOTAL_ConstantText, &C_TOTAL_PRESETText});
  MODECombo.on_click = [this] { MODECombo_Click(); };
}

std::vector<Field> Form3::Table() {
  return {
      {.box = &UNIT_SYSTEM,
       .list = &UNIT_SYSTEMCombo,
       .address = 0x0040,
       .caption = 2650,
       .key = "TOTAL_UNIT_Data"},
      {.box = &Mode, .list = &MODECombo, .address = 0x0042, .caption = 1080, .key = "TOTAL_MODE_Data"},
      {.box = &ConstantCheck,
       .text = &ConstantCheckText,
       .address = 0x0044,
       .wire = Wire::kDouble,
       .show = ShowAs::kDigits,
       .digits = 8,
       .caption = 1980,
       .unit = &Label2(10),
       .unit_kind = UnitKind::kTotal,
       .key = "TOTAL_RATE_Data",
       .unit_key = "TOTAL_RATE_Unit"},
      {.box = &F_TOTAL_PRESET,
       .text = &F_TOTAL_PRESETText,
       .address = 0x004C,
       .wire = Wire::kDouble,
       .show = ShowAs::kDigits,
       .digits = 8,
       .caption = 390,
       .unit = &Label2(1),
       .unit_kind = UnitKind::kTotal,
       .key = "F_TOTAL_PRESET_Data",
       .unit_key = "F_TOTAL_PRESET_Unit"},
      {.box = &PULSE_WIDTH_1,
       .list = &PULSE_WIDTH_1Combo,
       .address = 0x0054,
       .caption = 950,
       .key = "TOTAL_PULSE_WIDTH1_Data"},
      {.box = &OUTPUT_BURNOUT,
       .list = &OUTPUT_BURNOUTCombo,
       .address = 0x0056,
       .caption = 912,
       .key = "TOTAL_BURNOUT_Data"},
      {.box = &BURNOUT_TIMER,
       .text = &BURNOUT_TIMERText,
       .address = 0x0058,
       .caption = 920,
       .key = "TOTAL_BURNOUT_TIMER_Data"},
  };
}

std::vector<Field> Form3::HeatFields() {
  return {
      {.box = &H_TOTAL_ConstantCheck,
       .text = &H_TOTAL_ConstantText,
       .address = 0x0400,
       .wire = Wire::kDouble,
       .show = ShowAs::kDigits,
       .digits = 8,
       .caption = 188,
       .by_channel = false,
       .unit = &HSekisanlbl(0),
       .unit_kind = UnitKind::kHeatTotal,
       .key = "H_TOTAL_RATE_Data",
       .unit_key = "H_TOTAL_RATE_Unit"},
      {.box = &C_TOTAL_PRESETCheck,
       .text = &C_TOTAL_PRESETText,
       .address = 0x0408,
       .wire = Wire::kDouble,
       .show = ShowAs::kDigits,
       .digits = 8,
       .caption = 189,
       .by_channel = false,
       .unit = &HSekisanlbl(1),
       .unit_kind = UnitKind::kHeatTotal,
       .key = "H_TOTAL_PRESET_Data",
       .unit_key = "H_TOTAL_PRESET_Unit"},
  };
}

void Form3::BuildLists() {
  const CodeContext codes = app().Codes();
  FillList(MODECombo, ListTexts(codes, 10));
  FillList(OUTPUT_BURNOUTCombo, ListTexts(codes, 13));
  FillList(PULSE_WIDTH_1Combo, ListTexts(codes, 12));
  LoadUnits();
}

void Form3::SubGetUnitForm3() {
  BuildTotalUnitNames(app());
  FillList(UNIT_SYSTEMCombo, app().state.TotalUnitNames);
}

void Form3::Form_Load() {
  ChannelPage::Form_Load();
  // With nothing selected the dependent parameters rest as the list says.
  MODECombo_Click();
}

void Form3::Form_Activate() {
  std::string& unit = app().slots.At("TOTAL", "TOTAL_UNIT_Data");
  if (app().state.UnitFlag == 0 && unit == std::to_string(kUnitWithoutMetric)) {
    unit.clear();
    app().state.TotalUnit.at(static_cast<std::size_t>(Channel())) = 0;
  }
  ChannelPage::Form_Activate();
  MODECombo_Click();
}

void Form3::C03_SEKISAN_FrmInit() {
  SetPageCaptions();
  UNIT_SYSTEM.SetCaption(app().Text(4660));
  Label2(0).SetCaption(app().Text(80));
  Label3(0).SetCaption(app().Text(100));
  for (TextBox* text :
       {&ConstantCheckText, &F_TOTAL_PRESETText, &H_TOTAL_ConstantText, &C_TOTAL_PRESETText}) {
    text->SetMaxLength(20);
  }
}

bool Form3::HasHeat() const { return app().state.SpecClass == 0 && app().state.PathMode < 2; }

std::vector<CheckBox*> Form3::Boxes() {
  std::vector<CheckBox*> boxes = {&Mode,           &UNIT_SYSTEM,   &ConstantCheck, &F_TOTAL_PRESET,
                                  &OUTPUT_BURNOUT, &BURNOUT_TIMER, &PULSE_WIDTH_1};
  if (HasHeat()) boxes.insert(boxes.end(), {&H_TOTAL_ConstantCheck, &C_TOTAL_PRESETCheck});
  return boxes;
}

void Form3::All_OnOff(int value) {
  if (!HasHeat()) {
    H_TOTAL_ConstantCheck.SetValue(0);
    C_TOTAL_PRESETCheck.SetValue(0);
  }
  ChannelPage::All_OnOff(value);
}

void Form3::ReadBlocks() {
  ReadBlock(0x03, ChannelBase() + kTotalBlock, 13);
  AskConfig();
  if (app().state.SpecClass == 0 && Channel() == 0) ReadBlock(0x03, kHeatBlock, 8);
}

void Form3::LearnUnit(const Field& field) {
  if (field.unit_kind != UnitKind::kTotal || !FirstInThisRead(kUnitMark)) return;
  ReadUnitSystem(app());
  if (UnitsAreStale()) RefillUnits();
  GetTotalUnit(app(), Channel());
  ShowTotalUnits();
}

std::string Form3::UnitText(const Field& field) {
  return field.unit_kind == UnitKind::kHeatTotal ? HeatTotalUnitText(app()) : TotalUnitText(app(), Channel());
}

void Form3::FieldWasRead(const Field& field, int code) {
  if (field.list != &UNIT_SYSTEMCombo) return;
  FirstInThisRead(kUnitMark);
  ReadUnitSystem(app());
  RefillUnits();
  const int unit = app().state.UnitFlag == 0 && code == kUnitWithoutMetric ? 0 : code;
  UNIT_SYSTEMCombo.SetListIndex(unit);
  app().state.TotalUnit.at(static_cast<std::size_t>(Channel())) = unit;
  ShowTotalUnits();
}

void Form3::ShowTotalUnits() {
  ShowUnitsOf(UnitKind::kTotal);
  ClearTotalCache(app());
}

void Form3::ChannelSelect_Click(int index) {
  TakeChannel(index);
  AskUnderLock(app(), *this, [this] {
    GetTotalUnit(app(), Channel());
    if (app().state.SpecClass != 1 || !HasTwoPipes()) GetHeatTotalUnit(app());
  });
  ShowUnitsOf(UnitKind::kTotal);
  ShowUnitsOf(UnitKind::kHeatTotal);
}

void Form3::MODECombo_Click() {
  struct Row {
    CheckBox* box;
    Control* entry;
    Label* label;
    bool heat;
  };
  const bool stopped = MODECombo.ListIndex() == kStopped;
  // The unit stands in its own list and has no label beside it.
  Depend(UNIT_SYSTEM, UNIT_SYSTEMCombo, stopped);
  for (const Row& row : {Row{&ConstantCheck, &ConstantCheckText, &Label2(10), false},
                         Row{&F_TOTAL_PRESET, &F_TOTAL_PRESETText, &Label2(1), false},
                         Row{&PULSE_WIDTH_1, &PULSE_WIDTH_1Combo, &Label2(0), false},
                         Row{&H_TOTAL_ConstantCheck, &H_TOTAL_ConstantText, &HSekisanlbl(0), true},
                         Row{&C_TOTAL_PRESETCheck, &C_TOTAL_PRESETText, &HSekisanlbl(1), true}}) {
    const bool on = stopped && (!row.heat || HasHeat());
    Depend(*row.box, *row.entry, on);
    row.label->SetEnabled(on);
  }
}

}  // namespace vlt
