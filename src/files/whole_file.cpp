// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/whole_file.h"

#include <algorithm>

namespace vlt {
namespace {

// The new file until it stands where it belongs; removed again when it never comes there.
class Temporary {
 public:
  Temporary(FileSystem& files, const std::string& target) : files_(files), path_(target + ".tmp") {}
  ~Temporary() {
    if (there_) files_.Remove(path_);
  }
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;

  FileError Create(std::string_view content) {
    there_ = true;
    return files_.Create(path_, content);
  }
  FileError MoveOver(const std::string& target) {
    const FileError error = files_.Rename(path_, target);
    there_ = error != FileError::kGood;
    return error;
  }

 private:
  FileSystem& files_;
  std::string path_;
  bool there_ = false;
};

// Copies a file that is about to be replaced. Moving it instead would leave a moment without it. A file that
// already holds `content` is not replaced by anything else, and the backup of its former state stays.
FileError KeepFormer(FileSystem& files, const std::string& path, std::string_view content) {
  std::string former;
  const FileError read = files.Read(path, former);
  if (read == FileError::kMissing || (read == FileError::kGood && former == content)) return FileError::kGood;
  return read == FileError::kGood ? WriteWhole(files, BackupPath(path), former, false) : read;
}

}  // namespace

std::string CleanPath(const std::string& path) { return path.substr(0, path.find_last_not_of(' ') + 1); }

std::string OneSeparator(std::string path, char separator) {
  const auto run = [separator](char a, char b) { return a == separator && b == separator; };
  path.erase(std::unique(path.begin(), path.end(), run), path.end());
  return path;
}

std::string BackupPath(const std::string& path) { return CleanPath(path) + ".bak"; }

FileError WriteWhole(FileSystem& files, const std::string& path, std::string_view content, bool keep_backup) {
  const std::string target = files.Target(CleanPath(path));
  Temporary temporary(files, target);
  // The new content comes first: a full disk then leaves the backup alone too.
  FileError error = temporary.Create(content);
  if (error == FileError::kGood && keep_backup) error = KeepFormer(files, CleanPath(path), content);
  return error == FileError::kGood ? temporary.MoveOver(target) : error;
}

}  // namespace vlt
