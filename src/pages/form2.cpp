// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form2.h"

#include "meter/device_queries.h"
#include "meter/range_table.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

constexpr int kSingleType = 0;

// What a read asks of the unit, once.
constexpr int kUnitMark = 0;

}  // namespace

Form2::Form2(App& app)
    : ChannelPage(app, {.name = "Form2",
                        .texts = {.title = 1170,
                                  .set_started = 3992,
                                  .set_completed = 4002,
                                  .read_started = 4012,
                                  .read_completed = 4022},
                        .channel = &SharedState::RangeChannel,
                        .unit_track = &SharedState::RangeUnitTrack}) {
  column().SetFields(Table());
  TypeCheckCombo.on_click = [this] { TypeCheckCombo_Click(); };
}

std::vector<Field> Form2::Table() {
  return {
      Bind(RangeRow("damping"), DAMPING, DAMPINGText, &Label3(2)),
      Bind(RangeRow("kind"), chkKind, cmbKind),
      Bind(RangeRow("unit"), UNIT_SYSTEM, UNIT_SYSTEMCombo),
      Bind(RangeRow("type"), TypeCheck, TypeCheckCombo),
      Bind(RangeRow("full_scale_1"), FULL_SCALE1, FULL_SCALE1Text, &Label2(7)),
      Bind(RangeRow("full_scale_2"), FULL_SCALE2, FULL_SCALE2Text, &Label2(6)),
      Bind(RangeRow("hysteresis"), HYSTERISIS, HYSTERISISText, &Label2(0)),
      Bind(RangeRow("burnout"), OUTPUT_BURNOUT, OUTPUT_BURNOUTCombo),
      Bind(RangeRow("burnout_timer"), BURNOUT_TIMER, BURNOUT_TIMERText, &Label3(0)),
      Bind(RangeRow("output_limit_low"), OUTPUT_LIMIT_Low, OUTPUT_LIMIT_LowText, &Label2(1)),
      Bind(RangeRow("output_limit_high"), OUTPUT_LIMIT_High, OUTPUT_LIMIT_HighText, &Label2(2)),
      Bind(RangeRow("rate_limit_timer"), RATE_LIMIT_TIMER, RATE_LIMIT_TIMERText, &Label3(1)),
      Bind(RangeRow("rate_limit"), RATE_LIMIT, RATE_LIMITText, &Label2(8)),
      Bind(RangeRow("cut_off"), LOW_FLOW_OUTPUT_CUT, LOW_FLOW_OUTPUT_CUTText, &Label2(9)),
      Bind(RangeRow("zero"), ZERO, ZEROText, &Label2(12)),
      Bind(RangeRow("span"), SPAN, SPANText, &Label2(3)),
      Bind(RangeRow("thermal_full_scale_1"), CALORIE_FULL_SCALE1, CALORIE_FULL_SCALE1Text, &HRangelbl(0)),
      Bind(RangeRow("thermal_full_scale_2"), CALORIE_FULL_SCALE2, CALORIE_FULL_SCALE2Text, &HRangelbl(1)),
  };
}

void Form2::BuildLists() {
  kind_is_fixed_ = false;
  ChannelPage::BuildLists();
  LoadUnits();
}

void Form2::FillUnits() { column().FillList(UNIT_SYSTEMCombo); }

MeterFacts Form2::FactsOfList(const Field& field) {
  MeterFacts facts = ChannelPage::FactsOfList(field);
  if (field.list == &cmbKind) facts.PathMode = kind_is_fixed_ ? kTwoPipesMode : kUnknownMode;
  return facts;
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

void Form2::C02_RANGE_FrmInit() { SetChannelCaptions({}); }

void Form2::Taihi_Form2() {
  ChannelPage::Taihi();
  app().slots[SlotOf("RANGE", "H_FULL_SCALE2_Data")] = app().slots[SlotOf("RANGE", "H_FULL_SCALE1_Data")];
}

void Form2::ReadBlocks() {
  const Block& block = Channel() == kComputedChannel ? kComputedRangeBlock : kRangeBlock;
  RegisterData data;
  const bool answered = column().FetchBlock(block, data);
  AskConfig();
  UpdateKinds();
  if (answered) column().ShowBlock(block, data);
  if (HasHeatRegisters(app().state) && Channel() == 0) column().ReadBlock(kThermalRangeBlock);
}

// A ticked kind or unit brings what the captions need.
void Form2::LearnUnit(const Field& field) {
  if (field.parameter->unit != UnitKind::kFlow || chkKind.Ticked() || UNIT_SYSTEM.Ticked()) return;
  if (!column().FirstInThisRead(kUnitMark)) return;
  GetRangeKind(app(), Channel());
  ReadUnitSystem(app());
  if (UnitsAreStale()) RefillUnits();
  GetRangeUnit(app(), Channel());
  ShowFlowUnits();
}

void Form2::FieldWasRead(const Field& field, int code) {
  if (field.list == &cmbKind) {
    ShowFlowUnits();
  } else if (field.list == &UNIT_SYSTEMCombo) {
    ReadUnitSystem(app());
    RefillUnits();
    UNIT_SYSTEMCombo.SetListIndex(code);
    ShowFlowUnits();
  }
}

void Form2::ShowFlowUnits() {
  column().ShowUnitsOf(UnitKind::kFlow);
  ClearFlowCache(app());
}

void Form2::ChannelSelect_Click(int index) {
  const bool measured = index != kComputedChannel;
  Depend(DAMPING, DAMPINGText, measured);
  Depend(LOW_FLOW_OUTPUT_CUT, LOW_FLOW_OUTPUT_CUTText, measured);
  Depend(ZERO, ZEROText, measured);
  Depend(SPAN, SPANText, measured);
  TakeChannel(index);
  UpdateKinds();
  EnableThermal();
  column().ShowUnitsOf(UnitKind::kFlow);
}

void Form2::UpdateKinds() {
  // Without an answer about the pipes the list stays as it is.
  const bool two_pipes = HasTwoPipes() || (Config() == ChannelConfig::kUnknown && kind_is_fixed_);
  const bool fixed = Channel() == kComputedChannel && two_pipes;
  if (fixed == kind_is_fixed_) return;
  if (fixed) remembered_kind_ = cmbKind.ListIndex();
  kind_is_fixed_ = fixed;
  column().FillList(cmbKind);
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
  const bool heat = MayHaveHeat(app().state);
  if (!heat) {
    CALORIE_FULL_SCALE1.SetValue(0);
    CALORIE_FULL_SCALE2.SetValue(0);
  }
  const bool first = heat && Channel() == 0;
  Depend(CALORIE_FULL_SCALE1, CALORIE_FULL_SCALE1Text, first);
  Depend(CALORIE_FULL_SCALE2, CALORIE_FULL_SCALE2Text,
         first && HasHeatRegisters(app().state) && TypeCheckCombo.ListIndex() > kSingleType);
}

}  // namespace vlt
