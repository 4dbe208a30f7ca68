// SPDX-License-Identifier: GPL-3.0-or-later
// Files in memory, with a failure or a kill at any chosen step.
#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_system.h"

namespace vlt::test {

// Thrown where the process is to die: nothing of the program may run behind it.
struct Killed {};

class MemoryFileSystem : public FileSystem {
 public:
  FileError ReadAtMost(const std::string& path, std::size_t most, std::string& content) override;
  FileError Create(const std::string& path, std::string_view content) override;
  FileError Rename(const std::string& from, const std::string& to) override;
  FileError Remove(const std::string& path) override;
  FileError Append(const std::string& path, std::string_view content) override;
  FileError Flush(const std::string& path) override;
  FileError ReadTail(const std::string& path, std::size_t most, std::string& content,
                     std::uint64_t& length) override;
  FileError MakeFolder(const std::string& path) override;
  FileError FilesIn(const std::string& path, std::vector<std::string>& names) override;
  bool Exists(const std::string& path) override { return files.contains(path) || folders.contains(path); }

  // The n-th change (Create, Rename, Remove, Append, Flush, MakeFolder) from now fails and leaves the files
  // as they are.
  void FailChange(int n, FileError error) { fail_ = {n, std::move(error)}; }
  // The process dies at the n-th change from now: half of the bytes are written, a rename has not happened,
  // and nothing behind it changes a file any more.
  void KillAtChange(int n) { kill_ = n; }
  // Every operation on this path fails, until it is given kGood.
  void FailPath(const std::string& path, const FileError& error) {
    bad_paths_[path] = error;
    if (error == FileError::kGood) bad_paths_.erase(path);
  }

  std::map<std::string, std::string> files;
  std::set<std::string> folders;     // paths that are folders
  std::vector<std::string> changes;  // "create P", "rename P Q", "remove P", "append P",
                                     // "flush P", "folder P"

 private:
  FileError Begin(const std::string& change, const std::string& path, bool& killed);

  std::pair<int, FileError> fail_{0, FileError::kGood};
  int kill_ = 0;
  bool dead_ = false;
  std::map<std::string, FileError> bad_paths_;
};

}  // namespace vlt::test
