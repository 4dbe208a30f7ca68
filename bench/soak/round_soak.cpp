// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/soak/round_soak.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <random>
#include <ranges>
#include <string_view>
#include <utility>

#include "bench/soak/soak_meter.h"
#include "cli/meter_words.h"
#include "meter/proven_write.h"
#include "meter/snapshot_file.h"
#include "sim/faults.h"
#include "values/hex_digits.h"

namespace vlt::test {
namespace {

constexpr const char* kReference = "/reference.txt";
constexpr const char* kFile = "/snapshot.txt";
constexpr int kUnitSystem = 0x0100;
// So many rounds with one meter, so that what one round left on the line meets the next.
constexpr int kRoundsWithOne = 25;

// Every kind of trouble that a line has, and a write that leaves another value than was sent.
struct LineTrouble {
  sim::Fault fault;
  int least = 0, most = 0;  // of its number
  bool changes = false;
};
constexpr LineTrouble kTroubles[] = {
    {sim::Fault::Silence},         {sim::Fault::Late, 50, 1500}, {sim::Fault::Crc},
    {sim::Fault::Short, 1, 6},     {sim::Fault::Extra, 1, 9},    {sim::Fault::Station, 1, 255},
    {sim::Fault::Exception, 1, 4}, {sim::Fault::IgnoreWrite},    {sim::Fault::IgnoreWrite, 0, 0, true}};

class BadLine {
 public:
  BadLine(SoakMeter& meter, std::mt19937& random, RoundResult& result)
      : meter_(meter), random_(random), result_(result) {
    meter_.test.platform.line.SetLogSink([this](const sim::LogEntry& entry) { Follow(entry); });
  }

  void TurnBad(const RoundPlan& plan) {
    on_ = true;
    meter_.test.platform.line.config().turnaround += plan.slow_ms * sim::Micros{1000};
    for (double& share : shares_)
      share = std::uniform_real_distribution(plan.least_share, plan.most_share)(random_);
    Arm();
  }
  void TurnGood() {
    on_ = false;
    changes_ = false;
    meter_.test.platform.line.config().turnaround = sim::LineConfig().turnaround;
    meter_.test.platform.line.faults().Clear();
  }

 private:
  int Pick(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }

  // A request has met what was armed for it; what the next one meets is armed now.
  void Follow(const sim::LogEntry& entry) {
    if (entry.kind == sim::LogEntry::Kind::Request) {
      ++result_.requests;
      request_ = entry.bytes;
      change_ = std::exchange(changes_, false);
      meter_.test.platform.line.faults().Clear();
      if (on_) Arm();
    } else if (entry.kind == sim::LogEntry::Kind::Reply && std::exchange(change_, false)) {
      Change();
    }
  }

  void Change() {
    const bool write = request_.size() > 4 && (request_[1] == 0x06 || request_[1] == 0x10);
    const auto at = static_cast<std::uint32_t>(write ? request_[2] << 8 | request_[3] : 0);
    if (write && meter_.Memory().Has(at, 2)) meter_.Memory().PutWord(at, meter_.Memory().Word(at) ^ 1);
  }

  void Arm() {
    double dice = std::uniform_real_distribution(0.0, 1.0)(random_);
    for (std::size_t i = 0; i < std::size(kTroubles); ++i) {
      dice -= shares_[i];
      if (dice >= 0) continue;
      ++result_.faults;
      changes_ = kTroubles[i].changes;
      if (changes_) return;
      sim::ArmedFault fault;
      fault.fault = kTroubles[i].fault;
      fault.value = Pick(kTroubles[i].least, kTroubles[i].most);
      return meter_.test.platform.line.faults().Arm(fault);
    }
  }

