// SPDX-License-Identifier: GPL-3.0-or-later
// Register codes to texts. A table is known by its number; a code is the position of its text, from 0.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "resources/string_table.h"

namespace vlt {

// What decides between texts of one table: the language, the unit system (0 metric,
// else English; tables 7 and 11), the hardware variant (table 6) and the operation mode (table 24).
struct CodeContext {
  Language language = Language::kJapanese;
  int unit_flag = 0;
  std::string_view model_code = {};
  int operation_mode = 0;
};

// The text of a code as reports and records print it: items that begin with a sign carry an apostrophe in
// front, so that a spreadsheet takes them as text. Empty for an unknown table or a code outside of it.
std::string CodeToText(const CodeContext& context, int table, std::int32_t code);

// The texts of all codes of a table as CodeToText gives them. Empty for an unknown table and for table 35,
// which has a text for every number.
std::vector<std::string> CodeTexts(const CodeContext& context, int table);

// The entries of a page's list: without the apostrophes, and without the code of table 24 that has no text.
std::vector<std::string> ListTexts(const CodeContext& context, int table);

// Text of an alarm of the RAS word. bit counts from the left: 0 is the most significant of 16. Empty for
// positions without an alarm and outside of 0 to 15.
std::string AlarmText(Language language, int bit);

// The names of all 16 positions of the RAS word from the left, "RESERVE" where there is no alarm.
std::array<std::string, 16> AlarmRows(Language language);

}  // namespace vlt
