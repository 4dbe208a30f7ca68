#include "files/file_report.h"

#include <algorithm>

#include "files/settings_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

struct Reason {
  FileError error;
  int reading;  // text ids
  int writing;
};

constexpr Reason kReasons[] = {
    {FileError::kMissing, text::kFileMissing, text::kFileFolderMissing},
    {FileError::kNoPermission, text::kFileNotAllowed, text::kFileNotAllowed},
    {FileError::kNotAFile, text::kFileIsFolder, text::kFileIsFolder},
    {FileError::kFull, text::kFileDiskFull, text::kFileDiskFull},
    {FileError::kTooLarge, text::kFileTooLarge, text::kFileTooLarge},
    {FileError::kOther, text::kFileOtherFault, text::kFileOtherFault},
};

void ReportFailure(App& app, int id, const std::string& path, FileError error, int Reason::*text) {
  const auto* reason = std::find_if(std::begin(kReasons), std::end(kReasons),
                                    [&](const Reason& r) { return r.error == error; });
  if (reason == std::end(kReasons)) return;
  app.Status(FormatText(app.Text(id), {LastComponent(path), app.Text(reason->*text)}));
}

}  // namespace

void ReportOpened(App& app, const std::string& path) {
  app.Status(FormatText(app.Text(text::kFileOpened), {LastComponent(path)}));
}

void ReportSaved(App& app, const std::string& path) {
  app.Status(FormatText(app.Text(text::kFileSaved), {LastComponent(path)}));
}

void ReportNotRead(App& app, const std::string& path, FileError error) {
  ReportFailure(app, text::kFileNotRead, path, error, &Reason::reading);
}

void ReportNotWritten(App& app, const std::string& path, FileError error) {
  ReportFailure(app, text::kFileNotWritten, path, error, &Reason::writing);
}

}  // namespace vlt
