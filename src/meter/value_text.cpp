// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/value_text.h"

#include <algorithm>

#include "meter/total_table.h"
#include "meter/units.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"
#include "resources/text_ids_files.h"
#include "values/code_tables.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

std::string InParentheses(int code) { return "(" + std::to_string(code) + ")"; }

// As a spreadsheet takes them: those that begin with the sign of a total behind an apostrophe.
std::vector<std::string> CellWords(const Parameter& row, const ToldFacts& facts) {
  if (row.words[0] == 0) {
    return CodeTexts({facts.Spoken(), facts.UnitFlag, facts.ModelCode, facts.OperationMode}, row.codes);
  }
  return {LookupText(row.words[0], facts.Spoken()), LookupText(row.words[1], facts.Spoken())};
}

// Of the words of a row; empty for a code without one.
std::string WordOf(const Parameter& row, const ToldFacts& facts, int code,
                   const std::vector<std::string>& words) {
  if (row.any_is_second && code != 0) code = 1;
  if (&row == &TotalRow("unit")) code = TotalUnitOf(facts.UnitFlag, code);
  const bool known = code >= 0 && code < static_cast<int>(words.size());
  return known ? words[static_cast<std::size_t>(code)] : std::string();
}

std::string CodeText(const Parameter& row, const ToldFacts& facts, int code) {
  if (!row.HasWords()) return std::to_string(code);
  const std::string word = CodeWord(row, facts, code);
  if (word.empty()) return InParentheses(code);
  return row.any_is_second && code != 0 && code != 1 ? word + " " + InParentheses(code) : word;
}

static_assert(static_cast<int>(ValueFault::kOutOfRange) == static_cast<int>(TextFault::kOutOfRange));

constexpr int kGreatestCode = 32767;

// The code that a number stands for; none for a text that is no whole number in the range of codes.
std::optional<int> CodeNumber(std::string_view text) {
  const std::optional<int> code = ParseWhole(text);
  return code && *code >= 0 && *code <= kGreatestCode ? code : std::nullopt;
}

// A list whose words are numbers themselves: "5.0", "10.0", ...
bool AreNumbers(const std::vector<std::string>& words) {
  return !words.empty() && std::all_of(words.begin(), words.end(), [](const std::string& word) {
    return word.empty() || ParseNumber(word).has_value();
  });
}

// The code of a text in the words of one language. Several codes of the same word are none.
std::optional<int> CodeOfWord(const Parameter& row, const ToldFacts& facts, std::string_view text) {
  const std::vector<std::string> words = CodeWords(row, facts);
  const auto number = AreNumbers(words) ? ParseNumber(text) : std::nullopt;
  const auto is_it = [&](const std::string& word) {
    return !word.empty() && (number ? ParseNumber(word) == number : EqualsNoCase(Trim(word), text));
  };
  const auto first = std::find_if(words.begin(), words.end(), is_it);
  if (first == words.end() || std::find_if(first + 1, words.end(), is_it) != words.end()) return std::nullopt;
  return static_cast<int>(first - words.begin());
}

EncodedValue EncodeCodeText(const Parameter& row, const ToldFacts& facts, std::string_view text) {
  const bool japanese = facts.Spoken() == Language::kJapanese;
  for (const Language language : {facts.Spoken(), japanese ? Language::kEnglish : Language::kJapanese}) {
    ToldFacts speaker = facts;
    speaker.LangOffset = static_cast<int>(language);
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

std::vector<std::string> CodeWords(const Parameter& row, const ToldFacts& facts) {
  std::vector<std::string> words = CellWords(row, facts);
  for (std::string& word : words) {
    if (word.starts_with('\'')) word.erase(0, 1);
  }
  return words;
}

std::string CodeWord(const Parameter& row, const ToldFacts& facts, int code) {
  return WordOf(row, facts, code, CodeWords(row, facts));
}

std::string ValueText(const Parameter& row, const ToldFacts& facts, std::span<const std::uint8_t> bytes) {
  return row.IsCode() ? CodeText(row, facts, CodeAt(row, bytes, 0)) : ShowValue(row, facts, bytes, 0);
}

std::string CellText(const Parameter& row, const ToldFacts& facts, std::span<const std::uint8_t> bytes) {
  if (!row.HasWords()) return ValueText(row, facts, bytes);
  return WordOf(row, facts, CodeAt(row, bytes, 0), CellWords(row, facts));
}

std::string UnitTextAt(const ParameterPlace& place, const ToldFacts& facts, int channel_of_output) {
  const int channel = IsOutput(*place.row) ? channel_of_output : place.index;
  return UnitText(facts, place.row->unit, std::clamp(channel, 0, kChannels - 1));
}

EncodedValue EncodeValue(const Parameter& row, const ToldFacts& facts, std::string_view text) {
  text = Trim(text);
  if (row.IsCode()) return EncodeCodeText(row, facts, text);
  if (row.wire == Wire::kCharacters) return EncodeCharacters(row, text);
  Encoded encoded = EncodeText(row, facts, text);
  return {.bytes = std::move(encoded.bytes), .fault = static_cast<ValueFault>(encoded.fault)};
}

std::string CutText(const Parameter& row, const ToldFacts& facts, std::string_view typed,
                    std::span<const std::uint8_t> bytes) {
  if (row.IsCode() || row.wire == Wire::kDouble || row.wire == Wire::kCharacters || bytes.empty()) return {};
  constexpr double kWordRange = 65536;  // a word may be typed without its sign
  const std::string given(Trim(typed));
  const std::string taken = ValueText(row, facts, bytes);
  const double lost = ParseNumber(given).value_or(0) - ParseNumber(taken).value_or(0);
  const bool same = lost == 0 || (row.wire == Wire::kWord && lost == kWordRange);
  return same ? std::string() : given + " -> " + taken;
}

std::string CutNote(const Parameter& row, const ToldFacts& facts, std::string_view typed,
                    std::span<const std::uint8_t> bytes) {
  if (CutText(row, facts, typed, bytes).empty()) return {};
  const std::string sent = ValueText(row, facts, bytes);
  const bool zero = ParseNumber(sent) == 0.0;
  if (!zero && sent.find('.') != std::string::npos) return {};
  return FormatText(LookupText((zero ? text::kSentAsZero : text::kSentWhole), facts.Spoken()),
                    {Trim(typed), sent});
}

std::string ValueFaultText(const Parameter& row, const ToldFacts& facts, ValueFault fault) {
  const auto word = [&](int id) { return std::string(LookupText(id, facts.Spoken())); };
  if (fault == ValueFault::kNoSuchCode) {
    std::string entries;
    for (const std::string& entry : CodeWords(row, facts)) {
      if (!entry.empty()) entries += (entries.empty() ? "" : ", ") + entry;
    }
    return FormatText(word(text::kNoSuchCode), {entries});
  }
  if (fault == ValueFault::kOutOfRange && row.wire == Wire::kCharacters)
    return FormatText(word(text::kTooLong), {std::to_string(row.characters)});
  return TextFaultText(row, facts, static_cast<TextFault>(fault));
}

}  // namespace vlt
