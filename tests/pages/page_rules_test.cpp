// SPDX-License-Identifier: GPL-3.0-or-later
// What all parameter pages share.

#include "page_fixture.h"
#include "pages/form10.h"
#include "pages/form4.h"
#include "state/form_lock.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;
using namespace std::string_literals;

constexpr const char* kPages[] = {"Form10", "Form2", "Form3", "Form4", "Form5", "Form6", "Form7", "Form11"};

ParameterPage& OpenPage(PageTest& test, const char* name) { return test.Open<ParameterPage>(name); }

// A meter that answers no query of its shape: every page opens, reads and sets without harm.
TEST(Pages, AMeterOfUnknownShapeHarmsNoPage) {
  for (const char* name : kPages) {
    SCOPED_TRACE(name);
    PageTest test(kTwoPipes);
    test.test.platform.Arm("silence@0148H*ever");
    ParameterPage& page = OpenPage(test, name);
    EXPECT_EQ(test.app().state.SpecClass, -1);
    EXPECT_FALSE(IsAnyChecked(page)) << "the choice of a channel is no selection";
    page.chkCheck.Tick();
    if (Control* report = page.Find("Read_All_Set_Data")) static_cast<CheckBox*>(report)->Untick();
    page.ReadParameter.Press();
    page.SetParameter.Press();
    EXPECT_FALSE(test.app().state.UiLocked);
    EXPECT_TRUE(page.ReadParameter.Enabled() && page.chkCheck.Enabled());
    EXPECT_EQ(test.app().windows.MousePointer(), kNormalPointer);
    EXPECT_TRUE(test.app().windows.Unload(name));
  }
}

TEST(Pages, EveryCommandTellsThatThePortIsGoneAndThePageStaysUsable) {
  const std::string told = "The error occurred at the time of communication";
  for (const char* name : kPages) {
    SCOPED_TRACE(name);
    PageTest test(kOnePath);
    ParameterPage& page = OpenPage(test, name);
    const auto box = [&](const char* each) { return static_cast<CheckBox*>(page.Find(each)); };
    for (const char* all : {"chkCheck", "chkCheckHeat"}) {
      if (box(all) != nullptr) box(all)->Tick();
    }
    if (box("TEST_MODECheck") != nullptr) box("TEST_MODECheck")->Untick();
    bool closed = false;
    ClosePort(test.app(), closed);
    test.app().state.PortNo = "7";
    page.Show();
    EXPECT_EQ(test.dialogs().TakeTexts(), Texts{}) << "it opens all the same";
    for (const char* each :
         {"ReadParameter", "SetParameter", "ReadParameterHeat", "SetParameterHeat", "ReleaseParameter"}) {
      auto* command = static_cast<PushButton*>(page.Find(each));
      if (command == nullptr) continue;
      test.dialogs().Answer(MessageAnswer::kOk);
      command->Press();
      EXPECT_EQ(test.dialogs().TakeTexts(), Texts{told}) << each;
      EXPECT_EQ(test.test.StatusText().find(told), 0u);
      EXPECT_FALSE(test.app().state.UiLocked);
      EXPECT_EQ(test.app().windows.MousePointer(), kNormalPointer);
    }
  }
}

TEST(Pages, AValueThatCannotBeSentStopsTheSetBeforeTheFirstWrite) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form10>("Form10");
  page.OUTER_DIAMETER.Tick();
  page.OUTER_DIAMETERText.Type("60.5");
  page.KIND_OF_FLUID.Tick();
  page.KIND_OF_FLUIDCombo.Choose(17);
  page.FLUID_S_V.Tick();
  int selected = 0;
  const std::string range = "the meter's register holds -32768 to 32767";
  for (const auto& [text, reason] :
       {std::pair{"40000", range},
        {"12,5", "a comma is not taken: no grouping, and a point before the decimals"},
        {"1,234", "a comma is not taken: no grouping, and a point before the decimals"},
        {"1.2.3", "this is no number"},
        {"+", "this is no number"}}) {
    page.FLUID_S_VText.SetText(text);
    page.SetParameter.Press();
    EXPECT_EQ(test.Requests(), Texts{}) << text;
    EXPECT_EQ(test.dialogs().TakeTexts(), Texts{}) << "no box";
    EXPECT_EQ(test.test.StatusText(), "\nAn error has occurred. FLUID S.V.: " + reason);
    EXPECT_FALSE(test.app().state.UiLocked);
    EXPECT_EQ(page.Focused(), &page.FLUID_S_VText);
    EXPECT_GT(page.FLUID_S_VText.SelectAllCount(),
              std::exchange(selected, page.FLUID_S_VText.SelectAllCount()));
    EXPECT_NE(page.FLUID_S_VText.Mark(), "");
    EXPECT_EQ(page.FLUID_S_VText.Text(), text);
  }
  page.FLUID_S_VText.SetText("1480");
  page.SetParameter.Press();
  EXPECT_EQ(page.FLUID_S_VText.Mark(), "");
  EXPECT_EQ(test.Requests().front(), "10 00 D2 00 02 04 00 00 17 A2");
}

