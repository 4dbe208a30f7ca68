// SPDX-License-Identifier: GPL-3.0-or-later
// Files as the logic needs them: read whole, replaced whole, or grown by one line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_error.h"

namespace vlt {

// What is read whole has a limit, in bytes.
inline constexpr std::size_t kMostScriptBytes = std::size_t{1} << 20;  // a script of the companion
inline constexpr std::size_t kMostSettingsBytes = std::size_t{4}
                                                  << 20;  // settings, parameter files, journals
inline constexpr std::size_t kMostSnapshotBytes = std::size_t{16} << 20;  // snapshots
inline constexpr std::size_t kMostFileBytes = std::size_t{8} << 20;       // any other file

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // Reads the whole file into `content`, which stays as it was on a failure. A file of more than `most` bytes
  // is kTooLarge; folders, devices and pipes are never opened.
  virtual FileError ReadAtMost(const std::string& path, std::size_t most, std::string& content) = 0;
  FileError Read(const std::string& path, std::string& content) {
    return ReadAtMost(path, kMostFileBytes, content);
  }

  // Steps of replacing a file whole; WriteWhole() of files/ puts them together. `path` is created or
  // emptied, filled, flushed to the disk and closed.
  virtual FileError Create(const std::string& path, std::string_view content) = 0;
  // The same, for a file that is to take the place of `model` or to be its copy: it has the access rights of
  // `model`, where that is there, before it has any content.
  virtual FileError CreateLike(const std::string& path, std::string_view content, const std::string& model) {
    (void)model;
    return Create(path, content);
  }
  // Moves `from` over `to` in one step: at every moment `to` is the old or the new file.
  virtual FileError Rename(const std::string& from, const std::string& to) = 0;
  virtual FileError Remove(const std::string& path) = 0;

  // Adds `content` at the end of the file in one write, creating it when missing, and hands it to the
  // system before returning.
  virtual FileError Append(const std::string& path, std::string_view content) = 0;

  // Makes what was appended to the file last over a power cut.
  virtual FileError Flush(const std::string& path) = 0;

  // The last bytes of a file, `most` of them or all when it is shorter, and its whole length; of a file of
  // any length.
  virtual FileError ReadTail(const std::string& path, std::size_t most, std::string& content,
                             std::uint64_t& length) = 0;

  // Makes the folder and those above it that are missing. A folder that is there already is good.
  virtual FileError MakeFolder(const std::string& path) = 0;
  // The names of the files in a folder, sorted by their bytes; its folders are left out.
  virtual FileError FilesIn(const std::string& path, std::vector<std::string>& names) = 0;

  virtual bool Exists(const std::string& path) = 0;

  // The file that a path leads to when it is a link, followed to its end, also when nothing stands there; any
  // other path as it is.
  virtual std::string Target(const std::string& path) { return path; }
};

}  // namespace vlt
