// SPDX-License-Identifier: GPL-3.0-or-later
// Event timing and the pattern side by side with libmodbus on the same paced line: a simulated meter as a
// process of its own (meter-sim) on a pseudo-terminal, which answers after the 3.5 characters of silence that
// a meter needs to know that the request is over.
//
//   bench_timing [EXCHANGES [SPEED]...]     40 of each kind at 9600, 19200 and 38400 bit/s without it
//
// Of each kind the median from call to answer, each call on a line at rest, and the mean when they follow
// each other at once; both as ratios to libmodbus, which leaves no silence between two frames. Then the 32
// blocks of a wave against 32 of libmodbus, and the share of a core. Exit status 1 when a goal is missed:
// call to answer and wave within 1.05, less than 3 % of a core.
#include <modbus.h>

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <thread>
#include <vector>

#include "bench/figures.h"
#include "bench/machine.h"
#include "host/host.h"
#include "link/port.h"
#include "link/registers.h"
#include "live/wave_capture.h"

namespace {

using namespace vlt::bench;

constexpr double kMostRatio = 1.05;
constexpr double kMostShare = 3;  // percent of a core
constexpr int kRestMs = 15;

struct Block {
  const char* name;
  vlt::RegisterSpan span;
  vlt::SendMode mode;
};
constexpr Block kBlocks[] = {
    {"8 +  41 bytes", {vlt::ReadFunction::kHolding, 0x00D0, 18}, vlt::kModeOrdinary},
    {"8 + 133 bytes", {vlt::ReadFunction::kInput, 0x00C0, 64}, vlt::kModeLongBlock},
};
// Of the line alone: characters of 11 bits, the meter's silence.
double LineMs(const Block& block, int speed) { return (8 + 5 + 2 * block.span.count + 3.5) * 11e3 / speed; }

struct Times {
  double answer_ms = 0;  // median from call to answer
  double row_ms = 0;     // mean back to back
  double share = 0;      // percent of a core, back to back
  int failed = 0;
};

using Exchange = std::function<bool()>;

// `rest` lets the line come to rest.
Times Measure(int count, const Exchange& exchange, const std::function<void()>& rest) {
  Times times;
  std::vector<double> answers;
  for (int i = 0; i < count; ++i) {
    rest();
    const Stopwatch watch;
    times.failed += exchange() ? 0 : 1;
    answers.push_back(watch.Ms());
  }
  times.answer_ms = Median(std::move(answers));
  const Stopwatch watch;
  for (int i = 0; i < count; ++i) times.failed += exchange() ? 0 : 1;
  times.row_ms = watch.Ms() / count;
  times.share = watch.Share();
  return times;
}

class Bench {
 public:
  Bench(int speed, int count)
      : speed_(speed),
        count_(count),
        // The silence of 3.5 characters.
        meter_({QString("speed=%1").arg(speed),
                QString("turnaround=%1").arg((35 * 11 * 100 + speed - 1) / speed)}),
        host_("", [this](int /*number*/) { return device_; }),
        platform_(host_.With(dialogs_)),
        app_(platform_) {
    if (device_.empty()) std::exit(2);
    app_.state.PortNo = "1";
    app_.state.StationNo = "01";
    app_.state.Speed = std::to_string(speed);
    app_.state.CommSettings = app_.state.Speed + ",E,8,1";
  }
  Bench(const Bench&) = delete;
  Bench& operator=(const Bench&) = delete;

  bool Run() {
    std::printf("%d bit/s               call to answer, ms (ratio)    back to back, ms (ratio)  of a core\n",
                speed_);
    for (const Block& block : kBlocks) {
      const Times theirs = Theirs(block);
      const Times events = Ours(block, true);
      const Times pattern = Ours(block, false);
      std::printf("  %s  the line alone %7.1f\n", block.name, LineMs(block, speed_));
      Print("libmodbus", theirs, theirs);
      Print(PacingName(true), events, theirs);
      Print(PacingName(false), pattern, theirs);
      good_ = good_ && events.answer_ms <= kMostRatio * theirs.answer_ms && events.share < kMostShare &&
              theirs.failed + events.failed + pattern.failed == 0;
      if (block.mode == vlt::kModeLongBlock) Wave(theirs);
    }
    return good_;
  }

