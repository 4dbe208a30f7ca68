// Replacing a file whole: whatever happens, the old or the new file stands.
#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace vlt {

// The path as the file system takes it: blanks at its end do not belong to it.
std::string CleanPath(const std::string& path);

// Where WriteWhole keeps the file that it replaces: the path with ".bak" behind it.
std::string BackupPath(const std::string& path);

// Writes `content` beside the file, flushes it, and moves it over the file. With `keep_backup` a file that
// stood there before is found at BackupPath afterwards. On a failure the file and its backup are what they
// were, or the backup equals the file, and nothing else is left behind.
FileError WriteWhole(FileSystem& files, const std::string& path, std::string_view content, bool keep_backup);

}  // namespace vlt
