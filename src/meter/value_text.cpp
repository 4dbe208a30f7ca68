// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/value_text.h"

#include <algorithm>
#include <array>

#include "meter/details_table.h"
#include "meter/display_table.h"
#include "meter/maintenance_table.h"
#include "meter/range_table.h"
#include "meter/status_table.h"
#include "meter/total_table.h"
#include "meter/units.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"
#include "values/code_tables.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr int kEnglishOffset = 5000;

// The words of two codes that have no table: text ids.
struct TwoWords {
  const Parameter* row;
  std::array<int, 2> words;
};
constexpr TwoWords kTwoWords[] = {
    {&RangeRow("kind"), {2180, 2220}},
    {&StatusRow("flow_switch"), {2460, 2470}},
    {&StatusRow("thermal_switch"), {621, 622}},
    {&DisplayRow("backlight"), {text::kOn, 2340}},
    {&MaintenanceRow("do_check"), {text::kSwitchedOn, text::kSwitchedOff}},
    {&MaintenanceRow("test_mode"), {text::kSwitchedOff, text::kSwitchedOn}},
};

// Codes of which every one but 0 means the second word.
constexpr const Parameter* kAnyIsSecond[] = {&StatusRow("flow_switch"), &StatusRow("thermal_switch"),
                                             &DetailsRow("trigger_control"), &DetailsRow("window_control"),
                                             &DetailsRow("gain_control")};

bool AnyIsSecond(const Parameter& row) {
  return std::find(std::begin(kAnyIsSecond), std::end(kAnyIsSecond), &row) != std::end(kAnyIsSecond);
}

std::string InParentheses(int code) { return "(" + std::to_string(code) + ")"; }

std::string CodeText(const Parameter& row, const SharedState& facts, int code) {
  const std::vector<std::string> words = CodeWords(row, facts);
  if (words.empty()) return std::to_string(code);
  if (AnyIsSecond(row) && code != 0 && code != 1) return words[1] + " " + InParentheses(code);
  if (&row == &TotalRow("unit")) code = TotalUnitOf(facts.UnitFlag, code);
  const bool known = code >= 0 && code < static_cast<int>(words.size());
  if (!known || words[static_cast<std::size_t>(code)].empty()) return InParentheses(code);
  return words[static_cast<std::size_t>(code)];
}

constexpr int kGreatestCode = 32767;

// The code that a number stands for; none for a text that is no whole number in the range of codes.
std::optional<int> CodeNumber(std::string_view text) {
  const auto number = ParseNumber(text);
  if (!number || !(*number >= 0) || *number > kGreatestCode) return std::nullopt;
  const int code = static_cast<int>(*number);
  return code == *number ? std::optional(code) : std::nullopt;
}

// A list whose words are numbers themselves: "5.0", "10.0", ...
bool AreNumbers(const std::vector<std::string>& words) {
  return !words.empty() && std::all_of(words.begin(), words.end(), [](const std::string& word) {
    return word.empty() || ParseNumber(word).has_value();
  });
}

// The code of a text in the words of one language. Several codes of the same word are none.
std::optional<int> CodeOfWord(const Parameter& row, const SharedState& facts, std::string_view text) {
  const std::vector<std::string> words = CodeWords(row, facts);
  const auto number = AreNumbers(words) ? ParseNumber(text) : std::nullopt;
  const auto is_it = [&](const std::string& word) {
    return !word.empty() && (number ? ParseNumber(word) == number : EqualsNoCase(Trim(word), text));
  };
  const auto first = std::find_if(words.begin(), words.end(), is_it);
  if (first == words.end() || std::find_if(first + 1, words.end(), is_it) != words.end()) return std::nullopt;
  return static_cast<int>(first - words.begin());
}

EncodedValue EncodeCodeText(const Parameter& row, const SharedState& facts, std::string_view text) {
  for (const int lang_offset : {facts.LangOffset, kEnglishOffset - facts.LangOffset}) {
    SharedState speaker = facts;
    speaker.LangOffset = lang_offset;
    if (const auto code = CodeOfWord(row, speaker, text)) return {.bytes = EncodeCode(*code)};
  }
  const bool in_parentheses = text.size() > 2 && text.front() == '(' && text.back() == ')';
  const auto code = CodeNumber(in_parentheses ? text.substr(1, text.size() - 2) : text);
  const std::vector<std::string> words = CodeWords(row, facts);
  // A code in parentheses is one without a word, as ValueText gives it. Where the words are numbers, a bare
  // number is one of them and never a code.
  const bool has_word = words.empty() || (code < static_cast<int>(words.size()) && !AreNumbers(words));
  if (!code || (!has_word && !in_parentheses)) return {.bytes = {}, .fault = ValueFault::kNoSuchCode};
  return {.bytes = EncodeCode(*code)};
}

