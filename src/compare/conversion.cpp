// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/conversion.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <span>
#include <string_view>

#include "meter/offered_codes.h"
#include "meter/units.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids_compare.h"
#include "values/codecs.h"
#include "values/encode.h"
#include "values/number_text.h"
#include "values/unit_names.h"

namespace vlt {
namespace {

// The text id of why a row is never sent, or 0.
int NeverReason(const Parameter& row) {
  return row.write == WriteWith::kNothing ? text::kMeterComputes : row.never_sent;
}

// --- units
// -----------------------------------------------------------------------------------------------------

// How many base units one of these is; the lists follow the codes of the unit names. US gallon, barrel of 42
// gallons, foot and acre-foot, and the BTU of the steam table are exact by definition.
constexpr double kGallon = 3.785411784e-3;  // m3
constexpr double kFoot3 = 0.028316846592;
constexpr double kBarrel = 0.158987294928;
constexpr double kAcreFoot = 1233.48183754752;
constexpr double kMinute = 60;
constexpr double kHour = 3600;
constexpr double kDay = 86400;
constexpr double kBtu = 1.05505585262e-3;  // MJ

constexpr double kMetricFlow[] = {1e-3,
                                  1e-3 / kMinute,
                                  1e-3 / kHour,
                                  1e-3 / kDay,
                                  1 / kDay,
                                  1e3 / kDay,
                                  1,
                                  1 / kMinute,
                                  1 / kHour,
                                  1 / kDay,
                                  1e3 / kDay,
                                  1e6 / kDay,
                                  kBarrel,
                                  kBarrel / kMinute,
                                  kBarrel / kHour,
                                  kBarrel / kDay,
                                  1e3 * kBarrel / kDay,
                                  1e6 * kBarrel / kDay};
constexpr double kEnglishFlow[] = {
    kGallon, kGallon / kMinute, kGallon / kHour, kGallon / kDay, 1e3 * kGallon / kDay, 1e6 * kGallon / kDay,
    kFoot3,  kFoot3 / kMinute,  kFoot3 / kHour,  kFoot3 / kDay,  1e3 * kFoot3 / kDay,  1e6 * kFoot3 / kDay,
    kBarrel, kBarrel / kMinute, kBarrel / kHour, kBarrel / kDay, 1e3 * kBarrel / kDay, 1e6 * kBarrel / kDay};
constexpr double kMetricTotal[] = {1e-6, 1e-3, 1, 1e3, 1e6, 1e-3 * kBarrel, kBarrel, 1e3 * kBarrel};
constexpr double kEnglishTotal[] = {kGallon,        1e3 * kGallon, kFoot3,        1e3 * kFoot3, 1e6 * kFoot3,
                                    1e-3 * kBarrel, kBarrel,       1e3 * kBarrel, kAcreFoot};
constexpr double kHeat[] = {1, 1e3, kBtu, 1e3 * kBtu, 1e6 * kBtu, 3.6, 3600};  // MJ, or MJ in an hour
// Length, velocity, viscosity.
constexpr double kMetricBase[] = {1, 1, 1};
constexpr double kEnglishBase[] = {25.4, 0.3048, 0.09290304};

// A value in a unit is `factor` times the value plus `offset` in the base unit.
struct Scale {
  double factor = 1;
  double offset = 0;
};

std::optional<double> FactorIn(const std::vector<std::string>& names, std::span<const double> factors,
                               std::string_view unit) {
  const auto at = std::find(names.begin(), names.end(), unit);
  const auto index = static_cast<std::size_t>(at - names.begin());
  if (at == names.end() || index >= factors.size()) return std::nullopt;
  return factors[index];
}

std::optional<double> BaseFactor(UnitKind kind, std::string_view unit) {
  const auto at = static_cast<std::size_t>(kind);
  if (unit == BuildBaseUnitNames(0).at(at)) return kMetricBase[at];
  if (unit == BuildBaseUnitNames(1).at(at)) return kEnglishBase[at];
  return std::nullopt;
}

std::optional<double> Either(std::optional<double> first, std::optional<double> second) {
  return first ? first : second;
}

std::optional<Scale> TemperatureScale(const Parameter& row, std::string_view unit, Language language) {
  static constexpr Scale kScales[] = {{1, 0}, {1, -273.15}, {5.0 / 9, -160.0 / 9}};  // degC, K, F
  const std::vector<std::string> names = BuildTempUnitNames(language);
  const auto at = std::find(names.begin(), names.end(), unit);
  const auto index = static_cast<std::size_t>(at - names.begin());
  if (at == names.end() || index >= std::size(kScales)) return std::nullopt;
  return row.is_difference ? Scale{kScales[index].factor, 0} : kScales[index];
}

std::optional<double> Factor(UnitKind kind, std::string_view unit, Language language) {
  switch (kind) {
    case UnitKind::kLength:
    case UnitKind::kVelocity:
    case UnitKind::kViscosity:
      return BaseFactor(kind, unit);
    case UnitKind::kFlow:
      return Either(FactorIn(BuildFlowUnitNames(0), kMetricFlow, unit),
                    FactorIn(BuildFlowUnitNames(1), kEnglishFlow, unit));
    case UnitKind::kTotal:
      return Either(FactorIn(BuildTotalUnitNames(0), kMetricTotal, unit),
                    FactorIn(BuildTotalUnitNames(1), kEnglishTotal, unit));
    case UnitKind::kHeatFlow:
      return FactorIn(BuildHeatFlowUnitNames(language), kHeat, unit);
    case UnitKind::kHeatTotal:
      return FactorIn(BuildHeatTotalUnitNames(language), kHeat, unit);
    default:
      return std::nullopt;
  }
}

struct Scales {
  Scale from;
  Scale to;
};
// Both units by one base unit; nothing for units of different kinds, as a velocity and a flow.
std::optional<Scales> ScalesOf(const Parameter& row, const std::string& from, const std::string& to,
                               Language language) {
  if (row.unit == UnitKind::kTemperature) {
    const auto a = TemperatureScale(row, from, language);
    const auto b = TemperatureScale(row, to, language);
    return a && b ? std::optional(Scales{*a, *b}) : std::nullopt;
  }
  for (const UnitKind kind : {row.unit, UnitKind::kVelocity}) {
    if (kind != row.unit && row.unit != UnitKind::kFlow) break;
    const auto a = Factor(kind, from, language);
    const auto b = Factor(kind, to, language);
    if (a && b) return Scales{{*a, 0}, {*b, 0}};
  }
  return std::nullopt;
}

// --- numbers
// ---------------------------------------------------------------------------------------------------

double TenTo(int power) { return std::pow(10.0, power); }

int DecimalsIn(const Parameter& row, int unit_flag) {
  return row.show == Show::kDecimals ? row.decimals.In(unit_flag) : 0;
}

double NumberOf(const SideCell& cell) {
  const Parameter& row = *cell.place.row;
  const double scale = TenTo(DecimalsIn(row, cell.unit_flag));
  switch (row.wire) {
    case Wire::kDouble:
      return BytesToDouble(cell.raw, 0);
    case Wire::kInt32:
      return BytesToInt32(cell.raw, 0) / scale;
    case Wire::kUInt16:
      return BytesToUInt16(cell.raw, 0) / scale;
    default:
      return BytesToInt16(cell.raw, 0) / scale;
  }
}

double Apply(const Scale& from, const Scale& to, double number) {
  return (number * from.factor + from.offset - to.offset) / to.factor;
}

// To 15 digits: what a double holds for certain.
double Clean(double number) { return ParseNumber(GeneralText(number)).value_or(number); }

// An exact conversion, as the text that the meter's entry would take; nothing for one that is not.
std::optional<std::vector<std::uint8_t>> Exactly(const SideCell& cell, const Scales& scales,
                                                 const MeterFacts& to) {
  const Parameter& row = *cell.place.row;
  const double number = NumberOf(cell);
  const double result = Clean(Apply(scales.from, scales.to, number));
  if (row.wire == Wire::kDouble) {
    // Without loss: the way back leads to the same number.
    const bool same =
        std::isfinite(result) && GeneralText(Apply(scales.to, scales.from, result)) == GeneralText(number);
    if (!same) return std::nullopt;
    const auto bytes = DoubleToBytes(result);
    return std::vector<std::uint8_t>(bytes.begin(), bytes.end());
  }
  const double scaled = Clean(result * TenTo(DecimalsIn(row, to.UnitFlag)));
  if (scaled != std::nearbyint(scaled)) return std::nullopt;
  Encoded encoded = EncodeText(row, to, FixedText(result, DecimalsIn(row, to.UnitFlag)));
  if (encoded.fault != TextFault::kNone) return std::nullopt;
  return std::move(encoded.bytes);
}

// --- codes
// -----------------------------------------------------------------------------------------------------

bool SameShape(const MeterFacts& a, const MeterFacts& b) {
  return a.SpecClass == b.SpecClass && (IsSingleChannel(a) || a.PathMode == b.PathMode);
}

class Converter {
 public:
  Converter(const SideCell& cell, const ToldFacts& from, const ToldFacts& to, int output_channel)
      : cell_(cell), row_(*cell.place.row), from_(from), to_(to), output_channel_(output_channel) {}

