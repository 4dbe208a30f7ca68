// SPDX-License-Identifier: GPL-3.0-or-later
// The line: figures by station above, frames below.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Strip("lblSince", ">", "cmdReset", "cmdCSV"),
    Columns(),
    Column(),
    Group("fraStations"),
    Wide("grdStations"),
    End(),
    Side(),
    Group("fraOutcomes"),
    Wide("grdOutcomes"),
    End(),
    End(),
    Group("fraFrames"),
    Wide("grdFrames"),
    Strip("chkPause", "lblPaused", ">", "cmdSave", "cmdClose"),
    End(),
    Strip("stbLine"),
};

}  // namespace

constinit const WindowLayout kFrmLineLayout{"frmLine", WindowStyle::kTool, kItems, "", "cmdClose"};

}  // namespace vlt
