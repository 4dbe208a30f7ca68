// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/soak/write_soak.h"

#include <array>
#include <iterator>
#include <random>

#include "bench/soak/soak_meter.h"
#include "compare/sender.h"
#include "sim/faults.h"

namespace vlt::test {
namespace {

// The kinds of trouble: lost, damaged, refused, acknowledged and not done; late, cut off, behind noise.
constexpr sim::Fault kFaults[] = {sim::Fault::Silence,     sim::Fault::Crc,  sim::Fault::Exception,
                                  sim::Fault::IgnoreWrite, sim::Fault::Late, sim::Fault::Short,
                                  sim::Fault::Noise};

class WriteSoak {
 public:
  explicit WriteSoak(const WriteSoakPlan& plan) : plan_(plan), random_(plan.seed) {}

  WriteSoakResult Run() {
    for (unsigned seed = plan_.seed; result_.writes < plan_.writes; ++seed) Batch(seed);
    return result_;
  }

 private:
  void Batch(unsigned seed) {
    SoakMeter bench(kSoakShapes[seed % std::size(kSoakShapes)], plan_.events);
    bench.Fill(seed);
    const CompareSide source = SideOfMeter(bench.Read());
    bench.Fill(seed + 1);
    const auto places = ChooseDifferent(Comparison(source, SideOfMeter(bench.Read())));
    SendListener listener;
    sim::FaultBoard& board = bench.test.platform.line.faults();
    listener.began = [&](int, int count, const std::string&) {
      board.Clear();
      // The reading in front has other counts of steps.
      if (count == static_cast<int>(places.size())) ArmFor(board);
    };
    listener.ended = [&](const SentRow& row) { Judge(bench, row); };
    SendRows(bench.test.app, source, places, listener);
    ++result_.batches;
  }

  // A fault strikes from one to eight frames of a row: fewer or more than are repeated, of its write or of
  // its read-back.
  void ArmFor(sim::FaultBoard& board) {
    if (std::uniform_real_distribution(0.0, 1.0)(random_) >= plan_.fault_share * std::size(kFaults)) return;
    const auto pick = [this](int from, int to) { return std::uniform_int_distribution(from, to)(random_); };
    sim::ArmedFault fault;
    fault.fault = kFaults[static_cast<std::size_t>(pick(0, std::size(kFaults) - 1))];
    if (fault.fault == sim::Fault::Exception) fault.value = pick(1, 4);
    if (fault.fault == sim::Fault::Late) fault.value = pick(20, 1500);  // ms: also into the next exchanges
    fault.count = 1 << pick(0, 3);
    fault.first = pick(1, 2);
    board.Arm(fault);
    ++result_.faults;
  }

  void Judge(SoakMeter& bench, const SentRow& row) {
    constexpr std::array kCounts = {&WriteSoakResult::stored, &WriteSoakResult::refused,
                                    &WriteSoakResult::not_proven, &WriteSoakResult::not_sent};
    ++(result_.*kCounts[static_cast<std::size_t>(row.end)]);
    if (row.end != WriteEnd::kNotSent) ++result_.writes;
    if (row.end == WriteEnd::kStored && !bench.Holds(row.place, row.raw)) ++result_.wrongly_stored;
    if (row.end != WriteEnd::kStored && row.reason.empty()) ++result_.unexplained;
  }

  WriteSoakPlan plan_;
  std::mt19937 random_;
  WriteSoakResult result_;
};

}  // namespace

WriteSoakResult SoakWrites(const WriteSoakPlan& plan) { return WriteSoak(plan).Run(); }

RestoreSoakResult SoakRestores(std::int64_t restores, unsigned seed, bool events) {
  RestoreSoakResult result;
  for (; result.restores < restores; ++result.restores, ++seed) {
    SoakMeter bench(kSoakShapes[seed % std::size(kSoakShapes)], events);
    bench.Fill(seed);
    const Snapshot point = bench.Read();
    bench.Fill(seed + 1000);
    // Another unit system and path mode, set as a page sets them: the meter converts what it holds.
    App& app = bench.test.app;
    WriteProven(app, {FindParameter("system.unit"), 0}, EncodeCode(1 - point.facts.UnitFlag));
    if (!IsSingleChannel(point.facts)) {
      WriteProven(app, {FindParameter("system.measurement_mode"), 0},
                  EncodeCode((point.facts.PathMode + 1) % 3));
    }
    const RestoreReport report = RestoreMeter(app, SideOfMeter(point), {});
    const Snapshot after = bench.Read();
    bool equal = after.rows.size() == point.rows.size();
    for (const SnapshotRow& row : point.rows) {
      const SnapshotRow* now = after.Find(row.place);
      equal = equal && now != nullptr && now->raw == row.raw;
    }
    result.equal += equal ? 1 : 0;
    result.called_equal += report.Equal() ? 1 : 0;
    result.rows += static_cast<std::int64_t>(report.sent.rows.size());
    for (const SentRow& row : report.left) {
      constexpr std::size_t kMostTold = 20;
      if (result.left.size() < kMostTold) {
        result.left.push_back(PlaceTitle(row.place, app.state.Spoken()) + ": " + row.reason);
      }
    }
  }
  return result;
}

}  // namespace vlt::test
