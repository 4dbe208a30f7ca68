// SPDX-License-Identifier: GPL-3.0-or-later
// The energy tab of the process page.

#include "page_fixture.h"
#include "pages/form10.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kReadAll = "03 04 B4 00 32";

// The energy tab of a meter that may have it.
HeatColumn& OpenHeat(PageTest& test) {
  auto& page = test.Open<Form10>("Form10");
  EXPECT_TRUE(page.SetParameter2.Select(1));
  return page.Heat;
}

// Values for every field; the lists leave supply measured and return fixed.
void FillAll(HeatColumn& heat) {
  heat.chkCheckHeat.Tick();
  heat.TEMPERATURECombo.Choose(1);
  heat.HEAT_FLOW_RATECombo.Choose(6);
  heat.HEAT_FLOW_RATE_SekisanCombo.Choose(2);
  heat.MODECombo.Choose(1);
  heat.RUNCombo.Choose(2);
  heat.SUPPLY_TEMPERATURECombo.Choose(0);
  heat.RETURNER_TEMPERATURECombo.Choose(1);
  heat.TEMPERATURE_INPUT_SIGNALCombo.Choose(1);
  heat.SWITCH_TEMPERATUREText.Type("293.157");
  heat.HYSTERESISText.Type("1.5");
  heat.HTEMPCONVText.Type("4.1868");
  heat.CTEMPCONVText.Type("4");
  heat.SET_UP_RETURNER_TEMPERATUREText.Type("-12.25");
  heat.SUPPLY_TEMP_ZEROText.Type("0.125");
  heat.SUPPLY_TEMP_SPANText.Type("99.5");
  heat.SUPPLY_TEMP_FILTERText.Type("7.9");
}

TEST(HeatColumn, FullSetWritesInItsOwnOrderAndReadsBackInOneBlock) {
  PageTest test(kOnePath);
  HeatColumn& heat = OpenHeat(test);
  FillAll(heat);
  ASSERT_EQ(heat.SUPPLY_TEMP_SPANText.Text(), "99.") << "three characters";
  heat.SetParameterHeat.Press();
  const Texts expected = {
      "10 04 B4 00 01 02 00 01",                    // kelvin
      "10 04 B6 00 01 02 00 06",                    //
      "10 04 B8 00 01 02 00 02",                    //
      "10 04 BA 00 01 02 00 01",                    //
      "10 04 BC 00 01 02 00 02",                    // cools and heats
      "10 04 D4 00 04 08 40 72 52 83 12 6E 97 8D",  // as typed, whatever is shown
      "10 04 DC 00 04 08 3F F8 00 00 00 00 00 00",  //
      "10 04 CC 00 04 08 40 10 BF 48 7F CB 92 3A",  // heating before cooling
      "10 04 C4 00 04 08 40 10 00 00 00 00 00 00",  //
      "10 04 BE 00 01 02 00 00",                    //
      "10 04 C0 00 01 02 00 01",                    // the supply temperature is measured, so not set
      "10 04 EC 00 04 08 C0 28 80 00 00 00 00 00",  //
      "10 04 C2 00 01 02 00 01",                    //
      "10 04 F4 00 04 08 3F C0 00 00 00 00 00 00",  // and calibrated
      "10 04 FC 00 04 08 40 58 C0 00 00 00 00 00",  //
      "10 05 14 00 01 02 00 07",                    // an integer
      kReadAll,
  };
  EXPECT_EQ(test.Requests(), expected);
  EXPECT_EQ(heat.SWITCH_TEMPERATUREText.Text(), "293.15") << "kelvin: two decimals, cut";
  EXPECT_EQ(heat.HTEMPCONVText.Text(), "4.187");
  EXPECT_EQ(heat.CTEMPCONVText.Text(), "4.000");
  EXPECT_EQ(heat.SET_UP_RETURNER_TEMPERATUREText.Text(), "-12.25");
  EXPECT_EQ(heat.SUPPLY_TEMP_SPANText.Text(), "99");
  EXPECT_EQ(heat.SUPPLY_TEMP_FILTERText.Text(), "7");
  EXPECT_EQ(heat.RETURNER_TEMP_ZEROText.Text(), "") << "disabled by its list";
  EXPECT_EQ(test.test.StatusText(), "Setting of process setting was completed ");
  EXPECT_FALSE(test.app().state.UiLocked);
}

