// SPDX-License-Identifier: GPL-3.0-or-later
// Where the values of the pages come from: read, typed, from a file, outdated.

#include "files/parameter_file.h"
#include "page_fixture.h"
#include "pages/form10.h"
#include "pages/form11.h"
#include "pages/form2.h"
#include "pages/form4.h"
#include "pages/form5.h"
#include "pages/form6.h"
#include "pages/form7.h"

namespace vlt::test {
namespace {

constexpr auto kNone = ValueOrigin::kNone;
constexpr auto kRead = ValueOrigin::kRead;
constexpr auto kTyped = ValueOrigin::kTyped;
constexpr auto kFile = ValueOrigin::kFile;
constexpr auto kOutdated = ValueOrigin::kOutdated;

// The origin that a field shows: that of the set option, where it has options.
ValueOrigin OriginOf(const Field& field) {
  if (field.options[0] == nullptr) return field.Entry().Origin();
  const int set = field.Selected();
  return set < 0 ? kNone : field.options[static_cast<std::size_t>(set)]->Origin();
}

bool Tells(const Control& control, const std::string& words) {
  return control.OriginText().find(words) != std::string::npos;
}

void ReadOuterDiameter(Form10& page) {
  page.OUTER_DIAMETER.Tick();
  page.ReadParameter.Press();
}

TEST(Origins, AReadValueFollowsTheChannelAndTyping) {
  PageTest test(kTwoPipes);
  auto& page = test.Open<Form10>("Form10");
  const TextBox& field = page.OUTER_DIAMETERText;
  EXPECT_EQ(field.Origin(), kNone);
  ReadOuterDiameter(page);
  const std::string read = field.Text();
  EXPECT_EQ(field.Origin(), kRead);
  EXPECT_TRUE(Tells(field, "Read from COM1-01 CH1, 20")) << field.OriginText();
  EXPECT_EQ(page.WALL_THICKNESSText.Origin(), kNone) << "not ticked";

  page.OUTER_DIAMETERText.Type("75.5");
  EXPECT_EQ(field.Origin(), kTyped);
  EXPECT_TRUE(Tells(field, "Typed, not set; before it " + read + ": Read from COM1-01 CH1"));
  EXPECT_EQ(page.Caption(), "PROCESS SETTING - 1 value not set");
  page.WALL_THICKNESSText.SetEnabled(true);
  page.WALL_THICKNESSText.Type("4");
  EXPECT_EQ(page.WALL_THICKNESSText.OriginText(), "Typed, not set");
  EXPECT_EQ(page.Caption(), "PROCESS SETTING - 2 values not set");
  page.WALL_THICKNESSText.Type("");
  page.OUTER_DIAMETERText.Type(read + "0");
  EXPECT_EQ(field.Origin(), kRead) << "the same number as the meter holds";
  EXPECT_EQ(page.Caption(), "PROCESS SETTING");

  page.ChannelSelect(1).Choose();
  EXPECT_EQ(field.Origin(), kOutdated);
  EXPECT_TRUE(Tells(field, "not read since the channel was changed: Read from COM1-01 CH1"));
  page.ChannelSelect(0).Choose();
  EXPECT_EQ(field.Origin(), kRead);
  page.OUTER_DIAMETERText.Type("75.5");
  page.ChannelSelect(1).Choose();
  EXPECT_EQ(field.Origin(), kTyped) << "it is still what a set would send";
  page.OUTER_DIAMETERText.Type(read);
  EXPECT_EQ(field.Origin(), kTyped) << "what the other channel holds is no value of this one";
  page.ReadParameter.Press();
  EXPECT_EQ(field.Origin(), kRead);
  EXPECT_TRUE(Tells(field, "CH2"));
  page.ChannelSelect(0).Choose();
  EXPECT_EQ(field.Origin(), kOutdated);
}

TEST(Origins, AnotherMeterOrUnitSystemOutdatesWhatWasRead) {
  PageTest test(kTwoPipes);
  auto& page = test.Open<Form10>("Form10");
  page.chkCheck.Tick();
  page.ReadParameter.Press();
  const Control& number = page.OUTER_DIAMETERText;
  const Control& list = page.PIPE_MATERIALCombo;
  SharedState& state = test.app().state;
  const auto settle = [&] { test.app().windows.Run([] {}); };
  const struct {
    const char* name;
    std::function<void()> change;
    std::function<void()> back;
    const char* told;
  } cases[] = {
      {"station", [&] { state.StationNo = "07"; }, [&] { state.StationNo = "01"; }, "the meter was"},
      {"port", [&] { state.OpenedPort = 4; }, [&] { state.OpenedPort = 1; }, "the meter was"},
      {"units", [&] { state.UnitFlag = 1; }, [&] { state.UnitFlag = 0; }, "the unit system was"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    settle();
    EXPECT_EQ(number.Origin(), kRead);
    EXPECT_EQ(list.Origin(), kRead);
    c.change();
    settle();
    EXPECT_EQ(number.Origin(), kOutdated);
    EXPECT_EQ(list.Origin(), kOutdated);
    EXPECT_TRUE(Tells(number, c.told)) << number.OriginText();
    c.back();
  }
  // A port that was only closed leads to the same meter again; another meter tells another number.
  test.app().platform.port.Close();
  state.PortIsOpen = false;
  state.MeterIdNo = "0001";
  settle();
  EXPECT_EQ(number.Origin(), kRead);
  EXPECT_TRUE(OpenPort(test.app()));
  page.ReadParameter.Press();
  state.MeterIdNo = "0002";
  settle();
  EXPECT_EQ(number.Origin(), kOutdated);
}

// Two entries of a page are enough for what outlives it: a number, a list.
TEST(Origins, SurviveThePageAndFollowTheLanguage) {
  PageTest test(kOnePath);
  {
    auto& page = test.Open<Form10>("Form10");
    page.OUTER_DIAMETER.Tick();
    page.PIPE_MATERIAL.Tick();
    page.ReadParameter.Press();
    page.PIPE_MATERIALCombo.Choose(3);
    test.app().windows.Run([&] { test.app().windows.Unload("Form10"); });
  }
  test.app().state.LangOffset = 0;
  auto& page = test.Open<Form10>("Form10");
  EXPECT_EQ(page.OUTER_DIAMETERText.Origin(), kRead);
  EXPECT_TRUE(Tells(page.OUTER_DIAMETERText, "COM1-01 CH1 から読み出した値"))
      << page.OUTER_DIAMETERText.OriginText();
  EXPECT_EQ(page.PIPE_MATERIALCombo.Origin(), kTyped);
  EXPECT_EQ(page.Caption(), test.app().Text(1640) + " - 未設定 1件");
  test.app().state.LangOffset = 5000;
  test.app().windows.Run([&] { page.FrmInit(); });
  EXPECT_EQ(page.Caption(), "PROCESS SETTING - 1 value not set");
}

TEST(Origins, AFileIsTheOriginOfWhatItHolds) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form10>("Form10");
  page.chkCheck.Tick();
  page.ReadParameter.Press();
  test.platform_files()["/data/pump.ini"] =
      "[PROCESS SETTING]\nOUTER_DIAMETER_Data=89.1\nPIPE_MATERIAL_Data=2\nLINING_MATERIAL_Data=99\n"
      "VISCOSITY_Data=\n[DISPLAY]\nDISPLAY1_SELECT_Data=2\nLCD_BACKLIGHT_MODE=1\n";
  test.app().windows.Run([&] { OpenParameterFile(test.app(), "/data/pump.ini"); });
  EXPECT_EQ(page.OUTER_DIAMETERText.Text(), "89.1");
  EXPECT_EQ(page.OUTER_DIAMETERText.OriginText(), "From the file pump.ini");
  EXPECT_EQ(page.PIPE_MATERIALCombo.Origin(), kFile);
  for (const Control* none :
       {static_cast<Control*>(&page.LINING_MATERIALCombo), static_cast<Control*>(&page.VISCOSITYText),
        static_cast<Control*>(&page.WALL_THICKNESSText)}) {
    EXPECT_EQ(none->Origin(), kNone) << none->Name();
  }
  // A page that is opened later, also behind a file that was written meanwhile.
  test.app().windows.Run([&] { SaveParameterFile(test.app(), "/data/other.ini"); });
  test.app().windows.Run([&] { SavePagesToSlots(test.app()); });
  auto& display = test.Open<Form5>("Form5");
  EXPECT_EQ(display.Selection1Combo.Origin(), kFile);
  EXPECT_EQ(display.Selection2Combo.Origin(), kNone);
  EXPECT_EQ(display.optLCD(1).Origin(), kFile);
  EXPECT_EQ(display.optLCD(0).Origin(), kNone) << "the option that is not set";

  auto& again = test.Open<Form10>("Form10");
  again.OUTER_DIAMETER.Tick();
  again.OUTER_DIAMETERText.Type("90");
  EXPECT_TRUE(Tells(again.OUTER_DIAMETERText, "before it 89.1: From the file pump.ini"));
  again.OUTER_DIAMETERText.Type("89.10");
  EXPECT_EQ(again.OUTER_DIAMETERText.Origin(), kFile);
  again.SetParameter.Press();
  EXPECT_EQ(again.OUTER_DIAMETERText.Origin(), kRead);
}

TEST(Origins, AWriteThatTheMeterConfirmedCountsWithoutItsReadBack) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form10>("Form10");
  page.OUTER_DIAMETER.Tick();
  page.SENSOR_SPACINGCheck.Tick();
  page.OUTER_DIAMETERText.Type("75.5");
  test.test.platform.Arm("silence@00D0H*4");  // the block of the read-back
  page.SetParameter.Press();
  EXPECT_EQ(page.OUTER_DIAMETERText.Origin(), kRead);
  EXPECT_TRUE(Tells(page.OUTER_DIAMETERText, "Set in COM1-01 CH1, 20"))
      << page.OUTER_DIAMETERText.OriginText();
  EXPECT_TRUE(Tells(page.OUTER_DIAMETERText, "confirmed by the meter"));
  EXPECT_EQ(page.OUTER_DIAMETERText.Mark(), "Not read: [NO RESPONSE ERROR]");
  EXPECT_EQ(page.SENSOR_SPACINGText.Origin(), kRead);
  EXPECT_EQ(page.SENSOR_SPACINGText.Mark(), "") << "its own block was answered";
  EXPECT_EQ(page.Caption(), "PROCESS SETTING");
}

TEST(Origins, ARefusedOrLostWriteStaysTypedAndSoDoesWhatIsTypedMeanwhile) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form10>("Form10");
  page.OUTER_DIAMETER.Tick();
  page.WALL_THICKNESS.Tick();
  page.OUTER_DIAMETERText.Type("75.5");
  page.WALL_THICKNESSText.Type("4");
  test.test.platform.Arm("exception=2@00D2H*4");
  test.dialogs().Answer(MessageAnswer::kCancel);
  page.SetParameter.Press();
  EXPECT_EQ(page.OUTER_DIAMETERText.Origin(), kTyped);
  EXPECT_EQ(page.WALL_THICKNESSText.Origin(), kTyped);
  EXPECT_NE(page.OUTER_DIAMETERText.Mark(), "");
  EXPECT_EQ(page.WALL_THICKNESSText.Mark(), "") << "it was not tried";
  EXPECT_EQ(page.Caption(), "PROCESS SETTING - 2 values not set");
  test.dialogs().TakeTexts();

