// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/parameter_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "files/file_report.h"
#include "files/whole_file.h"
#include "support/test_app.h"

namespace vlt {
namespace {

using test::TestApp;

constexpr const char* kPath = "/data/pump.ini";

int SharedState::*const kNumbers[] = {&SharedState::ProcessChannel, &SharedState::RangeChannel,
                                      &SharedState::TotalChannel, &SharedState::OutputIndex,
                                      &SharedState::DetailChannel};

// Every slot its own text: "<row number> mm" for units, the row number for the rest.
void Fill(App& app) {
  const auto rows = SlotRows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const bool unit = std::string_view(rows[i].key).ends_with("_Unit");
    app.slots[i] = std::to_string(i) + (unit ? " mm" : "");
  }
  app.slots.At("TOTAL", "TOTAL_PULSE_WIDTH1_Unit").clear();
  app.slots.At("RANGE", "FULL_SCALE1_Data").clear();
  app.slots.At("STATUS", "H_TOTAL_SW_Unit") = "m³";
  for (int i = 0; i < 5; ++i) app.state.*kNumbers[i] = i + 1;
  app.state.PortNo = "3";
  app.state.StationNo = "00";
  app.state.UserInfo = "Factory";
  app.state.IniFilePath = "/app/VLT.ini";
  BuildCommSettings(app.state);
}

std::vector<std::string> Slots(const App& app) {
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < SlotRows().size(); ++i) texts.push_back(app.slots[i]);
  return texts;
}

TEST(ParameterFile, NewFileIsTheGoldenOne) {
  TestApp machine;
  Fill(machine.app);
  ASSERT_EQ(SaveParameterFile(machine.app, kPath), FileError::kGood);
  std::ifstream golden(TEST_DATA "/filled.ini", std::ios::binary);
  ASSERT_TRUE(golden);
  const std::string expected{std::istreambuf_iterator<char>(golden), {}};
  EXPECT_EQ(machine.platform.files.files[kPath], expected);
  EXPECT_EQ(machine.platform.files.files.size(), 1U);  // there was nothing to keep
}

TEST(ParameterFile, ComesBackButForWhatIsOnlyWritten) {
  TestApp machine;
  Fill(machine.app);
  machine.app.slots.At("TOTAL", "TOTAL_PULSE_WIDTH1_Unit") = "ms";
  SaveParameterFile(machine.app, kPath);
  TestApp other;
  other.platform.files.files = machine.platform.files.files;
  other.app.state.LangFlag = 1;
  const LoadResult result = OpenParameterFile(other.app, kPath);
  EXPECT_EQ(result.file, FileError::kGood);
  EXPECT_TRUE(result.Converted());
  EXPECT_EQ(other.app.slots.At("TOTAL", "TOTAL_PULSE_WIDTH1_Unit"), "");
  machine.app.slots.At("TOTAL", "TOTAL_PULSE_WIDTH1_Unit").clear();
  // The channel numbers live in the shared state, not in their rows' texts.
  for (std::size_t i = 0; i < SlotRows().size(); ++i) {
    if (SlotRows()[i].number != nullptr) machine.app.slots[i].clear();
  }
  EXPECT_EQ(Slots(other.app), Slots(machine.app));
  for (int SharedState::*number : kNumbers) EXPECT_EQ(other.app.state.*number, machine.app.state.*number);
  EXPECT_EQ(other.app.state.UserInfo, "Factory");
  EXPECT_EQ(other.app.state.PortNo, "3");
  EXPECT_EQ(other.app.state.LangFlag, 1);
}

TEST(ParameterFile, MissingKeysGiveTheirDefaultsEmptyOnesNothing) {
  for (const bool empty : {false, true}) {
    TestApp machine;
    Fill(machine.app);
    ProfileFile profile;
    if (empty) {
      for (const SlotRow& row : SlotRows()) profile.SetString(row.section, row.key, "");
    }
    machine.platform.files.files[kPath] = profile.Text();
    EXPECT_TRUE(LoadParameterFile(machine.app, kPath).Converted());
    int zeros = 0;
    int texts = 0;
    for (std::size_t i = 0; i < SlotRows().size(); ++i) {
      if (SlotRows()[i].number != nullptr) continue;
      zeros += machine.app.slots[i] == "0";
      texts += !machine.app.slots[i].empty();
    }
    EXPECT_EQ(zeros, empty ? 0 : 38);  // 35 units and 3 control words
    EXPECT_EQ(texts, zeros);
    for (int SharedState::*number : kNumbers) EXPECT_EQ(machine.app.state.*number, 0);
  }
}

