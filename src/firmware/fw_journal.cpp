// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/fw_journal.h"

#include <cstdio>

#include "files/csv_log.h"

namespace vlt {
namespace {

constexpr std::string_view kHead = "time,module,bytes,sha256,step,outcome,detail";

std::string TimeText(const LocalTime& now) {
  char millisecond[8];
  std::snprintf(millisecond, sizeof millisecond, ".%03d", now.millisecond);
  return DateTimeText(now) + millisecond;
}

std::string Quoted(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
  return quoted + "\"";
}

bool IsSeparator(char c) { return c == '/' || c == '\\'; }

// The folder without separators at its end and without the "." components that say nothing.
std::string WithoutEnd(std::string folder) {
  for (;;) {
    const std::size_t size = folder.size();
    const bool dot = size > 1 && folder.back() == '.' && IsSeparator(folder[size - 2]);
    if (!dot && (size <= 1 || !IsSeparator(folder.back()))) return folder;
    folder.pop_back();
  }
}

// Its last component is a name that a file beside it can begin with: not that of a root or a drive, not "."
// or "..".
bool HasName(std::string_view folder) {
  const std::size_t separator = folder.find_last_of("/\\");
  const std::string_view last = folder.substr(separator == std::string_view::npos ? 0 : separator + 1);
  return !last.empty() && last != "." && last != ".." && last.back() != ':';
}

}  // namespace

FileError FwJournal::Start(const std::string& path) {
  path_ = path;
  const FileError error = AppendCsv(app_.platform.files, path_, {kHead});
  if (error != FileError::kGood) path_.clear();
  return error;
}

FileError FwJournal::Begin(const std::string& folder, std::string_view what) {
  lost_ = FileError::kGood;
  OfModule(nullptr, {});
  const std::string name = "journal_" + StampText(app_.platform.clock.Now()) + ".csv";
  const std::string place = WithoutEnd(folder);
  FileError error = HasName(place) ? Start(place + "_" + name) : FileError::kMissing;
  if (error != FileError::kGood) {
    const bool separated = IsSeparator(place.back());
    error = Start(place + (separated ? "" : std::string(1, app_.platform.process.Separator())) + name);
  }
  if (error == FileError::kGood) Add("run", "begun", what);
  return error;
}

void FwJournal::OfModule(const FwModule* module, const FwFileFacts& facts) {
  module_ = module == nullptr ? "" : module->stem;
  digest_ = facts.digest;
  size_ = digest_.empty() ? "" : std::to_string(facts.size);
}

void FwJournal::Add(std::string_view step, std::string_view outcome, std::string_view detail) {
  if (path_.empty()) return;
  std::string record = TimeText(app_.platform.clock.Now());
  for (const std::string_view field : {std::string_view(module_), std::string_view(size_),
                                       std::string_view(digest_), step, outcome, detail}) {
    record += "," + Quoted(field);
  }
  const FileError error = AppendCsv(app_.platform.files, path_, {record});
  if (lost_ == FileError::kGood) lost_ = error;
}

void FwJournal::End() {
  OfModule(nullptr, {});
  Add("run", "ended");
  path_.clear();
}

}  // namespace vlt
