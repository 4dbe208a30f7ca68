// SPDX-License-Identifier: GPL-3.0-or-later
// What an open descriptor of a serial device tells beside what Qt's port tells, and why a device can't be
// opened. On systems without POSIX every question gets its harmless answer.
#pragma once

#include <string>

#include "platform/serial_port.h"

namespace vlt {

// Why opening `device` was refused: kMissing when it is no serial device at all, kNoPermission when this user
// may not read and write it, else kBusy.
PortFaultCode WhyRefused(const std::string& device);

// The group of users that may read and write `device`, its number where it has no name. Empty when the device
// is not open to a group, or to the administrator's only.
std::string GroupOf(const std::string& device);

// True for a pseudo-terminal. It takes any parity and reports that it took none.
bool IsPseudoTerminal(int descriptor);

// Claims the device for this process under whatever name it was opened. The system's own exclusive mode
// binds names or lets the administrator pass. False when another process has the claim.
bool ClaimDevice(int descriptor);

// Bytes that the driver has taken from us and not yet sent.
int DriverBytesOut(int descriptor);

// Asks the driver to hand bytes over without bundling them; an adapter on USB keeps them for up to 16 ms
// otherwise. The driver remembers it until the device is unplugged. Ignored where there is no such thing.
void AskLowLatency(int descriptor);

// True when the other end of the device is gone.
bool IsHungUp(int descriptor);

}  // namespace vlt
