#include "files/parameter_file.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "files/file_report.h"
#include "files/whole_file.h"
#include "tests/files/machine.h"

namespace vlt {
namespace {

using test::Machine;

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
  app.state.UserInfo = "Factory";
  app.state.IniFilePath = "/opt/tool/VLT.ini";
  BuildCommSettings(app.state);
}

std::vector<std::string> Slots(const App& app) {
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < SlotRows().size(); ++i) texts.push_back(app.slots[i]);
  return texts;
}

TEST(ParameterFile, NewFileIsTheGoldenOne) {
  Machine machine;
  Fill(machine.app);
  ASSERT_EQ(SaveParameterFile(machine.app, kPath), FileError::kGood);
  std::ifstream golden(TEST_DATA "/filled.ini", std::ios::binary);
  ASSERT_TRUE(golden);
  const std::string expected{std::istreambuf_iterator<char>(golden), {}};
  EXPECT_EQ(machine.files.content[kPath], expected);
  EXPECT_EQ(machine.files.content.size(), 1U);  // there was nothing to keep
}

TEST(ParameterFile, ComesBackButForWhatIsOnlyWritten) {
  Machine machine;
  Fill(machine.app);
  machine.app.slots.At("TOTAL", "TOTAL_PULSE_WIDTH1_Unit") = "ms";
  SaveParameterFile(machine.app, kPath);
  Machine other;
  other.files.content = machine.files.content;
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
  EXPECT_EQ(other.app.state.ModelCode, "");
  EXPECT_EQ(other.app.state.LangFlag, 1);
}

