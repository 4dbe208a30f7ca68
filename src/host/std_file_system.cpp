// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/std_file_system.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace vlt {
namespace {

namespace fs = std::filesystem;

// Paths of the product are UTF-8 everywhere.
fs::path PathOf(const std::string& text) { return fs::path(std::u8string(text.begin(), text.end())); }

FileError ErrorOf(const std::error_code& code) {
  struct Row {
    std::errc code;
    FileError::Kind error;
  };
  static constexpr std::array<Row, 12> kRows{{
      {std::errc::no_such_file_or_directory, FileError::kMissing},
      {std::errc::not_a_directory, FileError::kMissing},
      {std::errc::permission_denied, FileError::kNoPermission},
      {std::errc::operation_not_permitted, FileError::kNoPermission},
      {std::errc::read_only_file_system, FileError::kNoPermission},
      {std::errc::text_file_busy, FileError::kNoPermission},
      {std::errc::is_a_directory, FileError::kNotAFile},
      {std::errc::no_such_device_or_address, FileError::kPipe},  // one that nobody reads
      {std::errc::no_such_device, FileError::kDevice},
      {std::errc::no_space_on_device, FileError::kFull},
      {std::errc::file_too_large, FileError::kFull},  // the limit of the file system or of the user
      {std::errc::filename_too_long, FileError::kMissing},
  }};
  for (const Row& row : kRows)
    if (code == row.code) return row.error;
#ifdef EDQUOT
  if (code.value() == EDQUOT) return FileError::kFull;
#endif
  return FileError::OfSystem(code.value(), code.message());
}

FileError LastError() { return ErrorOf({errno, std::generic_category()}); }

// An open file with the few calls that both families of systems have, by their own names.
class Handle {
 public:
#ifdef _WIN32
  static constexpr int kRead = _O_RDONLY | _O_BINARY;
  static constexpr int kWrite = _O_WRONLY | _O_BINARY | _O_CREAT | _O_TRUNC;
  static constexpr int kAppend = _O_WRONLY | _O_BINARY | _O_CREAT | _O_APPEND;
  Handle(const fs::path& path, int flags) : fd_(_wopen(path.c_str(), flags, _S_IREAD | _S_IWRITE)) {}
  bool Flush() { return _commit(fd_) == 0; }
  void TakeRightsOf(const fs::path&) {}  // here they come from the folder
  bool Cut(std::uintmax_t size) { return _chsize_s(fd_, static_cast<long long>(size)) == 0; }
  bool Seek(std::uintmax_t to) { return _lseeki64(fd_, static_cast<long long>(to), SEEK_SET) >= 0; }
  std::ptrdiff_t Get(char* to, std::size_t size) { return _read(fd_, to, static_cast<unsigned>(size)); }
  std::ptrdiff_t Put(const char* from, std::size_t size) {
    return _write(fd_, from, static_cast<unsigned>(size));
  }
  bool Close() { return _close(std::exchange(fd_, -1)) == 0; }
#else
  // Without waiting: a pipe would hold the program up until somebody opens its other end.
  static constexpr int kRead = O_RDONLY | O_CLOEXEC | O_NONBLOCK;
  static constexpr int kWrite = O_WRONLY | O_CLOEXEC | O_NONBLOCK | O_CREAT | O_TRUNC;
  static constexpr int kAppend = O_WRONLY | O_CLOEXEC | O_NONBLOCK | O_CREAT | O_APPEND;
  Handle(const fs::path& path, int flags) : fd_(::open(path.c_str(), flags, 0666)) {}
  // Where they can't be taken over, the content counts more.
  void TakeRightsOf(const fs::path& model) const {
    struct stat found = {};
    if (::stat(model.c_str(), &found) == 0) static_cast<void>(::fchmod(fd_, found.st_mode & 0777));
  }
  bool Flush() const { return ::fsync(fd_) == 0; }
  bool Cut(std::uintmax_t size) const { return ::ftruncate(fd_, static_cast<off_t>(size)) == 0; }
  bool Seek(std::uintmax_t to) const { return ::lseek(fd_, static_cast<off_t>(to), SEEK_SET) >= 0; }
  std::ptrdiff_t Get(char* to, std::size_t size) const { return ::read(fd_, to, size); }
  std::ptrdiff_t Put(const char* from, std::size_t size) const { return ::write(fd_, from, size); }
  bool Close() { return ::close(std::exchange(fd_, -1)) == 0; }
#endif
  ~Handle() {
    if (IsOpen()) Close();
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  bool IsOpen() const { return fd_ >= 0; }

 private:
  int fd_;
};

// kGood for an ordinary file or for nothing at all; the second value tells whether it is there.
struct Found {
  FileError error = FileError::kGood;
  bool exists = false;
  std::uintmax_t size = 0;
};

Found Look(const fs::path& path) {
  std::error_code code;
  switch (fs::status(path, code).type()) {
    case fs::file_type::not_found:
      return {};
    case fs::file_type::none:
      return {ErrorOf(code)};
    case fs::file_type::regular:
      return {FileError::kGood, true, fs::file_size(path, code)};
    case fs::file_type::directory:
      return {FileError::kNotAFile, true};
    case fs::file_type::fifo:
      return {FileError::kPipe, true};
    case fs::file_type::socket:
      return {FileError::kSocket, true};
    default:
      return {FileError::kDevice, true};
  }
}

FileError Fill(Handle& file, std::string_view content) {
  while (!content.empty()) {
    const std::ptrdiff_t done = file.Put(content.data(), content.size());
    if (done < 0 && errno == EINTR) continue;
    if (done < 0) return LastError();
    if (done == 0) return FileError::kFull;
    content.remove_prefix(static_cast<std::size_t>(done));
  }
  return file.Flush() && file.Close() ? FileError::kGood : LastError();
}

// Makes a change of names in a folder last over a power cut. Where folders can't be opened it is up to the
// system.
void FlushFolder(const fs::path& file) {
#ifndef _WIN32
  Handle folder(file.has_parent_path() ? file.parent_path() : fs::path("."), O_RDONLY | O_CLOEXEC);
  if (folder.IsOpen()) folder.Flush();
#else
  static_cast<void>(file);
#endif
}

bool IsWritable(const fs::path& path) {
#ifdef _WIN32
  return _waccess(path.c_str(), 2) == 0;
#else
  return ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) == 0;
#endif
}

// Creates or empties the file and fills it; `model` gives it its rights, or is null.
FileError Make(const fs::path& file, std::string_view content, const fs::path* model) {
  const Found found = Look(file);
  if (found.error != FileError::kGood) return found.error;
  Handle handle(file, Handle::kWrite);
  if (!handle.IsOpen()) return LastError();
  if (model != nullptr) handle.TakeRightsOf(*model);
  const FileError error = Fill(handle, content);
  if (error != FileError::kGood && !found.exists) {
    if (handle.IsOpen()) handle.Close();
    std::error_code ignored;
    fs::remove(file, ignored);
  }
  return error;
}

}  // namespace

