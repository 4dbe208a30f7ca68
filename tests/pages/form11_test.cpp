// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/form11.h"

#include "link/operation.h"
#include "page_fixture.h"
#include "state/form_lock.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kBlock = "03 01 8E 00 0F";
constexpr const char* kMode = "03 00 3E 00 01";

Form11& OpenForm11(PageTest& test) { return test.Open<Form11>("Form11"); }

void FillAll(Form11& page) {
  page.chkCheck.Tick();
  page.SendPatternCombo.Choose(5);
  page.SendCountCombo.Choose(3);
  page.MeasureMethodCombo.Choose(1);
  page.SaturateLevelInput.Type("81");
  page.ReceiveBalanceInput.Type("24");
  page.ReceivePeakCombo.Choose(3);
  page.TriggerLevelCtlManualOption.Choose();
  page.TriggerLevelInput.Type("45.9");
  page.WindowTimeCtlManualOption.Choose();
  page.OpenTimeFInput.Type("71");
  page.OpenTimeRInput.Type("-72");
  page.AgcCtlManualOption.Choose();
  page.AgcForwardInput.Type("55.559");
  page.AgcReverseInput.Type("0.29");
  page.txtTRWaitTim.Type("4");
}

TEST(Form11, FullSetWritesWordByWordAndReadsBackInOneBlock) {
  const Texts expected = {
      "10 01 A0 00 01 02 00 05",
      "10 01 8E 00 01 02 00 04",  // 64 transmissions: the fourth entry counts from 1
      "10 01 9C 00 01 02 00 01",
      "10 01 9A 00 01 02 00 51",
      "10 01 9E 00 01 02 00 18",
      "10 01 A8 00 01 02 00 03",
      "10 01 90 00 01 02 00 01",
      "10 01 92 00 01 02 00 2D",  // cut to an integer
      "10 01 94 00 01 02 00 01",
      "10 01 96 00 01 02 00 47",
      "10 01 98 00 01 02 FF B8",
      "10 01 A2 00 01 02 00 01",
      "10 01 A4 00 01 02 15 B3",  // 55.559 is 5555
      "10 01 A6 00 01 02 00 1D",  // 0.29 is 29, not 28
      "10 01 AA 00 01 02 00 04",
      kBlock,
      kMode,
  };
  PageTest test(kTwoPipes);
  Form11& page = OpenForm11(test);
  FillAll(page);
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), expected);
  EXPECT_EQ(page.AgcForwardInput.Text(), "55.55");
  EXPECT_EQ(page.AgcReverseInput.Text(), "0.29");
  EXPECT_EQ(page.OpenTimeRInput.Text(), "-72");
  EXPECT_EQ(page.SendCountCombo.Text(), "64");
}

TEST(Form11, TransmissionCountsFollowTheOperationMode) {
  struct Case {
    int mode;
    int word;
    int index;
    const char* count;
    const char* written;
  };
  for (const Case& c : {Case{0, 0, -1, "", ""}, Case{0, 1, 0, "8", "00 01"}, Case{0, 6, 5, "256", "00 06"},
                        Case{0, 7, -1, "", ""}, Case{1, 0, 0, "4", "00 00"}, Case{1, 5, 5, "128", "00 05"},
                        Case{2, 0, 0, "", ""}, Case{2, 1, 1, "8", "00 01"}, Case{7, 6, 6, "256", "00 06"}}) {
    SCOPED_TRACE(std::to_string(c.mode) + ": " + std::to_string(c.word));
    PageTest test(kOnePath);
    Form11& page = OpenForm11(test);
    page.SendCountCheck.Tick();
    test.meter().holding().PutWord(0x003E, c.mode);
    test.meter().holding().PutWord(0x018E, c.word);
    page.ReadParameter.Press();
    EXPECT_EQ(test.Requests(), (Texts{kBlock, kMode}));
    EXPECT_EQ(page.SendCountCombo.ListIndex(), c.index);
    EXPECT_EQ(page.SendCountCombo.Text(), c.count);
    page.SetParameter.Press();
    const bool is_sent = *c.written != '\0';
    EXPECT_EQ(test.Requests().front(), is_sent ? std::string("10 01 8E 00 01 02 ") + c.written : kBlock);
  }
  // The mode changes while the page is away: the count stays the same, not its place.
  PageTest test(kOnePath);
  Form11& page = OpenForm11(test);
  struct Change {
    int mode, before, after;
    const char* count;
  };
  for (const Change& c :
       {Change{1, 2, 3, "32"}, Change{0, 3, 2, "32"}, Change{1, 0, 1, "8"}, Change{0, 0, -1, ""},
        Change{2, 2, 3, "32"}, Change{1, 3, 3, "32"}, Change{2, 0, -1, ""}, Change{0, 3, 2, "32"}}) {
    page.SendCountCombo.SetListIndex(c.before);
    test.app().state.OperationMode = c.mode;
    page.Show();
    EXPECT_EQ(page.SendCountCombo.ListIndex(), c.after);
    EXPECT_EQ(page.SendCountCombo.Text(), c.count);
  }
  page.SendCountCombo.SetListIndex(2);
  // No answer about the mode counts as the ordinary one.
  test.app().state.OperationMode = 1;
  page.Show();
  page.SendCountCheck.Tick();
  test.test.platform.Arm("silence@003EH*ever");
  page.ReadParameter.Press();
  EXPECT_EQ(page.SendCountCombo.Text(), "128");
  const int counts[] = {8, 16, 32, 64, 128, 256};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(Form11::CSIndex_SendKaisu(counts[i]), i);
  for (const int count : {4, 0, 9, 512}) EXPECT_EQ(Form11::CSIndex_SendKaisu(count), -1);
}

