// SPDX-License-Identifier: GPL-3.0-or-later
// The read-out of all settings and its report.
#include <algorithm>
#include <clocale>
#include <fstream>
#include <locale>
#include <sstream>
#include <utility>

#include "link/wait.h"
#include "page_fixture.h"
#include "pages/form6.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kReportFile = "/data/all settings.csv";

// A meter with a value of its own in every register, and the page ready to read all of it.
class ReportTest : public PageTest {
 public:
  explicit ReportTest(const Shape& shape, int lang_offset = 5000) : PageTest(shape, lang_offset) {
    meter().Fill(7, 0);
    page.Read_All_Set_Data.Tick();
    dialogs().SaveFile(kReportFile);
    page.Save_As.Press();
    test.platform.TakeRequests();
  }

  std::map<std::string, std::string>& Files() { return test.platform.files.files; }
  // A line of the report by its beginning, without its line end.
  std::string Line(const std::string& head) {
    std::istringstream lines(Files()[kReportFile]);
    std::string line;
    while (std::getline(lines, line)) {
      if (line.starts_with(head)) return line.substr(0, line.size() - 1);
    }
    return "no line " + head;
  }

  Form6& page = Open<Form6>("Form6");
};

std::string Golden(const std::string& name) {
  std::ifstream file(std::string(TEST_DATA) + "/" + name, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

const Texts kConfig = {"03 01 48 00 01", "03 03 E8 00 01"};

TEST(ReadAll, AsksAFullModelInItsOrder) {
  ReportTest test(kTwoPipes);
  test.page.ReadParameter.Press();
  const Texts expected = {
      "03 01 48 00 01", "03 03 E8 00 01",                                      // shape, for the page
      "04 00 86 00 0B", "03 01 00 00 03", "03 01 48 00 01", "03 00 3E 00 01",  // system
      "03 03 E8 00 01", "03 03 EA 00 01", "03 03 EC 00 01", "03 03 EE 00 01",  //
      "03 00 D0 00 12", "04 00 80 00 03", "03 14 D0 00 12", "04 14 80 00 03",  // process setting
      "03 04 B4 00 32",                                                        // heat
      "03 00 00 00 20", "03 03 F0 00 08", "03 13 88 00 20", "03 03 F0 00 08",  // range
      "03 1B 5A 00 15", "03 03 F0 00 08",                                      //
      "03 00 40 00 0D", "03 04 00 00 08", "03 13 C8 00 0D", "03 04 00 00 08",  // total
      "03 1B 98 00 0D", "03 04 00 00 08",                                      //
      "03 04 A8 00 04", "03 00 5A 00 30", "03 04 30 00 34", "03 04 A8 00 04",  // status
      "03 00 5A 00 30", "03 04 30 00 34", "03 04 A8 00 04", "03 00 5A 00 30",  //
      "03 04 30 00 34", "03 04 A8 00 04", "03 04 10 00 10", "03 04 30 00 34",  //
      "03 01 8E 00 0F", "03 14 8E 00 0F",                                      // details
      "03 00 C0 00 06", "03 04 B0 00 02"};                                     // display
  EXPECT_EQ(test.Requests(), expected);
  EXPECT_EQ(test.test.StatusText(), "Reading of system was completed ");
  EXPECT_TRUE(test.Files().contains(kReportFile));
}

TEST(ReadAll, AsksASingleChannelMeterForNothingThatItLacks) {
  ReportTest test(kSingleModel);
  test.page.ReadParameter.Press();
  const Texts expected = {"03 01 48 00 01",  // shape
                          "04 00 86 00 0B", "03 01 00 00 03", "03 01 48 00 01", "03 00 3E 00 01",
                          "03 00 D0 00 12", "04 00 80 00 03", "03 00 00 00 20", "03 00 40 00 0D",
                          "03 00 5A 00 20", "03 00 5A 00 20", "03 01 8E 00 0F", "03 00 C0 00 06"};
  EXPECT_EQ(test.Requests(), expected);
  EXPECT_EQ(test.Line("THERMAL UNIT"), "THERMAL UNIT,");
}

// Byte for byte. Where a golden file is wanted anew, the test program writes what it gets beside it.
TEST(Report, IsWhatItsGoldenFilesSay) {
  const struct {
    const char* golden;
    Shape shape;
    int lang_offset;
  } cases[] = {{"report_two_pipes_en.csv", kTwoPipes, 5000}, {"report_two_pipes_ja.csv", kTwoPipes, 0},
               {"report_two_paths_en.csv", kTwoPaths, 5000}, {"report_one_path_en.csv", kOnePath, 5000},
               {"report_one_path_ja.csv", kOnePath, 0},      {"report_single_en.csv", kSingleModel, 5000}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.golden);
    ReportTest test(c.shape, c.lang_offset);
    test.page.ReadParameter.Press();
    EXPECT_EQ(test.Files()[kReportFile], Golden(c.golden));
    if (const char* folder = std::getenv("VELTRANO3_REPORTS")) {
      std::ofstream(std::string(folder) + "/" + c.golden, std::ios::binary) << test.Files()[kReportFile];
    }
  }
}

// Decimal commas and grouped digits, whatever locales the machine has.
struct Commas : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(Report, HasTheSameBytesUnderALocaleWithDecimalCommas) {
  const std::locale former = std::locale::global(std::locale(std::locale(), new Commas));
  for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"}) {
    if (std::setlocale(LC_ALL, name) != nullptr) break;
  }
  ReportTest test(kTwoPipes);
  test.page.ReadParameter.Press();
  std::locale::global(former);
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ(test.Files()[kReportFile], Golden("report_two_pipes_en.csv"));
}

