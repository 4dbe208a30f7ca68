// SPDX-License-Identifier: GPL-3.0-or-later
// How much of a core the program takes while it identifies a meter and reads its process block in a loop,
// over a real pseudo-terminal.
//
//   bench_cpu [SECONDS [SPEED]]      60 seconds at 9600 bit/s without them
//
// The meter is a process of its own (meter-sim) and does not count. Prints the share of one core, the number
// of exchanges, how many failed, and how long a read of the block took; exit status 1 when one failed.
#include <sys/resource.h>

#include <QCoreApplication>
#include <QProcess>
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "host/host.h"
#include "link/device_queries.h"
#include "link/modbus.h"
#include "link/port.h"

namespace {

// Nobody is there to answer.
class NoDialogs : public vlt::Dialogs {
 public:
  vlt::MessageAnswer Ask(const vlt::Message& message) override {
    std::fprintf(stderr, "bench_cpu: %s\n", message.text.c_str());
    std::exit(1);
  }
  std::optional<std::string> AskOpenFile(const vlt::FileQuestion& /*question*/) override { return {}; }
  std::optional<std::string> AskSaveFile(const vlt::FileQuestion& /*question*/) override { return {}; }
  std::optional<std::string> AskFolder(const vlt::FolderQuestion& /*question*/) override { return {}; }
};

double ProcessorSeconds() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& t) {
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

int NumberOf(std::string_view text, int otherwise) {
  int value = otherwise;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

// The device of a new simulated meter, empty when it doesn't come up.
std::string StartMeter(QProcess& meter, const std::string& speed) {
  meter.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  meter.start(METER_SIM, {"speed=" + QString::fromStdString(speed)});
  if (!meter.waitForReadyRead(5000)) return "";
  return meter.readLine().trimmed().toStdString();
}

struct Tally {
  int exchanges = 0;
  int failed = 0;
  int blocks = 0;
  double block_ms = 0;
  double slowest_ms = 0;

  void Add(bool good) {
    ++exchanges;
    failed += good ? 0 : 1;
  }
};

void Round(vlt::App& app, const vlt::QtClock& clock, Tally& tally) {
  tally.Add(vlt::GetUnitFlag(app) >= 0);
  tally.Add(vlt::GetSpecClass(app) >= 0);
  tally.Add(vlt::GetPathMode(app) >= 0);
  tally.Add(vlt::GetRangeUnit(app, 0) >= 0);
  for (int i = 0; i < 4; ++i) {
    constexpr int kProcessBlock = 0x00D0;
    vlt::Frame request = vlt::ReadRequest(1, 3, kProcessBlock, 18);
    vlt::Frame reply = vlt::ReplyFor(request);
    const auto start = clock.Elapsed();
    tally.Add(vlt::SendReceive(app, request, reply));
    const double ms = std::chrono::duration<double, std::milli>(clock.Elapsed() - start).count();
    ++tally.blocks;
    tally.block_ms += ms;
    tally.slowest_ms = std::max(tally.slowest_ms, ms);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const int seconds = argc > 1 ? NumberOf(argv[1], 0) : 60;
  const std::string speed = argc > 2 ? argv[2] : "9600";
  if (seconds < 1) {
    std::fprintf(stderr, "Usage: bench_cpu [SECONDS [SPEED]]\n");
    return 2;
  }
  QProcess meter;
  std::string device = StartMeter(meter, speed);
  NoDialogs dialogs;
  vlt::Host host("", [&](int /*number*/) { return device; });
  vlt::Platform platform = host.With(dialogs);
  vlt::App app(platform);
  app.state.PortNo = "1";
  app.state.StationNo = "01";
  app.state.Speed = speed;
  app.state.RetryNo = 3;
  app.state.CommSettings = speed + ",O,8,1";
  if (device.empty() || !vlt::OpenPort(app)) {
    std::fprintf(stderr, "bench_cpu: no meter on \"%s\"\n", device.c_str());
    return 1;
  }

  Tally tally;
  const double used_before = ProcessorSeconds();
  const auto start = host.clock.Elapsed();
  const auto passed = [&] { return std::chrono::duration<double>(host.clock.Elapsed() - start).count(); };
  while (passed() < seconds) Round(app, host.clock, tally);
  const double wall = passed();
  const double used = ProcessorSeconds() - used_before;
  std::printf(
      "%.2f %% of a core (%.2f s of %.1f s), %d exchanges, %d failed; block read %.1f ms, slowest %.1f ms\n",
      100 * used / wall, used, wall, tally.exchanges, tally.failed, tally.block_ms / tally.blocks,
      tally.slowest_ms);
  meter.terminate();
  meter.waitForFinished(5000);
  return tally.failed == 0 ? 0 : 1;
}
