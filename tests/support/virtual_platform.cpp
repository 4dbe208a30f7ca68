// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/virtual_platform.h"

#include <stdexcept>

namespace vlt::test {

VirtualPlatform::VirtualPlatform(PortKind kind, const sim::MeterConfig& config)
    : simulated(time, time,
                [this](int number) {
                  if (const std::string device = device_of ? device_of(number) : ""; !device.empty()) {
                    const auto end = plugged.find(device);
                    return sim::Socket{.line = end == plugged.end() ? nullptr : end->second, .name = device};
                  }
                  const auto socket = sockets.find(number);
                  return socket == sockets.end() ? sim::Socket{} : socket->second;
                }),
      scripted(time),
      firmware(time, time, kind == PortKind::kSimulated ? static_cast<SerialPort&>(simulated) : scripted),
      machine{time,    time,  kind == PortKind::kSimulated ? static_cast<SerialPort&>(simulated) : scripted,
              dialogs, files, process,
              firmware} {
  line.AddStation(1, config);
  sockets[1] = {.line = &line, .name = "simulator"};
}

void VirtualPlatform::Arm(std::string_view words) {
  std::string error;
  const auto fault = sim::ParseFault(words, error);
  if (!fault) throw std::invalid_argument(error);
  line.faults().Arm(*fault);
}

std::vector<std::string> VirtualPlatform::TakeRequests() {
  std::vector<std::string> requests;
  for (const sim::LogEntry& entry : line.Log()) {
    if (entry.kind == sim::LogEntry::Kind::Request) requests.push_back(sim::ToHex(entry.bytes));
  }
  line.ClearLog();
  return requests;
}

std::vector<std::string> VirtualPlatform::TakeBareRequests() {
  std::vector<std::string> requests = TakeRequests();
  for (std::string& frame : requests) frame = frame.substr(3, frame.size() - 9);
  return requests;
}

std::string Hex(std::span<const std::uint8_t> frame) { return sim::ToHex(frame); }

std::vector<std::uint8_t> FromHex(std::string_view text) {
  std::vector<std::uint8_t> bytes;
  if (!sim::FromHex(text, bytes)) throw std::invalid_argument("no hexadecimal bytes: " + std::string(text));
  return bytes;
}

}  // namespace vlt::test