// The register takes what it can hold; where that is another number than a person would think, the field says
// so.
TEST(Pages, ANumberThatIsSentWithoutItsDecimalsOrAsZeroIsTold) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form10>("Form10");
  page.OUTER_DIAMETER.Tick();
  page.KIND_OF_FLUID.Tick();
  page.KIND_OF_FLUIDCombo.Choose(17);
  page.FLUID_S_V.Tick();
  const struct {
    const char* diameter;
    const char* velocity;
    const char* held_diameter;
    const char* held_velocity;
    const char* told_diameter;
    const char* told_velocity;
  } cases[] = {
      {"60.559", "1480.5", "60.55", "1480", "", "the register holds whole numbers: 1480.5 was sent as 1480"},
      {"0.009", "1e-5", "0.00", "0", "0.009 is less than a step of the register and was sent as 0.00",
       "1e-5 is less than a step of the register and was sent as 0"},
      {"60.5", "1480.0", "60.50", "1480", "", ""},
  };
  for (const auto& c : cases) {
    page.OUTER_DIAMETERText.Type(c.diameter);
    page.FLUID_S_VText.SetText(c.velocity);
    page.SetParameter.Press();
    EXPECT_EQ(page.OUTER_DIAMETERText.Text(), c.held_diameter);
    EXPECT_EQ(page.FLUID_S_VText.Text(), c.held_velocity);
    EXPECT_EQ(page.OUTER_DIAMETERText.Mark(), c.told_diameter);
    EXPECT_EQ(page.FLUID_S_VText.Mark(), c.told_velocity);
    EXPECT_EQ(test.dialogs().TakeTexts(), Texts{}) << "no box";
  }
}

TEST(Pages, TheReasonOfAFailedWriteStandsWhileItIsAskedAndStaysAtTheField) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form10>("Form10");
  page.OUTER_DIAMETER.Tick();
  page.OUTER_DIAMETERText.Type("60.5");
  for (const auto& [fault, reason] : {std::pair{"exception=2@00D2H*4", "[ADDRESS ERROR(02H)]"},
                                      std::pair{"wrong-echo@00D2H", "the meter repeated another value"}}) {
    test.test.platform.Arm(fault);
    std::string told;
    test.dialogs().Answer(MessageAnswer::kOk, [&] { told = test.test.StatusText(); });
    page.SetParameter.Press();
    EXPECT_EQ(told, std::string("OUTER DIAMETER: ") + reason);
    EXPECT_EQ(page.OUTER_DIAMETERText.Mark(), reason) << "the read-back that went well leaves it";
    test.dialogs().TakeTexts();
  }
  page.ReadParameter.Press();
  EXPECT_EQ(page.OUTER_DIAMETERText.Mark(), "");
}

