// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/desk.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "bench/figures.h"
#include "desktop/application.h"
#include "desktop/qt_text.h"

namespace vlt::bench {
namespace {

// The words of the command line, with a screen that nobody needs; ahead of the application.
int& Offscreen(int& argc) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  return argc;
}

}  // namespace

void RunFor(int ms) {
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < ms) QApplication::processEvents(QEventLoop::AllEvents, 50);
}

double ProcessorMsOver(int ms) {
  const Stopwatch watch;
  QEventLoop loop;
  QTimer::singleShot(ms, &loop, &QEventLoop::quit);
  loop.exec();
  return watch.UsedMs();
}

Desk::Desk(int& argc, char** argv, const std::string& speed)
    : application_(Offscreen(argc), argv), path_(FromQt(folder_.path())) {
  DressApplication();
  std::ofstream(path_ + "/VLT.ini") << "[SYSTEM]\nVR=M627\nLANG_FLAG=1\n[COMM]\nPORT=1\nSPEED=" << speed
                                    << "\nSTATION_NO=01\n[PORTS]\nCOM1=simulator path=1\n";
  program_.emplace(path_);
  if (!program_->Start()) std::exit(1);
  while (Logic().frame == nullptr) RunFor(100);
}

void Desk::End() {
  std::fflush(stdout);
  folder_.remove();
  std::_Exit(0);
}

}  // namespace vlt::bench
