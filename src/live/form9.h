// SPDX-License-Identifier: GPL-3.0-or-later
// Measure: polls the measured values of every channel once a cycle, shows them, draws one of them on the
// trend chart and adds a record to a CSV file. Nothing is written to the meter.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "live/live_fields.h"
#include "live/live_run.h"
#include "live/measure_log.h"
#include "live/measure_record.h"
#include "live/trend.h"
#include "pages/page.h"

namespace vlt {

class Form9 : public PageForm {
 public:
  explicit Form9(App& app);

  // Captions and fonts of the page.
  void C07_KEISOKU_FrmInit();
  void FrmInit() override { C07_KEISOKU_FrmInit(); }
  // The scales to the shared state and back; an empty kept scale leaves what the page shows.
  void Taihi_Form9();
  void Taihi() override { Taihi_Form9(); }
  void RestoreMeasureScales();

  void Form_Load() override;
  void Form_Activate() override;
  void Form_Deactivate() override;
  void Form_Unload(int& cancel) override;
  const Control* StopButton() const override { return &Stop; }
  bool IsLive() const override { return CycleTimer.Running(); }

  // 0, 1, 3: ready to start; 2: a run is on. Other values do nothing.
  void SetRunButtons(int state);
  void Text_Box_Enable();
  void Text_Box_Able();

  // One cycle: room in the chart, the values, the point, the status line.
  void AcquireOnce();
  // Reads all channels, shows them and adds the record. 0, or -7000 when at least one exchange failed.
  int ReadMeasuredValues();
  // Adds a record to the file (MeasureLog::Append). Panel 2 of StatusBar2 tells of records that are lost
  // until records are written again.
  void AppendMeasureRecord(const std::string& path, const LocalTime& localTime,
                           std::span<const FieldTexts> fieldTexts, const std::string& errorText);
  // Adds the two head lines (MeasureLog::WriteHead).
  void WriteMeasureHeader(const std::string& path);

 private:
  MeasureLog log_;
  LiveRun run_;

 public:
  std::string& MeasureFilePath = log_.Path;    // of the current file; empty until SaveCSV has given one
  int& MeasureRecordCount = log_.RecordCount;  // records in the current file
  int& Running = run_.Running;                 // 1 while a run is on
  int CycleSeconds = 1;
  int CycleCount = 0;   // ticks since the last cycle
  int ChannelMode = 0;  // of GetChannelConfig: 1, 2, 3, or -1; 0 before it was asked
  std::array<std::string, kChannels> ChannelNames;
  std::array<std::string, 3> QuantityNames;  // flow rate, velocity, flow rate in %

  PushButton Start{*this, "Start"};
  PushButton Stop{*this, "Stop"};
  PushButton SaveCSV{*this, "SaveCSV"};
  Label lblChannelSelect{*this, "lblChannelSelect"};
  ComboBox CH_Combo{*this, "CH_Combo"};
  Label lblFlowSelect{*this, "lblFlowSelect"};
  ComboBox Flow_Combo{*this, "Flow_Combo"};

  FrameBox Frame6{*this, "Frame6"};  // scale
  FrameBox Frame5{*this, "Frame5"};  // Y
  Label lblMax{*this, "lblMax"};
  TextBox Max{*this, "Max"};
  Label lblMin{*this, "lblMin"};
  TextBox Min{*this, "Min"};
  FrameBox Frame4{*this, "Frame4"};  // X
  Label lblCycle{*this, "lblCycle"};
  TextBox Cycle{*this, "Cycle"};
  Label lblCycleUnit{*this, "lblCycleUnit"};
  Label lblPoint{*this, "lblPoint"};
  TextBox PointText{*this, "PointText"};

