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
  if (!run_.MayStart()) return;
  TakeKind();
  order_.channel = channels_.Index();
  failure_.clear();
  remark_.clear();
  Captures = 0;
  Tell(app_.Text(order_.kind->caption));
  store.Clear();
  PrepareChart();
  run_.Start([this] { return PrepareRun(); }, [this] { RunCaptures(); });
}

bool WaveTab::PrepareRun() {
  LockControls();
  if (!OpenPort(app_)) {
    app_.Show(app_.Text(text::kCommunicationError), MessageIcon::kStop);
    failure_ = app_.state.PortFaultReason;
    return false;
  }
  return AskMethod() && run_.HeedRequest();
}

bool WaveTab::AskMethod() {
  RegisterData data;
  const ExchangeReport exchange = ReadRegisters(app_, SpanOf(kWaveMethodBlock, order_.channel), data);
  if (!exchange) {
    run_.EndWith(text::kCommunicationError);
    failure_ = exchange.text;
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

// While it goes on what is captured instead of the chosen kind, at its end why it has ended.
std::string WaveTab::BehindState(int words) const {
  const bool goes_on = words == text::kDisplayStarted || words == text::kAcquiring;
  const std::string& behind = goes_on ? remark_ : failure_;
  return behind.empty() ? behind : " " + behind;
}

void WaveTab::RunCaptures() {
  run_.Say(text::kDisplayStarted);
  while (run_.HeedRequest()) {
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
      run_.Say(text::kAcquiring);
      ShowTaken(app_.platform.clock.NowMs() - begun);
      break;
    case WaveEnd::kAgain:
      run_.ForgetRequest();
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
  if (!run_.Begun()) return;
  ReleaseControls();
  KindOptions()[static_cast<std::size_t>(order_.kind - kWaveKinds)]->SetValue(true);
  prgWave.SetValue(0);
  page_.StatusBar2.SetPanel(kBlockPanel, "");
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