TEST(ParameterFile, AChannelBeyond16BitsEndsTheLoading) {
  const std::pair<std::string, int> rows[] = {{"-1", -1}, {"32767", 32767}, {"32768", 2}, {"9e9", 9}};
  for (const auto& [text, channel] : rows) {
    TestApp machine;
    Fill(machine.app);
    machine.platform.files.files[kPath] = "[RANGE]\nCHANNEL=" + text +
                                          "\n[PROCESS SETTING]\nVISCOSITY_Data=before\n[TOTAL]\n"
                                          "TOTAL_RATE_Data=behind\n";
    const bool ended = text == "32768";
    EXPECT_EQ(LoadParameterFile(machine.app, kPath).stopped_at, ended ? "RANGE/CHANNEL" : "") << text;
    EXPECT_EQ(machine.app.state.RangeChannel, channel) << text;
    EXPECT_EQ(machine.app.slots.At("PROCESS SETTING", "VISCOSITY_Data"), "before");
    EXPECT_EQ(machine.app.slots.At("TOTAL", "TOTAL_RATE_Data"), ended ? "82" : "behind") << text;
  }
}

// A list has no entry between two others: such a choice is told and not taken, and no neighbour of it either.
TEST(ParameterFile, AChoiceThatIsNoWholeNumberIsToldAndNotTaken) {
  const struct {
    const char* line;
    const char* key;
    const char* held;
    bool told;
  } cases[] = {
      {"PIPE_MATERIAL_Data=12.5", "PIPE_MATERIAL_Data", "", true},
      {"PIPE_MATERIAL_Data=1e-5", "PIPE_MATERIAL_Data", "", true},
      {"PIPE_MATERIAL_Data=steel", "PIPE_MATERIAL_Data", "", true},
      {"PIPE_MATERIAL_Data=-1", "PIPE_MATERIAL_Data", "-1", false},
      {"PIPE_MATERIAL_Data=", "PIPE_MATERIAL_Data", "", false},
      {"WALL_THICKNESS_Data=12.5", "WALL_THICKNESS_Data", "12.5", false},
      {"CHANNEL=2x", nullptr, nullptr, true},
      {"CHANNEL=x", nullptr, nullptr, true},
  };
  for (const auto& given : cases) {
    TestApp machine;
    Fill(machine.app);
    machine.platform.files.files[kPath] = std::string("[PROCESS SETTING]\n") + given.line + "\n";
    const LoadResult result = LoadParameterFile(machine.app, kPath);
    const std::string line = given.line;
    const std::string key = "PROCESS SETTING/" + line.substr(0, line.find('='));
    EXPECT_EQ(result.not_taken, given.told ? std::vector{key} : std::vector<std::string>{}) << line;
    if (given.key == nullptr) continue;
    EXPECT_EQ(machine.app.slots.At("PROCESS SETTING", given.key), given.held) << line;
  }
}

// How much of a file was taken, and by name what was not.
TEST(ParameterFile, OpeningTellsWhatAFileBrought) {
  TestApp filled;
  Fill(filled.app);
  SaveParameterFile(filled.app, kPath);
  const std::string whole = filled.platform.files.files[kPath];
  const auto with = [&](const std::string& from, const std::string& to) {
    std::string text = whole;
    return text.replace(text.find(from), from.size(), to);
  };
  const std::pair<std::string, std::string> rows[] = {
      {whole, "Opened pump.ini: 162 of 162 keys found"},
      {"[other]\nPORT=3\n", "Opened pump.ini: 0 of 162 keys found"},
      {"", "Opened pump.ini: 0 of 162 keys found"},
      {"[RANGE]\nZERO_Data=\nSPAN_Data=7\n", "Opened pump.ini: 2 of 162 keys found"},
      // The settings end at a value that is no number; what the pages show is taken all the same.
      {with("RETRY_NO=3", "RETRY_NO=99999"),
       "Opened pump.ini: 157 of 162 keys found, value not valid: COMM/RETRY_NO"},
      {with("PORT=3", "PORT=11"), "Opened pump.ini: 161 of 162 keys found, value not valid: COMM/PORT"},
      {with("CHANNEL_DETAIL=5", "CHANNEL_DETAIL=70000"),
       "Opened pump.ini: 146 of 162 keys found, value not valid: TDELTA/CHANNEL_DETAIL"},
  };
  for (const auto& [content, told] : rows) {
    TestApp machine;
    machine.platform.files.files[kPath] = content;
    ReportOpened(machine.app, kPath, OpenParameterFile(machine.app, kPath));
    EXPECT_EQ(machine.StatusText(), told);
    EXPECT_TRUE(machine.platform.dialogs.messages.empty());
  }
}

