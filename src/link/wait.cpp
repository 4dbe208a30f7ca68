// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/wait.h"

namespace vlt {

void WaitMs(App& app, int ms) {
  const std::int64_t start = app.platform.clock.NowMs();
  do {
    app.platform.events.GiveWay(start + ms + 1);
  } while (app.platform.clock.NowMs() - start <= ms);
}

void RestMs(App& app, int ms) {
  if (app.state.EventTiming) {
    app.platform.events.GiveWay(app.platform.clock.NowMs());
  } else {
    WaitMs(app, ms);
  }
}

}  // namespace vlt
