// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form6.h"

#include "page_fixture.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

Form6& OpenForm6(PageTest& page) { return page.Open<Form6>("Form6"); }

// The queries of model and path mode that precede each read.
Texts Config(const Shape& shape) {
  if (shape.specification == kSingle) return {"03 01 48 00 01"};
  return {"03 01 48 00 01", "03 03 E8 00 01"};
}

Texts Joined(std::initializer_list<Texts> parts) {
  Texts all;
  for (const Texts& part : parts) all.insert(all.end(), part.begin(), part.end());
  return all;
}

// The units of the channels, and of the heat calculation, that a read of the unit system asks anew.
Texts Units(const Shape& shape) {
  if (shape.specification == kSingle) return {"03 00 04 00 01", "03 00 40 00 01"};
  return {"03 00 04 00 01", "03 00 40 00 01", "03 13 8C 00 01", "03 13 C8 00 01", "03 1B 5C 00 01",
          "03 1B 98 00 01", "03 04 B6 00 01", "03 04 B8 00 01", "03 04 B4 00 01"};
}

Texts SetupReads(const Shape& shape) {
  Texts reads = {"03 00 3E 00 01"};
  if (shape.specification == kSingle) return reads;
  reads.push_back("03 03 E8 00 01");
  if (shape.path_mode == 2) reads.push_back("03 03 EA 00 01");
  reads.insert(reads.end(), {"03 03 EC 00 01", "03 03 EE 00 01"});
  return reads;
}

const Texts kVersion = {"04 00 86 00 07", "04 00 94 00 04"};

TEST(Form6, NothingTickedSendsNothingAndEachBoxReadsItsOwn) {
  PageTest test(kTwoPipes);
  Form6& page = OpenForm6(test);
  page.ReadParameter.Press();
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), Texts{});
  const struct {
    CheckBox& box;
    Texts reads;
  } cases[] = {{page.LANGUAGE, {"03 01 00 00 03"}},
               {page.IDNUM_CONFIGCheck, {"03 01 00 00 03"}},
               {page.SPEC, {"03 01 48 00 01"}},
               {page.chkVersionInfo, kVersion},
               {page.SYSTEM_MODECheck, {"03 00 3E 00 01"}},
               {page.CALCULATIONCheck, {"03 03 EA 00 01"}},
               {page.A02_OUT_SOURCE, {"03 03 EE 00 01"}}};
  for (const auto& c : cases) {
    c.box.Tick();
    page.ReadParameter.Press();
    EXPECT_EQ(test.Requests(), Joined({Config(kTwoPipes), c.reads})) << c.box.Name();
    c.box.Untick();
  }
}

TEST(Form6, WritesInItsOrderTheSpecificationLast) {
  PageTest test(kTwoPipes);
  test.app().state.UserInfo = "Factory";
  Form6& page = OpenForm6(test);
  page.chkCheck.Tick();
  page.Read_All_Set_Data.Untick();
  page.ReadParameter.Press();
  test.Requests();
  page.LANGUAGECombo.Choose(3);
  page.UNIT_SYSTEMCombo.Choose(1);
  page.SYSTEM_MODECombo.Choose(1);
  page.CALCULATIONCombo.Choose(3);
  page.A01_OUT_SOURCECombo.Choose(2);
  page.A02_OUT_SOURCECombo.Choose(0);
  page.IDNUM_CONFIGText.Type("42");
  page.SPEC_Text.Type("");
  const Texts writes = {"10 01 02 00 01 02 00 03", "10 01 00 00 01 02 00 01", "10 00 3E 00 01 02 00 01",
                        "10 03 E8 00 01 02 00 02", "10 03 EA 00 01 02 00 03", "10 03 EC 00 01 02 00 02",
                        "10 03 EE 00 01 02 00 00", "10 01 04 00 01 02 00 2A"};
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), Joined({writes,
                                     Config(kTwoPipes),
                                     {"03 01 00 00 03"},
                                     Units(kTwoPipes),
                                     {"03 01 48 00 01"},
                                     kVersion,
                                     SetupReads(kTwoPipes)}))
      << "a blank specification is not sent, and the rest is read back";
  EXPECT_EQ(page.IDNUM_CONFIGText.Text(), "0042");
  EXPECT_EQ(test.app().frame->Status().Panel(2), "FRENCH");

  page.SPEC_Text.Type("0181");
  test.dialogs().Answer(MessageAnswer::kNo);
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), Texts{}) << "No sends nothing, not even the other fields";
  EXPECT_TRUE(test.dialogs().messages.back().second_is_default);
  EXPECT_EQ(test.dialogs().TakeTexts(),
            Texts{"Memory is initialized when you change the specification.\nDo you want to do this?"});

  const auto before = test.test.Time().NowMs();
  test.dialogs().Answer(MessageAnswer::kYes);
  test.dialogs().Answer(MessageAnswer::kOk, [&] {
    EXPECT_GT(test.test.Time().NowMs() - before, 3000);
    EXPECT_EQ(test.app().windows.MousePointer(), kNormalPointer);
  });
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), Joined({writes, {"06 01 48 00 B5"}})) << "and no read-back";
  EXPECT_EQ(test.dialogs().TakeTexts().back(), "Specification has been changed.");
  EXPECT_EQ(test.test.StatusText(), "Setting of system was completed ");
  EXPECT_FALSE(test.app().state.UiLocked);
}