TEST(HeatColumn, ReadShowsTemperaturesByTheirUnitAndTellsOtherPagesTheUnits) {
  struct Case {
    int unit;
    const char* caption;
    const char* zero;
    const char* change;
  };
  for (const Case& c :
       {Case{0, "[degC]", "0.0", "20.0"}, Case{1, "[K]", "0.00", "20.00"}, Case{2, "[F]", "0.00", "20.00"}}) {
    SCOPED_TRACE(c.caption);
    PageTest test(kOnePath);
    HeatColumn& heat = OpenHeat(test);
    heat.RUNCombo.SetListIndex(2);  // not ticked: the page goes by what it shows
    test.meter().holding().PutWord(0x04B4, c.unit);
    test.meter().holding().PutWord(0x04B6, 1);
    test.app().slots.At("RANGE", "H_FULL_SCALE1_Unit") = "[MJ/h]";
    test.app().slots.At("TOTAL", "H_TOTAL_RATE_Unit") = "[MJ]";
    for (CheckBox* box : {&heat.TEMPERATURECheck, &heat.HEAT_FLOW_RATECheck, &heat.SWITCH_TEMPERATURECheck,
                          &heat.SUPPLY_TEMP_ZEROCheck, &heat.SUPPLY_TEMP_SPANCheck}) {
      box->Tick();
    }
    heat.HYSTERESISText.SetText("7");
    heat.ReadParameterHeat.Press();
    EXPECT_EQ(test.Requests(), Texts{kReadAll}) << "the block brings its units itself";
    EXPECT_EQ(heat.SWITCH_TEMPERATUREText.Text(), c.change);
    EXPECT_EQ(heat.SUPPLY_TEMP_ZEROText.Text(), c.zero);
    EXPECT_EQ(heat.SUPPLY_TEMP_SPANText.Text(), "100");
    EXPECT_EQ(heat.HYSTERESISText.Text(), "7") << "not ticked";
    heat.lblTemp.ForEach([&](const Label& label) { EXPECT_EQ(label.Caption(), c.caption); });
    EXPECT_EQ(heat.lblPer(1).Caption(), "[%]");
    EXPECT_EQ(heat.lblSec(0).Caption(), "[sec]");
    EXPECT_EQ(test.app().state.TempUnit, c.unit);
    EXPECT_EQ(test.app().state.HeatFlowUnit, 1);
    EXPECT_EQ(test.app().slots.At("RANGE", "H_FULL_SCALE1_Unit"), "") << "kept for another unit";
    EXPECT_EQ(test.app().slots.At("TOTAL", "H_TOTAL_RATE_Unit"), "[MJ]") << "not asked for";
    heat.HEAT_FLOW_RATE_SekisanCheck.Tick();
    heat.ReadParameterHeat.Press();
    EXPECT_EQ(test.app().slots.At("TOTAL", "H_TOTAL_RATE_Unit"), "");
  }
}

TEST(HeatColumn, UnknownUnitTickLeavesTheLastUnitInForce) {
  PageTest test(kOnePath);
  HeatColumn& heat = OpenHeat(test);
  test.app().state.TempUnit = 1;
  heat.SUPPLY_TEMP_ZEROCheck.Tick();
  heat.ReadParameterHeat.Press();
  EXPECT_EQ(heat.SUPPLY_TEMP_ZEROText.Text(), "0.00");
  EXPECT_EQ(heat.lblTemp(4).Caption(), "[K]");
}

TEST(HeatColumn, TheTabIsThereForAFullModelOnOnePipe) {
  PageTest test(kOnePath);
  HeatColumn& heat = OpenHeat(test);
  auto& page = static_cast<Form10&>(*test.app().windows.Find("Form10"));
  page.chkCheck.Tick();
  EXPECT_FALSE(heat.TEMPERATURECheck.Ticked()) << "each tab has its own column";
  test.meter().holding().PutWord(0x03E8, 2);
  page.Show();
  EXPECT_FALSE(page.SetParameter2.TabEnabled(1));
  EXPECT_EQ(page.SetParameter2.Tab(), 0) << "a tab that can't be reached does not stay on the screen";
  EXPECT_FALSE(page.SetParameter2.Select(1));
  test.meter().holding().PutWord(0x03E8, 1);
  page.Show();
  EXPECT_TRUE(page.SetParameter2.Select(1));
}

TEST(HeatColumn, ANumberThatDoesNotFitIsTold) {
  PageTest test(kOnePath);
  HeatColumn& heat = OpenHeat(test);
  heat.chkCheckHeat.Tick();
  heat.chkCheckHeat.Untick();
  heat.RETURNER_TEMP_FILTERCheck.Tick();
  // Does not fit; "1.2.3" is no number. Nothing is sent, and the status line says which of the two it is.
  heat.RETURNER_TEMP_FILTERText.SetText("40000");
  heat.SetParameterHeat.Press();
  EXPECT_EQ(test.Requests(), Texts{});
  EXPECT_EQ(test.test.StatusText(),
            "\nAn error has occurred. RETURN TEMP. DAMPING: the meter's register holds -32768 to 32767");
  EXPECT_NE(heat.RETURNER_TEMP_FILTERText.Mark(), "");
}

TEST(HeatColumn, SlotsCarryBothTabsAndTheMasterBoxIsLockedWithTheButtons) {
  PageTest test(kOnePath);
  HeatColumn& heat = OpenHeat(test);
  FillAll(heat);
  heat.SaveParameterHeat.Press();
  EXPECT_EQ(test.test.StatusText(), "Preservation was completed ");
  bool looked = false;
  test.test.Time().After(60, [&] {
    looked = true;
    EXPECT_FALSE(heat.chkCheckHeat.Enabled());
    EXPECT_FALSE(heat.SetParameterHeat.Enabled());
  });
  heat.ReadParameterHeat.Press();
  EXPECT_TRUE(looked);
  ASSERT_TRUE(test.app().windows.Unload("Form10"));
  PageSlots& slots = test.app().slots;
  EXPECT_EQ(slots.At("HEAT SETTING", "RUN_Data"), "1") << "what the meter holds";
  EXPECT_EQ(slots.At("HEAT SETTING", "SWITCHTEMP_Unit"), "[degC]");
  EXPECT_EQ(slots.At("HEAT SETTING", "SUPPLYTEMPFILTER_Unit"), "[sec]");
}

}  // namespace
}  // namespace vlt::test
