// SPDX-License-Identifier: GPL-3.0-or-later
// What capturing waves in a loop costs, on the program with windows, the meter simulated in process:
//
//   bench_wave [SECONDS]       20 seconds each without it
//
// Prints the share of one core with the chart in sight and with another tab in front, less nothing: the
// simulated meter is part of both.
#include <sys/resource.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <fstream>

#include "desktop/application.h"
#include "desktop/chart_plot.h"
#include "desktop/program.h"
#include "desktop/qt_text.h"
#include "live/wave_tab.h"
#include "shell/mdi_form1.h"

namespace {

using namespace vlt;

double ProcessorMs() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  const auto ms = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) * 1e3 + static_cast<double>(t.tv_usec) / 1e3;
  };
  return ms(usage.ru_utime) + ms(usage.ru_stime);
}

int Draws() {
  int draws = 0;
  for (QWidget* widget : QApplication::allWidgets()) {
    if (const auto* plot = dynamic_cast<ChartPlot*>(widget)) draws += plot->DrawCount();
  }
  return draws;
}

void Bench(Form11& page, WaveTab& waves, const char* what, int tab, int seconds) {
  page.DetailTabs.Select(tab);
  QTimer::singleShot(seconds * 1000, [&] { waves.ProfileStopButton.Press(); });
  const double before = ProcessorMs();
  const int draws = Draws();
  waves.ProfileStartButton.Press();
  const double used = ProcessorMs() - before;
  std::printf("%s: %.2f %% of a core, %d captures, %.2f ms each, %d drawings; %s\n", what,
              used / seconds / 10, waves.Captures, used / std::max(waves.Captures, 1), Draws() - draws,
              page.StatusBar2.Panel(3).c_str());
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  DressApplication();
  QTemporaryDir folder;
  const std::string path = FromQt(folder.path());
  std::ofstream(path + "/VLT.ini") << "[SYSTEM]\nVR=M627\nLANG_FLAG=1\n[COMM]\nPORT=1\nSPEED=38400\n"
                                      "STATION_NO=01\n[PORTS]\nCOM1=simulator path=1\n";
  Program program(path);
  App& app = program.Logic();
  if (!program.Start()) return 1;
  while (app.frame == nullptr) QApplication::processEvents(QEventLoop::AllEvents, 50);
  static_cast<MDIForm1&>(app.frame->Window()).Command9.Press();
  auto& page = static_cast<Form11&>(*app.windows.Find("Form11"));
  auto& waves = *page.Part<WaveTab>();
  const int seconds = argc > 1 ? std::max(std::atoi(argv[1]), 5) : 20;
  Bench(page, waves, "chart in sight", 2, seconds);
  Bench(page, waves, "another tab   ", 0, seconds);
  // Straight away: the figures are out, and nobody is there to answer the question of the closing window.
  std::fflush(stdout);
  folder.remove();
  std::_Exit(0);
}
