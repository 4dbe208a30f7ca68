// SPDX-License-Identifier: GPL-3.0-or-later
// Status: the digital outputs.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Strip("DigitalOutputSelect(0)", "DigitalOutputSelect(1)", "DigitalOutputSelect(2)",
          "DigitalOutputSelect(3)", ">"),
    Columns(),
    Column(),
    Box(),
    Row("SELECT_Check"),
    Row("lblChannel", "CH_Combo"),
    Row("lblOutput", "OUTPUT_DO_1Combo"),
    Row("LabelAlarm", "DO1_AlarmCombo"),
    End(),
    Box(),
    Row("MODE_DO_1", "MODE_DO_1Combo"),
    End(),
    Column(),
    Box(),
    Row("LabelRyuryoSW"),
    Row("optDO1FlowSWHigh", "DO1_RyuryoText(0)", "LabelRyuryoUnit(0)"),
    Row("optDO1FlowSWLow", "DO1_RyuryoText(1)", "LabelRyuryoUnit(1)"),
    Row("LabelSekisanSW", "DO1_SekisanText", "LabelSekisanUnit"),
    End(),
    Box(),
    Row("LabelHRyuryoSW"),
    Row("optFLOW_SWITCH_T_HIGH", "H_RyuryoText(0)", "LabelHRyuryoUnit(0)"),
    Row("optFLOW_SWITCH_T_LOW", "H_RyuryoText(1)", "LabelHRyuryoUnit(1)"),
    Row("LabelHSekisanSW", "H_TOTALText", "LabelHSekisanUnit"),
    End(),
    End(),
    Space(),
    Strip("chkCheck", ">", "ReadParameter", "SetParameter", "SaveParameter"),
};

}  // namespace

constinit const WindowLayout kForm4Layout{"Form4", WindowStyle::kPage, kItems};

}  // namespace vlt
