// SPDX-License-Identifier: GPL-3.0-or-later
// Settings sent to meters over bad lines, on virtual time, in the pattern and then in event timing: that no
// row is called stored that is not, and that a restored meter holds what it held.
//
//   bench_writes [WRITES [RESTORES]]     10,000 writes and 100 restores without them
//
// Exit status 1 when a row is called stored wrongly or without a reason, or a meter is not what it was.
#include <cstdio>
#include <cstdlib>
#include <initializer_list>

#include "bench/figures.h"
#include "bench/soak/write_soak.h"

namespace {

using namespace vlt::test;

bool Run(std::int64_t write_count, std::int64_t restore_count, bool events) {
  const WriteSoakResult writes = SoakWrites({.writes = write_count, .events = events});
  std::printf(
      "%s: %lld writes in %lld batches, %lld with a fault: %lld stored, %lld refused, %lld not proven\n",
      vlt::bench::PacingName(events), static_cast<long long>(writes.writes),
      static_cast<long long>(writes.batches), static_cast<long long>(writes.faults),
      static_cast<long long>(writes.stored), static_cast<long long>(writes.refused),
      static_cast<long long>(writes.not_proven));
  std::printf(
      "called stored and not: %lld, without a reason: %lld (%lld rows did not fit and were not sent)\n",
      static_cast<long long>(writes.wrongly_stored), static_cast<long long>(writes.unexplained),
      static_cast<long long>(writes.not_sent));
  const RestoreSoakResult restores = SoakRestores(restore_count, 1, events);
  std::printf("%lld restores, %lld rows sent: %lld equal images, %lld told so\n",
              static_cast<long long>(restores.restores), static_cast<long long>(restores.rows),
              static_cast<long long>(restores.equal), static_cast<long long>(restores.called_equal));
  for (const std::string& row : restores.left) std::printf("  %s\n", row.c_str());
  return writes.wrongly_stored == 0 && writes.unexplained == 0 && restores.equal == restores.restores &&
         restores.called_equal == restores.restores;
}

}  // namespace

int main(int argc, char** argv) {
  constexpr std::int64_t kWrites = 10'000;
  constexpr std::int64_t kRestores = 100;
  const std::int64_t writes = vlt::bench::Argument(argc, argv, 1, kWrites);
  const std::int64_t restores = vlt::bench::Argument(argc, argv, 2, kRestores);
  bool good = true;
  for (const bool events : {false, true}) good = Run(writes, restores, events) && good;
  return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
