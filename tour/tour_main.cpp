// SPDX-License-Identifier: GPL-3.0-or-later
// veltrano3-tour [--out FOLDER] [--dir FOLDER] [--stations NUMBER] [--walk NAME ...] [--list]: walks through
// the program as an operator would, on the meter simulated in process, once in each language, and keeps a
// picture of every window. A walk begins with the program's start and ends with its end, so each can go
// alone, and several at the same time when their pictures go to different folders.
//
// Exit status 0, or 1 with a message on the first thing that is not as it should be.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/qt_text.h"
#include "tour/tour.h"

namespace {

using vlt::test::Step;
using vlt::test::Tour;

// A walk as data: its name, the hardware variant that is installed, and the steps by area. It is gone in both
// languages; NAME-en and NAME-ja are one of them.
struct Walk {
  const char* name;
  const char* model;
  std::vector<std::span<const Step>> steps;
  bool many_stations = false;
};

const std::vector<Walk>& Walks() {
  using namespace vlt::test;
  static const std::vector<Walk> walks = {
      {"pages",
       "M627",
       {StartSteps(), ProcessSteps(), PageSteps(), SystemSteps(), DetailSteps(), LeaveSteps()}},
      {"live", "M627", {SplashSteps(), MeasureSteps(), TransitSteps(), PipeSteps(), CalcSteps(), EndSteps()}},
      {"compare", "M627", {SplashSteps(), CompareSteps(), LeaveSteps()}},
      {"origin", "M627", {SplashSteps(), OriginSteps(), LeaveSteps()}},
      {"timing", "M627", {SplashSteps(), TimingSteps(), LeaveSteps()}},
      {"firmware", "M627", {FirmwareSteps()}},
      {"t305", "T305", {SplashSteps(), LeaveSteps()}},
      {"k410", "K410", {SplashSteps(), LeaveSteps()}},
      {"stations", "M627", {SplashSteps(), StationSteps(), LeaveSteps()}, true},
      {"heal", "M627", {CutOffSteps(), SplashSteps(), HealSteps(), LeaveSteps()}},
      {"line", "M627", {SplashSteps(), LineSteps(), LeaveSteps()}, true},
  };
  return walks;
}

constexpr const char* kLanguages[] = {"ja", "en"};  // by the flag of the settings

struct Turn {
  const Walk* walk;
  int lang_flag;
  QString Name() const { return QString("%1-%2").arg(walk->name, kLanguages[lang_flag]); }
};

std::vector<Turn> AllTurns() {
  std::vector<Turn> turns;
  for (const int lang_flag : {1, 0}) {
    for (const Walk& walk : Walks()) turns.push_back({&walk, lang_flag});
  }
  return turns;
}

// The turns of these names in the tour's own order, all of them when none is given; nothing for an unknown
// name.
std::optional<std::vector<Turn>> ChosenTurns(const QStringList& names) {
  const std::vector<Turn> all = AllTurns();
  const auto is_named = [](const Turn& turn, const QString& name) {
    return name == turn.Name() || name == turn.walk->name;
  };
  std::vector<Turn> chosen;
  for (const Turn& turn : all) {
    if (names.isEmpty() || std::ranges::any_of(names, std::bind_front(is_named, turn)))
      chosen.push_back(turn);
  }
  for (const QString& name : names) {
    if (std::ranges::none_of(all, [&](const Turn& turn) { return is_named(turn, name); })) {
      std::fprintf(stderr, "there is no walk \"%s\"; --list names them\n", vlt::FromQt(name).c_str());
      return std::nullopt;
    }
  }
  return chosen;
}

struct Options {
  QString pictures;
  QString folder;
  int stations = 0;
};

// False, with a message, at the first trouble.
bool Go(const Turn& turn, const Options& options) {
  const Walk& walk = *turn.walk;
  const std::string name = vlt::FromQt(turn.Name());
  const char* at = "start";
  try {
    Tour tour({.walk = walk.name,
               .lang_flag = turn.lang_flag,
               .model = walk.model,
               .folder = options.folder,
               .pictures = options.pictures,
               .stations = walk.many_stations ? options.stations : 0});
    for (const auto& area : walk.steps) {
      for (const Step& step : area) {
        at = step.name;
        step.walk(tour);
        if (!tour.Boxes().trouble.empty()) throw vlt::test::Trouble(tour.Boxes().trouble.front());
        if (!tour.Boxes().AllGiven()) throw vlt::test::Trouble("a box that was expected did not come");
        std::printf("%s  %s\n", name.c_str(), step.name);
      }
    }
    return true;
  } catch (const std::exception& trouble) {
    std::fprintf(stderr, "%s  %s: %s\n", name.c_str(), at, trouble.what());
    return false;
  }
}

int GoAll(const std::vector<Turn>& turns, const Options& options) {
  if (!QDir().mkpath(options.pictures)) {
    std::fprintf(stderr, "can't make %s\n", vlt::FromQt(options.pictures).c_str());
    return 1;
  }
  QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
  vlt::DressApplication();
  for (const Turn& turn : turns) {
    // Inside the application's loop, which the program's end ends.
    QTimer::singleShot(0, qApp, [&] { QApplication::exit(Go(turn, options) ? 0 : 1); });
    if (QApplication::exec() != 0) return 1;
  }
  if (turns.size() > 1) std::printf("pictures in %s\n", vlt::FromQt(options.pictures).c_str());
  return 0;
}

// Needs no display.
int List() {
  for (const Turn& turn : AllTurns()) std::puts(vlt::FromQt(turn.Name()).c_str());
  return 0;
}

int Main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("veltrano3-tour");
  QCommandLineParser options;
  const QCommandLineOption out("out", "Folder for the pictures; default: tour, below the current one.",
                               "FOLDER", "tour");
  const QCommandLineOption dir("dir", "Folder with the VLT.ini to start from; default: the tour's own.",
                               "FOLDER");
  const QCommandLineOption stations("stations", "How many of 31 stations to poll; default: 6.", "NUMBER",
                                    "6");
  const QCommandLineOption walk(
      "walk", "Go this walk alone (may be given several times); default: all of them.", "NAME");
  const QCommandLineOption list("list", "Name the walks, one a line.");
  options.addOptions({out, dir, stations, walk, list});
  options.addHelpOption();
  options.process(application);
  const auto turns = ChosenTurns(options.values(walk));
  if (!turns) return 1;
  return GoAll(*turns, {.pictures = QDir(options.value(out)).absolutePath(),
                        .folder = options.value(dir),
                        .stations = std::clamp(options.value(stations).toInt(), 1, 31)});
}

}  // namespace

int main(int argc, char** argv) {
  const std::span<char*> words(argv, static_cast<std::size_t>(argc));
  if (std::ranges::find(words, std::string_view("--list")) != words.end()) return List();
  return Main(argc, argv);
}
