#include <algorithm>

#include "files/csv_log.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "live/form9.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

// With the two head lines 32,000 lines, what spreadsheets of old can load.
constexpr int kRecordsInFile = 31998;

constexpr int kDialogTitle = 4530;
constexpr int kMeasuredData = 4540;
constexpr int kAllFiles = 4550;
constexpr int kIsSettingsFile = 4510;
constexpr int kOverwrite = 4966;
constexpr int kTime = 991;

bool IsNoFile(const std::string& path) {
  const std::string_view name = Trim(path);
  return name.empty() || name == "***";
}

// The settings file's path may hold a separator twice, which is the same file.
std::string WithoutDoubledSeparators(std::string path) {
  path.erase(
      std::unique(path.begin(), path.end(), [](char a, char b) { return a == b && (a == '/' || a == '\\'); }),
      path.end());
  return path;
}

}  // namespace

void Form9::SaveCSV_Click() {
  app().windows.SetMousePointer(kHourglassPointer);
  const bool has_folder = MeasureFilePath.find_first_of("\\/") != std::string::npos;
  const auto chosen = app().platform.dialogs.AskSaveFile(
      {.title = app().Text(kDialogTitle),
       .filter = app().Text(kMeasuredData) + "(*.csv)|*.csv|" + app().Text(kAllFiles) + "(*.*)|*.*",
       .folder = has_folder ? FolderOfPath(MeasureFilePath) : "",
       .name = {}});
  if (chosen && !Trim(*chosen).empty()) TakeName(*chosen);
  // The dialog lets events run: a page that was locked meanwhile stays so.
  if (!app().state.UiLocked) SetRunButtons(1);
  app().windows.SetMousePointer(kNormalPointer);
}

void Form9::TakeName(const std::string& chosen) {
  if (WithoutDoubledSeparators(chosen) == WithoutDoubledSeparators(app().state.IniFilePath)) {
    app().Show(app().Text(kIsSettingsFile), MessageIcon::kStop);
    return;
  }
  MeasureFilePath = StampedCsvPath(chosen, app().platform.clock.Now());
  MeasureRecordCount = 0;
  FileSystem& files = app().platform.files;
  if (!files.Exists(MeasureFilePath) || !app().AskOkCancel(app().Text(kOverwrite))) return;
  const FileError error = files.Remove(MeasureFilePath);
  if (error != FileError::kGood) ReportNotWritten(app(), MeasureFilePath, error);
}

FileError Form9::WriteHeader(const std::string& path) {
  const auto channels = static_cast<std::size_t>(ChannelCount());
  std::vector<std::string> heads;
  for (std::size_t ch = 0; ch < channels; ++ch) {
    for (const auto fields : {MeasuredFields(), HeatFields().first(heat_ ? HeatFields().size() : 0)}) {
      for (const MeasureField& field : fields) {
        const int channel = static_cast<int>(ch);
        heads.push_back(app().Text(field.head) +
                        (field.unit == nullptr ? "" : field.unit(*this, channel).Caption()));
      }
    }
  }
  return AppendCsv(
      app().platform.files, path,
      {MeasureTitleLine(app().Text(kMeasuredData), std::span(ChannelNames).first(channels), FieldCount()),
       MeasureHeadLine(app().Text(kTime), heads)});
}

void Form9::WriteMeasureHeader(const std::string& path) {
  if (IsNoFile(path)) return;
  const FileError error = WriteHeader(path);
  if (error == FileError::kGood) lost_records_ = 0;
  TellLoss(path, error);
}

void Form9::AppendMeasureRecord(const std::string& path, const LocalTime& localTime,
                                std::span<const FieldTexts> fieldTexts, const std::string& errorText) {
  if (IsNoFile(path)) return;
  FileError error = FileError::kGood;
  if (!app().platform.files.Exists(path)) {
    MeasureRecordCount = 0;
    error = WriteHeader(path);
  }
  if (error == FileError::kGood) {
    error = AppendCsv(app().platform.files, path,
                      {MeasureRecordLine(localTime, fieldTexts, FieldCount(), errorText)});
  }
  lost_records_ = error == FileError::kGood ? 0 : lost_records_ + 1;
  TellLoss(path, error);
  if (error != FileError::kGood || ++MeasureRecordCount < kRecordsInFile) return;
  MeasureRecordCount = 0;
  MeasureFilePath = RestampedCsvPath(app().platform.files, path, localTime);
  WriteMeasureHeader(MeasureFilePath);
}

void Form9::TellLoss(const std::string& path, FileError error) {
  if (error == FileError::kGood) {
    StatusBar2.SetPanel(2, "");
    return;
  }
  const std::string name = LastComponent(path);
  const std::string reason = app().Text(NotWrittenReason(error));
  StatusBar2.SetPanel(2, lost_records_ == 0 ? FormatText(app().Text(text::kFileNotWritten), {name, reason})
                                            : FormatText(app().Text(text::kRecordsLost),
                                                         {std::to_string(lost_records_), name, reason}));
}

}  // namespace vlt
