// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/profile_file.h"

#include <gtest/gtest.h>

#include "files/append_line.h"
#include "files/whole_file.h"
#include "support/memory_file_system.h"

namespace vlt {
namespace {

using namespace std::string_literals;
using test::Killed;
using test::MemoryFileSystem;

std::string Repeated(const std::string& text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

TEST(ProfileFile, ReadsAsThePlatformDoes) {
  const struct {
    std::string content, section, key, expected;
  } rows[] = {
      {"[COMM]\r\nPORT=3\r\n", "comm", "Port", "3"},
      {"[COMM]\nPORT=3", "COMM", "PORT", "3"},
      {"[AZ]\nZa=3", "az", "zA", "3"},
      {" \t[ COMM ]\t; the line\n\t PORT \t=\t 3 4\t \n", "COMM", "PORT", "3 4\t "},
      {"[S]\r\nK= M627 \r\n", "S", "K", "M627 "},
      {"[S]\nK= \t\n", "S", "K", ""},
      {"[S]\nK=\" a \" \t\n", "S", "K", " a "},
      {"\xEF\xBB\xBF[COMM]\nPORT=3\n", "COMM", "PORT", "3"},
      {"[S]\nK=\" a b \"\n", "S", "K", " a b "},
      {"[S]\nK='a'\n", "S", "K", "a"},
      {"[S]\nK=\"'a'\"\n", "S", "K", "'a'"},
      {"[S]\nK=\"a'\n", "S", "K", "\"a'"},
      {"[S]\nK=\"\n", "S", "K", "\""},
      {"[S]\nK=a=b;c\n", "S", "K", "a=b;c"},
      {"[S]\nK=\n", "S", "K", ""},
      {"[S]\nK=\"\"\n", "S", "K", ""},
      {"[S]\nK\n", "S", "K", "absent"},
      {"[S]\n;K=1\n ; K=2\n", "S", "K", "absent"},
      {"K=1\n[S]\n", "", "K", "absent"},
      {"[S]\nK=1\nk=2\n[s]\nK=3\nL=4\n", "S", "K", "1"},
      {"[S]\nK=1\n[T]\n[s]\nL=4\n", "S", "L", "absent"},
      {"[S]\n[T\nK=1\n", "S", "K", "1"},
      {"[S]\n\xC3\x84=1\n", "S", "\xC3\xA4", "absent"},
      {"[S]\0\nX=\0\nK=a\0b\n"s, "S", "K", "a\0b"s},
      {Repeated("\xFF\xFE\0\r[]=\n"s, 50), "S", "K", "absent"},
      {"[S]\nK=" + std::string(300, 'x') + "\n", "S", "K", std::string(254, 'x')},
      {"[S]\nK=\"" + Repeated("ﾎﾟ", 300) + "\"\n", "S", "K", Repeated("ﾎﾟ", 127)},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(ProfileFile(row.content).GetString(row.section, row.key, "absent"), row.expected)
        << row.content;
  }
}

TEST(ProfileFile, ReadsIntegersAsFarAsTheirDigitsGo) {
  const std::pair<std::string, int> rows[] = {
      {"12", 12},
      {"-7x", -7},
      {" +5 6", 5},
      {"x5", 0},
      {"1.9", 1},
      {"", 42},
      {"4294967296", 2147483647},
      {"-99999999999", -2147483647 - 1},
      {"- 3", 0},
      {"\"8\"", 8},
  };
  for (const auto& [text, expected] : rows) {
    EXPECT_EQ(ProfileFile("[S]\nK=" + text + "\n").GetInt("S", "K", 42), expected) << text;
  }
  EXPECT_EQ(ProfileFile("[S]\n").GetInt("S", "K", 42), 42);
}

TEST(ProfileFile, WritesOneKeyAndLeavesTheRest) {
  const struct {
    std::string before, section, key, value, after;
  } rows[] = {
      {"", "S", "K", "1", "[S]\r\nK=1\r\n"},
      {"; note\n\n[s]\n k = 0 \nx\n", "S", "K", "1", "; note\n\n[s]\n k =1\nx\n"},
      {"[S]\r\nA=1\nK=0", "S", "K", "22", "[S]\r\nA=1\nK=22"},
      {"[S]\r\nA=1\r\n; end\r\n \r\n\r\n[T]\r\nB=2", "S", "K", "1",
       "[S]\r\nA=1\r\n; end\r\nK=1\r\n \r\n\r\n[T]\r\nB=2"},
      {"[S]\nA=1", "S", "K", "1", "[S]\nA=1\nK=1\n"},
      {"[S]\nA=1\n\n ", "T", "K", "1", "[S]\nA=1\n\n \n[T]\nK=1\n"},
      {"[S]\nK=1\nK=2\n[S]\nK=3\n", "S", "K", "9", "[S]\nK=9\nK=2\n[S]\nK=3\n"},
      {"\xEF\xBB\xBF[S]\n", "S", "K", "ポンプ", "\xEF\xBB\xBF[S]\nK=ポンプ\n"},
      {"x\0y\n[S]\nA=\0\nK=a\0b\n"s, "S", "K", "c\0d"s, "x\0y\n[S]\nA=\0\nK=c\n"s},
      {"\n", "S", "K", "a\r\n[T]\nb", "\n[S]\nK=a  [T] b\n"},
  };
  for (const auto& row : rows) {
    ProfileFile profile(row.before);
    EXPECT_EQ(profile.Text(), row.before);
    profile.SetString(row.section, row.key, row.value);
    EXPECT_EQ(profile.Text(), row.after);
    EXPECT_EQ(ProfileFile(row.after).Text(), row.after);
  }
}

TEST(ProfileFile, GivesBackWhatWasWritten) {
  for (const std::string value :
       {"", " ", "a", " a", "a\t", "\"a\"", "'", "''", "\"\"a\"\"", "c:\\", ";a=b", "[x]"}) {
    ProfileFile profile;
    profile.SetString("S", "K", value);
    EXPECT_EQ(ProfileFile(profile.Text()).GetString("S", "K", "absent"), value) << '<' << value << '>';
  }
}

// With a scan for each key this would take hours; the time-out of the test run catches it.
TEST(ProfileFile, HandlesAHundredThousandLines) {
  constexpr int kLines = 100'000;
  const auto key = [](int i) { return "KEY_" + std::to_string(i); };
  std::string content = "[S]\r\n";
  for (int i = 0; i < kLines; ++i) content += key(i) + "=old\r\n";
  content += Repeated("\r\n", kLines);
  ProfileFile profile(content + "[T]\r\n");
  for (int i = 0; i < kLines; ++i) profile.SetString("S", key(i), std::to_string(i));
  for (int i = kLines; i < 2 * kLines; ++i) profile.SetString(i % 2 == 0 ? "S" : "T", key(i), "new");
  const ProfileFile again(profile.Text());
  int wrong = 0;
  for (int i = 0; i < kLines; ++i) wrong += again.GetInt("s", key(i), -1) != i;
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(again.GetString("S", key(kLines), ""), "new");
  EXPECT_EQ(again.GetString("T", key(2 * kLines - 1), ""), "new");
}

TEST(ProfileFile, IsNotTouchedWhenItCannotBeRead) {
  for (const FileError error : {FileError::kNoPermission, FileError::kNotAFile, FileError::kTooLarge}) {
    MemoryFileSystem files;
    files.FailPath("/x.ini", error);
    ProfileFile profile("[S]\nK=1\n");
    EXPECT_EQ(ReadProfile(files, "/x.ini", profile), error);
    EXPECT_EQ(profile.Text(), "");
    EXPECT_EQ(ChangeProfile(files, "/x.ini", true, [](ProfileFile& p) { p.SetString("S", "K", "2"); }),
              error);
    EXPECT_EQ(files.changes.size(), 0U);
  }
}

TEST(ProfileFile, PathMayEndInBlanks) {
  MemoryFileSystem files;
  EXPECT_EQ(ChangeProfile(files, "/a b.ini ", false, [](ProfileFile& p) { p.SetString("S", "K", "1"); }),
            FileError::kGood);
  ProfileFile profile;
  EXPECT_EQ(ReadProfile(files, "/a b.ini  ", profile), FileError::kGood);
  EXPECT_EQ(files.files, (std::map<std::string, std::string>{{"/a b.ini", "[S]\r\nK=1\r\n"}}));
}

TEST(WholeFile, OldOrNewFileStandsWhereverTheProgramIsKilled) {
  int kills = 0;
  for (int step = 1;; ++step) {
    MemoryFileSystem files;
    files.files["/p.ini"] = "the old file";
    files.KillAtChange(step);
    try {
      EXPECT_EQ(WriteWhole(files, "/p.ini", "the new file", true), FileError::kGood);
      break;
    } catch (const Killed&) {
      ++kills;
      EXPECT_EQ(files.files["/p.ini"], "the old file") << step;
      if (files.Exists("/p.ini.bak")) {
        EXPECT_EQ(files.files["/p.ini.bak"], "the old file") << step;
      }
    }
  }
  EXPECT_EQ(kills, 4);  // create, create and rename the backup, rename
}

TEST(WholeFile, FailureAtAnyStepLeavesTheOldFileAndNoTemporary) {
  for (const bool keep : {false, true}) {
    for (int step = 1; step <= (keep ? 4 : 2); ++step) {
      MemoryFileSystem files;
      files.files = {{"/p.ini", "old"}, {"/p.ini.bak", "older"}};
      files.FailChange(step, FileError::kFull);
      EXPECT_EQ(WriteWhole(files, "/p.ini", "new", keep), FileError::kFull) << step;
      EXPECT_EQ(files.files.size(), 2U) << step;
      EXPECT_EQ(files.files["/p.ini"], "old") << step;
      EXPECT_EQ(files.files["/p.ini.bak"], step == 4 ? "old" : "older") << step;
    }
  }
}

// A machine whose move of a file ends in an exception.
class ThrowingFiles : public MemoryFileSystem {
 public:
  FileError Rename(const std::string&, const std::string&) override { throw std::bad_alloc(); }
};

TEST(WholeFile, AnExceptionLeavesTheOldFileAndNoTemporary) {
  ThrowingFiles files;
  files.files["/p.ini"] = "old";
  EXPECT_THROW(WriteWhole(files, "/p.ini", "new", false), std::bad_alloc);
  EXPECT_EQ(files.files, (std::map<std::string, std::string>{{"/p.ini", "old"}}));
}

TEST(WholeFile, KeepsTheFormerFile) {
  MemoryFileSystem files;
  for (const char* content : {"1", "2", "2", "3", "3"}) WriteWhole(files, "/p.ini", content, true);
  EXPECT_EQ(files.files, (std::map<std::string, std::string>{{"/p.ini", "3"}, {"/p.ini.bak", "2"}}));
}

TEST(AppendLine, IsOneWriteWhoseFailureIsTold) {
  MemoryFileSystem files;
  EXPECT_EQ(AppendLine(files, "/log.csv", "a,1"), FileError::kGood);
  files.FailChange(1, FileError::kFull);
  EXPECT_EQ(AppendLine(files, "/log.csv", "b,2"), FileError::kFull);
  EXPECT_EQ(AppendLine(files, "/log.csv", "c,3"), FileError::kGood);
  EXPECT_EQ(files.files["/log.csv"], "a,1\r\nc,3\r\n");
}

}  // namespace
}  // namespace vlt
