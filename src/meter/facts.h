// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of a meter (state/meter_facts.h) by its registers: which fact a row tells, which facts a
// value rests on, and of the meter in use whether they still hold and how they are asked.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <span>
#include <string>

#include "link/modbus.h"
#include "meter/catalogue.h"
#include "state/app.h"

namespace vlt {

// How old a fact may be that a write rests on: the meter has keys of its own.
inline constexpr std::int64_t kFactHoldsMs = 10'000;

// The row that tells a fact, and its place.
ParameterPlace PlaceOfFact(FactPlace fact);

// The fact that a row tells, if any.
std::optional<Fact> FactToldBy(const Parameter& row);

// Every fact of every channel, in the order of Fact.
std::span<const FactPlace> EveryFact();

// A row that tells a fact was read: `code` is what its register holds. Nothing for other rows.
void LearnFrom(MeterFacts& facts, const ParameterPlace& place, int code);
// The same for all rows that tell one; `code_at` gives what a place holds, nothing where that is not known.
void LearnAll(MeterFacts& facts, const std::function<std::optional<int>(const ParameterPlace&)>& code_at);

// The meter that the port is open for, or else that of the settings; these may name another one meanwhile.
MeterPlace MeterInUse(const App& app);
// An exchange proves what it brought: no attempt of it has failed, so the reply is none to an earlier
// request, and the station of the settings has signed it.
bool IsSureReply(const App& app, const ExchangeReport& exchange, std::span<const std::uint8_t> reply);
// The meter in use has told a fact, or the code of a row as above. Only what is sure counts as learnt.
void Learn(App& app, FactPlace fact, int value, bool sure);
void LearnFrom(App& app, const ParameterPlace& place, int code, bool sure);

// The unit system of UnitFlag in words, or the number itself where nobody knows it; and that in the third
// panel.
std::string UnitSystemText(const App& app);
void ShowUnitSystem(App& app);

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
