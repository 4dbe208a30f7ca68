// SPDX-License-Identifier: GPL-3.0-or-later
// The program with windows in a folder of its own, the meter simulated in process, for benches of its pages.
#pragma once

#include <QApplication>
#include <QTemporaryDir>
#include <optional>
#include <string>

#include "desktop/program.h"

namespace vlt::bench {

// Lets the program go on for so long, without a rest between its events.
void RunFor(int ms);
// The same asleep between them, as the program is by itself; the processor time that it took, in
// milliseconds.
double ProcessorMsOver(int ms);

class Desk {
 public:
  // A meter of two paths with heat at this speed ("9600"). Starts the program up to its main window; ends the
  // bench with status 1 when it does not come.
  Desk(int& argc, char** argv, const std::string& speed);

  App& Logic() { return program_->Logic(); }
  const std::string& Folder() const { return path_; }
  // Straight away, with status 0: the figures are out, and nobody is there to answer the question of the
  // closing window.
  [[noreturn]] void End();

 private:
  QApplication application_;
  QTemporaryDir folder_;
  std::string path_;
  std::optional<Program> program_;
};

}  // namespace vlt::bench
