// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/learn.h"

#include "link/modbus.h"
#include "link/port.h"

namespace vlt {

MeterPlace MeterInUse(const App& app) {
  return {.port = app.state.PortIsOpen ? app.state.OpenedPort : PortNumber(app),
          .station = StationNumber(app)};
}

bool IsSureReply(const App& app, std::span<const std::uint8_t> reply) {
  return app.state.LastErrorText.empty() && !reply.empty() && reply[0] == StationNumber(app);
}

void Learn(App& app, FactPlace fact, int value, bool sure) {
  app.state.Learn(fact, value, app.platform.clock.NowMs(), MeterInUse(app));
  if (!sure) app.state.Forget(fact);
}

}  // namespace vlt
