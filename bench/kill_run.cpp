// SPDX-License-Identifier: GPL-3.0-or-later
// Kills a measuring program with signal 9 at random moments and looks at what it has left, and at what the
// next start finds of it.
//
//   kill_run [TIMES [SEED]]       50 times without them
//
// The child is this program itself: the machine by Qt, the measure page, the meter simulated in process,
// cycles as quick as the exchanges allow. It tells each cycle that has ended on its standard output. Exit
// status 1 when a record of such a cycle is missing, a line but the last is half, a record is there twice, or
// the next start does not tell of the run with its file, its records and its last one.
#include <csignal>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "bench/machine.h"
#include "files/run_journal.h"
#include "host/host.h"
#include "live/form9.h"
#include "live/live.h"

namespace {

using namespace vlt;

constexpr int kQuickTickMs = 5;

int Measure(const std::string& folder) {
  bench::NoDialogs dialogs;
  Host host(folder, [](int) { return std::string("simulator model=single"); });
  Platform machine = host.With(dialogs);
  App app(machine);
  app.state.PortNo = "1";
  app.state.StationNo = "01";
  app.state.Speed = "38400";
  app.state.CommSettings = "38400,N,8,1";
  app.state.RetryNo = 0;
  app.state.AppRunning = true;
  RegisterLiveWindows(app);
  auto& page = static_cast<Form9&>(app.windows.Load("Form9"));
  page.MeasureFilePath = folder + "/run_20260101000000.csv";
  page.Chart2D1.Observe([&] {
    std::printf("%d\n", page.MeasureRecordCount);
    std::fflush(stdout);
  });
  page.Start.Press();
  page.CycleTimer.SetInterval(kQuickTickMs);
  return QCoreApplication::exec();
}

// Whole lines of the one log in the folder, and whether a half one follows.
struct Left {
  int lines = 0;
  bool half = false;
  bool damaged = false;
  std::string last;  // time of the last whole line
};

Left LookAt(const std::string& folder) {
  Left left;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.path().extension() != ".csv") continue;
    std::ifstream file(entry.path(), std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    std::size_t commas = 0;
    for (std::size_t end = text.find("\r\n"); end != std::string::npos; end = text.find("\r\n")) {
      const std::string line = text.substr(0, end);
      const auto count = static_cast<std::size_t>(std::count(line.begin(), line.end(), ','));
      if (left.lines == 2) commas = count;
      if (left.lines > 2 && count != commas) left.damaged = true;
      ++left.lines;
      if (left.lines > 2) left.last = line.substr(0, line.find(','));
      text.erase(0, end + 2);
    }
    left.half = !text.empty();
  }
  return left;
}

// The next start, in the same folder.
bool IsFound(const std::string& folder, const Left& left) {
  bench::NoDialogs dialogs;
  Host host(folder, {});
  Platform machine = host.With(dialogs);
  App app(machine);
  const std::vector<OpenRun> runs = ReadOpenRuns(app);
  const int records = std::max(left.lines - 2, 0);
  // A run that had not begun, or had only its head.
  if (runs.empty()) return records == 0;
  const RunFile found = LookAtRun(app, runs.front());
  return runs.size() == 1 && found.records == records && found.half_line == left.half &&
         (records == 0 || found.last_record == left.last);
}

bool KillOnce(int after_ms, int& cycles, bool& half) {
  QTemporaryDir folder;
  QProcess child;
  child.start(QCoreApplication::applicationFilePath(), {"--measure", folder.path()});
  if (!child.waitForReadyRead(20'000)) return false;
  QElapsedTimer clock;
  clock.start();
  while (clock.elapsed() < after_ms) child.waitForReadyRead(static_cast<int>(after_ms - clock.elapsed()));
  ::kill(static_cast<pid_t>(child.processId()), SIGKILL);
  child.waitForFinished();
  const QList<QByteArray> told = child.readAllStandardOutput().trimmed().split('\n');
  cycles = told.last().toInt();
  const Left left = LookAt(folder.path().toStdString());
  half = left.half;
  const int records = std::max(left.lines - 2, 0);
  // One more cycle may have written its record and not told of it yet.
  return !left.damaged && records >= cycles && records <= cycles + 1 &&
         IsFound(folder.path().toStdString(), left);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList words = QCoreApplication::arguments();
  if (words.size() == 3 && words[1] == "--measure") return Measure(words[2].toStdString());
  const int times = words.size() > 1 ? words[1].toInt() : 50;
  std::mt19937 random(words.size() > 2 ? words[2].toUInt() : std::random_device{}());
  std::uniform_int_distribution<int> moment(200, 2500);
  int bad = 0;
  int halves = 0;
  int total = 0;
  for (int i = 0; i < times; ++i) {
    int cycles = 0;
    bool half = false;
    const int after_ms = moment(random);
    if (!KillOnce(after_ms, cycles, half)) {
      ++bad;
      std::printf("killed after %d ms: the log does not fit %d cycles\n", after_ms, cycles);
    }
    halves += half ? 1 : 0;
    total += cycles;
  }
  std::printf("killed %d times in %d cycles: %d logs wrong, %d with a half last line\n", times, total, bad,
              halves);
  return bad == 0 ? 0 : 1;
}
