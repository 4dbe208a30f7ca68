// SPDX-License-Identifier: GPL-3.0-or-later
// Replacing a file whole: whatever happens, the old or the new file stands.
#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace vlt {

// The path as the file system takes it: blanks at its end do not belong to it.
std::string CleanPath(const std::string& path);

// The path with each run of separators as one of them, as a person writes it.
std::string OneSeparator(std::string path, char separator);

// Where WriteWhole keeps the file that it replaces: its path with ".bak" behind it.
std::string BackupPath(const std::string& path);

// Writes `content` beside the file, flushes it, and moves it over the file, whose access rights it has. A
// link stays, and the file that it leads to is replaced. With `keep_backup` a file that stood there before is
// found at BackupPath of the file (not of a link to it) afterwards, with the same rights. On a failure the
// file and its backup are what they were, or the backup equals the file, and nothing else is left behind; the
// same when an exception passes through. The error names the file that failed where it is another one: the
// new file (".tmp") or the backup.
FileError WriteWhole(FileSystem& files, const std::string& path, std::string_view content, bool keep_backup);

}  // namespace vlt
