// SPDX-License-Identifier: GPL-3.0-or-later
// How long the program takes from the start of its process to the painted main window, less the waits that
// the start orders (the splash's half second, the identification of the meter, the second of the loader),
// against an empty window of Qt started the same way in the same run.
//
//   bench_start [RUNS]      10 runs of each without it; prints the medians in milliseconds and their ratio
#include <unistd.h>

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QWidget>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "bench/figures.h"
#include "desktop/program.h"

namespace {

using vlt::bench::NowMs;

// Notes when the splash comes, when the identification is over, and ends the process at the first paint of
// the main window, telling the moment of that paint less the waits.
class Watch : public QObject {
 public:
  explicit Watch(vlt::App* app) : app_(app) {}

  bool eventFilter(QObject* object, QEvent* event) override {
    if (app_ != nullptr) LookAtSplash();
    const bool window_paints = event->type() == QEvent::Paint && IsMainWindow(object);
    if (window_paints && !painted_) {
      painted_ = true;
      // Behind the paint itself.
      QMetaObject::invokeMethod(this, &Watch::Tell, Qt::QueuedConnection);
    }
    return false;
  }

 private:
  static constexpr double kLoaderWait = 1000;

  bool IsMainWindow(QObject* object) const {
    auto* widget = qobject_cast<QWidget*>(object);
    if (widget == nullptr || !widget->isWindow()) return false;
    return app_ == nullptr || (app_->frame != nullptr && app_->frame->Window().Visible() && loader_ > 0);
  }
  void LookAtSplash() {
    const vlt::Form* splash = app_->windows.Find("frmSplash");
    if (splash == nullptr) return;
    if (splash_ == 0) splash_ = NowMs();
    const std::string& progress = splash->Find("lblWarning")->Caption();
    if (loader_ == 0 && progress.starts_with("Loader")) loader_ = NowMs();
  }
  void Tell() const {
    const double waits = app_ == nullptr ? 0 : loader_ - splash_ + kLoaderWait;
    std::printf("%.3f\n", NowMs() - waits);
    std::fflush(stdout);
    ::_exit(0);
  }

  vlt::App* app_;
  double splash_ = 0;
  double loader_ = 0;
  bool painted_ = false;
};

int RunEmpty(QApplication& application) {
  Watch watch(nullptr);
  application.installEventFilter(&watch);
  QWidget window;
  window.resize(1280, 800);
  window.show();
  return QApplication::exec();
}

int RunProgram(QApplication& application, const std::string& folder) {
  vlt::DressApplication();
  vlt::Program program(folder);
  Watch watch(&program.Logic());
  application.installEventFilter(&watch);
  return program.Start() ? program.Run() : 1;
}

double StartOnce(const QString& self, const QStringList& arguments) {
  QProcess child;
  child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  const double begin = NowMs();
  child.start(self, arguments);
  if (!child.waitForFinished(30000) || child.exitCode() != 0) std::exit(1);
  return child.readAllStandardOutput().trimmed().toDouble() - begin;
}

int Compare(const QString& self, int runs) {
  QTemporaryDir folder;
  QFile::copy(SHIPPED_INI, folder.filePath("VLT.ini"));
  std::vector<double> empty;
  std::vector<double> program;
  for (int i = 0; i < runs; ++i) {
    empty.push_back(StartOnce(self, {"--empty"}));
    program.push_back(StartOnce(self, {"--program", folder.path()}));
  }
  vlt::bench::PrintRatio("empty window", vlt::bench::Median(empty), "program", vlt::bench::Median(program),
                         1);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  const QString what = argc > 1 ? argv[1] : "";
  if (what == "--empty" || what == "--program") {
    QApplication application(argc, argv);
    return what == "--empty" ? RunEmpty(application) : RunProgram(application, argc > 2 ? argv[2] : "");
  }
  QCoreApplication application(argc, argv);
  return Compare(QCoreApplication::applicationFilePath(), what.isEmpty() ? 10 : std::max(1, what.toInt()));
}
