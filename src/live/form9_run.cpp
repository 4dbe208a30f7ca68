// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "files/settings_file.h"
#include "link/device_queries.h"
#include "link/operation.h"
#include "link/port.h"
#include "live/form9.h"
#include "resources/text_ids.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kTickMs = 1000;

// Captions that belong to units which are about to be read anew.
void ClearUnitCaches(App& app) {
  ClearProcessCache(app);
  ClearFlowCache(app);
  ClearTotalCache(app);
  ClearHeatFlowCache(app);
  ClearHeatTotalCache(app);
  ClearTempCache(app);
}

}  // namespace

bool Form9::CanStart() {
  if (MeasureFilePath.empty()) {
    app().Show(app().Text(text::kSpecifyFileToSave), MessageIcon::kStop);
    SetRunButtons(0);
    return false;
  }
  return CheckScales();
}

void Form9::Start_Click() {
  if (run_.Busy() || run_.Leaving()) return;
  app().state.StopRequest = 0;
  if (!CanStart()) return;
  log_.BeginRun();
  app().windows.SetMousePointer(kHourglassPointer);
  if (!OpenPortOrTell(app(), MessageIcon::kStop)) return;
  run_.Start([this] { return PrepareRun(); }, [this] { BeginCycles(); });
}

bool Form9::PrepareRun() {
  LockForRun();
  PrepareTrend();
  period_ms_ = static_cast<std::int64_t>(EnteredCycle()) * kTickMs;
  EmptyBoxes();
  const bool asked = AskUnits();
  app().windows.SetMousePointer(kNormalPointer);
  if (!asked) return false;
  ShowChannelsInUse();
  ShowUnits();
  WriteMeasureHeader(MeasureFilePath);
  log_.EnterRun(Name());
  const Shown& plotted = kShown[static_cast<std::size_t>(PlottedPlace())];
  Chart2D1.SetYTitle(plotted.unit(*this, ChosenChannel()).Caption());
  return true;
}

void Form9::BeginCycles() {
  ShowState(text::kDisplayStarted, false);
  AcquireOnce();
  if (!run_.GoesOn()) return;
  CycleCount = 0;
  CycleSeconds = EnteredCycle();
  CycleTimer.SetInterval(kTickMs);
  CycleTimer.SetRunning(true);
  RestartTimer();
}

int Form9::EnteredCycle() const {
  return static_cast<int>(RoundHalfEven(ParseNumber(Cycle.Text()).value_or(1)));
}

void Form9::LockForRun() {
  SetRunButtons(2);
  Frame6.SetEnabled(false);
  SetScaleControls(false);
  Stop.SetEnabled(true);
}

void Form9::SetScaleControls(bool enabled) {
  for (Control* control : std::initializer_list<Control*>{&CH_Combo, &lblChannelSelect, &Flow_Combo,
                                                          &lblFlowSelect, &Frame5, &Frame4}) {
    control->SetEnabled(enabled);
  }
  if (enabled) {
    Text_Box_Enable();
  } else {
    Text_Box_Able();
  }
}

// False when the run is to end.
bool Form9::AskUnits() {
  mark_ = KnownMark(app().state);
  if (const int system = GetUnitFlag(app()); system >= 0) mark_.unit_system = system;
  ClearUnitCaches(app());
  if (run_.GoesOn()) {
    ChannelMode = GetChannelConfig(app());
    mark_.specification = KnownMark(app().state).specification;
    TellUnknownChannels();
  }
  heat_ = ChannelMode != 3 && app().state.SpecClass == 0;
  for (int ch = 0; ch < kChannels; ++ch) {
    if (run_.GoesOn()) GetRangeUnit(app(), ch);
    if (run_.GoesOn()) GetTotalUnit(app(), ch);
  }
  if (app().state.SpecClass == 0) {
    for (const auto query : {GetHeatFlowUnit, GetHeatTotalUnit, GetTempUnit}) {
      if (run_.GoesOn()) query(app());
    }
  }
  name_questions_ = GetIdentifyRuns(app()) ? LiveRun::kMostNameQuestions : 0;
  LearnMeter();
  BuildFlowUnitNames(app());
  BuildTotalUnitNames(app());
  BuildHeatFlowUnitNames(app());
  BuildHeatTotalUnitNames(app());
  BuildTempUnitNames(app());
  BuildBaseUnitNames(app());
  return run_.GoesOn();
}

// Who answers now; the number that the session knows may be that of a meter from before. Without an answer it
// is asked again behind good cycles.
void Form9::LearnMeter() {
  if (name_questions_ == 0 || !run_.GoesOn()) return;
  MeterMark told{.unit_system = mark_.unit_system};
  std::string differs;
  if (ProveMeter(app(), OwnStation(app(), kModeUnitQuery), told, differs) != MeterProof::kSame) {
    --name_questions_;
    return;
  }
  name_questions_ = 0;
  mark_.id_number = told.id_number;
}

std::string Form9::MeterName() const { return mark_.id_number ? ZeroPadded(*mark_.id_number, 4) : ""; }

// The run goes on with all channels; why some of them stay silent stands in the main window's status line,
// which the cycles leave alone.
void Form9::TellUnknownChannels() {
  if (ChannelMode > 0) return;
  app().Status(app().Text(text::kChannelsUnknown) + " " + app().state.LastErrorText);
}

