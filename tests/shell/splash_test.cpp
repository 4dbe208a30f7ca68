#include "shell/splash.h"

#include "resources/text_ids.h"
#include "shell/frm_mssg.h"
#include "shell/version.h"
#include "shell_fixture.h"

namespace vlt::test {
namespace {

using Requests = std::vector<std::string>;

constexpr const char* kLine = "[COMM]\r\nPORT=1\r\nSTATION_NO=01\r\n";

class SplashTest : public ShellTest {
 protected:
  // Runs the program until its main window is up; gives the moment at which it came, or -1.
  std::int64_t RunToMainWindow(const std::string& system, const std::string& line = kLine) {
    PutIni(system, line);
    StartUp(*app);
    while (!IsShown("MDIForm1") && platform->time.NowMs() < 60'000) platform->time.RunFor(1);
    return IsShown("MDIForm1") ? platform->time.NowMs() : -1;
  }

  void UseMeter(const sim::MeterConfig& meter) {
    app.reset();
    platform = std::make_unique<VirtualPlatform>(PortKind::kSimulated, meter);
    app = std::make_unique<App>(platform->machine);
    RegisterShellWindows(*app);
  }

  // Without the frame check, which the simulated meter has judged.
  Requests TakeRequests() {
    Requests requests = platform->TakeRequests();
    for (std::string& request : requests) request.resize(request.size() - 6);
    return requests;
  }
};

constexpr int kSingleChannelModel = 182;

struct Identification {
  const char* system;
  int specification;
  Requests expected;
  const char* version_suffix;
  int images;
};

TEST_F(SplashTest, EachVariantAsksInItsOrder) {
  const std::string unit = "01 03 01 00 00 02", flow = "01 03 00 04 00 01", total = "01 03 00 40 00 01",
                    spec = "01 03 01 48 00 01", heat_flow = "01 03 04 B6 00 01",
                    heat_total = "01 03 04 B8 00 01", temperature = "01 03 04 B4 00 01",
                    mode = "01 03 00 3E 00 01";
  const int full = sim::MeterConfig{}.specification;
  const Identification cases[] = {
      {"VR=M627\r\nLANG_FLAG=1\r\n",
       full,
       {unit, flow, total, spec, heat_flow, heat_total, temperature, mode},
       "D",
       4},
      {"VR=M627\r\n", kSingleChannelModel, {unit, flow, total, spec, mode}, "D", 4},
      {"VR=T305\r\nLANG_FLAG=1\r\n",
       full,
       {unit, flow, total, mode, spec, heat_flow, heat_total, temperature},
       "E",
       3},
      {"VR=K410\r\n", kSingleChannelModel, {unit, flow, total, mode, spec}, "J", 3},
  };
  for (const Identification& given : cases) {
    SCOPED_TRACE(given.system);
    UseMeter({.specification = given.specification});
    app->state.HeatFlowUnit = 5;
    PutIni(given.system, std::string(kLine) + "[TEMPERATURE]\r\nRANGE_UNIT_Data=6\r\n");
    StartUp(*app);
    Form& splash = *app->windows.Open().front();
    EXPECT_EQ(splash.Find("lblVersion")->Caption(), VersionText(given.version_suffix));
    EXPECT_EQ(splash.Find("lblProductName")->Caption(), "Veltrano3");
    int images = 0;
    for (const Control* control : splash.Controls()) images += control->Kind() == ControlKind::kPicture;
    EXPECT_EQ(images, given.images);
    platform->time.RunFor(499);
    EXPECT_TRUE(TakeRequests().empty());
    platform->time.RunFor(5'000);
    EXPECT_EQ(TakeRequests(), given.expected);
    EXPECT_TRUE(IsShown("MDIForm1"));
    EXPECT_EQ(app->windows.Open().size(), 1U);
    const bool single = given.specification == kSingleChannelModel;
    EXPECT_EQ(app->state.SpecClass, single ? 1 : 0);
    EXPECT_EQ(app->state.HeatFlowUnit == 6, single);
  }
}

TEST_F(SplashTest, ShowsItsProgressAndTheMetersFacts) {
  UseMeter({.unit_system = 1, .language = 3});
  PutIni("VR=M627\r\nLANG_FLAG=1\r\nSYSTEM_LANG_FLAG=2\r\n", kLine);
  StartUp(*app);
  std::vector<std::pair<std::string, std::int64_t>> progress;
  auto& warning = On<Label>("frmSplash", "lblWarning");
  warning.Observe([&] { progress.emplace_back(warning.Caption(), platform->time.NowMs()); });
  platform->time.RunFor(500);
  ASSERT_EQ(progress.size(), 2U);
  EXPECT_EQ(progress[0], std::pair(std::string("Get Unit && Language..."), std::int64_t{500}));
  EXPECT_EQ(progress[1].first, "Loader Running...");
  EXPECT_EQ(platform->time.NowMs(), progress[1].second + 1000);
  ASSERT_TRUE(IsShown("MDIForm1"));
  EXPECT_EQ(app->state.UnitFlag, 1);
  EXPECT_EQ(app->frame->Status().Panel(2), "FRENCH");
  EXPECT_EQ(app->frame->Status().Panel(3), "ENGLISH");
}

struct SilentCase {
  const char* what;
  const char* line;
  const char* fault;
  std::int64_t main_window_ms;
};

// Without a meter: one box, then the main window with the values of the settings file.
TEST_F(SplashTest, WorksWithoutAMeter) {
  // One failed attempt at 9600 baud: 12 ms until the request has left, waits of 25, 10 of 6, 11 of 11, and 6.
  constexpr std::int64_t kAttemptMs = 12 + 25 + 60 + 121 + 6;
  const SilentCase cases[] = {
      {"port 00", "[COMM]\r\nPORT=00\r\n", nullptr, 500 + 1000},
      {"port that leads nowhere", "[COMM]\r\nPORT=5\r\n", nullptr, 500 + 1000},
      {"silent meter", kLine, "silence*ever", 500 + 4 * kAttemptMs + 1000},
      {"silent meter, no retry", "[COMM]\r\nPORT=1\r\nSTATION_NO=01\r\nRETRY_NO=0\r\n", "silence*ever",
       500 + kAttemptMs + 1000},
  };
  for (const SilentCase& given : cases) {
    SCOPED_TRACE(given.what);
    UseMeter({});
    if (given.fault != nullptr) platform->Arm(given.fault);
    platform->dialogs.Answer(MessageAnswer::kOk);
    const auto at =
        RunToMainWindow("VR=T305\r\nLANG_FLAG=1\r\nSYSTEM_LANG_FLAG=4\r\nUNIT_FLAG=1\r\n", given.line);
    EXPECT_EQ(at, given.main_window_ms);
    EXPECT_EQ(platform->dialogs.TakeTexts(), Requests{"Set in the communication"});
    EXPECT_EQ(platform->dialogs.messages[0].icon, MessageIcon::kInformation);
    EXPECT_EQ(app->frame->Status().Panel(2), "SPANISH");
    EXPECT_EQ(app->frame->Status().Panel(3), "ENGLISH");
    // A port that could not be opened says why; a meter's silence is told by the box alone.
    EXPECT_EQ(StatusText().empty(), given.fault != nullptr);
  }
}

TEST_F(SplashTest, AFailedQueryKeepsTheFilesValueAndTheRestIsAsked) {
  platform->Arm("exception=2@0148H*ever");
  RunToMainWindow("VR=M627\r\n", std::string(kLine) + "RETRY_NO=0\r\n[RANGE]\r\nOPERATION_MODE_Data=9\r\n");
  EXPECT_EQ(app->state.SpecClass, 0);
  EXPECT_NE(app->state.OperationMode, 9);
  const Requests requests = TakeRequests();
  EXPECT_EQ(requests.size(), 5U);
  EXPECT_EQ(requests.back(), "01 03 00 3E 00 01");
}

TEST_F(SplashTest, AnUnknownMeterLanguageLeavesItsPanel) {
  platform->Meter().holding().PutWord(0x0102, 7);
  RunToMainWindow("VR=M627\r\n");
  EXPECT_EQ(app->state.SystemLangFlag, 7);
  EXPECT_EQ(app->frame->Status().Panel(2), "");
}

class ChoiceTest : public SplashTest {
 protected:
  void StartToChoice(const char* level) {
    PutIni("VR=T305\r\nLANG_FLAG=1\r\nUSER_INFO=" + std::string(level) + "\r\n", kLine);
    StartUp(*app);
    platform->time.After(600, [this] {
      ASSERT_TRUE(IsShown("frmMssg"));
      EXPECT_TRUE(platform->TakeRequests().empty());
      EXPECT_EQ(app->windows.Find("frmMssg")->Caption(), "The fuature choice");
      EXPECT_FALSE(app->windows.Find("frmMssg")->HasCloseCommand());
    });
  }
  void PressAfter(int ms, const char* button) {
    platform->time.After(ms, [this, button] { On<PushButton>("frmMssg", button).Press(); });
  }
};

TEST_F(ChoiceTest, LoaderGoesOnToTheMainWindow) {
  StartToChoice("Service");
  PressAfter(60'000, "cmdLoader");
  platform->time.RunFor(70'000);
  EXPECT_TRUE(IsShown("MDIForm1"));
  EXPECT_EQ(app->windows.Open().size(), 1U);
  EXPECT_EQ(app->state.ChoiceResult, 2);
}

TEST_F(ChoiceTest, WithoutTheFirmwareToolTheChoiceStays) {
  StartToChoice("Factory");
  platform->dialogs.Answer(MessageAnswer::kOk);
  PressAfter(700, "cmdDown");
  platform->time.After(800, [this] { EXPECT_TRUE(IsShown("frmMssg")); });
  PressAfter(900, "cmdLoader");
  platform->time.RunFor(5'000);
  EXPECT_EQ(platform->dialogs.TakeTexts(), Requests{app->Text(text::kFirmwareToolMissing)});
  EXPECT_TRUE(IsShown("MDIForm1"));
}

TEST_F(ChoiceTest, TheFirmwareToolRunsToItsEndAndTheProgramWithIt) {
  app->windows.Register("frmMaint_MAIN", [this] {
    return std::make_unique<Form>(app->windows, "frmMaint_MAIN", FormPlace::kWindow);
  });
  StartToChoice("Factory");
  PressAfter(700, "cmdDown");
  platform->time.After(90'000, [this] {
    EXPECT_TRUE(IsShown("frmMaint_MAIN"));
    EXPECT_FALSE(IsShown("frmSplash_T305"));
    EXPECT_EQ(app->windows.Find("frmMssg"), nullptr);
    app->windows.Unload("frmMaint_MAIN");
  });
  platform->dialogs.Answer(MessageAnswer::kOk, [this] { EXPECT_TRUE(IsShown("frmSplash_T305")); });
  platform->time.RunFor(100'000);
  EXPECT_EQ(platform->dialogs.TakeTexts(), Requests{"Normal End"});
  EXPECT_TRUE(platform->time.Ended());
  EXPECT_TRUE(app->windows.Open().empty());
}

}  // namespace
}  // namespace vlt::test
