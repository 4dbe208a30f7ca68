// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/calc.h"

#include "calc/frm_calc.h"
#include "state/register_window.h"

namespace vlt {

void RegisterCalcWindows(App& app) { RegisterWindow<frmCalc>(app, "frmCalc"); }

}  // namespace vlt
