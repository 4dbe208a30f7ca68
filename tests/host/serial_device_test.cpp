// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/serial_device.h"

#include <grp.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/host/scratch.h"

namespace vlt {
namespace {

// The group that a user is told to join is the device's own.
TEST(SerialDevice, TheGroupIsThatOfTheDevice) {
  const Scratch scratch;
  const std::string path = scratch.Path("tty");
  std::ofstream(path).close();
  constexpr gid_t kNameless = 54321;
  if (::chown(path.c_str(), ::geteuid(), kNameless) != 0) GTEST_SKIP() << "a user gives no file away";
  const auto group_with = [&](gid_t group, unsigned mode) {
    EXPECT_EQ(::chown(path.c_str(), ::geteuid(), group), 0);
    std::filesystem::permissions(path, std::filesystem::perms(mode));
    return GroupOf(path);
  };
  EXPECT_EQ(group_with(kNameless, 0660), "54321");
  EXPECT_EQ(group_with(kNameless, 0640), "") << "who may not write may not open a port";
  EXPECT_EQ(group_with(kNameless, 0600), "");
  EXPECT_EQ(group_with(0, 0660), "") << "nobody is to join the administrators";
  EXPECT_EQ(GroupOf(scratch.Path("none")), "");
  if (const struct group* named = ::getgrnam("daemon")) {
    EXPECT_EQ(group_with(named->gr_gid, 0660), "daemon");
  }
}

}  // namespace
}  // namespace vlt
