// SPDX-License-Identifier: GPL-3.0-or-later
// The read-out of all settings and its report.
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

  Form6& page = Open<Form6>("Form6");
};

std::string Golden(const std::string& name) {
  std::ifstream file(std::string(TEST_DATA) + "/" + name, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

// Byte for byte. Where a golden file is wanted anew, the test program writes what it gets beside it.
TEST(Report, IsWhatItsGoldenFilesSay) {
  const struct {
    const char* golden;
    Shape shape;
    int lang_offset;
  } cases[] = {{"report_two_pipes_en.csv", kTwoPipes, 5000},
               {"report_two_paths_en.csv", kTwoPaths, 5000},
               {"report_one_path_ja.csv", kOnePath, 0},
               {"report_single_en.csv", kSingleModel, 5000}};
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
  page.IDNUM_CONFIGText.box.Tick();
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

}  // namespace
}  // namespace vlt::test
