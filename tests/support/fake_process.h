// SPDX-License-Identifier: GPL-3.0-or-later
// A process whose facts the test sets.
#pragma once

#include "platform/process.h"

namespace vlt::test {

class FakeProcess : public Process {
 public:
  std::string ProgramFolder() override { return folder; }
  std::string UserFolder() override { return user_folder; }
  char Separator() override { return separator; }
  bool BecomeOnlyInstance() override { return only_instance; }
  FoundLock LockInTheWay() override { return lock; }
  int LocaleId() override { return locale_id; }
  std::string ShortPath(const std::string& path) override { return short_path.empty() ? path : short_path; }
  void PutError(const std::string& text) override { errors.push_back(text); }
  std::vector<PortInfo> Ports() override {
    ++looks;
    return ports;
  }

  std::string folder = "/app";
  std::string user_folder = "/home/operator/veltrano3";
  char separator = '/';
  bool only_instance = true;
  FoundLock lock;
  int locale_id = 1033;
  std::string short_path;  // empty: the path itself
  std::vector<PortInfo> ports;
  int looks = 0;  // how often the ports were asked for
  std::vector<std::string> errors;
};

}  // namespace vlt::test
