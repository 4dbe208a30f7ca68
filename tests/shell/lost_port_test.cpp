// SPDX-License-Identifier: GPL-3.0-or-later
// A port that goes away while nothing runs, as the main window tells it; and the journal of runs at the
// start.
#include "shell/found_runs.h"
#include "shell/frame_facts.h"
#include "shell/port_watch.h"
#include "shell_fixture.h"
#include "support/plug_board.h"

namespace vlt::test {
namespace {

const PortInfo kAdapter = Adapter("/dev/ttyUSB0", "A1");

class LostPortTest : public ShellTest {
 protected:
  MDIForm1& Open() {
    MDIForm1& window =
        OpenMainWindow("VR=M627\r\nLANG_FLAG=1\r\n[COMM]\r\nPORT=1\r\nSTATION_NO=01\r\nRETRY_NO=0\r\n");
    board = std::make_unique<PlugBoard>(*platform, *app);
    return window;
  }
  std::string Link() { return On<PushButton>("MDIForm1", "cmdLink").Hint(); }
  void Wait(std::int64_t ms) { platform->time.RunFor(ms); }
  // The reading of the meter's facts stands for any operation.
  void Operate() {
    Press("cmdReadMeter");
    Wait(50);
  }
  std::unique_ptr<PlugBoard> board;
};

TEST_F(LostPortTest, IsToldWhileNothingRunsAndOpenedByTheNextOperation) {
  MDIForm1& window = Open();
  board->Plug(kAdapter);
  ASSERT_TRUE(OpenPort(*app));
  platform->TakeRequests();
  const int looks = platform->process.looks;
  Wait(60'000);
  EXPECT_EQ(platform->process.looks, looks) << "an open port is enough to know";
  EXPECT_TRUE(platform->TakeRequests().empty());

  board->Unplug("/dev/ttyUSB0");
  Wait(1100);
  EXPECT_EQ(StatusText(), "COM1 (/dev/ttyUSB0) was lost, waiting for it");
  EXPECT_TRUE(Link().ends_with("(lost, waiting)")) << Link();
  EXPECT_FALSE(app->state.UiLocked);
  EXPECT_TRUE(window.Command13.Enabled());
  Wait(60'000);
  EXPECT_LE(platform->process.looks - looks, 62) << "once a second";

  board->Plug(Adapter("/dev/ttyUSB5", "A1"));
  Wait(1100);
  EXPECT_EQ(StatusText(), "COM1 (/dev/ttyUSB0) came back as /dev/ttyUSB5: the next operation opens it");
  EXPECT_FALSE(platform->simulated.IsOpen());
  Operate();
  EXPECT_EQ(app->state.OpenedDevice, "/dev/ttyUSB5");
  EXPECT_EQ(StatusText(), "Meter: the meter has answered");
  EXPECT_TRUE(platform->dialogs.TakeTexts().empty());
}

TEST_F(LostPortTest, InAnOperationKeepsWhatTheOperationHasSaid) {
  Open();
  board->Plug(kAdapter);
  ASSERT_TRUE(OpenPort(*app));
  platform->time.After(20, [this] { board->Unplug("/dev/ttyUSB0"); });
  platform->dialogs.Answer(MessageAnswer::kOk);
  Operate();
  EXPECT_EQ(platform->dialogs.TakeTexts().size(), 1u) << "one message";
  const std::string said = StatusText();
  EXPECT_NE(said.find("[RECEIVE ERROR(5)]"), std::string::npos) << said;
  Wait(5000);
  EXPECT_EQ(StatusText(), said);
  EXPECT_TRUE(Link().ends_with("(lost, waiting)"));
  board->Plug(kAdapter);
  Wait(1100);
  EXPECT_EQ(StatusText(), "COM1 (/dev/ttyUSB0) came back as /dev/ttyUSB0: the next operation opens it");
}

TEST_F(LostPortTest, LooksNoMoreOnceThePortIsClosedByHand) {
  Open();
  board->Plug(kAdapter);
  ASSERT_TRUE(OpenPort(*app));
  bool closed = false;
  ClosePort(*app, closed);
  Wait(1100);
  EXPECT_EQ(platform->time.TimerCount(), 0);
  EXPECT_EQ(StatusText(), "");
}

constexpr const char* kJournal = "/app/VLT.runs";

class FoundRunsTest : public ShellTest {
 protected:
  std::string Told() { return On<Label>("MDIForm1", "lblFoundRuns").Caption(); }
  bool IsTold() { return On<Label>("MDIForm1", "lblFoundRuns").Visible(); }
  std::map<std::string, std::string>& Files() { return platform->files.files; }
};

TEST_F(FoundRunsTest, AreToldWithTheirLastRecordAndStayUntilSeen) {
  const std::string whole =
      "\xEF\xBB\xBFThe measurement data\r\nTIME,'VELOCITY[m/s],\r\n2026/11/23 09:00:01,1,\r\n2026/11/23 "
      "09:00:02,2,\r\n";
  const std::string half = whole + "2026/11/23 09:0";
  Files()["/data/a_20261123090000.csv"] = whole;
  Files()["/data/b_20261123100000.csv"] = half;
  Files()[kJournal] =
      "2026/11/23 09:00:00\tForm9\t/data/a_20261123090000.csv\r\nno entry\r\n"
      "2026/11/23 09:30:00\tForm12\t/data/gone.csv\r\n"
      "2026/11/23 10:00:00\tForm12\t/data/b_20261123100000.csv\r\n2026/11/23 11:00";
  const auto before = Files();
  OpenMainWindow();
  EXPECT_EQ(Told(),
            "3 runs ended without Stop. The latest: b_20261123100000.csv, last record 2026/11/23 09:00:02, "
            "2 records");
  Press("cmdFoundRuns");
  ASSERT_TRUE(IsShown("frmFoundRuns"));
  auto& grid = On<Grid>("frmFoundRuns", "grdRuns");
  ASSERT_EQ(grid.Rows(), 4);
  EXPECT_EQ(grid.Cell(1, 0) + " " + grid.Cell(1, 1), "b_20261123100000.csv PV Read");
  EXPECT_EQ(grid.Cell(1, 4), "2 records (" + std::to_string(half.size()) + " bytes), last line cut off");
  grid.Choose(3);
  EXPECT_EQ(On<Label>("frmFoundRuns", "lblPath").Caption(), "/data/a_20261123090000.csv");
  EXPECT_EQ(grid.Cell(2, 3), "cannot be read: there is no such file");
  EXPECT_EQ(grid.Cell(3, 1) + " " + grid.Cell(3, 4),
            "MEASURE 2 records (" + std::to_string(whole.size()) + " bytes)");
  for (const auto& [path, text] : before) {
    if (path == kIniPath) continue;
    EXPECT_EQ(Files()[path], text) << "nothing is rewritten";
  }
  On<PushButton>("frmFoundRuns", "cmdSeen").Press();
  EXPECT_FALSE(IsShown("frmFoundRuns"));
  EXPECT_FALSE(IsTold());
  EXPECT_FALSE(Files().contains(kJournal));
  EXPECT_EQ(Files()["/data/b_20261123100000.csv"], half);
}

TEST_F(FoundRunsTest, StayToldWhileTheJournalCannotBeWritten) {
  const std::string path = "/data/" + std::string(37, 'n') + ".csv";
  Files()[path] = "";
  Files()[kJournal] = "2026/11/23 09:00:00\tForm9\t" + path + "\r\n";
  OpenMainWindow();
  EXPECT_EQ(Told(),
            "A run ended without Stop: " + std::string(37, 'n') + ".c…, last record no record, 0 records");
  EXPECT_EQ(On<Label>("MDIForm1", "lblFoundRuns").Hint(), path);
  EXPECT_EQ(On<PushButton>("MDIForm1", "cmdFoundRuns").GetFont().name, app->state.PageFont);
  Press("cmdFoundRuns");
  EXPECT_EQ(On<Grid>("frmFoundRuns", "grdRuns").SelectedRow(), 1);
  EXPECT_EQ(On<Label>("frmFoundRuns", "lblPath").Caption(), path);
  On<PushButton>("frmFoundRuns", "cmdClose").Press();
  EXPECT_FALSE(IsShown("frmFoundRuns"));
  platform->files.FailChange(1, FileError::kFull);
  Press("cmdFoundRunsSeen");
  EXPECT_TRUE(IsTold());
  EXPECT_NE(StatusText().find("the disk is full"), std::string::npos) << StatusText();
  Press("cmdFoundRunsSeen");
  EXPECT_FALSE(IsTold());
}

TEST_F(FoundRunsTest, AJournalThatCannotBeReadIsTold) {
  Files()[kJournal] = "2026/11/23 09:00:00\tForm9\t/data/a.csv\r\n";
  platform->files.FailPath(kJournal, FileError::kNoPermission);
  OpenMainWindow();
  EXPECT_EQ(
      Told(),
      "Whether a run ended without Stop is not known: VLT.runs could not be read: permission denied (the "
      "file is left as it is)");
  EXPECT_FALSE(On<PushButton>("MDIForm1", "cmdFoundRuns").Visible()) << "there is nothing to list";
  Press("cmdFoundRunsSeen");
  EXPECT_FALSE(IsTold());
  EXPECT_TRUE(Files().contains(kJournal));
}

TEST_F(FoundRunsTest, AreNotToldWhereThereAreNone) {
  OpenMainWindow();
  EXPECT_FALSE(IsTold());
  EXPECT_FALSE(On<PushButton>("MDIForm1", "cmdFoundRuns").Visible());
  EXPECT_FALSE(Files().contains(kJournal));
}

}  // namespace
}  // namespace vlt::test
