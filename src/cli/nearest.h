// SPDX-License-Identifier: GPL-3.0-or-later
// Names that a person may have meant.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vlt {

// At most three of `names`, the nearest first: those that hold `name` as a whole, and those that a few
// letters make of it. The case of letters does not count.
std::vector<std::string_view> NearestNames(std::string_view name, std::span<const std::string_view> names);

// "a, b, c".
std::string Listed(std::span<const std::string_view> names);
std::string Listed(std::span<const std::string> names, std::string_view between = ", ");

// With a to z for A to Z.
std::string LowerText(std::string_view text);

}  // namespace vlt
