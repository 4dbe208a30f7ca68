// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form2.h"

#include "page_fixture.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

Form2& OpenForm2(PageTest& page) { return page.Open<Form2>("Form2"); }

Form2& OpenChannel(PageTest& test, int channel) {
  test.app().state.RangeChannel = channel;
  return OpenForm2(test);
}

void FillAll(Form2& page) {
  page.chkCheck.Tick();
  page.TypeCheckCombo.Choose(3);
  page.cmbKind.Choose(page.cmbKind.Count() - 1);  // flow rate
  page.UNIT_SYSTEMCombo.Choose(8);
  page.OUTPUT_BURNOUTCombo.Choose(2);
  const std::pair<TextBox*, const char*> texts[] = {{&page.DAMPINGText, "12.39"},
                                                    {&page.FULL_SCALE1Text, "12.5"},
                                                    {&page.FULL_SCALE2Text, "6.25"},
                                                    {&page.HYSTERISISText, "9.999"},
                                                    {&page.BURNOUT_TIMERText, "15"},
                                                    {&page.OUTPUT_LIMIT_LowText, "-10"},
                                                    {&page.OUTPUT_LIMIT_HighText, "110.9"},
                                                    {&page.RATE_LIMIT_TIMERText, "7"},
                                                    {&page.RATE_LIMITText, "0.5"},
                                                    {&page.LOW_FLOW_OUTPUT_CUTText, "0.15"},
                                                    {&page.ZEROText, "-0.25"},
                                                    {&page.SPANText, "100.05"},
                                                    {&page.CALORIE_FULL_SCALE1Text, "500"},
                                                    {&page.CALORIE_FULL_SCALE2Text, "250"}};
  for (const auto& [box, text] : texts) box->Type(text);
}

TEST(Form2, FullSetWritesInOrderAndReadsBack) {
  PageTest test(kOnePath);
  Form2& page = OpenForm2(test);
  FillAll(page);
  page.SetParameter.Press();
  const Texts expected = {
      "10 00 02 00 01 02 00 01",                    //
      "10 00 04 00 01 02 00 08",                    //
      "10 00 06 00 01 02 00 03",                    //
      "10 00 08 00 04 08 40 29 00 00 00 00 00 00",  //
      "10 00 10 00 04 08 40 19 00 00 00 00 00 00",  //
      "10 03 F0 00 04 08 40 7F 40 00 00 00 00 00",  //
      "10 03 F8 00 04 08 40 6F 40 00 00 00 00 00",  //
      "10 00 18 00 01 02 03 E7",                    // 9.999 % is cut to 9.99
      "10 00 1A 00 01 02 00 02",                    //
      "10 00 1C 00 01 02 00 0F",                    //
      "10 00 20 00 01 02 00 6E",                    // the high limit goes first, three characters of it
      "10 00 1E 00 01 02 FF F6",                    //
      "10 00 24 00 04 08 3F E0 00 00 00 00 00 00",  //
      "10 00 22 00 01 02 00 07",                    //
      "10 00 00 00 01 02 00 7B",                    // 12.39 s is cut to 12.3
      "10 00 2C 00 04 08 3F C3 33 33 33 33 33 33",  //
      "10 00 34 00 04 08 BF D0 00 00 00 00 00 00",  //
      "10 00 3C 00 01 02 27 15",                    //
      "03 00 00 00 20",                             //
      "03 01 48 00 01",                             //
      "03 03 E8 00 01",                             //
      "03 01 00 00 01",                             //
      "03 03 F0 00 08",                             //
  };
  EXPECT_EQ(test.Requests(), expected);
  EXPECT_EQ(page.HYSTERISISText.Text(), "9.99");
  EXPECT_EQ(page.OUTPUT_LIMIT_LowText.Text(), "-10");
  EXPECT_EQ(page.DAMPINGText.Text(), "12.3");
}

