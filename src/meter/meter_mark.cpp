// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/meter_mark.h"

#include <utility>

#include "meter/identification.h"
#include "resources/string_table.h"
#include "resources/text_ids_heal.h"
#include "values/codecs.h"
#include "values/number_text.h"

namespace vlt {
namespace {

// Of the register map of the meter: unit system, language, ID number; and the specification number.
constexpr RegisterSpan kUnitLanguageAndId{.address = 0x0100, .count = 3};
constexpr std::size_t kIdByte = 4;
constexpr RegisterSpan kSpecification{.address = 0x0148, .count = 1};
constexpr int kShownDigits = 4;

// The first thing that differs is told.
bool Agrees(const App& app, const std::optional<int>& known, int found, int text_id, std::string& differs) {
  if (!known || *known == found) return true;
  differs =
      FormatText(app.Text(text_id), {ZeroPadded(found, kShownDigits), ZeroPadded(*known, kShownDigits)});
  return false;
}

}  // namespace

MeterMark KnownMark(const SharedState& state) {
  MeterMark mark;
  if (state.SpecNumber >= 0) mark.specification = state.SpecNumber;
  if (const auto id = ParseNumber(KnownIdNumber(state))) mark.id_number = static_cast<int>(*id);
  return mark;
}

MeterAnswer ProveMeter(App& app, const Target& target, MeterMark& mark) {
  RegisterData data;
  ExchangeReport exchange = ReadRegisters(app, target, kUnitLanguageAndId, data);
  if (!exchange) return {MeterProof::kSilent, std::move(exchange.text)};
  std::string differs;
  const int id = BytesToInt16(data, kIdByte);
  const bool agrees = Agrees(app, mark.id_number, id, text::kOtherIdNumber, differs) &&
                      Agrees(app, mark.unit_system, BytesToInt16(data, 0), text::kOtherUnitSystem, differs);
  if (!agrees) return {MeterProof::kOther, differs};
  if (mark.specification) {
    exchange = ReadRegisters(app, target, kSpecification, data);
    if (!exchange) return {MeterProof::kSilent, std::move(exchange.text)};
    const int number = BytesToInt16(data, 0);
    if (!Agrees(app, mark.specification, number, text::kOtherSpecification, differs)) {
      return {MeterProof::kOther, differs};
    }
  }
  mark.id_number = id;
  return {};
}

}  // namespace vlt
