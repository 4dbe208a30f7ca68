// SPDX-License-Identifier: GPL-3.0-or-later
// What scenario words and actions are read with.
#pragma once

#include <algorithm>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sim::words {

// The parts between the marks; one more than there are marks.
std::vector<std::string_view> Split(std::string_view text, char mark);

// A whole number between the bounds; with base 16 an "H" may stand behind it.
std::optional<int> Integer(std::string_view text, int least, int most, int base = 10);

// Also "nan", "inf", "-inf", "-0".
std::optional<double> Real(std::string_view text);

// "12" or "12-15": the first and the last of them, both within the bounds and in order.
struct Range {
  int first = 0, last = 0;
};
std::optional<Range> ReadRange(std::string_view text, int least, int most, int base = 10);

// The place of `value` in `names`, or the number that it is.
std::optional<int> Choice(std::string_view value, std::span<const std::string_view> names);

struct NameAndValue {
  std::string_view name, value;
};
NameAndValue Part(std::string_view word);

// Cuts a station number and its colon off the front of a word.
std::string_view CutStation(std::string_view word, std::optional<int>& station);

// The row of a table whose name it is, or null.
template <typename Words>
const auto* Find(const Words& rows, std::string_view name) {
  const auto found =
      std::ranges::find_if(rows, [&](const auto& row) { return std::string_view(row.name) == name; });
  return found == std::end(rows) ? nullptr : &*found;
}

std::string Quoted(std::string_view word);
std::string WrongForm(std::string_view word, std::string_view name, std::string_view form);
void AddHelp(std::string& text, std::string_view name, std::string_view form, std::string_view help);

}  // namespace sim::words
