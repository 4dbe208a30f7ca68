// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/splash.h"

#include "firmware/firmware.h"
#include "resources/version.h"
#include "shell_fixture.h"

namespace vlt::test {
namespace {

const std::string kLine = "[COMM]\r\nPORT=1\r\nSTATION_NO=01\r\n";
constexpr int kSingleChannelModel = 182;

class SplashTest : public ShellTest {
 protected:
  // Without the frame check, which the simulated meter has judged.
  Texts TakeRequests() {
    Texts requests = platform->TakeRequests();
    for (std::string& request : requests) request.resize(request.size() - 6);
    return requests;
  }
};

TEST_F(SplashTest, EachVariantAsksInItsOrder) {
  const std::string unit = "01 03 01 00 00 02", flow = "01 03 00 04 00 01", total = "01 03 00 40 00 01",
                    spec = "01 03 01 48 00 01", heat_flow = "01 03 04 B6 00 01",
                    heat_total = "01 03 04 B8 00 01", temperature = "01 03 04 B4 00 01",
                    mode = "01 03 00 3E 00 01";
  const int full = sim::MeterConfig{}.specification;
  const Texts heat_before_mode{unit, flow, total, spec, heat_flow, heat_total, temperature, mode};
  const Texts mode_before_heat{unit, flow, total, mode, spec, heat_flow, heat_total, temperature};
  const struct {
    const char* system;
    int specification;
    Texts expected;
    const char* version_suffix;
    int images;
  } cases[] = {
      {"VR=M627\r\nLANG_FLAG=1\r\n", full, heat_before_mode, "D", 4},
      {"VR=M627\r\n", kSingleChannelModel, {unit, flow, total, spec, mode}, "D", 4},
      {"VR=T305\r\nLANG_FLAG=1\r\n", full, mode_before_heat, "E", 3},
      {"VR=K410\r\n", kSingleChannelModel, {unit, flow, total, mode, spec}, "J", 3},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(given.system);
    UseMeter({.specification = given.specification, .unit_system = 1, .language = 3});
    Start(given.system, kLine + "[TEMPERATURE]\r\nRANGE_UNIT_Data=6\r\n");
    Form& splash = *app->windows.Open().front();
    EXPECT_EQ(splash.Find("lblVersion")->Caption(), VersionText(given.version_suffix));
    int images = 0;
    for (const Control* control : splash.Controls()) images += control->Kind() == ControlKind::kPicture;
    EXPECT_EQ(images, given.images);
    std::vector<std::pair<std::string, std::int64_t>> progress;
    Control& warning = *splash.Find("lblWarning");
    warning.Observe([&] { progress.emplace_back(warning.Caption(), platform->time.NowMs()); });
    platform->time.RunFor(500);
    EXPECT_EQ(TakeRequests(), given.expected);
    ASSERT_EQ(progress.size(), 2U);
    EXPECT_EQ(progress[0], std::pair(std::string("Get Unit && Language..."), std::int64_t{500}));
    EXPECT_EQ(progress[1], std::pair(std::string("Loader Running..."), platform->time.NowMs() - 1000));
    EXPECT_EQ(app->windows.Open(), std::vector<Form*>{&app->frame->Window()});
    EXPECT_TRUE(IsShown("MDIForm1"));
    const bool english = app->state.LangFlag == 1;
    EXPECT_EQ(app->frame->Status().Panel(2), english ? "FRENCH" : app->Text(2300));
    EXPECT_EQ(app->frame->Status().Panel(3), english ? "ENGLISH" : app->Text(2270));
    const bool single = given.specification == kSingleChannelModel;
    EXPECT_EQ(app->state.SpecClass, single ? 1 : 0);
    EXPECT_EQ(app->state.HeatFlowUnit == 6, single);
  }
}

// One box, then the main window with the values of the settings file.
TEST_F(SplashTest, WorksWithoutAMeter) {
  // One failed attempt at 9600 baud: 12 ms until the request has left, waits of 25, 10 of 6, 11 of 11, and 6.
  constexpr std::int64_t kAttemptMs = 12 + 25 + 60 + 121 + 6;
  const struct {
    std::string line;
    bool opens;
    std::int64_t main_window_ms;
  } cases[] = {
      {"[COMM]\r\nPORT=00\r\n", false, 500 + 1000},
      {"[COMM]\r\nPORT=5\r\n", false, 500 + 1000},
      {kLine, true, 500 + 4 * kAttemptMs + 1000},
      {kLine + "RETRY_NO=0\r\n", true, 500 + kAttemptMs + 1000},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(given.line);
    UseMeter({});
    platform->Arm("silence*ever");
    platform->dialogs.Answer(MessageAnswer::kOk);
    Start("VR=T305\r\nLANG_FLAG=1\r\nSYSTEM_LANG_FLAG=4\r\nUNIT_FLAG=1\r\n", given.line);
    platform->time.RunFor(500);
    EXPECT_TRUE(IsShown("MDIForm1"));
    EXPECT_EQ(platform->time.NowMs(), given.main_window_ms);
    EXPECT_EQ(platform->dialogs.TakeTexts(), Texts{"Set in the communication"});
    EXPECT_EQ(platform->dialogs.messages[0].icon, MessageIcon::kInformation);
    EXPECT_EQ(app->frame->Status().Panel(2), "SPANISH");
    EXPECT_EQ(app->frame->Status().Panel(3), "ENGLISH");
    // A port that could not be opened says why; a meter's silence is told by the box alone.
    EXPECT_EQ(StatusText().empty(), given.opens);
  }
}

TEST_F(SplashTest, AFailedQueryKeepsTheFilesValueAndTheRestIsAsked) {
  platform->Arm("exception=2@0148H*ever");
  platform->Meter().holding().PutWord(0x0102, 7);
  Start("VR=M627\r\n", kLine + "RETRY_NO=0\r\n[RANGE]\r\nOPERATION_MODE_Data=9\r\n");
  platform->time.RunFor(500);
  EXPECT_EQ(app->state.SpecClass, 0);
  EXPECT_NE(app->state.OperationMode, 9);
  EXPECT_EQ(TakeRequests().back(), "01 03 00 3E 00 01");
  EXPECT_EQ(app->frame->Status().Panel(2), "");  // no name for this language
}

class ChoiceTest : public SplashTest {
 protected:
  void PressAt(int ms, const char* button) {
    platform->time.At(ms, [this, button] {
      ASSERT_TRUE(IsShown("frmMssg"));
      EXPECT_TRUE(platform->TakeRequests().empty());
      EXPECT_FALSE(app->windows.Find("frmMssg")->HasCloseCommand());
      On<PushButton>("frmMssg", button).Press();
    });
  }
};

TEST_F(ChoiceTest, TheLoaderGoesOn) {
  Start("VR=T305\r\nLANG_FLAG=1\r\nUSER_INFO=Service\r\n", kLine);
  PressAt(60'000, "cmdLoader");
  platform->time.RunFor(500);
  EXPECT_EQ(app->windows.Open(), std::vector<Form*>{&app->frame->Window()});
  EXPECT_GT(platform->time.NowMs(), 60'000);
}

TEST_F(ChoiceTest, TheFirmwareToolRunsToItsEndAndTheProgramWithIt) {
  RegisterFirmwareWindows(*app);
  Start("VR=T305\r\nLANG_FLAG=1\r\nUSER_INFO=Factory\r\n", kLine);
  PressAt(700, "cmdDown");
  platform->time.At(90'000, [this] {
    EXPECT_TRUE(IsShown("frmMaint_MAIN"));
    EXPECT_FALSE(IsShown("frmSplash_T305") || IsShown("frmMssg"));
    On<MenuItem>("frmMaint_MAIN", "MENU_COMM").Press();
    On<PushButton>("frmMaint_MAIN", "cmdQuit").Press();
  });
  platform->dialogs.Answer(MessageAnswer::kOk, [this] {
    EXPECT_TRUE(IsShown("frmSplash_T305"));
    EXPECT_EQ(app->windows.Open().size(), 1U);
  });
  platform->time.RunFor(500);
  EXPECT_EQ(platform->dialogs.TakeTexts(), Texts{"Normal End"});
  EXPECT_EQ(app->state.ChoiceResult, 1);
  EXPECT_TRUE(platform->time.Ended());
  EXPECT_TRUE(app->windows.Open().empty());
  EXPECT_TRUE(platform->TakeRequests().empty());
}

}  // namespace
}  // namespace vlt::test
