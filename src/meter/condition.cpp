// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/condition.h"

#include <cmath>

#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/codecs.h"
#include "values/number_text.h"
#include "values/unit_names.h"

namespace vlt {
namespace {

using Unit = ConditionUnit;

constexpr ConditionRow kTable[] = {
    {"condition.wedge_velocity", 0, Wire::kInt16, 0, 4810, 0, true, Unit::kVelocity},
    {"condition.wedge_angle", 2, Wire::kInt16, 1, 3550, 0, true, Unit::kAngle},
    {"condition.pipe_velocity", 4, Wire::kInt16, 0, 4830, 0, true, Unit::kVelocity},
    {"condition.pipe_angle", 6, Wire::kInt16, 1, 3560, 0, true, Unit::kAngle},
    {"condition.lining_velocity", 8, Wire::kInt16, 0, 4820, 0, true, Unit::kVelocity},
    {"condition.lining_angle", 10, Wire::kInt16, 1, 3570, 0, true, Unit::kAngle},
    {"condition.fluid_velocity_expected", 12, Wire::kInt16, 0, 4850, 0, true, Unit::kVelocity},
    {"condition.fluid_angle_expected", 14, Wire::kInt16, 1, 3640, 0, true, Unit::kAngle},
    {"condition.total_time_expected", 16, Wire::kInt16, 0, 3580, 3581, true, Unit::kMicrosecond},
    {"condition.window_open", 18, Wire::kInt16, 0, 3590, 3591, true, Unit::kMicrosecond},
    {"condition.forward_time", 20, Wire::kInt32, 3, 3600, 3601, false, Unit::kMicrosecond},
    {"condition.reverse_time", 24, Wire::kInt32, 3, 3610, 3611, false, Unit::kMicrosecond},
    {"condition.total_time", 28, Wire::kInt32, 3, 3580, 3582, false, Unit::kMicrosecond},
    {"condition.time_difference", 32, Wire::kInt32, 4, 3620, 3621, false, Unit::kNanosecond},
    {"condition.delay_time", 36, Wire::kInt32, 3, 3630, 3631, false, Unit::kMicrosecond},
    {"condition.fluid_angle", 40, Wire::kInt32, 3, 3640, 3641, false, Unit::kAngle},
    {"condition.fluid_velocity", 44, Wire::kInt32, 1, 4850, 4851, false, Unit::kVelocity},
    {"condition.reynolds_number", 48, Wire::kInt32, 0, 3650, 3651},
    {"condition.profile_factor", 52, Wire::kInt32, 4, 4720, 4721},
    {"condition.velocity", 56, Wire::kInt32, 3, 4710, 4711, false, Unit::kVelocity},
    {"condition.signal_up", 60, Wire::kInt16, 2, 3660, 3661, false, Unit::kPercent},
    {"condition.signal_down", 62, Wire::kInt16, 2, 3670, 3671, false, Unit::kPercent},
    {"condition.peak_up", 64, Wire::kUInt16, 0, 3700, 3701},
    {"condition.peak_down", 66, Wire::kUInt16, 0, 3710, 3711},
    {"condition.trigger_up", 68, Wire::kInt16, 2, 3680, 3681, false, Unit::kPercent},
    {"condition.trigger_down", 70, Wire::kInt16, 2, 3690, 3691, false, Unit::kPercent},
};
static_assert(std::size(kTable) == kConditionRows);

// Each row begins where the one before it ends, and the last one ends with the block.
constexpr bool LeavesNoGap() {
  int byte = 0;
  for (const ConditionRow& row : kTable) {
    if (row.byte != byte) return false;
    byte += row.wire == Wire::kInt32 ? 4 : 2;
  }
  return byte == 2 * kConditionBlock.count;
}
static_assert(LeavesNoGap());

std::int32_t RegisterOf(const ConditionRow& row, std::span<const std::uint8_t> block) {
  const auto at = static_cast<std::size_t>(row.byte);
  if (row.wire == Wire::kInt32) return BytesToInt32(block, at);
  return row.wire == Wire::kUInt16 ? BytesToUInt16(block, at) : BytesToInt16(block, at);
}

}  // namespace

std::span<const ConditionRow, kConditionRows> ConditionTable() { return kTable; }

std::string ConditionText(const ConditionRow& row, std::span<const std::uint8_t> block) {
  return FixedText(RegisterOf(row, block) / std::pow(10.0, row.decimals), row.decimals);
}

std::string ConditionUnitText(ConditionUnit unit, int unit_flag, Language language) {
  // The Japanese texts write the degree sign, the others spell it.
  const auto [velocity, length, temperature, angle] =
      SubGetUnitForm10(unit_flag, language == Language::kJapanese ? 0 : 1);
  switch (unit) {
    case Unit::kVelocity:
      return "[" + velocity + "]";
    case Unit::kAngle:
      return "[" + angle + "]";
    case Unit::kMicrosecond:
      return LookupText(text::kMicrosecondUnit, language);
    case Unit::kNanosecond:
      return LookupText(text::kNanosecond, language);
    case Unit::kPercent:
      return LookupText(text::kPercentUnit, language);
    case Unit::kNone:
      break;
  }
  return {};
}

}  // namespace vlt
