// SPDX-License-Identifier: GPL-3.0-or-later
// What a bench needs that works on a real line: nobody who answers boxes, and a simulated meter as a process
// of its own.
#pragma once

#include <QProcess>
#include <string>

#include "platform/dialogs.h"

namespace vlt::bench {

// A box ends the bench with status 2 and tells what it says: nobody is there to answer.
class NoDialogs : public Dialogs {
 public:
  MessageAnswer Ask(const Message& message) override;
  std::optional<std::string> AskOpenFile(const FileQuestion& /*question*/) override { return {}; }
  std::optional<std::string> AskSaveFile(const FileQuestion& /*question*/) override { return {}; }
  std::optional<std::string> AskFolder(const FolderQuestion& /*question*/) override { return {}; }
};

// meter-sim on a pseudo-terminal, for as long as it exists. Its processor time does not count as the bench's.
class MeterProcess {
 public:
  explicit MeterProcess(const QStringList& words);
  ~MeterProcess();
  MeterProcess(const MeterProcess&) = delete;
  MeterProcess& operator=(const MeterProcess&) = delete;
  // Empty when it did not come up.
  const std::string& Device() const { return device_; }

 private:
  QProcess process_;
  std::string device_;
};

}  // namespace vlt::bench
