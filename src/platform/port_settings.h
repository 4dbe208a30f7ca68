// SPDX-License-Identifier: GPL-3.0-or-later
// The settings text of a serial port, as every filling of SerialPort reads it.
#pragma once

#include <optional>
#include <string_view>

namespace vlt {

enum class PortParity { kNone, kEven, kOdd };

struct PortSettings {
  int speed = 0;  // bit/s, above 0
  PortParity parity = PortParity::kNone;
  int data_bits = 8;  // 5 to 8
  int stop_bits = 1;  // 1 or 2
};

// Reads "9600,O,8,1": speed, parity letter (N, E, O), data bits, stop bits, no blanks and nothing behind.
// Nothing for any other text; a speed above 4,000,000, which no adapter has, is one.
std::optional<PortSettings> ParsePortSettings(std::string_view text);

// What a COM number stands for when it is the meter simulated in process; its scenario may stand behind the
// word and a blank.
inline constexpr std::string_view kSimulatorWord = "simulator";
bool IsSimulator(std::string_view device);

}  // namespace vlt
