// SPDX-License-Identifier: GPL-3.0-or-later
#include "monitor/frm_line.h"

#include <algorithm>
#include <utility>

#include "files/file_report.h"
#include "files/settings_file.h"
#include "files/whole_file.h"
#include "monitor/frame_meaning.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_line.h"
#include "values/hex_digits.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kRefreshMs = 500;

constexpr std::size_t kTimeOfDay = 11;  // in front of it stands the date

enum OutcomeColumn : std::uint8_t { kOutcome, kAttempts, kShare, kOutcomeColumns };
enum FrameColumn : std::uint8_t { kTime, kWay, kStation, kBytes, kMeaning, kFrameColumns };

constexpr AttemptEnd kOutcomes[] = {
    AttemptEnd::kAnswered,     AttemptEnd::kSilence,   AttemptEnd::kShort,
    AttemptEnd::kBadCheck,     AttemptEnd::kException, AttemptEnd::kWrongFunction,
    AttemptEnd::kOtherStation, AttemptEnd::kOtherEcho, AttemptEnd::kPortFault};
static_assert(std::size(kOutcomes) == kAttemptEnds);

int WindowColumns() {
  return static_cast<int>(std::count_if(LineColumns().begin(), LineColumns().end(),
                                        [](const LineColumn& column) { return column.in_window; }));
}

}  // namespace

frmLine::frmLine(App& app)
    : Form(app.windows, "frmLine", FormPlace::kWindow),
      grdStations(*this, "grdStations", 1, WindowColumns()),
      grdOutcomes(*this, "grdOutcomes", static_cast<int>(kAttemptEnds) + 1, kOutcomeColumns),
      grdFrames(*this, "grdFrames", 1, kFrameColumns),
      app_(app) {
  cmdReset.on_click = [this] { cmdReset_Click(); };
  cmdCSV.on_click = [this] { cmdCSV_Click(); };
  cmdSave.on_click = [this] { cmdSave_Click(); };
  cmdClose.on_click = [this] { List().Unload(Name()); };
  chkPause.on_click = [this] { chkPause_Click(); };
  grdStations.on_choose = [this] { grdStations_Choose(); };
  tmrLine.on_timer = [this] { tmrLine_Timer(); };
  tmrLine.SetInterval(kRefreshMs);
}

bool frmLine::StaysUsable(const Control& control) const { return control.Kind() == ControlKind::kPushButton; }

void frmLine::Form_Load() {
  Dress();
  ShowAll();
}

void frmLine::Form_Activate() {
  ShowAll();
  tmrLine.SetRunning(true);
}

void frmLine::Dress() {
  const std::pair<Control*, int> captions[] = {
      {&cmdReset, text::kLineReset}, {&cmdCSV, text::kSaveAsCsv},   {&cmdSave, text::kLineSaveFrames},
      {&cmdClose, text::kClose},     {&chkPause, text::kLinePause}, {&lblFrames, text::kLineFrames}};
  SetCaption(app_.Text(text::kLineTitle));
  for (const auto& [control, id] : captions) control->SetCaption(app_.Text(id));
  int at = 0;
  for (const LineColumn& column : LineColumns()) {
    if (!column.in_window) continue;
    grdStations.SetCell(0, at++, app_.Text(column.head));
  }
  constexpr int kOutcomeHeads[] = {text::kLineOutcome, text::kLineAttempts, text::kLineShare};
  for (int i = 0; i < kOutcomeColumns; ++i) grdOutcomes.SetCell(0, i, app_.Text(kOutcomeHeads[i]));
  for (std::size_t i = 0; i < kAttemptEnds; ++i) {
    grdOutcomes.SetCell(static_cast<int>(i) + 1, kOutcome, app_.Text(OutcomeText(kOutcomes[i])));
  }
  constexpr int kFrameHeads[] = {text::kLineTime, 0, text::kLineStation, text::kLineBytes,
                                 text::kLineMeaning};
  for (int i = 0; i < kFrameColumns; ++i) {
    grdFrames.SetCell(0, i, kFrameHeads[i] == 0 ? "" : app_.Text(kFrameHeads[i]));
  }
  for (Grid* grid : {&grdStations, &grdOutcomes, &grdFrames}) grid->SetDense(true);
  grdFrames.SetFollows(true);
}

// --- what is shown ---------------------------------------------------------------------------------------

void frmLine::tmrLine_Timer() {
  if (!Visible()) return tmrLine.SetRunning(false);
  ShowAll();
  SaveWaiting();
}

void frmLine::ShowAll() {
  ShowSpeed();
  if (shown_revision_ == app_.line->Revision()) return;
  shown_revision_ = app_.line->Revision();
  lblSince.SetCaption(FormatText(app_.Text(text::kLineSince), {DateTimeText(app_.line->Since())}));
  ShowStations();
  ShowOutcomes();
  ShowFrames();
}

void frmLine::ShowStations() {
  const std::vector<LineRow> rows = LineRows(*app_.line);
  grdStations.SetRows(static_cast<int>(rows.size()) + 1);
  int selected = 1;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const int row = static_cast<int>(i) + 1;
    if (rows[i].station == station_) selected = row;
    grdStations.SetCell(row, 0, StationText(app_, rows[i]));
    int at = 1;
    for (std::size_t figure = 0; figure < rows[i].figures.size(); ++figure) {
      if (LineColumns()[figure + 1].in_window) grdStations.SetCell(row, at++, rows[i].figures[figure]);
    }
  }
  if (selected == 1) station_.reset();  // the chosen one was reset
  grdStations.SetSelectedRow(selected);
}

