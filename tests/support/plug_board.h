// SPDX-License-Identifier: GPL-3.0-or-later
// USB adapters that a test plugs in and out. COM1 is /dev/ttyUSB0 by the settings file, and a line of
// simulated meters hangs on each adapter.
#pragma once

#include <string>

#include "files/settings_file.h"
#include "link/port.h"
#include "support/virtual_platform.h"

namespace vlt::test {

inline PortInfo Adapter(const std::string& device, const std::string& serial_number) {
  return {.device = device, .product = "USB to UART", .maker = "ACME", .serial_number = serial_number};
}

class PlugBoard {
 public:
  PlugBoard(VirtualPlatform& platform, App& app) : platform_(platform) {
    platform_.files.files["/app/VLT.ini"] += "[PORTS]\r\nCOM1=/dev/ttyUSB0\r\n";
    platform_.device_of = [&app](int number) { return PortDeviceInForce(app, number); };
    // A page may have opened what COM1 led to before.
    bool closed = false;
    ClosePort(app, closed);
  }

  void Plug(const PortInfo& adapter) { Plug(adapter, platform_.line); }
  void Plug(const PortInfo& adapter, sim::Line& line) {
    platform_.process.ports.push_back(adapter);
    platform_.plugged[adapter.device] = &line;
    line.Plug(platform_.time.NowMs() * 1000);
  }
  void Unplug(const std::string& device) {
    std::erase_if(platform_.process.ports, [&](const PortInfo& port) { return port.device == device; });
    const auto found = platform_.plugged.find(device);
    if (found == platform_.plugged.end()) return;
    found->second->Unplug(platform_.time.NowMs() * 1000);
    platform_.plugged.erase(found);
  }

 private:
  VirtualPlatform& platform_;
};

}  // namespace vlt::test