FileError StdFileSystem::ReadAtMost(const std::string& path, std::size_t most, std::string& content) {
  const fs::path file = PathOf(path);
  const Found found = Look(file);
  if (found.error != FileError::kGood) return found.error;
  if (!found.exists) return FileError::kMissing;
  if (found.size > most) return FileError::LargerThan(most);
  Handle handle(file, Handle::kRead);
  if (!handle.IsOpen()) return LastError();
  std::string read;
  std::array<char, 65536> piece{};
  for (;;) {
    const std::ptrdiff_t got = handle.Get(piece.data(), piece.size());
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return LastError();
    if (got == 0) break;
    read.append(piece.data(), static_cast<std::size_t>(got));
    if (read.size() > most) return FileError::LargerThan(most);  // it has grown since
  }
  content = std::move(read);
  return FileError::kGood;
}

FileError StdFileSystem::Create(const std::string& path, std::string_view content) {
  return Make(PathOf(path), content, nullptr);
}

FileError StdFileSystem::CreateLike(const std::string& path, std::string_view content,
                                    const std::string& model) {
  const fs::path like = PathOf(model);
  return Make(PathOf(path), content, &like);
}

FileError StdFileSystem::Rename(const std::string& from, const std::string& to) {
  const fs::path source = PathOf(from);
  const fs::path target = PathOf(to);
  const Found old = Look(target);
  if (old.error != FileError::kGood) return old.error;
  if (old.exists && !IsWritable(target)) return FileError::kNoPermission;
  std::error_code code;
  fs::rename(source, target, code);
  if (code) return ErrorOf(code);
  FlushFolder(target);
  return FileError::kGood;
}

