// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/port_return.h"

#include <algorithm>
#include <optional>

#include "link/port.h"
#include "platform/port_settings.h"
#include "resources/string_table.h"
#include "resources/text_ids_heal.h"

namespace vlt {
namespace {

// Nothing tells the two apart but their names.
bool IsAlike(const PortInfo& a, const PortInfo& b) {
  return a.serial_number == b.serial_number && a.product == b.product && a.maker == b.maker;
}

// The machine's ports by the adapter that is looked for.
struct Alike {
  int count = 0;
  const PortInfo* last = nullptr;
};

Alike AlikeAmong(const PortInfo& adapter, std::span<const PortInfo> present) {
  Alike alike;
  for (const PortInfo& port : present) {
    if (!IsAlike(port, adapter)) continue;
    ++alike.count;
    alike.last = &port;
  }
  return alike;
}

bool HasDevice(std::span<const PortInfo> present, const std::string& device) {
  return std::ranges::any_of(present, [&](const PortInfo& port) { return port.device == device; });
}

// A COM number may stand for a link to the device.
bool LeadsTo(App& app, const std::string& name, const std::string& device) {
  return name == device || app.platform.files.Target(name) == device;
}

// The COM number of the lost port stands for where its adapter was found, or for what the settings say.
void Follow(App& app, const Sighting& found) {
  const int port = app.state.Lost.port;
  app.state.MovedPorts.erase(port);
  if (found.sight != Sight::kThere) return;
  if (!LeadsTo(app, app.platform.port.DeviceBehind(port), found.device)) {
    app.state.MovedPorts[port] = found.device;
  }
}

// The machine's ports were looked at within the last second.
bool HasLooked(App& app) {
  const std::optional<std::int64_t>& looked = app.state.Lost.looked_ms;
  return looked && app.platform.clock.NowMs() - *looked < kPortLookMs;
}

void CloseQuietly(App& app) {
  try {
    app.platform.port.Close();
  } catch (const PortFault&) {
    // It is gone already.
  }
}

// What the machine lists behind the device that was opened.
void NoteAdapter(App& app) {
  LostPort& lost = app.state.Lost;
  const std::vector<PortInfo> present = app.platform.process.Ports();
  for (const PortInfo& info : present) {
    if (LeadsTo(app, lost.device, info.device)) lost.adapter = info;
  }
  lost.twins = !lost.adapter.device.empty() && AlikeAmong(lost.adapter, present).count > 1;
}

}  // namespace

Sighting FindAdapter(const LostPort& lost, std::span<const PortInfo> present) {
  // Where a device without an entry stood there is one of another kind now.
  if (lost.adapter.device.empty()) {
    return {HasDevice(present, lost.device) ? Sight::kUnsure : Sight::kUnlisted};
  }
  const Alike alike = AlikeAmong(lost.adapter, present);
  if (alike.count == 0) return {Sight::kAway};
  if (alike.count > 1 || lost.twins) return {Sight::kUnsure};
  const bool numbered = !lost.adapter.serial_number.empty();
  if (!numbered && alike.last->device != lost.adapter.device) return {Sight::kUnsure};
  return {Sight::kThere, alike.last->device};
}

void NoteOpened(App& app, int port) {
  LostPort& lost = app.state.Lost;
  const std::string device = app.platform.port.DeviceBehind(port);
  // A search opens one port again and again.
  if (!lost.away && lost.port == port && lost.device == device && HasLooked(app)) return;
  lost = {.port = port, .device = device, .looked_ms = app.platform.clock.NowMs()};
  // Behind the simulated meter there is none to be listed.
  if (!IsSimulator(device)) NoteAdapter(app);
}

void NoteLoss(App& app) {
  LostPort& lost = app.state.Lost;
  if (lost.port == 0 || lost.away) return;
  lost.away = true;
  lost.since = app.platform.clock.Now();
  lost.since_ms = app.platform.clock.NowMs();
  lost.looked_ms.reset();
}

bool IsPortLost(App& app) {
  if (app.state.Lost.away) return true;
  if (!app.state.PortIsOpen || app.state.OpenedPort != app.state.Lost.port) return false;
  try {
    // A port that has closed itself, or that tells now.
    if (app.platform.port.IsOpen()) {
      app.platform.port.BytesIn();
      return false;
    }
  } catch (const PortFault&) {
    CloseQuietly(app);
  }
  app.state.PortIsOpen = false;
  NoteLoss(app);
  return true;
}

Sighting LookForPort(App& app) {
  LostPort& lost = app.state.Lost;
  lost.looked_ms = app.platform.clock.NowMs();
  const std::vector<PortInfo> present = app.platform.process.Ports();
  if (!lost.adapter.device.empty() && AlikeAmong(lost.adapter, present).count > 1) lost.twins = true;
  return FindAdapter(lost, present);
}

std::optional<Sighting> LookForPortInTurn(App& app) {
  if (HasLooked(app)) return std::nullopt;
  return LookForPort(app);
}

void FollowAdapter(App& app, int port) {
  const LostPort& lost = app.state.Lost;
  if (lost.away && lost.port == port) Follow(app, LookForPort(app));
}

bool OpenFound(App& app, const Sighting& found) {
  if (found.sight != Sight::kThere && found.sight != Sight::kUnlisted) return false;
  Follow(app, found);
  return OpenPortAsItStands(app, app.state.Lost.port, app.state.OpenedSettings);
}

void CloseReturned(App& app, const LostPort& before) {
  CloseQuietly(app);
  app.state.PortIsOpen = false;
  LostPort& lost = app.state.Lost;
  lost.away = true;
  lost.twins = lost.twins || before.twins;
  lost.since = before.since;
  lost.since_ms = before.since_ms;
  lost.looked_ms = app.platform.clock.NowMs();
}

std::string LostPortName(const App& app) {
  const LostPort& lost = app.state.Lost;
  const std::string number = "COM" + std::to_string(lost.port);
  return lost.device.empty() ? number : number + " (" + lost.device + ")";
}

std::string LossText(const App& app, Sight sight) {
  const int id = sight == Sight::kUnsure ? text::kPortUnsure : text::kPortLost;
  return FormatText(app.Text(id), {LostPortName(app)});
}

}  // namespace vlt
