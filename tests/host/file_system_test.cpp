// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <fstream>
#include <functional>
#include <sstream>
#include <vector>

#include "files/whole_file.h"
#include "host/std_file_system.h"
#include "tests/host/scratch.h"

namespace vlt {
namespace {

std::string Slurp(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

void Put(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

// No file of this process grows beyond `bytes` while this lives: a disk that is full.
class FullDisk {
 public:
  explicit FullDisk(rlim_t bytes) {
    old_handler_ = std::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit limit{bytes, old_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FullDisk() {
    ::setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, old_handler_);
  }
  FullDisk(const FullDisk&) = delete;
  FullDisk& operator=(const FullDisk&) = delete;

 private:
  rlimit old_{};
  void (*old_handler_)(int) = nullptr;
};

TEST(StdFileSystem, TellsTheEndOfAFileAndWhatAFolderHolds) {
  const Scratch scratch;
  StdFileSystem files;
  const std::string folder = scratch.Path("記録/points");
  EXPECT_EQ(files.MakeFolder(folder), FileError::kGood);
  EXPECT_EQ(files.MakeFolder(folder), FileError::kGood) << "it is there already";
  Put(folder + "/b.txt", "0123456789");
  Put(folder + "/a.txt", "");
  EXPECT_EQ(files.MakeFolder(folder + "/inner"), FileError::kGood);
  EXPECT_EQ(files.MakeFolder(folder + "/b.txt"), FileError::kNotAFile);
  std::vector<std::string> names;
  ASSERT_EQ(files.FilesIn(folder, names), FileError::kGood);
  EXPECT_EQ(names, (std::vector<std::string>{"a.txt", "b.txt"}));
  EXPECT_EQ(files.FilesIn(folder + "/nowhere", names), FileError::kMissing);

  std::string content;
  std::uint64_t length = 0;
  ASSERT_EQ(files.ReadTail(folder + "/b.txt", 4, content, length), FileError::kGood);
  EXPECT_EQ(content, "6789");
  EXPECT_EQ(length, 10U);
  ASSERT_EQ(files.ReadTail(folder + "/b.txt", 40, content, length), FileError::kGood);
  EXPECT_EQ(content, "0123456789");
  ASSERT_EQ(files.ReadTail(folder + "/a.txt", 4, content, length), FileError::kGood);
  EXPECT_EQ(content, "");
  EXPECT_EQ(files.ReadTail(folder, 4, content, length), FileError::kNotAFile);

  EXPECT_EQ(files.Flush(folder + "/b.txt"), FileError::kGood);
  EXPECT_EQ(Slurp(folder + "/b.txt"), "0123456789");
  EXPECT_EQ(files.Flush(folder + "/c.txt"), FileError::kMissing);
  EXPECT_FALSE(files.Exists(folder + "/c.txt"));
}

TEST(StdFileSystem, KeepsEveryByteThroughEachOperation) {
  const Scratch scratch;
  StdFileSystem files;
  const std::string odd("a\0b\r\n\xFF", 6);
  const std::string path = scratch.Path("流量 ｶﾅ.ini");
  ASSERT_EQ(files.Create(path, odd), FileError::kGood);
  ASSERT_EQ(files.Append(path, "tail\r\n"), FileError::kGood);
  std::string content;
  ASSERT_EQ(files.Read(path, content), FileError::kGood);
  EXPECT_EQ(content, odd + "tail\r\n");
  ASSERT_EQ(files.Create(path, "x"), FileError::kGood);
  EXPECT_EQ(Slurp(path), "x") << "what was longer is cut";
  ASSERT_EQ(files.Append(scratch.Path("new.csv"), "row\r\n"), FileError::kGood);
  EXPECT_EQ(Slurp(scratch.Path("new.csv")), "row\r\n");
  ASSERT_EQ(files.Rename(scratch.Path("new.csv"), path), FileError::kGood);
  EXPECT_EQ(Slurp(path), "row\r\n");
  EXPECT_FALSE(files.Exists(scratch.Path("new.csv")));
  ASSERT_EQ(files.Remove(path), FileError::kGood);
  EXPECT_FALSE(files.Exists(path));
}

TEST(StdFileSystem, SaysWhyAndTouchesNothing) {
  const Scratch scratch;
  StdFileSystem files;
  std::filesystem::create_directory(scratch.Path("folder"));
  Put(scratch.Path("good"), "kept");
  Put(scratch.Path("locked"), "kept");
  Put(scratch.Path("secret"), "kept");
  std::filesystem::permissions(scratch.Path("good"), std::filesystem::perms(0666));
  std::filesystem::permissions(scratch.Path("locked"), std::filesystem::perms(0444));
  std::filesystem::permissions(scratch.Path("secret"), std::filesystem::perms(0000));
  std::filesystem::create_directory(scratch.Path("shut"));
  std::filesystem::permissions(scratch.Path("shut"), std::filesystem::perms(0555));
  ASSERT_EQ(::mkfifo(scratch.Path("pipe").c_str(), 0666), 0);
  std::ofstream(scratch.Path("huge")).close();
  std::filesystem::resize_file(scratch.Path("huge"), 8 * 1024 * 1024 + 1);
  std::filesystem::create_symlink("/dev/zero", scratch.Path("zero"));

  std::string content = "untouched";
  const auto at = [&](const char* name) { return scratch.Path(name); };
  const auto read = [&](const char* name) { return [&, name] { return files.Read(at(name), content); }; };
  const auto create = [&](const char* name) { return [&, name] { return files.Create(at(name), "x"); }; };
  const auto append = [&](const char* name) { return [&, name] { return files.Append(at(name), "x"); }; };
  const auto rename = [&](const char* from, const char* to) {
    return [&, from, to] { return files.Rename(at(from), at(to)); };
  };
  const auto remove = [&](const char* name) { return [&, name] { return files.Remove(at(name)); }; };
  struct Case {
    const char* what;
    std::function<FileError()> act;
    FileError error;
  };
  const std::vector<Case> cases{
      {"read nothing", read("none"), FileError::kMissing},
      {"read below a file", read("good/below"), FileError::kMissing},
      {"read a folder", read("folder"), FileError::kNotAFile},
      {"read a pipe", read("pipe"), FileError::kPipe},
      {"read a device", read("zero"), FileError::kDevice},
      {"create over a device", create("zero"), FileError::kDevice},
      {"read a secret", read("secret"), FileError::kNoPermission},
      {"read too much", read("huge"), FileError::kTooLarge},
      {"create over a folder", create("folder"), FileError::kNotAFile},
      {"create in no folder", create("none/file"), FileError::kMissing},
      {"create over a locked file", create("locked"), FileError::kNoPermission},
      {"create in a shut folder", create("shut/file"), FileError::kNoPermission},
      {"append to a folder", append("folder"), FileError::kNotAFile},
      {"append to a pipe", append("pipe"), FileError::kPipe},
      {"append to a locked file", append("locked"), FileError::kNoPermission},
      {"append in no folder", append("none/file"), FileError::kMissing},
      {"rename nothing", rename("none", "good"), FileError::kMissing},
      {"rename over a folder", rename("good", "folder"), FileError::kNotAFile},
      {"rename over a locked file", rename("good", "locked"), FileError::kNoPermission},
      {"rename into a shut folder", rename("good", "shut/file"), FileError::kNoPermission},
      {"remove nothing", remove("none"), FileError::kMissing},
      {"remove a folder", remove("folder"), FileError::kNotAFile},
  };
  {
    const WithoutRights nobody;
    for (const Case& c : cases) EXPECT_EQ(c.act(), c.error) << c.what;
    EXPECT_EQ(content, "untouched");
  }
  EXPECT_EQ(Slurp(scratch.Path("good")), "kept");
  EXPECT_EQ(Slurp(scratch.Path("locked")), "kept");
  EXPECT_TRUE(std::filesystem::is_empty(scratch.Path("shut")));
}

TEST(StdFileSystem, ALinkStaysAndItsFileIsReplaced) {
  namespace fs = std::filesystem;
  const Scratch scratch;
  StdFileSystem files;
  fs::create_directories(scratch.Path("real"));
  fs::create_directories(scratch.Path("app"));
  Put(scratch.Path("real/site.ini"), "old");
  fs::create_symlink("../real/site.ini", scratch.Path("app/near.ini"));
  fs::create_symlink(scratch.Path("app/near.ini"), scratch.Path("app/VLT.ini"));
  fs::create_symlink("../real/new.ini", scratch.Path("app/dangling.ini"));
  fs::create_symlink("circle.ini", scratch.Path("app/circle.ini"));

  EXPECT_EQ(WriteWhole(files, scratch.Path("app/VLT.ini"), "new", true), FileError::kGood);
  EXPECT_TRUE(fs::is_symlink(scratch.Path("app/VLT.ini")));
  EXPECT_TRUE(fs::is_symlink(scratch.Path("app/near.ini")));
  EXPECT_EQ(Slurp(scratch.Path("real/site.ini")), "new");
  EXPECT_EQ(Slurp(scratch.Path("real/site.ini.bak")), "old");
  EXPECT_EQ(WriteWhole(files, scratch.Path("app/dangling.ini"), "first", false), FileError::kGood);
  EXPECT_EQ(Slurp(scratch.Path("real/new.ini")), "first");
  EXPECT_NE(WriteWhole(files, scratch.Path("app/circle.ini"), "x", false), FileError::kGood);
  EXPECT_EQ(std::distance(fs::directory_iterator(scratch.Path("real")), {}), 3)
      << "nothing temporary is left";
  EXPECT_EQ(std::distance(fs::directory_iterator(scratch.Path("app")), {}), 4)
      << "the backup lies beside the file, not beside a link to it";
}

TEST(StdFileSystem, AFullDiskLeavesNoHalfFile) {
  const Scratch scratch;
  StdFileSystem files;
  Put(scratch.Path("log"), "12345678");
  {
    const FullDisk full(10);
    EXPECT_EQ(files.Create(scratch.Path("fresh"), std::string(100, 'x')), FileError::kFull);
    EXPECT_EQ(files.Append(scratch.Path("log"), "a whole line\r\n"), FileError::kFull);
    EXPECT_EQ(files.Append(scratch.Path("log2"), "a whole line\r\n"), FileError::kFull);
    EXPECT_EQ(files.Append(scratch.Path("log"), "ok"), FileError::kGood) << "room for so much is left";
  }
  EXPECT_EQ(Slurp(scratch.Path("log")), "12345678ok");
  EXPECT_FALSE(files.Exists(scratch.Path("fresh")));
  EXPECT_FALSE(files.Exists(scratch.Path("log2")));
}

TEST(StdFileSystem, ReplacingKeepsTheAccessRights) {
  const Scratch scratch;
  StdFileSystem files;
  Put(scratch.Path("VLT.ini"), "old");
  std::filesystem::permissions(scratch.Path("VLT.ini"), std::filesystem::perms(0640));
  ASSERT_EQ(WriteWhole(files, scratch.Path("VLT.ini"), "new", true), FileError::kGood);
  for (const auto& [name, content] : {std::pair("VLT.ini", "new"), {"VLT.ini.bak", "old"}}) {
    EXPECT_EQ(Slurp(scratch.Path(name)), content);
    EXPECT_EQ(std::filesystem::status(scratch.Path(name)).permissions(), std::filesystem::perms(0640))
        << name;
  }
}

TEST(StdFileSystem, ALimitIsToldWithWhatWasTooLong) {
  const Scratch scratch;
  StdFileSystem files;
  Put(scratch.Path("f"), "1234");
  std::string content;
  EXPECT_EQ(files.ReadAtMost(scratch.Path("f"), 4, content), FileError::kGood);
  const FileError error = files.ReadAtMost(scratch.Path("f"), 3, content);
  EXPECT_EQ(error, FileError::kTooLarge);
  EXPECT_EQ(error.Most(), 3U);
  EXPECT_EQ(content, "1234");
}

}  // namespace
}  // namespace vlt
