// SPDX-License-Identifier: GPL-3.0-or-later
// Sheets on paper and as the content of files, a page each.
#pragma once

#include <optional>
#include <span>
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
  // Asks for the printer and prints each sheet on a page of its own, at least one, all of the size of the
  // first; `title` names them in the queue. Events run meanwhile.
  virtual PrintOutcome Print(std::span<const Sheet> pages, const std::string& title) = 0;
  // The bytes of a file that holds the sheets, each on a page; a picture has the first alone. Nothing when it
  // could not be made.
  virtual std::optional<std::string> Render(std::span<const Sheet> pages, SheetFormat format,
                                            const std::string& title) = 0;
};

}  // namespace vlt
