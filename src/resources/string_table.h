// SPDX-License-Identifier: GPL-3.0-or-later
// All captions and messages, in two languages side by side.
#pragma once

#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

namespace vlt {

// A column of the table. Its number is what LangOffset of the shared state holds: it is added to a text's id.
enum class Language : int { kJapanese = 0, kEnglish = 5000, kThird = 10000 };

// The language that LangOffset stands for.
constexpr Language LanguageOf(int lang_offset) { return static_cast<Language>(lang_offset); }

// The text of an id (1 to 4999) in a language. Throws std::out_of_range for an id that is not in the table: a
// fault of the caller, never of the operator.
const char* LookupText(int id, Language language);
// The same of an id plus the number of its language: id + 5000 gives the English text.
const char* LookupText(int id);

// Makes the third column from the other two, row by row: a translation that is on its way is tried by this.
// Before it no text has a third language.
using TextMaker = std::function<std::string(const char* japanese, const char* english)>;
void MakeThirdLanguage(const TextMaker& make);

// text with "%1" to "%9" replaced by the arguments in order; "%%" gives "%". A placeholder without an
// argument stays as it is.
std::string FormatText(std::string_view text, std::initializer_list<std::string_view> args);

}  // namespace vlt
