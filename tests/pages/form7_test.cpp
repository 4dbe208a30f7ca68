// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form7.h"

#include <cmath>

#include "page_fixture.h"
#include "state/tested_meters.h"
#include "values/number_text.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

Form7& OpenForm7(PageTest& page) { return page.Open<Form7>("Form7"); }

const Texts kShapeOfFull = {"03 01 48 00 01", "03 03 E8 00 01"};
const Texts kShapeOfSingle = {"03 01 48 00 01"};

Texts operator+(Texts first, const Texts& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

// Everything ticked, the third check of the digital outputs chosen where the meter has it.
void TickAll(Form7& page) {
  page.chkCheck.Tick();
  if (!page.OUTPUT_DO2_FREQUENCYCheck.Choose()) page.SEKISAN_PULSEOption.Choose();
}

TEST(Form7, AFullSetWritesOneRegisterAtATimeInOrder) {
  PageTest test(kOnePath);
  Form7& page = OpenForm7(test);
  page.AO_Check.Tick();
  EXPECT_FALSE(page.ADJUSTMENTCombo.Enabled()) << "its own box comes first";
  page.ADJUSTMENT.Tick();
  page.ADJUSTMENTCombo.Choose(0);
  page.ADJUSTMENText.Type("820.9");
  page.AO_DEFINITIONCheck.Tick();
  page.AO_DEFINITIONText.Type("50");
  EXPECT_EQ(page.AO2_DEFINITIONText.Text(), "") << "the other one is not in use";
  page.AO2_Check.Tick();
  page.ADJUSTMENT2.Tick();
  page.ADJUSTMENTCombo2.Choose(1);
  page.ADJUSTMENText2.Type("-2");
  page.AO2_DEFINITIONText.SetText("33");
  page.AO2_DEFINITIONCheck.Tick();
  EXPECT_EQ(page.AO2_DEFINITIONText.Text(), "50") << "that of the output in use counts";
  page.AO2_DEFINITIONText.Type("75");
  EXPECT_EQ(page.AO_DEFINITIONText.Text(), "75") << "both outputs are checked by one register";
  page.chkDO.Tick();
  page.OUTPUT_DOOption.Choose();
  page.OUTPUT_DOCombo.Choose(1);
  page.TEST_MODECheck.Tick();
  page.INPUT_DATAText.Type("40");
  page.TRACKING_TIMEText.Type("5");
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), (Texts{"06 01 42 03 34", "06 01 54 00 4B", "06 01 4C FF FE", "06 01 54 00 4B",
                                    "06 01 58 00 01", "06 01 5C 00 01", "06 01 5E 00 28", "06 01 60 00 05"} +
                              kShapeOfFull + Texts{"03 01 42 00 02", "03 01 4A 00 02", "03 01 54 00 07"}));
  EXPECT_EQ(page.ADJUSTMENText.Text(), "820");
  EXPECT_EQ(page.ADJUSTMENText2.Text(), "-2");
  EXPECT_EQ(page.AO2_DEFINITIONText.Text(), "75");
  EXPECT_EQ(page.OUTPUT_DOCombo.Text(), "OFF");
  EXPECT_EQ(test.test.StatusText(), "Setting of maintenance was completed ");
}

TEST(Form7, OfTheDigitalChecksOnlyTheChosenOneIsSet) {
  const struct {
    OptionButton Form7::*option;
    const char* write;
    const char* read;
  } cases[] = {
      {&Form7::OUTPUT_DOOption, "06 01 58 00 00", "03 01 54 00 07"},
      {&Form7::SEKISAN_PULSEOption, "06 01 56 00 64", "03 01 54 00 07"},
      {&Form7::OUTPUT_DO2_FREQUENCYCheck, "06 01 76 03 E8", "03 01 76 00 01"},
  };
  PageTest test(kTwoPipes);
  Form7& page = OpenForm7(test);
  page.OUTPUT_DOCombo.SetListIndex(0);
  page.SEKISAN_PULSEText.SetText("100");
  page.OUTPUT_DO2_FREQUENCYtxt.SetText("1000");
  EXPECT_FALSE(page.OUTPUT_DOOption.Choose()) << "not before the group is ticked";
  page.chkDO.Tick();
  for (const auto& c : cases) {
    (page.*c.option).Choose();
    const Control* entries[] = {&page.OUTPUT_DOCombo, &page.SEKISAN_PULSEText, &page.OUTPUT_DO2_FREQUENCYtxt};
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(entries[i]->Enabled(), &cases[i] == &c);
    page.SetParameter.Press();
    EXPECT_EQ(test.Requests(), (Texts{c.write} + kShapeOfFull + Texts{c.read}));
  }
  page.OUTPUT_DO2_FREQUENCYtxt.Type("");
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), kShapeOfFull + Texts{"03 01 76 00 01"}) << "a blank is not sent, and read";
  EXPECT_EQ(page.OUTPUT_DO2_FREQUENCYtxt.Text(), "1000");
}

