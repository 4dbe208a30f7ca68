// SPDX-License-Identifier: GPL-3.0-or-later
// The windows of the frame: main window, splash windows, choice, about, wait.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kMainWindow[] = {
    Columns(),
    Column(),
    Navigation("Command1", "Command2", "Command3", "Command5", "Command4", "Command6", "Command7", "Command9",
               "Command10", "Command11", "Command14", ">", "cmdLink", "Command13"),
    Column(),
    Strip("lblTestState"),
    Strip("lblFoundRuns", ">", "cmdFoundRuns", "cmdFoundRunsSeen"),
    PageArea(),
    EmptyPage(),
    Columns(),
    Column(),
    Strip("*lblMeter", ">"),
    Strip("lblState", ">"),
    Box(),
    Repeat(0, 6, Row("lblFact(#)", "valFact(#)")),
    Strip("cmdReadMeter", ">"),
    End(),
    Strip("*lblFirstSteps", ">"),
    Strip("lblSteps", ">"),
    End(),
    End(),
    End(),
    Strip("StatusBar1"),
};

constexpr LayoutItem kSplash[] = {
    Backdrop("Image1"),
    Strip("Image2", "*lblProductName", ">", "Image3", "Image4", "lblVersion"),
    Strip("lblWarning"),
};

constexpr LayoutItem kSplashOfThree[] = {
    Backdrop("Image1"),
    Strip("Image2", "*lblProductName", ">", "Image3", "lblVersion"),
    Strip("lblWarning"),
};

constexpr LayoutItem kChoice[] = {
    Strip("cmdDown", "cmdLoader"),
};

constexpr LayoutItem kAbout[] = {
    Strip("*lblTitle"),
    Strip("lblVersion"),
    Strip(">", "cmdOK"),
};

constexpr LayoutItem kWait[] = {
    Strip("lblMssg"),
    Strip("pbWait"),
    Strip(">", "cmdCan"),
};

constexpr int kRunColumns[] = {4200, 1400, 2300, 2300, 3000};
constexpr int kRunsWidth = 15900;
constexpr int kRunsHeight = 3600;

constexpr LayoutItem kFoundRuns[] = {
    Strip("lblExplained"),
    Wide("grdRuns", {kRunColumns, kRunsWidth, kRunsHeight}),
    Strip("lblPath", ">"),
    Strip(">", "cmdSeen", "cmdClose"),
};

constexpr int kPortColumns[] = {1050, 2550, 3000};
constexpr int kPortsWidth = 7800;
constexpr int kPortsHeight = 3600;
constexpr int kFoundColumns[] = {1500, 1300, 1500, 1500, 2000};
constexpr int kFoundHeight = 1800;

constexpr LayoutItem kSerialSettings[] = {
    Columns(),
    Side(),
    Box(),
    Row("lblPortNo", "PortNo"),
    Row("lblTransMethod", "TransMethod"),
    Row("lblStaitionNo", "StaitionNo", "StaitionNoUpDown"),
    Row("lblSpeed", "Speed"),
    Row("lblParity", "Parity"),
    Row("lblStopBit", "StopBit"),
    Row("lblRetryNo", "RetryNo"),
    Strip("chkTiming"),
    End(),
    Column(),
    Wide("grdPorts", {kPortColumns, kPortsWidth, kPortsHeight}),
    Row("lblDevices", "cmbDevices", "cmdAssign"),
    End(),
    Box(),
    Strip("cmdSearch", "cmdStop", "pbSearch"),
    Strip("stbSearch"),
    Wide("grdFound", {kFoundColumns, Sum(kFoundColumns), kFoundHeight}),
    End(),
    Strip(">", "Command1", "Command2"),
};

}  // namespace

constinit const WindowLayout kMDIForm1Layout{"MDIForm1", WindowStyle::kFrame, kMainWindow};
constinit const WindowLayout kSplashLayout{"frmSplash", WindowStyle::kSplash, kSplash};
constinit const WindowLayout kSplashT305Layout{"frmSplash_T305", WindowStyle::kSplash, kSplashOfThree};
constinit const WindowLayout kSplashK410Layout{"frmSplash_K410", WindowStyle::kSplash, kSplashOfThree};
constinit const WindowLayout kFrmMssgLayout{"frmMssg", WindowStyle::kDialog, kChoice};
constinit const WindowLayout kFrmAboutLayout{"frmAbout", WindowStyle::kDialog, kAbout, "cmdOK", "cmdOK"};
constinit const WindowLayout kFrmFoundRunsLayout{"frmFoundRuns", WindowStyle::kDialog, kFoundRuns, "cmdClose",
                                                 "cmdClose"};
constinit const WindowLayout kFrmWaitLayout{"frmWait", WindowStyle::kDialog, kWait, "", "cmdCan"};
constinit const WindowLayout kFrmCSetLayout{"FrmCSet", WindowStyle::kDialog, kSerialSettings, "Command1",
                                            "Command2"};

}  // namespace vlt
