// SPDX-License-Identifier: GPL-3.0-or-later
// The journal of a run: one CSV file, a record a step, on the disk before the step behind it begins. Its
// words are the same in every language, so that journals can be compared.
#pragma once

#include <string>
#include <string_view>

#include "firmware/fw_modules.h"
#include "state/app.h"

namespace vlt {

class FwJournal {
 public:
  explicit FwJournal(App& app) : app_(app) {}

  // Begins the journal of a run beside the module folder ("<folder>_journal_<yyyymmddhhmmss>.csv"), or, where
  // that can't be written or the folder is given without a name (".", "..", a root), in it. `folder` is not
  // empty. On a failure the run has none, and Path() is empty.
  FileError Begin(const std::string& folder, std::string_view what);
  // Names the module of the records that follow; null: none.
  void OfModule(const FwModule* module, const FwFileFacts& facts);
  void Add(std::string_view step, std::string_view outcome, std::string_view detail = {});
  void End();

  const std::string& Path() const { return path_; }
  // The first failure of a record behind the beginning.
  FileError Lost() const { return lost_; }

 private:
  FileError Start(const std::string& path);

  App& app_;
  std::string path_;
  std::string module_;
  std::string size_;
  std::string digest_;
  FileError lost_ = FileError::kGood;
};

}  // namespace vlt