void Form9::ShowUnits() {
  const LiveUnits units = KnownUnits(app().state);
  for (int ch = 0; ch < kChannels; ++ch) {
    for (int place = 0; place < FieldCount(); ++place) {
      const Shown& shown = kShown[static_cast<std::size_t>(place)];
      if (shown.unit == nullptr) continue;
      shown.unit(*this, ch).SetCaption(
          LiveUnitText(units, LiveFieldAt(place).unit, ch, app().state.LangOffset));
    }
  }
}

std::vector<Control*> Form9::HeatLabels() {
  std::vector<Control*> labels = {
      &lblHPerUnit,    &lblHRyuryoUnit,     &lblTHERMAL_FLOWPer, &lblTHERMAL_FLOW,  &lblTEMP_DIFFERENCE,
      &lblH_TOTAL,     &lblHTotalPulse,     &lblCTotal,          &lblCTotalPulse,   &lblSUPPLY_TEMP,
      &lblRETURN_TEMP, &lblHSekisanUnit(0), &lblHSekisanUnit(1), &lblHPulseUnit(0), &lblHPulseUnit(1)};
  lbldegreeCUnit.ForEach([&](Label& label) { labels.push_back(&label); });
  return labels;
}

void Form9::EnableChannelLabels(int ch, bool enabled) {
  const ControlArray<Label>* names[] = {&lblCh1, &lblCh2, &lblCh3};
  names[ch]->ForEach([&](Label& label) { label.SetEnabled(enabled); });
  for (const Shown& shown : std::span(kShown).first(kPlainFields)) {
    if (shown.unit != nullptr) shown.unit(*this, ch).SetEnabled(enabled);
  }
}

void Form9::ShowChannelsInUse() {
  for (int ch = 0; ch < kChannels; ++ch) {
    const bool used = ch < ChannelCount();
    EnableChannelLabels(ch, used);
    for (std::size_t place = 0; place < kShown.size(); ++place) {
      (this->*kShown[place].box)(ch).SetEnabled(used && (place < kHeatPlace || heat_));
    }
  }
  for (Control* label : HeatLabels()) label->SetEnabled(heat_);
  if (ChannelMode != 3) return;
  lblCh3(1).SetEnabled(false);
  txtRyusoku(2).SetEnabled(false);
}

void Form9::AcquireOnce() {
  TakePeriod();
  trend.MakeRoom();
  const bool good = ReadMeasuredValues() == 0;
  trend.Put(good ? TrendValue : std::nullopt);
  ShowState(text::kAcquiring, !good);
  if (good) LearnMeter();
}

// The run's state in words; behind a failed cycle or run why, and what the run waits for.
void Form9::ShowState(int text_id, bool with_error) {
  std::string text = app().Text(text_id);
  if (with_error) {
    const std::string& error = app().state.LastErrorText;
    text += " " + error;
    if (run_.Waiting()) text += (error.empty() ? "" : " ") + run_.WaitText();
    const bool gone =
        !run_.Waiting() && !app().platform.port.IsOpen() && !app().state.PortFaultReason.empty();
    if (gone) text += " " + app().state.PortFaultReason;
  }
  StatusBar2.SetPanel(1, app().Stamped(text));
}

// Between two cycles.
void Form9::ShowWait() { ShowState(text::kAcquiring, run_.Waiting()); }

// The count of seconds begins again when a cycle has returned: its period is the cycle's seconds plus what
// the exchanges took.
void Form9::RestartTimer() {
  if (!CycleTimer.Running()) return;
  CycleTimer.SetRunning(false);
  CycleTimer.SetRunning(true);
}

void Form9::CycleTimer_Timer() {
  if (run_.Busy()) return;
  if (Running != 1) {
    EndTicks();
    WakePageInFront();
    return;
  }
  if (++CycleCount < CycleSeconds) return;
  run_.Cycle([this] {
    AcquireOnce();
    CycleCount = 0;
    RestartTimer();
  });
}

// What is left of a run that was stopped.
void Form9::EndTicks() {
  CycleTimer.SetRunning(false);
  ShowState(text::kDisplayEnded, true);
  if (!app().state.AppRunning) app().platform.events.EndProcess();
}

// A page that was opened since Stop has taken the ticks for a run and its commands are off.
void Form9::WakePageInFront() {
  const std::vector<Form*> pages = List().VisiblePages();
  if (!pages.empty() && pages.back() != this && !app().state.UiLocked) pages.back()->Form_Activate();
}

void Form9::Stop_Click() {
  if (app().state.PvRunning == 0) app().state.StopRequest = 1;
  run_.Stop();
}

void Form9::AskChannelMode() {
  const Operation operation(app(), *this, Operation::kUnnamed);
  ChannelMode = GetChannelConfig(app());
}

void Form9::RunStopped(bool may_ask) {
  log_.EndRun();
  Frame6.SetEnabled(true);
  if (may_ask) run_.Ask([this] { AskChannelMode(); });
  FillChannelList();
  SetScaleControls(true);
  for (int ch = 0; ch < kChannels; ++ch) EnableChannelLabels(ch, true);
  for (Control* label : HeatLabels()) label->SetEnabled(true);
  SetRunButtons(3);
  ShowState(text::kDisplayEnded, true);
  ShowLog();
}

}  // namespace vlt
