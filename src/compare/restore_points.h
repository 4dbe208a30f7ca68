// SPDX-License-Identifier: GPL-3.0-or-later
// Restore points: snapshots of a meter as it was before something was sent to it, kept in the user's folder.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "meter/snapshot_file.h"
#include "state/app.h"

namespace vlt {

inline constexpr std::size_t kKeptRestorePoints = 20;  // of each meter

struct RestorePoint {
  std::string path;
  std::string date;       // "yyyy/mm/dd hh:mm:ss", from its name
  std::string id_number;  // from its name; empty when it was not known
};

// Newest first; none when there is no folder.
std::vector<RestorePoint> RestorePoints(App& app);

struct KeptPoint {
  FileError error = FileError::kGood;
  std::string path;
  // Older points of the meter that could not be removed: they are more than kKeptRestorePoints then.
  std::vector<std::string> left_over;
};
// Writes a point beside the others and, once it stands, removes those of the same meter beyond the last
// kKeptRestorePoints. Points of other meters stay, also when they have the same ID number.
KeptPoint KeepRestorePoint(App& app, const Snapshot& snapshot);

}  // namespace vlt
