// SPDX-License-Identifier: GPL-3.0-or-later
// A folder of its own for one test, and a user without the administrator's rights.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

namespace vlt {

class Scratch {
 public:
  Scratch() {
    std::string pattern = testing::TempDir() + "veltrano3-XXXXXX";
    folder_ = ::mkdtemp(pattern.data());
    std::filesystem::permissions(folder_, std::filesystem::perms(0777));
  }
  ~Scratch() {
    std::filesystem::permissions(folder_, std::filesystem::perms(0777));
    std::filesystem::remove_all(folder_);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;
  std::string Path(const std::string& name) const { return folder_ + "/" + name; }
  const std::string& Folder() const { return folder_; }

 private:
  std::string folder_;
};

// For the administrator nothing is forbidden: tests of rights run as somebody else.
class WithoutRights {
 public:
  WithoutRights() {
    if (::geteuid() == 0 && ::seteuid(65534) == 0) changed_ = true;
  }
  ~WithoutRights() {
    if (changed_ && ::seteuid(0) != 0) std::abort();
  }
  WithoutRights(const WithoutRights&) = delete;
  WithoutRights& operator=(const WithoutRights&) = delete;

 private:
  bool changed_ = false;
};

}  // namespace vlt
