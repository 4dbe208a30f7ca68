// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/compare.h"

#include "compare/compare_files.h"
#include "compare/compare_line.h"
#include "compare/compare_menu.h"
#include "compare/compare_rows.h"
#include "compare/frm_compare.h"
#include "state/register_window.h"

namespace vlt {

void RegisterCompareWindows(App& app) {
  RegisterWindow<frmCompare>(app, "frmCompare");
  RegisterPart<CompareRows, frmCompare>(app, "frmCompare");
  RegisterPart<CompareLine, frmCompare>(app, "frmCompare");
  RegisterPart<CompareFiles, frmCompare>(app, "frmCompare");
  RegisterPart<CompareMenu>(app, "MDIForm1");
}

}  // namespace vlt
