// SPDX-License-Identifier: GPL-3.0-or-later
// A run that ended without Stop is told at the start, and a link that was lost is told and comes back.
#include <QDir>
#include <QFile>

#include "desktop/qt_text.h"
#include "host/port_switch.h"
#include "resources/string_table.h"
#include "resources/text_ids_heal.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kFrame = "MDIForm1";
constexpr const char* kList = "frmFoundRuns";
constexpr const char* kHealPage = "Form9";

void Write(Tour& tour, const QString& name, const QByteArray& text) {
  const QDir folder(ToQt(tour.Running().Logic().platform.process.ProgramFolder()));
  QFile file(folder.filePath(name));
  if (!file.open(QIODevice::WriteOnly)) throw Trouble("the folder can't be written");
  file.write(text);
}

QByteArray PathIn(Tour& tour, const char* name) {
  return QDir(ToQt(tour.Running().Logic().platform.process.ProgramFolder())).filePath(name).toUtf8();
}

// What a power cut has left of two runs.
void LeaveRuns(Tour& tour) {
  QByteArray log = "\xEF\xBB\xBFThe measurement data\r\nTIME,'VELOCITY[m/s],\r\n";
  for (int minute = 0; minute < 60; ++minute) {
    log += "2026/11/23 09:" + QByteArray::number(minute).rightJustified(2, '0') + ":00,1.234,\r\n";
  }
  Write(tour, "plant_20261123090000.csv", log);
  Write(tour, "line_20261123140000.csv", log.left(log.size() - 200));
  Write(tour, "VLT.runs",
        "2026/11/23 09:00:00\tForm9\t" + PathIn(tour, "plant_20261123090000.csv") +
            "\r\n2026/11/23 14:00:00\tForm12\t" + PathIn(tour, "line_20261123140000.csv") + "\r\n");
}

void Listed(Tour& tour) {
  Hands& hands = tour.Operator();
  tour.Picture(kFrame, "found_runs");
  hands.Click(kFrame, "cmdFoundRuns");
  tour.Picture(kList, "found_runs_list");
  hands.Click(kList, "cmdSeen");
  tour.ExpectSoon("the end of the list",
                  [&] { return tour.Running().Logic().windows.Find(kList) == nullptr; });
  if (QFile::exists(QString::fromUtf8(PathIn(tour, "VLT.runs")))) throw Trouble("the runs are still told");
  if (!QFile::exists(QString::fromUtf8(PathIn(tour, "line_20261123140000.csv")))) {
    throw Trouble("a log is gone");
  }
}

sim::Line& OpenLine(Tour& tour) {
  auto& port = dynamic_cast<PortSwitch&>(tour.Running().Logic().platform.port);
  if (port.OpenLine() == nullptr) throw Trouble("the port is not open");
  return *port.OpenLine();
}

void ExpectTold(Tour& tour, const std::string& part) {
  tour.ExpectSoon("the status line: " + part, [&] {
    return tour.Operator().Panel(kFrame, "StatusBar1", 1).find(part) != std::string::npos;
  });
}

sim::Micros Now(Tour& tour) { return tour.Running().Logic().platform.clock.NowMs() * 1000; }

void LostInARun(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Click(kFrame, "Command7");
  tour.ExpectSoon("the start button", [&] { return hands.Enabled(kHealPage, "Start"); });
  tour.Boxes().LayFile(PathIn(tour, "watch.csv").toStdString());
  hands.Click(kHealPage, "SaveCSV");
  hands.Click(kHealPage, "Start");
  tour.ExpectSoon("a value", [&] { return !hands.Text(kHealPage, "txtRyuryo(0)").empty(); });
  sim::Line& line = OpenLine(tour);
  line.Unplug(Now(tour));
  ExpectTold(tour, FormatText(tour.Text(text::kPortLost), {"COM10 (simulator)"}));
  tour.ExpectSoon("a cycle of the gap", [&] { return hands.Text(kHealPage, "txtRyuryo(0)") == "-"; });
  tour.Picture(kFrame, "run_waits");
  line.Plug(Now(tour));
  ExpectTold(tour, FormatText(tour.Text(text::kPortCameBack), {"COM10 (simulator)", ""}).substr(0, 17));
  tour.ExpectSoon("a value", [&] { return hands.Text(kHealPage, "txtRyuryo(0)") != "-"; });
  tour.Picture(kFrame, "run_goes_on");
  hands.Click(kHealPage, "Stop");
  tour.ExpectSoon("the end of the run", [&] { return hands.Enabled(kHealPage, "Start"); });
}

void LostIdle(Tour& tour) {
  OpenLine(tour).Unplug(Now(tour));
  ExpectTold(tour, FormatText(tour.Text(text::kPortLost), {"COM10 (simulator)"}));
  tour.Picture(kFrame, "port_lost");
}

constexpr Step kCutOffSteps[] = {{"two runs were cut off", LeaveRuns}};
constexpr Step kHealSteps[] = {{"runs that ended without Stop are listed", Listed},
                               {"a run waits for its port", LostInARun},
                               {"a port is lost while nothing runs", LostIdle}};

}  // namespace

std::span<const Step> CutOffSteps() { return kCutOffSteps; }
std::span<const Step> HealSteps() { return kHealSteps; }

}  // namespace vlt::test
