// SPDX-License-Identifier: GPL-3.0-or-later
// Files as the logic needs them: read whole, replaced whole, or grown by one line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vlt {

// Why a file operation failed. Every value but kGood has left the files as they were.
enum class FileError {
  kGood,
  kMissing,       // no such file or folder
  kNoPermission,  // reading or writing is not allowed
  kNotAFile,      // the path is a folder or a device
  kFull,          // no space is left
  kTooLarge,      // larger than what a settings file can sensibly be (8 MiB)
  kOther,
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  // Reads the whole file into `content`.
  virtual FileError Read(const std::string& path, std::string& content) = 0;

  // Steps of replacing a file whole; WriteWhole() of files/ puts them together. `path` is created or
  // emptied, filled, flushed to the disk and closed.
  virtual FileError Create(const std::string& path, std::string_view content) = 0;
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
