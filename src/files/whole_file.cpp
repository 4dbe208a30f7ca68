#include "files/whole_file.h"

namespace vlt {
namespace {

std::string TemporaryPath(const std::string& path) { return path + ".tmp"; }

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

std::string BackupPath(const std::string& path) { return CleanPath(path) + ".bak"; }

FileError WriteWhole(FileSystem& files, const std::string& path, std::string_view content, bool keep_backup) {
  const std::string target = CleanPath(path);
  const std::string temporary = TemporaryPath(target);
  // The new content comes first: a full disk then leaves the backup alone too.
  FileError error = files.Create(temporary, content);
  if (error == FileError::kGood && keep_backup) error = KeepFormer(files, target, content);
  if (error == FileError::kGood) error = files.Rename(temporary, target);
  if (error != FileError::kGood) files.Remove(temporary);
  return error;
}

}  // namespace vlt
