// SPDX-License-Identifier: GPL-3.0-or-later
// The line's window as an operator works it.
#include "monitor/frm_line.h"

#include <gtest/gtest.h>

#include "link/modbus.h"
#include "link/operation.h"
#include "link/port.h"
#include "link/registers.h"
#include "shell/shell_fixture.h"
#include "state/form_lock.h"

namespace vlt::test {
namespace {

constexpr int kExchanges = 1;  // columns
constexpr int kFailed = 3;

class FrmLineTest : public ShellTest {
 protected:
  FrmLineTest() {
    OpenMainWindow("VR=M627\r\nLANG_FLAG=1\r\n[COMM]\r\nPORT=1\r\nSTATION_NO=01\r\nRETRY_NO=0\r\n");
    platform->line.AddStation(2, {});
    OpenPort(*app);
    app->line->Reset();
    first_frames_ = app->line->FramesEver();
  }
  frmLine& OpenWindow() {
    Choose("mnuLine");
    return static_cast<frmLine&>(*app->windows.Find("frmLine"));
  }
  bool Ask(int station, int times = 1) {
    RegisterData data;
    bool good = true;
    for (int i = 0; i < times; ++i) {
      good = ReadRegisters(*app, {station, kModeOrdinary}, {.address = 0x0100, .count = 1}, data) && good;
    }
    return good;
  }
  void Tick(frmLine& window) { platform->time.RunFor(window.tmrLine.Interval() + 1); }

