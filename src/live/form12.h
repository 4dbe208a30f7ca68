// SPDX-License-Identifier: GPL-3.0-or-later
// PV read: several meters on one RS485 line in turn. Two values of each station are shown and added to a CSV
// file, once a cycle. Nothing is written to a meter.
//
// A pass asks one station a tick of FixTimer and shows all of them at its end. CycleTimer begins the passes;
// a tick that finds one under way begins none, so passes never overlap.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "files/csv_question.h"
#include "live/live_run.h"
#include "live/measure_log.h"
#include "live/stations.h"
#include "pages/page.h"

namespace vlt {

class frmWait;

class Form12 : public PageForm {
 public:
  explicit Form12(App& app);

  void FrmInit() override;
  void Form_Load() override;
  void Form_Activate() override;
  void Form_Deactivate() override { SetButtonIdle(); }
  void Form_Unload(int& cancel) override;
  const Control* StopButton() const override { return &cmdStop; }
  bool IsLive() const override { return CycleTimer.Running(); }

  // The setting group: what is asked and how often. It is off during a run.
  void Text_Box_Enable() { EnableSetting(true); }
  void Text_Box_Able() { EnableSetting(false); }

 private:
  StationDisplays displays_;
  MeasureLog log_;
  LiveRun run_;
  std::vector<Station> stations_;

 public:
  std::vector<int> PvStations;  // numbers ticked at the start, ascending
  int PvIndex = 0;              // into PvStations: whom the next tick of FixTimer asks
  // Channels of the displays, or -1 when not used.
  int& PvChannel1 = displays_[0].channel;
  int& PvChannel2 = displays_[1].channel;
  // The chosen value lies in the heat block.
  bool& PvHeatNeeded1 = displays_[0].heat;
  bool& PvHeatNeeded2 = displays_[1].heat;
  std::string& PvFileName = log_.Path;  // the current file; empty when nothing is recorded

  // How the stations answer in the run that is on or was last, by the places of PvStations.
  const std::vector<Station>& Polled() const { return stations_; }

  FrameBox fraSetting{*this, "fraSetting"};
  Label lblChannel{*this, "lblChannel"};
  Label lblKind{*this, "lblKind"};
  Label lblDisplay1{*this, "lblDisplay1"};
  ComboBox CH_Combo1{*this, "CH_Combo1"};
  ComboBox cmbDisp1{*this, "cmbDisp1"};
  Label lblDisplay2{*this, "lblDisplay2"};
  ComboBox CH_Combo2{*this, "CH_Combo2"};
  ComboBox cmbDisp2{*this, "cmbDisp2"};
  Label lblCycle{*this, "lblCycle"};
  TextBox txtCycle{*this, "txtCycle"};
  Label lblCycleUnit{*this, "lblCycleUnit"};
  CheckBox chkCheck{*this, "chkCheck"};
  PushButton cmdStart{*this, "cmdStart"};
  PushButton cmdStop{*this, "cmdStop"};
  PushButton cmdSaveCSV{*this, "cmdSaveCSV"};

  // Stations 1 to 31, index 0 the first.
  FrameBox fraStation{*this, "fraStation"};
  ControlArray<CheckBox> chkStationNo{*this, "chkStationNo", Indexes(kMostStations)};
  // The number beside the box: it stays black while the box is off.
  ControlArray<Label> lblStation{*this, "lblStation", Indexes(kMostStations)};
  ControlArray<TextBox> txtDisp1{*this, "txtDisp1", Indexes(kMostStations)};
  ControlArray<Label> lblUnit1{*this, "lblUnit1", Indexes(kMostStations)};
  ControlArray<TextBox> txtDisp2{*this, "txtDisp2", Indexes(kMostStations)};
  ControlArray<Label> lblUnit2{*this, "lblUnit2", Indexes(kMostStations)};
  ControlArray<Label> lblAnswered{*this, "lblAnswered", Indexes(kMostStations)};  // when, "10:00:05"
  ControlArray<Label> lblFailed{*this, "lblFailed", Indexes(kMostStations)};      // polls, "3/120"

  // Heads over the two halves of the list.
  ControlArray<Label> lblHead1{*this, "lblHead1", Indexes(2)};
  ControlArray<Label> lblHead2{*this, "lblHead2", Indexes(2)};
  ControlArray<Label> lblHeadAnswered{*this, "lblHeadAnswered", Indexes(2)};
  ControlArray<Label> lblHeadFailed{*this, "lblHeadFailed", Indexes(2)};

  StatusBar StatusBar2{*this, "StatusBar2", 3};  // state of the run, its pace, its file
  Timer CycleTimer{*this, "CycleTimer"};
  Timer FixTimer{*this, "FixTimer"};

 private:
  // The entries and the columns of one display.
  struct DisplayControls {
    ComboBox& channel;
    ComboBox& value;
    ControlArray<TextBox>& shown;
    ControlArray<Label>& unit;
  };
  DisplayControls ControlsOf(int display);

  void cmdStart_Click();
  void cmdStop_Click();
  void cmdSaveCSV_Click();
  void chkCheck_Click();
  void CycleTimer_Timer();
  void FixTimer_Timer();

  // form12.cpp
  void FillLists();
  void EnableSetting(bool enabled);

  // form12_run.cpp
  bool CanStart();
  bool Refuse(int text_id);
  int CycleSeconds() const;
  void TakeDisplays();
  void TakeStations();
  void EmptyFields();
  bool PrepareRun();
  bool AskUnits();
  bool AskUnitsBehind(frmWait& wait);
  void LearnUnits(int at);
  void AskFile(CsvQuestion question);
  void OpenLog();
  std::string MarksOfRecord();
  void BeginCycles();
  void BeginPass();
  std::string BehindState(int words) const;
  void WaitChanged();
  void PollNext();
  bool HasRoom() const;
  void EndPass();
  void RunStopped();
  std::vector<std::string> HeadLines();

  // form12_shown.cpp
  void ShowUnits(int at);
  void ShowValues();
  void ShowValue(int at, int display);
  void ShowHealth(int at);
  void ShowPace();
  void ShowLog();

  bool name_is_new_ = false;               // of PvFileName: no run has had it yet
  std::vector<std::string> late_columns_;  // whose unit came behind the head, for the next record
  bool in_pass_ = false;
  bool overran_ = false;  // a tick of CycleTimer has met the pass under way
  LocalTime run_started_;
  LocalTime pass_time_;  // on the wall, for the record
  // Milliseconds of the platform's clock.
  std::int64_t pass_started_ms_ = 0;
  std::optional<std::int64_t> pass_ms_;   // of the last pass, from its first request to its record
  std::optional<std::int64_t> cycle_ms_;  // between the starts of the last two
  std::int64_t busy_ms_ = 0;              // in which the line was taken since the pass began
  std::int64_t polled_ms_ = 0;            // of it, by polls alone, with the rest up to the next tick
  std::optional<double> load_;            // share of the last cycle in which the line was taken
};

}  // namespace vlt
