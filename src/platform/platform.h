// SPDX-License-Identifier: GPL-3.0-or-later
// Everything the logic takes from the machine, in one place. The desktop fills it with Qt, the tests with
// virtual time and memory.
#pragma once

#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/event_queue.h"
#include "platform/file_system.h"
#include "platform/firmware_port.h"
#include "platform/printer.h"
#include "platform/process.h"
#include "platform/serial_port.h"

namespace vlt {

struct Platform {
  Clock& clock;
  EventQueue& events;
  SerialPort& port;
  Dialogs& dialogs;
  FileSystem& files;
  Process& process;
  FirmwarePort& firmware;
  Printer* printer = nullptr;  // null: this machine cannot print
};

}  // namespace vlt
