// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/compare_files.h"

#include <algorithm>

#include "compare/compare_line.h"
#include "compare/compare_rows.h"
#include "files/csv_question.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "files/sheet_print.h"
#include "files/whole_file.h"
#include "link/operation.h"
#include "meter/snapshot_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"
#include "resources/text_ids_compare_window.h"
#include "values/number_text.h"

namespace vlt {
namespace {

constexpr const char* kSnapshotName = "Snapshot";
constexpr const char* kReportName = "Comparison";

std::size_t UnknownIn(const Snapshot& snapshot) {
  return static_cast<std::size_t>(std::count_if(snapshot.rows.begin(), snapshot.rows.end(),
                                                [](const SnapshotRow& row) { return !row.Known(); }));
}

}  // namespace

CompareFiles::CompareFiles(App& app, frmCompare& window) : FormPart(window), app_(app), window_(window) {
  cmdSnapshot.on_click = [this] { cmdSnapshot_Click(); };
  cmdSaveCsv.on_click = [this] { cmdSaveCsv_Click(); };
  cmdSavePdf.on_click = [this] { cmdSavePdf_Click(); };
  cmdPrint.on_click = [this] { cmdPrint_Click(); };
}

void CompareFiles::Form_Load() {
  window_.SetCaptions({{&cmdSnapshot, text::kSaveSnapshot},
                       {&cmdSaveCsv, text::kSaveAsCsv},
                       {&cmdSavePdf, text::kSavePdf},
                       {&cmdPrint, text::kCalcPrint}});
}

std::optional<std::string> CompareFiles::AskSnapshotFile(App& app) {
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

void CompareFiles::SaveSnapshotTo(const std::string& path) {
  CompareLine& line = CompareLine::Of(window_);
  if (line.IsTaken()) return;
  Operation operation(app_, window_, cmdSnapshot.Name(), text::kReadingSide);
  const auto meter = line.ReadMeter(operation);
  if (!meter) return window_.Tell(FormatText(app_.Text(text::kNoSnapshot), {window_.stbCompare.Panel(1)}));
  const FileError error = WriteSnapshotFile(app_, path, *meter);
  const std::size_t unknown = UnknownIn(*meter);
  const std::string told =
      error == FileError::kGood
          ? FormatText(
                app_.Text(unknown == 0 ? text::kSnapshotSaved : text::kSnapshotPartial),
                {LastComponent(path), CountText(text::kOneRow, meter->rows.size(), app_.state.Spoken()),
                 std::to_string(unknown)})
          : NotWrittenText(app_, path, error);
  window_.ShowMeter(*meter);
  operation.End(told);
  window_.Tell(told);
  if (error != FileError::kGood) app_.Show(told, MessageIcon::kStop);
  line.LeaveIfAsked(error != FileError::kGood);
}

void CompareFiles::cmdSnapshot_Click() {
  if (CompareLine::Of(window_).IsTaken()) return;
  const auto path = AskSnapshotFile(app_);
  if (path && window_.List().Exists(&window_)) SaveSnapshotTo(*path);
}

bool CompareFiles::HasComparison() {
  const bool both = CompareRows::Of(window_).Shown() != nullptr;
  if (!both) app_.Show(app_.Text(text::kBothSidesFirst), MessageIcon::kInformation);
  return both;
}

void CompareFiles::WriteTo(const std::string& path, const std::string& content) {
  const FileError error = WriteWhole(app_.platform.files, path, content, false);
  if (error != FileError::kGood) return app_.Show(NotWrittenText(app_, path, error), MessageIcon::kStop);
  window_.Tell(FormatText(app_.Text(text::kFileSaved), {LastComponent(path)}));
}

// As the list has them, with how a row's sending ended.
RowRemark CompareFiles::Remarks() const {
  return [list = CompareRows::Of(window_).Shown()](const ComparisonRow& row) {
    return list->Remark(list->RowOf(row.place));
  };
}

void CompareFiles::cmdSaveCsv_Click() {
  if (!HasComparison()) return;
  const std::string csv = ComparisonCsv(CompareRows::Of(window_).Shown()->Compared(),
                                        DateTimeText(app_.platform.clock.Now()), Remarks());
  const auto path = AskCsvFile(
      app_,
      {.kind = text::kCompareTitle, .all_files = false, .name = kReportName, .ask_before_overwrite = true});
  if (path) WriteTo(*path, csv);
}

// The rows that the window lists are printed; what was sent is listed whole.
std::vector<Sheet> CompareFiles::Sheets() const {
  using enum RowState;
  std::vector<RowState> shown = {kEqual, kDifferent, kOnlyLeft, kOnlyRight, kUnread};
  const RowFilter filter = CompareRows::Of(window_).Filter();
  if (filter != RowFilter::kAll && filter != RowFilter::kSent) {
    std::erase_if(shown, [filter](RowState state) { return state != StateOf(filter); });
  }
  return ComparisonSheets(CompareRows::Of(window_).Shown()->Compared(),
                          {.stamp = DateTimeText(app_.platform.clock.Now()),
                           .program = std::string(kProductTitle) + "  " + app_.state.ModelCode,
                           .shown = shown,
                           .remark = Remarks()});
}

void CompareFiles::cmdSavePdf_Click() {
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

void CompareFiles::cmdPrint_Click() {
  if (!HasComparison() || !HasPrinter(app_)) return;
  if (const auto told = PrintSheets(app_, Sheets(), app_.Text(text::kCompareTitle))) window_.Tell(*told);
}

}  // namespace vlt
