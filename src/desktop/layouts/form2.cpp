// SPDX-License-Identifier: GPL-3.0-or-later
// Range: full scales, output, limits, damping and calibration of a channel.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Strip("lblChannel", "ChannelSelect(0)", "ChannelSelect(1)", "ChannelSelect(2)", ">"),
    Columns(),
    Column(),
    Box(),
    Row("chkKind", "cmbKind"),
    Row("UNIT_SYSTEM", "UNIT_SYSTEMCombo"),
    Row("TypeCheck", "TypeCheckCombo"),
    Row("FULL_SCALE1", "FULL_SCALE1Text", "Label2(7)"),
    Row("FULL_SCALE2", "FULL_SCALE2Text", "Label2(6)"),
    Row("HYSTERISIS", "HYSTERISISText", "Label2(0)"),
    End(),
    Box(),
    Row("CALORIE_FULL_SCALE1", "CALORIE_FULL_SCALE1Text", "HRangelbl(0)"),
    Row("CALORIE_FULL_SCALE2", "CALORIE_FULL_SCALE2Text", "HRangelbl(1)"),
    End(),
    Column(),
    Box(),
    Row("OUTPUT_BURNOUT", "OUTPUT_BURNOUTCombo"),
    Row("BURNOUT_TIMER", "BURNOUT_TIMERText", "Label3(0)"),
    Row("OUTPUT_LIMIT_Low", "OUTPUT_LIMIT_LowText", "Label2(1)"),
    Row("OUTPUT_LIMIT_High", "OUTPUT_LIMIT_HighText", "Label2(2)"),
    Row("RATE_LIMIT", "RATE_LIMITText", "Label2(8)"),
    Row("RATE_LIMIT_TIMER", "RATE_LIMIT_TIMERText", "Label3(1)"),
    Row("DAMPING", "DAMPINGText", "Label3(2)"),
    Row("LOW_FLOW_OUTPUT_CUT", "LOW_FLOW_OUTPUT_CUTText", "Label2(9)"),
    End(),
    Box(),
    Row("ZERO", "ZEROText", "Label2(12)"),
    Row("SPAN", "SPANText", "Label2(3)"),
    End(),
    End(),
    Space(),
    Strip("chkCheck", ">", "ReadParameter", "SetParameter", "SaveParameter"),
};

}  // namespace

constinit const WindowLayout kForm2Layout{"Form2", WindowStyle::kPage, kItems};

}  // namespace vlt
