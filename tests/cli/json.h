// SPDX-License-Identifier: GPL-3.0-or-later
// Reads a line of JSON as strictly as its grammar asks, as far as the companion writes it: one flat object of
// texts, whole numbers, null, and lists of texts.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace vlt::test {

// Texts as they are, numbers by their digits, null as "null", lists joined by "|". Nothing for a line that is
// not such an object, or has a key twice.
std::optional<std::map<std::string, std::string>> ParseJson(std::string_view line);

}  // namespace vlt::test