  // The box of the wall waits, the diameter is set by then, and the read-back finds nobody.
  test.test.platform.Arm("silence@00DAH*4");
  test.test.platform.Arm("silence@00D0H*4");
  test.dialogs().Answer(MessageAnswer::kOk, [&] { page.OUTER_DIAMETERText.Type("77"); });
  page.SetParameter.Press();
  EXPECT_EQ(page.WALL_THICKNESSText.Origin(), kTyped);
  EXPECT_EQ(page.WALL_THICKNESSText.Mark(), "[NO RESPONSE ERROR]") << "the write says more than the read";
  EXPECT_EQ(page.OUTER_DIAMETERText.Origin(), kTyped);
  EXPECT_TRUE(Tells(page.OUTER_DIAMETERText, "before it 75.5: Set in COM1-01 CH1"));
}

// The meter may have taken what it has not confirmed: what it held before is no answer any more.
TEST(Origins, BehindAWriteInDoubtNothingIsKnownOfTheMeter) {
  for (const auto& [fault, typed_back] :
       {std::pair{"exception=2@00D2H*4", kRead}, std::pair{"silence@00D2H*4", kTyped},
        std::pair{"wrong-echo@00D2H", kTyped}}) {
    SCOPED_TRACE(fault);
    PageTest test(kOnePath);
    auto& page = test.Open<Form10>("Form10");
    ReadOuterDiameter(page);
    const std::string read = page.OUTER_DIAMETERText.Text();
    page.OUTER_DIAMETERText.Type("75.5");
    test.test.platform.Arm(fault);
    test.dialogs().Answer(MessageAnswer::kCancel);
    page.SetParameter.Press();
    EXPECT_EQ(page.OUTER_DIAMETERText.Origin(), kTyped);
    page.OUTER_DIAMETERText.Type(read);
    EXPECT_EQ(page.OUTER_DIAMETERText.Origin(), typed_back);
  }
}

