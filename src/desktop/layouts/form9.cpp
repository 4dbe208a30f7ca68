// Measure: the measured values of each channel beside the trend.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Columns(),
    Column(),
    Group("Frame1"),
    Row("", "lblCh1(0)", "", "lblCh2(0)", "", "lblCh3(0)"),
    Row("lblRyusoku", "txtRyusoku(0)", "lblRyusokuUnit(0)", "txtRyusoku(1)", "lblRyusokuUnit(1)", "txtRyusoku(2)",
        "lblRyusokuUnit(2)"),
    Row("lblRyuryo", "txtRyuryo(0)", "lblRyuryoUnit(0)", "txtRyuryo(1)", "lblRyuryoUnit(1)", "txtRyuryo(2)",
        "lblRyuryoUnit(2)"),
    Row("lblRyuryoPer", "txtRyuryoPer(0)", "lblRyuryoPerUnit(0)", "txtRyuryoPer(1)", "lblRyuryoPerUnit(1)",
        "txtRyuryoPer(2)", "lblRyuryoPerUnit(2)"),
    Row("lblPlusSekisan", "txtPlusSekisan(0)", "lblSekisanUnit(0)", "txtPlusSekisan(1)", "lblSekisanUnit(2)",
        "txtPlusSekisan(2)", "lblSekisanUnit(4)"),
    Row("lblPlusSekisanPulse", "txtPlusSekisanPulse(0)", "lblPulseUnit(0)", "txtPlusSekisanPulse(1)",
        "lblPulseUnit(2)", "txtPlusSekisanPulse(2)", "lblPulseUnit(4)"),
    Row("lblMinusSekisan", "txtMinusSekisan(0)", "lblSekisanUnit(1)", "txtMinusSekisan(1)", "lblSekisanUnit(3)",
        "txtMinusSekisan(2)", "lblSekisanUnit(5)"),
    Row("lblMinusSekisanPulse", "txtMinusSekisanPulse(0)", "lblPulseUnit(1)", "txtMinusSekisanPulse(1)",
        "lblPulseUnit(3)", "txtMinusSekisanPulse(2)", "lblPulseUnit(5)"),
    End(),
    Box(),
    Row("", "lblCh1(1)", "", "lblCh2(1)", "", "lblCh3(1)"),
    Row("lblTHERMAL_FLOW", "txtThermalFlow(0)", "", "txtThermalFlow(1)", "", "txtThermalFlow(2)",
        "lblHRyuryoUnit"),
    Row("lblTHERMAL_FLOWPer", "txtThermalFlowPer(0)", "", "txtThermalFlowPer(1)", "", "txtThermalFlowPer(2)",
        "lblHPerUnit"),
    Row("lblH_TOTAL", "txtHTotal(0)", "", "txtHTotal(1)", "", "txtHTotal(2)", "lblHSekisanUnit(0)"),
    Row("lblHTotalPulse", "txtHTotalPulse(0)", "", "txtHTotalPulse(1)", "", "txtHTotalPulse(2)",
        "lblHPulseUnit(0)"),
    Row("lblCTotal", "txtCTotal(0)", "", "txtCTotal(1)", "", "txtCTotal(2)", "lblHSekisanUnit(1)"),
    Row("lblCTotalPulse", "txtCTotalPulse(0)", "", "txtCTotalPulse(1)", "", "txtCTotalPulse(2)",
        "lblHPulseUnit(1)"),
    Row("lblSUPPLY_TEMP", "txtSupplyTemp(0)", "", "txtSupplyTemp(1)", "", "txtSupplyTemp(2)",
        "lbldegreeCUnit(0)"),
    Row("lblRETURN_TEMP", "txtReturnTemp(0)", "", "txtReturnTemp(1)", "", "txtReturnTemp(2)",
        "lbldegreeCUnit(1)"),
    Row("lblTEMP_DIFFERENCE", "txtTempDifference(0)", "", "txtTempDifference(1)", "", "txtTempDifference(2)",
        "lbldegreeCUnit(2)"),
    End(),
    Group("Frame2"),
    Row("lblCh1(2)", "txtRAS(0)"),
    Row("lblCh2(2)", "txtRAS(1)"),
    Row("lblCh3(2)", "txtRAS(2)"),
    End(),
    Column(),
    Strip("lblChannelSelect", "CH_Combo", "lblFlowSelect", "Flow_Combo", ">"),
    Group("Frame6"),
    Columns(),
    Column(),
    Group("Frame5"),
    Row("lblMax", "Max"),
    Row("lblMin", "Min"),
    End(),
    Column(),
    Group("Frame4"),
    Row("lblCycle", "Cycle", "lblCycleUnit"),
    Row("lblPoint", "PointText"),
    End(),
    End(),
    End(),
    Wide("Chart2D1"),
    End(),
    Strip("StatusBar2", "Start", "Stop", "SaveCSV"),
};

}  // namespace

constinit const WindowLayout kForm9Layout{"Form9", WindowStyle::kPage, kItems};

}  // namespace vlt
