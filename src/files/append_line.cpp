// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/append_line.h"

#include "files/whole_file.h"

namespace vlt {

FileError AppendLine(FileSystem& files, const std::string& path, std::string_view line) {
  return files.Append(CleanPath(path), std::string(line) + "\r\n");
}

}  // namespace vlt