TEST(Form2, NumbersAreShownInEightCharacters) {
  PageTest test(kTwoPipes);
  Form2& page = OpenChannel(test, 2);
  sim::Memory& meter = test.meter().holding();
  meter.PutWord(0x1B5E, 2);
  meter.PutDouble(0x1B60, 123456.5);
  meter.PutDouble(0x1B68, 1e-7);
  meter.PutWord(0x1B70, -5);
  meter.PutDouble(0x1B7C, -12.3456789);
  page.chkCheck.Tick();
  page.ReadParameter.Press();
  EXPECT_EQ(page.FULL_SCALE1Text.Text(), "123456.5");
  EXPECT_EQ(page.FULL_SCALE2Text.Text(), "0.0000001");
  EXPECT_EQ(page.HYSTERISISText.Text(), "-0.05");
  EXPECT_EQ(page.RATE_LIMITText.Text(), "-12.34567") << "less the three of the integer part";
}

TEST(Form2, UnitsAreLearntOnceARead) {
  struct Case {
    const char* name;
    Shape shape;
    int channel;
    int kind, unit;  // what the meter holds
    bool tick_kind, tick_unit;
    Texts singles;
    const char* caption;
  };
  const std::string kFlag = "03 01 00 00 01";
  const Case cases[] = {
      {"flow", kOnePath, 0, 1, 8, false, false, {"03 00 02 00 01", kFlag, "03 00 04 00 01"}, "[m3/h]"},
      {"velocity", kOnePath, 0, 0, 8, false, false, {"03 00 02 00 01", kFlag, "03 00 04 00 01"}, "[m/s]"},
      {"feet", kTwoPaths, 0, 0, 0, false, false, {"03 00 02 00 01", kFlag, "03 00 04 00 01"}, "[ft/s]"},
      {"gallons", kTwoPaths, 0, 1, 1, false, false, {"03 00 02 00 01", kFlag, "03 00 04 00 01"}, "[gal/min]"},
      {"CH2", kTwoPipes, 1, 1, 0, false, false, {"03 13 8A 00 01", kFlag, "03 13 8C 00 01"}, "[L/s]"},
      {"CH3", kTwoPipes, 2, 1, 17, false, false, {"03 1B 5A 00 01", kFlag, "03 1B 5C 00 01"}, "[MBBL/d]"},
      {"both in the block", kTwoPaths, 0, 1, 2, true, true, {kFlag}, "[gal/h]"},
      {"kind in the block", kOnePath, 0, 1, 3, true, false, {}, "[L/s]"},       // the unit last known
      {"unit in the block", kOnePath, 0, 1, 4, false, true, {kFlag}, "[m/s]"},  // the kind last known
      {"no unit of the list", kOnePath, 0, 1, 99, false, true, {kFlag}, "[m/s]"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    PageTest test(c.shape);
    test.app().state.UnitFlag = 0;  // whatever the program believed before
    test.app().slots.At("RANGE", "RANGE_UNIT_Data") = "3";
    Form2& page = OpenChannel(test, c.channel);
    const int base = c.channel == 0 ? 0 : c.channel == 1 ? 0x1388 : 0x1B58;
    test.meter().holding().PutWord(static_cast<std::uint32_t>(base + 2), c.kind);
    test.meter().holding().PutWord(static_cast<std::uint32_t>(base + 4), c.unit);
    test.app().slots.At("RANGE", "ZERO_Unit") = "[old]";
    page.chkKind.SetValue(c.tick_kind ? 1 : 0);
    page.UNIT_SYSTEM.SetValue(c.tick_unit ? 1 : 0);
    for (CheckBox* box : {&page.FULL_SCALE1, &page.FULL_SCALE2, &page.RATE_LIMIT}) box->Tick();
    page.ReadParameter.Press();
    Texts requests = test.Requests();
    requests.erase(requests.begin(), requests.begin() + 3);  // the block and the configuration
    if (c.channel == 0) requests.pop_back();                 // the thermal block
    EXPECT_EQ(requests, c.singles);
    for (const int label : {6, 7, 8, 9, 12}) EXPECT_EQ(page.Label2(label).Caption(), c.caption) << label;
    EXPECT_EQ(test.app().slots.At("RANGE", "ZERO_Unit"), "") << "the caption on the page is right now";
    if (!c.singles.empty()) {
      EXPECT_EQ(page.UNIT_SYSTEMCombo.Items()[0], c.shape.unit_system == 0 ? "L/s" : "gal/s");
    }
    EXPECT_EQ(page.UNIT_SYSTEMCombo.ListIndex(), !c.tick_unit ? 3 : c.unit < 18 ? c.unit : -1);
  }
}

TEST(Form2, SingleRangeWritesNoSecondScale) {
  PageTest test(kOnePath);
  Form2& page = OpenForm2(test);
  page.chkCheck.Tick();
  page.FULL_SCALE2Text.Type("3");
  page.HYSTERISISText.Type("3");
  page.CALORIE_FULL_SCALE2Text.SetText("3");
  page.TypeCheckCombo.Choose(0);
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests()[0], "10 00 06 00 01 02 00 00");
  EXPECT_EQ(test.meter().holding().Double(0x0010), 15);
  EXPECT_EQ(page.FULL_SCALE2Text.Text(), "3") << "and the read leaves it alone";
}

