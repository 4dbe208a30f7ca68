// SPDX-License-Identifier: GPL-3.0-or-later
// The machine by Qt, whole: everything of Platform but the dialogs, which the program with windows and the
// companion fill each in its own way. Needs a QCoreApplication that outlives it.
#pragma once

#include <string>
#include <utility>

#include "host/port_switch.h"
#include "host/qt_clock.h"
#include "host/qt_event_queue.h"
#include "host/qt_process.h"
#include "host/std_file_system.h"
#include "platform/platform.h"
#include "platform/serial_firmware_port.h"

namespace vlt {

class Host {
 public:
  // `folder` is the program folder, empty for that of the executable.
  Host(const std::string& folder, DeviceOf device_of)
      : events(clock),
        process(folder),
        port(clock, events, std::move(device_of)),
        firmware(clock, events, port) {}

  Platform With(Dialogs& dialogs) { return {clock, events, port, dialogs, files, process, firmware}; }

  QtClock clock;
  QtEventQueue events;
  StdFileSystem files;
  QtProcess process;
  PortSwitch port;
  // On the same port, so that the boot loader of a simulated meter is the one of the meter on that line.
  SerialFirmwarePort firmware;
};

}  // namespace vlt
