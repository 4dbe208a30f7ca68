// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/measure_values.h"

#include <algorithm>

#include "meter/units.h"

namespace vlt {
namespace {

constexpr unsigned kLineColour = 0xFF0000;  // blue
constexpr const char* kNoValue = "-";

// What the trend can draw, by the quantity list.
constexpr int kQuantityPlaces[] = {kFlowPlace, kVelocityPlace, kFlowPercentPlace};
constexpr int kQuantityPlacesWithoutVelocity[] = {kFlowPlace, kFlowPercentPlace, kFlowPercentPlace};

}  // namespace

const std::array<MeasureValues::Shown, kAllFields> MeasureValues::kShown = {{
    {&MeasureControls::txtRyusoku, [](MeasureControls& f, int ch) -> Label& { return f.lblRyusokuUnit(ch); }},
    {&MeasureControls::txtRyuryo, [](MeasureControls& f, int ch) -> Label& { return f.lblRyuryoUnit(ch); }},
    {&MeasureControls::txtRyuryoPer,
     [](MeasureControls& f, int ch) -> Label& { return f.lblRyuryoPerUnit(ch); }},
    {&MeasureControls::txtPlusSekisan,
     [](MeasureControls& f, int ch) -> Label& { return f.lblSekisanUnit(2 * ch); }},
    {&MeasureControls::txtMinusSekisan,
     [](MeasureControls& f, int ch) -> Label& { return f.lblSekisanUnit(2 * ch + 1); }},
    {&MeasureControls::txtPlusSekisanPulse,
     [](MeasureControls& f, int ch) -> Label& { return f.lblPulseUnit(2 * ch); }},
    {&MeasureControls::txtMinusSekisanPulse,
     [](MeasureControls& f, int ch) -> Label& { return f.lblPulseUnit(2 * ch + 1); }},
    {&MeasureControls::txtRAS},
    {&MeasureControls::txtThermalFlowPer, [](MeasureControls& f, int) -> Label& { return f.lblHPerUnit; }},
    {&MeasureControls::txtThermalFlow, [](MeasureControls& f, int) -> Label& { return f.lblHRyuryoUnit; }},
    {&MeasureControls::txtTempDifference,
     [](MeasureControls& f, int) -> Label& { return f.lbldegreeCUnit(2); }},
    {&MeasureControls::txtHTotal, [](MeasureControls& f, int) -> Label& { return f.lblHSekisanUnit(0); }},
    {&MeasureControls::txtHTotalPulse, [](MeasureControls& f, int) -> Label& { return f.lblHPulseUnit(0); }},
    {&MeasureControls::txtCTotal, [](MeasureControls& f, int) -> Label& { return f.lblHSekisanUnit(1); }},
    {&MeasureControls::txtCTotalPulse, [](MeasureControls& f, int) -> Label& { return f.lblHPulseUnit(1); }},
    {&MeasureControls::txtSupplyTemp, [](MeasureControls& f, int) -> Label& { return f.lbldegreeCUnit(0); }},
    {&MeasureControls::txtReturnTemp, [](MeasureControls& f, int) -> Label& { return f.lbldegreeCUnit(1); }},
}};

MeasureValues::MeasureValues(App& app, MeasureControls& page) : app_(app), page_(page) {
  for (const Shown& shown : kShown) (page_.*shown.box).ForEach([](TextBox& box) { box.SetLocked(true); });
}

int MeasureValues::ChosenChannel() const { return std::max(page_.CH_Combo.ListIndex(), 0); }

int MeasureValues::PlottedPlace() const {
  const auto quantity = static_cast<std::size_t>(std::clamp(page_.Flow_Combo.ListIndex(), 0, 2));
  return HasNoVelocity(ChosenChannel()) ? kQuantityPlacesWithoutVelocity[quantity]
                                        : kQuantityPlaces[quantity];
}

// --- reading -----------------------------------------------------------------------------------------------

ExchangeReport MeasureValues::Read(int ch) {
  ExchangeReport exchange = ReadBlock(MeasuredBlock(), ch);
  const bool measured = exchange.ok;
  if (measured && heat) exchange = ReadBlock(HeatBlock(), ch);
  if (!exchange) FailChannel(ch, measured ? kHeatPlace : kVelocityPlace);
  return exchange;
}

ExchangeReport MeasureValues::ReadBlock(const LiveBlock& block, int ch) {
  RegisterData data;
  ExchangeReport exchange = ReadRegisters(app_, SpanOf(block, ch), data);
  if (!exchange) return exchange;
  for (int row = 0; row < static_cast<int>(block.fields.size()); ++row)
    ShowField(block.place + row, ch, data);
  return exchange;
}

void MeasureValues::ShowField(int place, int ch, const RegisterData& data) {
  const LiveField& field = LiveFieldAt(place);
  if (page_.CH_Combo.ListIndex() == ch && PlottedPlace() == place) {
    TrendValue = LiveNumber(field, data);
    page_.Chart2D1.SetColour(kLineColour);
  }
  std::string& text = texts_[static_cast<std::size_t>(ch)][static_cast<std::size_t>(place)];
  text = LiveText(field, data);
  if (place == kVelocityPlace) ShowVelocity(ch, text);
  const std::string& shown = place == kAlarmPlace ? AlarmOf(text, app_.state.Spoken()) : text;
  (page_.*kShown[static_cast<std::size_t>(place)].box)(ch).SetText(shown);
}

void MeasureValues::ShowVelocity(int ch, std::string& text) {
  const bool there = !HasNoVelocity(ch);
  page_.txtRyusoku(ch).SetEnabled(there);
  page_.lblRyusokuUnit(ch).SetEnabled(there);
  if (there) return;
  text.clear();
  page_.lblRyusokuUnit(ch).SetCaption("");
}

// What a silent channel showed before is not taken for its present state. The record has no value of a
// channel that has not answered in full; on the page the block that did answer stays.
void MeasureValues::FailChannel(int ch, int first_place) {
  texts_[static_cast<std::size_t>(ch)].fill(kNoValue);
  for (const Shown& shown : std::span(kShown).subspan(static_cast<std::size_t>(first_place))) {
    TextBox& box = (page_.*shown.box)(ch);
    if (box.Enabled()) box.SetText(kNoValue);
  }
}

void MeasureValues::EmptyBoxes() {
  for (const Shown& shown : kShown) (page_.*shown.box).ForEach([](TextBox& box) { box.SetText(""); });
}

// --- what stands beside the values -------------------------------------------------------------------------

std::string MeasureValues::UnitCaption(int place, int ch) const {
  const auto unit = kShown.at(static_cast<std::size_t>(place)).unit;
  return unit ? unit(page_, ch).Caption() : "";
}

void MeasureValues::ShowUnits() {
  const LiveUnits units = KnownUnits(app_.state);
  for (int ch = 0; ch < kChannels; ++ch) {
    for (int place = 0; place < FieldCount(); ++place) {
      const Shown& shown = kShown[static_cast<std::size_t>(place)];
      if (shown.unit == nullptr) continue;
      shown.unit(page_, ch).SetCaption(LiveUnitText(units, LiveFieldAt(place).unit, ch, app_.state.Spoken()));
    }
  }
}

std::array<const ControlArray<Label>*, kChannels> MeasureValues::NameLabels() const {
  return {&page_.lblCh1, &page_.lblCh2, &page_.lblCh3};
}

void MeasureValues::ShowChannelNames(std::span<const std::string> names) {
  for (std::size_t ch = 0; ch < names.size(); ++ch) {
    NameLabels().at(ch)->ForEach([&](Label& label) { label.SetCaption(names[ch]); });
  }
}

std::vector<Control*> MeasureValues::HeatLabels() {
  MeasureControls& p = page_;
  std::vector<Control*> labels = {&p.lblHPerUnit,        &p.lblHRyuryoUnit,     &p.lblTHERMAL_FLOWPer,
                                  &p.lblTHERMAL_FLOW,    &p.lblTEMP_DIFFERENCE, &p.lblH_TOTAL,
                                  &p.lblHTotalPulse,     &p.lblCTotal,          &p.lblCTotalPulse,
                                  &p.lblSUPPLY_TEMP,     &p.lblRETURN_TEMP,     &p.lblHSekisanUnit(0),
                                  &p.lblHSekisanUnit(1), &p.lblHPulseUnit(0),   &p.lblHPulseUnit(1)};
  p.lbldegreeCUnit.ForEach([&](Label& label) { labels.push_back(&label); });
  return labels;
}

void MeasureValues::EnableChannelLabels(int ch, bool enabled) {
  NameLabels().at(static_cast<std::size_t>(ch))->ForEach([&](Label& label) { label.SetEnabled(enabled); });
  for (const Shown& shown : std::span(kShown).first(kPlainFields)) {
    if (shown.unit != nullptr) shown.unit(page_, ch).SetEnabled(enabled);
  }
}

void MeasureValues::ShowChannelsInUse() {
  for (int ch = 0; ch < kChannels; ++ch) {
    const bool used = ch < ChannelCount();
    EnableChannelLabels(ch, used);
    for (std::size_t place = 0; place < kShown.size(); ++place) {
      (page_.*kShown[place].box)(ch).SetEnabled(used && (place < kHeatPlace || heat));
    }
  }
  for (Control* label : HeatLabels()) label->SetEnabled(heat);
  if (ChannelMode != 3) return;
  page_.lblCh3(1).SetEnabled(false);
  page_.txtRyusoku(2).SetEnabled(false);
}

void MeasureValues::ReleaseLabels() {
  for (int ch = 0; ch < kChannels; ++ch) EnableChannelLabels(ch, true);
  for (Control* label : HeatLabels()) label->SetEnabled(true);
}

}  // namespace vlt
