#include <cmath>

#include "files/csv_log.h"
#include "link/device_queries.h"
#include "link/port.h"
#include "live/form9_busy.h"
#include "state/form_lock.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kTickMs = 1000;
constexpr int kNoFileName = 4060;
constexpr int kPortFailed = 3950;
constexpr int kRunStarted = 1390;
constexpr int kRunAcquiring = 4190;
constexpr int kRunEnded = 4690;

std::string InBrackets(const std::vector<std::string>& names, int code) {
  const bool known = code >= 0 && code < static_cast<int>(names.size());
  return "[" + (known ? names[static_cast<std::size_t>(code)] : "") + "]";
}

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
    app().Show(app().Text(kNoFileName), MessageIcon::kStop);
    SetRunButtons(0);
    return false;
  }
  return CheckScales();
}

bool Form9::OpenForRun() {
  app().windows.SetMousePointer(kHourglassPointer);
  if (OpenPort(app())) return true;
  app().Show(app().Text(kPortFailed), MessageIcon::kStop);
  app().windows.SetMousePointer(kNormalPointer);
  app().Status(CommunicationErrorText(app()));
  return false;
}

void Form9::Start_Click() {
  if (busy_ || leaving_) return;
  app().state.StopRequest = 0;
  if (!CanStart()) return;
  if (app().platform.files.Exists(MeasureFilePath)) {
    MeasureRecordCount = 0;
    MeasureFilePath = RestampedCsvPath(app().platform.files, MeasureFilePath, app().platform.clock.Now());
  }
  if (!OpenForRun()) return;
  const Busy busy(*this);
  LockForRun();
  PrepareTrend();
  EmptyBoxes();
  AskUnits();
  app().windows.SetMousePointer(kNormalPointer);
  if (stop_pending_) return;
  ShowChannelsInUse();
  ShowUnits();
  WriteMeasureHeader(MeasureFilePath);
  const MeasureField& plotted = MeasuredFields()[static_cast<std::size_t>(PlottedField())];
  Chart2D1.SetYTitle(plotted.unit(*this, ChosenChannel()).Caption());
  Running = 1;
  ShowState(kRunStarted, false);
  AcquireOnce();
  if (stop_pending_) return;
  CycleCount = 0;
  CycleSeconds = static_cast<int>(RoundHalfEven(ParseNumber(Cycle.Text()).value_or(1)));
  CycleTimer.SetInterval(kTickMs);
  CycleTimer.SetRunning(true);
  RestartTimer();
}

