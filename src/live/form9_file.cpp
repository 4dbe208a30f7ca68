#include <algorithm>

#include "files/csv_log.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "live/form9.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr int kDialogTitle = 4530;
constexpr int kMeasuredData = 4540;
constexpr int kAllFiles = 4550;
constexpr int kIsSettingsFile = 4510;
constexpr int kOverwrite = 4966;
constexpr int kTime = 991;

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

std::vector<std::string> Form9::HeadLines() {
  const auto channels = static_cast<std::size_t>(ChannelCount());
  std::vector<std::string> heads;
  for (int ch = 0; ch < ChannelCount(); ++ch) {
    for (int place = 0; place < FieldCount(); ++place) {
      const auto unit = kShown.at(static_cast<std::size_t>(place)).unit;
      heads.push_back(app().Text(LiveFieldAt(place).head) + (unit ? unit(*this, ch).Caption() : ""));
    }
  }
  return {MeasureTitleLine(app().Text(kMeasuredData), std::span(ChannelNames).first(channels), FieldCount()),
          MeasureHeadLine(app().Text(kTime), heads)};
}

void Form9::WriteMeasureHeader(const std::string& path) {
  log_.WriteHead(path);
  StatusBar2.SetPanel(2, log_.Trouble());
}

void Form9::AppendMeasureRecord(const std::string& path, const LocalTime& localTime,
                                std::span<const FieldTexts> fieldTexts, const std::string& errorText) {
  log_.Append(path, MeasureRecordLine(localTime, fieldTexts, FieldCount(), errorText), localTime);
  StatusBar2.SetPanel(2, log_.Trouble());
}

}  // namespace vlt