// The meter repeats a write and does nothing: the read-back decides, not the echo.
TEST(Pages, AWriteThatTheMeterConfirmsAndIgnoresIsMarkedAndTold) {
  const struct {
    const char* page;
    const char* fault;
    std::vector<std::pair<const char*, const char*>> entries;  // what is typed, or the index that is chosen
    const char* marked;
    const char* mark;
    const char* status;
  } cases[] = {
      {"Form10",
       "ignore-write@00D2H/10*ever",
       {{"OUTER_DIAMETER", "114.3"}, {"WALL_THICKNESS", "4"}},
       "OUTER_DIAMETERText",
       "114.30 was sent, the meter holds 60.50",
       "Setting of process setting was completed OUTER DIAMETER: 114.30 was sent, the meter holds 60.50"},
      {"Form10",
       "ignore-write/10*ever",
       {{"KIND_OF_FLUID", "3"}, {"WALL_THICKNESS", "4"}},
       "KIND_OF_FLUIDCombo",
       "AMMONIA was sent, the meter holds WATER",
       "Setting of process setting was completed WALL THICKNESS: 4.00 was sent, the meter holds 3.80 (and 1 "
       "more)"},
      {"Form10",
       "ignore-write/10*ever",
       {{"VISCOSITY", "1.5"}},
       "VISCOSITYText",
       "1.5 was sent, the meter holds 1.0038",
       "Setting of process setting was completed VISCOSITY: 1.5 was sent, the meter holds 1.0038"},
      // What the register's step takes off is no failure, and no more is what the meter has taken.
      {"Form10",
       "",
       {{"OUTER_DIAMETER", "114.309"}, {"KIND_OF_FLUID", "3"}},
       "OUTER_DIAMETERText",
       "",
       "Setting of process setting was completed "},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.status);
    PageTest test(kOnePath);
    ParameterPage& page = OpenPage(test, c.page);
    for (const auto& [box, value] : c.entries) {
      static_cast<CheckBox*>(page.Find(box))->Tick();
      const std::string name(box);
      auto* text = dynamic_cast<TextBox*>(page.Find(name + "Text"));
      auto* list = dynamic_cast<ComboBox*>(page.Find(name + "Combo"));
      EXPECT_TRUE(text != nullptr ? text->Type(value) : list->Choose(std::stoi(value)));
    }
    OperationReport told;
    test.app().on_operation = [&](const OperationReport& report) { told = report; };
    if (*c.fault != 0) test.test.platform.Arm(c.fault);
    page.SetParameter.Press();
    EXPECT_EQ(page.Find(c.marked)->Mark(), c.mark);
    EXPECT_EQ(test.test.StatusText(), c.status);
    EXPECT_EQ(told.failed > 0, *c.mark != 0) << "so a strict script ends";
    EXPECT_EQ(test.dialogs().TakeTexts(), Texts{}) << "the echo was good";
    page.ReadParameter.Press();
    EXPECT_EQ(page.Find(c.marked)->Mark(), "") << "a read shows what is so";
  }
}

// What goes out in one frame, and what no entry shows.
TEST(Pages, JoinedWritesAndTheTestModeAreProvenToo) {
  PageTest test(kOnePath);
  test.test.platform.Arm("ignore-write@00C8H/10*ever");
  test.test.platform.Arm("ignore-write@015CH/06*ever");
  ParameterPage& display = OpenPage(test, "Form5");
  static_cast<CheckBox*>(display.Find("LCD_Check"))->Tick();
  static_cast<OptionButton*>(display.Find("optLCD(1)"))->Choose();
  static_cast<ComboBox*>(display.Find("cmbLCD_Time"))->Choose(3);
  display.SetParameter.Press();
  EXPECT_EQ(display.Find("cmbLCD_Time")->Mark(), "3 was sent, the meter holds 5");
  EXPECT_TRUE(display.Find("optLCD(0)")->Mark().ends_with(" was sent, the meter holds ON"))
      << display.Find("optLCD(0)")->Mark();
  EXPECT_TRUE(test.test.StatusText().ends_with(" (and 1 more)")) << test.test.StatusText();
  ParameterPage& maintenance = OpenPage(test, "Form7");
  static_cast<CheckBox*>(maintenance.Find("TEST_MODECheck"))->Tick();
  for (const char* name : {"INPUT_DATAText", "TRACKING_TIMEText"}) {
    static_cast<TextBox*>(maintenance.Find(name))->Type("4");
  }
  maintenance.SetParameter.Press();
  EXPECT_TRUE(test.test.StatusText().ends_with(": 0001 was sent, the meter holds 0000"))
      << test.test.StatusText();
}

