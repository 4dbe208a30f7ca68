// SPDX-License-Identifier: GPL-3.0-or-later
// The word `line`: figures and frames of the line.
#include <algorithm>
#include <charconv>

#include "cli/companion.h"
#include "files/csv_question.h"
#include "files/file_report.h"
#include "files/whole_file.h"
#include "monitor/frame_meaning.h"
#include "monitor/line_report.h"
#include "values/hex_digits.h"

namespace vlt {
namespace {

constexpr auto kUnknown = ScriptStatus::kUnknown;

// How many frames are told; all of them when nothing is said.
std::size_t MostFrames(const Arguments& arguments) {
  if (arguments.size() < 2) return LineRecord::kFrames;
  const std::string& text = arguments[1].text;
  std::size_t number = 0;
  const auto [behind, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (fault == std::errc() && behind == text.data() + text.size()) return number;
  throw Trouble{kUnknown, text + " is no whole number"};
}

}  // namespace

Companion::After Companion::WordLine(const Arguments& arguments) {
  const std::string what = arguments.empty() ? "" : arguments[0].text;
  const bool writes = what == "csv" || what == "save";
  if (writes != (arguments.size() == 2) && what != "frames") {
    throw Trouble{kUnknown, "it is written: line [frames [N] | reset | csv FILE | save FILE]"};
  }
  if (what.empty()) {
    TellLine();
  } else if (what == "frames") {
    TellFrames(MostFrames(arguments));
  } else if (what == "reset") {
    app_.line->Reset();
  } else if (what == "csv") {
    WriteLineFile(arguments[1].text, StatisticsCsv(app_));
  } else if (what == "save") {
    WriteLineFile(arguments[1].text, FrameRecord(app_, KeptFrames(*app_.line)));
  } else {
    throw Trouble{kUnknown, "line does not know " + what};
  }
  return After::kNext;
}

void Companion::TellLine() {
  // All of them are numbers, but for the station of all.
  std::vector<std::string> marked;
  for (const LineColumn& column : LineColumns()) {
    marked.push_back(std::string(column.key) + (marked.empty() ? "?" : "#"));
  }
  const std::vector<std::string_view> names(marked.begin(), marked.end());
  for (const LineRow& row : LineRows(*app_.line)) {
    EventFields fields{"line", row.station ? std::to_string(*row.station) : "all"};
    fields.insert(fields.end(), row.figures.begin(), row.figures.end());
    Report(fields, names);
  }
}

void Companion::TellFrames(std::size_t most) {
  const LineRecord& line = *app_.line;
  for (std::size_t i = line.FrameCount() - std::min(most, line.FrameCount()); i < line.FrameCount(); ++i) {
    const LineFrame& frame = line.Frame(i);
    Report({"frame", PreciseTimeText(frame.time), WayWord(frame.way), std::to_string(frame.station),
            HexDigits(frame.bytes, " "), FrameMeaning(app_, frame, Telling::kWhole)});
  }
}

void Companion::WriteLineFile(const std::string& path, const std::string& content) {
  if (IsSettingsFile(app_, path)) Refuse("line", path + " holds the program's settings");
  const FileError error = WriteWhole(app_.platform.files, CleanPath(path), content, false);
  if (error != FileError::kGood) Refuse("line", NotWrittenText(app_, path, error));
}

}  // namespace vlt