// A new specification takes the rest of the same set with it.
TEST(Origins, WhatWasSetBeforeANewSpecificationIsOutdated) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form6>("Form6");
  page.LANGUAGE.Tick();
  page.LANGUAGECombo.Choose(2);
  page.SPEC.Tick();
  page.SPEC_Text.Type("0081");
  test.dialogs().Answer(MessageAnswer::kYes);
  test.dialogs().Answer(MessageAnswer::kOk);
  page.SetParameter.Press();
  EXPECT_EQ(page.LANGUAGECombo.Origin(), kOutdated);
  EXPECT_EQ(page.SPEC_Text.Origin(), kRead);
}

TEST(Origins, EachRowOfAFailedReadIsMarkedUntilTheNextOne) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form10>("Form10");
  page.OUTER_DIAMETER.Tick();
  page.PIPE_MATERIAL.Tick();
  page.SENSOR_SPACINGCheck.Tick();
  page.ReadParameter.Press();
  const std::string status = test.test.StatusText();
  test.test.platform.Arm("exception=2@00D0H*4");
  page.ReadParameter.Press();
  for (const Control* row :
       {static_cast<Control*>(&page.OUTER_DIAMETERText), static_cast<Control*>(&page.PIPE_MATERIALCombo)}) {
    EXPECT_EQ(row->Mark(), "Not read: [ADDRESS ERROR(02H)]") << row->Name();
    EXPECT_EQ(row->Origin(), kRead) << "what stands there was read before";
  }
  EXPECT_EQ(page.SENSOR_SPACINGText.Mark(), "");
  EXPECT_EQ(page.WALL_THICKNESSText.Mark(), "") << "nobody asked for it";
  EXPECT_EQ(test.test.StatusText(), status) << "as ever";
  page.ReadParameter.Press();
  EXPECT_EQ(page.OUTER_DIAMETERText.Mark(), "");
  EXPECT_EQ(page.PIPE_MATERIALCombo.Mark(), "");
}

