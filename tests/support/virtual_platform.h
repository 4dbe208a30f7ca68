// SPDX-License-Identifier: GPL-3.0-or-later
// The whole machine of a logic test. COM1 leads to a simulated line with one meter, station 1; every other
// number to nothing, unless the test plugs a line in.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "platform/serial_firmware_port.h"
#include "sim/line.h"
#include "sim/simulated_port.h"
#include "support/fake_process.h"
#include "support/memory_file_system.h"
#include "support/scripted_dialogs.h"
#include "support/scripted_line.h"
#include "support/virtual_time.h"

namespace vlt::test {

enum class PortKind { kSimulated, kScripted };

class VirtualPlatform {
 public:
  explicit VirtualPlatform(PortKind kind = PortKind::kSimulated, const sim::MeterConfig& config = {});

  sim::Meter& Meter(int station = 1) { return *line.Station(station); }
  // Arms a fault by its words ("crc@00D0H*2"); a wrong word throws.
  void Arm(std::string_view words);
  // Requests that reached the simulated meters since the last call, as hexadecimal bytes ("01 03 00 D0 ...").
  std::vector<std::string> TakeRequests();
  // The same without station and frame check ("03 00 D0 ...").
  std::vector<std::string> TakeBareRequests();

  VirtualTime time;
  MemoryFileSystem files;
  ScriptedDialogs dialogs;
  FakeProcess process;
  sim::Line line;
  std::map<int, sim::Socket> sockets;  // what each COM number leads to
  // Where this gives a name for a COM number, what is plugged in under it counts instead of its socket.
  std::function<std::string(int number)> device_of;
  std::map<std::string, sim::Line*> plugged;
  sim::SimulatedPort simulated;
  ScriptedLine scripted;
  SerialFirmwarePort firmware;
  Platform machine;
};

// "01 03 00 D0".
std::string Hex(std::span<const std::uint8_t> frame);
// The bytes of such a text; a wrong text throws.
std::vector<std::uint8_t> FromHex(std::string_view text);

}  // namespace vlt::test