  std::int64_t first_frames_ = 0;
};

TEST_F(FrmLineTest, ShowsFiguresByStationAndOutcomesOfTheChosenOne) {
  Ask(1, 3);
  frmLine& window = OpenWindow();
  EXPECT_EQ(window.Caption(), "Line Statistics and Frames");
  EXPECT_EQ(window.grdStations.Rows(), 3);
  EXPECT_EQ(window.grdStations.Cell(1, 0), "All");
  EXPECT_EQ(window.grdStations.Cell(2, kExchanges), "3");
  platform->Arm("silence");
  EXPECT_FALSE(Ask(2));
  EXPECT_EQ(window.grdStations.Rows(), 3) << "the screen is calm between two ticks";
  Tick(window);
  ASSERT_EQ(window.grdStations.Rows(), 4);
  EXPECT_EQ(window.grdStations.Cell(3, kFailed), "1");
  EXPECT_EQ(window.grdOutcomes.Cell(1, 1), "3");
  EXPECT_EQ(window.grdOutcomes.Cell(2, 2), "25.0") << "one silence in four attempts";
  EXPECT_TRUE(window.grdStations.Choose(3));
  EXPECT_EQ(window.lblOutcomes.Caption(), "Station 2: how attempts ended");
  EXPECT_EQ(window.grdOutcomes.Cell(1, 1), "0");
  EXPECT_EQ(window.grdOutcomes.Cell(2, 2), "100.0");
  EXPECT_TRUE(window.grdStations.Choose(2));
  EXPECT_EQ(window.lblOutcomes.Caption(), "Station 1: how attempts ended");
  EXPECT_TRUE(window.grdStations.Choose(3));
  // The choice stays with its station when another one comes before it.
  platform->time.RunFor(2'000);  // nobody waits for the lost reply any more
  app->line->Reset();
  Ask(2);
  Tick(window);
  EXPECT_EQ(window.grdStations.SelectedRow(), 2);
  Ask(1);
  Tick(window);
  EXPECT_EQ(window.grdStations.SelectedRow(), 3);
  EXPECT_EQ(window.stbLine.Panel(3), "9600 bit/s, 11 bits a byte, 873 bytes/s at most");
  EXPECT_NE(window.stbLine.Panel(2).find("of the line"), std::string::npos);
}

TEST_F(FrmLineTest, FramesComeAtTheEndAndGoAtTheTop) {
  frmLine& window = OpenWindow();
  const int before = window.grdFrames.Rows();
  Ask(1);
  Tick(window);
  ASSERT_EQ(window.grdFrames.Rows(), before + 2);
  EXPECT_EQ(window.grdFrames.Cell(before, 1), "→");
  EXPECT_EQ(window.grdFrames.Cell(before + 1, 4).substr(0, 9), "Answer in");
  // What comes to be known of a frame that is shown already.
  app->line->CorrectLast(AttemptEnd::kOtherStation);
  Tick(window);
  EXPECT_EQ(window.grdFrames.Cell(before + 1, 4), "Signed by station 1 instead of 1");
  const int most = static_cast<int>(LineRecord::kFrames);
  while (app->line->FrameCount() < LineRecord::kFrames) Ask(1);
  Tick(window);
  EXPECT_EQ(window.grdFrames.Rows(), most + 1);
  const std::int64_t dropped = window.grdFrames.DroppedRows();
  const std::string third = window.grdFrames.Cell(7, 0);
  Ask(1, 3);
  Tick(window);
  EXPECT_EQ(window.grdFrames.DroppedRows(), dropped + 6);
  EXPECT_EQ(window.grdFrames.Cell(1, 0), third) << "the rest has moved up";
  Ask(2, most);
  Tick(window);
  EXPECT_EQ(window.grdFrames.Rows(), most + 1);
  EXPECT_EQ(window.grdFrames.Cell(1, 2), "2") << "none of those before is left";
}

TEST_F(FrmLineTest, APauseHoldsTheFramesAndSavesWhatItShows) {
  frmLine& window = OpenWindow();
  Ask(1, 2);
  ASSERT_TRUE(window.chkPause.Tick());
  const int shown = window.grdFrames.Rows() - 1;
  EXPECT_EQ(shown, static_cast<int>(app->line->FrameCount())) << "up to the moment";
  EXPECT_EQ(window.lblPaused.Caption().substr(0, 10), "Paused at ");
  Ask(1, 2);
  Tick(window);
  EXPECT_EQ(window.grdFrames.Rows() - 1, shown);
  EXPECT_EQ(window.grdStations.Cell(2, kExchanges), "4") << "counting goes on";
  platform->dialogs.SaveFile("/data/frames.txt");
  EXPECT_TRUE(window.cmdSave.Press());
  const std::string file = platform->files.files.at("/data/frames.txt");
  const auto frames = [&] {
    int count = 0;
    for (const char* mark : {"\t→\t", "\t←\t", "\t×\t"}) {
      for (std::size_t at = file.find(mark); at != std::string::npos; at = file.find(mark, at + 1)) ++count;
    }
    return count;
  };
  EXPECT_EQ(frames(), shown);
  EXPECT_TRUE(window.stbLine.Panel(1).ends_with("frames.txt")) << window.stbLine.Panel(1);
  EXPECT_TRUE(window.chkPause.Untick());
  EXPECT_EQ(window.grdFrames.Rows() - 1, shown + 4);
  EXPECT_EQ(window.lblPaused.Caption(), "");
}

TEST_F(FrmLineTest, ResetAsksNothingAndKeepsTheFrames) {
  frmLine& window = OpenWindow();
  Ask(1, 2);
  Tick(window);
  platform->time.RunFor(3000);
  const int rows = window.grdFrames.Rows();
  EXPECT_TRUE(window.cmdReset.Press());
  EXPECT_EQ(window.grdStations.Rows(), 2) << "all of them, and none";
  EXPECT_EQ(window.grdStations.Cell(1, kExchanges), "0");
  EXPECT_EQ(window.lblSince.Caption(), "Counted since " + DateTimeText(platform->time.Now()));
  EXPECT_EQ(window.grdFrames.Rows(), rows);
  EXPECT_TRUE(platform->dialogs.messages.empty());
}

// During work the menu leads to this window alone, its buttons work, and a file waits for the work's end,
// with what stood there when it was asked for.
TEST_F(FrmLineTest, ItWorksWhileAnExchangeRuns) {
  MDIForm1& frame = MainWindow(*app);
  std::string csv;
  platform->time.After(20, [&] {
    EXPECT_FALSE(On<MenuItem>("MDIForm1", "readparam").Press());
    EXPECT_TRUE(On<MenuItem>("MDIForm1", "mnuLine").Press());
    auto& window = static_cast<frmLine&>(*app->windows.Find("frmLine"));
    EXPECT_TRUE(window.cmdReset.Enabled());
    csv = StatisticsCsv(*app);
    EXPECT_TRUE(window.cmdCSV.Press());
    EXPECT_TRUE(platform->dialogs.questions.empty()) << "it would hold up the exchange";
    EXPECT_EQ(window.stbLine.Panel(1), "The file is asked for when the work under way has ended");
  });
  platform->dialogs.SaveFile("/data/line.csv");
  app->windows.Run([&] {
    const Operation operation(*app, frame, "test");
    EXPECT_TRUE(Ask(1));
  });
  auto& window = static_cast<frmLine&>(*app->windows.Find("frmLine"));
  EXPECT_TRUE(platform->dialogs.questions.empty());
  Tick(window);
  ASSERT_EQ(platform->dialogs.questions.size(), 1u);
  EXPECT_EQ(platform->dialogs.questions[0].name, "line.csv");
  EXPECT_EQ(platform->files.files.at("/data/line.csv"), csv);
  // Open before the work begins, it keeps its buttons too.
  FormLock(*app, frame, 0);
  EXPECT_TRUE(window.cmdSave.Enabled() && window.cmdClose.Enabled());
  FormLock(*app, frame, 1);
}

TEST_F(FrmLineTest, AFileThatCantBeWrittenIsTold) {
  frmLine& window = OpenWindow();
  platform->dialogs.SaveFile(std::nullopt);
  EXPECT_TRUE(window.cmdCSV.Press());
  EXPECT_EQ(window.stbLine.Panel(1), "");
  platform->files.FailPath("/data/line.csv", FileError::kFull);
  platform->dialogs.SaveFile("/data/line.csv");
  EXPECT_TRUE(window.cmdCSV.Press());
  EXPECT_EQ(window.stbLine.Panel(1), "line.csv could not be written: the disk is full");
  platform->dialogs.SaveFile(kIniPath);
  platform->dialogs.Answer(MessageAnswer::kOk);
  const std::string settings = platform->files.files.at(kIniPath);
  EXPECT_TRUE(window.cmdSave.Press());
  EXPECT_EQ(platform->files.files.at(kIniPath), settings);
}

TEST_F(FrmLineTest, AClosedWindowCostsNothing) {
  const int timers = platform->time.TimerCount();
  frmLine& window = OpenWindow();
  EXPECT_EQ(platform->time.TimerCount(), timers + 1);
  EXPECT_TRUE(window.cmdClose.Press());
  EXPECT_EQ(app->windows.Find("frmLine"), nullptr);
  EXPECT_EQ(platform->time.TimerCount(), timers);
}

}  // namespace
}  // namespace vlt::test
