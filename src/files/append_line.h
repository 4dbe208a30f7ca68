// SPDX-License-Identifier: GPL-3.0-or-later
// Records of a log file.
#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace vlt {

// Adds `line` and CR LF to the file in one write, so that a record is never half; creates the file when it is
// missing.
FileError AppendLine(FileSystem& files, const std::string& path, std::string_view line);

}  // namespace vlt
