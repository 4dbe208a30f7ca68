// SPDX-License-Identifier: GPL-3.0-or-later
// System: the meter as a whole, memory initialisation, and the report of all settings.
#include "desktop/layouts/layouts.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Columns(),
    Column(),
    Box(),
    Row("UNIT_SYSTEM", "UNIT_SYSTEMCombo"),
    Row("LANGUAGE", "LANGUAGECombo"),
    Row("IDNUM_CONFIGCheck", "IDNUM_CONFIGText"),
    Row("SYSTEM_MODECheck", "SYSTEM_MODECombo"),
    Row("SPEC", "SPEC_Text"),
    Row("chkVersionInfo", "CONTROL_BOARDText"),
    Row("", "txtType"),
    End(),
    Column(),
    Group("Frame8"),
    Row("MEASUREMENT_MODECheck", "MEASUREMENT_MODECombo"),
    Row("CALCULATIONCheck", "CALCULATIONCombo"),
    Row("A01_OUT_SOURCE", "A01_OUT_SOURCECombo"),
    Row("A02_OUT_SOURCE", "A02_OUT_SOURCECombo"),
    End(),
    Group("FrameMemory"),
    Strip(">", "CommandMemoryInit"),
    End(),
    End(),
    Box(),
    Strip("Read_All_Set_Data", ">"),
    Strip("Label3", "FileName", "Save_As", "cmdStopReadAll"),
    End(),
    Space(),
    Strip("chkCheck", ">", "ReadParameter", "SetParameter", "SaveParameter"),
};

}  // namespace

constinit const WindowLayout kForm6Layout{"Form6", WindowStyle::kPage, kItems};

}  // namespace vlt
