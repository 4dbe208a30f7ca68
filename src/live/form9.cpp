// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/form9.h"

#include <algorithm>
#include <cmath>

#include "link/port.h"
#include "live/entry_check.h"
#include "resources/text_ids.h"
#include "state/form_lock.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr const char* kDefaultMax = "1000";
constexpr const char* kDefaultMin = "-1000";
constexpr const char* kDefaultCycle = "1";
constexpr const char* kDefaultPoints = "50";

constexpr double kLowest = -2147483648.0;
constexpr double kHighest = 2147483647.0;
constexpr double kLongestCycle = 3600;

constexpr int kChannelNames[] = {182, 183, 184};
constexpr int kQuantityNames[] = {2220, 2180, 2221};
constexpr std::size_t kVelocity = 1;  // among the quantities

}  // namespace

// A scale entry: its limits, what it holds at first, where it is kept between openings.
struct Form9::Scale {
  TextBox& box;
  double low;
  double high;
  const char* fallback;
  std::string SharedState::*kept;
};

std::vector<Form9::Scale> Form9::Scales() {
  return {
      {Max, kLowest, kHighest, kDefaultMax, &SharedState::TrendYScaleMax},
      {Min, kLowest, kHighest, kDefaultMin, &SharedState::TrendYScaleMin},
      {Cycle, 1, kLongestCycle, kDefaultCycle, &SharedState::TrendXScaleCycle},
      {PointText, 1, kHighest, kDefaultPoints, &SharedState::TrendXScalePoint},
  };
}

Form9::Form9(App& app)
    : PageForm(app, "Form9"),
      log_(app, [this] { return HeadLines(); }),
      run_(app, *this, [this](bool may_ask) { RunStopped(may_ask); }) {
  run_.WaitBy({.prove =
                   [this](std::string& differs) {
                     return ProveMeter(this->app(), OwnStation(this->app(), kModeUnitQuery), mark_, differs);
                   },
               .changed = [this] { ShowWait(); },
               .meter = [this] { return MeterName(); }});
  Start.on_click = [this] { Start_Click(); };
  Stop.on_click = [this] { Stop_Click(); };
  SaveCSV.on_click = [this] { SaveCSV_Click(); };
  CycleTimer.on_timer = [this] { CycleTimer_Timer(); };
  CH_Combo.on_click = [this] { CH_Combo_Click(); };
  Flow_Combo.on_click = [this] { Flow_Combo_Click(); };
  for (const Scale& scale : Scales()) {
    scale.box.on_lost_focus = [this, scale] { CheckScale(scale); };
  }
  for (const Shown& shown : kShown) (this->*shown.box).ForEach([](TextBox& box) { box.SetLocked(true); });
}

void Form9::C07_KEISOKU_FrmInit() {
  const struct {
    Control& control;
    int text_id;
  } rows[] = {
      {Start, 1230},
      {Stop, 1970},
      {SaveCSV, 180},
      {lblChannelSelect, 179},
      {lblFlowSelect, 2350},
      {Frame6, 680},
      {Frame5, 510},
      {lblMax, 1370},
      {lblMin, 1350},
      {Frame4, 500},
      {lblCycle, 1450},
      {lblCycleUnit, 100},
      {lblPoint, 1990},
      {Frame1, 1510},
      {Frame2, 450},
      {lblRyusoku, 2180},
      {lblRyuryo, 2220},
      {lblRyuryoPer, 2221},
      {lblPlusSekisan, 2360},
      {lblPlusSekisanPulse, 2380},
      {lblMinusSekisan, 2370},
      {lblMinusSekisanPulse, 2390},
      {lblTHERMAL_FLOW, 2391},
      {lblTHERMAL_FLOWPer, 2392},
      {lblTEMP_DIFFERENCE, 2393},
      {lblH_TOTAL, 2394},
      {lblHTotalPulse, 2395},
      {lblCTotal, 2396},
      {lblCTotalPulse, 2397},
      {lblSUPPLY_TEMP, 2398},
      {lblRETURN_TEMP, 2399},
      {lblHPerUnit, 10},
  };
  SetCaption(app().Text(text::kMeasure));
  for (const auto& row : rows) row.control.SetCaption(app().Text(row.text_id));
  lblRyuryoPerUnit.ForEach([this](Label& label) { label.SetCaption(app().Text(text::kPercentUnit)); });
  lblPulseUnit.ForEach([this](Label& label) { label.SetCaption(app().Text(text::kPulseUnit)); });
  lblHPulseUnit.ForEach([this](Label& label) { label.SetCaption(app().Text(text::kPulseUnit)); });
  const ControlArray<Label>* names[] = {&lblCh1, &lblCh2, &lblCh3};
  for (std::size_t i = 0; i < std::size(names); ++i) {
    ChannelNames[i] = app().Text(kChannelNames[i]);
    QuantityNames[i] = app().Text(kQuantityNames[i]);
    names[i]->ForEach([&](Label& label) { label.SetCaption(ChannelNames[i]); });
  }
  for (Control* control : Controls()) control->SetFont({app().state.PageFont, 12, false});
}

