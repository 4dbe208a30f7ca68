// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/noise.h"

#include <array>
#include <charconv>
#include <cmath>

namespace vlt {

double WithoutNoise(double value) {
  if (!std::isfinite(value)) return value;
  std::array<char, 64> buffer{};
  const auto done = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                  std::chars_format::scientific, kDoubleDigits - 1);
  double result = value;
  std::from_chars(buffer.data(), done.ptr, result);
  return result;
}

}  // namespace vlt
