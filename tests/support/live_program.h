// SPDX-License-Identifier: GPL-3.0-or-later
// The program with its live windows and no main window, on the time, the port and the files of a long run.
#pragma once

#include "live/live.h"
#include "platform/serial_firmware_port.h"
#include "state/app.h"
#include "support/fake_process.h"
#include "support/scripted_dialogs.h"
#include "support/virtual_time.h"

namespace vlt::test {

struct LiveProgram {
  LiveProgram(VirtualTime& time, SerialPort& port, FileSystem& files)
      : firmware(time, time, port),
        machine{time, time, port, dialogs, files, process, firmware},
        app(machine) {
    app.state.LangOffset = 5000;
    app.state.PortNo = "1";
    app.state.AppRunning = true;
    RegisterLiveWindows(app);
  }

  ScriptedDialogs dialogs;
  FakeProcess process;
  SerialFirmwarePort firmware;
  Platform machine;
  App app;
};

}  // namespace vlt::test
