// What is known of the meter's shape, with one answer each. The numbers come from SpecClass and PathMode of
// the shared state: what the meter last told, or the last session's until it does.
#pragma once

#include "state/shared_state.h"

namespace vlt {

// How many measurements the meter makes; the results of GetChannelConfig.
enum class ChannelConfig { kUnknown = -1, kOneChannel = 1, kTwoPaths = 2, kTwoPipes = 3 };

// Values of SpecClass and PathMode.
inline constexpr int kFullModel = 0;
inline constexpr int kSingleChannelModel = 1;
inline constexpr int kOnePathMode = 0;
inline constexpr int kTwoPathsMode = 1;
inline constexpr int kTwoPipesMode = 2;

constexpr bool IsFullModel(const SharedState& state) { return state.SpecClass == kFullModel; }
constexpr bool IsSingleChannel(const SharedState& state) { return state.SpecClass == kSingleChannelModel; }
constexpr bool IsOnTwoPipes(const SharedState& state) { return state.PathMode == kTwoPipesMode; }

// The meter has the heat calculation: a full model on one pipe.
constexpr bool HasHeat(const SharedState& state) { return IsFullModel(state) && !IsOnTwoPipes(state); }
// It is not known to lack it: what a page offers, also while no meter has answered.
constexpr bool MayHaveHeat(const SharedState& state) {
  return !IsSingleChannel(state) && !IsOnTwoPipes(state);
}

// What GetChannelConfig last found, without asking.
constexpr ChannelConfig KnownChannelConfig(const SharedState& state) {
  if (IsSingleChannel(state)) return ChannelConfig::kOneChannel;
  if (!IsFullModel(state) || state.PathMode < kOnePathMode || state.PathMode > kTwoPipesMode) {
    return ChannelConfig::kUnknown;
  }
  return static_cast<ChannelConfig>(state.PathMode + 1);
}

}  // namespace vlt
