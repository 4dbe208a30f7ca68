// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/live.h"

#include <memory>

#include "live/condition_tab.h"
#include "live/form12.h"
#include "live/form8.h"
#include "live/form9.h"
#include "live/frm_wait.h"
#include "live/wave_tab.h"

namespace vlt {

void RegisterLiveWindows(App& app) {
  app.windows.Register("Form8", [&app] { return std::make_unique<Form8>(app); });
  app.windows.Register("Form12", [&app] { return std::make_unique<Form12>(app); });
  app.windows.Register("frmWait", [&app] { return std::make_unique<frmWait>(app); });
  app.windows.Register("Form9", [&app] { return std::make_unique<Form9>(app); });
  app.windows.RegisterPart("Form11",
                           [&app](Form& whole) { return std::make_unique<ConditionTab>(app, whole); });
  app.windows.RegisterPart("Form11", [&app](Form& whole) { return std::make_unique<WaveTab>(app, whole); });
}

}  // namespace vlt
