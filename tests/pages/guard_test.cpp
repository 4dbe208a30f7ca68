// SPDX-License-Identifier: GPL-3.0-or-later
// No write under a stale unit or channel: what a set asks, refuses and tells when the meter is not what its
// values were entered for.
#include <algorithm>

#include "files/parameter_file.h"
#include "meter/device_queries.h"
#include "pages/form10.h"
#include "pages/form2.h"
#include "pages/form6.h"
#include "pages/form7.h"
#include "tests/pages/page_fixture.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

// So long that what is known of the meter has to be asked again.
constexpr int kLongMs = 11'000;

Texts Writes(PageTest& test) {
  Texts requests = test.Requests();
  std::erase_if(requests, [](const std::string& request) {
    return !request.starts_with("06") && !request.starts_with("10");
  });
  return requests;
}

Form10& OpenProcess(PageTest& test) {
  auto& page = test.Open<Form10>("Form10");
  page.OUTER_DIAMETER.Tick();
  page.OUTER_DIAMETERText.Type("60.5");
  return page;
}

// As the page's button does it.
void HidePage(PageTest& test, Form& page) {
  test.app().windows.Run([&] { page.RunHook(&FormHooks::Form_Deactivate); });
}

void MeterKey(PageTest& test, int address, int value) {
  const std::uint8_t request[] = {6, static_cast<std::uint8_t>(address >> 8),
                                  static_cast<std::uint8_t>(address), 0, static_cast<std::uint8_t>(value)};
  test.meter().Serve(request, test.test.Time().NowMs() * 1000);
}

const std::string kTypedMm = "typed for [mm], the meter is in ENGLISH units";

// --- the unit system
// -----------------------------------------------------------------------------------------

// Set by the program itself, on a page above; by the meter's keys; in the meter of another station.
TEST(Guard, AValueTypedForMillimetresIsNotSentAsInches) {
  const std::function<void(PageTest&)> changes[] = {
      [](PageTest& test) {
        auto& system = test.Open<Form6>("Form6");
        system.UNIT_SYSTEM.Tick();
        system.UNIT_SYSTEMCombo.Choose(1);
        system.SetParameter.Press();
        HidePage(test, system);
      },
      [](PageTest& test) {
        MeterKey(test, 0x0100, 1);
        test.test.Time().RunFor(kLongMs);
      },
      [](PageTest& test) {
        test.test.platform.line.AddStation(2, MeterOf({"", kFull, 0, 1}));
        test.app().state.StationNo = "02";
      },
      // Written, and nobody knows what became of it.
      [](PageTest& test) {
        auto& system = test.Open<Form6>("Form6");
        system.UNIT_SYSTEM.Tick();
        system.UNIT_SYSTEMCombo.Choose(1);
        test.test.platform.Arm("silence@0100H/03*ever");
        system.SetParameter.Press();
        test.test.platform.line.faults().Clear();
        HidePage(test, system);
      },
  };
  for (const auto& change : changes) {
    PageTest test(kOnePath);
    Form10& page = OpenProcess(test);
    change(test);
    test.Requests();
    page.SetParameter.Press();
    EXPECT_EQ(Writes(test), Texts{});
    EXPECT_EQ(page.OUTER_DIAMETERText.Text(), "60.5") << "what was typed stays";
    EXPECT_EQ(page.OUTER_DIAMETERText.Mark(), kTypedMm);
    EXPECT_EQ(page.Label8(0).Caption(), "[inch]") << "the page shows the meter";
    EXPECT_EQ(test.test.StatusText(), "Nothing was set: OUTER DIAMETER: " + kTypedMm);
    EXPECT_FALSE(test.app().state.UiLocked);
    page.SetParameter.Press();
    EXPECT_EQ(Writes(test), Texts{}) << "nor at the second press";
    page.OUTER_DIAMETERText.Type("4.5");
    page.SetParameter.Press();
    EXPECT_EQ(Writes(test), Texts{"10 00 D2 00 02 04 00 00 AF C8"}) << "4.5000 inch";
  }
}

