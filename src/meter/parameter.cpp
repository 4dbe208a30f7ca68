// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/parameter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_files.h"
#include "values/codecs.h"
#include "values/encode.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr int kPaddedWidth = 4;
constexpr int kCelsius = 0;  // of TempUnit

// By place: offsets of its registers from those of the first.
struct Layout {
  Location location;
  int count;
  std::array<int, 4> offsets;
  bool outputs = false;
};
constexpr Layout kLayouts[] = {
    {Location::kMeter, 1, {0}},
    {Location::kPipe, 2, {0, 0x1388}},
    {Location::kChannel, 3, {0, 0x1388, 0x1B58}},
    {Location::kPath, 2, {0, 0x1300}},
    {Location::kOutput, 4, {0, 0x20, 0x40, 0x0410 - 0x005A}, true},
    {Location::kThermalOutput, 4, {0, 0x1A, 0x34, 0x4E}, true},
    {Location::kOutputRow, 4, {0, 2, 4, 6}, true},
};

const Layout& LayoutOf(Location location) { return kLayouts[static_cast<std::size_t>(location)]; }

double TenTo(int power) {
  double result = 1;
  for (int i = 0; i < power; ++i) result *= 10;
  return result;
}

double NumberAt(const Parameter& parameter, std::span<const std::uint8_t> data, std::size_t start) {
  switch (parameter.wire) {
    case Wire::kUInt16:
    case Wire::kWord:
      return BytesToUInt16(data, start);
    case Wire::kInt32:
      return BytesToInt32(data, start);
    case Wire::kDouble:
      return BytesToDouble(data, start);
    default:
      return BytesToInt16(data, start);
  }
}

// Bytes that are no printable characters read as blanks, those behind the text are left out.
std::string CharactersAt(const Parameter& parameter, std::span<const std::uint8_t> data, std::size_t start) {
  std::string text;
  for (const std::uint8_t byte : data.subspan(start, static_cast<std::size_t>(parameter.characters))) {
    text += byte > 0x20 && byte < 0x7F ? static_cast<char>(byte) : ' ';
  }
  text.erase(text.find_last_not_of(' ') + 1);
  return text;
}

template <std::size_t N>
std::vector<std::uint8_t> Bytes(const std::array<std::uint8_t, N>& bytes) {
  return {bytes.begin(), bytes.end()};
}

int DecimalsOf(const Parameter& parameter, const MeterFacts& facts) {
  return parameter.show == Show::kDecimals ? parameter.decimals.In(facts.UnitFlag) : 0;
}

struct Range {
  double least;
  double greatest;
};
Range RangeOf(Wire wire) {
  switch (wire) {
    case Wire::kUInt16:
      return {0, 65535};
    case Wire::kWord:
      return {-32768, 65535};
    case Wire::kInt32:
      return {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()};
    default:
      return {-32768, 32767};
  }
}

}  // namespace

int LocationOffset(Location location, int index) {
  const Layout& layout = LayoutOf(location);
  return index > 0 && index < layout.count ? layout.offsets[static_cast<std::size_t>(index)] : 0;
}

int AddressOf(const Parameter& parameter, int index) {
  return parameter.address + LocationOffset(parameter.location, index);
}

RegisterSpan SpanOf(const Block& block, int index) {
  return {.function = block.function,
          .address = block.address + LocationOffset(block.location, index),
          .count = block.count};
}

bool IsOutput(Location location) { return LayoutOf(location).outputs; }

std::string PlaceName(Location location, int index) {
  if (location == Location::kMeter) return {};
  return (IsOutput(location) ? "DO" : "CH") + std::to_string(index + 1);
}

int LocationCount(Location location, const MeterFacts& facts) {
  const Layout& layout = LayoutOf(location);
  const MeterModel* model = ModelOf(facts);
  if (model == nullptr || location == Location::kMeter) return layout.count;
  if (layout.outputs) return std::min(model->outputs, layout.count);
  const bool computes = location == Location::kChannel && model->channels > 1;
  return std::min(model->channels + (computes ? 1 : 0), layout.count);
}

