// SPDX-License-Identifier: GPL-3.0-or-later
// The serial port as the Modbus transaction sees it: bytes out, bytes in, nothing of frames.
#pragma once

#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>

namespace vlt {

// Numbers of port faults. They are shown to the operator inside "[RECEIVE ERROR(n)]", so they never change.
enum class PortFaultCode {
  kMissing = 1,       // there is no such device, or the COM number is out of range
  kNoPermission = 2,  // the device may not be opened by this user
  kBusy = 3,          // another program holds the device
  kSettings = 4,      // the device refuses speed, parity or stop bits, or the settings text is malformed
  kRemoved = 5,       // the device went away while it was open
  kWrite = 6,         // the driver refused bytes
  kRead = 7,          // the driver failed to deliver bytes
  kNotOpen = 8,       // an operation on a closed port
  kUnknown = 9,       // anything else the driver reports
};

// Thrown by the operations of SerialPort; caught at the edge of the link, never seen by a page.
class PortFault : public std::runtime_error {
 public:
  // `device` is what the COM number stands for, empty when nothing does. `group`, with kNoPermission, is the
  // group of users that may open it; empty when there is none.
  PortFault(PortFaultCode code, const std::string& device, const std::string& group = "")
      : std::runtime_error("port fault"), code_(code), device_(device), group_(group) {}
  PortFaultCode Code() const { return code_; }
  int Number() const { return static_cast<int>(code_); }
  const std::string& Device() const { return device_; }
  const std::string& Group() const { return group_; }

 private:
  PortFaultCode code_;
  std::string device_;
  std::string group_;
};

// One port, opened by COM number. All operations but Open and Close are non-blocking; every one may throw
// PortFault. Received bytes and the end of a transmission are only seen after the event queue has run.
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  // `number` is the n of COMn; `settings` is "speed,parity letter,data bits,stop bits", e.g. "9600,O,8,1".
  virtual void Open(int number, const std::string& settings) = 0;
  // Closing a closed port does nothing.
  virtual void Close() = 0;
  virtual bool IsOpen() const = 0;
  // What COM `number` stands for now: a device, or a simulated meter. Empty when it stands for nothing.
  virtual std::string DeviceBehind(int number) {
    (void)number;
    return {};
  }

  virtual void DiscardInput() = 0;
  virtual void DiscardOutput() = 0;
  // Queues the whole array. The bytes are on their way until BytesOut() is 0.
  virtual void Write(std::span<const std::uint8_t> bytes) = 0;
  // Bytes that the driver has not taken yet.
  virtual int BytesOut() = 0;
  // Bytes received and not yet taken.
  virtual int BytesIn() = 0;
  // Takes exactly one received byte; the caller has asked BytesIn() first.
  virtual std::uint8_t TakeByte() = 0;

  // While held, arriving bytes need not wake who gives way, and BytesIn() may leave them out; none is lost.
  // For who knows that he can do nothing with the next ones alone. Opening and closing end it.
  virtual void HoldInput(bool held) { (void)held; }
  // Asks the driver to hand over each byte when it arrives rather than several together after a pause. What
  // can't be asked ignores it.
  virtual void AskPrompt() {}

  // Modem lines. A port without the line ignores the call.
  virtual void SetRts(bool on) = 0;
  virtual void SetDtr(bool on) = 0;
};

}  // namespace vlt