TEST(Guard, MemoryInitialisationMakesWhatWasKnownUnknown) {
  PageTest test(kOnePath);
  MeterKey(test, 0x0100, 1);
  GetUnitFlag(test.app());
  Form10& page = OpenProcess(test);
  page.OUTER_DIAMETERText.Type("4.5");
  auto& system = test.Open<Form6>("Form6");
  test.dialogs().Answer(MessageAnswer::kOk);
  test.dialogs().Answer(MessageAnswer::kOk);
  system.CommandMemoryInit.Press();
  HidePage(test, system);
  test.Requests();
  page.SetParameter.Press();
  EXPECT_EQ(Writes(test), Texts{});
  EXPECT_EQ(page.OUTER_DIAMETERText.Mark(), "typed for [inch], the meter is in METRIC units");
}

// The unit of a flow belongs to it as well as the unit system.
TEST(Guard, AFlowIsHeldAgainstTheUnitOfItsChannel) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form2>("Form2");
  page.FULL_SCALE1.Tick();
  page.ReadParameter.Press();
  page.FULL_SCALE1Text.Type("100");
  const std::string unit = page.Label2(7).Caption();
  MeterKey(test, 0x0004, 5);
  test.test.Time().RunFor(kLongMs);
  page.SetParameter.Press();
  EXPECT_EQ(Writes(test), Texts{});
  EXPECT_NE(page.Label2(7).Caption(), unit);
  EXPECT_EQ(page.FULL_SCALE1Text.Mark(),
            "typed for " + unit + ", the meter's unit is " + page.Label2(7).Caption());
}

// Its values carry the units that the file gives them, by captions or by its unit system.
TEST(Guard, AFileOfTheOtherUnitSystemIsNotSent) {
  for (const char* caption : {"[inch]", "0", ""}) {
    PageTest test(kOnePath);
    test.platform_files()["/data/plant.ini"] =
        "[SYSTEM]\r\nUNIT_FLAG=1\r\n[PROCESS SETTING]\r\nOUTER_DIAMETER_Data=4.5\r\nOUTER_DIAMETER_Unit=" +
        std::string(caption) + "\r\n";
    test.app().windows.Run([&] { OpenParameterFile(test.app(), "/data/plant.ini"); });
    auto& page = test.Open<Form10>("Form10");
    page.OUTER_DIAMETER.Tick();
    page.SetParameter.Press();
    EXPECT_EQ(Writes(test), Texts{}) << caption;
    EXPECT_EQ(page.OUTER_DIAMETERText.Mark(), "from a file for [inch], the meter is in METRIC units");
    EXPECT_EQ(page.OUTER_DIAMETERText.Text(), "4.5");
  }
}

TEST(Guard, AFactThatHasNoAnswerOrNoMeaningKeepsTheSetBack) {
  PageTest test(kOnePath);
  Form10& page = OpenProcess(test);
  test.test.Time().RunFor(kLongMs);
  test.test.platform.Arm("silence@0100H*ever");
  page.SetParameter.Press();
  EXPECT_EQ(Writes(test), Texts{});
  EXPECT_EQ(test.test.StatusText(),
            "Nothing was set: SYSTEM UNIT of the meter could not be read: [NO RESPONSE ERROR]");
  test.test.platform.line.faults().Clear();
  test.test.Time().RunFor(kLongMs);
  test.meter().holding().PutWord(0x0100, 81);
  page.SetParameter.Press();
  EXPECT_EQ(Writes(test), Texts{});
  EXPECT_NE(test.test.StatusText().find(" is 81"), std::string::npos) << test.test.StatusText();
  EXPECT_EQ(test.test.MainWindow().Status().Panel(3), "81");
  auto& system = test.Open<Form6>("Form6");
  system.UNIT_SYSTEM.Tick();
  system.ReadParameter.Press();
  EXPECT_EQ(system.UNIT_SYSTEMCombo.ListIndex(), -1);
  EXPECT_EQ(system.UNIT_SYSTEMCombo.Mark(), "The meter holds 81, which means nothing here");
}

// --- channels and outputs
// ------------------------------------------------------------------------------------

