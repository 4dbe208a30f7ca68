// SPDX-License-Identifier: GPL-3.0-or-later
// What a window shows, asks and sends, in the lines of a text that a person reviews:
//
//   ! TEXT                     a message box
//   > 03 0148+01, 10 005A=0B   requests: function, register, count or bytes; 04 00C0..1040+40 is block by
//   block grey: A, B(0..3)           what is now so A = 7; B = 1 CH2           what holds this A(0): CAPTION
//   what says this
#pragma once

#include <map>
#include <string>
#include <vector>

#include "support/shown_facets.h"

namespace vlt::test {

using Lines = std::vector<std::string>;

// What a step has done, and what its window shows behind it: nothing when it is closed.
struct Outcome {
  Lines boxes;
  Lines requests;  // without station and frame check
  Facets shown;
};

Lines BoxLines(const Lines& boxes);
Lines RequestLines(const Lines& requests);
// What has changed, what changes alike in one.
Lines ChangeLines(const Facets& changes);
// A window whole: a line a control, and what is the same of an array in one.
Lines WholeLines(const Facets& shown);

// A facet that is there or not ("grey", "ticked"), and what is said of one.
bool IsFlag(const std::string& facet);
std::string Saying(const std::string& facet, const std::string& text);
// The elements of an array in one: "chkStationNo(0..30)".
Lines Gathered(const Lines& names);
// "A|B|" in three.
Lines PartsOf(const std::string& text, char between);
// A line with a list that may be broken between its parts; what is added to it stands behind the list.
Lines Packed(const std::string& head, const Lines& parts, const char* between);
std::string Whole(std::string packed);
// As many parts of the list a line as it has room for, the first one behind the head.
Lines Broken(const std::string& packed);

// What a step tells, in one line when there is room for it behind its head.
Lines InOne(const std::string& head, const Lines& lines);

// Tells a long list once: the next time it is "[FIRST +N]", the first of its parts and how many follow.
class ToldLists {
 public:
  Lines Broken(const std::string& packed);

 private:
  std::map<std::string, std::string> told_;  // the list by its short name
};

// All in one line.
std::string Joined(const Lines& parts);

// Fails where the file says something else. With VELTRANO3_RENEW in the environment the file is written anew
// (and the test fails, so that nobody leaves it on).
void ExpectFileTells(const std::string& path, const std::string& now);

}  // namespace vlt::test
