// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/measure_file.h"

#include "files/csv_question.h"
#include "files/settings_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_live.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr std::size_t kToTheMinute = 16;  // "2026/11/24 10:00"

}  // namespace

MeasureFile::MeasureFile(App& app, MeasureControls& page, LiveRun& run, const MeasureValues& values,
                         const MeasureScale& scale, const Trend& trend)
    : log(app, [this] { return HeadLines(); }),
      app_(app),
      page_(page),
      run_(run),
      values_(values),
      scale_(scale),
      trend_(trend) {}

void MeasureFile::Choose() {
  const auto path = AskCsvLog(app_, log.Path);
  if (!path) return;
  log.Path = *path;
  log.RecordCount = 0;
  Show();
}

std::vector<std::string> MeasureFile::HeadLines() const {
  const int channels = values_.ChannelCount();
  std::vector<std::string> heads;
  for (int ch = 0; ch < channels; ++ch) {
    for (int place = 0; place < values_.FieldCount(); ++place) {
      heads.push_back(app_.Text(LiveFieldAt(place).head) + values_.UnitCaption(place, ch));
    }
  }
  const std::span names(scale_.ChannelNames);
  return {MeasureTitleLine(app_.Text(text::kTheMeasurementData),
                           names.first(static_cast<std::size_t>(channels)), values_.FieldCount()),
          MeasureHeadLine(app_.Text(text::kTime), heads)};
}

void MeasureFile::WriteHead(const std::string& path) {
  log.WriteHead(path);
  page_.StatusBar2.SetPanel(2, log.Trouble());
  Show();
}

void MeasureFile::Append(const std::string& path, const LocalTime& time, std::span<const FieldTexts> texts,
                         const std::string& error) {
  // A gap of the line is told where the error stands.
  const std::string gap = run_.GapMark();
  const std::string behind = error + (error.empty() || gap.empty() ? "" : " ") + gap;
  if (log.Append(path, MeasureRecordLine(time, texts, values_.FieldCount(), behind), time)) run_.MarkLogged();
  page_.StatusBar2.SetPanel(2, log.Trouble());
  Show();
}

// Its seconds and its exchanges, on the average of the run.
void MeasureFile::TakePeriod() {
  const std::int64_t now = app_.platform.clock.NowMs();
  if (trend_.TrendSampleNo == 0) {
    first_cycle_ms_ = now;
  } else {
    period_ms_ = (now - first_cycle_ms_) / trend_.TrendSampleNo;
  }
}

void MeasureFile::Show() {
  const std::string file = LastComponent(log.Path);
  const std::string records = std::to_string(log.RecordCount);
  const std::string folder = FolderOfPath(log.Path);
  if (run_.Running != 1) {
    page_.LogBar.SetPanel(
        1, file.empty() ? "" : FormatText(app_.Text(text::kLogRecords), {file, records, folder}));
    return;
  }
  const int left = log.RecordsLeft();
  const LocalTime due = MovedBy(app_.platform.clock.Now(), left * period_ms_);
  page_.LogBar.SetPanel(1,
                        FormatText(app_.Text(text::kLogRoll), {file, records, folder, std::to_string(left),
                                                               DateTimeText(due).substr(0, kToTheMinute)}));
}

}  // namespace vlt
