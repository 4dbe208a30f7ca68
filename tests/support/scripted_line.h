// SPDX-License-Identifier: GPL-3.0-or-later
// A serial port whose replies are written down by the test, byte by byte, for what no meter would send and
// for the faults of a driver.
#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "platform/serial_port.h"
#include "support/virtual_time.h"

namespace vlt::test {

class ScriptedLine : public SerialPort {
 public:
  explicit ScriptedLine(VirtualTime& time) : time_(time) {}

  // The answer to the next request that has none yet: the bytes of `hex` ("01 83 02") arrive `after_ms`
  // behind the end of the request, all at once or `each_ms` apart. Requests without an answer meet silence.
  void Reply(std::string_view hex, int after_ms = 0, int each_ms = 0);
  // The same; the frame check is put behind the bytes.
  void ReplyChecked(std::string_view hex, int after_ms = 0, int each_ms = 0);
  // The n-th call of an operation from now raises a fault: "open", "close", "discard in", "discard out",
  // "write", "bytes out", "bytes in", "take", "rts", "dtr".
  void Fail(const std::string& operation, PortFaultCode code, int n = 1) { faults_[operation] = {n, code}; }

  void Open(int number, const std::string& settings) override;
  void Close() override;
  bool IsOpen() const override { return open_; }
  void DiscardInput() override;
  void DiscardOutput() override;
  void Write(std::span<const std::uint8_t> bytes) override;
  int BytesOut() override;
  int BytesIn() override;
  std::uint8_t TakeByte() override;
  void SetRts(bool on) override;
  void SetDtr(bool on) override;

  int drain_ms = 0;                 // how long the driver holds a request
  std::vector<std::string> calls;   // "open 1 9600,O,8,1", "discard in", "write 01 03 ...", "drained", ...
  std::vector<std::string> writes;  // the requests alone
  std::vector<std::int64_t> write_times_ms;

 private:
  struct Timed {
    std::int64_t at_ms;
    std::uint8_t byte;
  };
  struct Answer {
    std::vector<std::uint8_t> bytes;
    int after_ms;
    int each_ms;
  };
  void Do(const std::string& operation, const std::string& note = {});

  VirtualTime& time_;
  bool open_ = false;
  std::int64_t drained_ms_ = 0;
  bool draining_ = false;
  std::deque<Answer> answers_;
  std::deque<Timed> incoming_;
  std::map<std::string, std::pair<int, PortFaultCode>> faults_;
};

}  // namespace vlt::test