TEST(Form7, TestModeNeedsBothValuesAndEndsByItsBox) {
  PageTest test(kOnePath);
  Form7& page = OpenForm7(test);
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), Texts{}) << "nothing is ticked and no value is there";
  for (TextBox* one : {&page.INPUT_DATAText, &page.TRACKING_TIMEText}) {
    one->SetText("40");
    page.SetParameter.Press();
    EXPECT_EQ(test.Requests(), Texts{}) << "one value alone has set no test mode";
    one->SetText("");
  }
  page.TEST_MODECheck.Tick();
  page.AO_Check.Tick();
  page.AO_DEFINITIONCheck.Tick();
  page.AO_DEFINITIONText.Type("50");
  page.INPUT_DATAText.Type("40");
  page.TRACKING_TIMEText.Type(" ");
  const std::string status = test.test.StatusText();
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), Texts{});
  EXPECT_EQ(test.test.StatusText(), status);
  EXPECT_NE(page.TRACKING_TIMEText.Mark(), "");
  EXPECT_EQ(page.Focused(), &page.TRACKING_TIMEText);
  page.AO_DEFINITIONCheck.Untick();
  page.AO_Check.Untick();
  page.TRACKING_TIMEText.Type("5");
  page.TEST_MODECheck.Untick();
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), Texts{"06 01 5C 00 00"}) << "nothing is ticked to be read back";
  EXPECT_EQ(test.test.StatusText(), "Setting of maintenance was completed ");
}

TEST(Form7, EachPointOfAnAdjustmentKeepsItsText) {
  PageTest test(kOnePath);
  Form7& page = OpenForm7(test);
  page.AO_Check.Tick();
  page.ADJUSTMENT.Tick();
  EXPECT_EQ(page.ADJUSTMENTCombo.Items(), (Texts{"4", "20"}));
  page.ADJUSTMENText.Type("811");
  page.ADJUSTMENTCombo.Choose(0);
  EXPECT_EQ(page.ADJUSTMENText.Text(), "811") << "typed before a point was chosen";
  page.ADJUSTMENTCombo.Choose(1);
  EXPECT_EQ(page.ADJUSTMENText.Text(), "");
  for (const auto& [point, address] : {std::pair{0, "0142"}, {1, "0144"}}) {
    page.ADJUSTMENTCombo.Choose(point);
    EXPECT_NE(page.ADJUSTMENText.Hint().find(address), std::string::npos);
    EXPECT_NE(page.ADJUSTMENT.Hint().find(address), std::string::npos);
  }
  page.ADJUSTMENText.Type("4001");
  page.ADJUSTMENTCombo.Choose(0);
  EXPECT_EQ(page.ADJUSTMENText.Text(), "811");
  page.ReadParameter.Press();
  EXPECT_EQ(page.ADJUSTMENText.Text(), "819");
  page.ADJUSTMENTCombo.Choose(1);
  EXPECT_EQ(page.ADJUSTMENText.Text(), "4095") << "a read brings both points";
}

TEST(Form7, AnAdjustmentIsShownAsItWasSent) {
  const struct {
    const char* typed;
    const char* write;
    const char* anew;  // shown by a page that does not know what was typed
  } cases[] = {{"32768", "06 01 42 80 00", "32768"},
               {"40000.9", "06 01 42 9C 40", "40000"},
               {"65535", "06 01 42 FF FF", "65535"},
               {"-2", "06 01 42 FF FE", "65534"},
               {"-0.5", "06 01 42 00 00", "0"}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.typed);
    PageTest test(kOnePath);
    const auto adjust = [&]() -> Form7& {
      Form7& page = OpenForm7(test);
      page.AO_Check.Tick();
      page.ADJUSTMENT.Tick();
      page.ADJUSTMENTCombo.Choose(0);
      return page;
    };
    Form7& page = adjust();
    page.ADJUSTMENText.SetText(c.typed);
    page.SetParameter.Press();
    EXPECT_EQ(test.Requests()[0], c.write);
    const std::string sent = FixedText(std::trunc(*ParseNumber(c.typed)) + 0.0, 0);
    EXPECT_EQ(page.ADJUSTMENText.Text(), sent);
    EXPECT_EQ(page.ADJUSTMENText.Origin(), ValueOrigin::kRead);
    page.ReadParameter.Press();
    EXPECT_EQ(page.ADJUSTMENText.Text(), sent);
    test.app().windows.Unload("Form7");
    test.app().state.Maintenance = {};
    adjust().ReadParameter.Press();
    EXPECT_EQ(adjust().ADJUSTMENText.Text(), c.anew);
  }
}

