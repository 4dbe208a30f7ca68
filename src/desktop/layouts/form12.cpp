// SPDX-License-Identifier: GPL-3.0-or-later
// PV read: what is asked above, the stations below in two halves.
#include "desktop/layouts/layouts.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kHeads[] = {
    Narrow(Cells("", "", "lblHead1(0)", "", "lblHead2(0)", "", "lblHeadAnswered(0)", "lblHeadFailed(0)"),
           text::kCommunicationFailed),
    Narrow(Cells("", "", "lblHead1(1)", "", "lblHead2(1)", "", "lblHeadAnswered(1)", "lblHeadFailed(1)"),
           text::kCommunicationFailed),
};
constexpr LayoutItem kStation = Narrow(Cells("chkStationNo(#)", "lblStation(#)", "txtDisp1(#)", "lblUnit1(#)",
                                             "txtDisp2(#)", "lblUnit2(#)", "lblAnswered(#)", "lblFailed(#)"),
                                       text::kCommunicationFailed);

constexpr LayoutItem kItems[] = {
    Columns(),
    Column(),
    Group("fraSetting"),
    Row("", "lblChannel", "", "lblKind"),
    Row("lblDisplay1", "CH_Combo1", "", "cmbDisp1"),
    Row("lblDisplay2", "CH_Combo2", "", "cmbDisp2"),
    End(),
    Side(),
    Row("lblCycle", "txtCycle", "lblCycleUnit"),
    Strip("chkCheck"),
    Space(),
    Strip("cmdStart", "cmdStop", "cmdSaveCSV"),
    End(),
    Group("fraStation"),
    Columns(),
    Column(),
    kHeads[0],
    Repeat(0, 15, kStation),
    Column(),
    kHeads[1],
    Repeat(16, 30, kStation),
    End(),
    End(),
    Space(),
    Strip("StatusBar2"),
};

}  // namespace

constinit const WindowLayout kForm12Layout{"Form12", WindowStyle::kPage, kItems};

}  // namespace vlt
