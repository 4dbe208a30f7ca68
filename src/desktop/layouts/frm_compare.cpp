// SPDX-License-Identifier: GPL-3.0-or-later
// Comparison: the two sides above, the list of rows, what is done with them, and the files that come of it.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr int kRowColumns[] = {4350, 2250, 1230, 2250, 1230, 1950, 2700};
constexpr int kRowsWidth = 17400;

constexpr LayoutItem kItems[] = {
    Columns(),
    Column(),
    Group("fraSide(0)"),
    Row("cmbSide(0)", "cmdSide(0)"),
    Strip("txtSide(0)"),
    Strip("lblIdentity(0)"),
    End(),
    Side(),
    Space(),
    Strip("cmdSwap"),
    Space(),
    Column(),
    Group("fraSide(1)"),
    Row("cmbSide(1)", "cmdSide(1)"),
    Strip("txtSide(1)"),
    Strip("lblIdentity(1)"),
    End(),
    End(),
    Strip("optFilter(0)", "optFilter(1)", "optFilter(2)", "optFilter(3)", "optFilter(4)", "optFilter(5)",
          ">"),
    Strip("lblCounts", ">", "lblChosen"),
    Wide("grdRows", {kRowColumns, kRowsWidth}),
    Strip("stbRow"),
    Strip("stbNote"),
    Strip("cmdTickDifferent", "cmdTickNone", ">", "cmdSend", "cmdRestore", "SaveParameter"),
    Strip("stbCompare"),
    Strip("pbWork", "cmdStop", "cmdSnapshot", "cmdSaveCsv", "cmdSavePdf", "cmdPrint", "cmdClose"),
};

}  // namespace

constinit const WindowLayout kFrmCompareLayout{"frmCompare", WindowStyle::kWorkshop, kItems, "", "cmdClose"};

}  // namespace vlt
