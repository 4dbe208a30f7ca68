// SPDX-License-Identifier: GPL-3.0-or-later
// CSV logs: files that grow by a record a cycle, each run and each file of a run with a time stamp in its
// name ("flow_20261124100000.csv"). Text is UTF-8 with a byte-order mark at the head, lines end in CR LF.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/file_system.h"

namespace vlt {

// What stands at the head of a file, so that a spreadsheet reads it as UTF-8.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The name that a log gets from the one an operator has chosen: trimmed, cut at its first "." (also when that
// lies in the name of a folder), then "_", the stamp of `now` and ".csv".
std::string StampedCsvPath(std::string_view chosen, const LocalTime& now);

// A fresh stamp in the place of the old one: of the text up to the first "." the last 14 characters go. When
// a file of that name is there already, the stamp moves on by seconds to a name that is free.
std::string RestampedCsvPath(FileSystem& files, std::string_view path, const LocalTime& now);

// Adds the lines in one write, so that none is ever half. A file that is not there is made, with the mark at
// its head.
FileError AppendCsv(FileSystem& files, const std::string& path,
                    std::initializer_list<std::string_view> lines);

}  // namespace vlt
