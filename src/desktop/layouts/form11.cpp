// SPDX-License-Identifier: GPL-3.0-or-later
// Transit time: details of a path; condition and waves on tabs of their own.
#include "desktop/layouts/layouts.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Tabs("DetailTabs"),
    Tab(),
    Strip("lblChannel", "DetailChSelect(0)", "DetailChSelect(1)", ">"),
    Columns(),
    Column(),
    TitledGroup(text::kGroupSending),
    Row("SendPatternCheck", "SendPatternCombo"),
    Row("SendCountCheck", "SendCountCombo"),
    Row("MeasureMethodCheck", "MeasureMethodCombo"),
    Row("chkTRWaitTim", "txtTRWaitTim", "", "lblTRWaitTimUnit"),
    End(),
    TitledGroup(text::kGroupReceiving),
    Row("SaturateLevelCheck", "SaturateLevelInput", "SaturateLevelUpDown", ""),
    Row("ReceiveBalanceCheck", "ReceiveBalanceInput", "ReceiveBalanceUpDown", ""),
    Row("ReceivePeakCheck", "ReceivePeakCombo"),
    End(),
    Column(),
    Box(),
    Strip("TriggerLevelCheck", ">", "TriggerLevelCtlAutoOption", "TriggerLevelCtlManualOption"),
    Row("lblTriggerLevel", "TriggerLevelInput", "TriggerLevelUpDown", "lblTriggerLevelUnit"),
    End(),
    Box(),
    Strip("WindowTimeCheck", ">", "WindowTimeCtlAutoOption", "WindowTimeCtlManualOption"),
    Row("lblOpenTimeF", "OpenTimeFInput", "", "lblOpenTimeUnit(0)"),
    Row("lblOpenTimeR", "OpenTimeRInput", "", "lblOpenTimeUnit(1)"),
    End(),
    Box(),
    Strip("AgcCheck", ">", "AgcCtlAutoOption", "AgcCtlManualOption"),
    Row("lblAgcForward", "AgcForwardInput", "", "lblAgcUnit(0)"),
    Row("lblAgcReverse", "AgcReverseInput", "", "lblAgcUnit(1)"),
    End(),
    End(),
    Space(),
    Strip("chkCheck", ">", "ReadParameter", "SetParameter", "SaveParameter"),
    Tab(),
    Wide("InfData1Grid"),
    Strip(">", "ReadInfButton", "SaveInfButton"),
    Tab(),
    Columns(),
    Side(),
    Group("Frame2"),
    Strip("lblWaveChSelect", "WaveChSelect(0)", "WaveChSelect(1)", ">"),
    End(),
    Group("Frame19"),
    Strip("ForwardReceiveOption", ">"),
    Strip("ReverseReceiveOption", ">"),
    Strip("ForwardFilterOption", ">"),
    Strip("ReverseFilterOption", ">"),
    Strip("CorrelationCalOption", ">"),
    End(),
    Row("lblWaveTrail", "cmbWaveTrail"),
    Space(),
    Strip("prgWave"),
    Strip("ProfileStartButton", "ProfileStopButton"),
    Strip("ProfileSaveButton"),
    Column(),
    Wide("DeltaChart2D1"),
    End(),
    End(),
    Strip("StatusBar2"),
};

}  // namespace

constinit const WindowLayout kForm11Layout{"Form11", WindowStyle::kPage, kItems};

}  // namespace vlt
