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

// Calls `line` with each line that is whole, without its CR LF or LF; what is left behind them is the result.
std::string_view EachLine(std::string_view text, const std::function<void(std::string_view)>& line) {
  for (std::size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    std::string_view whole = text.substr(0, end);
    if (whole.ends_with('\r')) whole.remove_suffix(1);
    line(whole);
    text.remove_prefix(end + 1);
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

// A line of the journal, as it stands there; what is no run has none.
struct Line {
  std::string text;
  std::optional<OpenRun> run;
};

Line LineOf(const OpenRun& run) { return {run.started + "\t" + run.page + "\t" + run.path, run}; }

FileError ReadLines(App& app, std::vector<Line>& lines) {
  std::string text;
  const FileError error = app.platform.files.ReadAtMost(RunJournalPath(app), kMostSettingsBytes, text);
  if (error == FileError::kMissing) return FileError::kGood;
  if (error != FileError::kGood) return error.OnReading();
  const auto take = [&](std::string_view line) {
    if (!line.empty()) lines.push_back({std::string(line), RunOf(line)});
  };
  take(EachLine(text, take));
  return FileError::kGood;
}

bool IsRun(const Line& line) { return line.run.has_value(); }

void DropOldRuns(std::vector<Line>& lines) {
  auto runs = static_cast<std::size_t>(std::ranges::count_if(lines, IsRun));
  for (; runs > kMostOpenRuns; --runs) lines.erase(std::ranges::find_if(lines, IsRun));
}

FileError Write(App& app, std::vector<Line> lines) {
  FileSystem& files = app.platform.files;
  const std::string path = RunJournalPath(app);
  if (lines.empty()) {
    const FileError error = files.Remove(path);
    return error == FileError::kMissing ? FileError::kGood : error;
  }
  DropOldRuns(lines);
  std::string text;
  for (const Line& line : lines) text.append(line.text).append(kLineEnd);
  return WriteWhole(files, path, text, false);
}

FileError Change(App& app, const std::function<void(std::vector<Line>&)>& change) {
  std::vector<Line> lines;
  const FileError error = ReadLines(app, lines);
  if (error != FileError::kGood) return error;
  change(lines);
  return Write(app, std::move(lines));
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

FileError ReadOpenRuns(App& app, std::vector<OpenRun>& runs) {
  std::vector<Line> lines;
  const FileError error = ReadLines(app, lines);
  runs.clear();
  for (Line& line : lines) {
    if (line.run) runs.push_back(std::move(*line.run));
  }
  return error;
}

std::vector<OpenRun> ReadOpenRuns(App& app) {
  std::vector<OpenRun> runs;
  ReadOpenRuns(app, runs);
  return runs;
}

FileError EnterRun(App& app, const OpenRun& run) {
  return Change(app, [&](std::vector<Line>& lines) { lines.push_back(LineOf(run)); });
}

FileError MoveRun(App& app, const OpenRun& run, const std::string& path) {
  OpenRun moved = run;
  moved.path = path;
  return Change(app, [&](std::vector<Line>& lines) {
    const auto entry = std::ranges::find_if(lines, [&](const Line& line) { return line.run == run; });
    if (entry == lines.end()) {
      lines.push_back(LineOf(moved));
    } else {
      *entry = LineOf(moved);
    }
  });
}

FileError TakeOutRun(App& app, const OpenRun& run) {
  return Change(app, [&](std::vector<Line>& lines) {
    std::erase_if(lines, [&](const Line& line) { return line.run == run; });
  });
}

FileError TakeOutRuns(App& app, const std::vector<OpenRun>& runs) {
  return Change(app, [&](std::vector<Line>& lines) {
    std::erase_if(lines, [&](const Line& line) {
      return line.run && std::ranges::find(runs, *line.run) != runs.end();
    });
    if (std::ranges::none_of(lines, IsRun)) lines.clear();
  });
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
