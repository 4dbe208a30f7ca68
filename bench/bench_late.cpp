// SPDX-License-Identifier: GPL-3.0-or-later
// The pattern, then event timing, on a line whose meters answer late, not at all or damaged, on virtual time:
// no reply is taken for one to another request.
//
//   bench_late [EXCHANGES [LATEST [SEED]]]     1,000,000 exchanges, up to 1,050 ms late, seed 1 without it
//
// Exit status 1 when a value is wrong, or a write is told as proven that was not done.
#include <cstdio>
#include <initializer_list>

#include "bench/figures.h"
#include "bench/soak/late_soak.h"

int main(int argc, char** argv) {
  using namespace vlt::bench;
  vlt::test::LateSoak soak{.exchanges = Argument(argc, argv, 1, 1'000'000)};
  soak.latest_ms = static_cast<int>(Argument(argc, argv, 2, soak.latest_ms));
  soak.seed = static_cast<std::uint32_t>(Argument(argc, argv, 3, soak.seed));
  bool right = true;
  for (const bool events : {false, true}) {
    soak.events = events;
    const Stopwatch watch;
    const vlt::test::LateSoakResult r = vlt::test::SoakLateReplies(soak);
    std::printf(
        "%s: %lld exchanges, %lld with late answers of up to %d ms: %lld right, %lld told as missing, "
        "%lld wrong, %lld writes falsely proven; %.0f s of processor time\n",
        PacingName(events), static_cast<long long>(soak.exchanges), static_cast<long long>(r.late),
        soak.latest_ms, static_cast<long long>(r.good), static_cast<long long>(r.missing),
        static_cast<long long>(r.wrong), static_cast<long long>(r.unproven), watch.UsedMs() / 1e3);
    right = right && r.wrong + r.unproven == 0;
  }
  return right ? 0 : 1;
}