TEST(Form11, WhatTheMeterFindsByItselfIsShownAndNotSent) {
  PageTest test(kOnePath);
  Form11& page = OpenForm11(test);
  for (CheckBox* box : {&page.TriggerLevelCheck, &page.WindowTimeCheck, &page.AgcCheck}) box->Tick();
  EXPECT_FALSE(page.TriggerLevelInput.Enabled()) << "automatic until something else is known";
  test.meter().holding().PutWord(0x0194, 5);  // any number but 0 is by hand
  page.ReadParameter.Press();
  EXPECT_EQ(test.Requests(), Texts{kBlock});
  struct Case {
    OptionButton* by_itself;
    OptionButton* by_hand;
    TextBox* input;
    const char* text;
    bool manual;
  };
  for (const Case& c :
       {Case{&page.TriggerLevelCtlAutoOption, &page.TriggerLevelCtlManualOption, &page.TriggerLevelInput,
             "50", false},
        Case{&page.WindowTimeCtlAutoOption, &page.WindowTimeCtlManualOption, &page.OpenTimeRInput, "70",
             true},
        Case{&page.AgcCtlAutoOption, &page.AgcCtlManualOption, &page.AgcForwardInput, "55.00", false}}) {
    EXPECT_EQ(c.input->Text(), c.text);
    EXPECT_EQ(c.by_hand->Value(), c.manual);
    EXPECT_EQ(c.by_itself->Value(), !c.manual);
    EXPECT_EQ(c.input->Enabled(), c.manual);
  }
  EXPECT_FALSE(page.TriggerLevelUpDown.Enabled());
  page.WindowTimeCtlAutoOption.Choose();
  page.OpenTimeFInput.SetText("no number");  // nobody sends it
  page.SetParameter.Press();
  EXPECT_EQ(test.Requests(),
            (Texts{"10 01 90 00 01 02 00 00", "10 01 94 00 01 02 00 00", "10 01 A2 00 01 02 00 00", kBlock}));
}

// Stands for the tab of the waves.
class WaveOptions : public FormPart {
 public:
  using FormPart::FormPart;
  OptionButton ForwardReceiveOption{Whole(), "ForwardReceiveOption", Control::kNoIndex, "wave"};
  OptionButton ReverseReceiveOption{Whole(), "ReverseReceiveOption", Control::kNoIndex, "wave"};
  OptionButton ForwardFilterOption{Whole(), "ForwardFilterOption", Control::kNoIndex, "wave"};
  OptionButton ReverseFilterOption{Whole(), "ReverseFilterOption", Control::kNoIndex, "wave"};
  OptionButton CorrelationCalOption{Whole(), "CorrelationCalOption", Control::kNoIndex, "wave"};
};

TEST(Form11, KindsOfWaveFollowTheMeasuringMethod) {
  PageTest test(kTwoPipes);
  test.app().windows.RegisterPart("Form11", [](Form& whole) { return std::make_unique<WaveOptions>(whole); });
  Form11& page = OpenForm11(test);
  auto& waves = *page.Part<WaveOptions>();
  waves.CorrelationCalOption.SetValue(true);
  page.MeasureMethodCheck.Tick();
  for (const int method : {2, 1, 0}) {
    test.meter().holding().PutWord(0x019C, method);
    page.ReadParameter.Press();
    EXPECT_EQ(waves.ForwardFilterOption.Enabled(), method != 0);
    EXPECT_EQ(waves.CorrelationCalOption.Enabled(), method != 0);
    EXPECT_EQ(waves.CorrelationCalOption.Value(), method != 0);
    EXPECT_TRUE(waves.ReverseReceiveOption.Enabled());
  }
  EXPECT_TRUE(waves.ForwardReceiveOption.Value());
  waves.ReverseReceiveOption.Choose();
  page.ReadParameter.Press();
  EXPECT_TRUE(waves.ReverseReceiveOption.Value()) << "a kind that is offered stays";
  test.Requests();

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
