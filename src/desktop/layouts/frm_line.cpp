// SPDX-License-Identifier: GPL-3.0-or-later
// The line: figures by station above, frames below.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Columns(),
    Column(),
    Strip("lblSince", ">"),
    Wide("grdStations"),
    Column(),
    Strip("lblOutcomes", ">"),
    Wide("grdOutcomes"),
    End(),
    Strip(">", "cmdReset", "cmdCSV"),
    Strip("lblFrames", ">"),
    Wide("grdFrames"),
    Strip("chkPause", "lblPaused", ">", "cmdSave", "cmdClose"),
    Strip("stbLine"),
};

}  // namespace

constinit const WindowLayout kFrmLineLayout{"frmLine", WindowStyle::kTool, kItems, "", "cmdClose"};

}  // namespace vlt