 private:
  static void Print(const char* who, const Times& times, const Times& theirs) {
    std::printf("    %-14s %9.2f (%.3f) %22.2f (%.3f) %14.2f %%\n", who, times.answer_ms,
                times.answer_ms / theirs.answer_ms, times.row_ms, times.row_ms / theirs.row_ms, times.share);
  }

  void Open(bool events) {
    app_.state.EventTiming = events;
    if (!vlt::OpenPort(app_)) std::exit(2);
  }
  void Close() {
    bool closed = false;
    vlt::ClosePort(app_, closed);
  }

  Times Ours(const Block& block, bool events) {
    Open(events);
    const Times times = Measure(
        count_,
        [&] {
          vlt::RegisterData data;
          return vlt::ReadRegisters(app_, vlt::OwnStation(app_, block.mode), block.span, data).ok;
        },
        [&] { vlt::WaitMs(app_, kRestMs); });
    Close();
    return times;
  }

  Times Theirs(const Block& block) {
    modbus_t* link = modbus_new_rtu(device_.c_str(), speed_, 'N', 8, 1);
    if (link == nullptr || modbus_set_slave(link, 1) != 0 || modbus_connect(link) != 0) std::exit(2);
    std::vector<std::uint16_t> words(static_cast<std::size_t>(block.span.count));
    const auto read = block.span.function == vlt::ReadFunction::kHolding ? modbus_read_registers
                                                                         : modbus_read_input_registers;
    const Times times = Measure(
        count_,
        [&] { return read(link, block.span.address, block.span.count, words.data()) == block.span.count; },
        [] { std::this_thread::sleep_for(std::chrono::milliseconds(kRestMs)); });
    modbus_close(link);
    modbus_free(link);
    return times;
  }

  // From the look ahead of the first block to the last one.
  void Wave(const Times& theirs) {
    Open(true);
    double start = 0;
    double took_ms = 0;
    vlt::WaveCapture capture(
        app_,
        [&] {
          if (took_ms == 0) start = NowMs();
          return true;
        },
        [&](int block) {
          if (block == 1) took_ms = -1;
          if (block == vlt::kWaveBlocks) took_ms = NowMs() - start;
        });
    vlt::WaveSampleArray samples{};
    const bool taken = capture.Capture({}, samples) == vlt::WaveEnd::kGood && capture.ClearCaptureMode();
    const double ratio = took_ms / (vlt::kWaveBlocks * theirs.row_ms);
    std::printf("  a wave of %d blocks %.0f ms, ratio %.3f to as many of libmodbus\n", vlt::kWaveBlocks,
                took_ms, ratio);
    good_ = good_ && taken && (speed_ != 9600 || ratio <= kMostRatio);
    Close();
  }

  int speed_;
  int count_;
  MeterProcess meter_;
  const std::string& device_ = meter_.Device();
  NoDialogs dialogs_;
  vlt::Host host_;
  vlt::Platform platform_;
  vlt::App app_;
  bool good_ = true;
};

}  // namespace

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  const int count = static_cast<int>(std::max<std::int64_t>(Argument(argc, argv, 1, 40), 3));
  std::vector<int> speeds;
  for (int i = 2; i < argc; ++i) speeds.push_back(std::atoi(argv[i]));
  if (speeds.empty()) speeds = {9600, 19200, 38400};
  bool good = true;
  for (const int speed : speeds) good = Bench(speed, count).Run() && good;
  std::puts(good ? "all goals are met" : "a goal is missed");
  return good ? 0 : 1;
}
