// SPDX-License-Identifier: GPL-3.0-or-later
// The firmware link's port over any SerialPort: a real one, the simulated one, a test's. All that the
// blocking calls add, their time-outs, is here once.
#pragma once

#include "platform/clock.h"
#include "platform/event_queue.h"
#include "platform/firmware_port.h"

namespace vlt {

class SerialFirmwarePort : public FirmwarePort {
 public:
  // `port` may be the one of the Modbus link: it counts as busy while that holds it open.
  SerialFirmwarePort(Clock& clock, EventQueue& events, SerialPort& port)
      : clock_(clock), events_(events), port_(port) {}

  Handle Open(const std::string& name, const std::string& settings,
              const FirmwareTimeouts& timeouts) override;
  bool Write(Handle handle, std::span<const std::uint8_t> bytes) override;
  bool Read(Handle handle, std::span<std::uint8_t> into, std::size_t& received) override;
  void Close(Handle handle) override;
  const std::optional<PortFault>& LastFault() const override { return fault_; }

 private:
  bool WaitUntilSent(std::int64_t until);
  void ReadUntil(std::int64_t until, std::span<std::uint8_t> into, std::size_t& received);
  // Runs an operation of the port; false, with the fault kept, when it raised one.
  template <class Operation>
  bool Try(Operation&& operation);

  Clock& clock_;
  EventQueue& events_;
  SerialPort& port_;
  FirmwareTimeouts timeouts_;
  Handle open_ = kNoHandle;
  Handle last_ = kNoHandle;
  std::optional<PortFault> fault_;
};

// The n of "COMn"; 0, which no port has, for any other text.
int ComNumber(const std::string& name);

}  // namespace vlt