TEST(Report, KeepsZerosAndHoldsNothingThatPartsCells) {
  ReportTest test(kTwoPipes);
  sim::Memory& registers = test.meter().holding();
  registers.PutWord(0x0104, 7);
  registers.PutWord(0x03EC, 99);  // no source
  registers.PutWord(0x13C8, 8);   // a total unit without metric text
  registers.PutWord(0x0190, 5);   // any control word but 0 is by hand
  registers.PutWord(0x0192, 61);
  registers.PutDouble(0x0008, 1e20);
  const std::vector<std::uint8_t> version = {'V', '1', ',', '2', 0x0A, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0};
  ASSERT_TRUE(test.meter().PinInput(0x0086, version));
  test.page.ReadParameter.Press();
  EXPECT_EQ(test.Line("SPECIFICATION"), "SPECIFICATION,'0081");
  EXPECT_EQ(test.Line("ID No."), "ID No. Setting,'0007");
  EXPECT_EQ(test.Line("AO1"), "AO1,");
  EXPECT_EQ(test.Line("VERSION INFO.").find("VERSION INFO.,V1 2 "), 0u);
  const std::string units = test.Line("TOTAL UNIT,");
  EXPECT_EQ(std::count(units.begin(), units.end(), ','), 3);
  EXPECT_NE(units.find(",mL,"), std::string::npos);
  EXPECT_EQ(test.Line("TRIGGER LEVEL").find("TRIGGER LEVEL,MANUAL 61,"), 0u);
  EXPECT_EQ(test.Line("FULL SCALE 1").find("FULL SCALE 1,100000000000000000000,"), 0u);
}

// In each section the values stand under their titles, and every row is as wide as the others of its kind.
TEST(Report, HeadAndValuesAgreeColumnByColumn) {
  ReportTest test(kTwoPipes);
  test.page.ReadParameter.Press();
  std::istringstream lines(test.Files()[kReportFile]);
  std::string line;
  std::ptrdiff_t columns = 0;
  while (std::getline(lines, line)) {
    const auto commas = std::count(line.begin(), line.end(), ',');
    if (line.starts_with("[")) {
      columns = commas == 0 ? 1 : commas;
    } else if (columns > 0) {
      EXPECT_TRUE(commas == columns || commas == 3 * columns) << line;
    }
  }
  EXPECT_EQ(test.Line("[RANGE]"), "[RANGE] ,CH1,CH2,CH3");
  EXPECT_EQ(test.Line("[STATUS]"), "[STATUS] ,DO1,DO2,DO3,DO4");
  EXPECT_EQ(test.Line("[PROCESS SETTING] I"), "[PROCESS SETTING] INSTALLATION SETUP,CH1,CH2");
}

