// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the main window that notices, while nothing runs, that the port went away, and tells when its
// adapter is back. It asks no meter; the next operation opens the port.
#pragma once

#include "link/port_return.h"
#include "state/app.h"

namespace vlt {

class PortWatch : public FormPart {
 public:
  PortWatch(App& app, Form& frame);

  // Looks once a second while a port is open or away, and not otherwise.
  void Follow();
  void tmrPort_Timer();

  Timer tmrPort;

 private:
  bool IsAwaited() const;
  void TellLoss();
  void TellSight(const Sighting& found);
  Sighting Seen();

  App& app_;
  bool away_ = false;  // known here
  Sight shown_ = Sight::kAway;
};

}  // namespace vlt
