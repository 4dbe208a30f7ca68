// SPDX-License-Identifier: GPL-3.0-or-later
// The register map of the holding space: addresses, factory values, limits.
#pragma once

#include <cstdint>
#include <limits>
#include <map>

#include "sim/memory.h"

namespace sim {

// Distance of a channel's registers from those of CH1. CH3 is the computed channel and has fewer of them.
inline constexpr std::uint32_t kChannel2 = 0x1388;
inline constexpr std::uint32_t kChannel3 = 0x1B58;

// Specification numbers that stand for the two models when no other number is asked for.
inline constexpr int kFullSpecification = 81;
inline constexpr int kSingleSpecification = 182;

// A model with one measuring channel: the specification number less 81 is above 100 and no multiple of 100.
// It has no CH2, CH3, heat calculation, path mode, second analog output, DO3 and DO4.
bool IsSingleChannel(int specification);

enum class Width { Word, Long, Double };

// What a register takes. A write outside is refused; a double takes any finite number.
struct Limit {
  Width width = Width::Word;
  double low = 0;
  double high = 0;
};

struct Holding {
  Memory memory;
  std::map<std::uint32_t, Limit> limits;
};

// The map of a model with its factory values, metric units.
Holding FactoryHolding(int specification);

// Some blocks answer at a second address too. Gives the address of the block itself, or `address` when it is
// none.
std::uint32_t ResolveHolding(std::uint32_t address);
std::uint32_t ResolveInput(std::uint32_t address);

}  // namespace sim
