// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "files/csv_question.h"
#include "files/settings_file.h"
#include "link/port.h"
#include "live/entry_check.h"
#include "live/form12.h"
#include "live/frm_wait.h"
#include "live/stations_record.h"
#include "resources/text_ids.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr int kMsInSecond = 1000;
constexpr int kMsOfStation = 500;  // each station needs more than this of the cycle
constexpr int kPollTickMs = 100;
constexpr double kLongestCycle = 3600;
constexpr const char* kWaitText = "Wait ...... Get Unit";
constexpr const char* kWaitWindow = "frmWait";

}  // namespace

bool Form12::Refuse(int text_id) {
  app().Show(app().Text(text_id));
  return false;
}

int Form12::CycleSeconds() const {
  const double seconds = std::trunc(ParseNumber(txtCycle.Text()).value_or(0));
  return seconds >= 0 && seconds <= kLongestCycle ? static_cast<int>(seconds) : 0;
}

bool Form12::CanStart() {
  if (CH_Combo1.ListIndex() < 0 || CH_Combo2.ListIndex() < 0) return Refuse(text::kChooseChannels);
  if (cmbDisp1.ListIndex() < 0 && cmbDisp2.ListIndex() < 0) return Refuse(text::kSelectDisplay);
  TakeDisplays();
  TakeStations();
  const double most = std::trunc(ParseNumber(txtCycle.Text()).value_or(0)) * kMsInSecond / kMsOfStation - 1;
  if (most <= static_cast<double>(PvStations.size()) - 1) return Refuse(text::kTooManyStations);
  if (PvStations.empty()) return Refuse(text::kSelectStation);
  return CheckEntry(app(), txtCycle, 1, kLongestCycle);
}

void Form12::TakeDisplays() {
  for (int i = 0; i < kDisplays; ++i) {
    const DisplayControls controls = ControlsOf(i);
    StationDisplay& display = displays_[static_cast<std::size_t>(i)];
    display = {};
    if (controls.value.ListIndex() < 0) continue;
    display.channel = controls.channel.ListIndex();
    display.place = controls.value.ListIndex();
    display.heat = display.place >= kHeatPlace;
  }
}

void Form12::TakeStations() {
  PvStations.clear();
  stations_.clear();
  chkStationNo.ForEach([this](const CheckBox& box) {
    if (!box.Ticked()) return;
    PvStations.push_back(box.Index() + 1);
    stations_.emplace_back().number = box.Index() + 1;
  });
}

void Form12::EmptyFields() {
  for (int display = 0; display < kDisplays; ++display) {
    const DisplayControls controls = ControlsOf(display);
    controls.shown.ForEach([](TextBox& box) {
      box.SetText("");
      box.SetMark("");
    });
    controls.unit.ForEach([](Label& label) { label.SetCaption(""); });
  }
  for (const auto* labels : {&lblAnswered, &lblFailed}) {
    labels->ForEach([](Label& label) {
      label.SetCaption("");
      label.SetHint("");
    });
  }
  for (int panel = 1; panel <= StatusBar2.PanelCount(); ++panel) StatusBar2.SetPanel(panel, "");
}

void Form12::cmdStart_Click() {
  if (!run_.MayStart()) return;
  if (!CanStart() || !OpenPortOrTell(app(), MessageIcon::kNone)) return;
  EmptyFields();
  run_.Start([this] { return PrepareRun(); }, [this] { BeginCycles(); });
}

bool Form12::PrepareRun() {
  run_.EndWith(text::kStartCancelled);
  Text_Box_Able();
  cmdStop.SetEnabled(true);
  run_started_ = app().platform.clock.Now();
  if (!AskUnits()) return false;
  for (int at = 0; at < static_cast<int>(stations_.size()); ++at) ShowUnits(at);
  if (!name_is_new_) PvFileName.clear();
  AskFile({.title = text::kSpecifyFileToSave, .stamp = run_started_});
  if (!run_.GoesOn()) return false;
  OpenLog();
  return true;
}