// What a read learns of units only behind some of its values does not outdate these.
TEST(Origins, AReadThatLearnsTheUnitSystemIsFreshAsAWhole) {
  PageTest test(kTwoPaths);
  test.app().state.UnitFlag = 0;  // what the program believed
  auto& page = test.Open<Form2>("Form2");
  page.chkCheck.Tick();
  page.ReadParameter.Press();
  EXPECT_EQ(test.app().state.UnitFlag, 1);
  for (const Field& field : page.Columns().front()->Fields()) {
    EXPECT_EQ(OriginOf(field), ValueText(field).empty() ? kNone : kRead) << field.parameter->name;
  }
}

TEST(Origins, ANumberBesideAnotherUnitThanItWasReadInIsOutdated) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form2>("Form2");
  page.chkCheck.Tick();
  page.ReadParameter.Press();
  page.chkCheck.Untick();
  page.UNIT_SYSTEM.Tick();
  page.UNIT_SYSTEMCombo.Choose(page.UNIT_SYSTEMCombo.ListIndex() == 0 ? 1 : 0);
  page.chkKind.Tick();
  page.cmbKind.Choose(1);
  page.SetParameter.Press();
  EXPECT_EQ(page.UNIT_SYSTEMCombo.Origin(), kRead);
  EXPECT_EQ(page.FULL_SCALE1Text.Origin(), kOutdated);
  EXPECT_TRUE(Tells(page.FULL_SCALE1Text, "not read since the unit was changed"));
  EXPECT_EQ(page.SPANText.Origin(), kRead) << "per cent stays per cent";
  EXPECT_EQ(page.CALORIE_FULL_SCALE1Text.Origin(), kRead) << "another unit";
}

