// SPDX-License-Identifier: GPL-3.0-or-later
// A parameter of the meter as one row of data that knows no control: where its register lies, what it holds,
// how it is shown and typed, what it is called, where it is kept. Everything that speaks of a parameter takes
// it from its row. The addresses come from the meter's register map.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "link/registers.h"
#include "state/device_facts.h"
#include "state/slot_rows.h"
#include "values/unit_kind.h"

namespace vlt {

// What a register holds. All are big-endian; a 32-bit value takes two registers, a double four, characters as
// many as the row says, two in each.
enum class Wire : std::uint8_t {
  kInt16,
  kUInt16,
  kInt32,
  kDouble,
  kCharacters,
  kWord,  // 16 bits that may be typed as a signed or an unsigned number; shown unsigned
};

// How a value is shown. Numbers are in fixed notation with "." under every locale, never with an exponent.
enum class Show : std::uint8_t {
  kCode,         // an entry of a list, or one of two options
  kDecimals,     // as many decimals as the scale has: "0.00"
  kPlain,        // up to 15 significant digits
  kDigits,       // cut to so many significant digits
  kCoefficient,  // cut to so many significant digits, three decimals: "0.000"
  kTemperature,  // one decimal in degrees Celsius, two in the other units
  kPadded,       // four digits: "0000"
  kCharacters,
};

// Which of several equal parameters of a meter a row stands for, and how far apart they lie.
enum class Location : std::uint8_t {
  kMeter,          // one in a meter
  kPipe,           // measuring channels CH1 and CH2
  kChannel,        // CH1, CH2 and the computed CH3
  kPath,           // transit-time details of CH1 and CH2
  kOutput,         // digital outputs DO1 to DO4; the fourth lies apart
  kThermalOutput,  // the same outputs in the block of their thermal switches
  kOutputRow,      // the same outputs, one register each
};

// The index of the computed channel CH3 among the places of kChannel.
inline constexpr int kComputedChannel = 2;

// Decimals of a scaled value by unit system; the integer in the register is the value times ten to that
// power.
struct Decimals {
  int metric = 0;
  int english = 0;
  constexpr int In(int unit_flag) const { return unit_flag == 0 ? metric : english; }
};

// Characters that may be typed, by unit system; 0 is no limit.
struct MaxLength {
  int metric = 0;
  int english = 0;
  constexpr int In(int unit_flag) const { return unit_flag == 0 ? metric : english; }
};

enum class WriteWith : std::uint8_t {
  kSeveral,  // function 10H; its reply repeats the number of registers
  kSingle,   // function 06; its reply repeats the value
  kNothing,  // the meter computes it
};

// In which shapes of meter a parameter exists.
enum class Exists : std::uint8_t {
  kAlways,
  kNotSingleChannel,  // not in a single-channel meter
  kHeat,              // with the heat calculation
  kMeasuring,         // not for the computed channel
};

// Which codes of a row a meter offers, where that is not all that have a word (meter/offered_codes.h).
enum class Offer : std::uint8_t {
  kAll,
  kSendCounts,       // by the operation mode
  kRangeKinds,       // by channel and measurement mode
  kOutputFunctions,  // by output, model and measurement mode
  kDisplayItems,     // by the row's channel, model and measurement mode
  kSources,          // by the measurement mode
  kMinutes,          // without words
};

// What stands against sending a row together with others, whatever its value.
enum class SendRule : std::uint8_t {
  kOrdinary,
  kByHand,  // belongs to one meter alone (its ID number, the adjustment of its outputs): sent when it is
            // chosen for itself, left out when all that differs is chosen, unless the meter is the same
  kNever,   // the meter computes it, or it would clear its memory or totals, or put it into its test state
};

struct Parameter {
  std::string_view name;  // group and name: "process.outer_diameter"
  int caption = 0;        // text id
  // Text ids, joined by blanks, of a row whose caption alone says too little, or the same as another one's.
  std::array<int, 3> title = {};
  int address = 0;  // of the first place; a byte address
  Location location = Location::kMeter;
  ReadFunction function = ReadFunction::kHolding;
  WriteWith write = WriteWith::kSeveral;
  Wire wire = Wire::kInt16;
  int characters = 0;  // for Wire::kCharacters
  Show show = Show::kCode;
  Decimals decimals = {};  // for Show::kDecimals
  int digits = 0;          // for Show::kDigits and kCoefficient
  MaxLength length = {};
  int codes = 0;                  // code table of the words of its codes, or 0
  std::array<int, 2> words = {};  // of the codes 0 and 1, where they have no table: text ids
  bool any_is_second = false;     // every code but 0 means what 1 means
  Offer offer = Offer::kAll;
  int order_code = 0;  // one that the meter carries out and does not keep (its totals begin anew), or 0
  UnitKind unit = UnitKind::kNone;
  bool is_difference = false;    // of temperatures: such have no zero of their own
  Slot slot = Slot::kNone;       // of the parameter file
  Slot unit_slot = Slot::kNone;  // of its unit caption
  Exists exists = Exists::kAlways;
  // It differs from meter to meter however they are set: what a meter tells of its make, and what is sent by
  // hand alone.
  bool one_meter = false;
  int never_sent = 0;     // text id of why it is never sent with others, or 0
  bool decides = false;   // about what other registers mean
  bool measured = false;  // changes by itself: no setting

