// SPDX-License-Identifier: GPL-3.0-or-later
// The script language of the companion: one gesture or look a line.
//
//   type OUTER_DIAMETERText 60.5     # what follows a "#" at the start of a word is a comment
//   expect Label2(0) "[mm/s]"        # blanks and "#" inside quotes; "" inside quotes is one quote
//
// Words are separated by blanks and tabs. A line ends with LF or CR LF. Text is UTF-8; a byte-order mark at
// the head is dropped.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vlt {

struct Argument {
  std::string text;
  bool quoted = false;  // what is quoted is a text, never a number or one of the language's own words
};
using Arguments = std::vector<Argument>;

struct ScriptLine {
  int number = 0;    // counted from 1
  std::string word;  // empty: nothing is to be done
  Arguments arguments;
  std::string error;  // what is wrong with the line's quotes, else empty
};

ScriptLine ParseScriptLine(std::string_view text, int number);

// Cuts a script that arrives in pieces into its lines.
class ScriptReader {
 public:
  void Add(std::string_view bytes) { rest_ += bytes; }
  // What stands behind the last line end is a line, too.
  void End() { ended_ = true; }
  // The next line that is there as a whole; nothing while none is.
  std::optional<ScriptLine> Next();

 private:
  std::string rest_;
  int lines_ = 0;
  bool ended_ = false;
};

}  // namespace vlt
