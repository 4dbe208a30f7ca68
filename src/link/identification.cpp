// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/identification.h"

#include <algorithm>

#include "link/device_queries.h"
#include "link/learn.h"
#include "link/registers.h"
#include "state/device_facts.h"
#include "values/codecs.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

// Of the meter's register map.
constexpr RegisterSpan kUnitAndLanguage{.address = 0x0100, .count = 2};
constexpr RegisterSpan kUnitLanguageAndId{.address = 0x0100, .count = 3};
constexpr RegisterSpan kSpecification{.address = 0x0148, .count = 1};
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
  state.ForgetAll();
  state.IdentifiedAt.clear();
  state.PathModeKnown = false;
  state.SpecNumber = -1;
  for (std::string* text : {&state.MeterType, &state.MeterVersion, &state.MeterIdNo, &state.MeterSpecNo}) {
    text->clear();
  }
}

bool ReadIdentification(App& app) {
  RegisterData data;
  ForgetMeter(app.state);
  if (!ReadRegisters(app, kUnitAndLanguage, data)) return false;
  Learn(app, {Fact::kUnitSystem}, BytesToInt16(data, 0), app.state.LastErrorText.empty());
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
  if (queries.heat_always || spec_class == kFullModel) RefreshHeatUnits(app);
  if (!queries.operation_mode_first) GetOperationMode(app);
}

bool ReadIdentity(App& app) {
  SharedState& state = app.state;
  const int paths = GetPathMode(app);
  state.PathModeKnown = paths >= kOnePathMode && paths <= kTwoPipesMode;
  if (state.PathModeKnown) TakePathMode(app, paths);
  bool whole = state.PathModeKnown;
  whole = Ask(app, kType, TextOf, state.MeterType) && whole;
  whole = Ask(app, kVersion, TextOf, state.MeterVersion) && whole;
  whole = Ask(app, kUnitLanguageAndId, ThirdNumberOf, state.MeterIdNo) && whole;
  return Ask(app, kSpecification, NumberOf, state.MeterSpecNo) && whole;
}

}  // namespace vlt
