// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QFileInfo>
#include <QSysInfo>
#include <filesystem>
#include <fstream>

#include "host/qt_process.h"
#include "tests/host/scratch.h"

namespace vlt {
namespace {

TEST(QtProcess, OneInstanceAProgramFolder) {
  const Scratch here;
  const Scratch there;
  QtProcess first(here.Folder());
  EXPECT_TRUE(first.BecomeOnlyInstance());
  EXPECT_TRUE(first.BecomeOnlyInstance()) << "asked again it is still the one";
  {
    QtProcess second(here.Folder() + "/.");
    EXPECT_FALSE(second.BecomeOnlyInstance());
  }
  EXPECT_FALSE(QtProcess(here.Folder()).BecomeOnlyInstance()) << "the refused one left the guard alone";
  EXPECT_TRUE(QtProcess(there.Folder()).BecomeOnlyInstance());
}

TEST(QtProcess, ACrashedInstanceDoesNotStopTheNext) {
  const Scratch here;
  const pid_t child = ::fork();
  if (child == 0) {
    QtProcess crashing(here.Folder());
    ::_exit(crashing.BecomeOnlyInstance() ? 0 : 1);  // nothing is cleaned up
  }
  int status = 1;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_EQ(status, 0);
  ASSERT_TRUE(std::filesystem::exists(here.Path("veltrano3.lock")));
  QtProcess next(here.Folder());
  EXPECT_TRUE(next.BecomeOnlyInstance());
  EXPECT_EQ(next.LockInTheWay().state, FoundLock::State::kTakenOver);
  EXPECT_EQ(next.LockInTheWay().process, child);
}

// Whatever a lock file says: where no process holds it, it blocks nobody, and is named.
TEST(QtProcess, ALockFileThatNobodyHoldsIsTakenOver) {
  const std::string me = std::to_string(::getpid());
  const struct {
    std::string content;
    long long process;
  } cases[] = {
      {"", 0},
      {"no lock at all", 0},
      {me + "\nveltrano3\nanother-machine\n", ::getpid()},
      {me + "\nveltrano3\n" + QSysInfo::machineHostName().toStdString() + "\n", ::getpid()},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(given.content);
    const Scratch here;
    std::ofstream(here.Path("veltrano3.lock"), std::ios::binary) << given.content;
    QtProcess first(here.Folder());
    EXPECT_TRUE(first.BecomeOnlyInstance());
    EXPECT_EQ(first.LockInTheWay().state, FoundLock::State::kTakenOver);
    EXPECT_EQ(first.LockInTheWay().path, here.Path("veltrano3.lock"));
    EXPECT_EQ(first.LockInTheWay().process, given.process);
    QtProcess second(here.Folder());
    EXPECT_FALSE(second.BecomeOnlyInstance()) << "it is held now";
    EXPECT_EQ(second.LockInTheWay().state, FoundLock::State::kNone);
  }
}

// The lock that a process holds stays, even where its text was spoilt.
TEST(QtProcess, ALockFileThatIsHeldStaysThoughItsTextIsSpoilt) {
  const Scratch here;
  QtProcess first(here.Folder());
  ASSERT_TRUE(first.BecomeOnlyInstance());
  std::filesystem::resize_file(here.Path("veltrano3.lock"), 0);
  EXPECT_FALSE(QtProcess(here.Folder()).BecomeOnlyInstance());
}

TEST(QtProcess, AFolderThatTakesNoFileIsGuardedToo) {
  const Scratch here;
  const Scratch other;
  for (const Scratch* scratch : {&here, &other})
    std::filesystem::permissions(scratch->Folder(), std::filesystem::perms(0555));
  const WithoutRights nobody;
  const Scratch runtime;
  std::filesystem::permissions(runtime.Folder(), std::filesystem::perms(0700));
  ::setenv("XDG_RUNTIME_DIR", runtime.Folder().c_str(), 1);
  QtProcess first(here.Folder());
  EXPECT_TRUE(first.BecomeOnlyInstance());
  EXPECT_FALSE(std::filesystem::is_empty(runtime.Folder()));
  EXPECT_FALSE(QtProcess(here.Folder()).BecomeOnlyInstance());
  EXPECT_TRUE(QtProcess(other.Folder()).BecomeOnlyInstance());
}

TEST(QtProcess, TheProgramFolderIsAbsoluteWithoutATrailingSeparator) {
  const std::string current = std::filesystem::current_path();
  EXPECT_EQ(QtProcess("/opt/tool/").ProgramFolder(), "/opt/tool");
  EXPECT_EQ(QtProcess("sub/../sub").ProgramFolder(), current + "/sub");
  EXPECT_EQ(QtProcess("/").ProgramFolder(), "");
  EXPECT_EQ(QtProcess().ProgramFolder(), std::filesystem::read_symlink("/proc/self/exe").parent_path());
}

}  // namespace
}  // namespace vlt