TEST(ParameterFile, WhatCannotBeReadChangesNothing) {
  for (const FileError error : {FileError::kMissing, FileError::kNoPermission, FileError::kNotAFile}) {
    TestApp machine;
    Fill(machine.app);
    const std::vector<std::string> before = Slots(machine.app);
    if (error != FileError::kMissing) machine.platform.files.FailPath(kPath, error);
    EXPECT_EQ(OpenParameterFile(machine.app, kPath).file, error);
    EXPECT_EQ(LoadParameterFile(machine.app, kPath).file, error);
    EXPECT_EQ(Slots(machine.app), before);
    EXPECT_EQ(machine.app.state.PortNo, "3");
    EXPECT_EQ(machine.app.state.DetailChannel, 5);
  }
}

// The program goes on as what it was started as, whether a file says nothing of it or something else.
TEST(ParameterFile, OpeningLeavesTheVariantInForce) {
  for (const char* content : {"[RANGE]\nZERO_Data=1\n", "[SYSTEM]\nVR=K410\n", "[SYSTEM]\nVR=\n"}) {
    TestApp machine;
    machine.app.state.ModelCode = "M627";
    machine.platform.files.files[kPath] = content;
    EXPECT_TRUE(OpenParameterFile(machine.app, kPath).Converted());
    EXPECT_EQ(machine.app.state.ModelCode, "M627") << content;
  }
}

TEST(ParameterFile, OpeningChangesNoOpenPort) {
  for (const bool open : {false, true}) {
    TestApp machine;
    Fill(machine.app);
    machine.app.state.PortIsOpen = open;
    machine.platform.files.files[kPath] = "[COMM]\nSPEED=38400\nPORT=abc\n";
    EXPECT_TRUE(OpenParameterFile(machine.app, kPath).Converted());
    EXPECT_EQ(machine.app.state.PortNo, "3");
    machine.platform.files.files[kPath] = "[COMM]\nSPEED=38400\n";
    OpenParameterFile(machine.app, kPath);
    EXPECT_EQ(machine.app.state.Speed, "38400");
    EXPECT_EQ(machine.app.state.CommSettings, open ? "9600,O,8,1" : "38400,O,8,1");
  }
}

TEST(ParameterFile, SavingKeepsForeignKeysAndTheFormerFile) {
  const std::string former = "; pump 2\n[SYSTEM]\nUNIT_FLAG=1\nNOTE=ours\n[SITE]\nNAME=北\n";
  TestApp machine;
  Fill(machine.app);
  machine.platform.files.files[kPath] = former;
  EXPECT_EQ(SaveParameterFile(machine.app, kPath), FileError::kGood);
  EXPECT_TRUE(machine.platform.files.files[kPath].starts_with(
      "; pump "
      "2\n[SYSTEM]\nUNIT_FLAG=0\nNOTE=ours\nSYSTEM_LANG_FLAG=0\nUSER_INFO=Factory\nINI_FILENAME=VLT.ini\n"
      "[SITE]\nNAME=北\n[COMM]\n"));
  EXPECT_EQ(machine.platform.files.files[BackupPath(kPath)], former);
  EXPECT_EQ(machine.platform.files.changes.size(), 4U);  // file and backup: each written and moved once
  machine.platform.files.FailChange(1, FileError::kFull);
  machine.app.slots[0] = "changed";
  const auto before = machine.platform.files.files;
  EXPECT_EQ(SaveParameterFile(machine.app, kPath), FileError::kFull);
  EXPECT_EQ(machine.platform.files.files, before);
}

