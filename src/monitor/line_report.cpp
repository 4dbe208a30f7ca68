// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/line_report.h"

#include <algorithm>

#include "files/csv_log.h"
#include "monitor/frame_meaning.h"
#include "resources/string_table.h"
#include "resources/text_ids_line.h"
#include "resources/version.h"
#include "values/hex_digits.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr const char* kLineEnd = "\r\n";
constexpr std::int64_t kNowMs = 5000;  // how far back "now" reaches
constexpr int kMedian = 50;
constexpr int kHighest = 99;

// What a column shows of some totals in the time in which they came.
using Figure = std::string (*)(const LineTotals& totals, double span_ms);

std::string TimeText(const LineTotals& totals, int percent) {
  const int ms = totals.answers.Percentile(percent);
  return ms < 0 ? "" : std::to_string(ms);
}

template <AttemptEnd End>
std::string Ended(const LineTotals& totals, double) {
  return std::to_string(totals.Ended(End));
}

template <std::int64_t LineTotals::*Count>
std::string Counted(const LineTotals& totals, double) {
  return std::to_string(totals.*Count);
}

std::string Median(const LineTotals& totals, double) { return TimeText(totals, kMedian); }
std::string Highest(const LineTotals& totals, double) { return TimeText(totals, kHighest); }

std::string Rate(const LineTotals& totals, double span_ms) {
  return span_ms > 0 ? FixedText(static_cast<double>(totals.Bytes()) * 1000 / span_ms, 0) : "";
}

std::string Load(const LineTotals& totals, double span_ms) { return ShareText(totals.carried_ms, span_ms); }

struct Row {
  LineColumn column;
  Figure figure;
};
constexpr Row kRows[] = {
    {{"station", text::kLineStation, true}, nullptr},
    {{"exchanges", text::kLineExchanges, true}, Counted<&LineTotals::exchanges>},
    {{"repeats", text::kLineRepeats, true}, Counted<&LineTotals::repeats>},
    {{"failed", text::kLineFailed, true}, Counted<&LineTotals::failed>},
    {{"no_reply", text::kEndSilence, false}, Ended<AttemptEnd::kSilence>},
    {{"cut_short", text::kEndShort, false}, Ended<AttemptEnd::kShort>},
    {{"wrong_check", text::kEndCheck, false}, Ended<AttemptEnd::kBadCheck>},
    {{"refused", text::kEndException, false}, Ended<AttemptEnd::kException>},
    {{"other_function", text::kEndFunction, false}, Ended<AttemptEnd::kWrongFunction>},
    {{"other_station", text::kEndStation, false}, Ended<AttemptEnd::kOtherStation>},
    {{"other_echo", text::kEndEcho, false}, Ended<AttemptEnd::kOtherEcho>},
    {{"port_failed", text::kEndPort, false}, Ended<AttemptEnd::kPortFault>},
    {{"median_ms", text::kLineMedian, true}, Median},
    {{"percentile99_ms", text::kLineHighest, true}, Highest},
    {{"sent_bytes", text::kLineSent, false}, Counted<&LineTotals::sent_bytes>},
    {{"received_bytes", text::kLineReceived, false}, Counted<&LineTotals::received_bytes>},
    {{"bytes_per_second", text::kLineRate, true}, Rate},
    {{"line_load_percent", text::kLineLoad, true}, Load},
};
constexpr std::size_t kColumns = std::size(kRows);

LineRow MakeRow(std::optional<int> station, const LineTotals& totals, double span_ms) {
  LineRow row{station, {}};
  for (const Row& column : kRows) {
    if (column.figure != nullptr) row.figures.push_back(column.figure(totals, span_ms));
  }
  return row;
}

std::string SpeedText(const App& app) {
  const LineRecord& line = *app.line;
  if (line.Speed() == 0) return app.Text(text::kLineNoPort);
  return "COM" + std::to_string(app.state.OpenedPort) + " " + app.state.OpenedDevice + " " +
         app.state.OpenedSettings;
}

// The statistics as lines of fields.
std::string Table(const App& app, const char* between) {
  std::string text;
  for (const Row& column : kRows) {
    text += (text.empty() ? "" : between) + app.Text(column.column.head);
  }
  text += kLineEnd;
  for (const LineRow& row : LineRows(*app.line)) {
    text += StationText(app, row);
    for (const std::string& figure : row.figures) text += between + figure;
    text += kLineEnd;
  }
  return text;
}

