// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/port.h"
#include "live/wave_tab.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_live.h"
#include "values/codecs.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kBlockPanel = 2;
constexpr int kTimePanel = 3;

}  // namespace

void WaveTab::ProfileStartButton_Click() {
  if (run_.Busy() || run_.Running == 1 || run_.Leaving()) return;
  app_.state.StopRequest = 0;
  app_.state.PvRunning = 1;
  begun_ = true;
  TakeKind();
  order_.channel = channels_.Index();
  end_text_ = text::kDisplayEnded;
  failure_.clear();
  remark_.clear();
  Captures = 0;
  Tell(app_.Text(order_.kind->caption));
  store.Clear();
  PrepareChart();
  try {
    run_.Start([this] { return PrepareRun(); }, [this] { RunCaptures(); });
  } catch (...) {
    ReleaseControls();
    throw;
  }
}

void WaveTab::ProfileStopButton_Click() {
  app_.state.StopRequest = 1;
  run_.Stop();
}

// Other windows may ask for a stop too.
bool WaveTab::GoesOn() {
  if (app_.state.StopRequest == 1) run_.Stop();
  return run_.GoesOn();
}

bool WaveTab::PrepareRun() {
  LockControls();
  if (!OpenPort(app_)) {
    app_.Show(app_.Text(text::kCommunicationError), MessageIcon::kStop);
    failure_ = app_.state.PortFaultReason;
    return false;
  }
  return AskMethod() && GoesOn();
}

bool WaveTab::AskMethod() {
  RegisterData data;
  if (!ReadRegisters(app_, SpanOf(kWaveMethodBlock, order_.channel), data)) {
    end_text_ = text::kCommunicationError;
    failure_ = app_.state.LastErrorText;
    return false;
  }
  order_.method = BytesToInt16(data, 0);
  page_.MeasureMethodCombo.SetListIndex(order_.method);
  page_.Set_SyusyuSyubetu();
  // The method may have taken away the kind that was chosen.
  const WaveKind& chosen = *order_.kind;
  TakeKind();
  if (order_.kind != &chosen) TellOtherKind(chosen);
  DeltaChart2D1.SetSeriesName(kWaveSeries, app_.Text(order_.kind->caption));
  return true;
}

// In the main window's status line too, which the captures leave alone, and in the file.
void WaveTab::TellOtherKind(const WaveKind& chosen) {
  remark_ =
      FormatText(app_.Text(text::kKindNotOffered),
                 {app_.Text(chosen.caption), std::to_string(order_.method), app_.Text(order_.kind->caption)});
  Tell(app_.Stamped(remark_));
  app_.Status(remark_);
}

void WaveTab::TellRun(int text_id) {
  Tell(app_.Stamped(app_.Text(text_id) + (remark_.empty() ? "" : " " + remark_)));
}

void WaveTab::RunCaptures() {
  TellRun(text::kDisplayStarted);
  while (GoesOn()) {
    app_.platform.events.GiveWay(app_.platform.clock.NowMs());
    CaptureOnce();
  }
  if (capture_.Capturing() && !capture_.ClearCaptureMode() && failure_.empty()) failure_ = capture_.Failure();
}

void WaveTab::CaptureOnce() {
  const std::int64_t begun = app_.platform.clock.NowMs();
  switch (capture_.Capture(order_, fresh_)) {
    case WaveEnd::kGood:
      store.WaveSamples = fresh_;
      store.Keep(app_.platform.clock.Now());
      ++Captures;
      XOrigin = capture_.TriggerLevel();
      DrawWave();
      TellRun(text::kAcquiring);
      ShowTaken(app_.platform.clock.NowMs() - begun);
      break;
    case WaveEnd::kAgain:
      // A stop of the operator is kept by the run.
      app_.state.StopRequest = 0;
      ShowLost();
      break;
    case WaveEnd::kFailed:
      failure_ = capture_.Failure();
      ProfileStopButton_Click();
      break;
    case WaveEnd::kStopped:
      break;
  }
}

void WaveTab::LockControls() {
  for (Control* control : std::initializer_list<Control*>{&Frame2, &Frame19, &lblWaveChSelect}) {
    control->SetEnabled(false);
  }
  for (int ch = 0; ch < WaveChSelect.Count(); ++ch) {
    offered_.at(static_cast<std::size_t>(ch)) = page_.DetailChSelect(ch).Enabled();
    WaveChSelect(ch).SetEnabled(false);
    page_.DetailChSelect(ch).SetEnabled(false);
  }
  ProfileStopButton.SetEnabled(true);
}

void WaveTab::ReleaseControls() {
  begun_ = false;
  app_.state.PvRunning = 0;
  for (Control* control : std::initializer_list<Control*>{&Frame2, &Frame19, &lblWaveChSelect}) {
    control->SetEnabled(true);
  }
  for (int ch = 0; ch < WaveChSelect.Count(); ++ch) {
    WaveChSelect(ch).SetEnabled(offered_.at(static_cast<std::size_t>(ch)));
    page_.DetailChSelect(ch).SetEnabled(offered_.at(static_cast<std::size_t>(ch)));
  }
  ProfileStopButton.SetEnabled(false);
}

void WaveTab::RunStopped() {
  // A page that is left without a run has nothing to give back.
  if (!begun_) return;
  ReleaseControls();
  KindOptions()[static_cast<std::size_t>(order_.kind - kWaveKinds)]->SetValue(true);
  prgWave.SetValue(0);
  page_.StatusBar2.SetPanel(kBlockPanel, "");
  Tell(app_.Stamped(app_.Text(end_text_) + (failure_.empty() ? "" : " " + failure_)));
  if (!app_.state.AppRunning) app_.platform.events.EndProcess();
}

void WaveTab::ShowBlock(int block) {
  prgWave.SetValue(block);
  page_.StatusBar2.SetPanel(kBlockPanel,
                            block == 0 ? app_.Text(text::kWaveAwaited)
                                       : FormatText(app_.Text(text::kWaveBlock),
                                                    {std::to_string(block), std::to_string(kWaveBlocks)}));
}

void WaveTab::ShowTaken(std::int64_t ms) {
  page_.StatusBar2.SetPanel(
      kTimePanel, FormatText(app_.Text(text::kWaveTook),
                             {std::to_string(Captures), FixedText(static_cast<double>(ms) / 1000, 1)}));
}

void WaveTab::ShowLost() {
  page_.StatusBar2.SetPanel(kTimePanel,
                            FormatText(app_.Text(text::kWaveRepeated),
                                       {std::to_string(capture_.Blocks() + 1), capture_.Failure()}));
}

}  // namespace vlt
