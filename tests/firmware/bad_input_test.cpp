// SPDX-License-Identifier: GPL-3.0-or-later
// Files and folders that are not what they should be: told, and not one byte leaves.
#include "firmware_fixture.h"

namespace vlt::test {
namespace {

using Spoil = std::function<void(MeddledFiles& files, std::string& file)>;

struct BadFile {
  std::string name;
  int module;
  Spoil spoil;  // does to a good file what is wrong with it
  std::string box;
  std::string result;
  std::string note;  // is part of what the window says
};

std::string PathOfModule(int module) {
  return kFolder + "/" + FwModules()[static_cast<std::size_t>(module)].stem + ".bin";
}

std::string ErrorOf(int module) {
  return std::string("FILE ERROR : ") + FwModules()[static_cast<std::size_t>(module)].stem + ".bin";
}

const std::string kWrongId = "FILE ERROR : Error of identification code";

Spoil Content(std::string content) {
  return [content = std::move(content)](MeddledFiles&, std::string& file) { file = content; };
}

Spoil CutTo(std::size_t size) {
  return [size](MeddledFiles&, std::string& file) { file.resize(size); };
}

Spoil Fails(int module, const FileError& error) {
  return [=](MeddledFiles& files, std::string&) { files.FailPath(PathOfModule(module), error); };
}

// Something happens between the announcement of the files and their use.
Spoil Meanwhile(int module,
                const std::function<void(MeddledFiles& files, const std::string& path)>& happens) {
  return [=](MeddledFiles& files, std::string&) {
    files.meddle = [=, &files](const std::string& path, int read) {
      if (path == PathOfModule(module) && read == 2) happens(files, path);
    };
  };
}

std::vector<BadFile> BadFiles() {
  const std::string id = "KRT_CNTL_KRT1SYS";
  std::vector<BadFile> rows{
      {"a folder of that name", 0,
       [](MeddledFiles& files, std::string&) { files.folders.insert(PathOfModule(0)); }, ErrorOf(0),
       "File Error", "it is a folder"},
      {"may not be read", 1, Fails(1, FileError::kNoPermission), ErrorOf(1), "File Error",
       "permission denied"},
      {"disk fault", 2, Fails(2, FileError::kOther), ErrorOf(2), "File Error", "the system refused it"},
      {"larger than any module", 3, Fails(3, FileError::kTooLarge), ErrorOf(3), "File Error", "983040"},
      {"empty", 0, Content(""), ErrorOf(0), "File Error", "the file is empty"},
      {"empty boot", 1, Content(""), ErrorOf(1), "File Error", "the file is empty"},
      {"F0000H and one more", 0, Content(id + std::string(kFwLargestImage - 15, 'x')), ErrorOf(0),
       "File Error", "longer than 983040"},
      {"F0000H and two more", 0, Content(id + std::string(kFwLargestImage - 14, 'x')), ErrorOf(0),
       "File Error", "longer than 983040"},
      {"one byte", 0, Content("K"), kWrongId, "NG", "KRT_CNTL.bin"},
      {"one byte short of its identification", 0, CutTo(15), kWrongId, "NG", "KRT_CNTL.bin"},
      {"odd and short", 2, CutTo(7), kWrongId, "NG", "KRT_UPSYS.bin"},
      {"ends before the identification", 1, CutTo(1279), kWrongId, "NG", "KRT_BOOT.bin"},
      {"ends where it begins", 1, CutTo(1280), kWrongId, "NG", "KRT_BOOT.bin"},
      {"ends within it", 1, CutTo(1295), kWrongId, "NG", "KRT_BOOT.bin"},
      {"small letters", 0, Content("krt_cntl_krt1sys"), kWrongId, "NG", "SYSTEM EXECUTION MODULE"},
      {"last byte of it differs", 0, Content("KRT_CNTL_KRT1SYT"), kWrongId, "NG", ""},
      {"first byte of it differs", 0, Content("LRT_CNTL_KRT1SYS"), kWrongId, "NG", ""},
      {"one byte too late", 0, Content(" " + id), kWrongId, "NG", ""},
      {"where the boot module has it", 0, Content(std::string(1280, ' ') + id), kWrongId, "NG", ""},
      {"boot where the others have it", 1, Content("KRT_BOOT_KRT1SYS" + std::string(2000, ' ')), kWrongId,
       "NG", ""},
      {"file name instead of identification", 2, Content("KRT_UPSYS_KRT1SYS"), kWrongId, "NG", ""},
      {"two bytes a character", 3,
       Content(std::string("K\0R\0T\0_\0S\0P\0E\0D\0", 16) + std::string(50, ' ')), kWrongId, "NG", ""},
      {"nothing but zeros", 0, Content(std::string(4096, '\0')), kWrongId, "NG", ""},
      {"erased flash", 1, Content(std::string(4096, '\xFF')), kWrongId, "NG", ""},
      {"grows meanwhile", 0,
       Meanwhile(0, [](MeddledFiles& files, const std::string& path) { files.files[path] += "more"; }),
       ErrorOf(0), "File Error", "changed during the run"},
      {"changes a byte meanwhile", 1,
       Meanwhile(1, [](MeddledFiles& files, const std::string& path) { files.files[path][5] ^= 1; }),
       ErrorOf(1), "File Error", "changed during the run"},
      {"is emptied meanwhile", 2,
       Meanwhile(2, [](MeddledFiles& files, const std::string& path) { files.files[path].clear(); }),
       ErrorOf(2), "File Error", "the file is empty"},
      {"goes away meanwhile", 3,
       Meanwhile(3, [](MeddledFiles& files, const std::string& path) { files.files.erase(path); }),
       ErrorOf(3), "File Error", "there is no such file"},
  };
  for (int module = 0; module < kFwModules; ++module) {
    rows.push_back({"missing", module,
                    [module](MeddledFiles& files, std::string&) { files.files.erase(PathOfModule(module)); },
                    "", "No File", "there is no such file"});
    for (int other = 0; other < kFwModules; ++other) {
      if (other == module) continue;
      const FwModule& m = FwModules()[static_cast<std::size_t>(other)];
      rows.push_back({std::string("that of ") + m.stem, module,
                      Content(std::string(m.position, '.') + m.identification + std::string(2000, '.')),
                      kWrongId, "NG", "is no file of the"});
    }
  }
  return rows;
}

TEST_F(FirmwareTest, BadFilesAreToldAndNothingIsSent) {
  const auto rows = BadFiles();
  EXPECT_GE(rows.size(), 40U);
  for (const BadFile& bad : rows) {
    for (const bool download : {true, false}) {
      SCOPED_TRACE(bad.name + (download ? ", download" : ", verification"));
      Reset();
      std::string& file = File(FwModules()[static_cast<std::size_t>(bad.module)].stem);
      file = GoodFile(bad.module, 3000);
      bad.spoil(machine->files, file);
      Texts boxes{kCompleted};
      if (!bad.box.empty()) boxes.insert(boxes.begin(), bad.box);
      const int count = static_cast<int>(boxes.size());
      EXPECT_EQ(download ? Download(bad.module, count) : Verify(bad.module, count), boxes);
      EXPECT_EQ(download ? DownloadResult(bad.module) : VerifyResult(bad.module), bad.result);
      const auto icon = machine->dialogs.messages[0].icon;
      EXPECT_EQ(icon, count == 2 ? MessageIcon::kStop : MessageIcon::kInformation);
      EXPECT_NE(Tool().lblNote.Caption().find(bad.note), std::string::npos) << Tool().lblNote.Caption();
      EXPECT_TRUE(Peer().frames.empty() && Peer().opens.empty());
      ExpectUsable();
    }
  }
}

TEST_F(FirmwareTest, BadFoldersAreRefusedBeforeAnythingHappens) {
  const struct {
    const char* folder;
    const char* box;
  } cases[] = {
      {"", "Please enter the folder"},       {"   ", "Please enter the folder"},
      {"/nowhere", "Folder does not exist"}, {"/fw/v12/KRT_CNTL.bin", "Folder does not exist"},
      {"/fw/pipe", "Folder does not exist"}, {"/root/v12", "The folder can't be opened: permission denied"},
  };
  for (const auto& given : cases) {
    for (const int tab : {0, 1}) {
      Reset();
      File("KRT_CNTL") = GoodFile(0, 100);
      machine->files.FailPath("/fw/pipe", FileError::kNotAFile);
      machine->files.FailPath("/root/v12", FileError::kNoPermission);
      Tool().SSTab1.SetTab(tab);
      Tool().optSEL_UP(1).SetValue(true);
      Tool().chkModule(0).SetValue(1);
      Tool().chkModule_up(0).SetValue(1);
      Tool().txtDown.SetText(given.folder);
      Tool().txtUp.SetText(given.folder);
      EXPECT_EQ(Execute(1), Texts{given.box});
      EXPECT_TRUE(Peer().opens.empty());
      EXPECT_TRUE(machine->files.changes.empty());
      ExpectUsable();
    }
  }
}

TEST_F(FirmwareTest, NothingChosen) {
  Tool().txtDown.SetText(" " + kFolder + " ");
  EXPECT_EQ(Execute(1), Texts{kCompleted});
  Tool().SSTab1.SetTab(1);
  EXPECT_EQ(Execute(2), (Texts{"Please select a VERSION CHECK and VERIFICATION", kCompleted}));
  EXPECT_EQ(Verify(-1, 2), (Texts{"Please check the verification module", kCompleted}));
  EXPECT_TRUE(Peer().opens.empty());
  EXPECT_TRUE(machine->files.changes.empty());
}

// The file changes between the open frame and the data frame: its bytes are not sent.
TEST_F(FirmwareTest, AFileThatChangesBehindTheOpenFrameIsNotSent) {
  File("KRT_CNTL") = GoodFile(0, 100);
  machine->files.meddle = [this](const std::string& path, int read) {
    if (path == PathOf("KRT_CNTL") && read == 3) File("KRT_CNTL")[50] ^= 1;
  };
  Download(0);
  EXPECT_EQ(DownloadResult(0), "NG");
  EXPECT_EQ(Peer().frames.size(), 1U);
  EXPECT_NE(Tool().lblNote.Caption().find("changed during the run"), std::string::npos);
  EXPECT_EQ(Tool().lblNote.Caption().find("incomplete"), std::string::npos);
  ExpectUsable();
}

}  // namespace
}  // namespace vlt::test
