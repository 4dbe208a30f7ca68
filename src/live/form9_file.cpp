#include "files/csv_log.h"
#include "files/csv_question.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "live/form9.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/number_text.h"

namespace vlt {
namespace {

// With the two head lines 32,000 lines, what spreadsheets of old can load.
constexpr int kRecordsInFile = 31998;

constexpr int kMeasuredData = 4540;
constexpr int kTime = 991;

bool IsNoFile(const std::string& path) {
  const std::string_view name = Trim(path);
  return name.empty() || name == "***";
}

}  // namespace

void Form9::SaveCSV_Click() {
  app().windows.SetMousePointer(kHourglassPointer);
  if (const auto path = AskCsvLog(app(), MeasureFilePath)) {
    MeasureFilePath = *path;
    MeasureRecordCount = 0;
  }
  // The dialog lets events run: a page that was locked meanwhile stays so.
  if (!app().state.UiLocked) SetRunButtons(1);
  app().windows.SetMousePointer(kNormalPointer);
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
