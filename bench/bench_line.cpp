// SPDX-License-Identifier: GPL-3.0-or-later
// The line's record and its window, on virtual time: what an attempt costs, and that memory stays flat.
//
//   bench_line [EXCHANGES]       1,000,000 exchanges of 31 stations without it, one in 50 repeated
//
// The window is open and refreshes all the time. Exit status 1 when memory grows.
#include <cstdio>

#include "bench/figures.h"
#include "monitor/frm_line.h"
#include "state/register_window.h"
#include "support/test_app.h"

namespace {

using namespace vlt;

constexpr int kStations = 31;
constexpr int kFaultEvery = 50;
constexpr int kTickEvery = 16;  // exchanges, about half a second at 9600 bit/s
constexpr std::int64_t kWarm = 20'000;

// One attempt of `took` ms; the reply is that to a read of 19 registers.
void Tell(test::TestApp& t, int station, AttemptEnd end, int number, int took) {
  std::vector<std::uint8_t> request{static_cast<std::uint8_t>(station), 4, 0, 0, 0, 19, 0, 0};
  std::vector<std::uint8_t> reply(43, static_cast<std::uint8_t>(took));
  reply[0] = request[0];
  reply[1] = 4;
  reply[2] = 38;
  if (end == AttemptEnd::kSilence) reply.clear();
  const std::int64_t sent = t.Time().NowMs();
  t.Time().Sleep(took);
  t.app.line->Add({.station = station,
                   .number = number,
                   .sent_ms = sent,
                   .ended_ms = t.Time().NowMs(),
                   .request = request,
                   .reply = reply,
                   .end = end,
                   .last = end == AttemptEnd::kAnswered});
}

}  // namespace

int main(int argc, char** argv) {
  const std::int64_t exchanges = bench::Argument(argc, argv, 1, 1'000'000);
  test::TestApp t;
  RegisterWindow<frmLine>(t.app, "frmLine");
  t.app.line->Opened("9600,O,8,1");
  t.app.windows.Load("frmLine").Show();
  bench::MemoryMeter memory;
  const bench::Stopwatch whole;
  double recording_ms = 0;
  for (std::int64_t i = 1; i <= exchanges; ++i) {
    const bench::Stopwatch watch;
    const int station = 1 + static_cast<int>(i % kStations);
    const bool repeated = i % kFaultEvery == 0;
    if (repeated) Tell(t, station, AttemptEnd::kSilence, 0, 140);
    Tell(t, station, AttemptEnd::kAnswered, repeated ? 1 : 0, 30 + static_cast<int>(i % 40));
    recording_ms += watch.UsedMs();
    if (i % kTickEvery == 0) t.Time().RunFor(500);
    if (i == kWarm) memory.Begin();
  }
  memory.End();
  const LineTotals all = t.app.line->All();
  std::printf("%lld exchanges, %lld repeats, median %d ms, 99 %% %d ms\n",
              static_cast<long long>(all.exchanges), static_cast<long long>(all.repeats),
              all.answers.Percentile(50), all.answers.Percentile(99));
  std::printf("%.2f us an exchange in the record, %.2f us with the window, memory %+ld bytes\n",
              1e3 * recording_ms / static_cast<double>(exchanges),
              1e3 * whole.UsedMs() / static_cast<double>(exchanges), memory.Growth());
  return all.exchanges == exchanges && memory.IsFlat() ? 0 : 1;
}