TEST(Form7, SpinButtonsNormaliseAndStayWithinTheField) {
  PageTest test(kOnePath);
  Form7& page = OpenForm7(test);
  page.AO_Check.Tick();
  page.ADJUSTMENTCombo.SetListIndex(0);
  const struct {
    const char* text;
    bool up;
    const char* result;
  } cases[] = {{"", true, "1"},          {"", false, "-1"},        {"0012.7", true, "13"},
               {"12.7", false, "11"},    {"65535", true, "65535"}, {"-9999", false, "-9999"},
               {"1.2.3", true, "1.2.3"}, {"12344", true, "12345"}};
  for (const auto& c : cases) {
    page.ADJUSTMENText.SetText(c.text);
    EXPECT_TRUE(c.up ? page.UpDown1.Up() : page.UpDown1.Down());
    EXPECT_EQ(page.ADJUSTMENText.Text(), c.result) << c.text;
  }
  page.ADJUSTMENText.SetText("7");
  page.UpDown1.Up();
  page.ADJUSTMENTCombo.SetListIndex(1);
  page.ADJUSTMENTCombo.SetListIndex(0);
  EXPECT_EQ(page.ADJUSTMENText.Text(), "8") << "remembered under its point";
  page.AO_DEFINITIONText.SetText("999");
  page.UpDown2.Up();
  EXPECT_EQ(page.AO_DEFINITIONText.Text(), "999");
  page.UpDown2.Down();
  EXPECT_EQ(page.AO_DEFINITIONText.Text(), "998");
  EXPECT_EQ(test.Requests(), Texts{});
  EXPECT_FALSE(page.UpDown3.Up()) << "its group is not ticked";
}

TEST(Form7, BadInputIsToldAndNothingIsSent) {
  PageTest test(kOnePath);
  Form7& page = OpenForm7(test);
  page.AO_Check.Tick();
  page.ADJUSTMENT.Tick();
  page.ADJUSTMENTCombo.Choose(0);
  page.ADJUSTMENText.Type("12x");
  test.dialogs().Answer(MessageAnswer::kOk);
  page.ADJUSTMENText.LoseFocus();
  EXPECT_EQ(test.dialogs().TakeTexts(), Texts{"Any data other than a number is not allowed"});
  EXPECT_EQ(page.ADJUSTMENText.Text(), "");
  EXPECT_EQ(page.Focused(), &page.ADJUSTMENText);
  page.chkDO.Tick();
  page.SEKISAN_PULSEOption.Choose();
  page.SEKISAN_PULSEText.Type("10");
  for (const char* text : {"65536", "99999", "1,2"}) {
    page.ADJUSTMENText.Type(text);
    page.SetParameter.Press();
    EXPECT_EQ(test.Requests(), Texts{}) << text;
    EXPECT_NE(test.test.StatusText().find("AO1 ADJUSTMENT"), std::string::npos);
    EXPECT_EQ(page.ADJUSTMENText.Text(), text);
  }
  page.ADJUSTMENText.Type("123456");
  EXPECT_EQ(page.ADJUSTMENText.Text(), "12345") << "five characters";
  page.INPUT_DATAText.SetText("40x");
  test.dialogs().Answer(MessageAnswer::kOk);
  page.TEST_MODECheck.Tick();
  EXPECT_EQ(test.dialogs().TakeTexts(), Texts{"Any data other than a number is not allowed"});
  EXPECT_EQ(page.INPUT_DATAText.Text(), "") << "judged when it can be typed into";
}

