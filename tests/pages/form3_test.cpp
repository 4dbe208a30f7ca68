// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form3.h"

#include "page_fixture.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

Form3& Open(PageTest& page) { return page.Open<Form3>("Form3"); }

Form3& OpenChannel(PageTest& test, int channel) {
  test.app().state.TotalChannel = channel;
  return Open(test);
}

TEST(Form3, FullSetWritesTheModeFirstAndReadsBackForEachChannelOfEachMeter) {
  const Texts total = {"10 00 42 00 01 02 00 01",
                       "10 00 40 00 01 02 00 03",
                       "10 00 44 00 04 08 3F 84 7A E1 47 AE 14 7B",
                       "10 00 4C 00 04 08 40 8F 40 00 00 00 00 00",
                       "10 00 54 00 01 02 00 05",
                       "10 00 56 00 01 02 00 01",
                       "10 00 58 00 01 02 00 1E"};
  const Texts heat = {"10 04 00 00 04 08 40 04 00 00 00 00 00 00",
                      "10 04 08 00 04 08 40 44 00 00 00 00 00 00"};
  const Texts config = {"03 01 48 00 01", "03 03 E8 00 01"};
  const std::string unit_system = "03 01 00 00 01";
  const std::string heat_block = "03 04 00 00 08";
  struct Case {
    Shape shape;
    int channel;
    int base;
    bool has_heat;
    Texts reads;
  };
  for (const Case& c : {
           Case{kOnePath, 0, 0, true, {"03 00 40 00 0D", unit_system, config[0], config[1], heat_block}},
           Case{kTwoPaths, 0, 0, true, {"03 00 40 00 0D", unit_system, config[0], config[1], heat_block}},
           Case{kTwoPipes, 0, 0, false, {"03 00 40 00 0D", unit_system, config[0], config[1], heat_block}},
           Case{kTwoPipes, 1, 0x1388, false, {"03 13 C8 00 0D", unit_system, config[0], config[1]}},
           Case{kTwoPipes, 2, 0x1B58, false, {"03 1B 98 00 0D", unit_system, config[0], config[1]}},
           Case{kSingleModel, 0, 0, false, {"03 00 40 00 0D", unit_system, config[0]}},
       }) {
    SCOPED_TRACE(std::string(c.shape.name) + ", channel " + std::to_string(c.channel));
    PageTest test(c.shape);
    Form3& page = OpenChannel(test, c.channel);
    page.MODECombo.SetListIndex(1);
    page.chkCheck.Tick();
    page.UNIT_SYSTEMCombo.Choose(3);
    page.ConstantCheckText.Type("0.01");
    page.F_TOTAL_PRESETText.Type("1000");
    page.PULSE_WIDTH_1Combo.Choose(5);
    page.OUTPUT_BURNOUTCombo.Choose(1);
    page.BURNOUT_TIMERText.Type("30");
    EXPECT_EQ(page.H_TOTAL_ConstantText.Type("2.5"), c.has_heat);
    EXPECT_EQ(page.C_TOTAL_PRESETText.Type("40"), c.has_heat);
    page.SetParameter.Press();
    Texts expected = Moved(total, c.base);
    if (c.has_heat) expected.insert(expected.end(), heat.begin(), heat.end());
    expected.insert(expected.end(), c.reads.begin(), c.reads.end());
    EXPECT_EQ(test.Requests(), expected);
    EXPECT_EQ(page.ConstantCheckText.Text(), "0.01");
    EXPECT_EQ(page.H_TOTAL_ConstantText.Text(), c.has_heat ? "2.5" : "");
    EXPECT_EQ(page.Label2(1).Caption(), c.shape.unit_system == 0 ? "[km3]" : "[kft3]");
    EXPECT_EQ(test.test.StatusText(), "Setting of total was completed ");
  }
}

