// SPDX-License-Identifier: GPL-3.0-or-later
// The run of the measure page.
#include "link/operation.h"
#include "link/port.h"
#include "live/channel_reasons.h"
#include "live/form9.h"
#include "meter/device_queries.h"
#include "resources/text_ids.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr int kTickMs = 1000;
constexpr int kFailed = -7000;

}  // namespace

bool Form9::CanStart() {
  if (MeasureFilePath.empty()) {
    app().Show(app().Text(text::kSpecifyFileToSave), MessageIcon::kStop);
    SetRunButtons(0);
    return false;
  }
  return scale_.Check();
}

void Form9::Start_Click() {
  if (!run_.MayStart() || !CanStart()) return;
  file_.log.BeginRun();
  app().windows.SetMousePointer(kHourglassPointer);
  if (!OpenPortOrTell(app(), MessageIcon::kStop)) return;
  run_.Start([this] { return PrepareRun(); }, [this] { BeginCycles(); });
}

bool Form9::PrepareRun() {
  LockForRun();
  scale_.PrepareTrend();
  file_.SetPeriod(static_cast<std::int64_t>(scale_.EnteredCycle()) * kTickMs);
  values_.EmptyBoxes();
  const bool asked = meter_.Ask();
  app().windows.SetMousePointer(kNormalPointer);
  if (!asked) return false;
  values_.ShowChannelsInUse();
  values_.ShowUnits();
  WriteMeasureHeader(MeasureFilePath);
  file_.log.EnterRun(Name());
  Chart2D1.SetYTitle(values_.PlottedUnit());
  return true;
}

void Form9::BeginCycles() {
  run_.Say(text::kDisplayStarted);
  AcquireOnce();
  if (!run_.GoesOn()) return;
  CycleCount = 0;
  CycleSeconds = scale_.EnteredCycle();
  CycleTimer.SetInterval(kTickMs);
  CycleTimer.SetRunning(true);
  RestartTimer();
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

void Form9::AcquireOnce() {
  file_.TakePeriod();
  trend.MakeRoom();
  failed_ = ReadMeasuredValues() != 0;
  trend.Put(failed_ ? std::nullopt : values_.Drawn());
  run_.Say(text::kAcquiring);
  if (!failed_) meter_.Learn();
}

int Form9::ReadMeasuredValues() {
  // While the run waits for its port nothing else opens it.
  if (!run_.Waiting() && !app().platform.port.IsOpen()) OpenPort(app());
  values_.ForgetDrawn();
  ChannelReasons reasons;
  for (int ch = 0; ch < values_.ChannelCount(); ++ch) {
    const ExchangeReport exchange = values_.Read(ch);
    if (!exchange) reasons.Add(scale_.ChannelNames[static_cast<std::size_t>(ch)], exchange.text);
  }
  if (!reasons.Empty()) app().state.LastErrorText = reasons.Text();
  AppendMeasureRecord(MeasureFilePath, app().platform.clock.Now(), values_.Texts(),
                      app().state.LastErrorText);
  return reasons.Empty() ? 0 : kFailed;
}

// Behind a failed cycle or run why, and what the run waits for.
std::string Form9::BehindState(int words) const {
  if (words == text::kDisplayStarted || (words == text::kAcquiring && !failed_)) return {};
  std::string behind = " " + Joined(app().state.LastErrorText, run_.WaitText());
  const bool gone = !run_.Waiting() && !app().platform.port.IsOpen() && !app().state.PortFaultReason.empty();
  if (gone) behind += " " + app().state.PortFaultReason;
  return behind;
}

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
  run_.EndAlone();
}

// A page that was opened since Stop has taken the ticks for a run and its commands are off.
void Form9::WakePageInFront() {
  const std::vector<Form*> pages = List().VisiblePages();
  if (!pages.empty() && pages.back() != this && !app().state.UiLocked) pages.back()->Form_Activate();
}

void Form9::AskChannelMode() {
  const Operation operation(app(), *this, Operation::kUnnamed);
  ChannelMode = GetChannelConfig(app());
}

void Form9::RunStopped(bool may_ask) {
  file_.log.EndRun();
  Frame6.SetEnabled(true);
  if (may_ask) run_.Ask([this] { AskChannelMode(); });
  scale_.FillChannelList();
  SetScaleControls(true);
  values_.ReleaseLabels();
  SetRunButtons(3);
  file_.Show();
}

void Form9::SaveCSV_Click() {
  app().windows.SetMousePointer(kHourglassPointer);
  file_.Choose();
  // The dialog lets events run: a page that was locked meanwhile stays so.
  if (!app().state.UiLocked) SetRunButtons(1);
  app().windows.SetMousePointer(kNormalPointer);
}

}  // namespace vlt
