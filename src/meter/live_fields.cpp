// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/live_fields.h"

#include <bitset>

#include "meter/units.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/code_tables.h"
#include "values/codecs.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kShownDecimals = 3;

constexpr LiveField kMeasured[] = {
    {"measured.velocity", 0, LiveType::kSingle, 2180, UnitKind::kVelocity},
    {"measured.flow", 2, LiveType::kSingle, 2220, UnitKind::kFlow},
    {"measured.flow_percent", 4, LiveType::kSingle, 2221, UnitKind::kPercent},
    {"measured.plus_total", 6, LiveType::kDouble, 2360, UnitKind::kTotal},
    {"measured.minus_total", 10, LiveType::kDouble, 2370, UnitKind::kTotal},
    {"measured.plus_pulses", 14, LiveType::kPulses, 2380, UnitKind::kPulses},
    {"measured.minus_pulses", 16, LiveType::kPulses, 2390, UnitKind::kPulses},
    {"measured.alarms", 18, LiveType::kBits, 1965},
};
constexpr LiveField kHeat[] = {
    {"measured.heat_percent", 2, LiveType::kSingle, 2392, UnitKind::kPercent},
    {"measured.heat_flow", 0, LiveType::kSingle, 2391, UnitKind::kHeatFlow},
    {"measured.temperature_difference", 24, LiveType::kDouble, 2393, UnitKind::kTemperature},
    {"measured.heating_total", 4, LiveType::kDouble, 2394, UnitKind::kHeatTotal},
    {"measured.heating_pulses", 12, LiveType::kPulses, 2395, UnitKind::kPulses},
    {"measured.cooling_total", 8, LiveType::kDouble, 2396, UnitKind::kHeatTotal},
    {"measured.cooling_pulses", 14, LiveType::kPulses, 2397, UnitKind::kPulses},
    {"measured.supply_temperature", 16, LiveType::kDouble, 2398, UnitKind::kTemperature},
    {"measured.return_temperature", 20, LiveType::kDouble, 2399, UnitKind::kTemperature},
};
static_assert(std::size(kMeasured) == kPlainFields && std::size(kMeasured) + std::size(kHeat) == kAllFields);

constexpr LiveBlock kMeasuredValues{{0x0000, 0x1388, 0x251C}, 19, kVelocityPlace, kMeasured};
constexpr LiveBlock kHeatValues{{0x10C0, 0x2448, 0x2648}, 28, kHeatPlace, kHeat};
constexpr const LiveBlock* kBlocks[] = {&kMeasuredValues, &kHeatValues};

std::size_t StartOf(const LiveField& field) { return 2 * static_cast<std::size_t>(field.offset); }

}  // namespace

const LiveBlock& MeasuredBlock() { return kMeasuredValues; }
const LiveBlock& HeatBlock() { return kHeatValues; }
std::span<const LiveBlock* const> LiveBlocks() { return kBlocks; }

const LiveField& LiveFieldAt(int place) {
  const LiveBlock& block = place < kHeatPlace ? kMeasuredValues : kHeatValues;
  return block.fields[static_cast<std::size_t>(place - block.place)];
}

RegisterSpan SpanOf(const LiveBlock& block, int ch) {
  return {.function = ReadFunction::kInput,
          .address = block.address.at(static_cast<std::size_t>(ch)),
          .count = block.count};
}

RegisterSpan SpanOf(const LiveBlock& block, const LiveField& field, int ch) {
  static constexpr int kWords[] = {2, 4, 2, 1};  // by LiveType
  RegisterSpan span = SpanOf(block, ch);
  span.address += static_cast<int>(StartOf(field));
  span.count = kWords[static_cast<std::size_t>(field.type)];
  return span;
}

std::string LiveText(const LiveField& field, const RegisterData& block) {
  const std::size_t start = StartOf(field);
  switch (field.type) {
    case LiveType::kSingle:
      return SingleText(static_cast<float>(CutDigits(BytesToSingle(block, start), kShownDecimals)));
    case LiveType::kDouble:
      return GeneralText(CutDigits(BytesToDouble(block, start), kShownDecimals));
    case LiveType::kPulses:
      return std::to_string(BytesToInt32(block, start));
    case LiveType::kBits:
      break;
  }
  return std::bitset<16>(static_cast<unsigned>(BytesToUInt16(block, start))).to_string();
}

std::optional<double> LiveNumber(const LiveField& field, const RegisterData& block) {
  const std::size_t start = StartOf(field);
  switch (field.type) {
    case LiveType::kSingle:
      return BytesToSingle(block, start);
    case LiveType::kDouble:
      return BytesToDouble(block, start);
    case LiveType::kPulses:
      return BytesToInt32(block, start);
    case LiveType::kBits:
      break;
  }
  return std::nullopt;
}

std::string AlarmOf(std::string_view bits, Language language) {
  const std::size_t alarm = bits.find('1');
  return alarm == std::string_view::npos ? LookupText(text::kNormal, language) : AlarmRows(language)[alarm];
}

LiveUnits KnownUnits(const MeterFacts& facts) {
  return {.unit_flag = facts.UnitFlag,
          .flow = facts.RangeUnit,
          .total = facts.TotalUnit,
          .heat_flow = facts.HeatFlowUnit,
          .heat_total = facts.HeatTotalUnit,
          .temperature = facts.TempUnit};
}

int UnitCodeOf(const LiveUnits& units, UnitKind kind, int ch) {
  const auto at = static_cast<std::size_t>(ch);
  switch (kind) {
    case UnitKind::kFlow:
      return units.flow.at(at);
    case UnitKind::kTotal:
      return units.total.at(at);
    case UnitKind::kHeatFlow:
      return units.heat_flow;
    case UnitKind::kHeatTotal:
      return units.heat_total;
    case UnitKind::kTemperature:
      return units.temperature;
    default:
      return units.unit_flag;
  }
}

std::string LiveUnitText(const LiveUnits& units, UnitKind kind, int ch, Language language) {
  if (kind == UnitKind::kNone) return {};
  return "[" + UnitName(kind, UnitCodeOf(units, kind, ch), units.unit_flag, language) + "]";
}

}  // namespace vlt
