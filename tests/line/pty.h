// SPDX-License-Identifier: GPL-3.0-or-later
// A pseudo-terminal: the test holds the meter's end, the port under test opens the other by its path. The
// path is a name of its own that goes with the device: the kernel gives the number of a terminal that is gone
// to the next process that asks for one.
#pragma once

#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace vlt {

class Pty {
 public:
  Pty() : master_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    if (master_ < 0 || ::grantpt(master_) != 0 || ::unlockpt(master_) != 0) std::abort();
    if (::mkdtemp(folder_.data()) == nullptr) std::abort();
    path_ = folder_ + "/port";
    if (::symlink(::ptsname(master_), path_.c_str()) != 0) std::abort();
  }
  ~Pty() { Hangup(); }
  Pty(const Pty&) = delete;
  Pty& operator=(const Pty&) = delete;

  const std::string& Path() const { return path_; }
  void Send(std::span<const std::uint8_t> bytes) const {
    if (::write(master_, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) std::abort();
  }
  // What the other end wrote, `count` bytes of it, or less when five seconds pass without any.
  std::vector<std::uint8_t> Receive(std::size_t count) const {
    std::vector<std::uint8_t> bytes;
    pollfd state{master_, POLLIN, 0};
    while (bytes.size() < count && ::poll(&state, 1, 5000) > 0) {
      std::uint8_t byte = 0;
      if (::read(master_, &byte, 1) != 1) break;
      bytes.push_back(byte);
    }
    return bytes;
  }
  // The device is unplugged.
  void Hangup() {
    if (master_ < 0) return;
    ::unlink(path_.c_str());
    ::rmdir(folder_.c_str());
    ::close(std::exchange(master_, -1));
  }

 private:
  int master_;
  std::string folder_ = "/tmp/veltrano3-pty-XXXXXX";
  std::string path_;
};

// A look at what the driver of the port's end holds. The kernel carries bytes from one end to the other in a
// task of its own, which a loaded machine runs late.
class DriverInput {
 public:
  explicit DriverInput(const std::string& path) : port_(::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    if (port_ < 0) std::abort();
  }
  ~DriverInput() { ::close(port_); }
  DriverInput(const DriverInput&) = delete;
  DriverInput& operator=(const DriverInput&) = delete;

  // True as soon as `count` bytes wait; false when five seconds pass without any.
  bool Awaits(int count) const {
    int waiting = 0;
    pollfd state{port_, POLLIN, 0};
    while (::ioctl(port_, FIONREAD, &waiting) == 0 && waiting < count) {
      if (waiting == 0 && ::poll(&state, 1, 5000) <= 0) return false;
      ::sched_yield();
    }
    return waiting >= count;
  }

 private:
  int port_;
};

}  // namespace vlt
