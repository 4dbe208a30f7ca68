// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form10.h"

#include "page_fixture.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

Form10& OpenForm10(PageTest& page) { return page.Open<Form10>("Form10"); }

// A full set of values whose every field is enabled: own pipe, own fluid, own lining.
void FillAll(Form10& page) {
  page.chkCheck.Tick();
  page.PIPE_MATERIALCombo.Choose(12);
  page.KIND_OF_FLUIDCombo.Choose(17);
  page.LINING_MATERIALCombo.Choose(7);
  page.OUTER_DIAMETERText.Type("123.456");
  page.TRANS_FREQUENCYText.Type("3206");
  page.WALL_THICKNESSText.Type("4.5");
  page.LINING_S_VText.Type("2505");
  page.LINING_THICKNESSText.Type("1.15");
  page.FLUID_S_VText.Type("1480.9");
  page.VISCOSITYText.Type("1.0038");
  page.SENSOR_MOUNTCombo.Choose(1);
  page.SENSOR_TYPECombo.Choose(4);
}

TEST(Form10, FullSetWritesTwelveParametersInOrderAndReadsBack) {
  PageTest test({"one path, metric", kFull, 0, 0});
  Form10& page = OpenForm10(test);
  FillAll(page);
  ASSERT_EQ(page.FLUID_S_VText.Text(), "1480") << "the field takes four characters in metric units";
  page.SetParameter.Press();

  const Texts expected = {
      "10 00 D2 00 02 04 00 00 30 39",              // 123.456 mm is cut to 123.45
      "10 00 D6 00 01 02 00 0C",                    // own pipe velocity
      "10 00 D8 00 01 02 0C 86",                    //
      "10 00 DA 00 02 04 00 00 01 C2",              //
      "10 00 DE 00 01 02 00 07",                    //
      "10 00 E0 00 01 02 09 C9",                    //
      "10 00 E2 00 02 04 00 00 00 73",              // 1.15 is 115, not 114
      "10 00 E6 00 01 02 00 11",                    //
      "10 00 E8 00 01 02 05 C8",                    //
      "10 00 EA 00 04 08 3F F0 0F 90 96 BB 98 C8",  // a double as typed
      "10 00 F2 00 01 02 00 01",                    //
      "10 00 D0 00 01 02 00 04",                    // the sensor type goes last
      "03 00 D0 00 12",                             //
      "03 01 00 00 01",                             // units, once, before the first value that has one
      "04 00 80 00 03",                             //
  };
  EXPECT_EQ(test.Requests(), expected);
  EXPECT_EQ(page.OUTER_DIAMETERText.Text(), "123.45");
  EXPECT_EQ(page.VISCOSITYText.Text(), "1.0038");
  EXPECT_FALSE(page.SENSOR_SPACINGText.Text().empty());
  EXPECT_EQ(test.test.StatusText(), "Setting of process setting was completed ");
  EXPECT_FALSE(test.app().state.UiLocked);
  EXPECT_EQ(test.app().windows.MousePointer(), kNormalPointer);
}

TEST(Form10, AReadLeavesWhatIsNotTicked) {
  PageTest test({"one path", kFull, 0, 0});
  Form10& page = OpenForm10(test);
  page.WALL_THICKNESSText.SetText("9.99");
  page.SENSOR_SPACINGCheck.Tick();
  page.ReadParameter.Press();
  EXPECT_EQ(test.Requests(), (Texts{"03 00 D0 00 12", "04 00 80 00 03", "03 01 00 00 01"}));
  EXPECT_EQ(page.WALL_THICKNESSText.Text(), "9.99");
}

TEST(Form10, FailedWriteAsksAndCancelEndsWithoutReadBack) {
  PageTest test({"one path", kFull, 0, 0});
  Form10& page = OpenForm10(test);
  page.OUTER_DIAMETER.Tick();
  page.SENSOR_MOUNT.Tick();
  page.OUTER_DIAMETERText.Type("60.5");
  page.SENSOR_MOUNTCombo.Choose(0);
  for (const bool go_on : {false, true}) {
    test.test.platform.Arm("exception=2@00D2H*4");
    test.dialogs().Answer(go_on ? MessageAnswer::kOk : MessageAnswer::kCancel);
    page.SetParameter.Press();
    EXPECT_EQ(test.dialogs().TakeTexts(),
              Texts{"OUTER DIAMETER :Data has not been set up\nDoes it continue?"});
    const Texts requests = test.Requests();
    EXPECT_EQ(requests.size(), go_on ? 8u : 4u) << "four attempts, then the next field and the read-back";
    EXPECT_FALSE(test.app().state.UiLocked);
    if (!go_on) {
      EXPECT_EQ(test.test.StatusText(), "Setting of process setting was completed [ADDRESS ERROR(02H)]");
      EXPECT_EQ(page.OUTER_DIAMETERText.Text(), "60.5");
    }
  }
}

TEST(Form10, ZeroAdjustmentAsksFirstAndChecksTheEcho) {
  PageTest test;
  Form10& page = OpenForm10(test);
  test.dialogs().Answer(MessageAnswer::kCancel);
  page.CmdBtnClear.Press();
  EXPECT_EQ(test.Requests(), Texts{});
  EXPECT_EQ(test.dialogs().TakeTexts(), Texts{"ZERO AJUSTMENT :  Is clearing executed?"});

  page.ChannelSelect(1).Choose();
  test.dialogs().Answer(MessageAnswer::kOk);
  test.dialogs().Answer(MessageAnswer::kOk);
  page.CmdBtnAdjust.Press();
  EXPECT_EQ(test.Requests(), Texts{"06 14 C8 00 01"});
  EXPECT_EQ(test.dialogs().TakeTexts(),
            (Texts{"ZERO AJUSTMENT :  Is set zero executed?", "ZERO ADJUSTMENT  A setup was completed"}));

  test.test.platform.Arm("wrong-echo@14C8H");
  test.dialogs().Answer(MessageAnswer::kOk);
  test.dialogs().Answer(MessageAnswer::kOk);
  page.CmdBtnAdjust.Press();
  EXPECT_EQ(test.dialogs().TakeTexts().back(), "ZERO ADJUSTMENT  A setup was not completed");
  EXPECT_EQ(test.test.StatusText(), "Setting of process setting was completed ");
}

TEST(Form10, StaysOpenDuringAnExchangeAndKeepsItsFieldsInTheSlots) {
  PageTest test({"one path", kFull, 0, 0});
  Form10& page = OpenForm10(test);
  FillAll(page);
  bool refused = false;
  test.test.Time().After(60, [&] {
    refused = !test.app().windows.Unload("Form10");
    EXPECT_FALSE(page.ReadParameter.Enabled());
    EXPECT_FALSE(page.chkCheck.Enabled());
    EXPECT_TRUE(page.OUTER_DIAMETERText.Enabled()) << "text fields stay usable";
  });
  page.ReadParameter.Press();
  EXPECT_TRUE(refused);

  page.OUTER_DIAMETERText.Type(" 77.70");
  ASSERT_TRUE(test.app().windows.Unload("Form10"));
  EXPECT_EQ(test.app().slots.At("PROCESS SETTING", "OUTER_DIAMETER_Data"), "77.70");
}

}  // namespace
}  // namespace vlt::test
