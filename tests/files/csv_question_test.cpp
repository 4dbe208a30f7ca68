// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/csv_question.h"

#include <gtest/gtest.h>

#include "support/test_app.h"

namespace vlt {
namespace {

using test::TestApp;
using Path = std::optional<std::string>;

TEST(SettingsFileRule, KnowsTheFileHoweverItsPathIsWritten) {
  const struct {
    char separator;
    const char* folder;
    const char* loader;
    const char* asked;
    bool is_settings;
  } rows[] = {
      {'/', "/app", "/app//VLT.ini", "/app/VLT.ini", true},
      {'/', "/app", "/app/VLT.ini", "/app//VLT.ini ", true},
      {'/', "/app", "/app/site.ini", "/app/site.ini", true},
      {'/', "/app", "/app/site.ini", "/app/VLT.ini", true},  // beside the program, whatever it names
      {'/', "/app", "/app//VLT.ini", "/app/vlt.ini", false},
      {'/', "/app", "/app//VLT.ini", "/app/VLT.ini.csv", false},
      {'/', "/app", "/app//VLT.ini", "/data/VLT.ini", false},
      {'\\', "C:\\Tool", "C:\\Tool\\\\VLT.ini", "c:/tool/vlt.INI", true},
      {'\\', "C:\\Tool", "C:\\Tool\\VLT.ini", "C:\\Tool\\VLT2.ini", false},
  };
  for (const auto& row : rows) {
    TestApp machine;
    machine.platform.process.separator = row.separator;
    machine.platform.process.folder = row.folder;
    machine.app.state.IniFilePath = row.loader;
    EXPECT_EQ(IsSettingsFile(machine.app, row.asked), row.is_settings) << row.asked;
  }
}

TEST(CsvQuestion, AsksInItsOwnWordsAndRefusesTheSettingsFile) {
  const char* kTitle = "Specify a saving file name";
  const char* kAll = "The measurement data(*.csv)|*.csv|All(*.*)|*.*";
  const struct {
    CsvQuestion question;
    Path answer;
    const char* title;
    const char* filter;
    Path path;
  } rows[] = {
      {{}, {}, kTitle, kAll, {}},
      {{.folder = "/logs/"}, "  ", kTitle, kAll, {}},
      {{.title = 4060}, " /data/a b.csv ", "Please specify the file name to save", kAll, "/data/a b.csv"},
      {{.kind = 4050, .all_files = false}, "/app/VLT.ini", kTitle, "Initialvalue(*.csv)|*.csv", {}},
  };
  for (const auto& row : rows) {
    TestApp machine;
    machine.app.state.IniFilePath = "/app//VLT.ini";
    machine.platform.files.files["/app/VLT.ini"] = "[SYSTEM]\n";
    const bool refused = row.answer == "/app/VLT.ini";
    machine.platform.dialogs.SaveFile(row.answer);
    if (refused) machine.platform.dialogs.Answer(MessageAnswer::kOk);
    EXPECT_EQ(AskCsvFile(machine.app, row.question), row.path);
    EXPECT_EQ(machine.platform.dialogs.questions[0].title, row.title);
    EXPECT_EQ(machine.platform.dialogs.questions[0].filter, row.filter);
    EXPECT_EQ(machine.platform.dialogs.questions[0].folder, row.question.folder);
    EXPECT_EQ(machine.platform.dialogs.TakeTexts().size(), refused ? 1U : 0U);
    EXPECT_TRUE(machine.platform.files.changes.empty());
  }
}

TEST(CsvQuestion, ALogThatCannotBeRemovedIsTold) {
  TestApp machine;
  machine.platform.files.files["/data/run_20261124100000.csv"] = "old";
  machine.platform.files.FailChange(1, FileError::kNoPermission);
  machine.platform.dialogs.SaveFile("/data/run");
  machine.platform.dialogs.Answer(MessageAnswer::kOk);
  EXPECT_EQ(AskCsvLog(machine.app, "/logs/x_20260101000000.csv"), "/data/run_20261124100000.csv");
  EXPECT_EQ(machine.platform.dialogs.questions[0].folder, "/logs/");
  EXPECT_EQ(machine.StatusText(), "run_20261124100000.csv could not be written: permission denied");
}

}  // namespace
}  // namespace vlt