EncodedValue EncodeCharacters(const Parameter& row, std::string_view text) {
  std::vector<std::uint8_t> bytes(text.begin(), text.end());
  if (bytes.size() > static_cast<std::size_t>(row.characters))
    return {.bytes = {}, .fault = ValueFault::kOutOfRange};
  bytes.resize(static_cast<std::size_t>(row.characters), ' ');
  return {.bytes = std::move(bytes)};
}

}  // namespace

std::vector<std::string> CodeWords(const Parameter& row, const SharedState& facts) {
  if (!row.IsCode()) return {};
  for (const TwoWords& two : kTwoWords) {
    if (two.row != &row) continue;
    return {LookupText(two.words[0] + facts.LangOffset), LookupText(two.words[1] + facts.LangOffset)};
  }
  std::vector<std::string> words =
      CodeTexts({facts.LangOffset, facts.UnitFlag, facts.ModelCode, facts.OperationMode}, row.codes);
  for (std::string& word : words) {
    if (word.starts_with('\'')) word.erase(0, 1);
  }
  return words;
}

std::string ValueText(const Parameter& row, const SharedState& facts, std::span<const std::uint8_t> bytes) {
  return row.IsCode() ? CodeText(row, facts, CodeAt(row, bytes, 0)) : ShowValue(row, facts, bytes, 0);
}

std::string UnitTextAt(const ParameterPlace& place, const SharedState& facts, int channel_of_output) {
  const int channel = IsOutput(*place.row) ? channel_of_output : place.index;
  return UnitText(facts, place.row->unit, std::clamp(channel, 0, kChannels - 1));
}

EncodedValue EncodeValue(const Parameter& row, const SharedState& facts, std::string_view text) {
  text = Trim(text);
  if (row.IsCode()) return EncodeCodeText(row, facts, text);
  if (row.wire == Wire::kCharacters) return EncodeCharacters(row, text);
  Encoded encoded = EncodeText(row, facts, text);
  switch (encoded.fault) {
    case TextFault::kNoNumber:
      return {.bytes = {}, .fault = ValueFault::kNoNumber};
    case TextFault::kOutOfRange:
      return {.bytes = {}, .fault = ValueFault::kOutOfRange};
    default:
      return {.bytes = std::move(encoded.bytes)};
  }
}

std::string CutText(const Parameter& row, const SharedState& facts, std::string_view typed,
                    std::span<const std::uint8_t> bytes) {
  if (row.IsCode() || row.wire == Wire::kDouble || row.wire == Wire::kCharacters || bytes.empty()) return {};
  constexpr double kWordRange = 65536;  // a word may be typed without its sign
  const std::string given(Trim(typed));
  const std::string taken = ValueText(row, facts, bytes);
  const double lost = ParseNumber(given).value_or(0) - ParseNumber(taken).value_or(0);
  const bool same = lost == 0 || (row.wire == Wire::kWord && lost == kWordRange);
  return same ? std::string() : given + " -> " + taken;
}

std::string ValueFaultText(const Parameter& row, const SharedState& facts, ValueFault fault) {
  const auto word = [&](int id) { return std::string(LookupText(id + facts.LangOffset)); };
  switch (fault) {
    case ValueFault::kNoNumber:
      return word(text::kNoNumber);
    case ValueFault::kOutOfRange:
      if (row.wire == Wire::kCharacters)
        return FormatText(word(text::kTooLong), {std::to_string(row.characters)});
      return FormatText(word(text::kDoesNotFit), {LeastText(row, facts), GreatestText(row, facts)});
    case ValueFault::kNoSuchCode: {
      std::string entries;
      for (const std::string& entry : CodeWords(row, facts)) {
        if (!entry.empty()) entries += (entries.empty() ? "" : ", ") + entry;
      }
      return FormatText(word(text::kNoSuchCode), {entries});
    }
    default:
      return {};
  }
}

}  // namespace vlt
