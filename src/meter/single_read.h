// SPDX-License-Identifier: GPL-3.0-or-later
// One parameter read for itself: its own register, and the few that tell what it means (the shape of the
// meter, the unit system, the units of its channel).
#pragma once

#include <string>
#include <vector>

#include "meter/snapshot.h"

namespace vlt {

struct SingleRead {
  // Why the shape of the meter is not known; empty when it is. Nothing else was read then.
  std::string failure;
  // Shape, units and language that the rows are shown by.
  ToldFacts facts;
  // The places of the parameter that were asked for and that this meter has, in order; one whose own
  // registers, or those of its unit, could not be read is not known and tells the reason.
  std::vector<SnapshotRow> rows;
};

// Reads a place, or with kEveryPlace each one that the meter has. The port must be open and the interface
// locked. Nothing is kept in the shared state.
inline constexpr int kEveryPlace = -1;
SingleRead ReadSingle(App& app, const Parameter& row, int index);

}  // namespace vlt
