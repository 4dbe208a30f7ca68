// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of the meter's shape, with one answer each. The numbers come from SpecClass and PathMode of
// the shared state: what the meter last told, or the last session's until it does.
#pragma once

#include "state/meter_facts.h"
#include "state/meter_models.h"

namespace vlt {

// How many measurements the meter makes; the results of GetChannelConfig.
enum class ChannelConfig { kUnknown = -1, kOneChannel = 1, kTwoPaths = 2, kTwoPipes = 3 };

// Values of PathMode.
inline constexpr int kOnePathMode = 0;
inline constexpr int kTwoPathsMode = 1;
inline constexpr int kTwoPipesMode = 2;
inline constexpr int kUnknownMode = -1;

// The total unit that a code of the meter stands for. Code 8 has no text in metric units and counts as 0.
constexpr int TotalUnitOf(int unit_flag, int code) {
  constexpr int kWithoutMetric = 8;
  return unit_flag == 0 && code == kWithoutMetric ? 0 : code;
}

// Its model measures on one channel alone, or on several. Neither while the model is not known.
inline bool IsSingleChannel(const MeterFacts& facts) {
  const MeterModel* model = ModelOf(facts);
  return model != nullptr && model->channels == 1;
}
inline bool HasSeveralChannels(const MeterFacts& facts) {
  const MeterModel* model = ModelOf(facts);
  return model != nullptr && model->channels > 1;
}
inline bool HasThirdOutput(const MeterFacts& facts) {
  const MeterModel* model = ModelOf(facts);
  return model != nullptr && model->outputs > 2;
}
// A model of one channel has no mode.
inline bool HasTwoPipes(const MeterFacts& facts) {
  return !IsSingleChannel(facts) && facts.PathMode == kTwoPipesMode;
}

// Its model has the registers of the heat calculation, or is known to lack them.
inline bool HasHeatRegisters(const MeterFacts& facts) {
  const MeterModel* model = ModelOf(facts);
  return model != nullptr && model->heat;
}
inline bool LacksHeatRegisters(const MeterFacts& facts) {
  const MeterModel* model = ModelOf(facts);
  return model != nullptr && !model->heat;
}
// The meter calculates heat: with these registers, on one pipe.
inline bool HasHeat(const MeterFacts& facts) { return HasHeatRegisters(facts) && !HasTwoPipes(facts); }
// It is not known to lack it: what a page offers, also while no meter has answered.
inline bool MayHaveHeat(const MeterFacts& facts) { return !LacksHeatRegisters(facts) && !HasTwoPipes(facts); }

// The path mode of a meter that makes so many measurements.
constexpr int PathModeOf(ChannelConfig config) {
  return config == ChannelConfig::kUnknown ? kUnknownMode : static_cast<int>(config) - 1;
}

// What GetChannelConfig last found, without asking.
inline ChannelConfig KnownChannelConfig(const MeterFacts& facts) {
  if (IsSingleChannel(facts)) return ChannelConfig::kOneChannel;
  if (!HasSeveralChannels(facts) || facts.PathMode < kOnePathMode || facts.PathMode > kTwoPipesMode) {
    return ChannelConfig::kUnknown;
  }
  return static_cast<ChannelConfig>(facts.PathMode + 1);
}

}  // namespace vlt
