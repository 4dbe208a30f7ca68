// SPDX-License-Identifier: GPL-3.0-or-later
#include "values/text.h"

#include <gtest/gtest.h>

#include <string>

#include "values/input_check.h"

namespace vlt {
namespace {

TEST(InputCheck, JudgesCharacterByCharacter) {
  struct Case {
    const char* text;
    int result;
  };
  const Case cases[] = {
      {"", 1},    {",", -1},   {".", -1},      {"-", -1},    {"+", 0},    {"5", 0},
      {"-5", 0},  {"+5", 0},   {"5-", -1},     {"5+1", -1},  {".5", -1},  {",5", -1},
      {"0.5", 0}, {"-.5", 0},  {"1,234.5", 0}, {"1.2.3", 0}, {" ", -1},   {" 5", -1},
      {"5 ", -1}, {"1E5", -1}, {"abc", -1},    {"１２", -1}, {"5\n", -1},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(IsNumericText(c.text, static_cast<int>(CharCount(c.text))), c.result) << '"' << c.text << '"';
  }
}

TEST(Text, CharactersAreCodePoints) {
  EXPECT_EQ(CharCount("m3/h"), 4U);
  EXPECT_EQ(CharCount("ﾚﾝｼﾞ"), 4U);
  EXPECT_EQ(CharCount("流量℃😀"), 4U);
  EXPECT_EQ(CharCount("\xE6\xB5"), 1U);
  EXPECT_EQ(CharCount("\x80\x80"), 2U);
  // A byte too many is a character of its own, whatever it stands behind.
  for (const std::string whole : {"°", "流", "\xE0\xA4\x85", "😀"}) {
    EXPECT_EQ(CharCount(whole), 1U) << whole;
    EXPECT_EQ(CharCount(whole + "\x80"), 2U) << whole;
  }
  EXPECT_EQ(FirstChars("流量ｽｲｯﾁ", 3), "流量ｽ");
  EXPECT_EQ(FirstChars("流量", 5), "流量");
  EXPECT_EQ(FirstChars("流量", 0), "");
}

TEST(Text, CutsAtTheFirstNul) {
  EXPECT_EQ(CutAtNul(std::string("ab\0cd\0", 6)), "ab");
  EXPECT_EQ(CutAtNul(std::string("\0ab", 3)), "");
  EXPECT_EQ(CutAtNul("計測"), "計測");
}

TEST(Text, FolderOfPathTakesBothSeparators) {
  struct Case {
    const char* path;
    const char* folder;
  };
  const Case cases[] = {
      {" c:\\data\\run.csv ", "c:\\data\\"},
      {"c:\\data", "c:\\data\\"},
      {"c:run.csv", "c:"},
      {"run.csv", ""},
      {"", "\\"},
      {"/home/me/run.csv", "/home/me/"},
      {"/home/me", "/home/me/"},
      {"/home/me.d/run", "/home/me.d/"},
      {"c:\\データ/試験.csv", "c:\\データ/"},
  };
  for (const Case& c : cases) EXPECT_EQ(FolderOfPath(c.path), c.folder) << c.path;
}

TEST(Text, ComparesWithoutCase) {
  EXPECT_TRUE(EqualsNoCase("Speed, az", "SPEED, AZ"));
  EXPECT_FALSE(EqualsNoCase("SPEED", "SPEED2"));
  EXPECT_FALSE(EqualsNoCase("[", "{"));
}

}  // namespace
}  // namespace vlt
