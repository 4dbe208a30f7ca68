// SPDX-License-Identifier: GPL-3.0-or-later
// The script as it comes in.
#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <string>

#include "cli/script.h"

class QSocketNotifier;

namespace vlt {

// Standard input, line by line while events run, so that a person or another program can say the next line
// when it has seen what came of the last one. Where the system cannot tell that input is waiting, it is read
// to its end first.
class StandardInput : public QObject {
 public:
  StandardInput(std::function<void(ScriptLine)> line, std::function<void()> end);
  ~StandardInput() override;

 private:
  void Read();
  void HandOn();

  std::function<void(ScriptLine)> line_;
  std::function<void()> end_;
  ScriptReader reader_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace vlt
