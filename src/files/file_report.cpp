// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/file_report.h"

#include <algorithm>

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

// 0 for kGood.
int ReasonId(FileError error, int Reason::*text) {
  const auto* reason = std::find_if(std::begin(kReasons), std::end(kReasons),
                                    [&](const Reason& r) { return r.error == error; });
  return reason == std::end(kReasons) ? 0 : reason->*text;
}

void ReportFailure(App& app, int id, const std::string& path, FileError error, int Reason::*text) {
  const int reason = ReasonId(error, text);
  if (reason != 0) app.Status(FormatText(app.Text(id), {LastComponent(path), app.Text(reason)}));
}

}  // namespace

void ReportOpened(App& app, const std::string& path, const LoadResult& result) {
  if (result.file != FileError::kGood) {
    ReportNotRead(app, path, result.file);
    return;
  }
  std::string keys;
  for (const std::string& key : result.not_taken) keys += (keys.empty() ? "" : ", ") + key;
  app.Status(
      FormatText(app.Text(keys.empty() ? text::kFileOpened : text::kFileOpenedBut),
                 {LastComponent(path), std::to_string(result.taken), std::to_string(result.known), keys}));
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

void ReportWritten(App& app, const std::string& path, FileError error) {
  if (error == FileError::kGood) {
    ReportSaved(app, path);
  } else {
    ReportNotWritten(app, path, error);
  }
}

std::string NotReadText(const App& app, const std::string& name, FileError error) {
  return FormatText(app.Text(text::kFileNotRead), {name, app.Text(ReasonId(error, &Reason::reading))});
}

std::string NotWrittenText(const App& app, const std::string& path, FileError error) {
  return FormatText(app.Text(text::kFileNotWritten),
                    {LastComponent(path), app.Text(NotWrittenReason(error))});
}

int NotReadReason(FileError error) { return ReasonId(error, &Reason::reading); }

int NotWrittenReason(FileError error) { return ReasonId(error, &Reason::writing); }

}  // namespace vlt
