// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/form12.h"

#include "live/entry_check.h"
#include "resources/text_ids.h"
#include "state/form_lock.h"

namespace vlt {
namespace {

constexpr const char* kDefaultCycle = "20";  // long enough for all stations
constexpr double kLongestCycle = 3600;
constexpr int kChannelNames[] = {182, 183, 184};

}  // namespace

Form12::Form12(App& app)
    : PageForm(app, "Form12"),
      log_(app, [this] { return HeadLines(); }),
      run_(app, *this, [this](bool) { RunStopped(); }) {
  run_.TellBy({.bar = StatusBar2,
               .behind = [this](int words) { return BehindState(words); },
               .pv = LiveRun::Pv::kFromFirstCycle});
  run_.WaitBy(
      {.prove = {}, .changed = [this] { WaitChanged(); }, .meter = [this] { return MeterNames(stations_); }});
  cmdStart.on_click = [this] { cmdStart_Click(); };
  cmdStop.on_click = [this] { cmdStop_Click(); };
  cmdSaveCSV.on_click = [this] { cmdSaveCSV_Click(); };
  chkCheck.on_click = [this] { chkCheck_Click(); };
  CycleTimer.on_timer = [this] { CycleTimer_Timer(); };
  FixTimer.on_timer = [this] { FixTimer_Timer(); };
  txtCycle.on_lost_focus = [this] { CheckEntry(this->app(), txtCycle, 1, kLongestCycle); };
  for (int display = 0; display < kDisplays; ++display) {
    const DisplayControls controls = ControlsOf(display);
    controls.shown.ForEach([](TextBox& box) { box.SetLocked(true); });
    // The last entry takes the choice back.
    ComboBox& value = controls.value;
    value.on_click = [&value] {
      if (value.ListIndex() == kAllFields) value.SetListIndex(-1);
    };
  }
}

Form12::DisplayControls Form12::ControlsOf(int display) {
  return display == 0 ? DisplayControls{CH_Combo1, cmbDisp1, txtDisp1, lblUnit1}
                      : DisplayControls{CH_Combo2, cmbDisp2, txtDisp2, lblUnit2};
}

void Form12::FrmInit() {
  const struct {
    Control& control;
    int text_id;
  } rows[] = {
      {cmdStart, 1230},
      {cmdStop, 1970},
      {cmdSaveCSV, 180},
      {lblChannel, 179},
      {lblKind, 2350},
      {lblDisplay1, 2100},
      {lblDisplay2, 2110},
      {lblCycle, 1450},
      {lblCycleUnit, 100},
      {fraStation, 700},
      {chkCheck, text::kSelectAll},
  };
  const struct {
    const ControlArray<Label>& labels;
    int text_id;
  } heads[] = {
      {lblHead1, 2100},
      {lblHead2, 2110},
      {lblHeadAnswered, text::kLastAnswer},
      {lblHeadFailed, text::kFailedPolls},
  };
  SetCaption(app().Text(text::kPvRead));
  for (const auto& row : rows) row.control.SetCaption(app().Text(row.text_id));
  for (const auto& head : heads) {
    head.labels.ForEach([&](Label& label) { label.SetCaption(app().Text(head.text_id)); });
  }
  chkStationNo.ForEach([this](CheckBox& box) {
    box.SetHint(app().Text(text::kStationNumber) + std::to_string(box.Index() + 1));
  });
  lblStation.ForEach([](Label& label) { label.SetCaption(std::to_string(label.Index() + 1)); });
  FillLists();
  for (Control* control : Controls()) control->SetFont({app().state.PageFont, 12, false});
}

// A list that is refilled keeps what was chosen.
void Form12::FillLists() {
  const auto fill = [](ComboBox& list, const std::vector<std::string>& items) {
    if (list.Items() == items) return;
    const int chosen = list.ListIndex();
    list.SetItems(items);
    list.SetListIndex(chosen);
  };
  std::vector<std::string> channels;
  for (const int id : kChannelNames) channels.push_back(app().Text(id));
  std::vector<std::string> values;
  for (int place = 0; place < kAllFields; ++place) values.push_back(app().Text(LiveFieldAt(place).head));
  values.push_back(app().Text(text::kDisplayNotUsed));
  for (int display = 0; display < kDisplays; ++display) {
    fill(ControlsOf(display).channel, channels);
    fill(ControlsOf(display).value, values);
  }
}

void Form12::Form_Load() {
  txtCycle.SetText(kDefaultCycle);
  FrmInit();
  cmdStop.SetEnabled(false);
}

void Form12::Form_Activate() {
  const bool idle = IsLineFree(app()) && !run_.Busy();
  cmdStart.SetEnabled(idle);
  cmdSaveCSV.SetEnabled(idle);
}

void Form12::Form_Unload(int&) {
  run_.Leave();
  SetButtonIdle();
}

void Form12::EnableSetting(bool enabled) {
  for (Control* control : std::initializer_list<Control*>{
           &fraSetting, &lblChannel, &lblKind, &lblDisplay1, &lblDisplay2, &CH_Combo1, &CH_Combo2, &cmbDisp1,
           &cmbDisp2, &lblCycle, &txtCycle, &lblCycleUnit, &chkCheck}) {
    control->SetEnabled(enabled);
  }
  chkStationNo.ForEach([enabled](CheckBox& box) { box.SetEnabled(enabled); });
}

void Form12::chkCheck_Click() {
  chkStationNo.ForEach([this](CheckBox& box) { box.SetValue(chkCheck.Value()); });
}

}  // namespace vlt
