// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/encode.h"

#include <cmath>
#include <limits>

#include "values/codecs.h"
#include "values/number_text.h"

namespace vlt {
namespace {

std::optional<std::int32_t> Within(std::optional<std::int64_t> value, std::int64_t lowest,
                                   std::int64_t highest) {
  if (!value || *value < lowest || *value > highest) return std::nullopt;
  return static_cast<std::int32_t>(*value);
}

}  // namespace

std::optional<std::int64_t> ScaledInteger(double value, int decimals) {
  constexpr double kLimit = 9223372036854775808.0;  // 2 to the 63rd
  const double scaled = std::trunc(WithoutNoise(CutDigits(value, decimals) * std::pow(10.0, decimals)));
  if (!(scaled >= -kLimit && scaled < kLimit)) return std::nullopt;
  return static_cast<std::int64_t>(scaled);
}

std::optional<std::int32_t> ScaledInt16(double value, int decimals) {
  return Within(ScaledInteger(value, decimals), std::numeric_limits<std::int16_t>::min(),
                std::numeric_limits<std::int16_t>::max());
}

std::optional<std::int32_t> ScaledUInt16(double value, int decimals) {
  return Within(ScaledInteger(value, decimals), 0, std::numeric_limits<std::uint16_t>::max());
}

std::optional<std::int32_t> ScaledInt32(double value, int decimals) {
  return Within(ScaledInteger(value, decimals), std::numeric_limits<std::int32_t>::min(),
                std::numeric_limits<std::int32_t>::max());
}

}  // namespace vlt
