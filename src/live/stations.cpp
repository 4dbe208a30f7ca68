// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/stations.h"

#include <algorithm>
#include <cmath>

#include "meter/device_queries.h"
#include "meter/units.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_heal.h"
#include "state/device_facts.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kUnknown = -1;
constexpr int kRestMs = 10;        // behind each unit query
constexpr int kSilentQueries = 2;  // a station that has failed so many at first does not answer
constexpr int kEagerTurns = 4;
constexpr int kRareTurns = 8;
constexpr const char* kNoValue = "***";

// In the order of the displays.
std::vector<int> ChannelsOf(const StationDisplays& displays) {
  std::vector<int> channels;
  for (const StationDisplay& display : displays) {
    const bool known = std::ranges::find(channels, display.channel) != channels.end();
    if (display.IsUsed() && !known) channels.push_back(display.channel);
  }
  return channels;
}

bool NeedsHeat(const StationDisplays& displays, int ch) {
  return std::ranges::any_of(displays, [ch](const StationDisplay& d) { return d.channel == ch && d.heat; });
}

// Its text depends on the unit system.
bool HangsOnSystem(UnitKind kind) { return kind <= UnitKind::kTotal; }

// Or there is none.
bool IsUnitKnown(const Station& station, const StationDisplay& display) {
  const UnitKind kind = LiveFieldAt(display.place).unit;
  if (IsFixedUnit(kind)) return true;
  if (HangsOnSystem(kind) && station.units.unit_flag == kUnknown) return false;
  return UnitCodeOf(station.units, kind, display.channel) != kUnknown;
}

// A unit query: the code that it asks for, and how. The unit system is the one of kVelocity.
struct UnitQuery {
  UnitKind kind;
  int channel;
  int* code;
  std::function<int()> ask;
};

// In the order in which they are asked.
std::vector<UnitQuery> QueriesOf(App& app, Station& station, const StationDisplays& displays) {
  LiveUnits& units = station.units;
  const int number = station.number;
  std::vector<UnitQuery> queries = {
      {UnitKind::kVelocity, 0, &units.unit_flag, [&app, number] { return GetUnitFlagAt(app, number); }}};
  for (const int ch : ChannelsOf(displays)) {
    const auto at = static_cast<std::size_t>(ch);
    queries.push_back({UnitKind::kFlow, ch, &units.flow[at],
                       [&app, number, ch] { return GetRangeUnitAt(app, number, ch); }});
    queries.push_back({UnitKind::kTotal, ch, &units.total[at],
                       [&app, number, ch] { return GetTotalUnitAt(app, number, ch); }});
  }
  queries.push_back(
      {UnitKind::kHeatFlow, 0, &units.heat_flow, [&app, number] { return GetHeatFlowUnitAt(app, number); }});
  queries.push_back({UnitKind::kHeatTotal, 0, &units.heat_total,
                     [&app, number] { return GetHeatTotalUnitAt(app, number); }});
  queries.push_back(
      {UnitKind::kTemperature, 0, &units.temperature, [&app, number] { return GetTempUnitAt(app, number); }});
  return queries;
}

bool IsShown(const UnitQuery& query, const StationDisplays& displays) {
  return std::ranges::any_of(displays, [&](const StationDisplay& display) {
    if (!display.IsUsed()) return false;
    const UnitKind kind = LiveFieldAt(display.place).unit;
    if (query.kind == UnitKind::kVelocity) return HangsOnSystem(kind);
    const bool of_channel = query.kind == UnitKind::kFlow || query.kind == UnitKind::kTotal;
    return query.kind == kind && (!of_channel || query.channel == display.channel);
  });
}

// The code is -1 where the query failed.
bool Ask(App& app, const UnitQuery& query) {
  *query.code = query.ask();
  RestMs(app, kRestMs);
  return *query.code != kUnknown;
}

// The codes of totals are read before the unit system may be known.
void SettleTotals(LiveUnits& units) {
  for (int& code : units.total) code = TotalUnitOf(units.unit_flag, code);
}

const RegisterData& BlockOf(const Station& station, const StationDisplay& display) {
  return station.blocks.at(static_cast<std::size_t>(display.channel)).at(display.heat ? 1 : 0);
}

bool ReadBlock(App& app, Station& station, int ch, std::size_t block) {
  RegisterData& data = station.blocks.at(static_cast<std::size_t>(ch)).at(block);
  const Target target{.station = station.number, .mode = kModeStations};
  const ExchangeReport exchange = ReadRegisters(app, target, SpanOf(*LiveBlocks()[block], ch), data);
  if (!exchange) {
    station.failure = exchange.text;
    return false;
  }
  station.answered = app.platform.clock.Now();
  return true;
}

MeterAnswer Prove(App& app, Station& station) {
  return ProveMeter(app, {.station = station.number, .mode = kModeStations}, station.mark);
}

std::optional<int> KnownUnitSystem(const Station& station) {
  return station.units.unit_flag == kUnknown ? std::nullopt : std::optional(station.units.unit_flag);
}

// A station that has told nothing to compare tells its units anew.
bool IsTheSame(App& app, Station& station) {
  if (!station.doubted) return true;
  station.mark.unit_system = KnownUnitSystem(station);
  const bool comparable = station.mark.id_number || station.mark.unit_system;
  const MeterAnswer answer = Prove(app, station);
  station.doubted = answer.proof != MeterProof::kSame;
  if (answer.proof == MeterProof::kSilent) station.failure = answer.why;
  if (answer.proof == MeterProof::kOther) {
    station.failure = FormatText(app.Text(text::kStationOther), {answer.why});
  }
  if (!station.doubted && !comparable) station.units = UnknownUnits();
  return !station.doubted;
}

}  // namespace