TEST(Guard, AChannelThatTheMeterHasNotIsNeverWritten) {
  PageTest test(kTwoPipes);
  Form10& page = OpenProcess(test);
  page.ChannelSelect(1).Choose();
  MeterKey(test, 0x03E8, 0);
  test.test.Time().RunFor(kLongMs);
  test.Requests();
  page.SetParameter.Press();
  EXPECT_EQ(Writes(test), Texts{});
  EXPECT_EQ(page.OUTER_DIAMETERText.Mark(), "the meter has no CH2");
  EXPECT_FALSE(page.ChannelSelect(1).Enabled());
  MeterKey(test, 0x03E8, 2);
  test.test.Time().RunFor(kLongMs);
  // The same for a command: no zero of a pipe that is not there.
  page.Show();
  MeterKey(test, 0x03E8, 0);
  test.test.Time().RunFor(kLongMs);
  test.Requests();
  test.dialogs().Answer(MessageAnswer::kOk);
  page.CmdBtnAdjust.Press();
  EXPECT_EQ(Writes(test), Texts{});
  EXPECT_NE(test.test.StatusText().find("the meter has no CH2"), std::string::npos);
}

TEST(Guard, ThePageThatComesBackOffersWhatTheMeterHasNow) {
  PageTest test(kTwoPipes);
  Form10& page = OpenProcess(test);
  page.ChannelSelect(1).Choose();
  auto& system = test.Open<Form6>("Form6");
  system.MEASUREMENT_MODECheck.Tick();
  system.MEASUREMENT_MODECombo.Choose(0);
  system.SetParameter.Press();
  HidePage(test, system);
  EXPECT_FALSE(page.ChannelSelect(1).Enabled()) << "the page was activated";
  EXPECT_TRUE(page.SetParameter2.TabEnabled(1)) << "and has the heat calculation now";
}

TEST(Guard, AnOutputThatASingleChannelMeterHasNotIsNeverWritten) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form7>("Form7");
  for (CheckBox* box : {&page.AO2_Check, &page.ADJUSTMENT2}) box->Tick();
  page.ADJUSTMENTCombo2.Choose(0);
  page.ADJUSTMENText2.Type("4000");
  test.test.platform.line.AddStation(1, MeterOf(kSingleModel));
  test.test.Time().RunFor(kLongMs);
  test.Requests();
  page.SetParameter.Press();
  EXPECT_EQ(Writes(test), Texts{});
}

// --- what was read
// -------------------------------------------------------------------------------------------

// An entry shows eight digits of it.
TEST(Guard, WhatStillShowsWhatWasReadIsWrittenAsItWasRead) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form2>("Form2");
  const std::vector<std::uint8_t> held = {0x41, 0x9D, 0x6F, 0x34, 0x54, 0x7A, 0xE1, 0x48};  // 123456789.12
  test.meter().holding().Write(0x0024, held);
  page.RATE_LIMIT.Tick();
  page.ReadParameter.Press();
  EXPECT_EQ(page.RATE_LIMITText.Text(), "123456780");
  test.Requests();
  page.SetParameter.Press();
  EXPECT_EQ(Writes(test), Texts{"10 00 24 00 04 08 41 9D 6F 34 54 7A E1 48"});
  page.RATE_LIMITText.Type("5");
  page.SetParameter.Press();
  EXPECT_EQ(Writes(test), Texts{"10 00 24 00 04 08 40 14 00 00 00 00 00 00"});
}

// Facts that are known and fresh cost nothing: the frames are the writes and the read-back.
TEST(Guard, AsksOnlyWhatIsUnknownOrOld) {
  PageTest test(kOnePath);
  Form10& page = OpenProcess(test);
  test.Requests();
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests().at(0).substr(0, 8), "10 00 D2");
  test.test.Time().RunFor(kLongMs);
  page.SetParameter.Press();
  const Texts requests = test.Requests();
  EXPECT_EQ(requests.at(0), "03 01 00 00 01");
  EXPECT_EQ(requests.at(1).substr(0, 8), "10 00 D2");
}

}  // namespace
}  // namespace vlt::test