  Conversion Run() {
    if (!cell_.Known() || cell_.raw.empty()) return Unfit(text::kNoValue);
    if (const int reason = NeverReason(row_)) return Unfit(reason);
    if (!HasPlace(cell_.place, to_)) return Unfit(text::kMeterHasNot);
    return row_.IsCode() ? Code() : Number();
  }

 private:
  std::string Word(int id) const { return LookupText(id, to_.Spoken()); }
  Conversion Unfit(int id, std::initializer_list<std::string_view> parts = {}) const {
    return {.raw = {}, .converted = false, .reason = FormatText(Word(id), parts)};
  }
  Conversion Fit(std::vector<std::uint8_t> raw) const {
    const bool converted = raw != cell_.raw;
    return {.raw = std::move(raw), .converted = converted, .reason = {}};
  }

  Conversion Code() const {
    int code = CodeAt(row_, cell_.raw, 0);
    if (row_.IsOrder(code)) return Unfit(text::kClearsTotals);
    ToldFacts speaker = from_;
    speaker.LangOffset = to_.LangOffset;
    speaker.ModelCode = to_.ModelCode;
    if (row_.unit == UnitKind::kNone) speaker.UnitFlag = cell_.unit_flag;
    const std::vector<std::string> here = CodeWords(row_, speaker);
    const std::vector<std::string> there = CodeWords(row_, to_);
    if (here != there) {
      const bool has_word = code >= 0 && code < static_cast<int>(here.size());
      const std::string word = has_word ? here[static_cast<std::size_t>(code)] : std::to_string(code);
      const auto at = std::find(there.begin(), there.end(), word);
      if (at == there.end() || word.empty()) return Unfit(text::kCodeNotThere, {word});
      code = static_cast<int>(at - there.begin());
    }
    if (!SameShape(from_, to_) && !IsOffered(cell_.place, to_, code)) {
      return Unfit(text::kCodeNotThere, {ValueText(row_, to_, EncodeCode(code))});
    }
    return Fit(EncodeCode(code));
  }

  Conversion Number() const {
    const std::string unit = UnitTextAt(cell_.place, to_, output_channel_);
    if (row_.unit == UnitKind::kNone || cell_.unit == unit) return Fit(cell_.raw);
    if (cell_.unit.empty() || unit.empty()) return Unfit(text::kOtherUnits);
    if (const auto scales = ScalesOf(row_, cell_.unit, unit, to_.Spoken())) {
      if (auto raw = Exactly(cell_, *scales, to_)) return Fit(std::move(*raw));
    }
    return Unfit(text::kNotExact, {cell_.text + " " + cell_.unit, unit});
  }

  const SideCell& cell_;
  const Parameter& row_;
  const ToldFacts& from_;
  const ToldFacts& to_;
  int output_channel_;
};

}  // namespace

Conversion ConvertFor(const SideCell& cell, const ToldFacts& from, const ToldFacts& to, int output_channel) {
  return Converter(cell, from, to, output_channel).Run();
}

bool SameMeter(const MeterIdentity& a, const MeterIdentity& b) {
  const auto alike = [](const std::string& x, const std::string& y) { return !x.empty() && x == y; };
  return alike(a.id_number, b.id_number) && alike(a.specification, b.specification) && alike(a.type, b.type);
}

}  // namespace vlt
