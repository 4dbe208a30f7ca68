// SPDX-License-Identifier: GPL-3.0-or-later
// How much of a core the program takes while it identifies a meter and reads its process block in a loop,
// over a real pseudo-terminal.
//
//   bench_cpu [SECONDS [SPEED]]      60 seconds at 9600 bit/s without them
//
// The meter is a process of its own (meter-sim) and does not count. Prints the share of one core, the number
// of exchanges, how many failed, and how long a read of the block took; exit status 1 when one failed.
#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <string>

#include "bench/figures.h"
#include "bench/machine.h"
#include "host/host.h"
#include "link/modbus.h"
#include "link/port.h"
#include "meter/device_queries.h"

namespace {

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

void Round(vlt::App& app, Tally& tally) {
  tally.Add(vlt::GetUnitFlag(app) >= 0);
  tally.Add(vlt::GetSpecClass(app) >= 0);
  tally.Add(vlt::GetPathMode(app) >= 0);
  tally.Add(vlt::GetRangeUnit(app, 0) >= 0);
  for (int i = 0; i < 4; ++i) {
    constexpr int kProcessBlock = 0x00D0;
    vlt::Frame request = vlt::ReadRequest(1, 3, kProcessBlock, 18);
    vlt::Frame reply = vlt::ReplyFor(request);
    const vlt::bench::Stopwatch watch;
    tally.Add(vlt::SendReceive(app, request, reply));
    const double ms = watch.Ms();
    ++tally.blocks;
    tally.block_ms += ms;
    tally.slowest_ms = std::max(tally.slowest_ms, ms);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const auto seconds = static_cast<int>(vlt::bench::Argument(argc, argv, 1, 60));
  const std::string speed = argc > 2 ? argv[2] : "9600";
  if (seconds < 1) {
    std::fprintf(stderr, "Usage: bench_cpu [SECONDS [SPEED]]\n");
    return 2;
  }
  const vlt::bench::MeterProcess meter({"speed=" + QString::fromStdString(speed)});
  const std::string& device = meter.Device();
  vlt::bench::NoDialogs dialogs;
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
  const vlt::bench::Stopwatch watch;
  while (watch.Ms() < seconds * 1e3) Round(app, tally);
  const double wall = watch.Ms() / 1e3;
  const double used = watch.UsedMs() / 1e3;
  std::printf(
      "%.2f %% of a core (%.2f s of %.1f s), %d exchanges, %d failed; block read %.1f ms, slowest %.1f ms\n",
      100 * used / wall, used, wall, tally.exchanges, tally.failed, tally.block_ms / tally.blocks,
      tally.slowest_ms);
  return tally.failed == 0 ? 0 : 1;
}
