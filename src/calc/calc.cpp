// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/calc.h"

#include <memory>

#include "calc/frm_calc.h"

namespace vlt {

void RegisterCalcWindows(App& app) {
  app.windows.Register("frmCalc", [&app] { return std::make_unique<frmCalc>(app); });
}

}  // namespace vlt