TEST(Form6, SourcesFollowTheMeasurementMode) {
  struct Case {
    int mode;
    int code;
    int index;
    int count;
  };
  const Case cases[] = {{0, 0, 0, 2}, {0, 3, 1, 2}, {0, 1, -1, 2}, {1, 1, 1, 6}, {1, 2, 2, 6}, {1, 3, 3, 6},
                        {1, 4, 4, 6}, {1, 5, 5, 6}, {2, 1, 1, 3},  {2, 2, 2, 3}, {2, 3, -1, 3}};
  for (const Case& c : cases) {
    SCOPED_TRACE(std::to_string(c.mode) + " code " + std::to_string(c.code));
    PageTest test({"", kFull, c.mode, 0});
    test.meter().holding().PutWord(0x03EC, c.code);
    Form6& page = OpenForm6(test);
    page.MEASUREMENT_MODECheck.Tick();
    page.A01_OUT_SOURCE.Tick();
    page.ReadParameter.Press();
    EXPECT_EQ(page.A01_OUT_SOURCECombo.Count(), c.count);
    EXPECT_EQ(page.A01_OUT_SOURCECombo.ListIndex(), c.index);
    if (c.index < 0) continue;
    test.Requests();
    page.SetParameter.Press();
    EXPECT_EQ(test.Requests()[1], "10 03 EC 00 01 02 00 0" + std::to_string(c.code)) << "and back";
  }
}

TEST(Form6, ASourceThatTheMeterDoesNotOfferIsNotSent) {
  PageTest test(kOnePath);
  Form6& page = OpenForm6(test);
  for (CheckBox* box : {&page.LANGUAGE, &page.MEASUREMENT_MODECheck, &page.A01_OUT_SOURCE}) box->Tick();
  page.LANGUAGECombo.Choose(3);
  page.MEASUREMENT_MODECombo.Choose(1);
  page.A01_OUT_SOURCECombo.Choose(5);
  page.MEASUREMENT_MODECheck.Untick();  // the page shows two paths, and the meter stays on one
  const Texts question = {"AO1 :Data has not been set up\nDoes it continue?"};
  const std::string reason = "CH3:THERMAL FLOW is not offered in measurement mode 1PATH";
  test.dialogs().Answer(MessageAnswer::kCancel);
  page.SetParameter.Press();
  EXPECT_EQ(test.dialogs().TakeTexts(), question);
  EXPECT_EQ(test.Requests(), Texts{}) << "nor anything else";
  EXPECT_EQ(page.A01_OUT_SOURCECombo.Mark(), reason);
  EXPECT_EQ(test.test.StatusText(), "Setting of system was completed AO1: " + reason);
  test.dialogs().Answer(MessageAnswer::kOk);
  page.SetParameter.Press();
  EXPECT_EQ(test.dialogs().TakeTexts(), question);
  EXPECT_EQ(test.Requests()[0], "10 01 02 00 01 02 00 03") << "the others are set";
  EXPECT_EQ(test.meter().holding().Word(0x03EC), 0);

  // With the mode in the same set it is the text that is shown that goes out.
  page.LANGUAGE.Untick();
  page.MEASUREMENT_MODECheck.Tick();
  page.MEASUREMENT_MODECombo.Choose(1);
  page.A01_OUT_SOURCECombo.Choose(5);
  test.test.platform.Arm("exception=2@03ECH*4");
  test.dialogs().Answer(MessageAnswer::kCancel);
  page.SetParameter.Press();
  EXPECT_EQ(test.dialogs().TakeTexts(), question);
  EXPECT_EQ(test.Requests()[1], "10 03 EC 00 01 02 00 05");
  // Nothing was read back: what the meter is now is asked.
  page.MEASUREMENT_MODECheck.Untick();
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests().at(3), "10 03 EC 00 01 02 00 05");
}

