// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "link/port.h"
#include "live/channel_reasons.h"
#include "live/form9.h"

namespace vlt {
namespace {

constexpr int kFailed = -7000;
constexpr unsigned kLineColour = 0xFF0000;  // blue
constexpr const char* kNoValue = "-";

// What the trend can draw, by the quantity list.
constexpr int kQuantityPlaces[] = {kFlowPlace, kVelocityPlace, kFlowPercentPlace};
constexpr int kQuantityPlacesWithoutVelocity[] = {kFlowPlace, kFlowPercentPlace, kFlowPercentPlace};

}  // namespace

const std::array<Form9::Shown, kAllFields> Form9::kShown = {{
    {&Form9::txtRyusoku, [](Form9& f, int ch) -> Label& { return f.lblRyusokuUnit(ch); }},
    {&Form9::txtRyuryo, [](Form9& f, int ch) -> Label& { return f.lblRyuryoUnit(ch); }},
    {&Form9::txtRyuryoPer, [](Form9& f, int ch) -> Label& { return f.lblRyuryoPerUnit(ch); }},
    {&Form9::txtPlusSekisan, [](Form9& f, int ch) -> Label& { return f.lblSekisanUnit(2 * ch); }},
    {&Form9::txtMinusSekisan, [](Form9& f, int ch) -> Label& { return f.lblSekisanUnit(2 * ch + 1); }},
    {&Form9::txtPlusSekisanPulse, [](Form9& f, int ch) -> Label& { return f.lblPulseUnit(2 * ch); }},
    {&Form9::txtMinusSekisanPulse, [](Form9& f, int ch) -> Label& { return f.lblPulseUnit(2 * ch + 1); }},
    {&Form9::txtRAS},
    {&Form9::txtThermalFlowPer, [](Form9& f, int) -> Label& { return f.lblHPerUnit; }},
    {&Form9::txtThermalFlow, [](Form9& f, int) -> Label& { return f.lblHRyuryoUnit; }},
    {&Form9::txtTempDifference, [](Form9& f, int) -> Label& { return f.lbldegreeCUnit(2); }},
    {&Form9::txtHTotal, [](Form9& f, int) -> Label& { return f.lblHSekisanUnit(0); }},
    {&Form9::txtHTotalPulse, [](Form9& f, int) -> Label& { return f.lblHPulseUnit(0); }},
    {&Form9::txtCTotal, [](Form9& f, int) -> Label& { return f.lblHSekisanUnit(1); }},
    {&Form9::txtCTotalPulse, [](Form9& f, int) -> Label& { return f.lblHPulseUnit(1); }},
    {&Form9::txtSupplyTemp, [](Form9& f, int) -> Label& { return f.lbldegreeCUnit(0); }},
    {&Form9::txtReturnTemp, [](Form9& f, int) -> Label& { return f.lbldegreeCUnit(1); }},
}};

int Form9::PlottedPlace() const {
  const auto quantity = static_cast<std::size_t>(std::clamp(Flow_Combo.ListIndex(), 0, 2));
  return HasNoVelocity(ChosenChannel()) ? kQuantityPlacesWithoutVelocity[quantity]
                                        : kQuantityPlaces[quantity];
}

int Form9::ReadMeasuredValues() {
  // While the run waits for its port nothing else opens it.
  if (!run_.Waiting() && !app().platform.port.IsOpen()) OpenPort(app());
  TrendValue.reset();
  ChannelReasons reasons;
  for (int ch = 0; ch < ChannelCount(); ++ch) {
    if (!ReadChannel(ch)) {
      reasons.Add(ChannelNames[static_cast<std::size_t>(ch)], app().state.LastErrorText);
    }
  }
  if (!reasons.Empty()) app().state.LastErrorText = reasons.Text();
  AppendMeasureRecord(MeasureFilePath, app().platform.clock.Now(),
                      std::span(texts_).first(static_cast<std::size_t>(ChannelCount())),
                      app().state.LastErrorText);
  return reasons.Empty() ? 0 : kFailed;
}

bool Form9::ReadChannel(int ch) {
  const bool measured = ReadBlock(MeasuredBlock(), ch);
  if (measured && (!heat_ || ReadBlock(HeatBlock(), ch))) return true;
  FailChannel(ch, measured ? kHeatPlace : kVelocityPlace);
  return false;
}

bool Form9::ReadBlock(const LiveBlock& block, int ch) {
  RegisterData data;
  if (!ReadRegisters(app(), SpanOf(block, ch), data)) return false;
  for (int row = 0; row < static_cast<int>(block.fields.size()); ++row)
    ShowField(block.place + row, ch, data);
  return true;
}

void Form9::ShowField(int place, int ch, const RegisterData& data) {
  const LiveField& field = LiveFieldAt(place);
  if (CH_Combo.ListIndex() == ch && PlottedPlace() == place) {
    TrendValue = LiveNumber(field, data);
    Chart2D1.SetColour(kLineColour);
  }
  std::string& text = texts_[static_cast<std::size_t>(ch)][static_cast<std::size_t>(place)];
  text = LiveText(field, data);
  if (place == kVelocityPlace) ShowVelocity(ch, text);
  const std::string& shown = place == kAlarmPlace ? AlarmOf(text, app().state.LangOffset) : text;
  (this->*kShown[static_cast<std::size_t>(place)].box)(ch).SetText(shown);
}

void Form9::ShowVelocity(int ch, std::string& text) {
  const bool there = !HasNoVelocity(ch);
  txtRyusoku(ch).SetEnabled(there);
  lblRyusokuUnit(ch).SetEnabled(there);
  if (there) return;
  text.clear();
  lblRyusokuUnit(ch).SetCaption("");
}

// What a silent channel showed before is not taken for its present state. The record has no value of a
// channel that has not answered in full; on the page the block that did answer stays.
void Form9::FailChannel(int ch, int first_place) {
  texts_[static_cast<std::size_t>(ch)].fill(kNoValue);
  for (const Shown& shown : std::span(kShown).subspan(static_cast<std::size_t>(first_place))) {
    TextBox& box = (this->*shown.box)(ch);
    if (box.Enabled()) box.SetText(kNoValue);
  }
}

void Form9::EmptyBoxes() {
  for (const Shown& shown : kShown) (this->*shown.box).ForEach([](TextBox& box) { box.SetText(""); });
}

}  // namespace vlt