bool Form12::AskUnits() {
  app().state.WaitCancel = 0;
  auto& wait = static_cast<frmWait&>(List().Load(kWaitWindow));
  wait.lblMssg.SetCaption(kWaitText);
  wait.pbWait.SetMax(static_cast<int>(stations_.size()));
  wait.pbWait.SetValue(0);
  wait.Show();
  const bool asked = AskUnitsBehind(wait);
  List().Unload(kWaitWindow);
  return asked;
}

// A wait window that was closed has been cancelled.
bool Form12::AskUnitsBehind(frmWait& wait) {
  const GoesOn goes_on = [&] { return run_.GoesOn() && app().state.WaitCancel == 0 && List().Exists(&wait); };
  const int questions = GetIdentifyRuns(app()) ? LiveRun::kMostNameQuestions : 0;
  for (Station& station : stations_) {
    AskStationUnits(app(), station, displays_, goes_on);
    station.name_questions = questions;
    if (!goes_on()) return false;
    wait.pbWait.SetValue(wait.pbWait.Value() + 1);
  }
  // A query that was lost is asked once more for the head of the file; whoever was silent has its turns.
  for (Station& station : stations_) {
    if (HasToldUnits(station)) AskMissingUnits(app(), station, displays_, goes_on);
  }
  return goes_on();
}

void Form12::cmdSaveCSV_Click() {
  app().windows.SetMousePointer(kHourglassPointer);
  AskFile({.title = text::kSpecifySavingFile});
  ShowLog();
  app().windows.SetMousePointer(kNormalPointer);
}

// A name that is given takes the place of the one before; its folder is where the next question starts.
void Form12::AskFile(CsvQuestion question) {
  question.folder = GetPvCsvDir(app());
  const auto path = AskCsvLog(app(), question);
  if (!path) return;
  PvFileName = *path;
  log_.RecordCount = 0;
  name_is_new_ = true;
  SetPvCsvDir(app(), FolderOfPath(*path));
}

// Its stamp is that of the start, also when the name was given before.
void Form12::OpenLog() {
  name_is_new_ = false;
  late_columns_.clear();
  if (!PvFileName.empty()) {
    log_.BeginRun(run_started_);
    log_.WriteHead(PvFileName);
    log_.EnterRun(Name());
  }
  ShowLog();
}

std::vector<std::string> Form12::HeadLines() {
  const StationRun run{.started = run_started_, .cycle_seconds = CycleSeconds()};
  return StationHeadLines(run, stations_, displays_, app().state.Spoken());
}

// Each station has to prove anew that it is the one whose units are known.
void Form12::WaitChanged() {
  if (!run_.Waiting()) {
    for (Station& station : stations_) station.doubted = true;
  }
  run_.Say(text::kAcquiring);
}

void Form12::BeginCycles() {
  run_.EndWith(text::kDisplayEnded);
  overran_ = false;
  pass_ms_ = cycle_ms_ = std::nullopt;
  load_.reset();
  busy_ms_ = 0;
  CycleTimer.SetInterval(CycleSeconds() * kMsInSecond);
  CycleTimer.SetRunning(true);
  run_.Say(text::kDisplayStarted);
}

void Form12::CycleTimer_Timer() {
  if (!run_.HeedRequest()) return;
  if (in_pass_) {
    overran_ = true;
    run_.Say(text::kAcquiring);
  } else {
    BeginPass();
  }
}

std::string Form12::BehindState(int words) const {
  if (words != text::kAcquiring) return {};
  if (run_.Waiting()) return " " + run_.WaitText();
  return overran_ ? " " + app().Text(text::kPassTooLong) : "";
}

void Form12::BeginPass() {
  const std::int64_t now = app().platform.clock.NowMs();
  if (pass_ms_) {
    cycle_ms_ = now - pass_started_ms_;
    load_ = static_cast<double>(busy_ms_) / static_cast<double>(*cycle_ms_);
  }
  run_.Say(text::kAcquiring);
  ShowPace();
  in_pass_ = true;
  overran_ = false;
  busy_ms_ = 0;
  polled_ms_ = 0;
  PvIndex = 0;
  pass_started_ms_ = now;
  pass_time_ = app().platform.clock.Now();
  FixTimer_Timer();
  if (run_.Running != 1) return;
  FixTimer.SetInterval(kPollTickMs);
  FixTimer.SetRunning(true);
}

