// SPDX-License-Identifier: GPL-3.0-or-later
// Where a CSV file is to be written: what the operator is asked, and which answers are refused.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "state/app.h"

namespace vlt {

// True for the file of the program's own settings, the loader initial file or VLT.ini beside the program, in
// whatever way its path is written (separators doubled, blanks behind it, where separators are "\" other
// letters' case). No CSV may take its place. Parameter files have a stricter rule, IsLoaderFile.
bool IsSettingsFile(App& app, std::string_view path);

struct CsvQuestion {
  int title = 4530;  // text id: "Specify a saving file name"
  int kind = 4540;   // text id of the filter's name: "The measurement data"
  const char* ending = "csv";
  bool all_files = true;  // the filter offers every file too
  std::string folder{};   // where the dialog starts; empty: the last folder used
  std::string name{};     // the name shown at first
  bool ask_before_overwrite = false;
  std::optional<LocalTime> stamp{};  // in the name of a log; empty: the time of the answer
};

// Asks for a CSV file and gives its path, trimmed. Nothing when the operator cancels or leaves the name
// blank, and, after a message box, for the file of the program's own settings. Events run meanwhile.
std::optional<std::string> AskCsvFile(App& app, const CsvQuestion& question = {});

// Asks for the log of a run, the second form in the folder of `current` when that has one, and gives the
// stamped name (StampedCsvPath). A file of that name is removed when the operator agrees, and stays
// otherwise; one that can't be removed is told in status panel 1. The name is taken in each of these cases.
std::optional<std::string> AskCsvLog(App& app, const CsvQuestion& question);
std::optional<std::string> AskCsvLog(App& app, const std::string& current);

}  // namespace vlt
