// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/file_report.h"

#include <algorithm>
#include <cstdint>

#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_files.h"

namespace vlt {
namespace {

struct Reason {
  FileError::Kind error;
  int reading;  // text ids
  int writing;
};

constexpr Reason kReasons[] = {
    {FileError::kMissing, text::kFileMissing, text::kFileFolderMissing},
    {FileError::kNoPermission, text::kFileNotAllowed, text::kFileNotAllowed},
    {FileError::kNotAFile, text::kFileIsFolder, text::kFileIsFolder},
    {FileError::kDevice, text::kFileIsDevice, text::kFileIsDevice},
    {FileError::kPipe, text::kFileIsPipe, text::kFileIsPipe},
    {FileError::kSocket, text::kFileIsSocket, text::kFileIsSocket},
    {FileError::kFull, text::kFileDiskFull, text::kFileDiskFull},
    {FileError::kTooLarge, text::kFileTooLarge, text::kFileTooLarge},
    {FileError::kOther, text::kFileOtherFault, text::kFileOtherFault},
};

// 0 for kGood.
int ReasonId(const FileError& error, int Reason::*text) {
  const auto* reason = std::find_if(std::begin(kReasons), std::end(kReasons),
                                    [&](const Reason& r) { return error == r.error; });
  return reason == std::end(kReasons) ? 0 : reason->*text;
}

std::string Why(const FileError& error, int Reason::*text, Language language) {
  constexpr std::uint64_t kMegabyte = 1 << 20;
  const auto words = [&](int id) { return std::string(LookupText(id, language)); };
  if (error == FileError::kTooLarge && error.Most() != 0)
    return FormatText(words(text::kFileLargerThan), {std::to_string(error.Most() / kMegabyte) + " MB"});
  if (error == FileError::kOther && error.SystemNumber() != 0) {
    const std::string told = std::to_string(error.SystemNumber()) + " (" + error.SystemWords() + ")";
    return FormatText(words(text::kFileFault), {told});
  }
  return words(ReasonId(error, text));
}

std::string NotRead(const std::string& name, const FileError& error, Language language) {
  return FormatText(LookupText(text::kFileNotRead, language), {name, WhyNotRead(error, language)});
}

}  // namespace

int NotReadReason(const FileError& error) { return ReasonId(error, &Reason::reading); }

int NotWrittenReason(const FileError& error) { return ReasonId(error, &Reason::writing); }

std::string WhyNotRead(const FileError& error, Language language) {
  return Why(error, &Reason::reading, language);
}

std::string WhyNotWritten(const FileError& error, Language language) {
  return Why(error, error.IsReading() ? &Reason::reading : &Reason::writing, language);
}

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

void ReportNotRead(App& app, const std::string& path, const FileError& error) {
  if (error != FileError::kGood) app.Status(NotReadText(app, LastComponent(path), error));
}

void ReportNotWritten(App& app, const std::string& path, const FileError& error) {
  if (error != FileError::kGood) app.Status(NotWrittenText(app, path, error));
}

void ReportWritten(App& app, const std::string& path, const FileError& error) {
  if (error == FileError::kGood) {
    ReportSaved(app, path);
  } else {
    ReportNotWritten(app, path, error);
  }
}

std::string NotReadText(const App& app, const std::string& name, const FileError& error) {
  return NotRead(name, error, app.state.Spoken());
}

std::string NotWrittenText(const App& app, const std::string& path, const FileError& error) {
  const std::string name = FailedName(path, error);
  if (error.IsReading()) return NotRead(name, error, app.state.Spoken());
  return FormatText(app.Text(text::kFileNotWritten), {name, WhyNotWritten(error, app.state.Spoken())});
}

std::string FailedName(const std::string& path, const FileError& error) {
  return LastComponent(error.Path().empty() ? path : error.Path());
}

}  // namespace vlt
