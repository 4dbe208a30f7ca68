// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/serial_device.h"

#ifdef _WIN32

namespace vlt {

// The system answers "access denied" for a port that another program holds, and for nothing else.
PortFaultCode WhyRefused(const std::string& /*device*/) { return PortFaultCode::kBusy; }
std::string GroupOf(const std::string& /*device*/) { return ""; }
bool IsPseudoTerminal(int /*descriptor*/) { return false; }
bool ClaimDevice(int /*descriptor*/) { return true; }
int DriverBytesOut(int /*descriptor*/) { return 0; }
void AskLowLatency(int /*descriptor*/) {}
bool IsHungUp(int /*descriptor*/) { return false; }

}  // namespace vlt

#else

#include <fcntl.h>
#include <grp.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __linux__
#include <linux/serial.h>
#include <sys/sysmacros.h>
#endif

#include <cerrno>

namespace vlt {

PortFaultCode WhyRefused(const std::string& device) {
  struct stat info = {};
  if (::stat(device.c_str(), &info) != 0)
    return errno == EACCES ? PortFaultCode::kNoPermission : PortFaultCode::kMissing;
  if (!S_ISCHR(info.st_mode)) return PortFaultCode::kMissing;
  if (::faccessat(AT_FDCWD, device.c_str(), R_OK | W_OK, AT_EACCESS) != 0)
    return PortFaultCode::kNoPermission;
  return PortFaultCode::kBusy;
}

std::string GroupOf(const std::string& device) {
  constexpr mode_t kReadAndWrite = S_IRGRP | S_IWGRP;
  struct stat info = {};
  if (::stat(device.c_str(), &info) != 0 || info.st_gid == 0) return "";
  if ((info.st_mode & kReadAndWrite) != kReadAndWrite) return "";
  const struct group* group = ::getgrgid(info.st_gid);
  return group != nullptr ? group->gr_name : std::to_string(info.st_gid);
}

bool IsPseudoTerminal(int descriptor) {
#ifdef __linux__
  // Documentation/admin-guide/devices.txt of the kernel: 136 to 143 are the slaves of Unix98.
  constexpr unsigned kFirstMajor = 136;
  constexpr unsigned kLastMajor = 143;
  struct stat info = {};
  if (::fstat(descriptor, &info) != 0) return false;
  return major(info.st_rdev) >= kFirstMajor && major(info.st_rdev) <= kLastMajor;
#else
  static_cast<void>(descriptor);
  return false;
#endif
}

bool ClaimDevice(int descriptor) {
  return ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

int DriverBytesOut(int descriptor) {
  int count = 0;
  return ::ioctl(descriptor, TIOCOUTQ, &count) == 0 ? count : 0;
}

void AskLowLatency(int descriptor) {
#ifdef __linux__
  serial_struct settings = {};
  if (::ioctl(descriptor, TIOCGSERIAL, &settings) != 0) return;
  settings.flags |= ASYNC_LOW_LATENCY;
  ::ioctl(descriptor, TIOCSSERIAL, &settings);
#else
  static_cast<void>(descriptor);
#endif
}

bool IsHungUp(int descriptor) {
  pollfd state = {descriptor, POLLIN, 0};
  return ::poll(&state, 1, 0) > 0 && (state.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0;
}

}  // namespace vlt

#endif
