#include "cli/companion.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "shell/start.h"
#include "support/virtual_platform.h"

namespace vlt::test {
namespace {

using Lines = std::vector<std::string>;

TEST(Script, CutsLinesIntoWords) {
  struct Case {
    const char* text;
    const char* word;
    Lines arguments;
    bool wrong;
  };
  const Case cases[] = {
      {"", "", {}, false},
      {"  # a comment", "", {}, false},
      {"type A 60.5  # behind it", "type", {"A", "60.5"}, false},
      {"\texpect Label2(0) \"[mm # \"\"x\"\"]\"\r", "expect", {"Label2(0)", "[mm # \"x\"]"}, false},
      {"type A \"\"", "type", {"A", ""}, false},
      {"type A \"no end", "type", {"A"}, true},
      {"type A \"stuck\"x", "type", {"A"}, true},
      {"\xEF\xBB\xBFstart", "start", {}, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    const ScriptLine line = ParseScriptLine(c.text, 1);
    EXPECT_EQ(line.word, c.word);
    EXPECT_EQ(!line.error.empty(), c.wrong);
    Lines arguments;
    for (const Argument& argument : line.arguments) arguments.push_back(argument.text);
    EXPECT_EQ(arguments, c.arguments);
  }
  ScriptReader reader;
  reader.Add("sta");
  EXPECT_FALSE(reader.Next().has_value()) << "half a line is not run";
  reader.Add("rt\nopen Form10");
  EXPECT_EQ(reader.Next()->word, "start");
  EXPECT_FALSE(reader.Next().has_value());
  reader.End();
  EXPECT_EQ(reader.Next()->number, 2);
}

// The program on virtual time with a simulated meter, and a script that runs on it to its end.
class CompanionTest : public ::testing::Test {
 protected:
  CompanionTest()
      : dialogs(machine.files),
        events(machine.time),
        platform{machine.time, events, machine.simulated, dialogs, machine.files, machine.process},
        app(platform) {
    machine.files.files["/app/VLT.ini"] =
        "[SYSTEM]\r\nINI_FILENAME=VLT.ini\r\nVR=M627\r\nLANG_FLAG=1\r\n[COMM]\r\nPORT=1\r\nSTATION_NO=01\r\n";
    RegisterAllWindows(app);
  }

  int Run(const std::string& script) {
    bool over = false;
    Companion companion(
        app, dialogs, events,
        {[this](const std::string& line) { output.push_back(line); },
         [this](int line, const std::string& text) { trouble.push_back(std::to_string(line) + ": " + text); },
         [&] { over = true; }});
    ScriptReader reader;
    reader.Add(script);
    reader.End();
    while (auto line = reader.Next()) companion.Add(std::move(*line));
    companion.EndOfScript();
    for (int second = 0; second < 600 && !over; ++second) machine.time.RunFor(1000);
    EXPECT_TRUE(over) << "the script never ends";
    EXPECT_FALSE(machine.simulated.IsOpen());
    return static_cast<int>(companion.Status());
  }
  // Lines of one kind, without it.
  Lines Said(const std::string& kind) const {
    Lines said;
    for (const std::string& line : output) {
      if (line.starts_with(kind + "\t")) said.push_back(line.substr(kind.size() + 1));
    }
    return said;
  }

  VirtualPlatform machine;
  ScriptDialogs dialogs;
  ProgramEvents events;
  Platform platform;
  App app;
  Lines output;
  Lines trouble;
};

TEST_F(CompanionTest, SetsAValueLooksAtItAndCloses) {
  EXPECT_EQ(Run("start\n"
                "open Form10\n"
                "tick OUTER_DIAMETER\n"
                "type OUTER_DIAMETERText 114.3\n"
                "leave OUTER_DIAMETERText\n"
                "press SetParameter\n"
                "expect OUTER_DIAMETERText 114.30\n"
                "expect StatusBar1 contains \"process setting was completed\"\n"
                "expect OUTER_DIAMETER ticked\n"
                "expect LINING_S_V disabled\n"
                "show Label8(0)\n"
                "answer no\n"
                "close\n"),
            0);
  EXPECT_EQ(trouble, Lines{});
  EXPECT_EQ(machine.Meter().holding().Long(0x00D2), 11430);
  EXPECT_EQ(Said("show"), Lines{"Form10.Label8(0)\t[mm]\tenabled\t"});
  EXPECT_EQ(Said("message"), Lines{"Does it save the setting value of the loader?\tno"});
  EXPECT_TRUE(events.Ended());
}

TEST_F(CompanionTest, EndsWithTheStatusAndTheLineOfItsTrouble) {
  struct Case {
    const char* script;
    int status;
    const char* trouble;
  };
  const Case cases[] = {
      {"expect OUTER_DIAMETERText 1\n", 1, "2: Form10.OUTER_DIAMETERText is \"\", which is not \"1\""},
      {"\ntype OUTER_DIAMETERText 1\n", 1, "3: Form10.OUTER_DIAMETERText: disabled"},
      {"choose ChannelSelect(1)\n", 1, "2: Form10.ChannelSelect(1): disabled"},
      {"tick NOTHING\n", 2, "2: "},
      {"juggle\n", 2, "2: there is no word juggle"},
      {"tick\n", 2, "2: it is written: tick NAME"},
      {"press OUTER_DIAMETER\n", 2, "2: Form10.OUTER_DIAMETER is nothing to press"},
      {"press CmdBtnClear\n", 3, "2: "},
      {"answer perhaps\n", 2, "2: there is no answer perhaps"},
  };
  Run("start\n");
  for (const Case& c : cases) {
    SCOPED_TRACE(c.script);
    trouble.clear();
    EXPECT_EQ(Run(std::string("open Form10\n") + c.script + "open Form2\n"), c.status);
    ASSERT_EQ(trouble.size(), 1u);
    EXPECT_TRUE(trouble[0].starts_with(c.trouble)) << trouble[0];
    EXPECT_EQ(app.windows.Find("Form2"), nullptr) << "nothing runs behind the trouble";
  }
}

TEST_F(CompanionTest, SavesAndOpensAFileByItsName) {
  EXPECT_EQ(Run("start\nopen Form10\ntick OUTER_DIAMETER\ntype OUTER_DIAMETERText 77\n"
                "file /data/pipe.ini\npress setParam\n"
                "open Form10\nexpect OUTER_DIAMETERText 77\n"
                "file\npress readparam\n"
                "answer no\nclose\n"),
            0);
  EXPECT_EQ(Said("file"), (Lines{"save\t/data/pipe.ini", "open\t"}));
  EXPECT_NE(machine.files.files["/data/pipe.ini"].find("OUTER_DIAMETER_Data=77\r\n"), std::string::npos);
}

TEST(CompanionWords, StandInTheManual) {
  std::ifstream page(COMPANION_PAGE);
  std::stringstream text;
  text << page.rdbuf();
  ASSERT_FALSE(text.str().empty());
  for (const Companion::Word& word : Companion::Words()) {
    const std::string written = std::string(word.name) + (*word.arguments == 0 ? "" : " ") + word.arguments;
    EXPECT_NE(text.str().find("`" + written + "`"), std::string::npos) << written;
  }
}

}  // namespace
}  // namespace vlt::test
