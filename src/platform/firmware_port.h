// SPDX-License-Identifier: GPL-3.0-or-later
// The serial port as the firmware link sees it: opened with time-outs, then whole blocking calls. While a
// call waits, the event queue runs, so windows are painted and a Cancel button can be pressed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "platform/serial_port.h"

namespace vlt {

// Milliseconds. The totals are a constant and a part for each byte asked for.
struct FirmwareTimeouts {
  int read_interval = 0;  // a silence so long behind a received byte ends a read
  int read_constant = 0;
  int read_per_byte = 0;
  int write_constant = 0;
  int write_per_byte = 0;
};

class FirmwarePort {
 public:
  using Handle = int;
  static constexpr Handle kNoHandle = 0;

  virtual ~FirmwarePort() = default;

  // Opens "COMn" for this program alone, with settings such as "38400,N,8,1". kNoHandle when it can't be
  // opened; LastFault() tells why.
  virtual Handle Open(const std::string& name, const std::string& settings,
                      const FirmwareTimeouts& timeouts) = 0;
  // Sends the whole array. False when the total time-out runs out first, when the port is lost or the handle
  // is not open.
  virtual bool Write(Handle handle, std::span<const std::uint8_t> bytes) = 0;
  // Receives into `into`; `received` says how many bytes. Returns when `into` is full, when the interval has
  // passed behind a byte, or when the total time-out runs out, with what has come until then. False when the
  // port is lost or the handle is not open.
  virtual bool Read(Handle handle, std::span<std::uint8_t> into, std::size_t& received) = 0;
  // Closing what is not open does nothing.
  virtual void Close(Handle handle) = 0;

  // The fault behind the last refusal; nothing when it was a time-out.
  virtual const std::optional<PortFault>& LastFault() const = 0;
};

}  // namespace vlt