void Form9::LockForRun() {
  SetLock(true);
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

void Form9::AskUnits() {
  GetUnitFlag(app());
  ClearUnitCaches(app());
  if (!stop_pending_) ChannelMode = GetChannelConfig(app());
  heat_ = ChannelMode != 3 && app().state.SpecClass == 0;
  for (int ch = 0; ch < kChannels; ++ch) {
    if (!stop_pending_) GetRangeUnit(app(), ch);
    if (!stop_pending_) GetTotalUnit(app(), ch);
  }
  if (app().state.SpecClass == 0) {
    for (const auto query : {GetHeatFlowUnit, GetHeatTotalUnit, GetTempUnit}) {
      if (!stop_pending_) query(app());
    }
  }
  BuildFlowUnitNames(app());
  BuildTotalUnitNames(app());
  BuildHeatFlowUnitNames(app());
  BuildHeatTotalUnitNames(app());
  BuildTempUnitNames(app());
  BuildBaseUnitNames(app());
}

void Form9::ShowUnits() {
  constexpr int kVelocityUnit = 1;  // of the base units
  const SharedState& state = app().state;
  for (int ch = 0; ch < kChannels; ++ch) {
    const auto at = static_cast<std::size_t>(ch);
    lblRyusokuUnit(ch).SetCaption(InBrackets(state.BaseUnitNames, kVelocityUnit));
    lblRyuryoUnit(ch).SetCaption(InBrackets(state.FlowUnitNames, state.RangeUnit[at]));
    const std::string total = InBrackets(state.TotalUnitNames, state.TotalUnit[at]);
    lblSekisanUnit(2 * ch).SetCaption(total);
    lblSekisanUnit(2 * ch + 1).SetCaption(total);
  }
  if (!heat_) return;
  lblHRyuryoUnit.SetCaption(InBrackets(state.HeatFlowUnitNames, state.HeatFlowUnit));
  const std::string total = InBrackets(state.HeatTotalUnitNames, state.HeatTotalUnit);
  lblHSekisanUnit.ForEach([&](Label& label) { label.SetCaption(total); });
  const std::string degree = InBrackets(state.TempUnitNames, state.TempUnit);
  lbldegreeCUnit.ForEach([&](Label& label) { label.SetCaption(degree); });
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
  for (const MeasureField& field : MeasuredFields()) {
    if (field.unit != nullptr) field.unit(*this, ch).SetEnabled(enabled);
  }
}

void Form9::ShowChannelsInUse() {
  for (int ch = 0; ch < kChannels; ++ch) {
    const bool used = ch < ChannelCount();
    EnableChannelLabels(ch, used);
    for (const MeasureField& field : MeasuredFields()) (this->*field.box)(ch).SetEnabled(used);
    for (const MeasureField& field : HeatFields()) (this->*field.box)(ch).SetEnabled(used && heat_);
  }
  for (Control* label : HeatLabels()) label->SetEnabled(heat_);
  if (ChannelMode != 3) return;
  lblCh3(1).SetEnabled(false);
  txtRyusoku(2).SetEnabled(false);
}

void Form9::AcquireOnce() {
  trend.MakeRoom();
  const bool good = ReadMeasuredValues() == 0;
  trend.Put(good ? TrendValue : std::nullopt);
  ShowState(kRunAcquiring, !good);
}

// The run's state in words; behind a failed cycle or run why, and what is wrong with a port that is gone.
void Form9::ShowState(int text_id, bool with_error) {
  std::string text = app().Text(text_id);
  if (with_error) {
    text += " " + app().state.LastErrorText;
    const bool gone = !app().platform.port.IsOpen() && !app().state.PortFaultReason.empty();
    if (gone) text += " " + app().state.PortFaultReason;
  }
  StatusBar2.SetPanel(1, app().Stamped(text));
}

// The count of seconds begins again when a cycle has returned: its period is the cycle's seconds plus what
// the exchanges took.
void Form9::RestartTimer() {
  if (!CycleTimer.Running()) return;
  CycleTimer.SetRunning(false);
  CycleTimer.SetRunning(true);
}

void Form9::CycleTimer_Timer() {
  if (busy_) return;
  if (Running == 1) {
    if (++CycleCount < CycleSeconds) return;
    const Busy busy(*this);
    AcquireOnce();
    CycleCount = 0;
    RestartTimer();
    return;
  }
  CycleTimer.SetRunning(false);
  ShowState(kRunEnded, true);
  if (!app().state.AppRunning) app().platform.events.EndProcess();
}

void Form9::Stop_Click() {
  if (app().state.PvRunning == 0) app().state.StopRequest = 1;
  Running = 0;
  if (busy_) {
    stop_pending_ = true;
  } else {
    FinishStop();
  }
}

void Form9::SetLock(bool locked) {
  FormLock(app(), *this, locked ? 0 : 1);
  owns_lock_ = locked;
}

void Form9::AskChannelMode() {
  SetLock(true);
  app().windows.SetMousePointer(kHourglassPointer);
  ChannelMode = GetChannelConfig(app());
  SetLock(false);
  app().windows.SetMousePointer(kNormalPointer);
}

void Form9::FinishStop() {
  stop_pending_ = false;
  // A lock that another operation holds is not ours to release, and its exchange must not be cut into.
  const bool foreign = app().state.UiLocked && !owns_lock_;
  const bool there = List().Exists(this);
  if (!foreign) SetLock(false);
  Frame6.SetEnabled(true);
  if (!foreign && there) {
    const Busy busy(*this);
    AskChannelMode();
    stop_pending_ = false;
  }
  FillChannelList();
  SetScaleControls(true);
  for (int ch = 0; ch < kChannels; ++ch) EnableChannelLabels(ch, true);
  for (Control* label : HeatLabels()) label->SetEnabled(true);
  SetRunButtons(3);
  ShowState(kRunEnded, true);
}

}  // namespace vlt