TEST(Form3, ARunningTotalizerShowsItsSetUpButTakesNone) {
  PageTest test(kOnePath);
  Form3& page = Open(test);
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

TEST(Form3, OnlyStopUnlocksTheSetUp) {
  for (const Shape& shape : {kOnePath, kTwoPaths, kTwoPipes, kSingleModel}) {
    PageTest test(shape);
    Form3& page = Open(test);
    const bool has_heat = shape.specification == kFull && shape.path_mode < 2;
    for (CheckBox* box : {&page.H_TOTAL_ConstantCheck, &page.C_TOTAL_PRESETCheck}) {
      EXPECT_FALSE(box->Enabled()) << "nothing is selected yet";
      box->SetValue(1);
    }
    for (const bool ticked : {true, false}) {
      page.chkCheck.SetValue(ticked ? 1 : 0);
      EXPECT_EQ(page.H_TOTAL_ConstantCheck.Ticked(), ticked && has_heat);
      EXPECT_EQ(page.C_TOTAL_PRESETCheck.Ticked(), ticked && has_heat);
      EXPECT_EQ(page.F_TOTAL_PRESET.Ticked(), ticked);
      for (const int mode : {-1, 0, 1, 2}) {
        SCOPED_TRACE(std::string(shape.name) + ", mode " + std::to_string(mode));
        page.MODECombo.SetListIndex(mode);
        const bool stopped = mode == 1;
        const bool heat = stopped && has_heat;
        struct Row {
          CheckBox* box;
          Control* entry;
          Label* label;
          bool on;
        };
        for (const Row& row :
             {Row{&page.UNIT_SYSTEM, &page.UNIT_SYSTEMCombo, nullptr, stopped},
              Row{&page.ConstantCheck, &page.ConstantCheckText, &page.Label2(10), stopped},
              Row{&page.F_TOTAL_PRESET, &page.F_TOTAL_PRESETText, &page.Label2(1), stopped},
              Row{&page.PULSE_WIDTH_1, &page.PULSE_WIDTH_1Combo, &page.Label2(0), stopped},
              Row{&page.H_TOTAL_ConstantCheck, &page.H_TOTAL_ConstantText, &page.HSekisanlbl(0), heat},
              Row{&page.C_TOTAL_PRESETCheck, &page.C_TOTAL_PRESETText, &page.HSekisanlbl(1), heat}}) {
          EXPECT_EQ(row.box->Enabled(), row.on) << row.box->Name();
          EXPECT_EQ(row.entry->Enabled(), row.on && ticked) << row.box->Name();
          EXPECT_EQ(row.label == nullptr || row.label->Enabled(), row.on || row.label == nullptr);
        }
        EXPECT_TRUE(page.OUTPUT_BURNOUT.Enabled());
      }
    }
  }
}

TEST(Form3, ChoosingAChannelAsksForItsUnits) {
  PageTest test(kTwoPipes);
  Form3& page = Open(test);
  test.meter().holding().PutWord(0x13C8, 1);
  test.meter().holding().PutWord(0x1B98, 8);  // no metric unit
  test.meter().holding().PutWord(0x04B8, 5);
  struct Case {
    int channel;
    Texts requests;
    const char* caption;
  };
  for (const Case& c : {Case{1, {"03 13 C8 00 01", "03 04 B8 00 01"}, "[L]"},
                        Case{2, {"03 1B 98 00 01", "03 04 B8 00 01"}, "[mL]"}}) {
    page.ChannelSelect(c.channel).Choose();
    EXPECT_EQ(test.Requests(), c.requests);
    EXPECT_EQ(test.app().state.TotalChannel, c.channel);
    EXPECT_EQ(page.Label2(10).Caption(), c.caption);
    EXPECT_EQ(page.Label2(1).Caption(), c.caption);
    EXPECT_EQ(page.HSekisanlbl(0).Caption(), "[kW]");
    EXPECT_FALSE(test.app().state.UiLocked);
  }
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
    Form3& page = Open(test);
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
    Open(test);
    EXPECT_EQ(page.UNIT_SYSTEMCombo.ListIndex(), c.index) << c.slot;
    EXPECT_EQ(page.UNIT_SYSTEMCombo.Count(), c.unit_flag == 0 ? 8 : 9);
    EXPECT_EQ(test.app().slots.At("TOTAL", "TOTAL_UNIT_Data"), c.kept);
    EXPECT_EQ(test.app().state.TotalUnit[0], c.unit);
  }
}

TEST(Form3, SlotsKeepThePageAndItsCaptions) {
  PageTest test(kOnePath);
  PageSlots& slots = test.app().slots;
  const std::pair<const char*, const char*> file[] = {
      {"TOTAL_MODE_Data", "1"},     {"TOTAL_UNIT_Data", "7"},         {"TOTAL_RATE_Data", "0.5"},
      {"TOTAL_RATE_Unit", "[r]"},   {"F_TOTAL_PRESET_Unit", "0"},     {"H_TOTAL_RATE_Data", "3"},
      {"H_TOTAL_RATE_Unit", "[h]"}, {"TOTAL_PULSE_WIDTH1_Data", "6"}, {"TOTAL_BURNOUT_Data", "2"}};
  for (const auto& [key, value] : file) slots.At("TOTAL", key) = value;
  Form3& page = Open(test);
  EXPECT_EQ(page.UNIT_SYSTEMCombo.Text(), "kBBL");
  EXPECT_EQ(page.PULSE_WIDTH_1Combo.Text(), "1000.0");
  EXPECT_EQ(page.OUTPUT_BURNOUTCombo.ListIndex(), -1) << "beyond the list";
  EXPECT_EQ(page.Label2(10).Caption(), "[r]");
  EXPECT_EQ(page.Label2(1).Caption(), "[m3]");
  EXPECT_EQ(page.HSekisanlbl(0).Caption(), "[h]");
  EXPECT_TRUE(page.ConstantCheck.Enabled()) << "the kept mode is stop";
  ASSERT_TRUE(test.app().windows.Unload("Form3"));
  EXPECT_EQ(slots.At("TOTAL", "F_TOTAL_PRESET_Unit"), "[m3]");
  EXPECT_EQ(slots.At("TOTAL", "TOTAL_PULSE_WIDTH1_Unit"), "") << "no page fills it";
  EXPECT_EQ(slots.At("TOTAL", "TOTAL_BURNOUT_Data"), "-1");
}

TEST(Form3, AChannelOutOfUseIsToldAndTheUnitIsNamedInAFailure) {
  PageTest test(kOnePath);
  Form3& page = OpenChannel(test, 2);
  page.Mode.Tick();
  test.dialogs().Answer(MessageAnswer::kOk);
  page.ReadParameter.Press();
  EXPECT_EQ(test.dialogs().TakeTexts(), Texts{"Please choose CH correctly."});
  EXPECT_EQ(test.Requests(), Texts{});
  page.ChannelSelect(0).Choose();
  page.MODECombo.SetListIndex(1);
  page.Mode.Untick();
  page.UNIT_SYSTEM.Tick();
  page.UNIT_SYSTEMCombo.Choose(0);
  test.test.platform.Arm("exception=2@0040H*4");
  test.dialogs().Answer(MessageAnswer::kCancel);
  page.SetParameter.Press();
  EXPECT_EQ(test.dialogs().TakeTexts(), Texts{"TOTAL UNIT :Data has not been set up\nDoes it continue?"});
}

}  // namespace
}  // namespace vlt::test
