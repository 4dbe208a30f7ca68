// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/live.h"

#include "live/condition_tab.h"
#include "live/form12.h"
#include "live/form8.h"
#include "live/form9.h"
#include "live/frm_wait.h"
#include "live/wave_tab.h"
#include "state/register_window.h"

namespace vlt {

void RegisterLiveWindows(App& app) {
  RegisterWindow<Form8>(app, "Form8");
  RegisterWindow<Form9>(app, "Form9");
  RegisterWindow<Form12>(app, "Form12");
  RegisterWindow<frmWait>(app, "frmWait");
  RegisterPart<ConditionTab>(app, "Form11");
  RegisterPart<WaveTab>(app, "Form11");
}

}  // namespace vlt
