// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell_fixture.h"

namespace vlt::test {
namespace {

using StartTest = ShellTest;

TEST_F(StartTest, RunsTheSplashOfTheVariantOrEndsAndSaysWhy) {
  const auto wrong = [](const std::string& code) {
    return "/app/VLT.ini: SYSTEM/VR is \"" + code + "\" and must be one of M627, T305, K410";
  };
  const struct {
    const char* system;  // keys of VLT.ini; null: there is no such file
    const char* splash;  // null: the start ends with the box
    const char* box;
    std::string reason;
  } cases[] = {
      {nullptr, nullptr, "起動できません。", "/app/VLT.ini を読み込めません: ファイルがありません"},
      {"LANG_FLAG=1\r\n", nullptr, "Can not start.", wrong("")},
      {"VR=m627\r\nLANG_FLAG=1\r\n", nullptr, "Can not start.", wrong("m627")},
      {"VR=M627 \r\nLANG_FLAG=1\r\n", nullptr, "Can not start.", wrong("M627 ")},
      {"VR=\"M627 \"\r\nLANG_FLAG=2\r\n", nullptr, "Can not start.", wrong("M627 ")},
      {"LANG_FLAG=1\r\nVR=X\r\n[VERIFICATION]\r\nLOGO_FLG=no\r\n", nullptr, "Can not start.", wrong("X")},
      // The settings end at the port, ahead of the language and the variant.
      {"LANG_FLAG=1\r\nVR=M627\r\n[COMM]\r\nPORT=COM3\r\n", nullptr, "起動できません。",
       "/app/VLT.ini: COMM/PORT の値が正しくありません"},
      {"VR=M627\r\n", "frmSplash", nullptr, ""},
      {"VR=T305\r\n", "frmSplash_T305", nullptr, ""},
      {"VR=K410\r\n[COMM]\r\nPORT=1\r\n", "frmSplash_K410", nullptr, ""},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(given.system != nullptr ? given.system : "no file");
    const bool ends = given.splash == nullptr;
    UseMeter({});
    if (ends) platform->dialogs.Answer(MessageAnswer::kOk);
    given.system != nullptr ? Start(given.system) : void(StartUp(*app));
    EXPECT_EQ(platform->time.Ended(), ends);
    EXPECT_EQ(app->windows.Open().size(), ends ? 0U : 1U);
    EXPECT_TRUE(ends || IsShown(given.splash));
    EXPECT_EQ(platform->dialogs.TakeTexts(), ends ? Texts{given.box} : Texts{});
    EXPECT_EQ(app->state.StartFaultReason, given.reason);
    EXPECT_EQ(platform->process.errors, ends ? Texts{given.reason} : Texts{});
    EXPECT_FALSE(platform->simulated.IsOpen());
  }
  UseMeter({});
  platform->files.files[kIniPath] = "[SYSTEM]\r\nVR=M627\r\nINI_FILENAME=\\sub\\site.ini\r\n";
  platform->dialogs.Answer(MessageAnswer::kOk);
  StartUp(*app);
  EXPECT_EQ(app->state.StartFaultReason, "/app/sub/site.ini を読み込めません: ファイルがありません");
}

TEST_F(StartTest, ASecondInstanceEndsWithoutAWord) {
  platform->process.only_instance = false;
  Start("VR=M627\r\n");
  EXPECT_TRUE(platform->time.Ended());
  EXPECT_TRUE(app->state.ModelCode.empty());
}

TEST_F(StartTest, ALockFileThatWasLeftBehindIsNamed) {
  using State = FoundLock::State;
  const struct {
    FoundLock lock;
    const char* told;
    bool runs;
  } cases[] = {
      {{State::kTakenOver, "/app/veltrano3.lock", 77, "pc2"},
       "/app/veltrano3.lock was left behind by process 77 on pc2; no process holds it, so it was taken over",
       true},
      {{State::kElsewhere, "/app/veltrano3.lock", 0, ""},
       "/app/veltrano3.lock was left behind by an unknown owner and can't be taken over; no process holds it",
       true},
      {{State::kUnsure, "/app/veltrano3.lock", 77, "pc2"},
       "/app/veltrano3.lock may be in use by process 77 on pc2; if it is not, remove that file",
       false},
  };
  for (const auto& given : cases) {
    UseMeter({});
    platform->process.only_instance = given.runs;
    platform->process.lock = given.lock;
    if (!given.runs) platform->dialogs.Answer(MessageAnswer::kOk);
    Start("VR=M627\r\nLANG_FLAG=1\r\n");
    EXPECT_EQ(platform->process.errors, Texts{given.told});
    EXPECT_EQ(platform->dialogs.TakeTexts(), given.runs ? Texts{} : Texts{given.told});
    EXPECT_EQ(platform->time.Ended(), !given.runs);
    if (!given.runs) continue;
    platform->dialogs.Answer(MessageAnswer::kOk);  // there is no port
    platform->time.RunFor(2000);
    EXPECT_NE(app->frame->Status().Panel(1).find(given.told), std::string::npos);
  }
}

TEST_F(StartTest, TheFileThatIsNamedWinsInAllKeys) {
  platform->files.files["/app/site.ini"] =
      "[SYSTEM]\nVR=K410\nLANG_FLAG=1\nUNIT_FLAG=1\nUSER_INFO=service\nINI_FILENAME=site.ini\n"
      "[COMM]\nPORT=11\nSPEED=19200\nPARITY=E\n[RANGE]\nRANGE_UNIT_Data=7\n";
  platform->files.files[kIniPath] = "[SYSTEM]\nVR=M627\nINI_FILENAME=site.ini\n[COMM]\nPORT=11\n";
  EXPECT_EQ(StartUp(*app), StartResult::kSplashRuns);
  EXPECT_TRUE(IsShown("frmSplash_K410"));
  const SharedState& state = app->state;
  EXPECT_EQ(state.IniFilePath, "/app/site.ini");
  EXPECT_EQ(state.IniShortPath, "/app/site.ini");
  EXPECT_EQ(state.CommSettings, "19200,E,8,1");
  EXPECT_EQ(state.UserInfo, "Standard");
  EXPECT_EQ(state.RangeUnit[0], 7);
  EXPECT_EQ(state.RangeUnitTrack, 1);
  EXPECT_EQ(state.TotalUnitTrack, 1);
  EXPECT_EQ(state.PortNo, "");  // a port beyond the table's last is none
}

}  // namespace
}  // namespace vlt::test
