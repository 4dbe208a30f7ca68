// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/left_lock.h"

#include <QFile>
#ifdef _WIN32
#include <QLockFile>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#endif

namespace vlt {

#ifdef _WIN32

// A file that a process has open can't be removed here.
LeftLock RemoveLeftLock(const QString& path) {
  return QLockFile(path).removeStaleLockFile() ? LeftLock::kGone : LeftLock::kHeld;
}

#else

namespace {

class OpenFile {
 public:
  explicit OpenFile(const QByteArray& path) : fd_(::open(path.constData(), O_RDWR | kFlags)) {
    // One of another user; its lock can be looked at all the same.
    if (fd_ < 0 && (errno == EACCES || errno == EROFS)) fd_ = ::open(path.constData(), O_RDONLY | kFlags);
  }
  ~OpenFile() {
    if (fd_ >= 0) ::close(fd_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  int Fd() const { return fd_; }

 private:
  static constexpr int kFlags = O_CLOEXEC | O_NONBLOCK;
  int fd_;
};

// False when another file stands at the path by now.
bool StandsAt(int fd, const QByteArray& path) {
  struct stat open = {};
  struct stat now = {};
  return ::fstat(fd, &open) == 0 && ::stat(path.constData(), &now) == 0 && open.st_ino == now.st_ino &&
         open.st_dev == now.st_dev;
}

}  // namespace

LeftLock RemoveLeftLock(const QString& path) {
  const QByteArray name = QFile::encodeName(path);
  const OpenFile file(name);
  if (file.Fd() < 0) return errno == ENOENT ? LeftLock::kGone : LeftLock::kUnsure;
  if (::flock(file.Fd(), LOCK_EX | LOCK_NB) != 0)
    return errno == EWOULDBLOCK ? LeftLock::kHeld : LeftLock::kUnsure;
  if (!StandsAt(file.Fd(), name)) return LeftLock::kGone;
  return ::unlink(name.constData()) == 0 ? LeftLock::kGone : LeftLock::kStuck;
}

#endif

}  // namespace vlt
