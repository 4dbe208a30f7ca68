// SPDX-License-Identifier: GPL-3.0-or-later
// Opening and closing the serial port of the main window (objMSComm). It is opened by the first operation
// that needs it and stays open between pages; only the settings window and the end of the program close it.
#pragma once

#include <string>

#include "state/app.h"

namespace vlt {

// Opens COM`port` with `settings` ("9600,O,8,1"); `result` is true when the port is open afterwards. A port
// that is open already stays as it is, with its old settings. On failure PortFaultReason says why in the
// language in force; on success it is empty.
void OpenPort(App& app, int port, const std::string& settings, bool& result);
// The same with PortNo and CommSettings.
bool OpenPort(App& app);
// As the first one, for who has just looked where a lost adapter is now.
bool OpenPortAsItStands(App& app, int port, const std::string& settings);

// The same; on failure a box says "The error occurred at the time of communication", the pointer is normal
// again, and the status line has that text and the reason.
bool OpenPortOrTell(App& app, MessageIcon icon);

// Why a port could not be opened or was lost, in the language in force. `port` is the n of COMn.
std::string PortFaultText(const App& app, const PortFault& fault, int port, const std::string& settings);

// Closes the port and stands still for 200 ms, so that an adapter comes to rest before it is opened again.
// `result` is true when the port closed without fault or was not open.
void ClosePort(App& app, bool& result);

// Throws received bytes away; `result` is false when the port raised a fault.
void ClearInBuff(App& app, bool& result);

// Milliseconds of silence between two frames at the current Speed: the time of 48 bits, rounded to the
// nearest integer (halves to even), and 1 more when that was not exact. A Speed that is no number counts as
// 9600.
int CalcCharGap(const App& app);

// Stops the one-shot timer of the main window.
void StopTimer(App& app);

// PortNo as a number; 0, which no port has, for a text that is none.
int PortNumber(const App& app);

// "The error occurred at the time of communication", and behind a blank the reason when the port could not be
// opened: what the status line shows. The message box shows the first part alone.
std::string CommunicationErrorText(const App& app);

}  // namespace vlt
