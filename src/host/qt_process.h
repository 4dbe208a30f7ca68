// SPDX-License-Identifier: GPL-3.0-or-later
// The process by Qt.
#pragma once

#include <QLockFile>
#include <QString>
#include <memory>

#include "platform/process.h"

namespace vlt {

class QtProcess : public Process {
 public:
  // `folder` is the program folder; an empty text means the folder of the executable. Needs a
  // QCoreApplication then.
  explicit QtProcess(const std::string& folder = "");

  std::string ProgramFolder() override { return folder_; }
  std::string UserFolder() override;
  char Separator() override;
  // The guard is a lock file in the program folder, or, where that can't be written, one in the user's
  // run-time folder that carries the program folder's fingerprint. It is held until the process ends.
  bool BecomeOnlyInstance() override;
  FoundLock LockInTheWay() override { return found_; }
  int LocaleId() override;
  std::string ShortPath(const std::string& path) override;
  void PutError(const std::string& text) override;
  std::vector<PortInfo> Ports() override;

 private:
  enum class Guard : unsigned char { kOurs, kOthers, kNone };
  Guard KeepGuard(const QString& path);
  Guard TakeOver(const QString& path);
  void Note(FoundLock::State state, const QString& path);

  std::string folder_;
  std::unique_ptr<QLockFile> guard_;
  FoundLock found_;
};

}  // namespace vlt
