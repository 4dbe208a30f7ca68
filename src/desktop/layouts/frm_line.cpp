// SPDX-License-Identifier: GPL-3.0-or-later
// The line: figures by station above, frames below.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr int kStationColumns[] = {975, 1200, 1200, 1200, 1575, 1425, 1200, 1575};
constexpr int kOutcomeColumns[] = {2850, 1200, 1200};
constexpr int kFrameColumns[] = {1500, 450, 900, 5100, 7600};
constexpr int kFiguresHeight = 3390;  // a head and nine outcomes
constexpr int kFramesHeight = 4200;

constexpr LayoutItem kItems[] = {
    Columns(),
    Column(),
    Strip("lblSince", ">"),
    Wide("grdStations", {kStationColumns, Sum(kStationColumns), kFiguresHeight}),
    Column(),
    Strip("lblOutcomes", ">"),
    Wide("grdOutcomes", {kOutcomeColumns, Sum(kOutcomeColumns), kFiguresHeight}),
    End(),
    Strip(">", "cmdReset", "cmdCSV"),
    Strip("lblFrames", ">"),
    Wide("grdFrames", {kFrameColumns, Sum(kFrameColumns), kFramesHeight}),
    Strip("chkPause", "lblPaused", ">", "cmdSave", "cmdClose"),
    Strip("stbLine"),
};

}  // namespace

constinit const WindowLayout kFrmLineLayout{"frmLine", WindowStyle::kTool, kItems, "", "cmdClose"};

}  // namespace vlt
