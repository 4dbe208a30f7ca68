// SPDX-License-Identifier: GPL-3.0-or-later
// A simulated meter of one of the shapes that there are, on an open port, with contents that an operator may
// have set.
#pragma once

#include <vector>

#include "meter/snapshot.h"
#include "support/test_app.h"

namespace vlt::test {

struct SoakShape {
  int specification;
  int path_mode;
  int unit_system;
};
// Full models on one path, two paths and two pipes, and a single-channel model.
inline constexpr SoakShape kSoakShapes[] = {{81, 0, 0}, {81, 1, 1}, {81, 2, 0}, {182, 0, 0}, {182, 0, 1}};

class SoakMeter {
 public:
  SoakMeter(const SoakShape& shape, bool events);

  sim::Memory& Memory() { return test.platform.Meter().holding(); }
  // No totals that begin anew, and the meter keeps its name.
  void Fill(unsigned seed);
  Snapshot Read() { return ReadSnapshot(test.app, {}).snapshot; }
  // What the registers of a place hold, by the meter's own memory.
  std::vector<std::uint8_t> Held(const ParameterPlace& place);
  bool Holds(const ParameterPlace& place, const std::vector<std::uint8_t>& raw) { return Held(place) == raw; }

  TestApp test;

 private:
  int id_ = 0;
};

}  // namespace vlt::test
