// SPDX-License-Identifier: GPL-3.0-or-later
// Measure: the flow of all channels and the settings of the trend above, heat and the trend below.
#include "desktop/layouts/layouts.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Columns(),
    Column(),
    Group("Frame1"),
    Cells("", "lblCh1(1)", "", "lblCh2(1)", "", "lblCh3(1)"),
    Cells("lblRyusoku", "txtRyusoku(0)", "lblRyusokuUnit(0)", "txtRyusoku(1)", "lblRyusokuUnit(1)",
          "txtRyusoku(2)", "lblRyusokuUnit(2)"),
    Cells("", "lblCh1(0)", "", "lblCh2(0)", "", "lblCh3(0)"),
    Cells("lblRyuryo", "txtRyuryo(0)", "lblRyuryoUnit(0)", "txtRyuryo(1)", "lblRyuryoUnit(1)", "txtRyuryo(2)",
          "lblRyuryoUnit(2)"),
    Cells("lblRyuryoPer", "txtRyuryoPer(0)", "lblRyuryoPerUnit(0)", "txtRyuryoPer(1)", "lblRyuryoPerUnit(1)",
          "txtRyuryoPer(2)", "lblRyuryoPerUnit(2)"),
    Cells("lblPlusSekisan", "txtPlusSekisan(0)", "lblSekisanUnit(0)", "txtPlusSekisan(1)",
          "lblSekisanUnit(2)", "txtPlusSekisan(2)", "lblSekisanUnit(4)"),
    Cells("lblPlusSekisanPulse", "txtPlusSekisanPulse(0)", "lblPulseUnit(0)", "txtPlusSekisanPulse(1)",
          "lblPulseUnit(2)", "txtPlusSekisanPulse(2)", "lblPulseUnit(4)"),
    Cells("lblMinusSekisan", "txtMinusSekisan(0)", "lblSekisanUnit(1)", "txtMinusSekisan(1)",
          "lblSekisanUnit(3)", "txtMinusSekisan(2)", "lblSekisanUnit(5)"),
    Cells("lblMinusSekisanPulse", "txtMinusSekisanPulse(0)", "lblPulseUnit(1)", "txtMinusSekisanPulse(1)",
          "lblPulseUnit(3)", "txtMinusSekisanPulse(2)", "lblPulseUnit(5)"),
    End(),
    Group("Frame2"),
    Strip("txtRAS(0)", "txtRAS(1)", "txtRAS(2)"),
    End(),
    Side(),
    Row("lblChannelSelect", "CH_Combo"),
    Row("lblFlowSelect", "Flow_Combo"),
    Group("Frame6"),
    Group("Frame5"),
    Cells("lblMax", "Max"),
    Cells("lblMin", "Min"),
    End(),
    Group("Frame4"),
    Cells("lblCycle", "Cycle", "lblCycleUnit"),
    Cells("lblPoint", "PointText"),
    End(),
    End(),
    Space(),
    Strip("Start", "Stop", "SaveCSV"),
    End(),
    Columns(),
    Side(),
    TitledGroup(text::kEnergyMode),
    Cells("", "lblCh1(2)", "lblCh2(2)", "lblCh3(2)"),
    Cells("lblTHERMAL_FLOW", "txtThermalFlow(0)", "txtThermalFlow(1)", "txtThermalFlow(2)", "lblHRyuryoUnit"),
    Cells("lblTHERMAL_FLOWPer", "txtThermalFlowPer(0)", "txtThermalFlowPer(1)", "txtThermalFlowPer(2)",
          "lblHPerUnit"),
    Cells("lblH_TOTAL", "txtHTotal(0)", "txtHTotal(1)", "txtHTotal(2)", "lblHSekisanUnit(0)"),
    Cells("lblHTotalPulse", "txtHTotalPulse(0)", "txtHTotalPulse(1)", "txtHTotalPulse(2)",
          "lblHPulseUnit(0)"),
    Cells("lblCTotal", "txtCTotal(0)", "txtCTotal(1)", "txtCTotal(2)", "lblHSekisanUnit(1)"),
    Cells("lblCTotalPulse", "txtCTotalPulse(0)", "txtCTotalPulse(1)", "txtCTotalPulse(2)",
          "lblHPulseUnit(1)"),
    Cells("lblSUPPLY_TEMP", "txtSupplyTemp(0)", "txtSupplyTemp(1)", "txtSupplyTemp(2)", "lbldegreeCUnit(0)"),
    Cells("lblRETURN_TEMP", "txtReturnTemp(0)", "txtReturnTemp(1)", "txtReturnTemp(2)", "lbldegreeCUnit(1)"),
    Cells("lblTEMP_DIFFERENCE", "txtTempDifference(0)", "txtTempDifference(1)", "txtTempDifference(2)",
          "lbldegreeCUnit(2)"),
    End(),
    Column(),
    Wide("Chart2D1"),
    End(),
    Strip("LogBar"),
    Strip("StatusBar2"),
};

}  // namespace

constinit const WindowLayout kForm9Layout{"Form9", WindowStyle::kPage, kItems};

}  // namespace vlt
