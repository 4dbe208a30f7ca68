// SPDX-License-Identifier: GPL-3.0-or-later
// One side of a comparison: a meter that was just read, a snapshot, a parameter file, or what the pages show.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "files/settings_file.h"
#include "meter/snapshot.h"
#include "meter/snapshot_file.h"
#include "state/app.h"

namespace vlt {

enum class SideKind : std::uint8_t { kMeter, kSnapshot, kParameterFile, kFields };

// A value of a side. One that the side has not at all has no cell.
struct SideCell {
  ParameterPlace place;
  std::vector<std::uint8_t> raw;  // as the register holds it; empty with a problem
  std::string text;               // as a person reads it: of a parameter file what the file holds
  std::string unit;
  // In which unit system a length, velocity or viscosity was written down: 0 metric, 1 English.
  int unit_flag = 0;
  std::string problem;  // why it has no raw bytes, in the language in force
  std::string cut{};    // "60.559 -> 60.55": what a text loses to the step of its register; mostly empty

  bool Known() const { return problem.empty(); }
};

struct CompareSide {
  SideKind kind = SideKind::kMeter;
  std::string name;  // the file's path; empty for the meter and the fields
  MeterIdentity identity;
  ToldFacts facts;
  std::vector<SideCell> cells;  // in catalogue order, each place once
  // Told beside the comparison: lines of a file that were not taken, keys without a value of their kind.
  // While there are any, nothing is called without differences.
  std::vector<std::string> remarks;

  const SideCell* Find(const ParameterPlace& place) const;  // or null
};

CompareSide SideOfMeter(const Snapshot& snapshot);
CompareSide SideOfSnapshot(const SnapshotFile& file, const std::string& path);

// A parameter file or the fields hold one channel and one output of each page, and list entries by position;
// they are turned into what their registers would hold. A text that no register can hold is a problem of its
// cell. An entry that is empty, and a list without a choice, have no cell.
struct FileSide {
  FileError error = FileError::kGood;
  CompareSide side;
};
FileSide SideOfParameterFile(const App& app, const std::string& path);
// What the open pages show and the others keep. The open pages stay as they are.
CompareSide SideOfFields(App& app);

// A snapshot file or a parameter file, whichever it is. kOther and an empty side for a file that is neither.
FileSide SideOfFile(App& app, const std::string& path);

// "This meter", "Snapshot full.txt", ... in the language in force.
std::string SideTitle(const App& app, const CompareSide& side);

}  // namespace vlt
