// SPDX-License-Identifier: GPL-3.0-or-later
// What the comparison keeps in files or prints: snapshots of the meter, reports, sheets.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "compare/comparison_export.h"
#include "compare/frm_compare.h"
#include "platform/sheet.h"

namespace vlt {

class CompareFiles : public FormPart {
 public:
  // Of an open window.
  static CompareFiles& Of(const Form& window) { return *window.Part<CompareFiles>(); }
  CompareFiles(App& app, frmCompare& window);

  void Form_Load() override;

  // Reads the meter and keeps it in the file. The window shows what it does, so it should be visible.
  void SaveSnapshotTo(const std::string& path);
  // Where a snapshot is to be kept; nothing when the operator cancels or has chosen a file that no snapshot
  // may take the place of.
  static std::optional<std::string> AskSnapshotFile(App& app);

  PushButton cmdSnapshot{Whole(), "cmdSnapshot"};
  PushButton cmdSaveCsv{Whole(), "cmdSaveCsv"};
  PushButton cmdSavePdf{Whole(), "cmdSavePdf"};
  PushButton cmdPrint{Whole(), "cmdPrint"};

 private:
  void cmdSnapshot_Click();
  void cmdSaveCsv_Click();
  void cmdSavePdf_Click();
  void cmdPrint_Click();
  RowRemark Remarks() const;
  std::vector<Sheet> Sheets() const;
  bool HasComparison();
  void WriteTo(const std::string& path, const std::string& content);

  App& app_;
  frmCompare& window_;
};

}  // namespace vlt
