// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/run_journal.h"

#include <algorithm>
#include <functional>
#include <string_view>

#include "files/whole_file.h"

namespace vlt {
namespace {

constexpr const char* kFileName = "VLT.runs";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kTailBytes = 64 * 1024;  // more than the longest record
// Digits and what stands between them: "2026/11/24 10:00:05".
constexpr std::string_view kTimeForm = "0000/00/00 00:00:00";

// Calls `line` with each line that is whole; what is left behind them is the result.
std::string_view EachLine(std::string_view text, const std::function<void(std::string_view)>& line) {
  for (std::size_t end = text.find(kLineEnd); end != std::string_view::npos; end = text.find(kLineEnd)) {
    line(text.substr(0, end));
    text.remove_prefix(end + kLineEnd.size());
  }
  return text;
}

std::optional<OpenRun> RunOf(std::string_view line) {
  const std::size_t first = line.find('\t');
  const std::size_t second = first == std::string_view::npos ? first : line.find('\t', first + 1);
  if (second == std::string_view::npos || second + 1 == line.size()) return std::nullopt;
  return OpenRun{.started = std::string(line.substr(0, first)),
                 .page = std::string(line.substr(first + 1, second - first - 1)),
                 .path = std::string(line.substr(second + 1))};
}

FileError Write(App& app, std::vector<OpenRun> runs) {
  FileSystem& files = app.platform.files;
  const std::string path = RunJournalPath(app);
  if (runs.empty()) {
    const FileError error = files.Remove(path);
    return error == FileError::kMissing ? FileError::kGood : error;
  }
  if (runs.size() > kMostOpenRuns) {
    runs.erase(runs.begin(), runs.end() - static_cast<std::ptrdiff_t>(kMostOpenRuns));
  }
  std::string text;
  for (const OpenRun& run : runs) {
    text.append(run.started).append("\t").append(run.page).append("\t").append(run.path).append(kLineEnd);
  }
  return WriteWhole(files, path, text, false);
}

// The time at the head of a record; empty for any other line. Heads of logs have no time there.
std::string_view TimeOf(std::string_view line) {
  const std::string_view time = line.substr(0, kTimeForm.size());
  const bool form = std::ranges::equal(time, kTimeForm, [](char is, char wanted) {
    return wanted == '0' ? is >= '0' && is <= '9' : is == wanted;
  });
  const bool ends = line.size() > time.size() && line[time.size()] == ',';
  return form && ends ? time : std::string_view();
}

}  // namespace

std::string RunJournalPath(App& app) {
  return app.platform.process.ProgramFolder() + app.platform.process.Separator() + kFileName;
}

std::vector<OpenRun> ReadOpenRuns(App& app) {
  std::vector<OpenRun> runs;
  std::string text;
  if (app.platform.files.Read(RunJournalPath(app), text) != FileError::kGood) return runs;
  EachLine(text, [&](std::string_view line) {
    if (const auto run = RunOf(line)) runs.push_back(*run);
  });
  return runs;
}

FileError EnterRun(App& app, const OpenRun& run) {
  std::vector<OpenRun> runs = ReadOpenRuns(app);
  runs.push_back(run);
  return Write(app, std::move(runs));
}

FileError MoveRun(App& app, const OpenRun& run, const std::string& path) {
  std::vector<OpenRun> runs = ReadOpenRuns(app);
  const auto entry = std::ranges::find(runs, run);
  OpenRun moved = run;
  moved.path = path;
  if (entry == runs.end()) {
    runs.push_back(moved);
  } else {
    *entry = moved;
  }
  return Write(app, std::move(runs));
}

FileError TakeOutRun(App& app, const OpenRun& run) { return TakeOutRuns(app, {run}); }

FileError TakeOutRuns(App& app, const std::vector<OpenRun>& runs) {
  std::vector<OpenRun> left = ReadOpenRuns(app);
  std::erase_if(left, [&](const OpenRun& run) { return std::ranges::find(runs, run) != runs.end(); });
  return Write(app, std::move(left));
}

RunFile LookAtRun(App& app, const OpenRun& run) {
  RunFile found;
  FileSystem& files = app.platform.files;
  const std::string path = CleanPath(run.path);
  std::string text;
  found.error = files.ReadTail(path, kTailBytes, text, found.bytes);
  if (found.error != FileError::kGood) return found;
  found.half_line = !EachLine(text, [&](std::string_view line) {
                       if (const std::string_view time = TimeOf(line); !time.empty())
                         found.last_record = time;
                     }).empty();
  if (files.Read(path, text) != FileError::kGood) return found;
  found.records = 0;
  EachLine(text, [&](std::string_view line) { *found.records += TimeOf(line).empty() ? 0 : 1; });
  return found;
}

}  // namespace vlt