TEST(Form6, AllTicksASpecificationForTheFactoryAlone) {
  for (const char* user : {"Standard", "Service", "Factory"}) {
    SCOPED_TRACE(user);
    PageTest test(kOnePath);
    test.app().state.UserInfo = user;
    Form6& page = OpenForm6(test);
    page.SPEC.Tick();
    page.chkCheck.Tick();
    EXPECT_EQ(page.SPEC.Ticked(), std::string(user) == "Factory");
    EXPECT_EQ(page.SPEC_Text.Enabled(), page.SPEC.Ticked());
    page.SPEC.Tick();
    page.chkCheck.Untick();
    EXPECT_FALSE(page.SPEC.Ticked() || page.Read_All_Set_Data.Ticked());
  }
}

TEST(Form6, BadInputIsTakenAwayAndTold) {
  PageTest test(kTwoPipes);
  Form6& page = OpenForm6(test);
  page.IDNUM_CONFIGCheck.Tick();
  page.IDNUM_CONFIGText.Type("1x");
  test.dialogs().Answer(MessageAnswer::kOk);
  page.IDNUM_CONFIGText.LoseFocus();
  EXPECT_EQ(page.IDNUM_CONFIGText.Text(), "");
  EXPECT_EQ(page.Focused(), &page.IDNUM_CONFIGText);
  EXPECT_EQ(test.dialogs().TakeTexts(), Texts{"Any data other than a number is not allowed"});
  page.IDNUM_CONFIGText.Type("12");
  page.IDNUM_CONFIGText.LoseFocus();
  EXPECT_EQ(page.IDNUM_CONFIGText.Text(), "12");
  page.IDNUM_CONFIGText.Type("1,2");
  test.dialogs().Answer(MessageAnswer::kOk);
  page.IDNUM_CONFIGText.LoseFocus();
  EXPECT_EQ(page.IDNUM_CONFIGText.Text(), "1,2") << "what was meant can be mended";
  EXPECT_EQ(test.dialogs().TakeTexts().front().find("A comma is not allowed"), 0U);
  page.IDNUM_CONFIGText.SetText("1.2.3");  // passes the check of the characters
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), Texts{});
  EXPECT_NE(test.test.StatusText().find("ID No. Setting"), std::string::npos);
  EXPECT_FALSE(page.IDNUM_CONFIGText.Mark().empty());
}

TEST(Form6, ABadLineLeavesThePageUsable) {
  struct Case {
    const char* fault;
    const char* box;
    int language;  // entry shown afterwards
    int mode;
  };
  // The list of the mode is cleared by its failed read, those of the block are not.
  const Case cases[] = {{"silence@0100H*9", "LANGUAGE", 2, 0},
                        {"exception=2@003EH*9", "LANGUAGE", 0, -1},
                        {"crc@003EH*9", "LANGUAGE", 0, -1}};
  for (const Case& c : cases) {
    SCOPED_TRACE(c.fault);
    PageTest test(kTwoPipes);
    Form6& page = OpenForm6(test);
    for (CheckBox* box : {&page.LANGUAGE, &page.SPEC, &page.SYSTEM_MODECheck}) box->Tick();
    page.LANGUAGECombo.Choose(2);
    page.SYSTEM_MODECombo.Choose(1);
    test.test.platform.Arm(c.fault);
    page.ReadParameter.Press();
    EXPECT_EQ(page.LANGUAGECombo.ListIndex(), c.language);
    EXPECT_EQ(page.SYSTEM_MODECombo.ListIndex(), c.mode);
    EXPECT_EQ(page.SPEC_Text.Text(), "0081") << "SPEC follows a failed block";
    EXPECT_FALSE(test.app().state.UiLocked);
  }
}

