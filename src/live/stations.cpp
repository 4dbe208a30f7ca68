// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/stations.h"

#include <algorithm>
#include <cmath>

#include "link/device_queries.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_heal.h"
#include "state/device_facts.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kUnknown = -1;
constexpr int kRestMs = 10;        // behind each unit query
constexpr int kChannelName = 182;  // of CH1; the others follow
constexpr int kUnitError = 1966;
constexpr int kCommunicationFailed = 1964;
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

bool IsUnitKnown(const Station& station, const StationDisplay& display) {
  const UnitKind kind = LiveFieldAt(display.place).unit;
  return station.units.unit_flag != kUnknown && UnitCodeOf(station.units, kind, display.channel) != kUnknown;
}

const RegisterData& BlockOf(const Station& station, const StationDisplay& display) {
  return station.blocks.at(static_cast<std::size_t>(display.channel)).at(display.heat ? 1 : 0);
}

bool ReadBlock(App& app, Station& station, int ch, std::size_t block) {
  RegisterData& data = station.blocks.at(static_cast<std::size_t>(ch)).at(block);
  const Target target{.station = station.number, .mode = kModeStations};
  if (!ReadRegisters(app, target, SpanOf(*LiveBlocks()[block], ch), data)) {
    station.failure = app.state.LastErrorText;
    return false;
  }
  station.answered = app.platform.clock.Now();
  return true;
}

MeterProof Prove(App& app, Station& station, std::string& differs) {
  return ProveMeter(app, {.station = station.number, .mode = kModeStations}, station.mark, differs);
}

std::optional<int> KnownUnitSystem(const Station& station) {
  return station.units.unit_flag == kUnknown ? std::nullopt : std::optional(station.units.unit_flag);
}

// A station whose unit system is not known has no column whose unit could be wrong.
bool IsTheSame(App& app, Station& station) {
  if (!station.doubted) return true;
  station.mark.unit_system = KnownUnitSystem(station);
  std::string differs;
  const MeterProof proof = Prove(app, station, differs);
  station.doubted = proof != MeterProof::kSame;
  if (proof == MeterProof::kSilent) station.failure = app.state.LastErrorText;
  if (proof == MeterProof::kOther) station.failure = FormatText(app.Text(text::kStationOther), {differs});
  return !station.doubted;
}

}  // namespace

LiveUnits AskStationUnits(App& app, int station, const StationDisplays& displays, const GoesOn& goes_on) {
  LiveUnits units = UnknownUnits();
  const auto ask = [&](int& code, const auto& query) {
    if (!goes_on()) return;
    code = query();
    RestMs(app, kRestMs);
  };
  ask(units.unit_flag, [&] { return GetUnitFlagAt(app, station); });
  if (units.unit_flag == kUnknown) return units;
  for (const int ch : ChannelsOf(displays)) {
    const auto at = static_cast<std::size_t>(ch);
    ask(units.flow[at], [&] { return GetRangeUnitAt(app, station, ch); });
    ask(units.total[at], [&] { return GetTotalUnitAt(app, station, ch); });
    units.total[at] = TotalUnitOf(units.unit_flag, units.total[at]);
  }
  ask(units.heat_flow, [&] { return GetHeatFlowUnitAt(app, station); });
  ask(units.heat_total, [&] { return GetHeatTotalUnitAt(app, station); });
  ask(units.temperature, [&] { return GetTempUnitAt(app, station); });
  return units;
}

void LearnStation(App& app, Station& station) {
  if (station.mark.id_number || station.name_questions == 0 || !station.failure.empty()) return;
  --station.name_questions;
  station.mark.unit_system = KnownUnitSystem(station);
  std::string differs;
  Prove(app, station, differs);
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

std::string DisplayItem(const StationDisplay& display, int lang_offset) {
  return std::string(LookupText(kChannelName + display.channel + lang_offset)) + " " +
         LookupText(LiveFieldAt(display.place).head + lang_offset);
}

std::string StationUnitCaption(const Station& station, const StationDisplay& display, int lang_offset) {
  if (!display.IsUsed()) return {};
  const UnitKind kind = LiveFieldAt(display.place).unit;
  if (kind == UnitKind::kNone) return {};
  if (!IsUnitKnown(station, display)) return LookupText(text::kUnitUnknown + lang_offset);
  return LiveUnitText(station.units, kind, display.channel, lang_offset);
}

std::string StationUnitName(const Station& station, const StationDisplay& display, int lang_offset) {
  const std::string caption = StationUnitCaption(station, display, lang_offset);
  if (caption.empty()) return {};
  if (!IsUnitKnown(station, display)) return LookupText(kUnitError + lang_offset);
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

std::string ShownStationValue(const Station& station, const StationDisplay& display, int lang_offset) {
  if (IsSilent(station, display)) return LookupText(kCommunicationFailed + lang_offset);
  const std::string value = StationValue(station, display);
  const bool bits = display.IsUsed() && LiveFieldAt(display.place).type == LiveType::kBits;
  return bits ? AlarmOf(value, lang_offset) : value;
}

}  // namespace vlt