  SoakMeter& meter_;
  std::mt19937& random_;
  RoundResult& result_;
  std::array<double, std::size(kTroubles)> shares_{};
  std::vector<std::uint8_t> request_;
  bool on_ = false;
  bool changes_ = false;  // the next request, if it is a write, leaves another value
  bool change_ = false;   // the same of the one that is being answered
};

// How a word ended.
struct Ended {
  bool good = false;
  std::string text;
  std::vector<EventFields> events;

  const EventFields* Event(std::string_view name) const {
    const auto found = std::find_if(events.begin(), events.end(),
                                    [&](const EventFields& event) { return event[0] == name; });
    return found == events.end() ? nullptr : &*found;
  }
};

// One meter, and the words that work with it.
class Bench {
 public:
  Bench(unsigned seed, bool events, std::mt19937& random, RoundResult& result)
      : meter(kSoakShapes[seed % std::size(kSoakShapes)], events),
        line(meter, random, result),
        words_(meter.test.app, {[this](const EventFields& fields) { ended_.events.push_back(fields); },
                                [] { return false; }}) {
    words_.SettingsAreRead();
    meter.test.platform.line.SetLogLimit(0);
    meter.Fill(seed);
  }

  using Word = void (MeterWords::*)(const Arguments&);
  Ended Run(Word word, std::initializer_list<std::string> arguments) {
    Arguments given;
    for (const std::string& text : arguments) given.push_back({text, false});
    ended_ = {};
    try {
      (words_.*word)(given);
      ended_.good = true;
    } catch (const Trouble& trouble) {
      ended_.text = trouble.text;
    }
    return std::move(ended_);
  }
  // What is still on its way when the line is good again has come.
  void Rest() {
    line.TurnGood();
    meter.test.Time().RunFor(12'000);
  }

  // The places that the meter has, by a reading that nothing troubles.
  Snapshot ReadAtRest() {
    Rest();
    return meter.Read();
  }
  // Snapshot rows that tell another value than the meter holds.
  std::int64_t Wrong(const Snapshot& snapshot) {
    return std::count_if(snapshot.rows.begin(), snapshot.rows.end(), [&](const SnapshotRow& row) {
      return row.Known() && !meter.Holds(row.place, row.raw);
    });
  }
  Snapshot File(const std::string& path) { return ReadSnapshotFile(meter.test.app, path).snapshot; }

  SoakMeter meter;
  BadLine line;

 private:
  Ended ended_;
  MeterWords words_;
};

class Rounds {
 public:
  explicit Rounds(const RoundPlan& plan) : plan_(plan), random_(plan.seed) {}

  RoundResult Run() {
    constexpr void (Rounds::*kRuns[])() = {&Rounds::Set, &Rounds::Compare, &Rounds::TakeSnapshot,
                                           &Rounds::Restore};
    for (std::size_t kind = 0; kind < kRoundKinds; ++kind) {
      count_ = &result_.of.at(kind);
      for (; count_->rounds < plan_.rounds.at(kind); ++count_->rounds) {
        if (count_->rounds % kRoundsWithOne == 0) {
          ++seed_;
          bench_.reset();
          bench_ = std::make_unique<Bench>(plan_.seed + seed_, plan_.events, random_, result_);
        }
        const auto run = kRuns[kind];
        (this->*run)();
      }
    }
    bench_.reset();
    return std::move(result_);
  }

 private:
  int Pick(int from, int to) { return std::uniform_int_distribution(from, to)(random_); }
  bool Chance(double share) { return std::uniform_real_distribution(0.0, 1.0)(random_) < share; }
  void TurnBad() { bench_->line.TurnBad(plan_); }

  void Note(std::int64_t RoundCount::*what, std::int64_t times, const std::string& text) {
    constexpr std::size_t kMostTold = 20;
    if (times == 0) return;
    count_->*what += times;
    if (result_.told.size() < kMostTold) result_.told.push_back(text);
  }
  void Good(const Ended& ended, bool by_events, bool truly) {
    count_->good += ended.good ? 1 : 0;
    const std::string text = "round " + std::to_string(count_->rounds) + ": " + ended.text;
    Note(&RoundCount::at_odds, ended.good == by_events && ended.good == ended.text.empty() ? 0 : 1,
         text + " (status " + (ended.good ? "0" : "not 0") + ")");
    Note(&RoundCount::false_good, ended.good && !truly ? 1 : 0, text + " told as done");
  }

