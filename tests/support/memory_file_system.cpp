// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/memory_file_system.h"

#include <algorithm>

namespace vlt::test {
namespace {

std::string_view Half(std::string_view content) { return content.substr(0, content.size() / 2); }

}  // namespace

FileError MemoryFileSystem::Begin(const std::string& change, const std::string& path, bool& killed) {
  if (dead_) return FileError::kOther;
  changes.push_back(change);
  killed = dead_ = kill_ != 0 && --kill_ == 0;
  const bool fails = fail_.first != 0 && --fail_.first == 0;
  if (fails) return fail_.second;
  if (const auto bad = bad_paths_.find(path); bad != bad_paths_.end()) return bad->second;
  return folders.contains(path) ? FileError::kNotAFile : FileError::kGood;
}

FileError MemoryFileSystem::ReadAtMost(const std::string& path, std::size_t most, std::string& content) {
  if (const auto bad = bad_paths_.find(path); bad != bad_paths_.end()) return bad->second;
  if (folders.contains(path)) return FileError::kNotAFile;
  const auto file = files.find(path);
  if (file == files.end()) return FileError::kMissing;
  if (file->second.size() > most) return FileError::LargerThan(most);
  content = file->second;
  return FileError::kGood;
}

FileError MemoryFileSystem::Create(const std::string& path, std::string_view content) {
  bool killed = false;
  const FileError error = Begin("create " + path, path, killed);
  if (error != FileError::kGood) return error;
  files[path] = killed ? Half(content) : content;
  if (killed) throw Killed{};
  return FileError::kGood;
}

FileError MemoryFileSystem::Rename(const std::string& from, const std::string& to) {
  bool killed = false;
  const FileError error = Begin("rename " + from + " " + to, to, killed);
  if (error != FileError::kGood) return error;
  if (killed) throw Killed{};
  auto file = files.extract(from);
  if (file.empty()) return FileError::kMissing;
  files[to] = std::move(file.mapped());
  return FileError::kGood;
}

FileError MemoryFileSystem::Remove(const std::string& path) {
  bool killed = false;
  const FileError error = Begin("remove " + path, path, killed);
  if (error != FileError::kGood) return error;
  if (killed) throw Killed{};
  return files.erase(path) == 0 ? FileError::kMissing : FileError::kGood;
}

FileError MemoryFileSystem::Append(const std::string& path, std::string_view content) {
  bool killed = false;
  const FileError error = Begin("append " + path, path, killed);
  if (error != FileError::kGood) return error;
  files[path] += killed ? Half(content) : content;
  if (killed) throw Killed{};
  return FileError::kGood;
}

FileError MemoryFileSystem::Flush(const std::string& path) {
  bool killed = false;
  const FileError error = Begin("flush " + path, path, killed);
  if (error != FileError::kGood) return error;
  if (killed) throw Killed{};
  return files.contains(path) ? FileError::kGood : FileError::kMissing;
}

FileError MemoryFileSystem::ReadTail(const std::string& path, std::size_t most, std::string& content,
                                     std::uint64_t& length) {
  std::string whole;
  const FileError error = ReadAtMost(path, std::string::npos, whole);
  if (error != FileError::kGood) return error;
  length = whole.size();
  content = whole.substr(whole.size() - std::min(most, whole.size()));
  return FileError::kGood;
}

FileError MemoryFileSystem::MakeFolder(const std::string& path) {
  if (folders.contains(path)) return FileError::kGood;
  bool killed = false;
  const FileError error = Begin("folder " + path, path, killed);
  if (error != FileError::kGood) return error;
  if (killed) throw Killed{};
  if (files.contains(path)) return FileError::kNotAFile;
  folders.insert(path);
  return FileError::kGood;
}

FileError MemoryFileSystem::FilesIn(const std::string& path, std::vector<std::string>& names) {
  if (const auto bad = bad_paths_.find(path); bad != bad_paths_.end()) return bad->second;
  if (!folders.contains(path)) return FileError::kMissing;
  names.clear();
  for (const auto& [file, content] : files) {
    if (file.size() > path.size() + 1 && file.starts_with(path) &&
        file.find_first_of("/\\", path.size() + 1) == std::string::npos) {
      names.push_back(file.substr(path.size() + 1));
    }
  }
  return FileError::kGood;
}

}  // namespace vlt::test
