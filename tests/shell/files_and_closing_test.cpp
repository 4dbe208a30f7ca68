#include "files/settings_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "shell_fixture.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

constexpr const char* kQuestion = "Does it save the setting value of the loader?";
constexpr const char* kPipe = "OUTER_DIAMETER_Data=60.5";

class FilesTest : public ShellTest {
 protected:
  FilesTest() { RegisterNotingPages(); }

  MDIForm1& Open() {
    MDIForm1& window = OpenMainWindow();
    platform->files.changes.clear();
    return window;
  }
  void Choose(const char* item) { On<MenuItem>("MDIForm1", item).Press(); }
  bool Holds(const std::string& path, const std::string& text) {
    const auto file = platform->files.files.find(path);
    return file != platform->files.files.end() && file->second.find(text) != std::string::npos;
  }
  std::string Said(int id, std::initializer_list<std::string_view> args) {
    return FormatText(app->Text(id), args);
  }
};

TEST_F(FilesTest, OpeningAFileTakesItsSettingsAndClosesThePages) {
  MDIForm1& window = Open();
  window.Command2.Press();
  app->windows.Load("frmAbout").Show();
  platform->files.files["/data/pump.ini"] =
      "[SYSTEM]\nUNIT_FLAG=1\nLANG_FLAG=0\nUSER_INFO=Factory\nINI_FILENAME=site.ini\n[COMM]\nSPEED=38400\n"
      "[PROCESS SETTING]\nOUTER_DIAMETER_Data=114.3\n";
  platform->dialogs.OpenFile("/data/pump.ini");
  Choose("readparam");
  EXPECT_EQ(app->windows.Open().size(), 1U);
  EXPECT_EQ(platform->dialogs.questions[0].filter, "Initial value(*.ini)|*.ini");
  EXPECT_EQ(app->state.UserInfo, "Factory");
  EXPECT_EQ(app->state.Speed, "38400");
  EXPECT_EQ(app->state.IniFilePath, "/app/site.ini");
  EXPECT_EQ(app->state.LangFlag, 1);
  EXPECT_EQ(app->slots.At("PROCESS SETTING", "OUTER_DIAMETER_Data"), "114.3");
  EXPECT_EQ(window.StatusBar1.Panel(3), "ENGLISH");
  EXPECT_EQ(StatusText(), Said(text::kFileOpened, {"pump.ini"}));
  EXPECT_TRUE(platform->files.changes.empty());
}

