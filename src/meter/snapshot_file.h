// SPDX-License-Identifier: GPL-3.0-or-later
// A snapshot as a text file, its format told in docs/snapshot-format.md: a head, and one line a parameter.
// The same meter gives the same bytes in every language and under every locale, but for the line of the date.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "meter/snapshot.h"
#include "platform/file_system.h"

namespace vlt {

// A line of a snapshot file that could not be taken, or one that is missing.
struct SnapshotRemark {
  enum class Kind : std::uint8_t {
    kUnknownName,  // well formed, of a parameter that this program does not know; kept
    kBadLine,      // not of the form, or its parts contradict each other; not taken
    kTwice,        // a parameter that stood before; not taken
    kMissing,      // a parameter that a meter of this shape has and the file has not
    kBadHead,      // a line of the head that is missing, not of the form, or contradicted by its register
  };
  Kind kind = Kind::kBadLine;
  int line = 0;        // from 1; 0 for one that is missing
  std::string text;    // the line, or the name of the head line
  std::string reason;  // in the language in force
};

struct SnapshotFile {
  FileError error = FileError::kGood;
  bool is_snapshot = false;  // its first line says so, and its model is told
  Snapshot snapshot;
  std::vector<SnapshotRemark> remarks;
};

// The whole content. `unknown`: lines of parameters that this program does not know; they stand at the end.
std::string SnapshotText(const Snapshot& snapshot, const std::vector<SnapshotRemark>& unknown = {});
// `speaker` brings the language of the texts and the installation. Rows that a meter of this shape has and
// the content has not are not in the snapshot.
SnapshotFile ParseSnapshot(std::string_view content, const ToldFacts& speaker);

// Written whole, or the file stays as it was.
FileError WriteSnapshotFile(App& app, const std::string& path, const Snapshot& snapshot);
SnapshotFile ReadSnapshotFile(App& app, const std::string& path);
// True when the content begins as a snapshot does.
bool LooksLikeSnapshot(std::string_view content);
// "line 12: ...", or what is missing, in the language in force.
std::string RemarkText(const SnapshotRemark& remark, Language language);

}  // namespace vlt
