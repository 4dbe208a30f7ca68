// SPDX-License-Identifier: GPL-3.0-or-later
// The runs that record now: VLT.runs beside VLT.ini. A run is entered when its file has its head and taken
// out at its Stop, so what stands there when the program starts ended without one. The file is there only
// while it has an entry.
//
// A line a run: when it began, its page, its file, with a tab between them. UTF-8, lines end in CR LF; LF
// alone is taken too. Lines that are no run stay as they are. A journal that can't be read is never written.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "state/app.h"

namespace vlt {

struct OpenRun {
  std::string started;  // "2026/11/24 10:00:00"
  std::string page;     // "Form9"
  std::string path;     // of its file, as it was given to the operator
  bool operator==(const OpenRun&) const = default;
};

// How many of them are kept; older ones go.
inline constexpr std::size_t kMostOpenRuns = 20;

std::string RunJournalPath(App& app);

// The entries, the oldest first, lines that are none left out. No file is good and has none. After a failure
// `runs` is empty.
FileError ReadOpenRuns(App& app, std::vector<OpenRun>& runs);
// The same, where it does not matter why there are none.
std::vector<OpenRun> ReadOpenRuns(App& app);

// Each of these changes nothing, and returns why, when the journal can't be read.
FileError EnterRun(App& app, const OpenRun& run);
// The run goes on in another file.
FileError MoveRun(App& app, const OpenRun& run, const std::string& path);
FileError TakeOutRun(App& app, const OpenRun& run);
// All that ended without Stop, those of `runs`, were seen. Lines that are no run go with the last one.
FileError TakeOutRuns(App& app, const std::vector<OpenRun>& runs);

// What a run has left in its file.
struct RunFile {
  FileError error = FileError::kGood;  // why it cannot be read
  std::uint64_t bytes = 0;
  // Of the last whole line, when that is a record: its time, "2026/11/24 10:00:05". Empty: there is none.
  std::string last_record;
  std::optional<std::int64_t> records;  // whole lines that are; nothing for a file that is too long to count
  bool half_line = false;               // the file does not end with a whole line
};

// Reads it and changes nothing.
RunFile LookAtRun(App& app, const OpenRun& run);

}  // namespace vlt
