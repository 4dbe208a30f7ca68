// SPDX-License-Identifier: GPL-3.0-or-later
// The pattern, then event timing, on a line whose meters answer late, not at all or damaged, on virtual time:
// no reply is taken for one to another request.
//
//   bench_late [EXCHANGES [LATEST [SEED]]]     1,000,000 exchanges, up to 1,050 ms late, seed 1 without it
//
// Exit status 1 when a value is wrong, or a write is told as proven that was not done.
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <initializer_list>

#include "bench/soak/late_soak.h"

int main(int argc, char** argv) {
  vlt::test::LateSoak soak{.exchanges = argc > 1 ? std::atoll(argv[1]) : 1'000'000};
  if (argc > 2) soak.latest_ms = std::atoi(argv[2]);
  if (argc > 3) soak.seed = static_cast<std::uint32_t>(std::atoi(argv[3]));
  bool right = true;
  for (const bool events : {false, true}) {
    soak.events = events;
    const std::clock_t start = std::clock();
    const vlt::test::LateSoakResult r = vlt::test::SoakLateReplies(soak);
    std::printf(
        "%s: %lld exchanges, %lld with late answers of up to %d ms: %lld right, %lld told as missing, "
        "%lld wrong, %lld writes falsely proven; %.0f s of processor time\n",
        events ? "event timing" : "pattern", static_cast<long long>(soak.exchanges),
        static_cast<long long>(r.late), soak.latest_ms, static_cast<long long>(r.good),
        static_cast<long long>(r.missing), static_cast<long long>(r.wrong),
        static_cast<long long>(r.unproven), static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    right = right && r.wrong + r.unproven == 0;
  }
  return right ? 0 : 1;
}
