// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/input_check.h"

#include "resources/text_ids.h"
#include "resources/text_ids_files.h"
#include "values/text.h"

namespace vlt {

int IsNumericText(std::string_view text, int length) {
  if (length < 1) return 1;
  if (length == 1 && (text == "," || text == "." || text == "-")) return -1;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    const bool first = i == 0;
    const bool digit = c >= '0' && c <= '9';
    const bool sign = c == '+' || c == '-';
    const bool mark = c == '.' || c == ',';
    if (!(digit || (sign && first) || (mark && !first))) return -1;
  }
  return 0;
}

int IsNumericText(std::string_view text) { return IsNumericText(text, static_cast<int>(CharCount(text))); }

int NoNumberText(std::string_view text) {
  const bool comma = IsNumericText(text) == 0 && text.find(',') != std::string_view::npos;
  return comma ? text::kCommaTyped : text::kNotANumber;
}

int TypedNumberFault(std::string_view text) {
  const bool passes = IsNumericText(text) >= 0 && text.find(',') == std::string_view::npos;
  return passes ? 0 : NoNumberText(text);
}

}  // namespace vlt
