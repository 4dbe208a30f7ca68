// SPDX-License-Identifier: GPL-3.0-or-later
// The line's statistics as rows of data, and the files that are made of them and of the frames. Files hold
// UTF-8, lines end in CR LF, numbers have "." under every locale.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "state/app.h"
#include "state/line_record.h"

namespace vlt {

// One figure of the statistics.
struct LineColumn {
  const char* key;  // for programs: "failed", "median_ms"
  int head;         // text id
  bool in_window;   // beside the outcomes, which the window shows by themselves
};
// The station first, then in the order in which windows and files show them.
std::span<const LineColumn> LineColumns();

// A station's figures, or those of all of them.
struct LineRow {
  std::optional<int> station;  // nothing for all
  // One text a column of LineColumns() behind the station; a figure that there is none of is empty.
  std::vector<std::string> figures;
};
// All stations together first, then each of them.
std::vector<LineRow> LineRows(const LineRecord& record);
// "All" in the language in force, or the number.
std::string StationText(const App& app, const LineRow& row);

// Text id of how an attempt ended.
int OutcomeText(AttemptEnd end);
// `part` of `whole` in per cent with one decimal; empty when `whole` is 0.
std::string ShareText(double part, double whole);

// Bytes a second in the last seconds, and the share of them that the line carries at most, by the frames.
struct LineRate {
  double bytes_per_second = 0;
  double share = 0;  // 0 to 1
};
LineRate RateNow(const LineRecord& record, std::int64_t now_ms);

// The columns of a frame beside its meaning.
std::string WayText(FrameWay way);  // an arrow
std::string WayWord(FrameWay way);  // "sent", "received", "nothing"

// The whole contents of the two files. `frames` are those to be told, the oldest first.
std::string StatisticsCsv(const App& app);
std::string FrameRecord(const App& app, std::span<const LineFrame> frames);
// The frames that the record keeps.
std::vector<LineFrame> KeptFrames(const LineRecord& record);

}  // namespace vlt
