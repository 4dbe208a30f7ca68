// SPDX-License-Identifier: GPL-3.0-or-later
// The line while several stations are polled: open its window, choose a silent station, hold the frames, save
// both files, reset, close.
#include <QDir>
#include <QFile>

#include "desktop/qt_text.h"
#include "monitor/frm_line.h"
#include "resources/text_ids_line.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kLinePage = "Form12";
constexpr const char* kLine = "frmLine";
constexpr int kSilent = 3;  // of the stations, as the tour's meters are set up
constexpr int kStations = 4;

frmLine& Window(Tour& tour) { return static_cast<frmLine&>(*tour.Running().Logic().windows.Find(kLine)); }

QByteArray Written(Tour& tour, const char* name) {
  const QDir folder(ToQt(tour.Running().Logic().platform.process.ProgramFolder()));
  QFile file(folder.filePath(name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void LayFile(Tour& tour, const char* name) {
  const QDir folder(ToQt(tour.Running().Logic().platform.process.ProgramFolder()));
  tour.Boxes().LayFile(FromQt(folder.filePath(name)));
}

void Start(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click("MDIForm1", "Command14");
  tour.ExpectSoon("the start button", [&] { return hands.Enabled(kLinePage, "cmdStart"); });
  hands.Choose(kLinePage, "CH_Combo1", 0);
  hands.Choose(kLinePage, "cmbDisp1", 1);
  hands.Choose(kLinePage, "CH_Combo2", 0);
  hands.Choose(kLinePage, "cmbDisp2", 7);
  for (int i = 0; i < kStations; ++i) hands.Tick(kLinePage, "chkStationNo(" + std::to_string(i) + ")");
  hands.Type(kLinePage, "txtCycle", "3");
  LayFile(tour, "line_run.csv");
  hands.Click(kLinePage, "cmdStart");
}

void OpenStatistics(Tour& tour) {
  Hands& hands = tour.Operator();
  if (hands.Enabled(kLinePage, "cmdStart")) throw Trouble("the run has not begun");
  hands.Menu("MDIForm1", "mnuLine");
  tour.ExpectSoon("a failed exchange of the silent station", [&] {
    return Window(tour).grdStations.Rows() == kStations + 2 &&
           Window(tour).grdStations.Cell(kSilent + 1, 3) != "0";
  });
  if (!hands.Enabled(kLine, "cmdCSV")) throw Trouble("a button is off during a run");
  tour.Picture(kLine, "frmLine");
}

void Hold(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Tick(kLine, "chkPause");
  const int rows = Window(tour).grdFrames.Rows();
  Window(tour).grdStations.Choose(kSilent + 1);
  const std::int64_t before = tour.Running().Logic().line->FramesEver();
  tour.ExpectSoon("more frames", [&] { return tour.Running().Logic().line->FramesEver() > before + 4; });
  tour.Expect("rows while it stands still", std::to_string(Window(tour).grdFrames.Rows()),
              std::to_string(rows));
  tour.Picture(kLine, "frmLine_paused");
  LayFile(tour, "frames.txt");
  hands.Click(kLine, "cmdSave");
  tour.ExpectSoon("the frames in a file", [&] { return Written(tour, "frames.txt").count('\n') > rows; });
  hands.Tick(kLine, "chkPause", false);
}

void SaveAndReset(Tour& tour) {
  Hands& hands = tour.Operator();
  LayFile(tour, "line.csv");
  hands.Click(kLine, "cmdCSV");
  tour.ExpectSoon("the statistics in a file", [&] { return Written(tour, "line.csv").count('\n') == 8; });
  const int rows = Window(tour).grdFrames.Rows();
  hands.Click(kLine, "cmdReset");
  if (Window(tour).grdFrames.Rows() < rows) throw Trouble("a reset has dropped frames");
  hands.Click(kLinePage, "cmdStop");
  tour.ExpectSoon("the end of the run", [&] { return hands.Enabled(kLinePage, "cmdStart"); });
  hands.Click(kLine, "cmdClose");
}

constexpr Step kLineSteps[] = {{"stations are polled for the line", Start},
                               {"line statistics open during the run", OpenStatistics},
                               {"line frames stand still and are saved", Hold},
                               {"line statistics are saved and reset", SaveAndReset}};

}  // namespace

std::span<const Step> LineSteps() { return kLineSteps; }

}  // namespace vlt::test