TEST(ParameterFile, MissingKeysGiveTheirDefaultsEmptyOnesNothing) {
  for (const bool empty : {false, true}) {
    Machine machine;
    Fill(machine.app);
    ProfileFile profile;
    if (empty) {
      for (const SlotRow& row : SlotRows()) profile.SetString(row.section, row.key, "");
    }
    machine.files.content[kPath] = profile.Text();
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
  const std::pair<std::string, int> rows[] = {
      {"x", 0}, {"-1", -1}, {"32767", 32767}, {"32768", 2}, {"9e9", 9}};
  for (const auto& [text, channel] : rows) {
    Machine machine;
    Fill(machine.app);
    machine.files.content[kPath] = "[RANGE]\nCHANNEL=" + text +
                                   "\n[PROCESS SETTING]\nVISCOSITY_Data=before\n[TOTAL]\n"
                                   "TOTAL_MODE_Data=behind\n";
    const bool ended = text == "32768";
    EXPECT_EQ(LoadParameterFile(machine.app, kPath).stopped_at, ended ? "RANGE/CHANNEL" : "") << text;
    EXPECT_EQ(machine.app.state.RangeChannel, channel) << text;
    EXPECT_EQ(machine.app.slots.At("PROCESS SETTING", "VISCOSITY_Data"), "before");
    EXPECT_EQ(machine.app.slots.At("TOTAL", "TOTAL_MODE_Data"), ended ? "80" : "behind") << text;
  }
}

TEST(ParameterFile, WhatCannotBeReadChangesNothing) {
  for (const FileError error : {FileError::kMissing, FileError::kNoPermission, FileError::kNotAFile}) {
    Machine machine;
    Fill(machine.app);
    const std::vector<std::string> before = Slots(machine.app);
    if (error != FileError::kMissing) machine.files.refused[kPath] = error;
    EXPECT_EQ(OpenParameterFile(machine.app, kPath).file, error);
    EXPECT_EQ(LoadParameterFile(machine.app, kPath).file, error);
    EXPECT_EQ(Slots(machine.app), before);
    EXPECT_EQ(machine.app.state.PortNo, "3");
    EXPECT_EQ(machine.app.state.DetailChannel, 5);
  }
}

TEST(ParameterFile, OpeningChangesNoOpenPort) {
  for (const bool open : {false, true}) {
    Machine machine;
    Fill(machine.app);
    machine.app.state.PortIsOpen = open;
    machine.files.content[kPath] = "[COMM]\nSPEED=38400\nPORT=abc\n";
    EXPECT_TRUE(OpenParameterFile(machine.app, kPath).Converted());
    EXPECT_EQ(machine.app.state.PortNo, "3");
    machine.files.content[kPath] = "[COMM]\nSPEED=38400\n";
    OpenParameterFile(machine.app, kPath);
    EXPECT_EQ(machine.app.state.Speed, "38400");
    EXPECT_EQ(machine.app.state.CommSettings, open ? "9600,O,8,1" : "38400,O,8,1");
  }
}

TEST(ParameterFile, SavingKeepsForeignKeysAndTheFormerFile) {
  const std::string former = "; pump 2\n[SYSTEM]\nUNIT_FLAG=1\nNOTE=ours\n[SITE]\nNAME=北\n";
  Machine machine;
  Fill(machine.app);
  machine.files.content[kPath] = former;
  EXPECT_EQ(SaveParameterFile(machine.app, kPath), FileError::kGood);
  EXPECT_TRUE(machine.files.content[kPath].starts_with(
      "; pump "
      "2\n[SYSTEM]\nUNIT_FLAG=0\nNOTE=ours\nSYSTEM_LANG_FLAG=0\nUSER_INFO=Factory\nINI_FILENAME=VLT.ini\n"
      "[SITE]\nNAME=北\n[COMM]\n"));
  EXPECT_EQ(machine.files.content[BackupPath(kPath)], former);
  EXPECT_EQ(machine.files.steps, 4);  // file and backup: each written and moved once
  machine.files.fail_at = 5;
  machine.app.slots[0] = "changed";
  const auto before = machine.files.content;
  EXPECT_EQ(SaveParameterFile(machine.app, kPath), FileError::kFull);
  EXPECT_EQ(machine.files.content, before);
}

TEST(ParameterFile, TheLoaderFileIsKnownByItsExactText) {
  Machine machine;
  machine.app.state.IniFilePath = "/opt/tool//VLT.ini";
  EXPECT_TRUE(IsLoaderFile(machine.app, "/opt/tool//VLT.ini"));
  EXPECT_FALSE(IsLoaderFile(machine.app, "/opt/tool/VLT.ini"));
  EXPECT_FALSE(IsLoaderFile(machine.app, "/opt/tool//vlt.ini"));
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
  Machine machine;
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
  machine.files.content[kPath] = "";
  OpenParameterFile(machine.app, kPath);
  EXPECT_EQ(log, "apply Form11,apply Form3,");
}

class BarOnly : public MainFrame {
 public:
  explicit BarOnly(Windows& windows)
      : form_(windows, "MDIForm1", FormPlace::kFrame), bar_(form_, "StatusBar1", 3) {}
  Form& Window() override { return form_; }
  void enableMenubar() override {}
  void disableMenubar() override {}
  StatusBar& Status() override { return bar_; }
  PushButton& ExitButton() override { throw FileError::kOther; }
  Timer& OneShotTimer() override { throw FileError::kOther; }
  void SetPageButtonIdle(std::string_view) override {}

 private:
  Form form_;
  StatusBar bar_;
};

TEST(FileReport, NamesTheFileAndTheReason) {
  Machine machine;
  ReportSaved(machine.app, kPath);  // without a main window there is nobody to tell
  BarOnly frame(machine.app.windows);
  machine.app.frame = &frame;
  machine.app.state.LangOffset = 5000;
  const std::pair<FileError, std::pair<std::string, std::string>> rows[] = {
      {FileError::kMissing, {"there is no such file", "the folder does not exist"}},
      {FileError::kFull, {"the disk is full", "the disk is full"}},
      {FileError::kTooLarge, {"the file is too large", "the file is too large"}},
  };
  const std::string stamp = "2026/11/24 10:00:00 ";
  for (const auto& [error, reasons] : rows) {
    ReportNotRead(machine.app, "C:\\data\\100%1.ini", error);
    EXPECT_EQ(frame.Status().Panel(1), stamp + "100%1.ini could not be read: " + reasons.first);
    ReportNotWritten(machine.app, kPath, error);
    EXPECT_EQ(frame.Status().Panel(1), stamp + "pump.ini could not be written: " + reasons.second);
  }
  ReportOpened(machine.app, kPath);
  EXPECT_EQ(frame.Status().Panel(1), stamp + "Opened pump.ini");
}

}  // namespace
}  // namespace vlt
