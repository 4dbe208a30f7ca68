// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/facts.h"

#include <algorithm>
#include <array>

#include "link/device_queries.h"
#include "link/learn.h"
#include "link/registers.h"
#include "meter/heat_table.h"
#include "meter/range_table.h"
#include "meter/system_table.h"
#include "meter/total_table.h"
#include "meter/units.h"

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

std::int64_t LastChange(const MeterFacts& facts, FactPlace fact) {
  std::int64_t last =
      std::max(facts.writes.Last(PlaceOfFact(fact).Address()), facts.writes.Last(kMemoryInitRegister));
  for (const Parameter* row : kDecidesAll) last = std::max(last, facts.writes.Last(row->address));
  return last;
}

bool ReadFact(App& app, const ParameterPlace& place, int& value) {
  RegisterData data;
  if (!ReadRegistersProven(app, {.address = place.Address(), .count = 1}, data)) return false;
  value = CodeAt(*place.row, data, 0);
  return true;
}

}  // namespace

ParameterPlace PlaceOfFact(FactPlace fact) { return {RowOfFact(fact.fact).row, fact.channel}; }

std::optional<Fact> FactToldBy(const Parameter& row) {
  const auto at =
      std::find_if(kRows.begin(), kRows.end(), [&](const FactRow& told) { return told.row == &row; });
  if (at == kRows.end()) return {};
  return static_cast<Fact>(at - kRows.begin());
}

void LearnFrom(App& app, const ParameterPlace& place, int code, bool sure) {
  const auto told = FactToldBy(*place.row);
  if (!told) return;
  const FactPlace fact{*told, place.row->location == Location::kMeter ? 0 : place.index};
  if (fact.fact == Fact::kTotalUnit) code = TotalUnitOf(app.state.UnitFlag, code);
  Learn(app, fact, code, sure);
  if (fact.fact == Fact::kUnitSystem) ShowUnitSystem(app);
  if (fact.fact == Fact::kSpecification) app.state.SpecClass = SpecClassOf(code);
}

bool IsKnown(const App& app, FactPlace fact) {
  const auto& learnt = app.state.WhenLearnt(fact);
  return learnt && app.state.place == MeterInUse(app) && learnt->order > LastChange(app.state, fact);
}

bool IsFresh(const App& app, FactPlace fact) {
  return IsKnown(app, fact) && app.platform.clock.NowMs() - app.state.WhenLearnt(fact)->at_ms <= kFactHoldsMs;
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
      if (!ReadFact(app, PlaceOfFact(fact), value)) {
        app.state.Forget(fact);
        return {.good = false, .failed = fact, .why = app.state.LastErrorText};
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
      return !IsSingleChannel(facts) && IsOnTwoPipes(facts);
    case Location::kPath:
      return !IsSingleChannel(facts) && facts.PathMode != kOnePathMode;
    default:
      return true;
  }
}

}  // namespace vlt