std::string Head(const App& app) {
  return FormatText(app.Text(text::kLineSince), {DateTimeText(app.line->Since())});
}

}  // namespace

std::span<const LineColumn> LineColumns() {
  static constexpr auto kHeads = [] {
    std::array<LineColumn, kColumns> heads{};
    for (std::size_t i = 0; i < kColumns; ++i) heads[i] = kRows[i].column;
    return heads;
  }();
  return kHeads;
}

std::vector<LineRow> LineRows(const LineRecord& record) {
  const auto span_ms = static_cast<double>(record.SpanMs());
  std::vector<LineRow> rows{MakeRow(std::nullopt, record.All(), span_ms)};
  for (const int station : record.Stations()) rows.push_back(MakeRow(station, record.Of(station), span_ms));
  return rows;
}

std::string StationText(const App& app, const LineRow& row) {
  return row.station ? std::to_string(*row.station) : app.Text(text::kLineAll);
}

int OutcomeText(AttemptEnd end) {
  static constexpr int kTexts[kAttemptEnds] = {text::kEndAnswered,  text::kEndSilence,  text::kEndShort,
                                               text::kEndException, text::kEndFunction, text::kEndCheck,
                                               text::kEndStation,   text::kEndPort,     text::kEndEcho};
  return kTexts[static_cast<std::size_t>(end)];
}

std::string ShareText(double part, double whole) { return whole > 0 ? FixedText(100 * part / whole, 1) : ""; }

LineRate RateNow(const LineRecord& record, std::int64_t now_ms) {
  std::int64_t from_ms = now_ms - kNowMs;
  // A ring that is full may not reach so far back.
  if (record.FrameCount() == LineRecord::kFrames) from_ms = std::max(from_ms, record.Frame(0).at_ms);
  const std::int64_t span_ms = now_ms - from_ms;
  std::size_t bytes = 0;
  for (std::size_t i = record.FrameCount(); i-- > 0 && record.Frame(i).at_ms > from_ms;) {
    bytes += record.Frame(i).bytes.size();
  }
  if (span_ms <= 0) return {};
  LineRate rate{.bytes_per_second = static_cast<double>(bytes) * 1000 / static_cast<double>(span_ms)};
  if (record.Speed() > 0) rate.share = rate.bytes_per_second * record.BitsPerByte() / record.Speed();
  return rate;
}

std::string WayText(FrameWay way) {
  switch (way) {
    case FrameWay::kSent:
      return "→";
    case FrameWay::kReceived:
      return "←";
    case FrameWay::kNothing:
      break;
  }
  return "×";
}

std::string WayWord(FrameWay way) {
  switch (way) {
    case FrameWay::kSent:
      return "sent";
    case FrameWay::kReceived:
      return "received";
    case FrameWay::kNothing:
      break;
  }
  return "nothing";
}

std::string StatisticsCsv(const App& app) {
  std::string text(kByteOrderMark);
  text += Head(app) + kLineEnd;
  // The settings have commas of their own.
  std::string speed = SpeedText(app);
  std::replace(speed.begin(), speed.end(), ',', ' ');
  return text + speed + kLineEnd + Table(app, ",");
}

std::string FrameRecord(const App& app, std::span<const LineFrame> frames) {
  std::string text = std::string(kProductTitle) + " " + VersionText("") + kLineEnd;
  text += DateTimeText(app.platform.clock.Now()) + kLineEnd + SpeedText(app) + kLineEnd + kLineEnd;
  text += Head(app) + kLineEnd + Table(app, "\t") + kLineEnd;
  for (const LineFrame& frame : frames) {
    text += PreciseTimeText(frame.time) + "\t" + WayText(frame.way) + "\t" + std::to_string(frame.station) +
            "\t" + HexDigits(frame.bytes, " ") + "\t" + FrameMeaning(app, frame, Telling::kWhole) + kLineEnd;
  }
  return text;
}

std::vector<LineFrame> KeptFrames(const LineRecord& record) {
  std::vector<LineFrame> frames;
  frames.reserve(record.FrameCount());
  for (std::size_t i = 0; i < record.FrameCount(); ++i) frames.push_back(record.Frame(i));
  return frames;
}

}  // namespace vlt
