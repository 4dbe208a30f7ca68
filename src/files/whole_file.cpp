// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/whole_file.h"

#include <algorithm>
#include <functional>

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

  // With the rights of `model`.
  FileError Create(std::string_view content, const std::string& model) {
    there_ = true;
    return files_.CreateLike(path_, content, model).Of(path_);
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

// Writes a file whole; `model` is the one that it has its rights from.
FileError Replace(FileSystem& files, const std::string& target, std::string_view content,
                  const std::string& model, const std::function<FileError()>& before_it_moves) {
  Temporary temporary(files, target);
  FileError error = temporary.Create(content, model);
  if (error == FileError::kGood) error = before_it_moves();
  return error == FileError::kGood ? temporary.MoveOver(target) : error;
}

// Copies a file that is about to be replaced. Moving it instead would leave a moment without it. A file that
// already holds `content` is not replaced by anything else, and the backup of its former state stays.
FileError KeepFormer(FileSystem& files, const std::string& path, std::string_view content) {
  std::string former;
  const FileError read = files.Read(path, former);
  if (read == FileError::kMissing || (read == FileError::kGood && former == content)) return FileError::kGood;
  if (read != FileError::kGood) return read.OnReading();
  const std::string backup = files.Target(BackupPath(path));
  return Replace(files, backup, former, path, [] { return FileError(); }).Of(backup);
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
  // The new content comes first: a full disk then leaves the backup alone too.
  return Replace(files, target, content, target,
                 [&] { return keep_backup ? KeepFormer(files, target, content) : FileError(); });
}

}  // namespace vlt
