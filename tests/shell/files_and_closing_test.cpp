// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "shell_fixture.h"

namespace vlt::test {
namespace {

constexpr const char* kPipe = "OUTER_DIAMETER_Data=60.5";

class FilesTest : public ShellTest {
 protected:
  bool Holds(const std::string& path, const std::string& text) {
    return platform->files.files[path].find(text) != std::string::npos;
  }
  std::string Said(int id, std::initializer_list<std::string_view> args) {
    return FormatText(app->Text(id), args);
  }
};

TEST_F(FilesTest, OpeningAFileTakesItsSettingsAndClosesThePages) {
  MDIForm1& window = OpenMainWindow();
  Press("Command2");
  app->windows.Load("frmAbout").Show();
  platform->files.files["/data/pump.ini"] =
      "[SYSTEM]\nUNIT_FLAG=1\nLANG_FLAG=0\nUSER_INFO=Factory\n[COMM]\nTRANS_METHOD=RS485\n[PROCESS "
      "SETTING]\nOUTER_DIAMETER_Data=114.3\n";
  platform->dialogs.OpenFile("/data/pump.ini");
  Choose("readparam");
  EXPECT_EQ(app->windows.Open().size(), 1U);
  EXPECT_EQ(platform->dialogs.questions[0].filter, "Initial value(*.ini)|*.ini");
  EXPECT_EQ(app->state.UserInfo, "Factory");
  EXPECT_EQ(app->state.LangFlag, 1);
  EXPECT_EQ(app->slots.At("PROCESS SETTING", "OUTER_DIAMETER_Data"), "114.3");
  EXPECT_EQ(window.StatusBar1.Panel(3), "ENGLISH");
  EXPECT_TRUE(window.Command14.Visible());
  EXPECT_EQ(StatusText(), Said(text::kFileOpened, {"pump.ini", "4", "162"}));
}

TEST_F(FilesTest, AFileThatCannotBeReadChangesNothing) {
  MDIForm1& window = OpenMainWindow();
  Press("Command2");
  notes["Form2"].refuses = true;
  platform->files.FailPath("/data/locked.ini", FileError::kNoPermission);
  const std::pair<std::optional<std::string>, std::string> cases[] = {
      {std::nullopt, ""},
      {"/data/gone.ini", Said(text::kFileNotRead, {"gone.ini", app->Text(text::kFileMissing)})},
      {"/data/locked.ini", Said(text::kFileNotRead, {"locked.ini", app->Text(text::kFileNotAllowed)})},
  };
  for (const auto& [path, status] : cases) {
    platform->dialogs.OpenFile(path);
    Choose("readparam");
    EXPECT_EQ(StatusText(), status);
    EXPECT_EQ(app->state.ModelCode, "M627");
    EXPECT_EQ(window.StatusBar1.Panel(3), "METRIC");
    // A page that does not let itself be unloaded stays, and its button says so.
    EXPECT_EQ(window.Command2.BackColour(), kActiveButtonColour);
    EXPECT_TRUE(IsShown("Form2"));
  }
}

TEST_F(FilesTest, SavingWritesWhatThePagesHold) {
  OpenMainWindow();
  platform->dialogs.SaveFile("/data/pump.ini");
  Choose("setParam");
  EXPECT_FALSE(platform->dialogs.questions[0].ask_before_overwrite);
  EXPECT_TRUE(Holds("/data/pump.ini", kPipe));
  EXPECT_TRUE(Holds("/data/pump.ini", "USER_INFO=Standard"));
  EXPECT_EQ(StatusText(), Said(text::kFileSaved, {"pump.ini"}));

  platform->files.changes.clear();
  platform->dialogs.SaveFile(std::nullopt);
  Choose("setParam");
  platform->dialogs.SaveFile(kIniPath);
  platform->dialogs.Answer(MessageAnswer::kOk);
  Choose("setParam");
  EXPECT_EQ(platform->dialogs.TakeTexts(), Texts{"ローダー初期ファイルを更新することはできません"});
  EXPECT_TRUE(platform->files.changes.empty());
}

TEST_F(FilesTest, ClosingKeepsTheSettingsAndEndsTheProgram) {
  constexpr MessageAnswer kYes = MessageAnswer::kYes;
  constexpr MessageAnswer kNo = MessageAnswer::kNo;
  const struct {
    const char* earlier;               // a file opened before, or null
    MessageAnswer answer;              // to the question
    std::optional<std::string> saved;  // the save dialog's result, after Yes
    Texts boxes;                       // behind the question
    const char* written;               // the parameter file, or empty
  } cases[] = {
      {nullptr, kNo, {}, {}, ""},
      {nullptr, kYes, "/data/a.ini", {}, "/data/a.ini"},
      {nullptr, kYes, kIniPath, {"The loader early stage file can not be updated"}, ""},
      {nullptr, kYes, {}, {}, ""},
      {"/data/b.ini", kYes, {}, {}, "/data/b.ini"},  // a cancelled dialog still holds the earlier name
      {"/data/b.ini", kNo, {}, {}, ""},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(&given - cases);
    UseMeter({});
    MDIForm1& window = OpenMainWindow();
    Press("Command2");
    if (given.earlier != nullptr) {
      platform->files.files[given.earlier] = "[SYSTEM]\nINI_FILENAME=VLT.ini\n";
      platform->dialogs.OpenFile(given.earlier);
      Choose("readparam");
    }
    app->platform.port.Open(1, "9600,O,8,1");
    app->state.RangeUnit[0] = 4;
    // Pressing End again while the question stands changes nothing.
    platform->dialogs.Answer(given.answer, [&] { window.Command13.Press(); });
    if (given.answer == kYes) platform->dialogs.SaveFile(given.saved);
    for (std::size_t i = 0; i < given.boxes.size(); ++i) platform->dialogs.Answer(MessageAnswer::kOk);
    window.Command13.Press();

    Texts boxes = given.boxes;
    boxes.insert(boxes.begin(), "Does it save the setting value of the loader?");
    EXPECT_EQ(platform->dialogs.TakeTexts(), boxes);
    EXPECT_TRUE(platform->dialogs.messages[0].second_is_default);
    EXPECT_TRUE(Holds(kIniPath, "RANGE_UNIT_Data=4"));
    EXPECT_TRUE(Holds(kIniPath, "SETTINGS=9600,O,8,1"));
    for (const auto& [path, content] : platform->files.files) {
      EXPECT_EQ(content.find(kPipe) != std::string::npos, path == given.written) << path;
    }
    EXPECT_TRUE(platform->time.Ended());
    EXPECT_FALSE(app->state.AppRunning);
    EXPECT_TRUE(app->windows.Open().empty());
    EXPECT_FALSE(platform->simulated.IsOpen());
  }
}

// The program's own settings are written in any case; the operator may fetch another disk, or end without.
TEST_F(FilesTest, AParameterFileThatCannotBeWrittenIsAskedAbout) {
  for (const MessageAnswer answer : {MessageAnswer::kNo, MessageAnswer::kYes}) {
    UseMeter({});
    MDIForm1& window = OpenMainWindow();
    app->state.RangeUnit[0] = 4;
    platform->dialogs.Answer(MessageAnswer::kYes);
    platform->dialogs.SaveFile("/full/a.ini");
    platform->dialogs.Answer(answer);
    platform->files.FailChange(1, FileError::kFull);
    window.Command13.Press();
    const Message& box = platform->dialogs.messages.back();
    EXPECT_EQ(box.text, "a.ini.tmp could not be written: the disk is full\nEnd the program without it?");
    EXPECT_TRUE(box.second_is_default);
    EXPECT_TRUE(Holds(kIniPath, "RANGE_UNIT_Data=4"));
    const bool ends = answer == MessageAnswer::kYes;
    EXPECT_EQ(platform->time.Ended(), ends);
    EXPECT_EQ(IsShown("MDIForm1"), !ends);
    EXPECT_EQ(app->state.AppRunning, !ends);
    if (ends) continue;
    EXPECT_EQ(StatusText(), Said(text::kFileNotWritten, {"a.ini.tmp", app->Text(text::kFileDiskFull)}));
    // The next attempt begins anew.
    platform->dialogs.Answer(MessageAnswer::kNo);
    window.Command13.Press();
    EXPECT_TRUE(platform->time.Ended());
  }
}

TEST_F(FilesTest, SettingsThatCannotBeWrittenAreToldAndHoldNobodyBack) {
  MDIForm1& window = OpenMainWindow();
  platform->files.FailPath(kIniPath, FileError::kNoPermission);
  platform->dialogs.Answer(MessageAnswer::kNo);
  std::string said;
  window.StatusBar1.Observe([&] { said = window.StatusBar1.Panel(1); });
  window.Command13.Press();
  EXPECT_NE(said.find("VLT.ini"), std::string::npos);
  EXPECT_TRUE(platform->time.Ended());
}

}  // namespace
}  // namespace vlt::test
