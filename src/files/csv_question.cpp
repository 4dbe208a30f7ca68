// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/csv_question.h"

#include <algorithm>

#include "files/csv_log.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "files/whole_file.h"
#include "resources/text_ids.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

// One spelling for all that lead to the same file.
std::string Spelled(const std::string& path, char separator) {
  std::string text = CleanPath(path);
  if (separator == '\\') std::replace(text.begin(), text.end(), '/', separator);
  return OneSeparator(text, separator);
}

void ClearTheWay(App& app, const std::string& path) {
  FileSystem& files = app.platform.files;
  if (!files.Exists(path) || !app.AskOkCancel(app.Text(text::kOverwriteQuestion))) return;
  const FileError error = files.Remove(path);
  if (error != FileError::kGood) ReportNotWritten(app, path, error);
}

}  // namespace

bool IsSettingsFile(App& app, std::string_view path) {
  const char separator = app.platform.process.Separator();
  const std::string asked = Spelled(std::string(path), separator);
  for (const std::string& own : {app.state.IniFilePath, CommPath(app)}) {
    const std::string known = Spelled(own, separator);
    if (separator == '\\' ? EqualsNoCase(asked, known) : asked == known) return true;
  }
  return false;
}

std::optional<std::string> AskCsvFile(App& app, const CsvQuestion& question) {
  const std::string pattern = std::string("*.") + question.ending;
  std::string filter = app.Text(question.kind) + "(" + pattern + ")|" + pattern;
  if (question.all_files) filter += "|" + app.Text(text::kAllFiles) + "(*.*)|*.*";
  const auto chosen =
      app.platform.dialogs.AskSaveFile({.title = app.Text(question.title),
                                        .filter = filter,
                                        .folder = question.folder,
                                        .name = question.name,
                                        .ask_before_overwrite = question.ask_before_overwrite});
  const std::string path(Trim(chosen.value_or("")));
  if (path.empty()) return std::nullopt;
  if (!IsSettingsFile(app, path)) return path;
  app.Show(app.Text(text::kIsLoaderFile), MessageIcon::kStop);
  return std::nullopt;
}

std::optional<std::string> AskCsvLog(App& app, const std::string& current) {
  const bool has_folder = current.find_first_of("\\/") != std::string::npos;
  return AskCsvLog(app, CsvQuestion{.folder = has_folder ? FolderOfPath(current) : ""});
}

std::optional<std::string> AskCsvLog(App& app, const CsvQuestion& question) {
  const auto chosen = AskCsvFile(app, question);
  if (!chosen) return std::nullopt;
  const std::string path = StampedCsvPath(*chosen, question.stamp.value_or(app.platform.clock.Now()));
  ClearTheWay(app, path);
  return path;
}

}  // namespace vlt
