// SPDX-License-Identifier: GPL-3.0-or-later
// Several stations on one line: choose, start, watch the units being read and some passes, stop.
#include <QDir>
#include <QFile>
#include <algorithm>

#include "desktop/qt_text.h"
#include "live/form12.h"
#include "tour/tour.h"

namespace vlt::test {
namespace {

constexpr const char* kStationsPage = "Form12";
constexpr int kFlow = 1;
constexpr int kAlarms = 7;

Form12& Stations(Tour& tour) {
  return static_cast<Form12&>(*tour.Running().Logic().windows.Find(kStationsPage));
}

void OpenStations(Tour& tour) {
  tour.Operator().Click("MDIForm1", "Command14");
  tour.ExpectSoon("the start button", [&] { return tour.Operator().Enabled(kStationsPage, "cmdStart"); });
  tour.Picture("MDIForm1", "Form12");
  tour.ClickAndAnswer(kStationsPage, "cmdStart", tour.Text(4505), true);
}

void Choose(Tour& tour) {
  Hands& hands = tour.Operator();
  hands.Choose(kStationsPage, "CH_Combo1", 0);
  hands.Choose(kStationsPage, "cmbDisp1", kFlow);
  hands.Choose(kStationsPage, "CH_Combo2", 0);
  hands.Choose(kStationsPage, "cmbDisp2", kAlarms);
  const int stations = tour.Stations();
  for (int i = 0; i < stations; ++i) {
    hands.Tick(kStationsPage, "chkStationNo(" + std::to_string(i) + ")");
  }
  hands.Type(kStationsPage, "txtCycle", "1");
  tour.ClickAndAnswer(kStationsPage, "cmdStart", tour.Text(4504), true);
  hands.Type(kStationsPage, "txtCycle", std::to_string(stations / 2 + 1));
}

void Start(Tour& tour) {
  const QDir folder(ToQt(tour.Running().Logic().platform.process.ProgramFolder()));
  tour.Boxes().LayFile(FromQt(folder.filePath("stations.csv")));
  tour.Meanwhile().When(
      [&tour] {
        const Form* wait = tour.Running().Logic().windows.Find("frmWait");
        return wait != nullptr && wait->Visible() && Stations(tour).Polled().front().units.unit_flag == 0;
      },
      [&tour] { tour.Picture("frmWait", "frmWait"); });
  tour.Operator().Click(kStationsPage, "cmdStart");
  if (!tour.Meanwhile().AllDone()) throw Trouble("the wait window was not seen");
}

void Watch(Tour& tour) {
  const auto passes = [&] { return Stations(tour).Polled().back().polls; };
  for (int pass = 1; pass <= 2; ++pass) {
    // A cycle is a second for two stations.
    for (int i = 0; i < 3 && passes() < pass; ++i) WaitFor([&] { return passes() >= pass; }, 15000);
  }
  tour.ExpectSoon("the values of the pass",
                  [&] { return !tour.Operator().Text(kStationsPage, "txtDisp1(0)").empty(); });
  tour.Expect("a silent station", tour.Operator().Text(kStationsPage, "txtDisp1(2)"), tour.Text(1964));
  tour.Picture("MDIForm1", "Form12_running");
}

void Stop(Tour& tour) {
  tour.Operator().Click(kStationsPage, "cmdStop");
  tour.ExpectSoon("the end of the run", [&] { return tour.Operator().Enabled(kStationsPage, "cmdStart"); });
  tour.Picture("MDIForm1", "Form12_stopped");
  QDir folder(ToQt(tour.Running().Logic().platform.process.ProgramFolder()));
  const QStringList logs = folder.entryList({"stations_*.csv"});
  if (logs.size() != 1) throw Trouble("no log of the stations");
}

constexpr Step kStationSteps[] = {{"stations open", OpenStations},
                                  {"stations are chosen", Choose},
                                  {"stations tell their units", Start},
                                  {"stations are polled", Watch},
                                  {"stations stop", Stop}};

}  // namespace

std::span<const Step> StationSteps() { return kStationSteps; }

}  // namespace vlt::test
