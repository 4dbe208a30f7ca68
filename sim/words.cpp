// SPDX-License-Identifier: GPL-3.0-or-later
#include "sim/words.h"

#include <charconv>

namespace sim::words {

std::vector<std::string_view> Split(std::string_view text, char mark) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t end = text.find(mark);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::optional<int> Integer(std::string_view text, int least, int most, int base) {
  if (base == 16 && (text.ends_with('H') || text.ends_with('h'))) text.remove_suffix(1);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
  const bool good =
      error == std::errc() && end == text.data() + text.size() && number >= least && number <= most;
  return good ? std::optional(number) : std::nullopt;
}

std::optional<double> Real(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool good = error == std::errc() && end == text.data() + text.size();
  return good ? std::optional(number) : std::nullopt;
}

std::optional<Range> ReadRange(std::string_view text, int least, int most, int base) {
  const auto parts = Split(text, '-');
  const auto first = Integer(parts.front(), least, most, base);
  const auto last = Integer(parts.back(), least, most, base);
  if (parts.size() > 2 || !first || !last || *first > *last) return std::nullopt;
  return Range{*first, *last};
}

std::optional<int> Choice(std::string_view value, std::span<const std::string_view> names) {
  const auto found = std::ranges::find(names, value);
  if (found != names.end()) return static_cast<int>(found - names.begin());
  return Integer(value, 0, static_cast<int>(names.size()) - 1);
}

NameAndValue Part(std::string_view word) {
  const std::size_t equals = word.find('=');
  if (equals == std::string_view::npos) return {word, {}};
  return {word.substr(0, equals), word.substr(equals + 1)};
}

std::string_view CutStation(std::string_view word, std::optional<int>& station) {
  const std::size_t colon = word.find(':');
  if (colon == std::string_view::npos || colon > word.find('=')) return word;
  station = Integer(word.substr(0, colon), 1, 247);
  return station ? word.substr(colon + 1) : word;
}

std::string Quoted(std::string_view word) { return "\"" + std::string(word) + "\""; }

std::string WrongForm(std::string_view word, std::string_view name, std::string_view form) {
  return Quoted(word) + " is not of the form " + std::string(name) + "=" + std::string(form);
}

void AddHelp(std::string& text, std::string_view name, std::string_view form, std::string_view help) {
  std::string head = "  " + std::string(name);
  if (!form.empty()) head += "=" + std::string(form);
  head += head.size() < 30 ? std::string(30 - head.size(), ' ') : "\n" + std::string(30, ' ');
  text += head + std::string(help) + "\n";
}

}  // namespace sim::words
