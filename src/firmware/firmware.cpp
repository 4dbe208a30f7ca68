// SPDX-License-Identifier: GPL-3.0-or-later
#include "firmware/firmware.h"

#include "firmware/frm_maint_comm.h"
#include "firmware/frm_maint_main.h"
#include "firmware/frm_maint_wait.h"

namespace vlt {
namespace {

template <class T>
void RegisterWindow(App& app, const char* name) {
  app.windows.Register(name, [&app] { return std::make_unique<T>(app); });
}

}  // namespace

void RegisterFirmwareWindows(App& app) {
  RegisterWindow<frmMaint_MAIN>(app, "frmMaint_MAIN");
  RegisterWindow<frmMaint_Wait>(app, "frmMaint_Wait");
  RegisterWindow<frmMaint_COMM>(app, "frmMaint_COMM");
}

}  // namespace vlt
