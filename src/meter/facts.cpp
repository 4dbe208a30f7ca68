// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/facts.h"

#include <algorithm>
#include <array>

#include "link/port.h"
#include "link/registers.h"
#include "meter/heat_table.h"
#include "meter/range_table.h"
#include "meter/system_table.h"
#include "meter/total_table.h"
#include "meter/units.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

// By fact, in its order: the row that tells it, and the least and greatest number that it can have.
struct FactRow {
  const Parameter* row;
  int least;
  int greatest;
};
constexpr std::array<FactRow, kFactKinds> kRows = {{
    {&SystemRow("unit"), 0, 1},
    {&SystemRow("specification"), 1, 9999},
    {&SystemRow("measurement_mode"), kOnePathMode, kTwoPipesMode},
    {&SystemRow("operation_mode"), 0, 1},
    {&HeatRow("mode"), 0, 1},
    {&HeatRow("flow_unit"), 0, 6},
    {&HeatRow("total_unit"), 0, 6},
    {&HeatRow("temperature_unit"), 0, 2},
    {&RangeRow("kind"), 0, 1},
    {&RangeRow("unit"), 0, 17},
    {&TotalRow("unit"), 0, 8},
}};

const FactRow& RowOfFact(Fact fact) { return kRows[static_cast<std::size_t>(fact)]; }

// Rows whose writing may change any fact: the meter converts what it holds, or begins anew.
constexpr const Parameter* kDecidesAll[] = {&SystemRow("unit"), &SystemRow("specification"),
                                            &SystemRow("measurement_mode")};

std::int64_t LastChange(const WriteMarks& writes, FactPlace fact) {
  std::int64_t last = std::max(writes.Last(PlaceOfFact(fact).Address()), writes.Last(kMemoryInitRegister));
  for (const Parameter* row : kDecidesAll) last = std::max(last, writes.Last(row->address));
  return last;
}

int CountOf(const Parameter& row) { return row.location == Location::kMeter ? 1 : kChannels; }

std::vector<FactPlace> AllFacts() {
  std::vector<FactPlace> facts;
  for (int kind = 0; kind < kFactKinds; ++kind) {
    for (int channel = 0; channel < CountOf(*kRows.at(static_cast<std::size_t>(kind)).row); ++channel) {
      facts.push_back({static_cast<Fact>(kind), channel});
    }
  }
  return facts;
}

std::optional<FactPlace> FactAt(const ParameterPlace& place) {
  const auto told = FactToldBy(*place.row);
  if (!told) return {};
  return FactPlace{*told, place.row->location == Location::kMeter ? 0 : place.index};
}

void Note(App& app, FactPlace fact, bool sure) {
  app.state.Learnt.Note(fact, app.platform.clock.NowMs(), MeterInUse(app));
  if (!sure) app.state.Learnt.Forget(fact);
}

ExchangeReport ReadFact(App& app, const ParameterPlace& place, int& value) {
  RegisterData data;
  ExchangeReport exchange = ReadRegistersProven(app, {.address = place.Address(), .count = 1}, data);
  if (exchange) value = CodeAt(*place.row, data, 0);
  return exchange;
}

}  // namespace

ParameterPlace PlaceOfFact(FactPlace fact) { return {RowOfFact(fact.fact).row, fact.channel}; }

std::optional<Fact> FactToldBy(const Parameter& row) {
  const auto at =
      std::find_if(kRows.begin(), kRows.end(), [&](const FactRow& told) { return told.row == &row; });
  if (at == kRows.end()) return {};
  return static_cast<Fact>(at - kRows.begin());
}

std::span<const FactPlace> EveryFact() {
  static const std::vector<FactPlace> kFacts = AllFacts();
  return kFacts;
}

void LearnFrom(MeterFacts& facts, const ParameterPlace& place, int code) {
  const auto fact = FactAt(place);
  if (!fact) return;
  facts.Learn(*fact, fact->fact == Fact::kTotalUnit ? TotalUnitOf(facts.UnitFlag, code) : code);
  if (fact->fact == Fact::kSpecification) facts.SpecClass = SpecClassOf(code);
}

void LearnAll(MeterFacts& facts, const std::function<std::optional<int>(const ParameterPlace&)>& code_at) {
  for (const FactPlace& fact : EveryFact()) {
    const ParameterPlace place = PlaceOfFact(fact);
    if (const auto code = code_at(place)) LearnFrom(facts, place, *code);
  }
  // The unit system may be another one now.
  for (int& unit : facts.TotalUnit) unit = TotalUnitOf(facts.UnitFlag, unit);
}

