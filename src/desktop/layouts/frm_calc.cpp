// SPDX-License-Identifier: GPL-3.0-or-later
// Sensor spacing calculator: the fields, and beside them the drawing and the result.
#include "desktop/layouts/layouts.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

using namespace layout;

constexpr LayoutItem kItems[] = {
    Columns(),
    Side(),
    TitledGroup(text::kGroupPipe),
    Row("OUTER_DIAMETER", "lblRequired(0)", "OUTER_DIAMETERText", "Label8(0)", "OUTER_DIAMETER_RANGE"),
    Row("PIPE_MATERIAL", "", "PIPE_MATERIALCombo"),
    Row("WALL_THICKNESS", "lblRequired(1)", "WALL_THICKNESSText", "Label8(1)", "WALL_THICKNESS_RANGE"),
    Row("TRANS_FREQUENCY", "lblRequired(2)", "TRANS_FREQUENCYText", "Label12", "TRANS_FREQUENCY_RANGE"),
    End(),
    TitledGroup(text::kGroupLining),
    Row("LINING_MATERIAL", "", "LINING_MATERIALCombo"),
    Row("LINING_THICKNESS", "lblRequired(3)", "LINING_THICKNESSText", "Label2", "LINING_THICKNESS_RANGE"),
    Row("LINING_S_V", "lblRequired(4)", "LINING_S_VText", "Label1(0)", "LINING_S_V_RANGE"),
    End(),
    TitledGroup(text::kGroupFluid),
    Row("KIND_OF_FLUID", "", "KIND_OF_FLUIDCombo"),
    Row("FLUID_S_V", "lblRequired(5)", "FLUID_S_VText", "Label1(1)", "FLUID_S_V_RANGE"),
    End(),
    TitledGroup(text::kGroupSensor),
    Row("SENSOR_MOUNT", "", "SENSOR_MOUNTCombo"),
    Row("SENSOR_TYPE", "", "SENSOR_TYPECombo"),
    End(),
    Strip("lblInputRequired", ">", "cmdTake", "ExecuteCalc"),
    Column(),
    Wide("picSpacing"),
    Group("fraResult"),
    Row("MOUNT_SIZE1", "txtResult1Text", "Label4", "MOUNT_SIZE2", "txtResult2Text", "lblMount2Sensor"),
    End(),
    End(),
    Strip("lblNote", ">", "cmdPrint", "cmdSave", "cmdClose"),
};

}  // namespace

constinit const WindowLayout kFrmCalcLayout{"frmCalc", WindowStyle::kDialog, kItems, "ExecuteCalc",
                                            "cmdClose"};

}  // namespace vlt
