// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/csv_log.h"
#include "files/csv_question.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "live/form9.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_live.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr std::size_t kToTheMinute = 16;  // "2026/11/24 10:00"

}  // namespace

void Form9::SaveCSV_Click() {
  app().windows.SetMousePointer(kHourglassPointer);
  if (const auto path = AskCsvLog(app(), MeasureFilePath)) {
    MeasureFilePath = *path;
    MeasureRecordCount = 0;
    ShowLog();
  }
  // The dialog lets events run: a page that was locked meanwhile stays so.
  if (!app().state.UiLocked) SetRunButtons(1);
  app().windows.SetMousePointer(kNormalPointer);
}

std::vector<std::string> Form9::HeadLines() {
  const auto channels = static_cast<std::size_t>(ChannelCount());
  std::vector<std::string> heads;
  for (int ch = 0; ch < ChannelCount(); ++ch) {
    for (int place = 0; place < FieldCount(); ++place) {
      const auto unit = kShown.at(static_cast<std::size_t>(place)).unit;
      heads.push_back(app().Text(LiveFieldAt(place).head) + (unit ? unit(*this, ch).Caption() : ""));
    }
  }
  return {MeasureTitleLine(app().Text(text::kTheMeasurementData), std::span(ChannelNames).first(channels),
                           FieldCount()),
          MeasureHeadLine(app().Text(text::kTime), heads)};
}

void Form9::WriteMeasureHeader(const std::string& path) {
  log_.WriteHead(path);
  StatusBar2.SetPanel(2, log_.Trouble());
  ShowLog();
}

void Form9::AppendMeasureRecord(const std::string& path, const LocalTime& localTime,
                                std::span<const FieldTexts> fieldTexts, const std::string& errorText) {
  // A gap of the line is told where the error stands.
  const std::string gap = run_.GapMark();
  const std::string behind = errorText + (errorText.empty() || gap.empty() ? "" : " ") + gap;
  if (log_.Append(path, MeasureRecordLine(localTime, fieldTexts, FieldCount(), behind), localTime)) {
    run_.MarkLogged();
  }
  StatusBar2.SetPanel(2, log_.Trouble());
  ShowLog();
}

// The length of a cycle as it really is: its seconds and its exchanges, on the average of the run.
void Form9::TakePeriod() {
  const std::int64_t now = app().platform.clock.NowMs();
  if (trend.TrendSampleNo == 0) {
    first_cycle_ms_ = now;
  } else {
    period_ms_ = (now - first_cycle_ms_) / trend.TrendSampleNo;
  }
}

// While a run records, also when its file will be full.
void Form9::ShowLog() {
  const std::string file = LastComponent(MeasureFilePath);
  const std::string records = std::to_string(MeasureRecordCount);
  const std::string folder = FolderOfPath(MeasureFilePath);
  if (Running != 1) {
    LogBar.SetPanel(1,
                    file.empty() ? "" : FormatText(app().Text(text::kLogRecords), {file, records, folder}));
    return;
  }
  const int left = log_.RecordsLeft();
  const LocalTime due = MovedBy(app().platform.clock.Now(), left * period_ms_);
  LogBar.SetPanel(1, FormatText(app().Text(text::kLogRoll), {file, records, folder, std::to_string(left),
                                                             DateTimeText(due).substr(0, kToTheMinute)}));
}

}  // namespace vlt