TEST(Origins, ListsAreJudgedByWhatTheyMeanAndOutputsByTheirNumber) {
  PageTest test(kTwoPipes);
  auto& display = test.Open<Form5>("Form5");
  display.chkCheck.Tick();
  test.meter().holding().PutWord(0x04A4, 2);  // the computed channel, whose list lacks the velocity
  display.ReadParameter.Press();
  display.CHCombo1.Choose(2);
  EXPECT_EQ(display.CHCombo1.Origin(), kTyped);
  display.CHCombo1.Choose(0);
  const int item = display.Selection1Combo.ListIndex();
  display.Selection1Combo.Choose(item == 0 ? 1 : 0);
  EXPECT_EQ(display.Selection1Combo.Origin(), kTyped);

  auto& status = test.Open<Form4>("Form4");
  status.SELECT_Check.Tick();
  status.ReadParameter.Press();
  EXPECT_EQ(status.OUTPUT_DO_1Combo.Origin(), kRead);
  EXPECT_TRUE(Tells(status.OUTPUT_DO_1Combo, "COM1-01 DO1"));
  status.DigitalOutputSelect(1).Choose();
  EXPECT_EQ(status.OUTPUT_DO_1Combo.Origin(), kOutdated);
  EXPECT_TRUE(Tells(status.OUTPUT_DO_1Combo, "since the output was changed"));

  auto& details = test.Open<Form11>("Form11");
  EXPECT_EQ(details.AgcCtlAutoOption.Origin(), kNone) << "the program's own choice";
  details.AgcCheck.Tick();
  details.ReadParameter.Press();
  const bool by_hand = details.AgcCtlManualOption.Value();
  EXPECT_EQ((by_hand ? details.AgcCtlManualOption : details.AgcCtlAutoOption).Origin(), kRead);
  (by_hand ? details.AgcCtlAutoOption : details.AgcCtlManualOption).Choose();
  EXPECT_EQ((by_hand ? details.AgcCtlAutoOption : details.AgcCtlManualOption).Origin(), kTyped);
  EXPECT_EQ((by_hand ? details.AgcCtlManualOption : details.AgcCtlAutoOption).Origin(), kNone);
}

TEST(Origins, ArrowsTypeAndEachPointOfAnOutputHasItsOwn) {
  PageTest test(kOnePath);
  auto& page = test.Open<Form7>("Form7");
  page.AO_Check.Tick();
  page.ADJUSTMENT.Tick();
  page.ADJUSTMENTCombo.Choose(0);
  page.ReadParameter.Press();
  EXPECT_EQ(page.ADJUSTMENText.Origin(), kRead);
  page.UpDown1.Up();
  EXPECT_EQ(page.ADJUSTMENText.Origin(), kTyped);
  page.ADJUSTMENTCombo.Choose(1);
  EXPECT_EQ(page.ADJUSTMENText.Origin(), kRead) << "the read has brought the other point as well";
  page.ADJUSTMENTCombo.Choose(0);
  EXPECT_EQ(page.ADJUSTMENText.Origin(), kTyped);
  page.UpDown1.Down();
  EXPECT_EQ(page.ADJUSTMENText.Origin(), kRead);
  // One register for both outputs, one value: it counts once.
  page.AO2_Check.Tick();
  page.AO_DEFINITIONCheck.Tick();
  page.AO2_DEFINITIONCheck.Tick();
  page.AO_DEFINITIONText.Type("50");
  EXPECT_EQ(page.AO2_DEFINITIONText.Text(), "50");
  EXPECT_EQ(page.AO2_DEFINITIONText.Origin(), kTyped);
  EXPECT_EQ(page.Caption(), test.app().Text(1070) + " - 1 value not set");
}

TEST(Origins, AMemoryThatBeginsAnewOutdatesAllPages) {
  PageTest test(kOnePath);
  auto& process = test.Open<Form10>("Form10");
  ReadOuterDiameter(process);
  auto& system = test.Open<Form6>("Form6");
  test.dialogs().Answer(MessageAnswer::kOk);
  test.dialogs().Answer(MessageAnswer::kOk);
  system.CommandMemoryInit.Press();
  EXPECT_EQ(process.OUTER_DIAMETERText.Origin(), kOutdated);
  EXPECT_TRUE(Tells(process.OUTER_DIAMETERText, "memory of the meter"));
  process.ReadParameter.Press();
  EXPECT_EQ(process.OUTER_DIAMETERText.Origin(), kRead);
  test.app().windows.Run([&] { test.app().origins.SettingsWereSent(); });
  EXPECT_TRUE(Tells(process.OUTER_DIAMETERText, "since settings were sent"));
}

}  // namespace
}  // namespace vlt::test
