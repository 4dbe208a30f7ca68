// SPDX-License-Identifier: GPL-3.0-or-later
// The line's record and its window, on virtual time: what an attempt costs, and that memory stays flat.
//
//   bench_line [EXCHANGES]       1,000,000 exchanges of 31 stations without it, one in 50 repeated
//
// The window is open and refreshes all the time. Exit status 1 when memory grows.
#if __has_include(<malloc.h>)
#include <malloc.h>
#endif

#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "monitor/frm_line.h"
#include "state/register_window.h"
#include "support/test_app.h"

namespace {

using namespace vlt;

constexpr int kStations = 31;
constexpr int kFaultEvery = 50;
constexpr int kTickEvery = 16;  // exchanges, about half a second at 9600 bit/s
constexpr std::int64_t kWarm = 20'000;
constexpr std::size_t kGrowthAllowed = 16 * 1024;

std::size_t BytesInUse() {
#ifdef __GLIBC__
  return mallinfo2().uordblks;
#else
  return 0;
#endif
}

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

double Seconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

}  // namespace

int main(int argc, char** argv) {
  const std::int64_t exchanges = argc > 1 ? std::atoll(argv[1]) : 1'000'000;
  test::TestApp t;
  RegisterWindow<frmLine>(t.app, "frmLine");
  t.app.line->Opened("9600,O,8,1");
  t.app.windows.Load("frmLine").Show();
  std::size_t early = 0;
  double recording = 0;
  for (std::int64_t i = 1; i <= exchanges; ++i) {
    const double begun = Seconds();
    const int station = 1 + static_cast<int>(i % kStations);
    const bool repeated = i % kFaultEvery == 0;
    if (repeated) Tell(t, station, AttemptEnd::kSilence, 0, 140);
    Tell(t, station, AttemptEnd::kAnswered, repeated ? 1 : 0, 30 + static_cast<int>(i % 40));
    recording += Seconds() - begun;
    if (i % kTickEvery == 0) t.Time().RunFor(500);
    if (i == kWarm) early = BytesInUse();
  }
  const long growth = static_cast<long>(BytesInUse()) - static_cast<long>(early);
  const LineTotals all = t.app.line->All();
  std::printf("%lld exchanges, %lld repeats, median %d ms, 99 %% %d ms\n",
              static_cast<long long>(all.exchanges), static_cast<long long>(all.repeats),
              all.answers.Percentile(50), all.answers.Percentile(99));
  std::printf("%.2f us an exchange in the record, %.2f us with the window, memory %+ld bytes\n",
              1e6 * recording / static_cast<double>(exchanges),
              1e6 * Seconds() / static_cast<double>(exchanges), growth);
  return all.exchanges == exchanges && growth < static_cast<long>(kGrowthAllowed) ? 0 : 1;
}
