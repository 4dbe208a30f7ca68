// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form3.h"

#include "page_fixture.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

Form3& OpenForm3(PageTest& page) { return page.Open<Form3>("Form3"); }

TEST(Form3, FullSetWritesTheModeFirstAndReadsBack) {
  PageTest test(kTwoPaths);
  Form3& page = OpenForm3(test);
  page.MODECombo.SetListIndex(1);
  page.chkCheck.Tick();
  page.UNIT_SYSTEMCombo.Choose(3);
  page.ConstantCheckText.Type("0.01");
  page.F_TOTAL_PRESETText.Type("1000");
  page.PULSE_WIDTH_1Combo.Choose(5);
  page.OUTPUT_BURNOUTCombo.Choose(1);
  page.BURNOUT_TIMERText.Type("30");
  page.H_TOTAL_ConstantText.Type("2.5");
  page.C_TOTAL_PRESETText.Type("40");
  page.SetParameter.Press();
  EXPECT_EQ(
      test.Requests(),
      (Texts{"10 00 42 00 01 02 00 01", "10 00 40 00 01 02 00 03",
             "10 00 44 00 04 08 3F 84 7A E1 47 AE 14 7B", "10 00 4C 00 04 08 40 8F 40 00 00 00 00 00",
             "10 00 54 00 01 02 00 05", "10 00 56 00 01 02 00 01", "10 00 58 00 01 02 00 1E",
             "10 04 00 00 04 08 40 04 00 00 00 00 00 00", "10 04 08 00 04 08 40 44 00 00 00 00 00 00",
             "03 00 40 00 0D", "03 01 00 00 01", "03 01 48 00 01", "03 03 E8 00 01", "03 04 00 00 08"}));
  EXPECT_EQ(page.ConstantCheckText.Text(), "0.01");
  EXPECT_EQ(page.Label2(1).Caption(), "[kft3]");
}

TEST(Form3, ARunningTotalizerShowsItsSetUpButTakesNone) {
  PageTest test(kOnePath);
  Form3& page = OpenForm3(test);
  test.meter().holding().PutDouble(0x0044, 0.123456789);
  test.meter().holding().PutDouble(0x0408, 12345678.9);
  page.chkCheck.Tick();
  page.ReadParameter.Press();
  EXPECT_EQ(page.MODECombo.Text(), "START");
  EXPECT_EQ(page.UNIT_SYSTEMCombo.Text(), "m3");
  EXPECT_EQ(page.ConstantCheckText.Text(), "0.1234567")
      << "eight characters less the one of the integer part";
  EXPECT_EQ(page.C_TOTAL_PRESETText.Text(), "12345678");
  EXPECT_EQ(page.PULSE_WIDTH_1Combo.Text(), "50.0");
  test.Requests();
  page.SetParameter.Press();
  const Texts requests = test.Requests();
  EXPECT_EQ(Texts(requests.begin(), requests.begin() + 4),
            (Texts{"10 00 42 00 01 02 00 00", "10 00 56 00 01 02 00 00", "10 00 58 00 01 02 00 0A",
                   "03 00 40 00 0D"}));
}

TEST(Form3, UnitsAreLearntOnceAReadAndUnitEightIsTheFirstMetricOne) {
  struct Case {
    const char* name;
    Shape shape;
    int unit;  // what the meter holds
    bool tick_unit;
    Texts singles;
    int index;
    const char* caption;
  };
  const std::string kFlag = "03 01 00 00 01";
  for (const Case& c :
       {Case{"single read", kOnePath, 4, false, {kFlag, "03 00 40 00 01"}, -1, "[Mm3]"},
        Case{"acre-foot", kTwoPaths, 8, false, {kFlag, "03 00 40 00 01"}, -1, "[ACRf]"},
        Case{"in the block", kTwoPaths, 8, true, {kFlag}, 8, "[ACRf]"},
        Case{"eight, metric", kOnePath, 8, true, {kFlag}, 0, "[mL]"},
        Case{"eight, metric, single", kOnePath, 8, false, {kFlag, "03 00 40 00 01"}, -1, "[mL]"}}) {
    SCOPED_TRACE(c.name);
    PageTest test(c.shape);
    test.app().state.UnitFlag = 1 - c.shape.unit_system;  // what the program believed before
    Form3& page = OpenForm3(test);
    test.app().slots.At("TOTAL", "F_TOTAL_PRESET_Unit") = "[old]";
    test.meter().holding().PutWord(0x0040, c.unit);
    page.MODECombo.SetListIndex(1);
    page.UNIT_SYSTEM.SetValue(c.tick_unit ? 1 : 0);
    page.ConstantCheck.Tick();
    for (const bool both : {false, true}) {
      page.F_TOTAL_PRESET.SetValue(both ? 1 : 0);
      page.ReadParameter.Press();
      const Texts requests = test.Requests();
      EXPECT_EQ(Texts(requests.begin() + 1, requests.end() - 3), c.singles) << "each read asks anew";
      EXPECT_EQ(page.Label2(1).Caption(), c.caption) << "whether it was read or not";
      EXPECT_EQ(test.app().slots.At("TOTAL", "F_TOTAL_PRESET_Unit"), "");
    }
    EXPECT_EQ(page.UNIT_SYSTEMCombo.ListIndex(), c.index);
    EXPECT_EQ(page.UNIT_SYSTEMCombo.Count(), c.shape.unit_system == 0 ? 8 : 9);
    EXPECT_EQ(page.Label2(10).Caption(), c.caption);
  }
}

TEST(Form3, AKeptUnitThatMetricLacksIsDroppedAndOthersAreKept) {
  struct Case {
    const char* slot;
    int unit_flag;
    int index;
    const char* kept;
    int unit;  // of the channel
  };
  for (const Case& c : {Case{"8", 0, -1, "", 0}, Case{"8", 1, 8, "8", 8}, Case{"3", 0, 3, "3", 8}}) {
    PageTest test(kTwoPaths);
    test.app().state.UnitFlag = 1 - c.unit_flag;
    test.app().slots.At("TOTAL", "TOTAL_UNIT_Data") = c.slot;
    test.app().state.TotalUnit[0] = 8;
    auto& page = static_cast<Form3&>(test.app().windows.Load("Form3"));
    test.test.platform.Arm("silence*ever");
    test.app().state.UnitFlag = c.unit_flag;  // it changed since the page was loaded
    OpenForm3(test);
    EXPECT_EQ(page.UNIT_SYSTEMCombo.ListIndex(), c.index) << c.slot;
    EXPECT_EQ(page.UNIT_SYSTEMCombo.Count(), c.unit_flag == 0 ? 8 : 9);
    EXPECT_EQ(test.app().slots.At("TOTAL", "TOTAL_UNIT_Data"), c.kept);
    EXPECT_EQ(test.app().state.TotalUnit[0], c.unit);
  }
}

}  // namespace
}  // namespace vlt::test
