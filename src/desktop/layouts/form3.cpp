// SPDX-License-Identifier: GPL-3.0-or-later
// Total: the totalizer of a channel and the heat totalizer.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Strip("lblChannel", "ChannelSelect(0)", "ChannelSelect(1)", "ChannelSelect(2)", ">"),
    Columns(),
    Column(),
    Box(),
    Row("Mode", "MODECombo"),
    Row("UNIT_SYSTEM", "UNIT_SYSTEMCombo"),
    Row("ConstantCheck", "ConstantCheckText", "Label2(10)"),
    Row("F_TOTAL_PRESET", "F_TOTAL_PRESETText", "Label2(1)"),
    Row("PULSE_WIDTH_1", "PULSE_WIDTH_1Combo", "Label2(0)"),
    End(),
    Column(),
    Box(),
    Row("OUTPUT_BURNOUT", "OUTPUT_BURNOUTCombo"),
    Row("BURNOUT_TIMER", "BURNOUT_TIMERText", "Label3(0)"),
    End(),
    Box(),
    Row("H_TOTAL_ConstantCheck", "H_TOTAL_ConstantText", "HSekisanlbl(0)"),
    Row("C_TOTAL_PRESETCheck", "C_TOTAL_PRESETText", "HSekisanlbl(1)"),
    End(),
    End(),
    Space(),
    Strip("chkCheck", ">", "ReadParameter", "SetParameter", "SaveParameter"),
};

}  // namespace

constinit const WindowLayout kForm3Layout{"Form3", WindowStyle::kPage, kItems};

}  // namespace vlt
