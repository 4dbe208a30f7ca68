// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/offered_codes.h"

#include <algorithm>
#include <numeric>

#include "meter/display_table.h"
#include "meter/value_text.h"
#include "state/device_facts.h"
#include "values/code_tables.h"

namespace vlt {
namespace {

constexpr int kSecondOutput = 1;
constexpr int kNormalMode = 0;  // of OperationMode

using Codes = std::vector<int>;

Codes FromTo(int first, int last) {
  Codes codes(static_cast<std::size_t>(std::max(last - first + 1, 0)));
  std::iota(codes.begin(), codes.end(), first);
  return codes;
}

int LastWord(const Parameter& row, const MeterFacts& facts) {
  if (row.words[0] != 0) return 1;
  const CodeContext context{.unit_flag = facts.UnitFlag, .operation_mode = facts.OperationMode};
  return static_cast<int>(CodeTexts(context, row.codes).size()) - 1;
}

// In the normal mode the first code stands for no count.
Codes SendCounts(int last, const MeterFacts& facts) {
  return FromTo(facts.OperationMode == kNormalMode ? 1 : 0, last);
}

// The computed channel of two pipes knows the flow alone.
Codes RangeKinds(int channel, const MeterFacts& facts) {
  constexpr int kFlow = 1;
  return HasTwoPipes(facts) && channel == kComputedChannel ? Codes{kFlow} : FromTo(0, kFlow);
}

// The functions of the heat calculation come last, and behind them one that DO2 alone has.
Codes OutputFunctions(int output, const MeterFacts& facts) {
  constexpr int kLastFlow = 9;
  constexpr int kLastHeat = 18;
  if (!MayHaveHeat(facts)) return FromTo(0, kLastFlow);
  return FromTo(0, output == kSecondOutput ? kLastHeat + 1 : kLastHeat);
}

// The items of the heat calculation come last; the computed channel of two pipes has no velocity.
Codes DisplayItems(int channel, int last, const MeterFacts& facts) {
  constexpr int kLastFlow = 6;
  const bool two_pipes = HasTwoPipes(facts);
  if (two_pipes && channel == kComputedChannel) return FromTo(1, kLastFlow);
  return FromTo(0, LacksHeatRegisters(facts) || (two_pipes && channel != kNoChannel) ? kLastFlow : last);
}

// The flows of CH1 to CH3, then their heat. A mode that nobody knows rules nothing out.
Codes Sources(const MeterFacts& facts) {
  const bool heat = MayHaveHeat(facts);
  if (IsSingleChannel(facts) || facts.PathMode == kOnePathMode) return heat ? Codes{0, 3} : Codes{0};
  return FromTo(0, heat ? 5 : 2);
}

}  // namespace

std::vector<int> OfferedCodes(const ParameterPlace& place, const MeterFacts& facts, int display_channel) {
  constexpr int kMostMinutes = 99;
  const Parameter& row = *place.row;
  if (!row.IsCode()) return {};
  const int last = LastWord(row, facts);
  switch (row.offer) {
    case Offer::kSendCounts:
      return SendCounts(last, facts);
    case Offer::kRangeKinds:
      return RangeKinds(place.index, facts);
    case Offer::kOutputFunctions:
      return OutputFunctions(place.index, facts);
    case Offer::kDisplayItems:
      return DisplayItems(display_channel, last, facts);
    case Offer::kSources:
      return Sources(facts);
    case Offer::kMinutes:
      return FromTo(0, kMostMinutes);
    default:
      return FromTo(0, last);
  }
}

bool IsOffered(const ParameterPlace& place, const MeterFacts& facts, int code) {
  const Codes codes = OfferedCodes(place, facts);
  return std::find(codes.begin(), codes.end(), code) != codes.end();
}

std::vector<std::string> EntriesOf(const Parameter& row, const ToldFacts& facts,
                                   const std::vector<int>& codes) {
  const std::vector<std::string> words = CodeWords(row, facts);
  std::vector<std::string> entries;
  for (const int code : codes) {
    entries.push_back(row.HasWords() ? words.at(static_cast<std::size_t>(code)) : std::to_string(code));
  }
  return entries;
}

const Parameter* ChannelOfItem(const Parameter& row) {
  if (&row == &DisplayRow("item_1")) return &DisplayRow("channel_1");
  return &row == &DisplayRow("item_2") ? &DisplayRow("channel_2") : nullptr;
}

}  // namespace vlt