  FrameBox Frame1{*this, "Frame1"};  // moment value
  // Names of the channels: 0 over the measured values, 1 over the velocities, 2 over the heat values.
  ControlArray<Label> lblCh1{*this, "lblCh1", Indexes(3)};
  ControlArray<Label> lblCh2{*this, "lblCh2", Indexes(3)};
  ControlArray<Label> lblCh3{*this, "lblCh3", Indexes(3)};
  Label lblRyusoku{*this, "lblRyusoku"};
  ControlArray<TextBox> txtRyusoku{*this, "txtRyusoku", Indexes(kChannels)};
  ControlArray<Label> lblRyusokuUnit{*this, "lblRyusokuUnit", Indexes(kChannels)};
  Label lblRyuryo{*this, "lblRyuryo"};
  ControlArray<TextBox> txtRyuryo{*this, "txtRyuryo", Indexes(kChannels)};
  ControlArray<Label> lblRyuryoUnit{*this, "lblRyuryoUnit", Indexes(kChannels)};
  Label lblRyuryoPer{*this, "lblRyuryoPer"};
  ControlArray<TextBox> txtRyuryoPer{*this, "txtRyuryoPer", Indexes(kChannels)};
  ControlArray<Label> lblRyuryoPerUnit{*this, "lblRyuryoPerUnit", Indexes(kChannels)};
  Label lblPlusSekisan{*this, "lblPlusSekisan"};
  ControlArray<TextBox> txtPlusSekisan{*this, "txtPlusSekisan", Indexes(kChannels)};
  // Two for each channel: of the positive and of the negative total.
  ControlArray<Label> lblSekisanUnit{*this, "lblSekisanUnit", Indexes(2 * kChannels)};
  Label lblMinusSekisan{*this, "lblMinusSekisan"};
  ControlArray<TextBox> txtMinusSekisan{*this, "txtMinusSekisan", Indexes(kChannels)};
  Label lblPlusSekisanPulse{*this, "lblPlusSekisanPulse"};
  ControlArray<TextBox> txtPlusSekisanPulse{*this, "txtPlusSekisanPulse", Indexes(kChannels)};
  ControlArray<Label> lblPulseUnit{*this, "lblPulseUnit", Indexes(2 * kChannels)};
  Label lblMinusSekisanPulse{*this, "lblMinusSekisanPulse"};
  ControlArray<TextBox> txtMinusSekisanPulse{*this, "txtMinusSekisanPulse", Indexes(kChannels)};
  FrameBox Frame2{*this, "Frame2"};  // RAS
  ControlArray<TextBox> txtRAS{*this, "txtRAS", Indexes(kChannels)};

  Label lblTHERMAL_FLOW{*this, "lblTHERMAL_FLOW"};
  ControlArray<TextBox> txtThermalFlow{*this, "txtThermalFlow", Indexes(kChannels)};
  Label lblHRyuryoUnit{*this, "lblHRyuryoUnit"};
  Label lblTHERMAL_FLOWPer{*this, "lblTHERMAL_FLOWPer"};
  ControlArray<TextBox> txtThermalFlowPer{*this, "txtThermalFlowPer", Indexes(kChannels)};
  Label lblHPerUnit{*this, "lblHPerUnit"};
  Label lblH_TOTAL{*this, "lblH_TOTAL"};
  ControlArray<TextBox> txtHTotal{*this, "txtHTotal", Indexes(kChannels)};
  ControlArray<Label> lblHSekisanUnit{*this, "lblHSekisanUnit", Indexes(2)};
  Label lblHTotalPulse{*this, "lblHTotalPulse"};
  ControlArray<TextBox> txtHTotalPulse{*this, "txtHTotalPulse", Indexes(kChannels)};
  ControlArray<Label> lblHPulseUnit{*this, "lblHPulseUnit", Indexes(2)};
  Label lblCTotal{*this, "lblCTotal"};
  ControlArray<TextBox> txtCTotal{*this, "txtCTotal", Indexes(kChannels)};
  Label lblCTotalPulse{*this, "lblCTotalPulse"};
  ControlArray<TextBox> txtCTotalPulse{*this, "txtCTotalPulse", Indexes(kChannels)};
  Label lblSUPPLY_TEMP{*this, "lblSUPPLY_TEMP"};
  ControlArray<TextBox> txtSupplyTemp{*this, "txtSupplyTemp", Indexes(kChannels)};
  ControlArray<Label> lbldegreeCUnit{*this, "lbldegreeCUnit", Indexes(3)};
  Label lblRETURN_TEMP{*this, "lblRETURN_TEMP"};
  ControlArray<TextBox> txtReturnTemp{*this, "txtReturnTemp", Indexes(kChannels)};
  Label lblTEMP_DIFFERENCE{*this, "lblTEMP_DIFFERENCE"};
  ControlArray<TextBox> txtTempDifference{*this, "txtTempDifference", Indexes(kChannels)};

