// SPDX-License-Identifier: GPL-3.0-or-later
// veltrano3 [--dir FOLDER]: the program with windows.
#include <QCommandLineParser>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>

#include "desktop/application.h"
#include "desktop/program.h"
#include "desktop/qt_text.h"
#include "resources/version.h"

namespace {

constexpr int kLookMs = 100;

volatile std::sig_atomic_t end_asked = 0;

// The first signal ends the program behind the exchange in hand, another one at once.
void NoteSignal(int caught) {
  end_asked = 1;
  std::signal(caught, SIG_DFL);
}

}  // namespace

int main(int argc, char** argv) {
  vlt::Application application(argc, argv);
  QApplication::setApplicationName("veltrano3");
  QApplication::setApplicationVersion(vlt::ToQt(vlt::VersionText("")).section(' ', 1));
  QCommandLineParser options;
  const QCommandLineOption folder("dir", "Folder that holds VLT.ini; default: the program's own.", "FOLDER");
  options.addOption(folder);
  options.addHelpOption();
  options.addVersionOption();
  options.process(application);

  vlt::DressApplication();
  vlt::Program program(vlt::FromQt(options.value(folder)));
  for (const int number : {SIGINT, SIGTERM}) std::signal(number, NoteSignal);
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, [&program] {
    if (end_asked != 0) program.EndBehindWork();
  });
  look.start(kLookMs);
  try {
    return program.Start() ? program.Run() : 0;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "veltrano3: an unexpected error ended the program: %s\n", failure.what());
    return EXIT_FAILURE;
  }
}