TEST(ReadAll, AFailedReaderIsToldAndLeavesItsCellsEmpty) {
  ReportTest test(kTwoPipes);
  test.meter().BreakMemory(sim::Space::Holding, 0x1388, 0x1389, 2);  // range of CH2
  test.meter().BreakMemory(sim::Space::Holding, 0x00C0, 0x00C1, 4);  // display
  for (int i = 0; i < 2; ++i) test.dialogs().Answer(MessageAnswer::kOk);
  test.page.ReadParameter.Press();
  const std::string error = "The error occurred at the time of communication";
  EXPECT_EQ(test.dialogs().TakeTexts(), (Texts{error, error}));
  EXPECT_EQ(test.test.StatusText().find("Reading of system was completed"), 0u);
  const std::string full_scale = test.Line("FULL SCALE 1,");
  EXPECT_NE(full_scale.find(",,"), std::string::npos) << full_scale;
  EXPECT_EQ(test.Line("DISPLAY 1 ROW"), "DISPLAY 1 ROW,");
  EXPECT_NE(test.Line("DISPLAY 1 CHANNEL"), "DISPLAY 1 CHANNEL,") << "the other block of the reader";
  EXPECT_NE(test.Line("TRANS. COUNT"), "TRANS. COUNT,,") << "and the rest goes on";
  EXPECT_TRUE(test.page.ReadParameter.Enabled());
}

TEST(ReadAll, ALossIsToldInTheFileAndInTheStatusAndKeepsACompleteReport) {
  const std::string lost = "Not read: RANGE CH2, DISPLAY";
  const std::string title = "Read All Set Data,DATE:,";
  const struct {
    std::string earlier;
    MessageAnswer answer;  // kOk: nobody is asked
    bool written;
  } cases[] = {{"\xEF\xBB\xBF" + title + "2026/01/01 00:00:00\r\n[RANGE]\r\n", MessageAnswer::kNo, false},
               {title + "2026/01/01 00:00:00\r\n[RANGE]\r\n", MessageAnswer::kYes, true},
               {title + "2026/01/01 00:00:00\r\nNOT READ,RANGE CH1\r\n", MessageAnswer::kOk, true},
               {"", MessageAnswer::kOk, true},
               {"another file", MessageAnswer::kOk, true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.earlier);
    ReportTest test(kTwoPipes);
    if (!c.earlier.empty()) test.Files()[kReportFile] = c.earlier;
    test.meter().BreakMemory(sim::Space::Holding, 0x1388, 0x1389, 2);
    test.meter().BreakMemory(sim::Space::Holding, 0x00C0, 0x00C1, 4);
    for (int i = 0; i < 2; ++i) test.dialogs().Answer(MessageAnswer::kOk);
    const bool asked = c.answer != MessageAnswer::kOk;
    if (asked) test.dialogs().Answer(c.answer);
    test.page.ReadParameter.Press();
    const Texts said = test.dialogs().TakeTexts();
    ASSERT_EQ(said.size(), asked ? 3u : 2u);
    if (asked) {
      EXPECT_EQ(said.back(), "all settings.csv holds a complete report, and this reading is not complete.\n" +
                                 lost + "\nDo you want to replace it?");
      EXPECT_TRUE(test.dialogs().messages.back().second_is_default);
    }
    const std::string kept = "   No file was written: the complete report was kept";
    EXPECT_TRUE(test.test.StatusText().ends_with(lost + (c.written ? "" : kept))) << test.test.StatusText();
    if (!c.written) {
      EXPECT_EQ(test.Files()[kReportFile], c.earlier);
      continue;
    }
    EXPECT_EQ(test.Line("NOT READ,RANGE"), "NOT READ,RANGE CH2,1388H (32),[ADDRESS ERROR(02H)]");
    EXPECT_EQ(test.Line("NOT READ,DISPLAY"), "NOT READ,DISPLAY,00C0H (6),[UNKNOWN FUNCTION CODE ERROR]");
    EXPECT_LT(test.Files()[kReportFile].find("NOT READ"),
              test.Files()[kReportFile].find("[PROCESS SETTING]"));
  }
}

// The thermal ranges are read with each channel: once is enough.
TEST(ReadAll, WhatAnotherReaderBringsIsNotLost) {
  ReportTest test(kTwoPipes, 0);
  test.test.platform.Arm("exception=2@03F0H*4");
  test.dialogs().Answer(MessageAnswer::kOk);
  test.page.ReadParameter.Press();
  EXPECT_EQ(test.dialogs().TakeTexts().size(), 1u);
  EXPECT_EQ(test.test.StatusText().find("読み出せませんでした"), std::string::npos);
  EXPECT_EQ(test.Files()[kReportFile].find("未読出し"), std::string::npos);
}

