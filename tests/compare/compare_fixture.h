// SPDX-License-Identifier: GPL-3.0-or-later
// A meter on an open port, and what the comparison does with it.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "compare/sender.h"
#include "meter/snapshot_file.h"
#include "tests/pages/page_fixture.h"

namespace vlt::test {

inline constexpr Shape kShapes[] = {kOnePath, kTwoPaths, kTwoPipes, kSingleModel};

// A meter of a shape with a value of its own in every register, and a session that knows nothing of it yet.
class CompareTest : public PageTest {
 public:
  explicit CompareTest(const Shape& shape = kTwoPipes, int lang_offset = 5000, unsigned seed = 7)
      : PageTest(shape, lang_offset) {
    Fill(seed);
    app().state.UnitFlag = 0;
    Requests();
  }

  // Values as an operator may have set them: the totals are not being reset, and no output is being checked.
  void Fill(unsigned seed) {
    meter().Fill(seed, 0);
    for (const int base : {0, 0x1388, 0x1B58}) {
      const auto mode = static_cast<std::uint32_t>(0x42 + base);
      if (meter().holding().Has(mode, 2) && meter().holding().Word(mode) == 2)
        meter().holding().PutWord(mode, 1);
    }
  }

  Snapshot Read() { return ReadSnapshot(app(), {}).snapshot; }
  CompareSide Meter() { return SideOfMeter(Read()); }
  SendReport Send(const CompareSide& side, std::vector<ParameterPlace> places) {
    return SendRows(app(), side, std::move(places), {});
  }
  RestoreReport Restore(const Snapshot& point) { return RestoreMeter(app(), SideOfMeter(point), {}); }

  std::map<std::string, std::string>& Files() { return test.platform.files.files; }
};

inline ParameterPlace At(const char* name, int index = 0) { return {FindParameter(name), index}; }

inline std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines(1);
  for (const char c : text) {
    if (c == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += c;
    }
  }
  return lines;
}

}  // namespace vlt::test