TEST(Form7, ATestThatCannotBeEndedIsTold) {
  PageTest test(kOnePath);
  Form7& page = OpenForm7(test);
  page.INPUT_DATAText.SetText("1");
  page.TRACKING_TIMEText.SetText("2");
  test.test.platform.Arm("exception=2@015CH*4");
  test.dialogs().Answer(MessageAnswer::kOk);
  page.SetParameter.Press();
  EXPECT_EQ(test.dialogs().TakeTexts(), Texts{"TEST Cancel :Data has not been set up\nDoes it continue?"});
}

TEST(Form7, AReadWithoutAnAnswerKeepsTheFieldsAndGoesOn) {
  PageTest test(kOnePath);
  Form7& page = OpenForm7(test);
  TickAll(page);
  page.AO_DEFINITIONText.Type("33");
  test.test.platform.Arm("silence@0154H*4");
  page.ReadParameter.Press();
  const Texts requests = test.Requests();
  EXPECT_EQ(std::count(requests.begin(), requests.end(), "03 01 76 00 01"), 0) << "skipped behind a failure";
  EXPECT_EQ(requests.back(), "04 24 80 00 04");
  EXPECT_EQ(page.AO_DEFINITIONText.Text(), "33");
  EXPECT_TRUE(page.ReleaseParameter.Enabled());
  EXPECT_TRUE(page.ReadParameter.Enabled());
}

TEST(Form7, TheTestStateIsEndedByOneWriteAndOneRead) {
  const std::string refused = "TEST MODE It has not canceled";
  const struct {
    const char* fault;
    Texts requests;
    bool ended;
  } cases[] = {
      {"", {"06 01 66 00 00", "03 01 66 00 01"}, true},
      {"ignore-write@0166H", {"06 01 66 00 00", "03 01 66 00 01"}, false},
      {"wrong-echo@0166H", {"06 01 66 00 00"}, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.fault);
    PageTest test(kOnePath);
    Form7& page = OpenForm7(test);
    test.meter().holding().PutWord(0x0166, 5);
    MeterIsInTest(test.app());
    if (*c.fault != '\0') test.test.platform.Arm(c.fault);
    if (!c.ended) {
      test.dialogs().Answer(MessageAnswer::kOk,
                            [&] { EXPECT_EQ(test.app().windows.MousePointer(), kNormalPointer); });
    }
    page.ReleaseParameter.Press();
    EXPECT_EQ(test.Requests(), c.requests);
    EXPECT_EQ(test.dialogs().TakeTexts(), c.ended ? Texts{} : Texts{refused});
    EXPECT_EQ(test.test.StatusText(), c.ended ? "Test mode cancellation was completed " : refused + " ");
    EXPECT_EQ(IsAnyMeterInTest(test.app()), !c.ended);
    EXPECT_FALSE(test.app().state.UiLocked);
  }
}

