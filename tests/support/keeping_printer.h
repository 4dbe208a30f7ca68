// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps what it is given instead of printing it.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/printer.h"

namespace vlt::test {

class KeepingPrinter : public Printer {
 public:
  PrintOutcome Print(std::span<const Sheet> given, const std::string&) override {
    Keep(given);
    return outcome;
  }
  std::optional<std::string> Render(std::span<const Sheet> given, SheetFormat format,
                                    const std::string&) override {
    Keep(given);
    if (fails) return std::nullopt;
    return format == SheetFormat::kPdf ? "a pdf" : "a png";
  }
  PrintOutcome outcome = PrintOutcome::kPrinted;
  bool fails = false;
  std::vector<Sheet> sheets;  // the first page of each
  std::size_t pages = 0;      // of the last

 private:
  void Keep(std::span<const Sheet> given) {
    sheets.push_back(given.front());
    pages = given.size();
  }
};

}  // namespace vlt::test
