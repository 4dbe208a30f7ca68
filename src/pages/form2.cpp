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
                        .unit = &RangeRow("unit"),
                        .burnout = &RangeRow("burnout"),
                        .burnout_timer = &RangeRow("burnout_timer"),
                        .channel = &SharedState::RangeChannel,
                        .unit_track = &SharedState::RangeUnitTrack}) {
  BindEntries();
  TypeCheckCombo.on_click = [this] { TypeCheckCombo_Click(); };
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
  if (field.parameter->unit != UnitKind::kFlow || cmbKind.box.Ticked() || UNIT_SYSTEMCombo.box.Ticked())
    return;
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
  Depend(DAMPINGText, measured);
  Depend(LOW_FLOW_OUTPUT_CUTText, measured);
  Depend(ZEROText, measured);
  Depend(SPANText, measured);
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
  Depend(FULL_SCALE2Text, second);
  Depend(HYSTERISISText, second);
  EnableThermal();
}

void Form2::EnableThermal() {
  const bool heat = MayHaveHeat(app().state);
  if (!heat) {
    CALORIE_FULL_SCALE1Text.box.SetValue(0);
    CALORIE_FULL_SCALE2Text.box.SetValue(0);
  }
  const bool first = heat && Channel() == 0;
  Depend(CALORIE_FULL_SCALE1Text, first);
  Depend(CALORIE_FULL_SCALE2Text,
         first && HasHeatRegisters(app().state) && TypeCheckCombo.ListIndex() > kSingleType);
}

}  // namespace vlt
