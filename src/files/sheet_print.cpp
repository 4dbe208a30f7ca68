// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/sheet_print.h"

#include "resources/string_table.h"
#include "resources/text_ids.h"

namespace vlt {

bool HasPrinter(App& app) {
  if (app.platform.printer != nullptr) return true;
  app.Show(app.Text(text::kPrintingMissing), MessageIcon::kInformation);
  return false;
}

std::optional<std::string> PrintSheets(App& app, std::span<const Sheet> sheets, const std::string& title) {
  switch (app.platform.printer->Print(sheets, title)) {
    case PrintOutcome::kPrinted:
      return FormatText(app.Text(text::kSheetPrinted), {title});
    case PrintOutcome::kCancelled:
      break;
    case PrintOutcome::kNoPrinter:
      app.Show(app.Text(text::kNoPrinter), MessageIcon::kInformation);
      break;
    case PrintOutcome::kFailed:
      app.Show(app.Text(text::kPrintFailed), MessageIcon::kStop);
      break;
  }
  return std::nullopt;
}

}  // namespace vlt