TEST(ReadAll, TheNameCanBeGivenWhileItRuns) {
  const std::string kOther = "/data/other.csv";
  ReportTest test(kTwoPipes);
  Form6& page = test.page;
  bool pressed = false;
  test.app().frame->Status().Observe([&] {
    if (pressed || test.test.StatusText().find("3 of 17") == std::string::npos) return;
    pressed = true;
    EXPECT_FALSE(page.ReadParameter.Enabled());
    test.dialogs().SaveFile(kOther);
    EXPECT_TRUE(page.Save_As.Press());
    EXPECT_EQ(page.FileName.Text(), kReportFile) << "asked when the exchange has ended";
  });
  page.ReadParameter.Press();
  test.app().frame->Status().Observe({});
  EXPECT_TRUE(pressed);
  EXPECT_EQ(page.FileName.Text(), kOther);
  EXPECT_EQ(test.Files()[kOther], Golden("report_two_pipes_en.csv"));
  EXPECT_FALSE(test.Files().contains(kReportFile));
}

// A set has no moment between its exchanges at which a dialog would not hold it up.
TEST(Report, ItsNameIsAskedBehindWhatHoldsTheLine) {
  PageTest test(kTwoPipes);
  Form6& page = test.Open<Form6>("Form6");
  page.Read_All_Set_Data.Tick();
  page.IDNUM_CONFIGCheck.Tick();
  page.IDNUM_CONFIGText.Type("5");
  bool pressed = false;
  test.app().frame->Status().Observe([&] {
    if (std::exchange(pressed, true)) return;
    test.dialogs().SaveFile(kReportFile);
    EXPECT_TRUE(page.Save_As.Press());
  });
  page.SetParameter.Press();
  test.app().frame->Status().Observe({});
  EXPECT_EQ(page.FileName.Text(), "");
  WaitMs(test.app(), 500);
  EXPECT_EQ(page.FileName.Text(), kReportFile);
}

TEST(ReadAll, AnyBlockThatDoesNotComeIsToldOnceByItsReader) {
  for (const int block : {0x03EA, 0x03EC, 0x03EE, 0x03F0, 0x0400, 0x04A8, 0x005A, 0x0410, 0x0430, 0x00C0,
                          0x04B0, 0x04B4, 0x018E}) {
    SCOPED_TRACE(block);
    ReportTest test(kTwoPipes);
    const auto at = static_cast<std::uint32_t>(block);
    test.meter().BreakMemory(sim::Space::Holding, at, at + 1, 2);
    test.dialogs().Answer(MessageAnswer::kOk);
    test.page.ReadParameter.Press();
    EXPECT_EQ(test.dialogs().TakeTexts().size(), 1u);
  }
}

TEST(ReadAll, AMeterThatIsNotThereLeavesAnOlderReportAlone) {
  ReportTest test(kTwoPipes);
  test.Files()[kReportFile] = "an older report";
  test.test.platform.Arm("silence*ever");
  constexpr int kReaders = 8;
  for (int i = 0; i < kReaders; ++i) test.dialogs().Answer(MessageAnswer::kOk);
  test.page.ReadParameter.Press();
  EXPECT_EQ(test.dialogs().TakeTexts().size(), std::size_t{kReaders});
  EXPECT_TRUE(test.test.StatusText().ends_with("No file was written: nothing could be read"));
  EXPECT_EQ(test.Files()[kReportFile], "an older report");
  EXPECT_FALSE(test.app().state.UiLocked);
  EXPECT_TRUE(test.page.ReadParameter.Enabled());
}