TEST(Form6, MemoryInitialisationNeverLooksAtTheReply) {
  for (const char* fault : {"", "silence@0152H*9", "exception=3@0152H*9"}) {
    SCOPED_TRACE(fault);
    PageTest test(kTwoPipes);
    Form6& page = OpenForm6(test);
    test.dialogs().Answer(MessageAnswer::kCancel);
    page.CommandMemoryInit.Press();
    EXPECT_EQ(test.Requests(), Texts{});
    if (*fault != '\0') test.test.platform.Arm(fault);
    const auto before = test.test.Time().NowMs();
    test.dialogs().Answer(MessageAnswer::kOk);
    test.dialogs().Answer(MessageAnswer::kOk, [&] {
      EXPECT_GT(test.test.Time().NowMs() - before, 3000);
      EXPECT_EQ(test.app().windows.MousePointer(), kNormalPointer);
      EXPECT_TRUE(test.app().state.UiLocked);
    });
    page.CommandMemoryInit.Press();
    EXPECT_EQ(test.Requests().front(), "06 01 52 00 64");
    EXPECT_EQ(test.dialogs().TakeTexts(),
              (Texts{"Execute memory initialization?", "Execute memory initialization?",
                     "Initialization of memory was completed"}));
    EXPECT_EQ(test.test.StatusText(), "Initialization of memory was completed");
    EXPECT_FALSE(test.app().state.UiLocked);
  }
}

TEST(Form6, SlotsKeepFourDigitsAndEmptyOnesLeaveTheControls) {
  PageTest test(kOnePath);
  Form6& page = OpenForm6(test);
  page.IDNUM_CONFIGText.SetText(" 7 ");
  page.SPEC_Text.SetText("odd");
  page.LANGUAGECombo.SetListIndex(4);
  PageSlots& slots = test.app().slots;
  page.Taihi_Form6();
  EXPECT_EQ(slots.At("SYSTEMDISP", "ID_NO"), "0007");
  EXPECT_EQ(slots.At("SYSTEMDISP", "SPEC_NO"), "odd");
  EXPECT_EQ(slots.At("SYSTEMDISP", "LANG_FLAG"), "4");
  EXPECT_EQ(slots.At("SYSTEMDISP", "OPE_MODE"), "-1");
  EXPECT_EQ(slots.At("SYSTEMDISP", "TYPE"), "");
  slots.At("SYSTEMDISP", "LANG_FLAG") = "";
  slots.At("SYSTEMDISP", "SOKUTEI_MODE") = "1";
  slots.At("SYSTEMDISP", "AO1") = "5";
  page.SetteiHannei();
  EXPECT_EQ(page.LANGUAGECombo.ListIndex(), 4);
  EXPECT_EQ(page.A01_OUT_SOURCECombo.Text(), "CH3:THERMAL FLOW");
}

TEST(Form6, ASourceComesBackThoughTheModeWasNeverRead) {
  PageTest test(kOnePath);
  Form6& page = OpenForm6(test);
  page.A01_OUT_SOURCE.Tick();
  page.A01_OUT_SOURCECombo.Choose(1);
  ASSERT_EQ(page.A01_OUT_SOURCECombo.Text(), "CH1:THERMAL FLOW");
  ASSERT_TRUE(test.app().windows.Unload("Form6"));
  EXPECT_EQ(OpenForm6(test).A01_OUT_SOURCECombo.Text(), "CH1:THERMAL FLOW");
}

TEST(Form6, VersionBytesThatAreNoCharactersDoNotBreakTheDisplay) {
  PageTest test(kTwoPipes);
  const std::vector<std::uint8_t> bytes = {0x00, 0xFF, 'V', 0x0A, '2', ',', '1', 0x80, 0, 0, 0, 0, 0, 0};
  ASSERT_TRUE(test.meter().PinInput(0x0086, bytes));
  Form6& page = OpenForm6(test);
  page.chkVersionInfo.Tick();
  page.ReadParameter.Press();
  EXPECT_EQ(page.CONTROL_BOARDText.Text(), "  V 2,1");
}

}  // namespace
}  // namespace vlt::test
