// SPDX-License-Identifier: GPL-3.0-or-later
// Sheets printed by Qt.
#pragma once

#include "platform/printer.h"

namespace vlt {

class QtPrinter : public Printer {
 public:
  PrintOutcome Print(std::span<const Sheet> pages, const std::string& title) override;
  std::optional<std::string> Render(std::span<const Sheet> pages, SheetFormat format,
                                    const std::string& title) override;
};

}  // namespace vlt