void frmLine::ShowOutcomes() {
  const LineTotals totals = station_ ? app_.line->Of(*station_) : app_.line->All();
  const std::string whose = StationText(app_, {station_, {}});
  lblOutcomes.SetCaption(FormatText(app_.Text(text::kLineOutcomes),
                                    {station_ ? app_.Text(text::kLineStation) + " " + whose : whose}));
  std::int64_t attempts = 0;
  for (const std::int64_t count : totals.ends) attempts += count;
  for (std::size_t i = 0; i < kAttemptEnds; ++i) {
    const std::int64_t count = totals.Ended(kOutcomes[i]);
    const int row = static_cast<int>(i) + 1;
    grdOutcomes.SetCell(row, kAttempts, std::to_string(count));
    grdOutcomes.SetCell(row, kShare, ShareText(static_cast<double>(count), static_cast<double>(attempts)));
  }
}

// Frames that the record has dropped go on top, new ones come at the end. The last one that was shown is told
// again: how it ended may have become known since.
void frmLine::ShowFrames() {
  if (paused_) return;
  const LineRecord& line = *app_.line;
  const auto kept = static_cast<std::int64_t>(line.FrameCount());
  const std::int64_t fresh = std::min(line.FramesEver() - shown_frames_, kept);
  shown_frames_ = line.FramesEver();
  grdFrames.DropRows(static_cast<int>(grdFrames.Rows() - 1 + fresh - kept));
  grdFrames.SetRows(static_cast<int>(kept) + 1);
  for (std::int64_t i = std::max<std::int64_t>(kept - fresh - 1, 0); i < kept; ++i) {
    const LineFrame& frame = line.Frame(static_cast<std::size_t>(i));
    const std::string texts[kFrameColumns] = {
        PreciseTimeText(frame.time).substr(kTimeOfDay), WayText(frame.way), std::to_string(frame.station),
        HexDigits(frame.bytes, " "),
        FrameMeaning(app_, frame, frame.way == FrameWay::kSent ? Telling::kShort : Telling::kWhole)};
    grdFrames.SetRow(static_cast<int>(i) + 1, texts);
  }
}

void frmLine::ShowSpeed() {
  const LineRecord& line = *app_.line;
  if (line.Speed() == 0) return stbLine.SetPanel(3, app_.Text(text::kLineNoPort));
  const LineRate rate = RateNow(line, app_.platform.clock.NowMs());
  stbLine.SetPanel(2, FormatText(app_.Text(text::kLineNow),
                                 {FixedText(rate.bytes_per_second, 0), FixedText(100 * rate.share, 0)}));
  const double most = static_cast<double>(line.Speed()) / line.BitsPerByte();
  stbLine.SetPanel(
      3, FormatText(app_.Text(text::kLineSpeed),
                    {std::to_string(line.Speed()), std::to_string(line.BitsPerByte()), FixedText(most, 0)}));
}

// --- what a person does ----------------------------------------------------------------------------------

void frmLine::grdStations_Choose() {
  const int row = grdStations.SelectedRow();
  const std::vector<int> stations = app_.line->Stations();
  const auto at = static_cast<std::size_t>(std::max(row - 2, 0));
  station_ = row < 2 || at >= stations.size() ? std::nullopt : std::optional(stations[at]);
  ShowOutcomes();
}

void frmLine::cmdReset_Click() {
  app_.line->Reset();
  ShowAll();
}

void frmLine::chkPause_Click() {
  ShowFrames();  // up to the moment
  paused_ = chkPause.Ticked();
  standing_ = paused_ ? KeptFrames(*app_.line) : std::vector<LineFrame>();
  const std::string now = DateTimeText(app_.platform.clock.Now());
  lblPaused.SetCaption(paused_ ? FormatText(app_.Text(text::kLinePaused), {now}) : "");
  ShowFrames();
}

void frmLine::cmdCSV_Click() {
  Save({{.kind = text::kLineTitle, .name = "line.csv", .ask_before_overwrite = true}, StatisticsCsv(app_)});
}

void frmLine::cmdSave_Click() {
  const CsvQuestion question{
      .kind = text::kLineFrameFile, .ending = "txt", .name = "frames.txt", .ask_before_overwrite = true};
  Save({question, FrameRecord(app_, paused_ ? standing_ : KeptFrames(*app_.line))});
}

// A dialog would hold up the work inside of which its button was pressed.
void frmLine::Save(Export file) {
  waiting_.push_back(std::move(file));
  if (List().IsInside()) {
    stbLine.SetPanel(1, app_.Text(text::kLineAskedLater));
  } else {
    SaveWaiting();
  }
}

void frmLine::SaveWaiting() {
  if (List().IsInside()) return;
  for (const Export& file : std::exchange(waiting_, {})) AskAndWrite(file);
}

void frmLine::AskAndWrite(const Export& file) {
  stbLine.SetPanel(1, "");
  const auto path = AskCsvFile(app_, file.question);
  if (!path) return;
  const FileError error = WriteWhole(app_.platform.files, CleanPath(*path), file.content, false);
  stbLine.SetPanel(1, error == FileError::kGood
                          ? FormatText(app_.Text(text::kFileSaved), {LastComponent(*path)})
                          : NotWrittenText(app_, *path, error));
}

}  // namespace vlt
