// SPDX-License-Identifier: GPL-3.0-or-later
// A run as the operator sees it: the wait window, Cancel, closing, the journal, the port.
#include "firmware/sha256.h"
#include "firmware_fixture.h"
#include "support/plug_board.h"

namespace vlt::test {
namespace {

class RunTest : public FirmwareTest {
 protected:
  // Notes what the wait window says, with the seconds of the run.
  void Watch() {
    auto& wait = static_cast<frmMaint_Wait&>(App_().windows.Load("frmMaint_Wait"));
    wait.lblMssg.Observe([this, &wait] {
      seen.push_back(std::to_string(Time().NowMs() / 1000) + " " + wait.lblMssg.Caption());
      values.push_back(wait.pbWait.Value());
    });
  }
  Texts seen;
  std::vector<int> values;
};

TEST_F(RunTest, TheWaitWindowFollowsADownload) {
  File("KRT_CNTL") = GoodFile(0, 38'400);  // ten seconds on the line
  Watch();
  Time().At(5000, [&] {
    EXPECT_EQ(Wait()->lblTitle.Caption(), "SYSTEM EXECUTION MODULE");
    EXPECT_EQ(Wait()->pbWait.Max(), 4);
    EXPECT_EQ(Wait()->lblTime.Caption().substr(0, 4), "0:03");
    EXPECT_NE(Wait()->lblTime.Caption().find("0:12 expected"), std::string::npos)
        << Wait()->lblTime.Caption();
    EXPECT_EQ(App_().windows.MousePointer(), kHourglassPointer);
    // Nothing of the tool can be worked but Cancel.
    EXPECT_FALSE(Tool().cmdEXE.Press() || Tool().cmdQuit.Press() || Tool().chkModule(1).Tick() ||
                 Tool().txtDown.Type("x") || Tool().MENU_COMM.Press() || Tool().SSTab1.Select(1) ||
                 Tool().optSEL_UP(0).Choose());
    EXPECT_TRUE(Wait()->cmdCan.Enabled());
    EXPECT_FALSE(Wait()->HasCloseCommand());
  });
  EXPECT_EQ(Download(0), Texts{kCompleted});
  EXPECT_EQ(seen, (Texts{"0 Wait ...... DOWNLOAD Start", "2 Wait ...... DOWNLOAD",
                         "13 Wait ...... DOWNLOAD End", "15 Wait ...... FlashROM IS WRITING IN."}));
  EXPECT_EQ(values, (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(Time().NowMs() / 1000, 21);
  ExpectUsable();
}

TEST_F(RunTest, TheWaitWindowFollowsAVerificationAndAVersionRead) {
  File("KRT_BOOT") = Peer().image = GoodFile(1, 2000);
  Watch();
  Verify(1);
  EXPECT_EQ(Wait()->pbWait.Max(), 5);
  EXPECT_EQ(values, (std::vector<int>{1, 2, 3, 4, 5}));
  for (std::string& text : seen) text = text.substr(text.rfind("... ") + 4);
  EXPECT_EQ(seen, (Texts{"UPLOAD Start", "UPLOAD", "VERIFICATION", "UPLOAD End", "UPLOAD Save"}));
  seen.clear();
  Peer().image = "V 1.00\r\n";
  ReadVersion();
  for (std::string& text : seen) text = text.substr(text.rfind("... ") + 4);
  EXPECT_EQ(seen, (Texts{"VERSION Start", "UPLOAD", "VERSION End"}));
  EXPECT_EQ(Wait()->pbWait.Max(), 3);
}

// A failed module stands as such and the next one is tried; Cancel ends the run before the next module.
TEST_F(RunTest, ModulesInOrderUntilCancel) {
  for (const bool cancels : {false, true}) {
    Reset();
    for (int i = 0; i < kFwModules; ++i) {
      File(FwModules()[static_cast<std::size_t>(i)].stem) = GoodFile(i, 2000);
      Tool().chkModule(i).SetValue(1);
    }
    Peer().answer = [this](const std::string& frame) {
      return frame[1] == 'B' && Peer().frames.size() == 2 ? "no line end" : Peer().Good(frame);
    };
    Tool().txtDown.SetText(kFolder);
    if (cancels) {
      // Within the second module's data frame, which goes on.
      Time().At(14'000, [this] {
        EXPECT_TRUE(Wait()->cmdCan.Press());
        EXPECT_FALSE(Wait()->lblStop.Caption().empty());
      });
    }
    EXPECT_EQ(Execute(1), Texts{kCompleted});
    Texts results;
    for (int i = 0; i < kFwModules; ++i) results.push_back(DownloadResult(i));
    EXPECT_EQ(results,
              cancels ? (Texts{"NG", "SUCCESS", "", ""}) : (Texts{"NG", "SUCCESS", "SUCCESS", "SUCCESS"}));
    EXPECT_EQ(Tool().lblNote.Caption().find("Stopped before") != std::string::npos, cancels);
    ExpectUsable();
    // The next run begins afresh.
    Peer().answer = [this](const std::string& frame) { return Peer().Good(frame); };
    Execute(1);
    EXPECT_EQ(DownloadResult(3), "SUCCESS");
    EXPECT_TRUE(Wait()->cmdCan.Enabled() && Wait()->lblStop.Caption().empty());
  }
}

int CountOf(const std::string& part, const std::string& text) {
  int count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

// One thing to do, whatever has failed; and once a data frame has left nothing that takes the power away.
TEST_F(RunTest, AFailureHasOneInstruction) {
  const std::string refusal =
      "\x02\x45"
      "FLASH 3\x0C\r\n";
  for (const char at : {'A', 'B', 'C'}) {
    for (const std::string& answer : {std::string(), std::string("no line end"), refusal}) {
      SCOPED_TRACE(std::string(1, at) + " " + answer);
      Reset();
      File("KRT_BOOT") = GoodFile(1, 2000);
      Peer().answer = [&](const std::string& frame) { return frame[1] == at ? answer : Peer().Good(frame); };
      Download(1, answer == refusal ? 2 : 1);
      const std::string& note = Tool().lblNote.Caption();
      EXPECT_EQ(CountOf("again", note), 1) << note;
      EXPECT_EQ(note.find("restart"), std::string::npos) << note;
      EXPECT_EQ(CountOf("KRT_BOOT may be incomplete in the device.\nLeave the device switched on", note),
                at == 'A' ? 0 : 1)
          << note;
      EXPECT_LE(CountOf("switched on", note), 1) << note;
    }
  }
}

// What may be incomplete stays in the instruction, in whatever run, until it is downloaded.
TEST_F(RunTest, AnIncompleteModuleIsNotForgotten) {
  Tool().txtDown.SetText(kFolder);
  for (const int i : {0, 1, 3}) {
    File(FwModules()[static_cast<std::size_t>(i)].stem) = GoodFile(i, 2000);
    Tool().chkModule(i).SetValue(1);
  }
  // The first module is lost with its data frame, the second one with its close frame, the third is refused.
  Peer().answer = [this](const std::string& frame) -> std::string {
    const char code = frame[2];
    if (frame[1] == 'A' && code == '\xFD')
      return "\x02\x45"
             "BUSY\x0C\r\n";
    if (Peer().frames.size() == 2 || (frame[1] == 'C' && code == '\xFF')) return "";
    return Peer().Good(frame);
  };
  Execute(2);
  const std::string both = "\nKRT_CNTL, KRT_BOOT may be incomplete in the device.\n";
  const auto note = [this] { return Tool().lblNote.Caption(); };
  EXPECT_NE(note().find(both), std::string::npos) << note();
  EXPECT_EQ(CountOf("again", note()), 1) << note();
  Peer().answer = [](const std::string&) { return ""; };
  ReadVersion();
  EXPECT_NE(note().find(both), std::string::npos) << note();
  EXPECT_EQ(CountOf("again", note()), 1) << note();
  Peer().answer = [this](const std::string& frame) { return Peer().Good(frame); };
  Download(0);
  EXPECT_NE(note().find("\nKRT_BOOT may be incomplete"), std::string::npos) << note();
  File("KRT_BOOT") = Peer().image = GoodFile(1, 2000);
  Verify(1);
  EXPECT_EQ(VerifyResult(1), "SUCCESS");
  EXPECT_EQ(note().find("incomplete"), std::string::npos) << note();
}

// What is "to be written" has passed every check that a module's file has to pass.
TEST_F(RunTest, OnlyGoodFilesAreToBeWritten) {
  for (const bool download : {true, false}) {
    Reset();
    File("KRT_CNTL") = Peer().image = GoodFile(0, 200);
    File("KRT_BOOT") = GoodFile(0, 2000);
    File("KRT_UPSYS") = "";
    File("KRT_SPEED") = GoodFile(3, kFwLargestImage + 1);
    Tool().SSTab1.SetTab(download ? 0 : 1);
    Tool().optSEL_UP(1).SetValue(true);
    for (TextBox* folder : {&Tool().txtDown, &Tool().txtUp}) folder->SetText(kFolder);
    for (int i = 0; i < kFwModules; ++i)
      (download ? Tool().chkModule(i) : Tool().chkModule_up(i)).SetValue(1);
    std::string first;
    Peer().answer = [&](const std::string& frame) {
      if (first.empty()) first = Tool().lblNote.Caption();
      return Peer().Good(frame);
    };
    Execute(4);
    const std::string plan = download ? "To be written: KRT_CNTL\n" : "To be compared: KRT_CNTL\n";
    EXPECT_TRUE(first.starts_with(plan)) << first;
    EXPECT_NE(first.find("KRT_BOOT.bin is no file of the BOOT MODULE"), std::string::npos) << first;
    EXPECT_TRUE(Tool().lblImage(1).Caption().empty());
  }
}

TEST_F(RunTest, TheFilesAreNamedBeforeTheFirstFrame) {
  const std::string file = GoodFile(0, 38'401);
  File("KRT_CNTL") = file;
  Peer().answer = [&](const std::string& frame) {
    EXPECT_EQ(Tool().lblImage(0).Caption(), "38401 bytes, SHA-256 " + Sha256(file).substr(0, 16) + "...");
    EXPECT_NE(Tool().lblImage(0).Hint().find(Sha256(file)), std::string::npos);
    EXPECT_TRUE(Tool().lblNote.Caption().starts_with("To be written: KRT_CNTL"));
    return Peer().Good(frame);
  };
  Download(0);
  EXPECT_EQ(Peer().frames.size(), 3U);
}

TEST_F(RunTest, ARunningToolIsNotClosed) {
  File("KRT_CNTL") = GoodFile(0, 1000);
  Time().At(2000, [&] {
    EXPECT_FALSE(App_().windows.Unload("frmMaint_MAIN"));
    EXPECT_FALSE(App_().windows.Unload("frmMaint_Wait"));
    EXPECT_TRUE(App_().state.UiLocked);
    EXPECT_NE(Tool().lblNote.Caption().find("can't be closed during a run"), std::string::npos);
  });
  // Nor while its last box is shown.
  machine->dialogs.Answer(MessageAnswer::kOk, [&] { EXPECT_FALSE(App_().windows.Unload("frmMaint_MAIN")); });
  EXPECT_EQ(Download(0, 0), Texts{kCompleted});
  EXPECT_EQ(DownloadResult(0), "SUCCESS");
  EXPECT_TRUE(Tool().cmdQuit.Press());
  EXPECT_TRUE(App_().windows.Open().empty());
  EXPECT_EQ(App_().state.FwEndFlag, 1);
}

TEST_F(RunTest, TheJournalTellsEachStep) {
  const std::string file = "KRT_CNTL_KRT1SYS!";
  File("KRT_CNTL") = file;
  Peer().answer = [this](const std::string& frame) {
    return frame[1] == 'C' ? "\x02\x45"
                             "FLASH, PAGE \"3\"\x0C\r\n"
                           : Peer().Good(frame);
  };
  Download(0, 2);
  const std::string path = "/fw/v12_journal_20261124100000.csv";
  std::string text = machine->files.files[path];
  const std::string of = ",KRT_CNTL,17," + Sha256(file) + ",";
  EXPECT_EQ(std::erase(text, '\r'), 7u);
  for (std::size_t at = 0; (at = text.find(of)) != std::string::npos;) text.replace(at, of.size(), " M ");
  EXPECT_EQ(text,
            "\xEF\xBB\xBF"
            R"(time,module,bytes,sha256,step,outcome,detail
2026/11/24 10:00:00.000,,,,run,begun,download
2026/11/24 10:00:01.013 M open,good,
2026/11/24 10:00:03.028 M data,good,
2026/11/24 10:00:05.043 M close,failed,"error answer: KRT_ERROR : FLASH, PAGE ""3"""
2026/11/24 10:00:05.043 M result,NG,
2026/11/24 10:00:11.044,,,,run,ended,
)");
  EXPECT_NE(Tool().lblNote.Caption().find(path), std::string::npos);
}

TEST_F(RunTest, AJournalThatCantBeWrittenIsToldAndStopsNothing) {
  const std::string beside = "/fw/v12_journal_20261124100000.csv";
  const std::string within = "/fw/v12/journal_20261124100000.csv";
  const std::string full = "could not be written: the disk is full";
  const struct {
    std::function<void(MeddledFiles&)> spoil;
    std::string note;
  } cases[] = {
      {[&](MeddledFiles& files) { files.FailPath(beside, FileError::kNoPermission); }, "Journal: " + within},
      {[&](MeddledFiles& files) {
         files.FailPath(beside, FileError::kNoPermission);
         files.FailPath(within, FileError::kFull);
       },
       full},
      {[](MeddledFiles& files) { files.FailChange(3, FileError::kFull); }, full},  // its first step
  };
  for (const auto& given : cases) {
    Reset();
    File("KRT_CNTL") = GoodFile(0, 100);
    machine->files.folders.insert(kFolder + "/");
    given.spoil(machine->files);
    Tool().txtDown.SetText(kFolder + "/");
    Tool().chkModule(0).SetValue(1);
    EXPECT_EQ(Execute(1), Texts{kCompleted});
    EXPECT_EQ(DownloadResult(0), "SUCCESS");
    EXPECT_EQ(machine->files.files.contains(within), given.note != full);
    EXPECT_NE(Tool().lblNote.Caption().find(given.note), std::string::npos) << Tool().lblNote.Caption();
  }
}

// What the journal says of a file and of an image is what was wrong with it.
TEST_F(RunTest, TheJournalsReasonsAreTrue) {
  const struct {
    std::function<void()> spoil;
    int boxes;
    std::string result;
    std::string record;
  } cases[] = {
      // A folder that can't be entered: its files can't even be looked for.
      {[&] {
         machine->files.files.clear();
         machine->files.FailPath(PathOf("KRT_CNTL"), FileError::kNoPermission);
       },
       2, "File Error", ",file,File Error,FILE ERROR : KRT_CNTL.bin: permission denied\r\n"},
      {[&] { machine->files.FailPath(PathOf("KRT_CNTL"), FileError::kPipe); }, 2, "File Error",
       ",file,File Error,FILE ERROR : KRT_CNTL.bin: it is a pipe\r\n"},
      {[&] { machine->files.files.clear(); }, 1, "No File", ",file,No File,there is no such file\r\n"},
      {[&] { Peer().image.resize(40); }, 1, "NG", ",compare,failed,only 40 of 100 bytes came back\r\n"},
      {[&] {
         Peer().image.resize(40);
         File("KRT_CNTL").replace(40, 60, 60, '\0');
       },
       1, "NG", ",compare,failed,only 40 of 100 bytes came back\r\n"},
      {[&] { Peer().image[16] ^= 1; }, 1, "NG", ",compare,failed,differs at 00000010H\r\n"},
  };
  for (const auto& given : cases) {
    Reset();
    File("KRT_CNTL") = Peer().image = GoodFile(0, 100);
    given.spoil();
    Verify(0, given.boxes);
    EXPECT_EQ(VerifyResult(0), given.result);
    const std::string& journal = machine->files.files["/fw/v12_journal_20261124100000.csv"];
    EXPECT_NE(journal.find(given.record), std::string::npos) << given.record << journal;
  }
}

TEST_F(RunTest, TheJournalHasANameBesideAnyFolder) {
  const struct {
    const char* folder;
    const char* journal;
  } cases[] = {
      {".", "./journal_20261124100000.csv"},         {"./", "./journal_20261124100000.csv"},
      {"../..", "../../journal_20261124100000.csv"}, {"/fw/v12/./", "/fw/v12_journal_20261124100000.csv"},
      {"/", "/journal_20261124100000.csv"},
  };
  for (const auto& given : cases) {
    Reset();
    machine->files.folders.insert(given.folder);
    Tool().txtDown.SetText(given.folder);
    Tool().chkModule(0).SetValue(1);
    Execute(1);
    EXPECT_TRUE(machine->files.files.contains(given.journal)) << machine->files.changes.front();
  }
}

TEST_F(RunTest, AnImageThatCantBeSavedIsTold) {
  File("KRT_CNTL") = Peer().image = GoodFile(0, 100);
  for (int second = 0; second < 20; ++second) {
    const std::string stamp = (second < 10 ? "0" : "") + std::to_string(second);
    machine->files.FailPath("/fw/v12/KRT_CNTL_202611241000" + stamp + ".bin", FileError::kFull);
  }
  Verify(0);
  EXPECT_EQ(VerifyResult(0), "SUCCESS");
  EXPECT_NE(Tool().lblNote.Caption().find("could not be written: the disk is full"), std::string::npos);
}

TEST_F(RunTest, PortsThatCantBeOpenedSayWhy) {
  for (const auto& [code, words] : {std::pair(PortFaultCode::kMissing, "is not there"),
                                    std::pair(PortFaultCode::kBusy, "in use by another program"),
                                    std::pair(PortFaultCode::kNoPermission, "No permission"),
                                    std::pair(PortFaultCode::kSettings, "38400,N,8,1")}) {
    Reset();
    File("KRT_CNTL") = GoodFile(0, 100);
    Peer().refuses_to_open = code;
    Download(0);
    EXPECT_EQ(DownloadResult(0), "NG");
    EXPECT_NE(Tool().lblNote.Caption().find(words), std::string::npos) << Tool().lblNote.Caption();
    EXPECT_TRUE(Peer().frames.empty());
    ReadVersion();
    EXPECT_EQ(Tool().txtVer.Text(), "Error");
    ExpectUsable();
  }
}

TEST_F(RunTest, AnAdapterThatHasMovedIsFollowed) {
  const PortInfo before = Adapter("/dev/ttyUSB0", "A1");
  App_().state.Lost = {.port = 1, .device = before.device, .adapter = before, .away = true};
  machine->process.ports = {Adapter("/dev/ttyUSB4", "A1")};
  ReadVersion();
  EXPECT_EQ(PortDeviceInForce(App_(), 1), "/dev/ttyUSB4");
}

TEST_F(RunTest, FoldersComeFromTheDialog) {
  machine->dialogs.Folder(kFolder + std::string("\0rest", 5));
  machine->dialogs.Folder(std::nullopt);
  Tool().cmdFolder.Press();
  EXPECT_EQ(Tool().txtDown.Text(), kFolder);
  Tool().txtUp.SetText("/kept");
  Tool().cmdUP.Press();
  EXPECT_EQ(Tool().txtUp.Text(), "/kept");
  EXPECT_EQ(machine->dialogs.folder_questions[0].text, "Please choose a folder.");
}

TEST_F(RunTest, ThePortIsChosenAndKept) {
  machine->files.files["/app/VLT.ini"] = "[COMM]\r\nPORT=1\r\nSPEED=9600\r\n[PORTS]\r\nCOM7=/dev/ttyUSB0\r\n";
  auto port = [&]() -> frmMaint_COMM& {
    Tool().MENU_COMM.Press();
    return static_cast<frmMaint_COMM&>(App_().windows.Load("frmMaint_COMM"));
  };
  EXPECT_EQ(port().cmbComm.Count(), 10);
  EXPECT_EQ(port().cmbComm.Text(), "COM1");
  port().cmbComm.Choose(3);
  port().cmdCan.Press();
  EXPECT_EQ(App_().state.PortNo, "1");
  port().cmbComm.Choose(6);
  port().cmdOK.Press();
  EXPECT_EQ(App_().windows.Find("frmMaint_COMM"), nullptr);
  EXPECT_EQ(App_().state.PortNo, "7");
  EXPECT_EQ(Tool().Link.FwPortName, "COM7");
  EXPECT_EQ(Tool().StatusBar1.Panel(1), "COM7   /dev/ttyUSB0");
  EXPECT_EQ(machine->files.files["/app/VLT.ini"],
            "[COMM]\r\nPORT=7\r\nSPEED=9600\r\n[PORTS]\r\nCOM7=/dev/ttyUSB0\r\n");
  // A settings file that can't be written is told; the port is in force all the same.
  machine->files.FailPath("/app/VLT.ini", FileError::kNoPermission);
  port().cmbComm.Choose(1);
  port().cmdOK.Press();
  EXPECT_EQ(Tool().Link.FwPortName, "COM2");
  EXPECT_NE(Tool().lblNote.Caption().find("VLT.ini"), std::string::npos);
  // No port chosen yet: nothing is taken over.
  App_().state.PortNo = "0";
  auto& none = port();
  EXPECT_EQ(none.cmbComm.ListIndex(), -1);
  none.cmdOK.Press();
  EXPECT_EQ(App_().state.PortNo, "0");
  EXPECT_TRUE(none.Visible());
  // It goes when a run begins, and with the tool.
  EXPECT_EQ(Execute(1), Texts{"Please enter the folder"});
  EXPECT_EQ(App_().windows.Find("frmMaint_COMM"), nullptr);
  port();
  EXPECT_TRUE(App_().windows.Unload("frmMaint_MAIN"));
  EXPECT_TRUE(App_().windows.Open().empty());
}

TEST_F(RunTest, FontsFollowTheSystemsLanguage) {
  EXPECT_EQ(Tool().cmdEXE.GetFont(), (Font{"Times New Roman", 9, false}));
  Reset();
  App_().windows.Unload("frmMaint_MAIN");
  App_().state.LocaleId = 1041;
  EXPECT_EQ(Tool().cmdEXE.GetFont(), (Font{"ＭＳ ゴシック", 9, false}));
}

}  // namespace
}  // namespace vlt::test