  void Set() {
    constexpr struct {
      const char* name;
      std::array<const char*, 3> values;
    } kSets[] = {{"process.outer_diameter", {"112", "60.5", "88.9"}},
                 {"process.wall_thickness", {"6.6", "3.2", "0.25"}},
                 {"range.damping", {"7", "3", "12.5"}},
                 {"process.fluid", {"3", "1", "2"}}};
    const auto& set = kSets[Pick(0, std::size(kSets) - 1)];
    const std::string typed = set.values.at(static_cast<std::size_t>(Pick(0, 2)));
    const ParameterPlace place{FindParameter(set.name), 0};
    SoakMeter& meter = bench_->meter;
    // Somebody at the meter's own keys.
    if (Chance(0.2)) meter.Memory().PutWord(kUnitSystem, 1 - meter.Memory().Word(kUnitSystem));
    const int unit_system = meter.Memory().Word(kUnitSystem);
    SharedState facts = meter.test.app.state;
    facts.UnitFlag = unit_system;
    const auto wanted = EncodeValue(*place.row, facts, typed).bytes;
    const auto before = meter.Held(place);
    TurnBad();
    const Ended ended = bench_->Run(&MeterWords::Set, {set.name, typed, "1"});
    bench_->line.TurnGood();
    const auto after = meter.Held(place);
    const EventFields* sent = ended.Event("sent");
    Good(ended, sent != nullptr && sent->at(3) == "stored", after == wanted);
    const auto changed = [](std::vector<std::uint8_t> raw) {
      raw[1] ^= 1;
      return raw;
    };
    const bool right =
        after == wanted || after == before || after == changed(wanted) || after == changed(before);
    Note(&RoundCount::wrong_values, right ? 0 : 1,
         std::string(set.name) + " " + typed + ": " + HexDigits(after) + " " + ended.text);
    Note(&RoundCount::wrong_values, meter.Memory().Word(kUnitSystem) == unit_system ? 0 : 1, "unit system");
    if (after != wanted && after != before)
      meter.Memory().Write(static_cast<std::uint32_t>(place.Address()), before);
    if (Chance(0.3)) meter.test.Time().RunFor(Pick(1, 2000));
  }

  void Compare() {
    Bench& bench = *bench_;
    if (count_->rounds % kRoundsWithOne == 0) {
      bench.Rest();
      bench.Run(&MeterWords::TakeSnapshot, {kReference});
    }
    const Snapshot reference = bench.File(kReference);
    std::vector<std::pair<std::uint32_t, sim::Bytes>> undo;
    for (int i = Chance(0.5) ? 0 : Pick(1, 3); i > 0; --i) {
      const auto& row =
          reference.rows[static_cast<std::size_t>(Pick(0, static_cast<int>(reference.rows.size()) - 1))];
      if (row.place.row->function != ReadFunction::kHolding || row.place.row->IsCode()) continue;
      auto raw = bench.meter.Held(row.place);
      undo.emplace_back(row.place.Address(), raw);
      raw.back() ^= 1;
      bench.meter.Memory().Write(static_cast<std::uint32_t>(row.place.Address()), raw);
    }
    TurnBad();
    const Ended ended = bench.Run(&MeterWords::CompareSides, {kReference, "meter", "all"});
    bench.line.TurnGood();
    JudgeCompared(ended, bench.Wrong(reference) == 0);
    for (const auto& [address, raw] : undo | std::views::reverse) bench.meter.Memory().Write(address, raw);
    if (Chance(0.3)) bench.meter.test.Time().RunFor(Pick(1, 2000));
  }

