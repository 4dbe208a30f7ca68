// SPDX-License-Identifier: GPL-3.0-or-later
// What a window shows, asks and sends, as a text that a person reviews: of each step what it changes, and
// nothing twice.
//
//   == opened: one path        a window whole; what is the same of several controls stands in one line
//   == opened: two pipes       what is not as in the first part of this kind
//   == read and worked: ...    steps
//   KINDCheck off              a step, and what it changes but for the control itself, "~" for its name;
//     as after STEP              or the window is as it was then
//   CHANGE <- STEPS            steps that change the same
//   == hints                   the tooltips, by the number that a step tells when they change
//
// A command (up to " at ") tells of its boxes, requests and status line what is not as it was its last time.
// In a further part of a kind a step tells what is not as in the first one ("not": only there), and one that
// is the same nothing at all, and neither does a tick that brings back what was before it went. At the end of
// a part stand the steps that have nothing to tell. A long list stands once, and then as "[FIRST +N]".
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "support/told_lines.h"

namespace vlt::test {

class ToldWindow {
 public:
  void Opened(const std::string& of, const Outcome& outcome);

  // Begins a part of steps on a window that has been opened so.
  void Part(const std::string& kind, const std::string& of, const Outcome& opening);
  // `own` is the control that a person has worked.
  void Step(std::string name, const Outcome& outcome, const std::string& own = {});
  // The window was opened anew: told by what is not as it was opened first.
  void Anew(std::string name, const Outcome& outcome);

  std::string Whole();

 private:
  struct Done {
    std::string name;
    Lines boxes;
    Lines requests;
    Facets changes;
    bool operator==(const Done&) const = default;
  };
  struct Said {
    Lines boxes;
    Lines requests;
    Facets status;
  };

  Outcome Taken(const Outcome& outcome);
  void Do(Done done, const Facets& shown);
  Lines LinesOf(const Done& done, const Facets& shown);
  static Lines LinesAgainst(const Done& first, const Done& done);
  Done NotSaidBefore(const Done& done, const Facets& shown);
  std::string SeenBefore(const Facets& shown) const;
  void AddOrGather(const Done& done, const Lines& lines);
  void EndPart();
  void Title(const std::string& title) { text_ += "\n== " + title + "\n"; }
  void Add(const std::string& step, const Lines& lines);
  void AddLine(const std::string& before, const std::string& line);
  void TellHints();
  void TellFurtherHints(std::size_t at, const std::function<Lines(const Facets&)>& brief);

  std::string text_;
  Outcome first_opened_;
  std::vector<Facets> hints_;
  std::map<std::string, std::vector<Done>> firsts_;  // of each kind
  std::map<std::string, Said> said_;                 // by command

  // Of the part that is told.
  std::string kind_, title_;
  std::vector<Done> done_;
  std::vector<Facets> shown_;  // behind each step
  Lines without_, back_, as_before_;
  std::vector<std::pair<std::string, Lines>> alike_;  // what they change, and the steps
  ToldLists lists_;

  struct Seen {
    std::string part, step;
    Facets shown;
  };
  std::vector<Seen> seen_;
};

// What the texts of the windows are in the other language, each once, where this is not a row of the table of
// texts: "TEXT -> its words".
class ToldWords {
 public:
  // A window as it opens in the one language and in the other.
  void Add(const std::string& window, Facets ours, Facets theirs);
  std::string Whole() const;

 private:
  std::map<std::string, std::map<std::string, Lines>> words_;  // and where, for texts that have several
  std::string others_;
};

}  // namespace vlt::test
