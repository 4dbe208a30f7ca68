// SPDX-License-Identifier: GPL-3.0-or-later
// The firmware tool: its window, its wait window, its choice of the port.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

// A plan, a line or two for each module, an instruction, the journal.
constexpr int kNoteLines = 12;

constexpr LayoutItem kMain[] = {
    Tabs("SSTab1"),
    Tab(),
    Strip("lblFolder"),
    Strip("txtDown", "cmdFolder"),
    Box(),
    Row("chkModule(0)", "Label1(0)", "txtDL_Result(0)", "lblImage(0)"),
    Row("chkModule(1)", "Label1(1)", "txtDL_Result(1)", "lblImage(1)"),
    Row("chkModule(2)", "Label1(2)", "txtDL_Result(2)", "lblImage(2)"),
    Row("chkModule(3)", "Label1(3)", "txtDL_Result(3)", "lblImage(3)"),
    End(),
    Space(),
    Tab(),
    Strip("optSEL_UP(0)", "txtVer"),
    Strip("optSEL_UP(1)"),
    Strip("lblFolder_up"),
    Strip("txtUp", "cmdUP"),
    Box(),
    Row("chkModule_up(0)", "Label2(0)", "txtResult(0)", "lblImage_up(0)"),
    Row("chkModule_up(1)", "Label2(1)", "txtResult(1)", "lblImage_up(1)"),
    Row("chkModule_up(2)", "Label2(2)", "txtResult(2)", "lblImage_up(2)"),
    Row("chkModule_up(3)", "Label2(3)", "txtResult(3)", "lblImage_up(3)"),
    End(),
    Space(),
    End(),
    Strip("lblBoot", "lblAfterNg"),
    Text("lblNote", kNoteLines),
    Strip(">", "cmdEXE", "cmdQuit"),
    Strip("StatusBar1"),
};

constexpr LayoutItem kWait[] = {
    Strip("*lblTitle"), Strip("lblMssg"), Strip("pbWait"),
    Strip("lblTime"),   Strip("lblStop"), Strip(">", "cmdCan"),
};

constexpr LayoutItem kPort[] = {
    Row("lblComm", "cmbComm"),
    Strip(">", "cmdOK", "cmdCan"),
};

}  // namespace

constinit const WindowLayout kFrmMaintMainLayout{"frmMaint_MAIN", WindowStyle::kDialog, kMain};
// It comes up by itself: an enter key that was meant for Execute must not cancel the run.
constinit const WindowLayout kFrmMaintWaitLayout{
    "frmMaint_Wait", WindowStyle::kDialog, kWait, "", "cmdCan", true};
// The enter key belongs to the open list here, so it presses no button.
constinit const WindowLayout kFrmMaintCommLayout{"frmMaint_COMM", WindowStyle::kDialog, kPort, "", "cmdCan"};

}  // namespace vlt