  Chart Chart2D1{*this, "Chart2D1"};
  StatusBar LogBar{*this, "LogBar", 1};          // the log: file, records in it, the next file
  StatusBar StatusBar2{*this, "StatusBar2", 2};  // state of the run, records that were lost
  Timer CycleTimer{*this, "CycleTimer"};

  Trend trend{Chart2D1};

 private:
  struct Scale;
  // Where a live value is shown.
  struct Shown {
    ControlArray<TextBox> Form9::*box;
    Label& (*unit)(Form9&, int) = nullptr;  // of a channel; null for a value without a unit
  };
  // By the places of live_fields.h.
  static const std::array<Shown, kAllFields> kShown;

  void Start_Click();
  void Stop_Click();
  void SaveCSV_Click();
  void CycleTimer_Timer();
  void CH_Combo_Click();
  void Flow_Combo_Click();

  // form9.cpp
  std::vector<Scale> Scales();
  bool CheckScale(const Scale& scale);
  bool CheckScales();
  void KeepScales();
  double ScaleValue(const TextBox& box, const char* fallback) const;
  void PrepareTrend();
  void FillChannelList();
  void FillQuantityList();
  bool IsShortList() const;  // CH3 of two pipes has no velocity
  int ChosenChannel() const;

  // form9_run.cpp
  bool CanStart();
  void LockForRun();
  bool PrepareRun();
  void BeginCycles();
  int EnteredCycle() const;
  void RestartTimer();
  bool AskUnits();
  void LearnMeter();
  std::string MeterName() const;
  void TellUnknownChannels();
  void AskChannelMode();
  void RunStopped(bool may_ask);
  void EndTicks();
  void WakePageInFront();
  // Stopped, and the last tick is still to come.
  bool IsEnding() const { return Running != 1 && CycleTimer.Running() && !run_.Busy(); }
  void ShowState(int text_id, bool with_error);
  void ShowWait();
  void SetScaleControls(bool enabled);
  void ShowChannelsInUse();
  void EnableChannelLabels(int ch, bool enabled);
  std::vector<Control*> HeatLabels();
  void ShowUnits();

  // form9_read.cpp
  bool ReadChannel(int ch);
  bool ReadBlock(const LiveBlock& block, int ch);
  void ShowField(int place, int ch, const RegisterData& data);
  void ShowVelocity(int ch, std::string& text);
  void FailChannel(int ch, int first_place);
  void EmptyBoxes();
  int PlottedPlace() const;
  int ChannelCount() const { return ChannelMode == 1 ? 1 : kChannels; }
  int FieldCount() const { return heat_ ? kAllFields : kPlainFields; }
  bool HasNoVelocity(int ch) const { return ChannelMode == 3 && ch == 2; }

  // form9_file.cpp
  std::vector<std::string> HeadLines();
  void ShowLog();
  void TakePeriod();

  bool heat_ = false;       // this run reads the heat block too
  MeterMark mark_;          // of the meter of this run
  int name_questions_ = 0;  // that are left while its ID number is not known
  std::array<FieldTexts, kChannels> texts_;
  std::optional<double> TrendValue;  // to draw in this cycle
  std::int64_t first_cycle_ms_ = 0;  // when the first cycle of the run began
  std::int64_t period_ms_ = 0;       // of a cycle: as entered, then the average of the run
};

}  // namespace vlt