void Form9::Form_Load() {
  for (const Scale& scale : Scales()) scale.box.SetText(scale.fallback);
  C07_KEISOKU_FrmInit();
  SetRunButtons(0);
  RestoreMeasureScales();
  KeepScales();
  Chart2D1.SetYTitle("[   ]");
  PrepareTrend();
  FillChannelList();
}

void Form9::Form_Activate() {
  // The last tick of a run that was stopped would be taken for a run.
  if (IsEnding()) EndTicks();
  const bool idle = IsLineFree(app()) && !run_.Busy();
  Start.SetEnabled(idle);
  SaveCSV.SetEnabled(idle);
  if (!idle || run_.Leaving()) return;
  run_.Ask([this] {
    OpenPort(app());
    AskChannelMode();
    FillChannelList();
  });
}

void Form9::Form_Deactivate() { SetButtonIdle(); }

void Form9::Form_Unload(int&) {
  for (Control* control :
       std::initializer_list<Control*>{&Start, &SaveCSV, &Frame6, &CH_Combo, &Flow_Combo}) {
    control->SetEnabled(true);
  }
  CycleTimer.SetRunning(false);
  Text_Box_Enable();
  if (app().state.PvRunning == 0 && !run_.IsForeignLock()) app().state.StopRequest = 1;
  run_.Leave();
  if (IsLineFree(app())) app().state.StopRequest = 1;
  Taihi_Form9();
  if (app().frame == nullptr) return;
  app().frame->Status().SetPanel(1, "");
  app().frame->SetPageButtonIdle(Name());
}

void Form9::Taihi_Form9() {
  for (const Scale& scale : Scales()) app().state.*scale.kept = Trim(scale.box.Text());
}

// What is typed is kept at once: the settings file is written while the page is still open.
void Form9::KeepScales() {
  for (const Scale& scale : Scales()) {
    scale.box.on_change = [this, scale] { app().state.*scale.kept = Trim(scale.box.Text()); };
  }
}

void Form9::RestoreMeasureScales() {
  for (const Scale& scale : Scales()) {
    const std::string& kept = app().state.*scale.kept;
    if (!kept.empty()) scale.box.SetText(kept);
  }
}

void Form9::SetRunButtons(int state) {
  if (state < 0 || state > 3) return;
  const bool running = state == 2;
  Start.SetEnabled(!running);
  SaveCSV.SetEnabled(!running);
  Stop.SetEnabled(running);
}

void Form9::Text_Box_Enable() {
  for (const Scale& scale : Scales()) scale.box.SetEnabled(true);
}

void Form9::Text_Box_Able() {
  for (const Scale& scale : Scales()) scale.box.SetEnabled(false);
}

bool Form9::CheckScale(const Scale& scale) { return CheckEntry(app(), scale.box, scale.low, scale.high); }

bool Form9::CheckScales() {
  for (const Scale& scale : Scales()) {
    if (!CheckScale(scale)) return false;
  }
  return true;
}

double Form9::ScaleValue(const TextBox& box, const char* fallback) const {
  return ParseNumber(box.Text()).value_or(ParseNumber(fallback).value_or(0));
}

void Form9::PrepareTrend() {
  const double points = std::trunc(ScaleValue(PointText, kDefaultPoints));
  trend.Start(static_cast<std::int64_t>(std::clamp(points, 1.0, kHighest)), ScaleValue(Min, kDefaultMin),
              ScaleValue(Max, kDefaultMax));
}

int Form9::ChosenChannel() const { return std::max(CH_Combo.ListIndex(), 0); }

bool Form9::IsShortList() const { return HasNoVelocity(ChosenChannel()); }

void Form9::FillChannelList() {
  const bool single = ChannelMode == 1;
  const int kept = app().state.TrendChannelIndex;
  CH_Combo.Clear();
  for (const std::string& name : ChannelNames) {
    if (CH_Combo.Count() == 0 || !single) CH_Combo.AddItem(name);
  }
  CH_Combo.SetListIndex(kept < 0 || kept >= CH_Combo.Count() ? 0 : kept);
}

void Form9::FillQuantityList() {
  const int kept = app().state.TrendQuantityIndex;
  Flow_Combo.Clear();
  for (const std::string& name : QuantityNames) {
    if (&name != &QuantityNames[kVelocity] || !IsShortList()) Flow_Combo.AddItem(name);
  }
  Flow_Combo.SetListIndex(kept < 0 || kept >= Flow_Combo.Count() ? 0 : kept);
}

void Form9::CH_Combo_Click() {
  app().state.TrendChannelIndex = ChosenChannel();
  FillQuantityList();
}

void Form9::Flow_Combo_Click() { app().state.TrendQuantityIndex = std::max(Flow_Combo.ListIndex(), 0); }

}  // namespace vlt