FileError StdFileSystem::Remove(const std::string& path) {
  const fs::path file = PathOf(path);
  const Found found = Look(file);
  if (found.error != FileError::kGood) return found.error;
  if (!found.exists) return FileError::kMissing;
  std::error_code code;
  fs::remove(file, code);
  return code ? ErrorOf(code) : FileError::kGood;
}

FileError StdFileSystem::Append(const std::string& path, std::string_view content) {
  const fs::path file = PathOf(path);
  const Found found = Look(file);
  if (found.error != FileError::kGood) return found.error;
  Handle handle(file, Handle::kAppend);
  if (!handle.IsOpen()) return LastError();
  std::ptrdiff_t done = -1;
  do {
    done = handle.Put(content.data(), content.size());
  } while (done < 0 && errno == EINTR);
  if (done == static_cast<std::ptrdiff_t>(content.size())) return FileError::kGood;
  const FileError error = done < 0 ? LastError() : FileError::kFull;
  if (done > 0) handle.Cut(found.size);  // half a line is worse than none
  if (!found.exists) {
    handle.Close();
    std::error_code ignored;
    fs::remove(file, ignored);
  }
  return error;
}

FileError StdFileSystem::Flush(const std::string& path) {
  const fs::path file = PathOf(path);
  const Found found = Look(file);
  if (found.error != FileError::kGood) return found.error;
  if (!found.exists) return FileError::kMissing;
  Handle handle(file, Handle::kAppend);
  return handle.IsOpen() && handle.Flush() ? FileError::kGood : LastError();
}

FileError StdFileSystem::ReadTail(const std::string& path, std::size_t most, std::string& content,
                                  std::uint64_t& length) {
  const fs::path file = PathOf(path);
  const Found found = Look(file);
  if (found.error != FileError::kGood) return found.error;
  if (!found.exists) return FileError::kMissing;
  Handle handle(file, Handle::kRead);
  const std::uintmax_t size = std::min<std::uintmax_t>(most, found.size);
  if (!handle.IsOpen() || !handle.Seek(found.size - size)) return LastError();
  std::string read(static_cast<std::size_t>(size), '\0');
  std::size_t done = 0;
  while (done < read.size()) {
    const std::ptrdiff_t got = handle.Get(read.data() + done, read.size() - done);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return LastError();
    if (got == 0) break;  // it was cut meanwhile
    done += static_cast<std::size_t>(got);
  }
  read.resize(done);
  content = std::move(read);
  length = found.size;
  return FileError::kGood;
}

FileError StdFileSystem::MakeFolder(const std::string& path) {
  const fs::path folder = PathOf(path);
  std::error_code code;
  if (fs::is_directory(folder, code)) return FileError::kGood;
  if (fs::exists(folder, code)) return FileError::kNotAFile;
  fs::create_directories(folder, code);
  return code ? ErrorOf(code) : FileError::kGood;
}

FileError StdFileSystem::FilesIn(const std::string& path, std::vector<std::string>& names) {
  std::error_code code;
  std::vector<std::string> found;
  for (fs::directory_iterator entry(PathOf(path), code); !code && entry != fs::directory_iterator();
       entry.increment(code)) {
    std::error_code ignored;
    if (!entry->is_regular_file(ignored)) continue;
    const std::u8string name = entry->path().filename().u8string();
    found.emplace_back(name.begin(), name.end());
  }
  if (code) return ErrorOf(code);
  std::sort(found.begin(), found.end());
  names = std::move(found);
  return FileError::kGood;
}

bool StdFileSystem::Exists(const std::string& path) {
  std::error_code code;
  return fs::exists(PathOf(path), code);
}

std::string StdFileSystem::Target(const std::string& path) {
  constexpr int kMostLinks = 40;  // what the system follows itself
  fs::path file = PathOf(path);
  std::error_code code;
  for (int link = 0; link < kMostLinks && fs::is_symlink(file, code); ++link) {
    const fs::path next = fs::read_symlink(file, code);
    if (code) break;
    file = file.parent_path() / next;  // an absolute one takes the place of the folder
  }
  const std::u8string text = file.u8string();
  return {text.begin(), text.end()};
}

}  // namespace vlt
