// SPDX-License-Identifier: GPL-3.0-or-later
// The port that was opened last as the machine knew it then, and whether it went away since: what is needed
// to know it again when it comes back.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/clock.h"
#include "platform/process.h"

namespace vlt {

struct LostPort {
  int port = 0;             // n of COMn; 0: none was opened yet
  std::string device = {};  // behind it
  // Its adapter as the machine listed it. Without a device in it the machine has listed none: a terminal
  // without hardware, a simulated meter.
  PortInfo adapter = {};
  // Another adapter was seen that nothing tells apart from this one.
  bool twins = false;
  // It went away while it was open, and was not opened again.
  bool away = false;
  LocalTime since = {};                        // when that was noticed, on the wall
  std::int64_t since_ms = 0;                   // and by the platform's clock
  std::optional<std::int64_t> looked_ms = {};  // when the list of ports was looked at last
};

}  // namespace vlt
