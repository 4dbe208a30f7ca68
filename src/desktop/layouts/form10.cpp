// SPDX-License-Identifier: GPL-3.0-or-later
// Process setting.
#include "desktop/layouts/layouts.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

using namespace layout;

// Text ids of groups on the energy tab.

constexpr LayoutItem kItems[] = {
    Tabs("SetParameter2"),
    Tab(),
    Strip("lblChannel", "ChannelSelect(0)", "ChannelSelect(1)", ">"),
    Columns(),
    Column(),
    TitledGroup(text::kGroupPipe),
    Row("OUTER_DIAMETER", "OUTER_DIAMETERText", "Label8(0)"),
    Row("PIPE_MATERIAL", "PIPE_MATERIALCombo"),
    Row("TRANS_FREQUENCY", "TRANS_FREQUENCYText", "Label12(0)"),
    Row("WALL_THICKNESS", "WALL_THICKNESSText", "Label8(1)"),
    End(),
    TitledGroup(text::kGroupLining),
    Row("LINING_MATERIAL", "LINING_MATERIALCombo"),
    Row("LINING_S_V", "LINING_S_VText", "Label1(0)"),
    Row("LINING_THICKNESS", "LINING_THICKNESSText", "Label2(0)"),
    End(),
    Column(),
    TitledGroup(text::kGroupFluid),
    Row("KIND_OF_FLUID", "KIND_OF_FLUIDCombo"),
    Row("FLUID_S_V", "FLUID_S_VText", "Label1(1)"),
    Row("VISCOSITY", "VISCOSITYText", "Label3(0)"),
    End(),
    TitledGroup(text::kGroupSensor),
    Row("SENSOR_MOUNT", "SENSOR_MOUNTCombo"),
    Row("SENSOR_TYPE", "SENSOR_TYPECombo"),
    Row("SENSOR_SPACINGCheck", "SENSOR_SPACINGText", "Label5(0)"),
    Row("", "SENSOR_SPACING2Text"),
    End(),
    Group("FrameZero"),
    Strip(">", "CmdBtnClear", "CmdBtnAdjust"),
    End(),
    End(),
    Space(),
    Strip("chkCheck", ">", "ReadParameter", "SetParameter", "SaveParameter"),
    Tab(),
    Columns(),
    Column(),
    TitledGroup(text::kGroupHeatUnits),
    Row("TEMPERATURECheck", "TEMPERATURECombo"),
    Row("HEAT_FLOW_RATECheck", "HEAT_FLOW_RATECombo"),
    Row("HEAT_FLOW_RATE_SekisanCheck", "HEAT_FLOW_RATE_SekisanCombo"),
    End(),
    Box(),
    Row("MODECheck", "MODECombo"),
    Row("RUNCheck", "RUNCombo"),
    End(),
    TitledGroup(text::kCooling),
    Row("CTEMPCONVCheck", "CTEMPCONVText", ""),
    End(),
    TitledGroup(text::kHeating),
    Row("HTEMPCONVCheck", "HTEMPCONVText", ""),
    End(),
    TitledGroup(text::kAirConditioning),
    Row("SWITCH_TEMPERATURECheck", "SWITCH_TEMPERATUREText", "lblTemp(0)"),
    Row("HYSTERESISCheck", "HYSTERESISText", "lblTemp(1)"),
    End(),
    Column(),
    Box(),
    Row("TEMPERATURE_INPUT_SIGNALCheck", "TEMPERATURE_INPUT_SIGNALCombo"),
    End(),
    Box(),
    Row("SUPPLY_TEMPERATURECheck", "SUPPLY_TEMPERATURECombo"),
    Row("SET_UP_SUPPLY_TEMPERATURECheck", "SET_UP_SUPPLY_TEMPERATUREText", "lblTemp(2)"),
    Row("SUPPLY_TEMP_ZEROCheck", "SUPPLY_TEMP_ZEROText", "lblTemp(4)"),
    Row("SUPPLY_TEMP_SPANCheck", "SUPPLY_TEMP_SPANText", "lblPer(0)"),
    Row("SUPPLY_TEMP_FILTERCheck", "SUPPLY_TEMP_FILTERText", "lblSec(0)"),
    End(),
    Box(),
    Row("RETURNER_TEMPERATURECheck", "RETURNER_TEMPERATURECombo"),
    Row("SET_UP_RETURNER_TEMPERATURECheck", "SET_UP_RETURNER_TEMPERATUREText", "lblTemp(3)"),
    Row("RETURNER_TEMP_ZEROCheck", "RETURNER_TEMP_ZEROText", "lblTemp(5)"),
    Row("RETURNER_TEMP_SPANCheck", "RETURNER_TEMP_SPANText", "lblPer(1)"),
    Row("RETURNER_TEMP_FILTERCheck", "RETURNER_TEMP_FILTERText", "lblSec(1)"),
    End(),
    End(),
    Space(),
    Strip("chkCheckHeat", ">", "ReadParameterHeat", "SetParameterHeat", "SaveParameterHeat"),
    End(),
};

}  // namespace

constinit const WindowLayout kForm10Layout{"Form10", WindowStyle::kPage, kItems};

}  // namespace vlt
