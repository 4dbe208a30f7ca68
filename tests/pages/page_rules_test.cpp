// SPDX-License-Identifier: GPL-3.0-or-later
// What all parameter pages share.

#include "link/operation.h"
#include "page_fixture.h"
#include "pages/form11.h"
#include "state/form_lock.h"
#include "state/tested_meters.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

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

TEST(Pages, TestStatesBelongToTheMetersOfALine) {
  PageTest test(kOnePath);
  App& app = test.app();
  MeterIsInTest(app);
  app.state.StationNo = "12";
  MeterIsInTest(app);
  EXPECT_EQ(MetersInTestText(app), "COM1-01, COM1-12");
  app.state.StationNo = "02";
  MeterTestHasEnded(app);
  app.state.StationNo = "01";
  MeterTestHasEnded(app);
  EXPECT_EQ(MetersInTestText(app), "COM1-12");
  app.state.PortNo = "3";
  app.state.StationNo = "00";
  MeterIsInTest(app);
  EXPECT_EQ(MetersInTestText(app), "COM1-12, COM3");
}

TEST(Pages, TheMeasuringMethodIsReadForTheWaves) {
  PageTest test(kTwoPipes);
  auto& page = test.Open<Form11>("Form11");
  test.meter().holding().PutWord(0x149C, 2);
  page.DetailChSelect(1).Choose();
  int method = -1;
  Operation operation(test.app(), page, Operation::kUnnamed);
  EXPECT_TRUE(page.Read_Houshiki(method));
  EXPECT_EQ(method, 2);
  EXPECT_TRUE(page.Read_HoushikiCH(0, method));
  EXPECT_EQ(method, 0);
  EXPECT_EQ(test.Requests(), (Texts{"03 14 9C 00 01", "03 01 9C 00 01"}));
  test.test.platform.Arm("silence*ever");
  test.dialogs().Answer(MessageAnswer::kOk);
  EXPECT_FALSE(page.Read_Houshiki(method));
  EXPECT_EQ(test.dialogs().TakeTexts(), Texts{"The error occurred at the time of communication"});
  EXPECT_EQ(method, 0);
}

}  // namespace
}  // namespace vlt::test
