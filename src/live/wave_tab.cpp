// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/wave_tab.h"

#include <algorithm>

#include "files/csv_question.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "files/whole_file.h"
#include "resources/text_ids.h"
#include "state/form_lock.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr int kUsualTrail = 3;
constexpr int kChannelCaptions[] = {182, 183};

}  // namespace

WaveTab::WaveTab(App& app, Form& page)
    : FormPart(page),
      app_(app),
      page_(static_cast<Form11&>(page)),
      channels_(app, WaveChSelect, &SharedState::DetailChannel,
                [this](int index) { page_.DetailChSelect(index).SetValue(true); }),
      run_(app, page, [this](bool) { RunStopped(); }),
      capture_(
          app, [this] { return run_.HeedRequest(); }, [this](int block) { ShowBlock(block); }) {
  run_.TellBy({.bar = page_.StatusBar2,
               .behind = [this](int words) { return BehindState(words); },
               .pv = LiveRun::Pv::kFromStart});
  ProfileStartButton.on_click = [this] { ProfileStartButton_Click(); };
  ProfileStopButton.on_click = [this] { ProfileStopButton_Click(); };
  ProfileSaveButton.on_click = [this] { ProfileSaveButton_Click(); };
  prgWave.SetMax(kWaveBlocks);
  DeltaChart2D1.SetSinglePrecision(false, kWaveSeries);
  TieChannels();
}

// The channel is one for all tabs: a choice on the details' tab shows here too.
void WaveTab::TieChannels() {
  page_.DetailChSelect.ForEach([this](OptionButton& option) {
    option.on_click = [this, chosen = option.on_click] {
      chosen();
      channels_.Show();
    };
  });
}

std::array<OptionButton*, kWaveKindCount> WaveTab::KindOptions() {
  return {&ForwardReceiveOption, &ReverseReceiveOption, &ForwardFilterOption, &ReverseFilterOption,
          &CorrelationCalOption};
}

// Without a chosen option it is the wave of the down stream filter.
void WaveTab::TakeKind() {
  const auto options = KindOptions();
  const auto chosen =
      std::ranges::find_if(options, [](const OptionButton* option) { return option->Value(); });
  const auto index = chosen == options.end() ? std::ptrdiff_t{kReverseFilter} : chosen - options.begin();
  order_.kind = &kWaveKinds[index];
}

void WaveTab::FrmInit() {
  const struct {
    Control& control;
    int text_id;
  } rows[] = {
      {Frame2, text::kWaveCapture},     {lblWaveChSelect, 179},     {Frame19, 2350},
      {lblWaveTrail, text::kWaveTrail}, {ProfileStartButton, 1230}, {ProfileStopButton, 1970},
      {ProfileSaveButton, 180},
  };
  for (const auto& row : rows) row.control.SetCaption(app_.Text(row.text_id));
  WaveChSelect.ForEach(
      [this](OptionButton& option) { option.SetCaption(app_.Text(kChannelCaptions[option.Index()])); });
  const auto options = KindOptions();
  for (std::size_t i = 0; i < options.size(); ++i) {
    options[i]->SetCaption(app_.Text(kWaveKinds[i].caption));
  }
  ShowAxes();
}

void WaveTab::Form_Load() {
  FrmInit();
  ForwardReceiveOption.SetValue(true);
  ProfileStopButton.SetEnabled(false);
  channels_.Show();
  ShowTrailList();
  PrepareChart();
}

void WaveTab::Form_Activate() {
  const bool idle = IsLineFree(app_);
  ProfileStartButton.SetEnabled(idle);
  ProfileSaveButton.SetEnabled(idle);
  if (!idle) return;
  channels_.Show();
  WaveChSelect.ForEach(
      [this](OptionButton& option) { option.SetEnabled(page_.DetailChSelect(option.Index()).Enabled()); });
  page_.Set_SyusyuSyubetu();
}

// A page whose run goes on stays, and the run ends.
void WaveTab::Form_Unload(int& cancel) {
  if (!app_.state.UiLocked) return run_.Leave();
  if (run_.Busy()) ProfileStopButton_Click();
  cancel = -1;
}

bool WaveTab::IsChoice(const Control& control) const {
  const Control* kinds[] = {&ForwardReceiveOption, &ReverseReceiveOption, &ForwardFilterOption,
                            &ReverseFilterOption, &CorrelationCalOption};
  return channels_.Has(control) || std::ranges::find(kinds, &control) != std::end(kinds);
}

void WaveTab::ShowTrailList() {
  cmbWaveTrail.Clear();
  for (int count = 0; count <= kMostTrail; ++count) cmbWaveTrail.AddItem(std::to_string(count));
  cmbWaveTrail.SetListIndex(GetWaveTrail(app_, kMostTrail, kUsualTrail));
  cmbWaveTrail.on_click = [this] { TrailChosen(); };
}

void WaveTab::TrailChosen() {
  DrawTrail();
  const FileError error = SetWaveTrail(app_, cmbWaveTrail.ListIndex());
  if (error != FileError::kGood) ReportNotWritten(app_, CommPath(app_), error);
}

void WaveTab::Tell(const std::string& text) { page_.StatusBar2.SetPanel(1, text); }

void WaveTab::ProfileSaveButton_Click() {
  if (!store.WaveSaved) {
    app_.Show(app_.Text(text::kNothingToSave));
    return;
  }
  const auto path =
      AskCsvFile(app_, {.folder = FolderOfPath(app_.state.MeasureDir), .ask_before_overwrite = true});
  if (!path) return;
  app_.state.MeasureDir = *path;
  ReportWritten(app_, *path, WriteWaveCsv(*path));
}

FileError WaveTab::WriteWaveCsv(const std::string& path) {
  return WriteWhole(app_.platform.files, CleanPath(path), store.Csv(app_, order_, remark_), false);
}

}  // namespace vlt