TEST(Pages, ABadNumberIsToldAndKeepsTheFocusWhenItIsTypedAndWhenItsBoxIsTicked) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form10>("Form10");
  page.OUTER_DIAMETER.Tick();
  page.OUTER_DIAMETERText.Type("12a");
  page.WALL_THICKNESSText.SetText("1,234");
  const std::string comma =
      "A comma is not allowed: type the number without grouping, with a point before its decimals";
  for (const auto& [box, told] :
       {std::pair(&page.OUTER_DIAMETERText, "Any data other than a number is not allowed"s),
        {&page.WALL_THICKNESSText, comma}}) {
    test.dialogs().Answer(MessageAnswer::kOk);
    EXPECT_TRUE(box->LoseFocus() || page.WALL_THICKNESS.Tick());
    EXPECT_EQ(test.dialogs().TakeTexts(), Texts{told});
    EXPECT_EQ(page.Focused(), box);
    EXPECT_EQ(box->SelectAllCount(), 1);
    EXPECT_NE(box->Text(), "");
  }
}

// A box that stands for several fields names the registers of them all; each field names its own.
TEST(Pages, ABoxNamesTheRegistersOfAllItsFields) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form10>("Form10");
  const std::string first = page.SENSOR_SPACINGText.Hint();
  const std::string second = page.SENSOR_SPACING2Text.Hint();
  EXPECT_NE(first, second);
  EXPECT_EQ(page.SENSOR_SPACINGCheck.Hint(), first + "\n" + second);
  EXPECT_EQ(page.OUTER_DIAMETER.Hint(), page.OUTER_DIAMETERText.Hint());
}

TEST(Pages, APageThatIsLoadedOnlyToBeSavedKeepsItsUnits) {
  PageTest test(kOnePath);
  test.app().state.RangeKind[0] = 1;
  test.app().state.RangeUnit[0] = 8;
  test.app().slots.At("RANGE", "RANGE_UNIT_Data") = "3";
  test.app().windows.Load("Form2").Taihi();
  test.app().windows.Load("Form10").Taihi();
  EXPECT_EQ(test.app().slots.At("RANGE", "FULL_SCALE1_Unit"), "[m3/h]");
  EXPECT_EQ(test.app().slots.At("RANGE", "RANGE_UNIT_Data"), "3");
  EXPECT_EQ(test.app().slots.At("PROCESS SETTING", "VISCOSITY_Unit"), "[E-6m2/s]");
}

TEST(Pages, StatusUnitsFollowTheChosenChannelAndStayRight) {
  PageTest test(kTwoPipes);
  auto& state = test.app().state;
  state.RangeKind = {1, 0, 1};
  state.RangeUnit = {8, 8, 8};
  auto& page = test.Open<Form4>("Form4");
  page.SELECT_Check.Tick();
  page.CH_Combo.Choose(0);
  EXPECT_EQ(page.LabelRyuryoUnit(0).Caption(), "[m3/h]");
  page.Taihi();  // as before a file is written
  page.CH_Combo.Choose(1);
  EXPECT_EQ(page.LabelRyuryoUnit(0).Caption(), "[m/s]");
  page.Hide();
  page.FrmInit();
  page.Show();
  EXPECT_EQ(page.LabelRyuryoUnit(0).Caption(), "[m/s]") << "not what was kept of the other channel";
  // What a file brings stands, whatever its channel selects.
  test.app().slots.At("STATUS", "CH_SELECT") = "2";
  test.app().slots.At("STATUS", "DO_FLOW_SW_HIGH_Unit") = "[L/s]";
  page.SetteiHannei();
  EXPECT_EQ(page.LabelRyuryoUnit(0).Caption(), "[L/s]");
}

TEST(Pages, AStatusReadTakesTheUnitSystemOfTheMeter) {
  PageTest test({"one path, English", kFull, 0, 1});
  test.app().state.UnitFlag = 0;
  auto& page = test.Open<Form4>("Form4");
  test.meter().holding().PutWord(0x0002, 0);  // velocity
  page.SELECT_Check.Tick();
  page.ReadParameter.Press();
  EXPECT_EQ(test.app().state.UnitFlag, 1);
  for (const int point : {0, 1}) EXPECT_EQ(page.LabelRyuryoUnit(point).Caption(), "[ft/s]");
}

}  // namespace
}  // namespace vlt::test
