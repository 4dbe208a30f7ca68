// SPDX-License-Identifier: GPL-3.0-or-later
// The script language of the companion: one gesture or look a line.
//
//   type OUTER_DIAMETERText 60.5     # what follows a "#" at the start of a word is a comment
//   expect Label2(0) "[mm/s]"        # blanks and "#" inside quotes; "" inside quotes is one quote
//
// Words are separated by blanks and tabs. A line ends with LF or CR LF and has at most kMostLineBytes. Text
// is UTF-8; a byte-order mark at the head is dropped.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vlt {

inline constexpr std::size_t kMostLineBytes = std::size_t{64} << 10;

struct Argument {
  std::string text;
  bool quoted = false;  // what is quoted is a text, never a number or one of the language's own words
};
using Arguments = std::vector<Argument>;

struct ScriptLine {
  int number = 0;    // counted from 1
  std::string word;  // empty: nothing is to be done
  Arguments arguments;
  std::string error;  // what is wrong with the line's quotes or its length, else empty
};

ScriptLine ParseScriptLine(std::string_view text, int number);

// Cuts a script that arrives in pieces into its lines. A line that is too long is handed on without its words
// as soon as that is seen; no more of it is kept.
class ScriptReader {
 public:
  void Add(std::string_view bytes);
  // What stands behind the last line end is a line, too.
  void End() { ended_ = true; }
  // The next line that is there as a whole; nothing while none is.
  std::optional<ScriptLine> Next();

 private:
  ScriptLine TooLong();

  std::string rest_;
  std::size_t at_ = 0;  // where the next line begins in it
  int lines_ = 0;
  bool ended_ = false;
  bool dropping_ = false;  // to the end of a line that is too long
};

}  // namespace vlt
