// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of the meter's shape, with one answer each. The numbers come from SpecClass and PathMode of
// the shared state: what the meter last told, or the last session's until it does.
#pragma once

#include "state/meter_facts.h"

namespace vlt {

// How many measurements the meter makes; the results of GetChannelConfig.
enum class ChannelConfig { kUnknown = -1, kOneChannel = 1, kTwoPaths = 2, kTwoPipes = 3 };

// Values of SpecClass and PathMode.
inline constexpr int kFullModel = 0;
inline constexpr int kSingleChannelModel = 1;
inline constexpr int kOnePathMode = 0;
inline constexpr int kTwoPathsMode = 1;
inline constexpr int kTwoPipesMode = 2;
inline constexpr int kUnknownMode = -1;

// The model that a specification number (register 0148H) stands for. Numbers below 182 and those a multiple
// of 100 above 81 are full models.
constexpr int SpecClassOf(int specification) {
  constexpr int kBase = 81;
  constexpr int kStep = 100;
  const int x = specification - kBase;
  return x > kStep && x % kStep != 0 ? kSingleChannelModel : kFullModel;
}

// The total unit that a code of the meter stands for. Code 8 has no text in metric units and counts as 0.
constexpr int TotalUnitOf(int unit_flag, int code) {
  constexpr int kWithoutMetric = 8;
  return unit_flag == 0 && code == kWithoutMetric ? 0 : code;
}

constexpr bool IsFullModel(const MeterFacts& state) { return state.SpecClass == kFullModel; }
constexpr bool IsSingleChannel(const MeterFacts& state) { return state.SpecClass == kSingleChannelModel; }
constexpr bool IsOnTwoPipes(const MeterFacts& state) { return state.PathMode == kTwoPipesMode; }

// The meter has the heat calculation: a full model on one pipe.
constexpr bool HasHeat(const MeterFacts& state) { return IsFullModel(state) && !IsOnTwoPipes(state); }
// It is not known to lack it: what a page offers, also while no meter has answered.
constexpr bool MayHaveHeat(const MeterFacts& state) {
  return !IsSingleChannel(state) && !IsOnTwoPipes(state);
}

// The path mode of a meter that makes so many measurements.
constexpr int PathModeOf(ChannelConfig config) {
  return config == ChannelConfig::kUnknown ? kUnknownMode : static_cast<int>(config) - 1;
}

// What GetChannelConfig last found, without asking.
constexpr ChannelConfig KnownChannelConfig(const MeterFacts& state) {
  if (IsSingleChannel(state)) return ChannelConfig::kOneChannel;
  if (!IsFullModel(state) || state.PathMode < kOnePathMode || state.PathMode > kTwoPipesMode) {
    return ChannelConfig::kUnknown;
  }
  return static_cast<ChannelConfig>(state.PathMode + 1);
}

}  // namespace vlt
