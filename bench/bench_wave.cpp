// SPDX-License-Identifier: GPL-3.0-or-later
// What capturing waves in a loop costs, on the program with windows, the meter simulated in process:
//
//   bench_wave [SECONDS]       20 seconds each without it
//
// Prints the share of one core with the chart in sight and with another tab in front, less nothing: the
// simulated meter is part of both.
#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <cstdio>

#include "bench/desk.h"
#include "bench/figures.h"
#include "desktop/chart_plot.h"
#include "live/wave_tab.h"
#include "shell/mdi_form1.h"

namespace {

using namespace vlt;

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
  const bench::Stopwatch watch;
  const int draws = Draws();
  waves.ProfileStartButton.Press();
  const double used = watch.UsedMs();
  std::printf("%s: %.2f %% of a core, %d captures, %.2f ms each, %d drawings; %s\n", what,
              used / seconds / 10, waves.Captures, used / std::max(waves.Captures, 1), Draws() - draws,
              page.StatusBar2.Panel(3).c_str());
}

}  // namespace

int main(int argc, char** argv) {
  bench::Desk desk(argc, argv, "38400");
  App& app = desk.Logic();
  static_cast<MDIForm1&>(app.frame->Window()).Command9.Press();
  auto& page = static_cast<Form11&>(*app.windows.Find("Form11"));
  auto& waves = *page.Part<WaveTab>();
  const auto seconds = static_cast<int>(std::max<std::int64_t>(bench::Argument(argc, argv, 1, 20), 5));
  Bench(page, waves, "chart in sight", 2, seconds);
  Bench(page, waves, "another tab   ", 0, seconds);
  desk.End();
}
