// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/identification.h"

#include <algorithm>

#include "link/registers.h"
#include "meter/device_queries.h"
#include "meter/facts.h"
#include "meter/system_table.h"
#include "state/device_facts.h"
#include "values/codecs.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

// Of the meter's register map.
constexpr RegisterSpan kUnitAndLanguage{.address = 0x0100, .count = 2};
constexpr RegisterSpan kUnitLanguageAndId{.address = 0x0100, .count = 3};
constexpr RegisterSpan kSpecificationNumber{.address = SystemRow("specification").address, .count = 1};
constexpr RegisterSpan kVersion{.function = ReadFunction::kInput, .address = 0x0086, .count = 7};
constexpr RegisterSpan kType{.function = ReadFunction::kInput, .address = 0x0094, .count = 4};

constexpr int kShownDigits = 4;

std::string NumberOf(const RegisterData& data) { return ZeroPadded(BytesToInt16(data, 0), kShownDigits); }
std::string ThirdNumberOf(const RegisterData& data) {
  return ZeroPadded(BytesToInt16(data, 4), kShownDigits);
}

std::string TextOf(const RegisterData& data) {
  std::string text = CutAtNul(std::string(data.begin(), data.end()));
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c < ' ' || c > '~'; }, ' ');
  return std::string(Trim(text));
}

bool Ask(App& app, const RegisterSpan& span, std::string (*shown)(const RegisterData&), std::string& target) {
  RegisterData data;
  if (!ReadRegisters(app, span, data)) return false;
  target = shown(data);
  return true;
}

}  // namespace

void ForgetMeter(SharedState& state) {
  state.Learnt.ForgetAll();
  state.IdentifiedAt.clear();
  state.PathModeKnown = false;
  state.SpecNumber = -1;
  for (std::string* text : {&state.MeterType, &state.MeterVersion, &state.MeterIdNo, &state.MeterSpecNo}) {
    text->clear();
  }
}

std::string KnownIdNumber(const SharedState& state) {
  return state.Learnt.writes.Last(SystemRow("id_number").address) > state.MeterIdNoOrder ? ""
                                                                                         : state.MeterIdNo;
}

bool ReadIdentification(App& app) {
  RegisterData data;
  ForgetMeter(app.state);
  const ExchangeReport exchange = ReadRegisters(app, kUnitAndLanguage, data);
  if (!exchange) return false;
  Learn(app, {Fact::kUnitSystem}, BytesToInt16(data, 0), exchange.Clean());
  ClearProcessCache(app);
  app.state.SystemLangFlag = BytesToInt16(data, 2);
  app.state.IdentifiedAt = DateTimeText(app.platform.clock.Now());
  return true;
}

void ReadUnits(App& app, const UnitQueries& queries) {
  RefreshChannelUnits(app, 0);
  if (queries.operation_mode_first) GetOperationMode(app);
  const int spec_class = GetSpecClass(app);
  if (spec_class >= 0) app.state.SpecClass = spec_class;
  if (queries.heat_always || (spec_class >= 0 && HasHeatRegisters(app.state))) RefreshHeatUnits(app);
  if (!queries.operation_mode_first) GetOperationMode(app);
}

bool ReadIdentity(App& app) {
  SharedState& state = app.state;
  const QueryAnswer paths = AskPathMode(app);
  state.PathModeKnown = paths.value >= kOnePathMode && paths.value <= kTwoPipesMode;
  if (state.PathModeKnown) TakePathMode(app, paths);
  bool whole = state.PathModeKnown;
  whole = Ask(app, kType, TextOf, state.MeterType) && whole;
  whole = Ask(app, kVersion, TextOf, state.MeterVersion) && whole;
  const bool numbered = Ask(app, kUnitLanguageAndId, ThirdNumberOf, state.MeterIdNo);
  if (numbered) state.MeterIdNoOrder = state.Learnt.writes.Tick();
  whole = numbered && whole;
  return Ask(app, kSpecificationNumber, NumberOf, state.MeterSpecNo) && whole;
}

}  // namespace vlt
