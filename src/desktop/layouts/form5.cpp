// SPDX-License-Identifier: GPL-3.0-or-later
// Display: the meter's two display rows and its backlight.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Columns(),
    Column(),
    Group("FrameDisplay1"),
    Row("lblChannel1", "CHCombo1"),
    Row("Selection1", "Selection1Combo"),
    Row("Flow_Unit1", "Flow_Unit1Combo"),
    End(),
    Group("FrameDisplay2"),
    Row("lblChannel2", "CHCombo2"),
    Row("Selection2", "Selection2Combo"),
    Row("Flow_Unit2", "Flow_Unit2Combo"),
    End(),
    Column(),
    Box(),
    Row("LCD_Check", "optLCD(0)"),
    Row("", "optLCD(1)"),
    Row("lblLCD_Time", "cmbLCD_Time", "lblTimeUnit"),
    End(),
    End(),
    Space(),
    Strip("chkCheck", ">", "ReadParameter", "SetParameter", "SaveParameter"),
};

}  // namespace

constinit const WindowLayout kForm5Layout{"Form5", WindowStyle::kPage, kItems};

}  // namespace vlt