bool ExistsIn(const Parameter& parameter, const MeterFacts& facts, int index) {
  if (index < 0 || index >= LocationCount(parameter.location, facts)) return false;
  switch (parameter.exists) {
    case Exists::kNotSingleChannel:
      return !IsSingleChannel(facts);
    case Exists::kHeat:
      return MayHaveHeat(facts);
    case Exists::kMeasuring:
      return index < kComputedChannel;
    default:
      return true;
  }
}

std::string ShowValue(const Parameter& parameter, const MeterFacts& facts, std::span<const std::uint8_t> data,
                      std::size_t start) {
  if (parameter.wire == Wire::kCharacters) return CharactersAt(parameter, data, start);
  const double number = NumberAt(parameter, data, start);
  switch (parameter.show) {
    case Show::kDigits:
      return DigitsText(number, parameter.digits);
    case Show::kCoefficient:
      return FixedText(CutDigits(number, parameter.digits - IntDigitCount(number)), 3);
    case Show::kTemperature: {
      const int decimals = facts.TempUnit == kCelsius ? 1 : 2;
      return FixedText(CutDigits(number, decimals), decimals);
    }
    case Show::kPadded:
      return ZeroPadded(static_cast<int>(number), kPaddedWidth);
    case Show::kDecimals: {
      const int decimals = DecimalsOf(parameter, facts);
      return FixedText(number / TenTo(decimals), decimals);
    }
    default:
      return PlainText(number);
  }
}

int CodeAt(const Parameter& parameter, std::span<const std::uint8_t> data, std::size_t start) {
  return parameter.wire == Wire::kUInt16 ? BytesToUInt16(data, start) : BytesToInt16(data, start);
}

Encoded EncodeText(const Parameter& parameter, const MeterFacts& facts, std::string_view text) {
  const std::optional<double> number = ParseNumber(text);
  if (!number) {
    const bool comma = text.find(',') != std::string_view::npos;
    return {.bytes = {}, .fault = comma ? TextFault::kComma : TextFault::kNoNumber};
  }
  if (parameter.wire == Wire::kDouble) return {.bytes = Bytes(DoubleToBytes(*number))};
  const int decimals = DecimalsOf(parameter, facts);
  if (parameter.wire == Wire::kInt32) {
    const auto scaled = ScaledInt32(*number, decimals);
    if (scaled) return {.bytes = Bytes(Int32ToBytes(*scaled))};
  } else {
    auto scaled =
        parameter.wire == Wire::kUInt16 ? ScaledUInt16(*number, decimals) : ScaledInt16(*number, decimals);
    if (!scaled && parameter.wire == Wire::kWord) scaled = ScaledUInt16(*number, decimals);
    if (scaled) return {.bytes = Bytes(Int16ToBytes(*scaled))};
  }
  return {.bytes = {}, .fault = TextFault::kOutOfRange};
}

std::vector<std::uint8_t> EncodeCode(int code) { return Bytes(Int16ToBytes(code)); }

std::string LeastText(const Parameter& parameter, const MeterFacts& facts) {
  const int decimals = DecimalsOf(parameter, facts);
  return FixedText(RangeOf(parameter.wire).least / TenTo(decimals), decimals);
}

std::string GreatestText(const Parameter& parameter, const MeterFacts& facts) {
  const int decimals = DecimalsOf(parameter, facts);
  return FixedText(RangeOf(parameter.wire).greatest / TenTo(decimals), decimals);
}

std::string TextFaultText(const Parameter& parameter, const ToldFacts& facts, TextFault fault) {
  static constexpr int kTexts[] = {0, text::kNoNumber, text::kComma, text::kDoesNotFit};
  if (fault == TextFault::kNone) return {};
  const std::string words(LookupText(kTexts[static_cast<std::size_t>(fault)], facts.Spoken()));
  if (fault != TextFault::kOutOfRange) return words;
  return FormatText(words, {LeastText(parameter, facts), GreatestText(parameter, facts)});
}

}  // namespace vlt
