// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a line of JSON as strictly as its grammar asks, as far as the companion writes it: one flat object of
// texts, whole numbers, null, and lists of texts.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vlt::test {

// Keys and values in their order: texts as they are, numbers by their digits, null as no text, each entry of
// a list under the list's key. Nothing for a line that is not such an object, or has a key twice.
using JsonFields = std::vector<std::pair<std::string, std::string>>;
std::optional<JsonFields> ParseJson(std::string_view line);

}  // namespace vlt::test
