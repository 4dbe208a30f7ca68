// SPDX-License-Identifier: GPL-3.0-or-later
// The condition of an ultrasonic path: what the meter works with, as rows of data that know no control.
// Addresses and layout come from the meter's register map.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "meter/parameter.h"

namespace vlt {

enum class ConditionUnit : std::uint8_t {
  kNone,
  kVelocity,  // by unit system
  kAngle,     // as the language writes degrees
  kMicrosecond,
  kNanosecond,
  kPercent,
};

struct ConditionRow {
  std::string_view name;  // "condition.wedge_velocity"
  int byte;               // its first one in the block
  Wire wire;
  int decimals;  // the integer in the register is the value times ten to that power
  int caption;   // text id
  int symbol = 0;
  bool calculated = false;  // follows from the installation, is not measured
  ConditionUnit unit = ConditionUnit::kNone;
};

// Registers of CH1 and CH2.
inline constexpr Block kConditionBlock{ReadFunction::kInput, 0x0030, 36, Location::kPipe};

inline constexpr int kConditionRows = 26;
// In the order of the registers.
std::span<const ConditionRow, kConditionRows> ConditionTable();

// The value of a row out of the block.
std::string ConditionText(const ConditionRow& row, std::span<const std::uint8_t> block);
// "[m/s]"; empty without a unit.
std::string ConditionUnitText(ConditionUnit unit, int unit_flag, Language language);

}  // namespace vlt