TEST_F(FilesTest, AFileThatCannotBeReadChangesNothing) {
  MDIForm1& window = Open();
  window.Command2.Press();
  notes["Form2"].refuses = true;
  platform->files.files["/data/locked.ini"] = "[SYSTEM]\nUNIT_FLAG=1\n";
  platform->files.FailPath("/data/locked.ini", FileError::kNoPermission);
  const std::tuple<const char*, std::optional<std::string>, std::string> cases[] = {
      {"cancelled", std::nullopt, ""},
      {"gone", "/data/gone.ini", Said(text::kFileNotRead, {"gone.ini", app->Text(text::kFileMissing)})},
      {"not allowed", "/data/locked.ini",
       Said(text::kFileNotRead, {"locked.ini", app->Text(text::kFileNotAllowed)})},
  };
  for (const auto& [what, path, status] : cases) {
    SCOPED_TRACE(what);
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

TEST_F(FilesTest, AValueThatEndsTheLoadingIsNamed) {
  Open();
  platform->files.files["/data/bad.ini"] = "[PROCESS SETTING]\nCHANNEL=70000\n";
  platform->dialogs.OpenFile("/data/bad.ini");
  Choose("readparam");
  EXPECT_NE(StatusText().find("bad.ini"), std::string::npos);
  EXPECT_NE(StatusText().find("/CHANNEL"), std::string::npos);
}

TEST_F(FilesTest, SavingWritesWhatThePagesHold) {
  Open();
  platform->files.files["/data/pump.ini"] = "; by hand\n";
  platform->dialogs.SaveFile("/data/pump.ini");
  Choose("setParam");
  EXPECT_FALSE(platform->dialogs.questions[0].ask_before_overwrite);
  EXPECT_TRUE(Holds("/data/pump.ini", kPipe));
  EXPECT_TRUE(Holds("/data/pump.ini", "USER_INFO=Standard"));
  EXPECT_EQ(StatusText(), Said(text::kFileSaved, {"pump.ini"}));
  EXPECT_FALSE(Holds(kIniPath, "[PROCESS SETTING]"));

  platform->dialogs.SaveFile("/full/pump.ini");
  platform->files.FailChange(1, FileError::kFull);
  Choose("setParam");
  EXPECT_EQ(StatusText(), Said(text::kFileNotWritten, {"pump.ini", app->Text(text::kFileDiskFull)}));

  platform->dialogs.SaveFile(std::nullopt);
  platform->files.changes.clear();
  Choose("setParam");
  EXPECT_TRUE(platform->files.changes.empty());
}

TEST_F(FilesTest, SavingOverTheLoaderFileIsRefusedInJapanese) {
  Open();
  platform->dialogs.SaveFile(kIniPath);
  platform->dialogs.Answer(MessageAnswer::kOk);
  Choose("setParam");
  EXPECT_EQ(platform->dialogs.TakeTexts(), Texts{"ローダー初期ファイルを更新することはできません"});
  EXPECT_TRUE(platform->files.changes.empty());
}

struct ClosingCase {
  const char* what;
  const char* earlier;               // a file opened before, or null
  MessageAnswer answer;              // to the question
  std::optional<std::string> saved;  // the save dialog's result, after Yes
  Texts boxes;                       // behind the question
  const char* written;               // the parameter file, or null
};

class ClosingTest : public FilesTest, public ::testing::WithParamInterface<ClosingCase> {};

TEST_P(ClosingTest, KeepsTheSettingsAndEndsTheProgram) {
  const ClosingCase& given = GetParam();
  MDIForm1& window = Open();
  window.Command2.Press();
  window.Command7.Press();
  if (given.earlier != nullptr) {
    platform->files.files[given.earlier] = "[SYSTEM]\nINI_FILENAME=VLT.ini\n";
    platform->dialogs.OpenFile(given.earlier);
    Choose("readparam");
  }
  app->platform.port.Open(1, "9600,O,8,1");
  app->state.RangeUnit[0] = 4;
  // Pressing End again while the question stands changes nothing.
  platform->dialogs.Answer(given.answer, [&] { window.Command13.Press(); });
  if (given.answer == MessageAnswer::kYes) platform->dialogs.SaveFile(given.saved);
  for (std::size_t i = 0; i < given.boxes.size(); ++i) platform->dialogs.Answer(MessageAnswer::kOk);
  const std::int64_t before = platform->time.NowMs();
  app->windows.Run([&] {
    window.Command13.Press();
    EXPECT_FALSE(app->state.AppRunning);
  });

  Texts expected = given.boxes;
  expected.insert(expected.begin(), kQuestion);
  EXPECT_EQ(platform->dialogs.TakeTexts(), expected);
  const Message& question = platform->dialogs.messages[0];
  EXPECT_EQ(question.buttons, MessageButtons::kYesNo);
  EXPECT_EQ(question.icon, MessageIcon::kInformation);
  EXPECT_TRUE(question.second_is_default);
  EXPECT_TRUE(Holds(kIniPath, "RANGE_UNIT_Data=4"));
  EXPECT_TRUE(Holds(kIniPath, "SETTINGS=9600,O,8,1"));
  EXPECT_FALSE(Holds(kIniPath, "[PROCESS SETTING]"));
  for (const auto& [path, content] : platform->files.files) {
    EXPECT_EQ(content.find(kPipe) != std::string::npos, given.written != nullptr && path == given.written)
        << path;
  }
  EXPECT_TRUE(platform->time.Ended());
  EXPECT_TRUE(app->windows.Open().empty());
  EXPECT_EQ(app->frame, nullptr);
  EXPECT_FALSE(platform->simulated.IsOpen());
  EXPECT_EQ(platform->time.NowMs(), before + 200);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ClosingTest,
    ::testing::Values(
        ClosingCase{"no", nullptr, MessageAnswer::kNo, {}, {}, nullptr},
        ClosingCase{"yes", nullptr, MessageAnswer::kYes, "/data/a.ini", {}, "/data/a.ini"},
        ClosingCase{"yes, onto the loader's own file",
                    nullptr,
                    MessageAnswer::kYes,
                    kIniPath,
                    {"The loader early stage file can not be updated"},
                    nullptr},
        ClosingCase{"yes, cancelled", nullptr, MessageAnswer::kYes, {}, {}, nullptr},
        ClosingCase{"yes, cancelled after a file was opened",
                    "/data/b.ini",
                    MessageAnswer::kYes,
                    {},
                    {},
                    "/data/b.ini"},
        ClosingCase{"no, after a file was opened", "/data/b.ini", MessageAnswer::kNo, {}, {}, nullptr}));

TEST_F(FilesTest, AParameterFileThatCannotBeWrittenKeepsTheProgramOpen) {
  MDIForm1& window = Open();
  platform->dialogs.Answer(MessageAnswer::kYes);
  platform->dialogs.SaveFile("/full/a.ini");
  platform->files.FailChange(1, FileError::kFull);
  window.Command13.Press();
  EXPECT_EQ(StatusText(), Said(text::kFileNotWritten, {"a.ini", app->Text(text::kFileDiskFull)}));
  EXPECT_FALSE(platform->time.Ended());
  EXPECT_TRUE(IsShown("MDIForm1"));
  platform->dialogs.Answer(MessageAnswer::kNo);
  window.Command13.Press();
  EXPECT_TRUE(platform->time.Ended());
}

TEST_F(FilesTest, SettingsThatCannotBeWrittenDoNotKeepTheProgramOpen) {
  MDIForm1& window = Open();
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
