// SPDX-License-Identifier: GPL-3.0-or-later
// A port that went away and comes back: its loss is noticed without an exchange, its adapter is known again
// by what it tells of itself, also under another device name, and what cannot be told apart is never opened
// in its place.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "state/app.h"

namespace vlt {

// Between two looks at whether a port is there, or at the machine's list of ports.
inline constexpr int kPortLookMs = 1000;

// What is found of an adapter among those that the machine has.
enum class Sight {
  kAway,      // it is not there
  kThere,     // it is
  kUnsure,    // one is there that may be it, and nothing tells
  kUnlisted,  // the machine does not list devices of its kind: only opening tells
};

struct Sighting {
  Sight sight = Sight::kAway;
  std::string device = {};  // with kThere
};

// The lost adapter among those present. One with a serial number is the one that tells the same number,
// product and maker, by whatever name it is there now. One without is only taken for the same when it is
// alone of its kind, was so ever since it was opened, and has its old name.
Sighting FindAdapter(const LostPort& lost, std::span<const PortInfo> present);

// COM `port` was opened: what the machine tells of its adapter is kept, and that it is not away.
void NoteOpened(App& app, int port);
// The port that was opened last went away. Once: nothing when that is known already.
void NoteLoss(App& app);

// Looks without an exchange whether the port that was opened is still there. True when it is away, since now
// or longer. Somebody has closed it: false.
bool IsPortLost(App& app);

// Where the lost adapter is now; looks at the machine's ports.
Sighting LookForPort(App& app);
// The same, at most once a second: nothing when it is too early.
std::optional<Sighting> LookForPortInTurn(App& app);

// Before COM `port` is opened: when it is the lost one and its adapter is there under another name, the COM
// number stands for that device from now on (SharedState::MovedPorts), else for the one of the settings.
void FollowAdapter(App& app, int port);

// Opens the lost port when its adapter was found for certain. While an adapter cannot be told apart nothing
// is opened.
bool OpenFound(App& app, const Sighting& found);
// Closes it again, since the meter behind it is not the one that it should be: it is away as it was in
// `before`.
void CloseReturned(App& app, const LostPort& before);

// "COM3 (/dev/ttyUSB0)" of the port that was opened last.
std::string LostPortName(const App& app);
// "COM3 (/dev/ttyUSB0) was lost, waiting for it", and with kUnsure why it is not opened.
std::string LossText(const App& app, Sight sight);

}  // namespace vlt
