// SPDX-License-Identifier: GPL-3.0-or-later
// The script language: lines, quotes, comments, pieces.
#include "cli/script.h"

#include <gtest/gtest.h>

namespace vlt {
namespace {

// "word|argument|"quoted"" as the cases write it; an error shows as "?".
std::string Shown(const ScriptLine& line) {
  std::string text = line.word;
  for (const Argument& a : line.arguments) text += a.quoted ? "|\"" + a.text + "\"" : "|" + a.text;
  return line.error.empty() ? text : text + "?";
}

TEST(Script, LinesAreCutIntoWordAndArguments) {
  const struct {
    const char* line;
    const char* shown;
  } cases[] = {
      {"", ""},
      {"  \t ", ""},
      {"# start", ""},
      {"start", "start"},
      {"\t tick  FULL_SCALE1\t", "tick|FULL_SCALE1"},
      {"tick A# B #C", "tick|A#|B"},
      {"type X \"a # b\" # c", "type|X|\"a # b\""},
      {"type X \"\"", "type|X|\"\""},
      {"type X \"say \"\"ok\"\"\"", "type|X|\"say \"ok\"\""},
      {"type X C:\\temp\\new", "type|X|C:\\temp\\new"},
      {"type X \"C:\\my temp\\\"", "type|X|\"C:\\my temp\\\""},
      {"type X 12\"", "type|X|12\""},
      {"expect L \xE6\xB5\x81\xE9\x87\x8F\r", "expect|L|\xE6\xB5\x81\xE9\x87\x8F"},
      {"type X \"a", "type|X?"},
      {"type X \"a\"b", "type|X?"},
      {"type X \"a\"\"", "type|X?"},
      {"\"", "?"},
  };
  for (const auto& c : cases) EXPECT_EQ(Shown(ParseScriptLine(c.line, 2)), c.shown) << c.line;
  EXPECT_EQ(Shown(ParseScriptLine("\xEF\xBB\xBFstart", 1)), "start");
  EXPECT_NE(Shown(ParseScriptLine("\xEF\xBB\xBFstart", 2)), "start");
}

TEST(Script, ReaderHandsOnWholeLinesAndCountsThem) {
  ScriptReader reader;
  reader.Add("one\r\n\ntw");
  EXPECT_EQ(reader.Next()->word, "one");
  EXPECT_EQ(reader.Next()->number, 2);
  EXPECT_FALSE(reader.Next());
  reader.Add("o\nthree");
  EXPECT_EQ(reader.Next()->word, "two");
  EXPECT_FALSE(reader.Next()) << "more of it may come";
  reader.End();
  const auto last = reader.Next();
  ASSERT_TRUE(last);
  EXPECT_EQ(last->word, "three");
  EXPECT_EQ(last->number, 4);
  EXPECT_FALSE(reader.Next());
}

// It is told once, as soon as it is seen, and the lines behind it keep their numbers.
TEST(Script, ALineThatIsTooLongIsToldAndNotKept) {
  const std::string most(kMostLineBytes, 'x');
  ScriptReader reader;
  reader.Add(most);
  EXPECT_FALSE(reader.Next());
  reader.Add("x");
  const auto told = reader.Next();
  ASSERT_TRUE(told);
  EXPECT_EQ(told->error, "the line is longer than 64 KB");
  EXPECT_EQ(told->number, 1);
  reader.Add(most);
  EXPECT_FALSE(reader.Next());
  reader.Add("x\n" + most + "\n" + most + "x\nend\n");
  const auto good = reader.Next();
  ASSERT_TRUE(good);
  EXPECT_EQ(good->word, most);
  EXPECT_EQ(good->number, 2);
  EXPECT_FALSE(reader.Next()->error.empty());
  EXPECT_EQ(reader.Next()->number, 4);
  EXPECT_FALSE(reader.Next());
}

}  // namespace
}  // namespace vlt
