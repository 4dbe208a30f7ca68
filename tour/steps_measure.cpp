// SPDX-License-Identifier: GPL-3.0-or-later
// Measure: name a file, start, watch some cycles, look at the chart, stop.
#include <QDir>
#include <QFile>

#include "desktop/qt_text.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kMeasurePage = "Form9";
constexpr int kCycles = 4;
constexpr int kHeadLines = 2;

QString Folder(Tour& tour) { return ToQt(tour.Running().Logic().platform.process.ProgramFolder()); }

// Lines of the one log that the run has written.
QList<QByteArray> Log(Tour& tour) {
  const QDir folder(Folder(tour));
  const QStringList logs = folder.entryList({"watch_*.csv"});
  if (logs.size() != 1) return {};
  QFile file(folder.filePath(logs.front()));
  if (!file.open(QIODevice::ReadOnly)) throw Trouble("the log can't be read");
  QList<QByteArray> lines = file.readAll().split('\n');
  lines.removeLast();
  return lines;
}

void OpenMeasure(Tour& tour) {
  tour.Operator().Click("MDIForm1", "Command7");
  tour.ExpectSoon("the start button", [&] { return tour.Operator().Enabled(kMeasurePage, "Start"); });
  tour.Picture("MDIForm1", "Form9");
  // Without a file to write to there is no run.
  tour.ClickAndAnswer(kMeasurePage, "Start", tour.Text(4060), true);
}

void Run(Tour& tour) {
  Hands& hands = tour.Operator();
  tour.Boxes().LayFile(FromQt(QDir(Folder(tour)).filePath("watch.csv")));
  hands.Click(kMeasurePage, "SaveCSV");
  hands.Type(kMeasurePage, "Max", "60");
  hands.Type(kMeasurePage, "Min", "0");
  hands.Type(kMeasurePage, "PointText", "20");
  hands.Click(kMeasurePage, "Start");
  tour.ExpectSoon("some records", [&] { return Log(tour).size() >= kHeadLines + kCycles; });
  if (hands.Text(kMeasurePage, "txtRyuryo(0)").empty()) throw Trouble("no flow rate is shown");
  if (hands.Enabled(kMeasurePage, "Start") || !hands.Enabled(kMeasurePage, "Stop"))
    throw Trouble("the buttons of a run");
  tour.Picture("MDIForm1", "Form9_running");
}

void Stop(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click(kMeasurePage, "Stop");
  tour.ExpectSoon("the end of the run", [&] { return hands.Enabled(kMeasurePage, "Start"); });
  tour.Picture("MDIForm1", "Form9_stopped");
  for (const QByteArray& line : Log(tour)) {
    if (!line.endsWith('\r')) throw Trouble("a record is not whole");
  }
}

constexpr Step kMeasureSteps[] = {
    {"measure opens", OpenMeasure}, {"measure runs", Run}, {"measure stops", Stop}};

}  // namespace

std::span<const Step> MeasureSteps() { return kMeasureSteps; }

}  // namespace vlt::test
