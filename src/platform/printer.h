// SPDX-License-Identifier: GPL-3.0-or-later
// Sheets on paper and as the content of files.
#pragma once

#include <optional>
#include <string>

#include "platform/sheet.h"

namespace vlt {

enum class PrintOutcome {
  kPrinted,    // handed to the system's queue
  kCancelled,  // the operator chose no printer
  kNoPrinter,  // the machine knows none
  kFailed,     // the printer did not take it
};

enum class SheetFormat { kPdf, kPng };

class Printer {
 public:
  virtual ~Printer() = default;
  // Asks for the printer and prints the sheet on one page; `title` names it in the queue. Events run
  // meanwhile.
  virtual PrintOutcome Print(const Sheet& sheet, const std::string& title) = 0;
  // The bytes of a file that holds the sheet on one page; nothing when it could not be made.
  virtual std::optional<std::string> Render(const Sheet& sheet, SheetFormat format,
                                            const std::string& title) = 0;
};

}  // namespace vlt
