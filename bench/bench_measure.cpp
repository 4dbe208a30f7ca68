// SPDX-License-Identifier: GPL-3.0-or-later
// What measuring costs, as ratios taken in one run:
//
//   bench_measure [SECONDS]       20 seconds of measuring without it
//
//  - processor time of a measure cycle on the program with windows, the meter simulated in process, less what
//    the program takes at rest;
//  - a redraw of the trend of 1,024 and 100,000 points against the plotting library alone;
//  - a record at the first and at the millionth.
#undef QT_NO_KEYWORDS
#include <qcustomplot.h>
#undef slots

#include <QApplication>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <vector>

#include "bench/desk.h"
#include "bench/figures.h"
#include "desktop/chart_plot.h"
#include "live/form9.h"
#include "shell/mdi_form1.h"

namespace {

using namespace vlt;
using bench::ProcessorMsOver;

constexpr int kRedraws = 51;

Form9& OpenMeasurePage(App& app) {
  static_cast<MDIForm1&>(app.frame->Window()).Command7.Press();
  return static_cast<Form9&>(*app.windows.Find("Form9"));
}

void BenchCycle(Form9& page, const std::string& folder, int seconds) {
  bench::RunFor(1000);
  const double rest = ProcessorMsOver(5000) / 5000;
  page.MeasureFilePath = folder + "/run_20260101000000.csv";
  page.PointText.SetText("1000");
  page.Start.Press();
  const auto first = page.trend.TrendSampleNo;
  const double used = ProcessorMsOver(seconds * 1000);
  const auto cycles = static_cast<double>(page.trend.TrendSampleNo - first);
  page.Stop.Press();
  std::printf(
      "cycle: %.0f cycles of 3 channels with heat, %.2f ms of processor time each, %.2f %% of a core\n",
      cycles, (used - rest * seconds * 1000) / cycles, used / seconds / 10);
  std::printf("at rest: %.2f %% of a core\n", rest * 100);
}

void BenchRedraw(Form& form, int points) {
  Chart chart(form, "bench");
  chart.Reset(points);
  chart.SetXRange(0, points);
  chart.SetYRange(-2, 2);
  for (int i = 1; i <= points; ++i) chart.SetPoint(i, i, std::sin(i * 0.001) + std::sin(i * 1.7));
  chart.SetLastPoint(points);

  ChartPlot ours(nullptr);
  ours.resize(900, 350);
  ours.show();
  QCustomPlot alone;
  alone.resize(900, 350);
  alone.addGraph();
  alone.xAxis->setRange(0, points);
  alone.yAxis->setRange(-2, 2);
  alone.graph(0)->setPen(QPen(Qt::blue, 1));
  alone.show();
  bench::RunFor(200);
  auto* canvas = ours.findChild<QCustomPlot*>();

  const double ours_ms = bench::MedianMs(kRedraws, [&] {
    ours.Draw(chart);
    canvas->replot(QCustomPlot::rpImmediateRefresh);
  });
  const auto shown = chart.Shown();
  const double alone_ms = bench::MedianMs(kRedraws, [&] {
    QVector<double> x(points), y(points);
    for (int i = 0; i < points; ++i) {
      x[i] = shown[static_cast<std::size_t>(i)].x;
      y[i] = shown[static_cast<std::size_t>(i)].y;
    }
    alone.graph(0)->setData(x, y, true);
    alone.replot(QCustomPlot::rpImmediateRefresh);
  });
  std::printf("redraw of %d points: ", points);
  bench::PrintRatio("the library alone", alone_ms, "ours", ours_ms);
}

void BenchRecords(Form9& page, const std::string& folder) {
  constexpr int kRecords = 1'000'000;
  constexpr int kSample = 5'000;
  FieldTexts texts;
  texts.fill("12345.678");
  const std::vector<FieldTexts> channels(3, texts);
  page.MeasureFilePath = folder + "/records_20260101000000.csv";
  page.MeasureRecordCount = 0;
  page.WriteMeasureHeader(page.MeasureFilePath);
  double first_ms = 0;
  double last_ms = 0;
  for (int i = 0; i < kRecords; ++i) {
    const bench::Stopwatch watch;
    page.AppendMeasureRecord(page.MeasureFilePath, page.Machine().clock.Now(), channels, "");
    const double ms = watch.Ms();
    if (i < kSample) first_ms += ms / kSample;
    if (i >= kRecords - kSample) last_ms += ms / kSample;
  }
  std::printf("record: ");
  bench::PrintRatio("the first", first_ms, "the millionth", last_ms, 4);
}

}  // namespace

int main(int argc, char** argv) {
  bench::Desk desk(argc, argv, "9600");
  Form9& page = OpenMeasurePage(desk.Logic());
  const auto seconds = static_cast<int>(std::max<std::int64_t>(bench::Argument(argc, argv, 1, 20), 5));
  BenchCycle(page, desk.Folder(), seconds);
  for (const int points : {1024, 100'000}) BenchRedraw(page, points);
  BenchRecords(page, desk.Folder());
  desk.End();
}