  void JudgeCompared(const Ended& ended, bool equal) {
    std::int64_t wrong = 0;
    for (const EventFields& event : ended.events) {
      if (event[0] != "row" || event.size() < 10 || event[9].empty()) continue;
      const Parameter& row = *FindParameter(event[1]);
      const auto held = HexDigits(bench_->meter.Held({&row, PlaceIndexOf(row, event[2])}));
      const bool told_equal = event[3] == "equal";
      if (event[9] != held || told_equal != (event[6] == held)) ++wrong;
    }
    Note(&RoundCount::wrong_values, wrong, "compared: " + std::to_string(wrong) + " rows are wrong");
    const EventFields* compared = ended.Event("compared");
    Good(ended,
         compared != nullptr && compared->at(1) == compared->at(2) && compared->at(7).starts_with("No diff"),
         equal);
  }

  void TakeSnapshot() {
    bench_->meter.test.platform.files.files.erase(kFile);
    TurnBad();
    const Ended ended = bench_->Run(&MeterWords::TakeSnapshot, {kFile});
    bench_->line.TurnGood();
    const Snapshot taken = bench_->File(kFile);
    const std::int64_t wrong = bench_->Wrong(taken);
    Note(&RoundCount::wrong_values, wrong, "snapshot: " + std::to_string(wrong) + " rows are wrong");
    const EventFields* told = ended.Event("snapshot");
    Good(ended, told != nullptr && told->at(3) == "0", wrong == 0 && taken.AllKnown());
    bench_->meter.Fill(static_cast<unsigned>(Pick(1, 10'000)));
    bench_->meter.test.Time().RunFor(Pick(1, 2000));
  }

  void Restore() {
    Bench& bench = *bench_;
    // A sender's restore points are told by their second.
    bench.meter.Fill(static_cast<unsigned>(Pick(1, 10'000)));
    bench.Rest();
    bench.Run(&MeterWords::TakeSnapshot, {kReference});
    bench.meter.Fill(static_cast<unsigned>(Pick(1, 10'000)));
    if (Chance(0.5)) {
      bench.Rest();
      WriteProven(bench.meter.test.app, {FindParameter("system.unit"), 0},
                  EncodeCode(1 - bench.meter.Memory().Word(kUnitSystem)));
    }
    const Snapshot before = bench.ReadAtRest();
    const std::string point = RestoreFrom(kReference);
    if (point.empty()) return;
    std::int64_t wrong = 0;
    for (const SnapshotRow& row : bench.File(point).rows) {
      const SnapshotRow* held = before.Find(row.place);
      if (row.Known() && (held == nullptr || held->raw != row.raw)) ++wrong;
    }
    Note(&RoundCount::wrong_points, wrong, "restore point: " + std::to_string(wrong) + " rows are wrong");
    RestoreFrom(point);
  }

  // The restore point that it has left; empty without one.
  std::string RestoreFrom(const std::string& path) {
    const Snapshot wanted = bench_->File(path);
    TurnBad();
    const Ended ended = bench_->Run(&MeterWords::Restore, {path});
    bench_->line.TurnGood();
    const EventFields* told = ended.Event("restored");
    Good(ended, told != nullptr && told->at(5) == "0", bench_->Wrong(wanted) == 0);
    return told == nullptr ? std::string() : told->at(6);
  }

  const RoundPlan& plan_;
  std::mt19937 random_;
  RoundResult result_;
  RoundCount* count_ = nullptr;
  unsigned seed_ = 0;
  std::unique_ptr<Bench> bench_;
};

}  // namespace

bool RoundResult::Right() const {
  return std::all_of(of.begin(), of.end(), [](const RoundCount& count) {
    return count.wrong_values + count.false_good + count.wrong_points + count.at_odds == 0;
  });
}

RoundResult SoakRounds(const RoundPlan& plan) { return Rounds(plan).Run(); }

}  // namespace vlt::test