// A plant must not be left on simulated values because nobody sees them.
TEST(Form7, WhatBeginsATestIsKnownUntilItsEndIsConfirmed) {
  const struct {
    const char* what;
    std::function<void(Form7&)> choose;
    const char* fault;
    bool known;
  } cases[] = {
      {"adjustment", [](Form7& p) { p.ADJUSTMENT.Tick(), p.ADJUSTMENText.Type("800"); }, "", false},
      {"check at 0 %", [](Form7& p) { p.AO_DEFINITIONCheck.Tick(), p.AO_DEFINITIONText.Type("0"); }, "",
       true},
      {"not answered", [](Form7& p) { p.AO_DEFINITIONCheck.Tick(), p.AO_DEFINITIONText.Type("9"); },
       "silence@0154H*8", true},
      {"refused", [](Form7& p) { p.AO_DEFINITIONCheck.Tick(), p.AO_DEFINITIONText.Type("9"); },
       "exception=3@0154H*4", false},
      {"test mode",
       [](Form7& p) { p.TEST_MODECheck.Tick(), p.INPUT_DATAText.Type("0"), p.TRACKING_TIMEText.Type("0"); },
       "", true},
      {"test mode off", [](Form7& p) { p.INPUT_DATAText.SetText("1"), p.TRACKING_TIMEText.SetText("1"); }, "",
       false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    PageTest test(kOnePath);
    Form7& page = OpenForm7(test);
    page.AO_Check.Tick();
    page.ADJUSTMENTCombo.SetListIndex(0);
    c.choose(page);
    if (*c.fault != '\0') {
      test.test.platform.Arm(c.fault);
      test.dialogs().Answer(MessageAnswer::kOk);
    }
    page.SetParameter.Press();
    EXPECT_EQ(IsAnyMeterInTest(test.app()), c.known);
    EXPECT_EQ(test.test.MainWindow().test_state_shown, c.known ? 1 : 0);
    ASSERT_TRUE(test.app().windows.Unload("Form7"));
    EXPECT_EQ(IsAnyMeterInTest(test.app()), c.known) << "leaving the page ends nothing";
    OpenForm7(test).ReleaseParameter.Press();
    EXPECT_FALSE(IsAnyMeterInTest(test.app()));
  }
}

// Any one of them needs the registers of the test.
TEST(Form7, EachBoxOfTheTestReadsItsState) {
  const std::function<void(Form7&)> ticks[] = {
      [](Form7& p) { p.AO_Check.Tick(), p.AO_DEFINITIONCheck.Tick(); },
      [](Form7& p) { p.AO2_Check.Tick(), p.AO2_DEFINITIONCheck.Tick(); },
      [](Form7& p) { p.chkDO.Tick(), p.OUTPUT_DOOption.Choose(); },
      [](Form7& p) { p.TEST_MODECheck.Tick(); }};
  for (const auto& tick : ticks) {
    PageTest test(kOnePath);
    Form7& page = OpenForm7(test);
    tick(page);
    page.ReadParameter.Press();
    EXPECT_EQ(test.Requests(), kShapeOfFull + Texts{"03 01 54 00 07"});
  }
}

TEST(Form7, AReadFindsATestThatWasBegunElsewhere) {
  for (const int address : {0x0154, 0x0156, 0x0158, 0x015C, 0x0176, 0x015E}) {
    SCOPED_TRACE(address);
    PageTest test(kOnePath);
    Form7& page = OpenForm7(test);
    TickAll(page);
    page.ReadParameter.Press();
    EXPECT_FALSE(IsAnyMeterInTest(test.app()));
    test.meter().holding().PutWord(static_cast<std::uint32_t>(address), 1);
    page.ReadParameter.Press();
    EXPECT_EQ(IsAnyMeterInTest(test.app()), address != 0x015E) << "an input alone is no test";
  }
}

TEST(Form7, TestStatesBelongToTheMetersOfALine) {
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

TEST(Form7, WhatWasEnteredComesBackWithThePageAndGoesToNoFile) {
  PageTest test(kOnePath);
  Form7& page = OpenForm7(test);
  const PageSlots slots = test.app().slots;
  TickAll(page);
  page.ADJUSTMENTCombo.Choose(0);
  page.ADJUSTMENText.Type("801");
  page.ADJUSTMENTCombo.Choose(1);
  page.ADJUSTMENText.Type("4001");
  page.AO2_DEFINITIONText.Type("12");
  page.OUTPUT_DOCombo.SetListIndex(1);
  page.SEKISAN_PULSEText.SetText("7");
  page.OUTPUT_DO2_FREQUENCYtxt.Type("8");
  page.INPUT_DATAText.Type("9");
  page.TRACKING_TIMEText.Type("10");
  page.Form_Deactivate();
  EXPECT_FALSE(page.Visible());
  EXPECT_EQ(test.app().state.Maintenance.pulse, "7");
  page.Show();
  EXPECT_EQ(page.ADJUSTMENText.Text(), "4001") << "hiding loses nothing";
  ASSERT_TRUE(test.app().windows.Unload("Form7"));
  Form7& again = OpenForm7(test);
  EXPECT_EQ(again.ADJUSTMENTCombo.Text(), "20");
  EXPECT_EQ(again.ADJUSTMENText.Text(), "4001");
  again.ADJUSTMENTCombo.SetListIndex(0);
  EXPECT_EQ(again.ADJUSTMENText.Text(), "801");
  EXPECT_EQ(again.AO_DEFINITIONText.Text() + again.AO2_DEFINITIONText.Text(), "1212");
  EXPECT_EQ(again.OUTPUT_DOCombo.Text(), "OFF");
  EXPECT_EQ(again.SEKISAN_PULSEText.Text() + again.OUTPUT_DO2_FREQUENCYtxt.Text() +
                again.INPUT_DATAText.Text() + again.TRACKING_TIMEText.Text(),
            "78910");
  EXPECT_FALSE(again.TEST_MODECheck.Ticked());
  for (std::size_t i = 0; i < SlotRows().size(); ++i) EXPECT_EQ(test.app().slots[i], slots[i]);
}

}  // namespace
}  // namespace vlt::test
