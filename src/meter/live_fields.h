// SPDX-License-Identifier: GPL-3.0-or-later
// The live values of a meter as rows of data that know no control: where a value lies, what it holds, what
// its column is called, which unit it carries. Addresses and layout come from the meter's register map.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "link/registers.h"
#include "state/meter_facts.h"
#include "values/unit_kind.h"

namespace vlt {

// What a value is on the wire. Bits are a word of 16 alarms.
enum class LiveType : std::uint8_t { kSingle, kDouble, kPulses, kBits };

struct LiveField {
  std::string_view name;  // group and name: "measured.velocity"
  int offset;             // in registers from the start of its block
  LiveType type;
  int head;  // text id
  UnitKind unit = UnitKind::kNone;
};

// Input registers that are read at once, their fields in the order of a record.
struct LiveBlock {
  std::array<int, kChannels> address;  // by channel
  int count;                           // registers
  int place;                           // of its first field in a record
  std::span<const LiveField> fields;
};

// Places of the measured fields in a record.
enum LivePlace : std::uint8_t {
  kVelocityPlace,
  kFlowPlace,
  kFlowPercentPlace,
  kPlusTotalPlace,
  kMinusTotalPlace,
  kPlusPulsesPlace,
  kMinusPulsesPlace,
  kAlarmPlace,
  kHeatPlace,  // of the first field with heat
};
// Fields of a channel: the first ones always, the others with heat.
inline constexpr int kPlainFields = kHeatPlace;
inline constexpr int kAllFields = 17;

const LiveBlock& MeasuredBlock();
const LiveBlock& HeatBlock();
// Both, in the order of their places.
std::span<const LiveBlock* const> LiveBlocks();
// The field at a place of a record, 0 to kAllFields - 1.
const LiveField& LiveFieldAt(int place);

// The registers of a block for channel 0 to 2.
RegisterSpan SpanOf(const LiveBlock& block, int ch);
// Those of one of its fields alone.
RegisterSpan SpanOf(const LiveBlock& block, const LiveField& field, int ch);

// A value out of its block's registers, as fields and files show it: numbers cut to three decimals, pulses
// plain, bits as 16 digits with the highest in front.
std::string LiveText(const LiveField& field, const RegisterData& block);
// The same as it was sent, for a chart; nothing for bits.
std::optional<double> LiveNumber(const LiveField& field, const RegisterData& block);
// A text of bits in words: of several alarms the one of the highest bit.
std::string AlarmOf(std::string_view bits, Language language);

// The codes of a meter's units, as its unit registers hold them.
struct LiveUnits {
  int unit_flag = 0;
  std::array<int, kChannels> flow{};
  std::array<int, kChannels> total{};
  int heat_flow = 0;
  int heat_total = 0;
  int temperature = 0;
};

// Those of our own station that the program knows.
LiveUnits KnownUnits(const MeterFacts& facts);
// The code that a unit's text depends on beside the unit system; the unit system itself where there is none.
int UnitCodeOf(const LiveUnits& units, UnitKind kind, int ch);
// A unit in brackets, for channel 0 to 2: "[m3/h]", "[]" for a code without a text. Empty for a field without
// a unit. A flow is a flow here whatever the kind of the range says.
std::string LiveUnitText(const LiveUnits& units, UnitKind kind, int ch, Language language);

}  // namespace vlt
