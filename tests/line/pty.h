// A pseudo-terminal: the test holds the meter's end, the port under test opens the other by its path.
#pragma once

#include <fcntl.h>
#include <poll.h>
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
    path_ = ::ptsname(master_);
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
    if (master_ >= 0) ::close(std::exchange(master_, -1));
  }

 private:
  int master_;
  std::string path_;
};

}  // namespace vlt