TEST(ReadAll, ShowsHowFarItIsAndCanBeStopped) {
  ReportTest test(kTwoPipes);
  Form6& page = test.page;
  EXPECT_TRUE(page.cmdStopReadAll.Visible() && !page.cmdStopReadAll.Enabled());
  Texts told;
  test.app().frame->Status().Observe([&] {
    const std::string text = test.test.StatusText();
    if (text.find("Reading all settings") == 0) told.push_back(text);
    if (text.find("11 of 17") != std::string::npos) {
      EXPECT_FALSE(page.ReadParameter.Enabled());
      page.cmdStopReadAll.Press();
    }
  });
  page.ReadParameter.Press();
  test.app().frame->Status().Observe({});
  ASSERT_EQ(told.size(), 11u);
  EXPECT_EQ(told.front(), "Reading all settings: 1 of 17, SYSTEM");
  EXPECT_EQ(told[6], "Reading all settings: 7 of 17, RANGE CH3");
  EXPECT_EQ(told.back(), "Reading all settings: 11 of 17, STATUS DO1");
  EXPECT_EQ(test.Requests().back(), "03 04 00 00 08");
  EXPECT_FALSE(test.Files().contains(kReportFile));
  EXPECT_EQ(test.test.StatusText(), "Reading of system was completed Stopped: no file was written");
  EXPECT_FALSE(page.cmdStopReadAll.Enabled());
  page.ReadParameter.Press();
  EXPECT_TRUE(test.Files().contains(kReportFile)) << "a new read-out is not stopped";
}

TEST(Report, WhatCannotBeWrittenHarmsNothingAndIsTold) {
  const struct {
    FileError error;
    const char* told;
  } cases[] = {{FileError::kFull, "could not be written: the disk is full"},
               {FileError::kNoPermission, "could not be written: permission denied"},
               {FileError::kNotAFile, "could not be written: it is a folder"}};
  for (const auto& c : cases) {
    for (int change = 1; change <= 2; ++change) {
      ReportTest test(kOnePath);
      test.Files()[kReportFile] = "an older report";
      test.test.platform.files.FailChange(change, c.error);
      test.page.ReadParameter.Press();
      EXPECT_EQ(test.test.StatusText(), std::string("Reading of system was completed all settings.csv") +
                                            (change == 1 ? ".tmp " : " ") + c.told);
      EXPECT_EQ(test.Files().size(), 1u) << "nothing half written stays";
      EXPECT_EQ(test.Files()[kReportFile], "an older report");
      EXPECT_EQ(test.dialogs().TakeTexts(), Texts{}) << "without a box";
    }
  }
}

TEST(Report, IsWrittenOnlyWhenItIsAskedFor) {
  ReportTest test(kOnePath);
  test.page.IDNUM_CONFIGCheck.Tick();
  test.page.IDNUM_CONFIGText.Type("5");
  test.page.SetParameter.Press();
  EXPECT_EQ(test.Requests(), (Texts{"10 01 04 00 01 02 00 05", kConfig[0], kConfig[1], "03 01 00 00 03"}))
      << "a read-back brings no report";
  test.page.Read_All_Set_Data.Untick();
  EXPECT_FALSE(test.page.FileName.Visible() || test.page.Save_As.Visible() || test.page.Label3.Visible());
  test.page.ReadParameter.Press();
  EXPECT_TRUE(test.Files().empty());

  PageTest other(kOnePath);
  Form6& page = other.Open<Form6>("Form6");
  page.Read_All_Set_Data.Tick();
  page.ReadParameter.Press();
  EXPECT_TRUE(other.test.platform.files.files.empty());
  EXPECT_EQ(other.test.StatusText(),
            "Reading of system was completed No file was written: no file name is chosen");
}

TEST(Report, ItsNameIsAskedWithItsOwnFilter) {
  PageTest test(kOnePath);
  Form6& page = test.Open<Form6>("Form6");
  page.Read_All_Set_Data.Tick();
  test.app().state.IniFilePath = "/app/VLT.ini";
  for (const auto& answer : {std::optional<std::string>("/data/a.csv"), std::optional<std::string>()}) {
    test.dialogs().SaveFile(answer);
    page.Save_As.Press();
    EXPECT_EQ(page.FileName.Text(), "/data/a.csv") << "Cancel keeps the name";
  }
  EXPECT_EQ(test.dialogs().questions.back().filter, "Initialvalue(*.csv)|*.csv");
  test.dialogs().SaveFile("/app/VLT.ini");
  test.dialogs().Answer(MessageAnswer::kOk);
  page.Save_As.Press();
  EXPECT_EQ(test.dialogs().TakeTexts(), Texts{"The loader early stage file can not be updated"});
  EXPECT_EQ(page.FileName.Text(), "/data/a.csv");
}

}  // namespace
}  // namespace vlt::test
