// SPDX-License-Identifier: GPL-3.0-or-later
// veltrano3-tour [--out FOLDER] [--dir FOLDER] [--stations NUMBER]: walks through the program as an operator
// would, on the meter simulated in process, once in each language, and keeps a picture of every window.
//
// Exit status 0, or 1 with a message on the first thing that is not as it should be.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <vector>

#include "desktop/qt_text.h"
#include "tour/tour.h"

namespace {

using vlt::test::Step;
using vlt::test::Tour;

// A walk as data: the hardware variant that is installed, the language, and the steps by area.
struct Walk {
  const char* model;
  int lang_flag;
  std::vector<std::span<const Step>> steps;
  int stations = 0;
};

std::vector<Walk> AllWalks(int stations) {
  std::vector<Walk> walks;
  for (const int lang_flag : {1, 0}) {
    walks.push_back({"M627",
                     lang_flag,
                     {vlt::test::StartSteps(), vlt::test::ProcessSteps(), vlt::test::PageSteps(),
                      vlt::test::SystemSteps(), vlt::test::DetailSteps(), vlt::test::MeasureSteps(),
                      vlt::test::TransitSteps(), vlt::test::CalcSteps(), vlt::test::EndSteps()}});
    walks.push_back({"M627", lang_flag, {vlt::test::FirmwareSteps()}});
    for (const char* model : {"T305", "K410"}) {
      walks.push_back({model, lang_flag, {vlt::test::SplashSteps(), vlt::test::LeaveSteps()}});
    }
    walks.push_back({"M627",
                     lang_flag,
                     {vlt::test::SplashSteps(), vlt::test::StationSteps(), vlt::test::LeaveSteps()},
                     stations});
    walks.push_back({"M627",
                     lang_flag,
                     {vlt::test::CutOffSteps(), vlt::test::SplashSteps(), vlt::test::HealSteps(),
                      vlt::test::LeaveSteps()}});
  }
  return walks;
}

// False, with a message, at the first trouble.
bool Go(const Walk& walk, const QString& folder, const QString& pictures) {
  const char* language = walk.lang_flag == 0 ? "ja" : "en";
  const char* at = "start";
  try {
    Tour tour({walk.lang_flag, walk.model, folder, pictures, walk.stations});
    for (const auto& area : walk.steps) {
      for (const Step& step : area) {
        at = step.name;
        step.walk(tour);
        if (!tour.Boxes().trouble.empty()) throw vlt::test::Trouble(tour.Boxes().trouble.front());
        if (!tour.Boxes().AllGiven()) throw vlt::test::Trouble("a box that was expected did not come");
        std::printf("%s  %s  %s\n", walk.model, language, step.name);
      }
    }
    return true;
  } catch (const std::exception& trouble) {
    std::fprintf(stderr, "%s  %s: %s\n", language, at, trouble.what());
    return false;
  }
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("veltrano3-tour");
  QCommandLineParser options;
  const QCommandLineOption out("out", "Folder for the pictures; default: tour, below the current one.",
                               "FOLDER", "tour");
  const QCommandLineOption dir("dir", "Folder with the VLT.ini to start from; default: the tour's own.",
                               "FOLDER");
  const QCommandLineOption stations("stations", "How many of 31 stations to poll; default: 6.", "NUMBER",
                                    "6");
  options.addOptions({out, dir, stations});
  options.addHelpOption();
  options.process(application);
  const QString pictures = QDir(options.value(out)).absolutePath();
  if (!QDir().mkpath(pictures)) {
    std::fprintf(stderr, "can't make %s\n", vlt::FromQt(pictures).c_str());
    return 1;
  }
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  vlt::DressApplication();
  for (const Walk& walk : AllWalks(std::clamp(options.value(stations).toInt(), 1, 31))) {
    // Inside the application's loop, which the program's end ends.
    QTimer::singleShot(0, &application,
                       [&] { QApplication::exit(Go(walk, options.value(dir), pictures) ? 0 : 1); });
    if (QApplication::exec() != 0) return 1;
  }
  std::printf("pictures in %s\n", vlt::FromQt(pictures).c_str());
  return 0;
}
