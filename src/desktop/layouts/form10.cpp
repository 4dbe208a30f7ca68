// Process setting.
#include "desktop/layouts/layouts.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

using namespace layout;

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
    End(),
};

}  // namespace

constinit const WindowLayout kForm10Layout{"Form10", WindowStyle::kPage, kItems};

}  // namespace vlt
