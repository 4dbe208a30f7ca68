// SPDX-License-Identifier: GPL-3.0-or-later
// Maintenance: analog outputs, digital outputs, test mode, temperature inputs.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Columns(),
    Column(),
    Box(),
    Row("AO_Check"),
    Row("ADJUSTMENT", "ADJUSTMENTCombo", "", "lblPointUnit(0)"),
    Row("", "ADJUSTMENText", "UpDown1"),
    Row("AO_DEFINITIONCheck", "AO_DEFINITIONText", "UpDown2", "lblPercent(0)"),
    End(),
    Box(),
    Row("AO2_Check"),
    Row("ADJUSTMENT2", "ADJUSTMENTCombo2", "", "lblPointUnit(1)"),
    Row("", "ADJUSTMENText2", "UpDown3"),
    Row("AO2_DEFINITIONCheck", "AO2_DEFINITIONText", "UpDown4", "lblPercent(1)"),
    End(),
    Column(),
    Group("FrameDO"),
    Row("chkDO"),
    Row("OUTPUT_DOOption", "OUTPUT_DOCombo"),
    Row("SEKISAN_PULSEOption", "SEKISAN_PULSEText", "lblPulseUnit"),
    Row("OUTPUT_DO2_FREQUENCYCheck", "OUTPUT_DO2_FREQUENCYtxt", "lblFrequencyUnit"),
    End(),
    Box(),
    Row("TEST_MODECheck"),
    Row("lblInputData", "INPUT_DATAText", "lblInputUnit"),
    Row("lblTrackingTime", "TRACKING_TIMEText", "lblTrackingUnit"),
    End(),
    Group("Frame6"),
    Row("TEMPCheck"),
    Row("CONFIRM_TSCheck", "CONFIRM_TStxt"),
    Row("CONFIRM_TRCheck", "CONFIRM_TRtxt"),
    End(),
    End(),
    Space(),
    Strip("chkCheck", ">", "ReleaseParameter", "ReadParameter", "SetParameter", "SaveParameter"),
};

}  // namespace

constinit const WindowLayout kForm7Layout{"Form7", WindowStyle::kPage, kItems};

}  // namespace vlt