TEST(ParameterFile, TheLoaderFileIsKnownByItsExactText) {
  TestApp machine;
  machine.app.state.IniFilePath = "/app//VLT.ini";
  EXPECT_TRUE(IsLoaderFile(machine.app, "/app//VLT.ini"));
  EXPECT_FALSE(IsLoaderFile(machine.app, "/app/VLT.ini"));
  EXPECT_FALSE(IsLoaderFile(machine.app, "/app//vlt.ini"));
}

// A page that notes what happens to it.
class NotingPage : public Form {
 public:
  NotingPage(Windows& windows, const std::string& name, std::string& log)
      : Form(windows, name, FormPlace::kPage), log_(log) {}
  void Form_Load() override { log_ += "load " + Name() + ","; }
  void Form_Unload(int&) override { log_ += "unload,"; }
  void SetteiHannei() override { log_ += "apply " + Name() + ","; }
  void Taihi() override { log_ += "save,"; }

 private:
  std::string& log_;
};

TEST(PagesAndSlots, SavesPagesInOrderAndRefreshesOpenOnes) {
  TestApp machine;
  std::string log;
  Windows& windows = machine.app.windows;
  for (const std::string name : {"Form11", "Form12", "Form9", "Form3", "Form10"}) {
    windows.Register(name,
                     [&windows, &log, name] { return std::make_unique<NotingPage>(windows, name, log); });
  }
  windows.Load("Form9").Show();
  windows.Load("Form3").Show();
  windows.Load("Form12").Show();
  log.clear();
  SavePagesToSlots(machine.app);
  EXPECT_EQ(log, "load Form10,save,unload,save,unload,save,load Form11,save,");
  EXPECT_EQ(windows.Find("Form3"), nullptr);
  EXPECT_FALSE(windows.Find("Form9")->Visible());
  EXPECT_FALSE(windows.Find("Form11")->Visible());
  windows.Load("Form3");
  log.clear();
  machine.platform.files.files[kPath] = "";
  OpenParameterFile(machine.app, kPath);
  EXPECT_EQ(log, "apply Form11,apply Form3,");
}

TEST(FileReport, NamesTheFileAndTheReason) {
  TestApp machine;
  const std::string fault = "system error 5 (Input/output error)";
  const std::pair<FileError, std::pair<std::string, std::string>> rows[] = {
      {FileError::LargerThan(kMostSettingsBytes), {"it is larger than 4 MB", "it is larger than 4 MB"}},
      {FileError::OfSystem(5, "Input/output error"), {fault, fault}},
      {FileError::kPipe, {"it is a pipe", "it is a pipe"}},
      {FileError::kDevice, {"it is a device", "it is a device"}},
      {FileError::kMissing, {"there is no such file", "the folder does not exist"}},
      {FileError::kFull, {"the disk is full", "the disk is full"}},
      {FileError::kTooLarge, {"the file is too large", "the file is too large"}},
  };
  for (const auto& [error, reasons] : rows) {
    ReportOpened(machine.app, "C:\\data\\100%1.ini", {.file = error});
    EXPECT_EQ(machine.StatusText(), "100%1.ini could not be read: " + reasons.first);
    ReportNotWritten(machine.app, kPath, error);
    EXPECT_EQ(machine.StatusText(), "pump.ini could not be written: " + reasons.second);
  }
  // Writing takes steps; the one that fails names its own file.
  const struct {
    const char* bad;
    FileError error;
    const char* told;
  } steps[] = {
      {"/data/pump.ini", FileError::kNoPermission, "pump.ini could not be read: permission denied"},
      {"/data/pump.ini.tmp", FileError::kNotAFile, "pump.ini.tmp could not be written: it is a folder"},
      {"/data/pump.ini.bak", FileError::kFull, "pump.ini.bak could not be written: the disk is full"},
      {"/data/pump.ini.bak.tmp", FileError::kFull, "pump.ini.bak.tmp could not be written: the disk is full"},
  };
  for (const auto& step : steps) {
    TestApp there;
    there.platform.files.files[kPath] = "[RANGE]\nZERO_Data=1\n";
    there.platform.files.FailPath(step.bad, step.error);
    ReportWritten(there.app, kPath, SaveParameterFile(there.app, kPath));
    EXPECT_EQ(there.StatusText(), step.told);
  }
}

}  // namespace
}  // namespace vlt
