// SPDX-License-Identifier: GPL-3.0-or-later
// Measure: polls the measured values of every channel once a cycle, shows them, draws one of them on the
// trend chart and adds a record to a CSV file. Nothing is written to the meter.
//
// The page itself is the run; its parts are the scale of the trend, the values, the meter that has them and
// the file.
#pragma once

#include <span>
#include <string>

#include "live/live_run.h"
#include "live/measure_controls.h"
#include "live/measure_file.h"
#include "live/measure_meter.h"
#include "live/measure_scale.h"
#include "live/measure_values.h"
#include "live/trend.h"

namespace vlt {

class Form9 : public MeasureControls {
 public:
  explicit Form9(App& app);

  // Captions and fonts of the page.
  void C07_KEISOKU_FrmInit();
  void FrmInit() override { C07_KEISOKU_FrmInit(); }
  // The scales to the shared state and back; an empty kept scale leaves what the page shows.
  void Taihi_Form9() { scale_.Keep(); }
  void Taihi() override { Taihi_Form9(); }
  void RestoreMeasureScales() { scale_.Restore(); }

  void Form_Load() override;
  void Form_Activate() override;
  void Form_Deactivate() override { SetButtonIdle(); }
  void Form_Unload(int& cancel) override;
  const Control* StopButton() const override { return &Stop; }
  bool IsLive() const override { return CycleTimer.Running(); }

  // 0, 1, 3: ready to start; 2: a run is on. Other values do nothing.
  void SetRunButtons(int state);
  void Text_Box_Enable() { scale_.Enable(true); }
  void Text_Box_Able() { scale_.Enable(false); }

  // One cycle: room in the chart, the values, the point, the status line.
  void AcquireOnce();
  // Reads all channels, shows them and adds the record. 0, or -7000 when at least one exchange failed.
  int ReadMeasuredValues();
  // Adds a record to the file (MeasureLog::Append). Panel 2 of StatusBar2 tells of records that are lost
  // until records are written again.
  void AppendMeasureRecord(const std::string& path, const LocalTime& localTime,
                           std::span<const FieldTexts> fieldTexts, const std::string& errorText) {
    file_.Append(path, localTime, fieldTexts, errorText);
  }
  // Adds the two head lines (MeasureLog::WriteHead).
  void WriteMeasureHeader(const std::string& path) { file_.WriteHead(path); }

  Trend trend{Chart2D1};

 private:
  LiveRun run_;
  MeasureValues values_;
  MeasureScale scale_;
  MeasureMeter meter_;
  MeasureFile file_;

 public:
  std::string& MeasureFilePath = file_.log.Path;    // of the current file; empty until SaveCSV has given one
  int& MeasureRecordCount = file_.log.RecordCount;  // records in the current file
  int& Running = run_.Running;                      // 1 while a run is on
  int CycleSeconds = 1;
  int CycleCount = 0;                      // ticks since the last cycle
  int& ChannelMode = values_.ChannelMode;  // of GetChannelConfig: 1, 2, 3, or -1; 0 before it was asked

 private:
  void Start_Click();
  void SaveCSV_Click();
  void CycleTimer_Timer();
  bool CanStart();
  void LockForRun();
  bool PrepareRun();
  void BeginCycles();
  void RestartTimer();
  void AskChannelMode();
  void RunStopped(bool may_ask);
  void EndTicks();
  void WakePageInFront();
  // Stopped, and the last tick is still to come.
  bool IsEnding() const { return Running != 1 && CycleTimer.Running() && !run_.Busy(); }
  std::string BehindState(int words) const;
  void SetScaleControls(bool enabled);

  bool failed_ = false;  // the last cycle, or the run waits
};

}  // namespace vlt
