// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/measure_log.h"

#include <utility>

#include "files/csv_log.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "files/whole_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/number_text.h"

namespace vlt {
namespace {

bool IsNoFile(const std::string& path) {
  const std::string_view name = Trim(path);
  return name.empty() || name == "***";
}

}  // namespace

MeasureLog::MeasureLog(App& app, std::function<std::vector<std::string>()> head)
    : app_(app), head_(std::move(head)) {}

void MeasureLog::BeginRun(const std::optional<LocalTime>& stamp) {
  FileSystem& files = app_.platform.files;
  if (!stamp && !files.Exists(Path)) return;
  RecordCount = 0;
  Path = RestampedCsvPath(files, Path, stamp.value_or(app_.platform.clock.Now()));
}

FileError MeasureLog::AddHead(const std::string& path) {
  std::string text;
  const std::vector<std::string> lines = head_();
  for (const std::string& line : lines) text.append(text.empty() ? "" : "\r\n").append(line);
  head_lines_ = static_cast<int>(lines.size());
  return AppendCsv(app_.platform.files, path, {text});
}

void MeasureLog::Note(const std::string& path, FileError error) {
  last_error_ = std::move(error);
  last_name_ = LastComponent(path);
}

void MeasureLog::WriteHead(const std::string& path) {
  if (IsNoFile(path)) return;
  const FileError error = AddHead(path);
  if (error == FileError::kGood) lost_records_ = 0;
  Note(path, error);
}

void MeasureLog::EnterRun(const std::string& page) {
  app_.state.LogSync = GetLogSync(app_);
  if (IsNoFile(Path)) return;
  run_ = OpenRun{.started = DateTimeText(app_.platform.clock.Now()), .page = page, .path = Path};
  journal_error_ = vlt::EnterRun(app_, *run_);
}

void MeasureLog::EndRun() {
  if (run_) journal_error_ = TakeOutRun(app_, *run_);
  run_.reset();
}

// The next file has its head: what is recorded from here on is found there.
void MeasureLog::FollowRun() {
  if (!run_) return;
  journal_error_ = MoveRun(app_, *run_, Path);
  run_->path = Path;
}

bool MeasureLog::Append(const std::string& path, const std::string& record, const LocalTime& time) {
  if (IsNoFile(path)) return false;
  FileSystem& files = app_.platform.files;
  FileError error = FileError::kGood;
  if (!files.Exists(path)) {
    RecordCount = 0;
    error = AddHead(path);
  }
  if (error == FileError::kGood) error = AppendCsv(files, path, {record});
  lost_records_ = error == FileError::kGood ? 0 : lost_records_ + 1;
  const bool written = error == FileError::kGood;
  if (written && app_.state.LogSync) error = files.Flush(CleanPath(path));
  Note(path, error);
  if (!written || ++RecordCount < kLinesInFile - head_lines_) return written;
  RecordCount = 0;
  Path = RestampedCsvPath(files, path, time);
  WriteHead(Path);
  FollowRun();
  return true;
}

std::string MeasureLog::Trouble() const {
  if (last_error_ == FileError::kGood) {
    if (journal_error_ == FileError::kGood) return {};
    return NotWrittenText(app_, RunJournalPath(app_), journal_error_);
  }
  if (lost_records_ == 0) return NotWrittenText(app_, last_name_, last_error_);
  return FormatText(app_.Text(text::kRecordsLost),
                    {std::to_string(lost_records_), last_name_, app_.Text(NotWrittenReason(last_error_))});
}

}  // namespace vlt
