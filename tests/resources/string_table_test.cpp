// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/string_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace vlt {
namespace {

TEST(StringTable, OffsetChoosesTheLanguage) {
  EXPECT_STREQ(LookupText(1), "ＭＳ ゴシック");
  EXPECT_STREQ(LookupText(5001), "Arial");
  EXPECT_STREQ(LookupText(9965), "\nAn error has occurred.");
  EXPECT_STREQ(LookupText(5244), "TOTAL SWITCH ");
}

TEST(StringTable, UnknownIdsFailLoudly) {
  for (const int id : {-5000, -1, 0, 2, 4999, 5000, 5002, 9999, 10001, 15001}) {
    EXPECT_THROW(LookupText(id), std::out_of_range) << id;
  }
}

// Placeholders of a text, sorted: "%2 by %1" gives "12".
std::string Placeholders(std::string_view text) {
  std::string found;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] == '%' && text[i + 1] >= '1' && text[i + 1] <= '9') found += text[i + 1];
  }
  std::sort(found.begin(), found.end());
  return found;
}

bool HasText(int id) {
  try {
    LookupText(id);
    return true;
  } catch (const std::out_of_range&) {
    return false;
  }
}

TEST(StringTable, BothLanguagesAgreeInPlaceholdersAndLineBreaks) {
  for (int id = 1; id < 5000; ++id) {
    if (!HasText(id)) continue;
    const std::string japanese = LookupText(id);
    const std::string english = LookupText(id + 5000);
    EXPECT_FALSE(japanese.empty() || english.empty()) << id;
    EXPECT_EQ(Placeholders(japanese), Placeholders(english)) << id;
    EXPECT_EQ(std::count(japanese.begin(), japanese.end(), '\n'),
              std::count(english.begin(), english.end(), '\n'))
        << id;
  }
}

// The rule at the head of product.inc, for the words that slip.
TEST(StringTable, FullWidthJapaneseWritesLongVowels) {
  for (const std::string word :
       {"センサ", "メモリ", "フォルダ", "ユーザ", "ローダ", "パラメータ", "アダプタ"}) {
    for (int id = 1; id < 5000; ++id) {
      const std::string text = HasText(id) ? LookupText(id) : "";
      for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1)) {
        EXPECT_EQ(text.substr(at + word.size(), 3), "ー") << id << ": " << text;
      }
    }
  }
}

TEST(FormatText, FillsPlaceholdersInAnyOrder) {
  EXPECT_EQ(FormatText("%1 (%2)", {"COM3", "/dev/ttyUSB0"}), "COM3 (/dev/ttyUSB0)");
  EXPECT_EQ(FormatText("%2, %1, %2", {"a", "b"}), "b, a, b");
  EXPECT_EQ(FormatText("%1 and %3", {"%2", "x"}), "%2 and %3");
  EXPECT_EQ(FormatText("100%% [%] %", {}), "100% [%] %");
}

}  // namespace
}  // namespace vlt
