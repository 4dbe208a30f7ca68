// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/port_watch.h"

#include "link/port.h"
#include "resources/string_table.h"
#include "resources/text_ids_heal.h"

namespace vlt {
PortWatch::PortWatch(App& app, Form& frame) : FormPart(frame), tmrPort(frame, "tmrPort"), app_(app) {
  tmrPort.on_timer = [this] { tmrPort_Timer(); };
  tmrPort.SetInterval(kPortLookMs);
}

void PortWatch::Follow() {
  const bool away = IsAwaited();
  if (!away) away_ = false;
  tmrPort.SetRunning(app_.state.PortIsOpen || away);
}

// Nobody waits for a port that the settings do not name any more.
bool PortWatch::IsAwaited() const { return app_.state.Lost.away && app_.state.Lost.port == PortNumber(app_); }

// An operation or a run that has the line tells of a loss by itself.
void PortWatch::tmrPort_Timer() {
  if (!Whole().Visible() || app_.state.UiLocked || app_.state.PvRunning != 0) return;
  const bool told = app_.state.Lost.away;
  if (!IsPortLost(app_) || !IsAwaited()) {
    Follow();
    return;
  }
  if (!away_) {
    away_ = true;
    shown_ = Sight::kAway;
    // What an operation has said of the loss stays in the status line.
    if (!told) TellLoss();
  }
  TellSight(Seen());
}

void PortWatch::TellLoss() {
  app_.Status(LossText(app_, Sight::kAway));
  if (app_.frame != nullptr) app_.frame->ShowFacts();
}

// A device that the machine does not list is there when its file is.
Sighting PortWatch::Seen() {
  Sighting found = LookForPort(app_);
  if (found.sight == Sight::kUnlisted) {
    const std::string& device = app_.state.Lost.device;
    found.sight = app_.platform.files.Exists(device) ? Sight::kThere : Sight::kAway;
    found.device = device;
  }
  return found;
}

void PortWatch::TellSight(const Sighting& found) {
  if (found.sight == shown_) return;
  shown_ = found.sight;
  if (shown_ == Sight::kThere) {
    app_.Status(FormatText(app_.Text(text::kPortSeen), {LostPortName(app_), found.device}));
  } else {
    app_.Status(LossText(app_, shown_));
  }
}

}  // namespace vlt
