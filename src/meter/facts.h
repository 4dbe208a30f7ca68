// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of the meter in use (state/meter_facts.h) by its registers: which fact a row tells, which
// facts a value rests on, whether they still hold, and how they are asked.
#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>

#include "meter/catalogue.h"
#include "state/app.h"

namespace vlt {

// How old a fact may be that a write rests on: the meter has keys of its own.
inline constexpr std::int64_t kFactHoldsMs = 10'000;

// The row that tells a fact, and its place.
ParameterPlace PlaceOfFact(FactPlace fact);

// The fact that a row tells, if any.
std::optional<Fact> FactToldBy(const Parameter& row);

// A row that tells a fact was read: `code` is what its register holds. Nothing for other rows. `sure` as for
// Learn (link/learn.h).
void LearnFrom(App& app, const ParameterPlace& place, int code, bool sure);

// Learnt from the meter in use, and since then neither was its register written nor one that decides about
// all of them (unit system, mode, specification, memory).
bool IsKnown(const App& app, FactPlace fact);
// Known, and not older than kFactHoldsMs.
bool IsFresh(const App& app, FactPlace fact);

// A number that the fact can have; what a meter tells beyond that means nothing here.
bool IsUnderstood(FactPlace fact, int value);
bool IsUnderstood(const MeterFacts& facts, FactPlace fact);

using FactSet = std::set<FactPlace>;
// What decides whether a meter has a place at all.
void AddShapeFacts(const ParameterPlace& place, FactSet& facts);
// What the unit of a kind rests on; `channel` counts where each has its own. Nothing for fixed units.
void AddUnitFacts(UnitKind unit, int channel, FactSet& facts);

// Asks the meter for each of these facts that is not fresh, with one short read each. Where an attempt has
// failed two readings must agree, and only the station of the settings counts. On failure `failed` is the
// fact that has no answer, or one that nobody understands, and `why` is empty for the latter. The port must
// be open and the interface locked.
struct FactsAnswer {
  bool good = true;
  FactPlace failed = {};
  std::string why = {};
};
FactsAnswer AskFacts(App& app, const FactSet& facts);

// A channel that a meter of this shape measures, or an output that it has: what may be written. Registers of
// the second pipe are there in other modes as well, and mean nothing then.
bool IsInUse(const ParameterPlace& place, const MeterFacts& facts);

}  // namespace vlt
