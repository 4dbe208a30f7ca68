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
#include <sys/resource.h>
#undef slots

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "desktop/chart_plot.h"
#include "desktop/program.h"
#include "desktop/qt_text.h"
#include "live/form9.h"
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

void RunFor(int ms) {
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < ms) QApplication::processEvents(QEventLoop::AllEvents, 50);
}

// As the program does between its handlers: asleep until something happens.
double ProcessorMsOver(int ms) {
  const double before = ProcessorMs();
  QEventLoop loop;
  QTimer::singleShot(ms, &loop, &QEventLoop::quit);
  loop.exec();
  return ProcessorMs() - before;
}

Form9& OpenMeasurePage(Program& program) {
  App& app = program.Logic();
  if (!program.Start()) std::exit(1);
  while (app.frame == nullptr) RunFor(100);
  static_cast<MDIForm1&>(app.frame->Window()).Command7.Press();
  return static_cast<Form9&>(*app.windows.Find("Form9"));
}

void BenchCycle(Form9& page, const std::string& folder, int seconds) {
  RunFor(1000);
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

double MedianMs(const std::function<void()>& work) {
  std::vector<double> times;
  for (int i = 0; i < 51; ++i) {
    QElapsedTimer clock;
    clock.start();
    work();
    times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
  }
  std::nth_element(times.begin(), times.begin() + 25, times.end());
  return times[25];
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
  RunFor(200);
  auto* canvas = ours.findChild<QCustomPlot*>();

  const double ours_ms = MedianMs([&] {
    ours.Draw(chart);
    canvas->replot(QCustomPlot::rpImmediateRefresh);
  });
  const auto shown = chart.Shown();
  const double alone_ms = MedianMs([&] {
    QVector<double> x(points), y(points);
    for (int i = 0; i < points; ++i) {
      x[i] = shown[static_cast<std::size_t>(i)].x;
      y[i] = shown[static_cast<std::size_t>(i)].y;
    }
    alone.graph(0)->setData(x, y, true);
    alone.replot(QCustomPlot::rpImmediateRefresh);
  });
  std::printf("redraw of %d points: %.2f ms, the library alone %.2f ms, ratio %.2f\n", points, ours_ms,
              alone_ms, ours_ms / alone_ms);
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
    QElapsedTimer clock;
    clock.start();
    page.AppendMeasureRecord(page.MeasureFilePath, page.Machine().clock.Now(), channels, "");
    const double ms = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    if (i < kSample) first_ms += ms / kSample;
    if (i >= kRecords - kSample) last_ms += ms / kSample;
  }
  std::printf("record: %.4f ms at the first, %.4f ms at the millionth, ratio %.2f\n", first_ms, last_ms,
              last_ms / first_ms);
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  DressApplication();
  QTemporaryDir folder;
  const std::string path = FromQt(folder.path());
  std::ofstream(path + "/VLT.ini") << "[SYSTEM]\nVR=M627\nLANG_FLAG=1\n[COMM]\nPORT=1\nSPEED=9600\n"
                                      "STATION_NO=01\n[PORTS]\nCOM1=simulator path=1\n";
  Program program(path);
  Form9& page = OpenMeasurePage(program);
  BenchCycle(page, path, argc > 1 ? std::max(std::atoi(argv[1]), 5) : 20);
  for (const int points : {1024, 100'000}) BenchRedraw(page, points);
  BenchRecords(page, path);
  // Straight away: the figures are out, and nobody is there to answer the question of the closing window.
  std::fflush(stdout);
  folder.remove();
  std::_Exit(0);
}