LiveUnits UnknownUnits() {
  LiveUnits units{.unit_flag = kUnknown,
                  .flow = {},
                  .total = {},
                  .heat_flow = kUnknown,
                  .heat_total = kUnknown,
                  .temperature = kUnknown};
  units.flow.fill(kUnknown);
  units.total.fill(kUnknown);
  return units;
}

void AskStationUnits(App& app, Station& station, const StationDisplays& displays, const GoesOn& goes_on) {
  int asked = 0;
  bool answers = false;
  for (const UnitQuery& query : QueriesOf(app, station, displays)) {
    if (!goes_on()) break;
    answers = Ask(app, query) || answers;
    if (++asked == kSilentQueries && !answers) break;
  }
  SettleTotals(station.units);
}

void AskMissingUnits(App& app, Station& station, const StationDisplays& displays, const GoesOn& goes_on) {
  for (const UnitQuery& query : QueriesOf(app, station, displays)) {
    if (*query.code != kUnknown || !IsShown(query, displays)) continue;
    if (!goes_on()) break;
    Ask(app, query);
  }
  SettleTotals(station.units);
}

bool MissesUnits(const Station& station, const StationDisplays& displays) {
  return std::ranges::any_of(displays, [&](const StationDisplay& display) {
    return display.IsUsed() && !IsUnitKnown(station, display);
  });
}

bool HasToldUnits(const Station& station) {
  const LiveUnits& units = station.units;
  const auto told = [](int code) { return code != kUnknown; };
  return told(units.unit_flag) || std::ranges::any_of(units.flow, told) ||
         std::ranges::any_of(units.total, told) || told(units.heat_flow) || told(units.heat_total) ||
         told(units.temperature);
}

bool IsTurnForUnits(const Station& station, const StationDisplays& displays) {
  return MissesUnits(station, displays) &&
         (station.vain_turns < kEagerTurns || station.polls % kRareTurns == 0);
}

void LearnStation(App& app, Station& station) {
  if (station.mark.id_number || station.name_questions == 0 || !station.failure.empty()) return;
  --station.name_questions;
  station.mark.unit_system = KnownUnitSystem(station);
  Prove(app, station);
}

std::string MeterNames(const std::vector<Station>& stations) {
  std::string names;
  for (const Station& station : stations) {
    if (!station.mark.id_number || station.doubted) continue;
    names += (names.empty() ? "" : " ") + ZeroPadded(station.number, 2) + "=" +
             ZeroPadded(*station.mark.id_number, 4);
  }
  return names;
}

void PollStation(App& app, Station& station, const StationDisplays& displays, const GoesOn& goes_on) {
  for (auto& blocks : station.blocks) {
    for (RegisterData& data : blocks) data.clear();
  }
  station.failure.clear();
  bool good = IsTheSame(app, station);
  for (const int ch : good ? ChannelsOf(displays) : std::vector<int>()) {
    for (std::size_t block = 0; block < (NeedsHeat(displays, ch) ? 2 : 1); ++block) {
      if (!goes_on()) return;
      good = ReadBlock(app, station, ch, block) && good;
    }
  }
  ++station.polls;
  if (!good) ++station.failed;
}

std::string DisplayItem(const StationDisplay& display, Language language) {
  return std::string(LookupText(text::kFirstChannelName + display.channel, language)) + " " +
         LookupText(LiveFieldAt(display.place).head, language);
}

std::string StationUnitCaption(const Station& station, const StationDisplay& display, Language language) {
  if (!display.IsUsed()) return {};
  const UnitKind kind = LiveFieldAt(display.place).unit;
  if (kind == UnitKind::kNone) return {};
  if (!IsUnitKnown(station, display)) return LookupText(text::kUnitUnknown, language);
  return LiveUnitText(station.units, kind, display.channel, language);
}

std::string StationUnitName(const Station& station, const StationDisplay& display, Language language) {
  const std::string caption = StationUnitCaption(station, display, language);
  if (caption.empty()) return {};
  if (!IsUnitKnown(station, display)) return LookupText(text::kUnitError, language);
  return caption.substr(1, caption.size() - 2);
}

bool IsSilent(const Station& station, const StationDisplay& display) {
  return display.IsUsed() && BlockOf(station, display).empty();
}

std::string StationValue(const Station& station, const StationDisplay& display) {
  if (!display.IsUsed()) return {};
  const RegisterData& block = BlockOf(station, display);
  if (block.empty()) return kNoValue;
  const LiveField& field = LiveFieldAt(display.place);
  const std::optional<double> number = LiveNumber(field, block);
  return number && !std::isfinite(*number) ? kNoValue : LiveText(field, block);
}

std::string ShownStationValue(const Station& station, const StationDisplay& display, Language language) {
  if (IsSilent(station, display)) return LookupText(text::kCommunicationFailed, language);
  const std::string value = StationValue(station, display);
  const bool bits = display.IsUsed() && LiveFieldAt(display.place).type == LiveType::kBits;
  return bits ? AlarmOf(value, language) : value;
}

}  // namespace vlt