MeterPlace MeterInUse(const App& app) {
  return {.port = app.state.PortIsOpen ? app.state.OpenedPort : PortNumber(app),
          .station = StationNumber(app)};
}

bool IsSureReply(const App& app, const ExchangeReport& exchange, std::span<const std::uint8_t> reply) {
  return exchange.Clean() && !reply.empty() && reply[0] == StationNumber(app);
}

void Learn(App& app, FactPlace fact, int value, bool sure) {
  app.state.Learn(fact, value);
  Note(app, fact, sure);
}

void LearnFrom(App& app, const ParameterPlace& place, int code, bool sure) {
  const auto fact = FactAt(place);
  if (!fact) return;
  LearnFrom(app.state, place, code);
  Note(app, *fact, sure);
  if (fact->fact == Fact::kUnitSystem) ShowUnitSystem(app);
}

std::string UnitSystemText(const App& app) {
  const int flag = app.state.UnitFlag;
  return flag == 0 || flag == 1 ? app.Text(flag == 0 ? text::kMetric : text::kEnglish) : std::to_string(flag);
}

void ShowUnitSystem(App& app) {
  constexpr int kUnitPanel = 3;
  if (app.frame != nullptr) app.frame->Status().SetPanel(kUnitPanel, UnitSystemText(app));
}

bool IsKnown(const App& app, FactPlace fact) {
  const LearntFacts& learnt = app.state.Learnt;
  const auto& moment = learnt.When(fact);
  return moment && learnt.place == MeterInUse(app) && moment->order > LastChange(learnt.writes, fact);
}

bool IsFresh(const App& app, FactPlace fact) {
  return IsKnown(app, fact) &&
         app.platform.clock.NowMs() - app.state.Learnt.When(fact)->at_ms <= kFactHoldsMs;
}

bool IsUnderstood(FactPlace fact, int value) {
  const FactRow& row = RowOfFact(fact.fact);
  return value >= row.least && value <= row.greatest;
}

bool IsUnderstood(const MeterFacts& facts, FactPlace fact) { return IsUnderstood(fact, facts.ValueOf(fact)); }

void AddShapeFacts(const ParameterPlace& place, FactSet& facts) {
  const bool heat = place.row->exists == Exists::kHeat;
  const bool beyond_first = place.index > 0 && place.row->location != Location::kMeter;
  if (place.row->exists == Exists::kNotSingleChannel || heat || beyond_first) {
    facts.insert({Fact::kSpecification});
  }
  if (heat || (beyond_first && !IsOutput(*place.row))) facts.insert({Fact::kPathMode});
}

void AddUnitFacts(UnitKind unit, int channel, FactSet& facts) {
  if (unit == UnitKind::kNone || IsFixedUnit(unit)) return;
  switch (unit) {
    case UnitKind::kFlow:
      facts.insert({{Fact::kUnitSystem}, {Fact::kRangeKind, channel}, {Fact::kRangeUnit, channel}});
      return;
    case UnitKind::kTotal:
      facts.insert({{Fact::kUnitSystem}, {Fact::kTotalUnit, channel}});
      return;
    case UnitKind::kHeatFlow:
      facts.insert({Fact::kHeatFlowUnit});
      return;
    case UnitKind::kHeatTotal:
      facts.insert({Fact::kHeatTotalUnit});
      return;
    case UnitKind::kTemperature:
      facts.insert({Fact::kTempUnit});
      return;
    default:
      facts.insert({Fact::kUnitSystem});
  }
}

FactsAnswer AskFacts(App& app, const FactSet& facts) {
  for (const FactPlace& fact : facts) {
    if (!IsFresh(app, fact)) {
      int value = 0;
      const ExchangeReport exchange = ReadFact(app, PlaceOfFact(fact), value);
      if (!exchange) {
        app.state.Learnt.Forget(fact);
        return {.good = false, .failed = fact, .why = exchange.text};
      }
      LearnFrom(app, PlaceOfFact(fact), value, true);
    }
    if (!IsUnderstood(app.state, fact)) return {.good = false, .failed = fact};
  }
  return {};
}

bool IsInUse(const ParameterPlace& place, const MeterFacts& facts) {
  if (place.index <= 0) return true;
  switch (place.row->location) {
    case Location::kPipe:
    case Location::kChannel:
      return HasTwoPipes(facts);
    case Location::kPath:
      return !IsSingleChannel(facts) && facts.PathMode != kOnePathMode;
    default:
      return true;
  }
}

}  // namespace vlt
