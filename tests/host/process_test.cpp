// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QFileInfo>
#include <filesystem>

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
  EXPECT_TRUE(QtProcess(here.Folder()).BecomeOnlyInstance());
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