void Form12::FixTimer_Timer() {
  run_.Cycle([this] { PollNext(); });
}

void Form12::PollNext() {
  if (PvIndex >= static_cast<int>(stations_.size())) {
    EndPass();
    return;
  }
  // While the run waits for its port nothing else opens it.
  if (PvIndex == 0 && !run_.Waiting() && !app().platform.port.IsOpen()) OpenPort(app());
  const std::int64_t before = app().platform.clock.NowMs();
  Station& station = stations_[static_cast<std::size_t>(PvIndex)];
  PollStation(app(), station, displays_, [this] { return run_.GoesOn(); });
  polled_ms_ += (app().platform.clock.NowMs() - before + kPollTickMs - 1) / kPollTickMs * kPollTickMs;
  if (run_.GoesOn() && HasRoom()) LearnStation(app(), station);
  LearnUnits(PvIndex);
  busy_ms_ += app().platform.clock.NowMs() - before;
  ShowHealth(PvIndex);
  ++PvIndex;
}

// False where it is one exchange more that makes the pass longer than its cycle.
bool Form12::HasRoom() const {
  const auto left = static_cast<std::int64_t>(stations_.size()) - PvIndex - 1;
  const std::int64_t end =
      app().platform.clock.NowMs() - pass_started_ms_ + left * polled_ms_ / (PvIndex + 1);
  return end > CycleTimer.Interval() || end + kMsOfStation <= CycleTimer.Interval();
}

// A station that answers is asked again for the units that it has not told. What came behind the head of the
// file goes into the next record.
void Form12::LearnUnits(int at) {
  Station& station = stations_[static_cast<std::size_t>(at)];
  if (!station.failure.empty() || !run_.GoesOn() || !IsTurnForUnits(station, displays_)) return;
  const auto before = StationColumns(station, displays_, app().state.Spoken());
  AskMissingUnits(app(), station, displays_, [this] { return run_.GoesOn(); });
  station.vain_turns = MissesUnits(station, displays_) ? station.vain_turns + 1 : 0;
  ShowUnits(at);
  const auto now = StationColumns(station, displays_, app().state.Spoken());
  for (std::size_t i = 0; i < now.size(); ++i) {
    if (now[i] != before[i]) late_columns_.push_back(now[i]);
  }
}

// Behind the last column: units that came late, and a gap of the line.
std::string Form12::MarksOfRecord() {
  std::string marks;
  for (const std::string& column : late_columns_) marks += "," + column;
  const std::string gap = run_.GapMark();
  return gap.empty() ? marks : marks + "," + gap;
}

void Form12::EndPass() {
  FixTimer.SetRunning(false);
  in_pass_ = false;
  pass_ms_ = app().platform.clock.NowMs() - pass_started_ms_;
  // The first poll lies in a tick of CycleTimer, and the ticks that fall into it are lost.
  overran_ = overran_ || *pass_ms_ > CycleTimer.Interval();
  if (overran_) run_.Say(text::kAcquiring);
  ShowValues();
  const std::string record = StationRecordLine(pass_time_, stations_, displays_) + MarksOfRecord();
  const bool written = log_.Append(PvFileName, record, pass_time_);
  if (written) run_.MarkLogged();
  if (written || PvFileName.empty()) late_columns_.clear();
  ShowLog();
  ShowPace();
}

void Form12::cmdStop_Click() { run_.RequestStop(); }

void Form12::RunStopped() {
  log_.EndRun();
  CycleTimer.SetRunning(false);
  FixTimer.SetRunning(false);
  in_pass_ = false;
  Text_Box_Enable();
  cmdStop.SetEnabled(false);
}

}  // namespace vlt
