// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/firmware.h"

#include "firmware/frm_maint_comm.h"
#include "firmware/frm_maint_main.h"
#include "firmware/frm_maint_wait.h"
#include "state/register_window.h"

namespace vlt {

void RegisterFirmwareWindows(App& app) {
  RegisterWindow<frmMaint_MAIN>(app, "frmMaint_MAIN");
  RegisterWindow<frmMaint_Wait>(app, "frmMaint_Wait");
  RegisterWindow<frmMaint_COMM>(app, "frmMaint_COMM");
}

}  // namespace vlt
