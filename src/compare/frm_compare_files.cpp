// SPDX-License-Identifier: GPL-3.0-or-later
// Snapshots, reports and sheets that the window makes.
#include <algorithm>

#include "compare/comparison_export.h"
#include "compare/frm_compare.h"
#include "files/csv_question.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "files/sheet_print.h"
#include "files/whole_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"
#include "resources/text_ids_compare_window.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr const char* kSnapshotName = "Snapshot";
constexpr const char* kReportName = "Comparison";

}  // namespace

std::optional<std::string> frmCompare::AskSnapshotFile(App& app) {
  const auto chosen = app.platform.dialogs.AskSaveFile(
      {.title = app.Text(text::kSaveSnapshot),
       .filter = app.Text(text::kSnapshotKind) + "(*.txt)|*.txt|" + app.Text(text::kAllFiles) + "(*.*)|*.*",
       .folder = {},
       .name = kSnapshotName,
       .ask_before_overwrite = true});
  std::string path(Trim(chosen.value_or("")));
  if (path.empty()) return std::nullopt;
  if (!IsSettingsFile(app, path)) return path;
  app.Show(app.Text(text::kIsLoaderFile), MessageIcon::kStop);
  return std::nullopt;
}

void frmCompare::cmdSnapshot_Click() {
  if (IsLineTaken()) return;
  const auto path = AskSnapshotFile(app_);
  if (path && List().Exists(this)) SaveSnapshotTo(*path);
}

bool frmCompare::HasComparison() {
  if (!list_) app_.Show(app_.Text(text::kBothSidesFirst), MessageIcon::kInformation);
  return list_.has_value();
}

void frmCompare::WriteTo(const std::string& path, const std::string& content) {
  const FileError error = WriteWhole(app_.platform.files, path, content, false);
  if (error != FileError::kGood) return app_.Show(NotWrittenText(app_, path, error), MessageIcon::kStop);
  Tell(FormatText(app_.Text(text::kFileSaved), {LastComponent(path)}));
}

// As the list has them, with how a row's sending ended.
RowRemark frmCompare::Remarks() const {
  return [this](const ComparisonRow& row) { return list_->Remark(list_->RowOf(row.place)); };
}

void frmCompare::cmdSaveCsv_Click() {
  if (!HasComparison()) return;
  const std::string csv =
      ComparisonCsv(list_->Compared(), DateTimeText(app_.platform.clock.Now()), Remarks());
  const auto path = AskCsvFile(
      app_,
      {.kind = text::kCompareTitle, .all_files = false, .name = kReportName, .ask_before_overwrite = true});
  if (path) WriteTo(*path, csv);
}

// The rows that the window lists are printed; what was sent is listed whole.
std::vector<Sheet> frmCompare::Sheets() const {
  using enum RowState;
  std::vector<RowState> shown = {kEqual, kDifferent, kOnlyLeft, kOnlyRight, kUnread};
  const RowFilter filter = Filter();
  if (filter != RowFilter::kAll && filter != RowFilter::kSent) {
    std::erase_if(shown, [filter](RowState state) { return state != StateOf(filter); });
  }
  return ComparisonSheets(list_->Compared(),
                          {.stamp = DateTimeText(app_.platform.clock.Now()),
                           .program = std::string(kProductTitle) + "  " + app_.state.ModelCode,
                           .shown = shown,
                           .remark = Remarks()});
}

void frmCompare::cmdSavePdf_Click() {
  if (!HasComparison() || !HasPrinter(app_)) return;
  const auto content =
      app_.platform.printer->Render(Sheets(), SheetFormat::kPdf, app_.Text(text::kCompareTitle));
  if (!content) return app_.Show(app_.Text(text::kSheetNotMade), MessageIcon::kStop);
  const auto path = app_.platform.dialogs.AskSaveFile({.title = app_.Text(text::kSavePdf),
                                                       .filter = app_.Text(text::kPdfFile) + "|*.pdf",
                                                       .folder = {},
                                                       .name = kReportName,
                                                       .ask_before_overwrite = true});
  if (!path || Trim(*path).empty()) return;
  if (IsSettingsFile(app_, *path)) return app_.Show(app_.Text(text::kIsLoaderFile), MessageIcon::kStop);
  WriteTo(*path, *content);
}

void frmCompare::cmdPrint_Click() {
  if (!HasComparison() || !HasPrinter(app_)) return;
  if (const auto told = PrintSheets(app_, Sheets(), app_.Text(text::kCompareTitle))) Tell(*told);
}

}  // namespace vlt
