// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form5.h"

#include "page_fixture.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

Form5& OpenForm5(PageTest& page) { return page.Open<Form5>("Form5"); }

TEST(Form5, WritesBothRowsAndTheBacklightInOrder) {
  PageTest test;
  Form5& page = OpenForm5(test);
  page.chkCheck.Tick();
  page.CHCombo1.Choose(2);  // CH3 of two pipes: the list begins with FLOW RATE, which is code 1
  ASSERT_EQ(page.Selection1Combo.Items().front(), "FLOW RATE");
  ASSERT_EQ(page.Selection1Combo.Count(), 6);
  page.Selection1Combo.Choose(0);
  page.Flow_Unit1Combo.Choose(3);
  EXPECT_EQ(page.Flow_Unit1Combo.Text(), "****.***");
  page.CHCombo2.Choose(0);
  page.Selection2Combo.Choose(0);  // VELOCITY: has no decimal point of its own
  page.optLCD(1).Choose();
  page.cmbLCD_Time.Choose(15);
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(),
            (Texts{"10 04 B0 00 01 02 00 02", "10 00 C0 00 01 02 00 01", "10 00 C2 00 01 02 00 03",
                   "10 04 B2 00 01 02 00 00", "10 00 C4 00 01 02 00 00", "10 00 C8 00 02 04 00 01 00 0F",
                   "03 00 C0 00 06", "03 04 B0 00 02"}));
  EXPECT_EQ(page.Selection1Combo.Text(), "FLOW RATE");
  EXPECT_EQ(page.cmbLCD_Time.ListIndex(), 15);
}

TEST(Form5, BacklightWritesOnlyWhatIsWhole) {
  PageTest test({"one path", kFull, 0, 0});
  Form5& page = OpenForm5(test);
  EXPECT_FALSE(page.optLCD(0).Enabled() || page.lblLCD_Time.Enabled());
  page.LCD_Check.Tick();
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests().front(), "03 00 C0 00 06") << "neither option: only the read-back";
  page.optLCD(1).Choose();
  EXPECT_TRUE(page.lblLCD_Time.Enabled());
  EXPECT_EQ(page.cmbLCD_Time.Items().back(), "99");
  page.cmbLCD_Time.Choose(0);
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests().front(), "10 00 C8 00 02 04 00 01 00 00");
  page.cmbLCD_Time.SetListIndex(-1);
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests().front(), "03 00 C0 00 06") << "no time: only the read-back";
  page.optLCD(0).Choose();
  EXPECT_FALSE(page.cmbLCD_Time.Enabled());
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests().front(), "10 00 C8 00 01 02 00 00");
  page.LCD_Check.Untick();
  EXPECT_FALSE(page.optLCD(0).Enabled());

  test.meter().holding().PutWord(0x00C8, 7);
  test.meter().holding().PutWord(0x00CA, 250);
  page.LCD_Check.Tick();
  page.ReadParameter.Press();
  EXPECT_FALSE(page.optLCD(0).Value() || page.optLCD(1).Value());
  EXPECT_EQ(page.cmbLCD_Time.ListIndex(), -1);
}

TEST(Form5, SelectionListFollowsTheChannelAndKeepsTheItem) {
  PageTest test;
  Form5& page = OpenForm5(test);
  page.Selection1.Tick();
  page.CHCombo1.Choose(0);
  page.Selection1Combo.Choose(5);  // -TOTAL(ACTUAL)
  page.CHCombo1.Choose(2);
  EXPECT_EQ(page.Selection1Combo.Text(), "-TOTAL(ACTUAL)");
  page.CHCombo1.Choose(0);
  EXPECT_EQ(page.Selection1Combo.ListIndex(), 5);
  page.Selection1Combo.Choose(0);  // VELOCITY is not there on CH3
  page.CHCombo1.Choose(2);
  EXPECT_EQ(page.Selection1Combo.ListIndex(), 0);
  // What the meter reports on CH3 outside the list selects nothing.
  test.meter().holding().PutWord(0x04B0, 2);
  test.meter().holding().PutWord(0x00C0, 0);
  page.CHCombo1.Choose(0);
  page.ReadParameter.Press();
  EXPECT_EQ(page.Selection1Combo.ListIndex(), -1);
}

TEST(Form5, SlotsKeepTheChannelAsTextAndTheBacklightAsDigit) {
  PageTest test;
  Form5& page = OpenForm5(test);
  page.chkCheck.Tick();
  page.CHCombo1.Choose(2);
  page.Selection1Combo.Choose(0);
  page.optLCD(1).Choose();
  ASSERT_TRUE(test.app().windows.Unload("Form5"));
  EXPECT_EQ(test.app().slots.At("DISPLAY", "DISPLAY1_SELECT_CH"), "CH3");
  EXPECT_EQ(test.app().slots.At("DISPLAY", "DISPLAY2_SELECT_CH"), "");
  EXPECT_EQ(test.app().slots.At("DISPLAY", "LCD_BACKLIGHT_MODE"), "1");
  EXPECT_EQ(test.app().slots.At("DISPLAY", "LCD_BACKLIGHT_TIME"), "-1");
  Form5& again = OpenForm5(test);
  EXPECT_EQ(again.CHCombo1.Text(), "CH3");
  EXPECT_EQ(again.Selection1Combo.Text(), "FLOW RATE");
  EXPECT_TRUE(again.optLCD(1).Value());
  again.optLCD(1).SetValue(false);
  again.Taihi();
  EXPECT_EQ(test.app().slots.At("DISPLAY", "LCD_BACKLIGHT_MODE"), "") << "neither is chosen";
}

}  // namespace
}  // namespace vlt::test
