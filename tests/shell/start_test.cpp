#include "shell_fixture.h"

namespace vlt::test {
namespace {

struct StartCase {
  const char* what;
  const char* system;  // keys of VLT.ini; null: there is no such file
  const char* splash;  // null: the start ends
  const char* box;     // empty: none
};

class StartTable : public ShellTest, public ::testing::WithParamInterface<StartCase> {};

TEST_P(StartTable, EndsOrRunsTheSplashOfTheVariant) {
  const StartCase& given = GetParam();
  if (given.system != nullptr) PutIni(given.system);
  if (*given.box != '\0') platform->dialogs.Answer(MessageAnswer::kOk);
  const StartResult result = StartUp(*app);
  EXPECT_EQ(result == StartResult::kSplashRuns, given.splash != nullptr);
  EXPECT_EQ(platform->time.Ended(), given.splash == nullptr);
  for (const char* splash : {"frmSplash", "frmSplash_T305", "frmSplash_K410"}) {
    EXPECT_EQ(IsShown(splash), given.splash != nullptr && std::string(given.splash) == splash) << splash;
  }
  const std::vector<std::string> boxes = platform->dialogs.TakeTexts();
  ASSERT_EQ(boxes.size(), *given.box == '\0' ? 0U : 1U);
  if (!boxes.empty()) {
    EXPECT_EQ(boxes[0], given.box);
    EXPECT_EQ(platform->dialogs.messages[0].title, "Veltrano3");
  }
  EXPECT_FALSE(platform->simulated.IsOpen());
}

INSTANTIATE_TEST_SUITE_P(
    Variants, StartTable,
    ::testing::Values(StartCase{"no file", nullptr, nullptr, "起動できません。"},
                      StartCase{"no variant", "LANG_FLAG=1\r\n", nullptr, "Can not start."},
                      StartCase{"wrong case", "VR=m627\r\nLANG_FLAG=1\r\n", nullptr, "Can not start."},
                      StartCase{"trailing blank", "VR=\"M627 \"\r\nLANG_FLAG=2\r\n", nullptr,
                                "Can not start."},
                      StartCase{"M627", "VR=M627\r\n", "frmSplash", ""},
                      StartCase{"T305", "VR=T305\r\n", "frmSplash_T305", ""},
                      StartCase{"K410", "VR=K410\r\n", "frmSplash_K410", ""}));

using StartTest = ShellTest;

TEST_F(StartTest, ASecondInstanceEndsWithoutAWord) {
  PutIni("VR=M627\r\n");
  platform->process.only_instance = false;
  EXPECT_EQ(StartUp(*app), StartResult::kEnded);
  EXPECT_TRUE(platform->time.Ended());
  EXPECT_TRUE(app->state.ModelCode.empty());
  EXPECT_TRUE(app->windows.Open().empty());
}

TEST_F(StartTest, TheFileThatIsNamedWinsInAllKeys) {
  platform->files.files[kIniPath] = "[SYSTEM]\nVR=M627\nINI_FILENAME=site.ini\n[RANGE]\nRANGE_UNIT_Data=1\n";
  platform->files.files["/app/site.ini"] =
      "[SYSTEM]\nVR=K410\nLANG_FLAG=1\nUNIT_FLAG=1\nUSER_INFO=service\nINI_FILENAME=site.ini\n"
      "[COMM]\nPORT=11\nSPEED=19200\nPARITY=E\n[RANGE]\nRANGE_UNIT_Data=7\n";
  platform->process.short_path = "C:\\SITE~1.INI";
  EXPECT_EQ(StartUp(*app), StartResult::kSplashRuns);
  EXPECT_TRUE(IsShown("frmSplash_K410"));
  const SharedState& state = app->state;
  EXPECT_EQ(state.IniFilePath, "/app/site.ini");
  EXPECT_EQ(state.IniShortPath, "C:\\SITE~1.INI");
  EXPECT_EQ(state.CommSettings, "19200,E,8,1");
  EXPECT_EQ(state.LangOffset, 5000);
  EXPECT_EQ(state.UserInfo, "Standard");
  EXPECT_EQ(state.RangeUnit[0], 7);
  EXPECT_EQ(state.RangeUnitTrack, 1);
  EXPECT_EQ(state.TotalUnitTrack, 1);
  EXPECT_EQ(state.LocaleId, 1033);
  // The bootstrap file has no port, which is port 0, and a port beyond the table's last changes nothing.
  EXPECT_EQ(state.PortNo, "0");
}

TEST_F(StartTest, APortBeyondTheTableIsNoPort) {
  PutIni("VR=M627\r\n", "[COMM]\r\nPORT=11\r\n");
  StartUp(*app);
  EXPECT_EQ(app->state.PortNo, "");
}

}  // namespace
}  // namespace vlt::test
