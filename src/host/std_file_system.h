// SPDX-License-Identifier: GPL-3.0-or-later
// Files by the standard library and POSIX.
#pragma once

#include "platform/file_system.h"

namespace vlt {

class StdFileSystem : public FileSystem {
 public:
  FileError ReadAtMost(const std::string& path, std::size_t most, std::string& content) override;
  // A file that can't be filled is removed again when it was new.
  FileError Create(const std::string& path, std::string_view content) override;
  FileError CreateLike(const std::string& path, std::string_view content, const std::string& model) override;
  // An old file that may not be written is not replaced.
  FileError Rename(const std::string& from, const std::string& to) override;
  FileError Remove(const std::string& path) override;
  FileError Append(const std::string& path, std::string_view content) override;
  FileError Flush(const std::string& path) override;
  FileError ReadTail(const std::string& path, std::size_t most, std::string& content,
                     std::uint64_t& length) override;
  FileError MakeFolder(const std::string& path) override;
  FileError FilesIn(const std::string& path, std::vector<std::string>& names) override;
  bool Exists(const std::string& path) override;
  // Links that lead in a circle end somewhere in it.
  std::string Target(const std::string& path) override;
};

}  // namespace vlt
