// SPDX-License-Identifier: GPL-3.0-or-later
// A boot loader at the far end of a serial port, written down by the test: it takes whole frames and answers
// each as the test says, at the pace of 38400 bit/s on virtual time. The line can be cut at any byte.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/serial_port.h"
#include "support/virtual_time.h"

namespace vlt::test {

class FirmwarePeer : public SerialPort {
 public:
  explicit FirmwarePeer(VirtualTime& time) : time_(time) {}

  // What the boot loader says to a frame; an empty answer is silence. A frame is all bytes of one write.
  std::function<std::string(const std::string& frame)> answer = [this](const std::string& f) {
    return Good(f);
  };
  // The usual answers: the image to a read frame, else the command letter and a line end.
  std::string Good(const std::string& frame) const;
  std::string image;
  // Bytes that the line carries, both ways together, before it is cut; what follows is lost.
  std::optional<std::size_t> cut_after;
  bool unplugged_by_cut = false;  // the port notices the cut
  std::optional<PortFaultCode> refuses_to_open;
  int pause_within_answer_ms = 0;  // a silence behind the first byte of each answer
  bool holds_output = false;       // nothing leaves the driver

  std::vector<std::string> frames;  // each write
  std::vector<std::string> opens;   // "1 38400,N,8,1"
  std::size_t carried = 0;

  void Open(int number, const std::string& settings) override;
  void Close() override { open_ = false; }
  bool IsOpen() const override { return open_; }
  void DiscardInput() override {}
  void DiscardOutput() override {}
  void Write(std::span<const std::uint8_t> bytes) override;
  int BytesOut() override;
  int BytesIn() override;
  std::uint8_t TakeByte() override;
  void SetRts(bool) override {}
  void SetDtr(bool) override {}

 private:
  // As much of `bytes` as the line still carries.
  std::size_t Carry(std::size_t bytes);
  bool IsCut() const { return cut_after && carried >= *cut_after; }
  void CheckOpen() const;
  std::int64_t ArrivedBy(std::int64_t ms) const;

  VirtualTime& time_;
  bool open_ = false;
  std::int64_t write_begun_ms_ = 0;
  std::int64_t written_ = 0;
  std::string incoming_;
  std::int64_t incoming_begun_ms_ = 0;
  std::int64_t taken_ = 0;
};

}  // namespace vlt::test
