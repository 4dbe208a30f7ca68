// SPDX-License-Identifier: GPL-3.0-or-later
// The report of all settings of a meter: a CSV file for people and spreadsheets, never read back. Its format
// is told in docs/report-format.md.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "meter/read_all.h"
#include "platform/clock.h"
#include "platform/file_system.h"

namespace vlt {

// A column for each channel and output, for a meter that measures two paths or two pipes, or one column of
// values for every other.
enum class ReportForm { kAllChannels, kOneChannel };
ReportForm ReportFormFor(const MeterFacts& facts);

// What the read-out has lost: blocks that did not come, and not with another reader either; and the parts
// that they belong to, each once.
std::vector<UnreadBlock> LostBlocks(const MeterSettings& settings);
std::vector<std::string> LostParts(const MeterSettings& settings);

// The whole report in the language of the settings' facts. `now` goes into its first line.
std::string ReportText(const MeterSettings& settings, ReportForm form, const LocalTime& now);

// Whether a file's content is a report, in whatever language, in which nothing is told to be missing.
bool IsCompleteReport(std::string_view content);

// Write the report of one form, dated by the clock. The file is written whole, or it stays as it was.
FileError ALL_FileSave(App& app, const MeterSettings& settings, const std::string& file);
FileError ALL_FileSave_1Path(App& app, const MeterSettings& settings, const std::string& file);
// The one that the meter asks for.
FileError SaveReport(App& app, const MeterSettings& settings, const std::string& file);

}  // namespace vlt
