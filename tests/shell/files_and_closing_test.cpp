// SPDX-License-Identifier: GPL-3.0-or-later
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "shell_fixture.h"

namespace vlt::test {
namespace {

class FilesTest : public ShellTest {
 protected:
  std::string Said(int id, std::initializer_list<std::string_view> args) {
    return FormatText(app->Text(id), args);
  }
};

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