  // Registers of 16 bits.
  constexpr int Words() const {
    switch (wire) {
      case Wire::kDouble:
        return 4;
      case Wire::kInt32:
        return 2;
      case Wire::kCharacters:
        return characters / 2;
      default:
        return 1;
    }
  }
  constexpr bool IsCode() const { return show == Show::kCode; }
  constexpr bool HasWords() const { return IsCode() && (codes != 0 || words[0] != 0); }
  constexpr bool IsOrder(int code) const { return order_code != 0 && code == order_code; }
  constexpr SendRule Sending() const {
    if (write == WriteWith::kNothing || never_sent != 0) return SendRule::kNever;
    return one_meter ? SendRule::kByHand : SendRule::kOrdinary;
  }
};

// The row of a name without its group. In a constant expression a name that is not there does not compile.
template <std::size_t N>
consteval const Parameter& RowOf(const Parameter (&table)[N], std::string_view name) {
  for (const Parameter& row : table) {
    if (row.name.substr(row.name.find('.') + 1) == name) return row;
  }
  throw std::out_of_range("no parameter of this name");
}

// Registers that are read in one exchange, as a row of a group's table of blocks.
struct Block {
  ReadFunction function = ReadFunction::kHolding;
  int address = 0;  // of the first place
  int count = 0;    // registers
  Location location = Location::kMeter;
};

// How far the registers of a place (channel or output, from 0) lie behind those of the first. A place that
// there is not counts as the first.
int LocationOffset(Location location, int index);
// The first register of a parameter, or of a block, for a channel or output.
int AddressOf(const Parameter& parameter, int index);
RegisterSpan SpanOf(const Block& block, int index);

// Its places are digital outputs.
bool IsOutput(Location location);
inline bool IsOutput(const Parameter& parameter) { return IsOutput(parameter.location); }
// "CH1", "DO2", or nothing for what a meter has once. The same in every language.
std::string PlaceName(Location location, int index);

// How many places of this kind a meter of this shape has registers for.
int LocationCount(Location location, const MeterFacts& facts);
// Whether a meter of this shape has the parameter for a channel or output.
bool ExistsIn(const Parameter& parameter, const MeterFacts& facts, int index);

// The text that an entry shows for the value at `start` of `data`. Not for codes.
std::string ShowValue(const Parameter& parameter, const MeterFacts& facts, std::span<const std::uint8_t> data,
                      std::size_t start);
// The code at `start` of `data`.
int CodeAt(const Parameter& parameter, std::span<const std::uint8_t> data, std::size_t start);

// A typed text as register bytes. A text with a fault gives no bytes.
enum class TextFault : std::uint8_t {
  kNone,
  kNoNumber,
  kComma,       // no number for its comma
  kOutOfRange,  // it does not fit the register
};
struct Encoded {
  std::vector<std::uint8_t> bytes;
  TextFault fault = TextFault::kNone;
};
Encoded EncodeText(const Parameter& parameter, const MeterFacts& facts, std::string_view text);
std::vector<std::uint8_t> EncodeCode(int code);
// Least and greatest number that the register can hold, as they would be typed. Not for doubles.
std::string LeastText(const Parameter& parameter, const MeterFacts& facts);
std::string GreatestText(const Parameter& parameter, const MeterFacts& facts);
// Why a text gives no bytes, in the language of `facts`; empty for kNone.
std::string TextFaultText(const Parameter& parameter, const ToldFacts& facts, TextFault fault);

}  // namespace vlt
