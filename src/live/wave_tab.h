// SPDX-License-Identifier: GPL-3.0-or-later
// Waves: the third tab of the transit-time page. It lets the meter capture one kind of wave of a channel
// again and again until it is stopped, draws each capture, and saves those of a run as one CSV matrix.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "live/live_run.h"
#include "live/wave_capture.h"
#include "live/wave_store.h"
#include "pages/chooser.h"
#include "pages/form11.h"
#include "window/chart.h"

namespace vlt {

class WaveTab : public FormPart {
 public:
  WaveTab(App& app, Form& page);

  void Form_Load() override;
  void FrmInit() override;
  void Form_Activate() override;
  void Form_Unload(int& cancel) override;
  const Control* StopButton() const override { return &ProfileStopButton; }
  bool IsLive() const override { return run_.Running == 1; }
  bool IsChoice(const Control& control) const override;

  FileError WriteWaveCsv(const std::string& path);

  // Series of the chart. The level that triggers the meter is where the X axis of a wave lies; the captures
  // before the last one follow, the youngest first.
  static constexpr int kWaveSeries = 0;
  static constexpr int kTriggerSeries = 1;
  static constexpr int kTrailSeries = 2;
  static constexpr int kMostTrail = 10;

  WaveStore store;
  double XOrigin = 0;  // in counts; 0 for a correlation, and without a scale head
  int Captures = 0;    // of this run

  FrameBox Frame2{Whole(), "Frame2"};
  Label lblWaveChSelect{Whole(), "lblWaveChSelect"};
  ControlArray<OptionButton> WaveChSelect{Whole(), "WaveChSelect", Indexes(2)};
  FrameBox Frame19{Whole(), "Frame19"};
  OptionButton ForwardReceiveOption{Whole(), "ForwardReceiveOption", Control::kNoIndex, "WaveKind"};
  OptionButton ReverseReceiveOption{Whole(), "ReverseReceiveOption", Control::kNoIndex, "WaveKind"};
  OptionButton ForwardFilterOption{Whole(), "ForwardFilterOption", Control::kNoIndex, "WaveKind"};
  OptionButton ReverseFilterOption{Whole(), "ReverseFilterOption", Control::kNoIndex, "WaveKind"};
  OptionButton CorrelationCalOption{Whole(), "CorrelationCalOption", Control::kNoIndex, "WaveKind"};
  Label lblWaveTrail{Whole(), "lblWaveTrail"};
  // How many captures of the run lie behind the last one, 0 to kMostTrail.
  ComboBox cmbWaveTrail{Whole(), "cmbWaveTrail"};
  ProgressBar prgWave{Whole(), "prgWave"};  // blocks of the capture under way
  PushButton ProfileStartButton{Whole(), "ProfileStartButton"};
  PushButton ProfileStopButton{Whole(), "ProfileStopButton"};
  PushButton ProfileSaveButton{Whole(), "ProfileSaveButton"};
  Chart DeltaChart2D1{Whole(), "DeltaChart2D1", kTrailSeries + kMostTrail};

 private:
  void ProfileStartButton_Click();
  void ProfileStopButton_Click() { run_.RequestStop(); }
  void ProfileSaveButton_Click();

  // wave_run.cpp
  bool PrepareRun();
  bool AskMethod();
  void RunCaptures();
  void CaptureOnce();
  void TellOtherKind(const WaveKind& chosen);
  std::string BehindState(int words) const;
  void LockControls();
  void ReleaseControls();
  void RunStopped();
  void ShowBlock(int block);
  void ShowTaken(std::int64_t ms);
  void ShowLost();

  // wave_tab.cpp
  std::array<OptionButton*, kWaveKindCount> KindOptions();
  void TakeKind();
  void TieChannels();
  void ShowTrailList();
  void TrailChosen();

  // wave_chart.cpp
  void ShowAxes();
  void PrepareChart();
  void DrawWave();
  void DrawTrail();
  void DrawTrigger();
  void MarkPeak();
  void FitHeight();

  // What a panel of the status bar tells; the first one with date and time in front.
  void Tell(const std::string& text);

  App& app_;
  Form11& page_;
  Chooser channels_;
  LiveRun run_;
  WaveCapture capture_;
  WaveOrder order_;                // of the run whose captures are stored
  WaveSampleArray fresh_{};        // of the capture under way
  std::string failure_;            // why the run has ended; empty when the operator has stopped it
  std::string remark_;             // that another kind is captured than was chosen; else empty
  double height_ = 0;              // of the chart, in counts to both sides
  std::array<bool, 2> offered_{};  // channels that could be chosen before the run
};

}  // namespace vlt