TEST(Form2, ThirdChannelOfTwoPipesKnowsTheFlowAlone) {
  PageTest test(kTwoPipes);
  Form2& page = OpenForm2(test);
  page.chkCheck.Tick();
  // A kind that a computed channel should not have selects nothing; a lost answer about the pipes changes
  // nothing.
  page.ChannelSelect(2).Choose();
  for (const int kind : {1, 0}) {
    test.meter().holding().PutWord(0x1B5A, kind);
    test.test.platform.Arm("silence@03E8H*4");
    page.ReadParameter.Press();
    EXPECT_EQ(page.cmbKind.Items(), Texts{"FLOW RATE"});
    EXPECT_EQ(page.cmbKind.ListIndex(), kind == 1 ? 0 : -1);
    EXPECT_EQ(test.app().state.RangeKind[2], kind);
  }
  // The meter measures two paths since: there the third channel knows both, and heat.
  test.meter().holding().PutWord(0x03E8, 1);
  for (const bool by_read : {true, false}) {
    if (by_read) page.ReadParameter.Press();
    if (!by_read) page.Show();
    EXPECT_EQ(page.cmbKind.Items(), (Texts{"VELOCITY", "FLOW RATE"}));
    test.meter().holding().PutWord(0x03E8, 2);
    page.Show();
    EXPECT_EQ(page.cmbKind.Items(), Texts{"FLOW RATE"});
    test.meter().holding().PutWord(0x03E8, 1);
  }
}

TEST(Form2, ARunningExchangeKeepsItsChannel) {
  PageTest test(kTwoPipes);
  Form2& page = OpenForm2(test);
  page.chkCheck.Tick();
  test.test.Time().After(60, [&] { page.ChannelSelect(2).Choose(); });
  page.ReadParameter.Press();
  EXPECT_EQ(test.Requests().back(), "03 03 F0 00 08");
  EXPECT_EQ(test.app().state.RangeChannel, 0);
  EXPECT_TRUE(page.ChannelSelect(0).Value());
  EXPECT_EQ(page.SPANText.Text(), "100.00");
}

TEST(Form2, SlotsKeepTheFirstThermalScaleTwiceAndTheCaptionsOfTheirChannel) {
  PageTest test(kTwoPipes);
  PageSlots& slots = test.app().slots;
  slots.At("RANGE", "H_FULL_SCALE1_Data") = "11";
  slots.At("RANGE", "H_FULL_SCALE2_Data") = "22";
  slots.At("RANGE", "FULL_SCALE1_Unit") = "[old]";
  slots.At("RANGE", "DUMPING_Data") = "abc";
  Form2& page = OpenForm2(test);
  EXPECT_EQ(page.CALORIE_FULL_SCALE2Text.Text(), "22");
  ASSERT_TRUE(test.app().windows.Unload("Form2"));
  EXPECT_EQ(slots.At("RANGE", "H_FULL_SCALE2_Data"), "11");
  EXPECT_EQ(slots.At("RANGE", "DUMPING_Data"), "abc");

  // Another channel's units make the kept captions void.
  Form2& again = OpenForm2(test);
  EXPECT_EQ(again.Label2(7).Caption(), "[old]");
  again.ChannelSelect(1).Choose();
  EXPECT_EQ(again.Label2(7).Caption(), "[m/s]");
  OpenForm2(test);
  EXPECT_EQ(again.Label2(7).Caption(), "[m/s]");
}

}  // namespace
}  // namespace vlt::test
