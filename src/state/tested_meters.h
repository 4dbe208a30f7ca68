// SPDX-License-Identifier: GPL-3.0-or-later
// Meters in their test state: a check holds their outputs or the test mode simulates their input, so that a
// plant behind them gets values that nobody has measured. The main window tells it until the state has ended.
#pragma once

#include <string>

#include "state/app.h"

namespace vlt {

// The meter of the port and station in force is in its test state, or may be: a write that was not answered
// can have reached it.
void MeterIsInTest(App& app);
// It has confirmed the end.
void MeterTestHasEnded(App& app);

bool IsAnyMeterInTest(const App& app);
// "COM1", or with the station on a line of several "COM1-02, COM1-05".
std::string MetersInTestText(const App& app);

}  // namespace vlt
