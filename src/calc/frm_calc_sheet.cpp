// SPDX-License-Identifier: GPL-3.0-or-later
// The calculator's printed sheet: on paper, and in a file.
#include "calc/frm_calc.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "files/sheet_print.h"
#include "files/whole_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr const char* kSheetName = "SensorSpacing";

struct FormatRow {
  std::string_view suffix;
  SheetFormat format;
};
constexpr FormatRow kFormats[] = {{".pdf", SheetFormat::kPdf}, {".png", SheetFormat::kPng}};

std::optional<SheetFormat> FormatOf(const std::string& path) {
  for (const FormatRow& row : kFormats) {
    const std::size_t length = row.suffix.size();
    if (path.size() > length && EqualsNoCase(path.substr(path.size() - length), row.suffix))
      return row.format;
  }
  return std::nullopt;
}

SheetRow ListRow(const Label& caption, const ComboBox& list) {
  return {caption.Caption(), list.Text(), "", ""};
}

// A velocity that comes from a list, as the window's units have it.
std::string ListVelocity(double metre_per_second, int unit_flag) {
  return FixedText(unit_flag != 0 ? FromMetrePerSecond(metre_per_second) : metre_per_second, 0);
}

}  // namespace

std::optional<Sheet> frmCalc::MakeSheet() {
  const SpacingInputs inputs = Inputs();
  if (const auto fault = FindInputFault(inputs)) {
    app_.Show(FaultText(*fault, Texts()), MessageIcon::kInformation);
    return std::nullopt;
  }
  ExecuteCalc_Click();
  if (!executed_ || !(*executed_ == inputs)) return std::nullopt;
  return MakeSpacingSheet({.title = app_.Text(1382),
                           .stamp = DateTimeText(app_.platform.clock.Now()),
                           .program = std::string(kProductTitle) + "  " + app_.state.ModelCode,
                           .inputs = InputRows(),
                           .results = ResultRows(),
                           .drawing = picSpacing.Shown()},
                          Texts());
}

std::vector<SheetRow> frmCalc::InputRows() const {
  const auto typed = [](const Entry& entry) {
    return SheetRow{entry.caption.Caption(), entry.text.Text(), entry.unit.Caption(), entry.range.Caption()};
  };
  const auto velocity = [&](const Entry& entry, std::span<const double> table, int index) {
    if (!entry.text.Locked()) return typed(entry);
    return SheetRow{entry.caption.Caption(), ListVelocity(table[static_cast<std::size_t>(index)], unit_flag_),
                    entry.unit.Caption(), ""};
  };
  std::vector<SheetRow> rows = {typed(entries_[0]), ListRow(PIPE_MATERIAL, PIPE_MATERIALCombo),
                                velocity(entries_[2], PipeVelocities(), PIPE_MATERIALCombo.ListIndex()),
                                typed(entries_[1]), ListRow(LINING_MATERIAL, LINING_MATERIALCombo)};
  if (LINING_MATERIALCombo.ListIndex() != kNoLining) {
    rows.push_back(velocity(entries_[4], LiningVelocities(), LINING_MATERIALCombo.ListIndex()));
    rows.push_back(typed(entries_[3]));
  }
  rows.push_back(ListRow(KIND_OF_FLUID, KIND_OF_FLUIDCombo));
  rows.push_back(velocity(entries_[5], FluidVelocities(), KIND_OF_FLUIDCombo.ListIndex()));
  rows.push_back(ListRow(SENSOR_MOUNT, SENSOR_MOUNTCombo));
  rows.push_back(ListRow(SENSOR_TYPE, SENSOR_TYPECombo));
  return rows;
}

std::vector<SheetRow> frmCalc::ResultRows() const {
  std::vector<SheetRow> rows = {{MOUNT_SIZE1.Caption(), txtResult1Text.Text(), Label4.Caption(), ""}};
  if (!txtResult2Text.Text().empty()) rows.push_back({MOUNT_SIZE2.Caption(), txtResult2Text.Text(), "", ""});
  return rows;
}

void frmCalc::cmdPrint_Click() {
  const auto sheet = MakeSheet();
  if (!sheet || !HasPrinter(app_)) return;
  if (const auto told = PrintSheets(app_, {&*sheet, 1}, app_.Text(1382))) Tell(*told);
}

void frmCalc::cmdSave_Click() {
  const auto sheet = MakeSheet();
  if (!sheet || !HasPrinter(app_)) return;
  const auto path = app_.platform.dialogs.AskSaveFile(
      {.title = app_.Text(text::kCalcSave),
       .filter = app_.Text(text::kPdfFile) + "|*.pdf|" + app_.Text(text::kChartPicture) + "|*.png",
       .folder = {},
       .name = kSheetName,
       .ask_before_overwrite = true});
  if (path) WriteSheet(*sheet, *path);
}

void frmCalc::WriteSheet(const Sheet& sheet, const std::string& path) {
  const auto format = FormatOf(CleanPath(path));
  if (!format) {
    app_.Show(FormatText(app_.Text(text::kSheetSuffix), {LastComponent(path)}), MessageIcon::kStop);
    return;
  }
  const auto content = app_.platform.printer->Render({&sheet, 1}, *format, app_.Text(1382));
  if (!content) {
    app_.Show(app_.Text(text::kSheetNotMade), MessageIcon::kStop);
    return;
  }
  const FileError error = WriteWhole(app_.platform.files, path, *content, false);
  if (error == FileError::kGood) return Tell(FormatText(app_.Text(text::kFileSaved), {LastComponent(path)}));
  app_.Show(NotWrittenText(app_, path, error), MessageIcon::kStop);
}

}  // namespace vlt
