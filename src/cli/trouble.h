// SPDX-License-Identifier: GPL-3.0-or-later
// How a script ends.
#pragma once

#include <string>

namespace vlt {

enum class ScriptStatus {
  kGood = 0,
  kDiffers = 1,     // an `expect` differs, a line could not be done, or an exchange failed behind `strict`
  kUnknown = 2,     // a word or a name is not known, or a line is not written as the language asks
  kUnanswered = 3,  // a message box or file dialog came up and no answer was waiting for it
};

// Thrown where a line of a script cannot be followed; caught where the line is run.
struct Trouble {
  ScriptStatus status;
  std::string text;
};

// What ended a script early. The line counts from 1; 0 is none.
struct ScriptTrouble {
  int line = 0;
  ScriptStatus status = ScriptStatus::kGood;
  std::string text;
};

}  // namespace vlt
