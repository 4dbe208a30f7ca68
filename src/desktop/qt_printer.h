// SPDX-License-Identifier: GPL-3.0-or-later
// Sheets printed by Qt.
#pragma once

#include "platform/printer.h"

namespace vlt {

class QtPrinter : public Printer {
 public:
  PrintOutcome Print(const Sheet& sheet, const std::string& title) override;
  std::optional<std::string> Render(const Sheet& sheet, SheetFormat format,
                                    const std::string& title) override;
};

}  // namespace vlt
