// SPDX-License-Identifier: GPL-3.0-or-later
// The comparison's window, worked by gestures: sides, rows, ticks, sending, restoring, files.
#include "compare/frm_compare.h"
#include "compare/compare_files.h"
#include "compare/compare_line.h"
#include "compare/compare_rows.h"

#include <gtest/gtest.h>

#include "compare/compare.h"
#include "compare/compare_fixture.h"
#include "pages/form2.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare_window.h"
#include "state/form_lock.h"
#include "support/keeping_printer.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

constexpr int kMeterEntry = 0;
constexpr int kSnapshotEntry = 1;
constexpr int kParameterEntry = 2;
constexpr int kFieldsEntry = 3;
constexpr int kPointEntry = 4;
constexpr const char* kPath = "/home/operator/full.txt";
constexpr std::uint32_t kFluid = 0x00E6;
constexpr std::uint32_t kWall = 0x00DA;
constexpr std::uint32_t kTimer = 0x001C;
constexpr const char* kTimerTitle = "BURNOUT TIMER";

class CompareWindowTest : public CompareTest {
 public:
  explicit CompareWindowTest(const Shape& shape = kOnePath, int lang_offset = 5000)
      : CompareTest(shape, lang_offset) {
    meter().holding().PutWord(0x0104, 42);
    meter().holding().PutWord(kFluid, 3);
    meter().holding().PutWord(kTimer, 10);
    test.platform.machine.printer = &printer;
    RegisterCompareWindows(app());
    app().windows.Run([&] { app().windows.Load("frmCompare").Show(); });
  }
  frmCompare& window() { return *static_cast<frmCompare*>(app().windows.Find("frmCompare")); }

  void Choose(int side, int entry) { EXPECT_TRUE(window().cmbSide(side).Choose(entry)); }
  // Takes in what the list has chosen.
  void Take(int side) { EXPECT_TRUE(window().cmdSide(side).Press()); }
  void TakeFile(int side, const std::string& path) {
    dialogs().OpenFile(path);
    Take(side);
  }
  // The fluid changes what the meter works out of it: a fourth row differs, and is never sent.
  void ChangeThree() {
    meter().holding().PutWord(kFluid, 5);
    meter().holding().PutWord(kWall + 2, meter().holding().Word(kWall + 2) ^ 0x40);
    meter().holding().PutWord(kTimer, 20);
  }
  // The meter as it is now, in a file and on the left side, and then the meter on the right.
  void CompareWithSnapshot(const std::function<void()>& change = {}) {
    Files()[kPath] = SnapshotText(Read());
    if (change) change();
    Choose(frmCompare::kLeft, kSnapshotEntry);
    TakeFile(frmCompare::kLeft, kPath);
    Choose(frmCompare::kRight, kMeterEntry);
    Take(frmCompare::kRight);
    Requests();
  }
  void Answer(MessageAnswer answer = MessageAnswer::kOk) { dialogs().Answer(answer); }
  Texts Said() { return dialogs().TakeTexts(); }
  std::string Told() { return window().stbCompare.Panel(1); }
  std::string Text(int id) { return app().Text(id); }

  // The line of the list whose first cell begins so; 0 for none.
  int LineOf(const std::string& begin) {
    for (int at = 1; at < CompareRows::Of(window()).grdRows.Rows(); ++at) {
      if (CompareRows::Of(window()).grdRows.Cell(at, 0).starts_with(begin)) return at;
    }
    return 0;
  }
  std::string ResultOf(const std::string& begin) {
    return CompareRows::Of(window()).grdRows.Cell(LineOf(begin), 6);
  }
  void Tick(const std::string& begin) {
    EXPECT_TRUE(CompareRows::Of(window()).grdRows.Tick(LineOf(begin))) << begin;
  }
  int Listed(RowStyle style) {
    int count = 0;
    for (int at = 1; at < CompareRows::Of(window()).grdRows.Rows(); ++at)
      count += CompareRows::Of(window()).grdRows.Style(at) == style ? 1 : 0;
    return count;
  }
  void Filter(RowFilter filter) { CompareRows::Of(window()).optFilter(static_cast<int>(filter)).Choose(); }
  std::size_t Points() { return RestorePoints(app()).size(); }
  std::size_t PrintedPages() {
    EXPECT_TRUE(CompareFiles::Of(window()).cmdPrint.Press());
    return printer.pages;
  }

  KeepingPrinter printer;
};

class CompareWindow : public testing::Test, public CompareWindowTest {
 protected:
  frmCompare& window = CompareWindowTest::window();
};

TEST_F(CompareWindow, ComparesASnapshotWithTheMeterAndShowsWhatDiffers) {
  EXPECT_EQ(CompareRows::Of(window).lblCounts.Caption(), "Take in both sides to compare them");
  EXPECT_EQ(window.txtSide(1).Text(), "No file is open yet");
  EXPECT_EQ(CompareRows::Of(window).grdRows.Cell(0, 5) + ", " + CompareRows::Of(window).grdRows.Cell(0, 6),
            "State, Result, note");
  CompareWithSnapshot();
  EXPECT_TRUE(CompareRows::Of(window).lblCounts.Caption().starts_with("No differences in "))
      << CompareRows::Of(window).lblCounts.Caption();
  EXPECT_EQ(window.txtSide(0).Text(), kPath);
  EXPECT_EQ(window.lblIdentity(0).Caption().substr(0, 10), "ID No. 004");
  EXPECT_EQ(Listed(RowStyle::kStrong), 0);

  ChangeThree();
  Take(frmCompare::kRight);
  EXPECT_EQ(Told(), "This meter: 225 rows taken in");
  EXPECT_EQ(test.StatusText(), Told());
  EXPECT_EQ(Listed(RowStyle::kStrong), 4);
  EXPECT_EQ(CompareRows::Of(window).optFilter(1).Caption(), "Different (4)");
  Filter(RowFilter::kDifferent);
  EXPECT_EQ(Listed(RowStyle::kTitle), 2);
  EXPECT_EQ(CompareRows::Of(window).grdRows.Rows(), 1 + 2 + 4);
  const int fluid = LineOf("KIND OF FLUID");
  EXPECT_EQ(CompareRows::Of(window).grdRows.Cell(fluid, 5), "different");
  EXPECT_NE(CompareRows::Of(window).grdRows.Cell(fluid, 1), CompareRows::Of(window).grdRows.Cell(fluid, 3));
  EXPECT_TRUE(CompareRows::Of(window).grdRows.Choose(fluid));
  EXPECT_EQ(
      CompareRows::Of(window).stbRow.Panel(1),
      "PROCESS SETTING CH1 KIND OF FLUID   process.fluid   Register 00E6H   Left: 00 03   Right: 00 05");
  EXPECT_EQ(CompareRows::Of(window).stbNote.Panel(1), "different");
  for (const RowFilter filter : {RowFilter::kAll, RowFilter::kDifferent}) {
    Filter(filter);
    EXPECT_EQ(CompareRows::Of(window).grdRows.SelectedRow(), LineOf("KIND OF FLUID"))
        << "wherever the row stands now";
  }
  EXPECT_FALSE(CompareRows::Of(window).optFilter(5).Visible()) << "nothing was sent yet";
  // Another choice empties the side and with it the list: nothing of the side before stays on the screen.
  Choose(frmCompare::kLeft, kFieldsEntry);
  EXPECT_EQ(CompareRows::Of(window).grdRows.Rows(), 1);
  EXPECT_EQ(window.lblIdentity(0).Caption(), " \n ");
  EXPECT_EQ(CompareRows::Of(window).stbRow.Panel(1), "");
  Take(frmCompare::kLeft);
  Filter(RowFilter::kOnlyRight);
  EXPECT_GT(CompareRows::Of(window).grdRows.Rows(), 100) << "the pages hold nothing yet";
  EXPECT_TRUE(Said().empty());
}

// A page sends while the window stands open: a meter that was taken in before, on either side, says that it
// is outdated, until it is taken in anew. A refused set changes nothing.
TEST_F(CompareWindow, AMeterThatWasSetSinceIsOutdated) {
  for (const int side : {frmCompare::kLeft, frmCompare::kRight}) {
    Choose(side, kMeterEntry);
    Take(side);
  }
  Form2& page = Open<Form2>("Form2");
  page.BURNOUT_TIMER.Tick();
  const auto set = [&](const char* seconds) {
    page.BURNOUT_TIMERText.Type(seconds);
    page.SetParameter.Press();
    return Texts{window.txtSide(0).Text(), window.txtSide(1).Text()};
  };
  const std::string fresh = "This meter", old = "This meter - outdated, settings were sent since it was read";
  meter().BreakMemory(sim::Space::Holding, kTimer, kTimer + 1, 4);
  Answer();
  EXPECT_EQ(set("20"), (Texts{fresh, fresh}));
  meter().MendMemory();
  EXPECT_EQ(set("30"), (Texts{old, old}));
  Take(frmCompare::kRight);
  EXPECT_EQ(window.txtSide(1).Text(), fresh);
  EXPECT_EQ(window.txtSide(0).Text(), old);
  EXPECT_EQ(CompareRows::Of(window).grdRows.Cell(LineOf(kTimerTitle), 5), "different");
  // Its own sending: the right side is read anew.
  Tick(kTimerTitle);
  Answer();
  EXPECT_TRUE(CompareLine::Of(window).cmdSend.Press());
  EXPECT_EQ(window.txtSide(1).Text(), fresh);
  EXPECT_EQ(window.txtSide(0).Text(), old);
  EXPECT_TRUE(window.cmdClose.Press());
  EXPECT_TRUE(app().windows.Find("frmCompare") == nullptr);
  page.SetParameter.Press();
}

// Missing rows, unread rows and lines that were not taken: the counts are those of all rows, and what is not
// known is never called equal.
TEST_F(CompareWindow, NothingIsCalledEqualThatIsMissingOrUnread) {
  std::string content = SnapshotText(Read());
  const std::size_t line = content.find("process.fluid\t");
  ASSERT_NE(line, std::string::npos) << content.substr(0, 400);
  content.replace(line, 8, "procell.");
  Files()[kPath] = content;
  Choose(frmCompare::kLeft, kSnapshotEntry);
  TakeFile(frmCompare::kLeft, kPath);
  Choose(frmCompare::kRight, kMeterEntry);
  meter().BreakMemory(sim::Space::Holding, 0x00C0, 0x00C1, 2);
  Take(frmCompare::kRight);
  EXPECT_FALSE(CompareRows::Of(window).lblCounts.Caption().starts_with("No differences"));
  EXPECT_TRUE(Told().find("could not be read") != std::string::npos) << Told();
  const auto remarks = [&](RowFilter filter) {
    Filter(filter);
    return Listed(RowStyle::kNote);
  };
  EXPECT_EQ(remarks(RowFilter::kUnread), 2) << "the line that was not taken, and what it lacks";
  EXPECT_EQ(CompareRows::Of(window).grdRows.Cell(1, 0), "Left: remarks, 2");
  EXPECT_EQ(remarks(RowFilter::kDifferent), 0);
  EXPECT_EQ(remarks(RowFilter::kAll), 2);
  int rows = 0, in_filters = 0;
  const auto listed = [&](RowFilter filter) {
    Filter(filter);
    return Listed(RowStyle::kPlain) + Listed(RowStyle::kStrong);
  };
  rows = listed(RowFilter::kAll);
  EXPECT_EQ(listed(RowFilter::kOnlyRight), 1);
  for (const RowFilter filter :
       {RowFilter::kDifferent, RowFilter::kOnlyLeft, RowFilter::kOnlyRight, RowFilter::kUnread}) {
    in_filters += listed(filter);
  }
  EXPECT_EQ(CompareRows::Of(window).lblCounts.Caption().substr(
                0, CompareRows::Of(window).lblCounts.Caption().find(',')),
            "All " + std::to_string(rows) + ": equal " + std::to_string(rows - in_filters));
  Filter(RowFilter::kUnread);
  EXPECT_EQ(CompareRows::Of(window).grdRows.Cell(LineOf("DISPLAY") + 1, 3), "?");
}

TEST_F(CompareWindow, TicksChooseWhatCanBeSentAndHiddenOnesAreCounted) {
  CompareWithSnapshot([&] {
    ChangeThree();
    meter().holding().PutWord(0x0154, 50);  // an output is being checked
  });
  EXPECT_EQ(CompareRows::Of(window).grdRows.Ticked(LineOf("AO CHECK")), RowTick::kNoBox)
      << "never sent with others";
  EXPECT_EQ(CompareRows::Of(window).grdRows.Ticked(LineOf("SENSOR TYPE")), RowTick::kNoBox) << "is equal";
  const int title = LineOf("PROCESS SETTING CH1 ");
  Tick("KIND OF FLUID");
  EXPECT_EQ(CompareRows::Of(window).grdRows.Ticked(title), RowTick::kSome);
  EXPECT_TRUE(CompareRows::Of(window).grdRows.Tick(title));
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption(), "Ticked: 2");
  EXPECT_EQ(CompareRows::Of(window).grdRows.Ticked(title), RowTick::kOn);
  EXPECT_EQ(CompareRows::Of(window).grdRows.Ticked(LineOf("RANGE CH1 ")), RowTick::kOff);
  EXPECT_EQ(CompareRows::Of(window).grdRows.Ticked(LineOf("SYSTEM ")), RowTick::kNoBox) << "nothing differs";
  EXPECT_TRUE(CompareRows::Of(window).cmdTickDifferent.Press());
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption(), "Ticked: 3");
  Filter(RowFilter::kOnlyLeft);
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption(), "Ticked: 3, of which 3 are not in the list");
  Filter(RowFilter::kAll);
  // What is read anew keeps the ticks of rows that still differ.
  meter().holding().PutWord(kFluid, 3);
  Take(frmCompare::kRight);
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption(), "Ticked: 2");
  EXPECT_TRUE(CompareRows::Of(window).grdRows.Untick(LineOf("PROCESS SETTING CH1 ")));
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption(), "Ticked: 1");
  EXPECT_TRUE(CompareRows::Of(window).cmdTickNone.Press());
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption(), "Ticked: 0");
  // Only a meter can be sent to.
  EXPECT_TRUE(window.cmdSwap.Press());
  EXPECT_EQ(window.txtSide(1).Text(), kPath);
  EXPECT_FALSE(CompareRows::Of(window).grdRows.Tick(LineOf("WALL THICKNESS")));
  for (PushButton* button : {&CompareRows::Of(window).cmdTickDifferent, &CompareLine::Of(window).cmdSend,
                             &CompareLine::Of(window).cmdRestore}) {
    Answer();
    EXPECT_TRUE(button->Press());
    EXPECT_EQ(Said(), Texts{Text(text::kTargetFirst)}) << button->Name();
  }
}

TEST_F(CompareWindow, SendsTickedRowsBehindARestorePointAndProvesEach) {
  CompareWithSnapshot([&] { ChangeThree(); });
  Answer();
  CompareLine::Of(window).cmdSend.Press();
  EXPECT_EQ(Said(), Texts{Text(text::kNoRowTicked)});
  CompareRows::Of(window).cmdTickDifferent.Press();
  Answer(MessageAnswer::kCancel);
  CompareLine::Of(window).cmdSend.Press();
  EXPECT_EQ(Said().size(), 1u);
  EXPECT_TRUE(Requests().empty()) << "nothing was asked of the meter, nothing sent";

  test.platform.Arm("ignore-write@00DA/10");
  test.platform.Arm("exception=4@001C/10*ever");
  Answer();
  CompareLine::Of(window).cmdSend.Press();
  EXPECT_EQ(Said().front().substr(0, 66),
            "Ticked rows: 3. They will be sent to the meter with ID No. 0042.\nB");
  EXPECT_EQ(Points(), 1u);
  EXPECT_EQ(meter().holding().Word(kFluid), 3);
  EXPECT_EQ(Told(), "Stored 1, refused 1, not proven 1, not sent 0. Restore point: " +
                        RestorePoints(app()).front().path + ". Press Save in meter to make it permanent");
  EXPECT_EQ(test.StatusText(), Told());
  EXPECT_TRUE(CompareRows::Of(window).optFilter(5).Value()) << "what was sent is listed";
  EXPECT_EQ(CompareRows::Of(window).optFilter(5).Caption(), "Sent (3)");
  EXPECT_EQ(ResultOf("KIND OF FLUID").substr(0, 8), "stored (");
  EXPECT_EQ(ResultOf("WALL THICKNESS").substr(0, 12), "not proven (");
  EXPECT_EQ(ResultOf(kTimerTitle).substr(0, 7), "refused") << ResultOf(kTimerTitle);
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption(), "Ticked: 2")
      << "those that were not stored stay ticked";
  EXPECT_EQ(CompareRows::Of(window).grdRows.Cell(LineOf("KIND OF FLUID"), 5), "equal")
      << "the meter was read again";
  EXPECT_FALSE(app().state.UiLocked);
  EXPECT_FALSE(CompareLine::Of(window).cmdStop.Enabled());
  EXPECT_EQ(window.pbWork.Value(), 0);
  EXPECT_GT(PrintedPages(), 3u) << "what was sent is printed with all other rows";
  dialogs().SaveFile("/home/operator/sent.csv");
  CompareFiles::Of(window).cmdSaveCsv.Press();
  const std::string& csv = Files()["/home/operator/sent.csv"];
  EXPECT_NE(csv.find(",equal," + ResultOf("KIND OF FLUID") + "\r\n"), std::string::npos) << csv;
  // The same again, now that the meter takes it.
  test.platform.line.faults().Clear();
  Answer();
  CompareLine::Of(window).cmdSend.Press();
  EXPECT_TRUE(Told().starts_with("Stored 2, refused 0, not proven 0, not sent 0. ")) << Told();
  EXPECT_EQ(Points(), 2u);
  EXPECT_TRUE(CompareRows::Of(window).lblCounts.Caption().starts_with("No differences"))
      << CompareRows::Of(window).lblCounts.Caption();
  EXPECT_TRUE(CompareLine::Of(window).SaveParameter.Press());
  EXPECT_TRUE(Told().starts_with(Text(text::kSaveCompleted))) << Told();
  test.platform.Arm("slow-store*ever");
  Said();
  Answer();
  EXPECT_TRUE(CompareLine::Of(window).SaveParameter.Press());
  EXPECT_EQ(Said(), Texts{Text(text::kNotSaved)});
  EXPECT_EQ(Told(), Text(text::kNotSaved));
}

TEST_F(CompareWindow, SendsNothingWithoutARestorePointOrToAnotherMeter) {
  const struct {
    const char* name;
    std::function<void(CompareWindowTest&)> spoil;
    const char* says;
  } kCases[] = {
      {"no restore point",
       [](CompareWindowTest& fresh) { fresh.test.platform.files.FailChange(1, FileError::kFull); },
       "the restore point could not be written, so nothing was sent: the disk is full"},
      {"another meter", [](CompareWindowTest& fresh) { fresh.meter().holding().PutWord(0x0104, 43); },
       "the meter on the line is 0043"},
      {"no meter", [](CompareWindowTest& fresh) { fresh.test.platform.Arm("silence*ever"); },
       "the meter could not be read, so nothing was sent"},
  };
  for (const auto& row : kCases) {
    SCOPED_TRACE(row.name);
    CompareWindowTest fresh;
    fresh.CompareWithSnapshot([&] { fresh.ChangeThree(); });
    CompareRows::Of(fresh.window()).cmdTickDifferent.Press();
    row.spoil(fresh);
    fresh.Answer();
    fresh.Answer();
    CompareLine::Of(fresh.window()).cmdSend.Press();
    const Texts said = fresh.Said();
    ASSERT_EQ(said.size(), 2u);
    EXPECT_TRUE(said[1].starts_with(row.says)) << said[1];
    EXPECT_TRUE(fresh.Told().starts_with(row.says)) << fresh.Told();
    EXPECT_EQ(fresh.meter().holding().Word(kFluid), 5);
    EXPECT_EQ(fresh.Points(), 0u);
    EXPECT_EQ(CompareRows::Of(fresh.window()).lblChosen.Caption(), "Ticked: 3")
        << "nothing of the choice is lost";
    EXPECT_EQ(fresh.ResultOf("KIND OF FLUID").substr(0, 9), "not sent:");
  }
}

TEST_F(CompareWindow, StopEndsAReadingAndASending) {
  CompareWithSnapshot([&] { ChangeThree(); });
  const std::string before = window.lblIdentity(1).Caption();
  test.Time().After(300, [&] { EXPECT_TRUE(CompareLine::Of(window).cmdStop.Press()); });
  Take(frmCompare::kRight);
  EXPECT_EQ(Told(), "The reading was stopped");
  EXPECT_EQ(window.lblIdentity(1).Caption(), before) << "what was there stays, with its date";

  CompareRows::Of(window).cmdTickDifferent.Press();
  // When the first row has ended, somebody wants the window to close: it stops behind the row on the line.
  std::function<void()> watch = [&] {
    if (Points() == 0 || !CompareRows::Of(window).optFilter(5).Visible()) return test.Time().After(5, watch);
    EXPECT_TRUE(Told().starts_with("Sending to the meter: PROCESS SETTING CH1 ")) << Told();
    EXPECT_EQ(window.pbWork.Max(), 3);
    EXPECT_GT(window.pbWork.Value(), 0);
    EXPECT_TRUE(window.HasCloseCommand()) << "closing is a way to stop";
    EXPECT_FALSE(window.cmdClose.Enabled());
    EXPECT_FALSE(window.cmbSide(0).Choose(kMeterEntry));
    EXPECT_TRUE(CompareRows::Of(window).grdRows.Untick(LineOf(kTimerTitle)));
    EXPECT_FALSE(app().windows.Unload("frmCompare")) << "it stops instead";
  };
  test.Time().After(5, watch);
  Answer();
  CompareLine::Of(window).cmdSend.Press();
  ASSERT_NE(app().windows.Find("frmCompare"), nullptr);
  EXPECT_TRUE(Told().starts_with("the sending was stopped. Stored 2, refused 0, not proven 0, not sent 1. "))
      << Told();
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption(), "Ticked: 1") << "no tick is taken away meanwhile";
  EXPECT_EQ(CompareRows::Of(window).optFilter(5).Caption(), "Sent (3)");
  int stored = 0;
  for (int at = 1; at < CompareRows::Of(window).grdRows.Rows(); ++at) {
    stored += CompareRows::Of(window).grdRows.Cell(at, 5) == "equal" &&
                      CompareRows::Of(window).grdRows.Cell(at, 6).starts_with("stored")
                  ? 1
                  : 0;
  }
  EXPECT_EQ(stored, 2) << "what was proven is known without another reading";
  EXPECT_EQ(Said().size(), 1u) << "a stop needs no box";
  EXPECT_TRUE(window.cmdClose.Press());
  EXPECT_EQ(app().windows.Find("frmCompare"), nullptr);
}

// Closed while it reads, or before a row has gone out, it stops and goes.
TEST(CompareWindowEnd, GoesWhenItHasStoppedUnlessItHasSent) {
  for (const bool sends : {false, true}) {
    SCOPED_TRACE(sends);
    CompareWindowTest test;
    test.CompareWithSnapshot([&] { test.ChangeThree(); });
    CompareRows::Of(test.window()).cmdTickDifferent.Press();
    if (sends) test.Answer();
    test.test.Time().After(300, [&] { EXPECT_FALSE(test.app().windows.Unload("frmCompare")); });
    test.app().windows.Run([&] {
      PushButton& button =
          sends ? CompareLine::Of(test.window()).cmdSend : test.window().cmdSide(frmCompare::kRight);
      EXPECT_TRUE(button.Press());
    });
    EXPECT_EQ(test.app().windows.Find("frmCompare"), nullptr);
    EXPECT_FALSE(test.app().state.UiLocked);
    EXPECT_LT(test.Requests().size(), 10u) << "it ends behind the exchange in hand";
    EXPECT_EQ(test.meter().holding().Word(kFluid), 5);
  }
}

TEST_F(CompareWindow, TellsOneRowAsOne) {
  Files()["/one.ini"] = "[PROCESS SETTING]\r\nOUTER_DIAMETER_Data=60.559\r\n";
  Choose(frmCompare::kLeft, kParameterEntry);
  TakeFile(frmCompare::kLeft, "/one.ini");
  EXPECT_EQ(Told(), "Parameter file one.ini: 1 row taken in");
  Choose(frmCompare::kRight, kParameterEntry);
  TakeFile(frmCompare::kRight, "/one.ini");
  EXPECT_EQ(CompareRows::Of(window).lblCounts.Caption(), "No differences in 1 parameter");
  EXPECT_EQ(CompareRows::Of(window).grdRows.Cell(1, 0), "PROCESS SETTING CH1   1 row, 0 different");
  EXPECT_EQ(CompareRows::Of(window).grdRows.Cell(2, 6), "60.559 -> 60.55; 60.559 -> 60.55");
}

TEST_F(CompareWindow, ALostPortLeavesWhatIsNotKnownUnknown) {
  CompareWithSnapshot([&] { ChangeThree(); });
  CompareRows::Of(window).cmdTickDifferent.Press();
  test.platform.Arm("unplug@00E6/10");
  Answer();
  Answer();
  CompareLine::Of(window).cmdSend.Press();
  EXPECT_TRUE(Told().starts_with("the port was lost: ")) << Told();
  EXPECT_EQ(Said().size(), 2u) << "the question, and one box";
  EXPECT_EQ(CompareRows::Of(window).grdRows.Cell(LineOf("KIND OF FLUID"), 5), "could not be read");
  EXPECT_NE(ResultOf("KIND OF FLUID").find(Text(text::kNotReadSince)), std::string::npos);
  EXPECT_FALSE(app().state.UiLocked);
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption().substr(0, 8), "Ticked: ");
}

TEST_F(CompareWindow, LeavesTheLineToARunningMeasurement) {
  CompareWithSnapshot([&] { ChangeThree(); });
  CompareRows::Of(window).cmdTickDifferent.Press();
  app().state.PvRunning = 1;
  for (PushButton* button :
       {&CompareLine::Of(window).cmdSend, &CompareLine::Of(window).cmdRestore, &window.cmdSide(1),
        &CompareFiles::Of(window).cmdSnapshot, &CompareLine::Of(window).SaveParameter}) {
    EXPECT_TRUE(button->Press());
    EXPECT_EQ(Told(), Text(text::kMonitorRuns)) << button->Name();
  }
  app().state.PvRunning = 0;
  EXPECT_TRUE(Requests().empty());
  // A measurement that begins while the question is on the screen.
  dialogs().Answer(MessageAnswer::kOk, [&] { app().state.PvRunning = 1; });
  CompareLine::Of(window).cmdSend.Press();
  EXPECT_TRUE(Requests().empty());
  app().state.PvRunning = 0;
  // And a window that is gone when it is answered.
  dialogs().Answer(MessageAnswer::kOk, [&] { app().windows.Unload("frmCompare"); });
  app().windows.Run([&] { CompareLine::Of(window).cmdSend.Press(); });
  EXPECT_TRUE(Requests().empty());
  EXPECT_EQ(Points(), 0u);
}

TEST_F(CompareWindow, TellsAPortThatDoesNotOpen) {
  CompareWithSnapshot([&] { ChangeThree(); });
  CompareRows::Of(window).cmdTickDifferent.Press();
  bool closed = false;
  ClosePort(app(), closed);
  test.platform.sockets.clear();
  for (const auto& [button, boxes] :
       {std::pair(&window.cmdSide(1), 1u), std::pair(&CompareLine::Of(window).cmdSend, 2u)}) {
    for (unsigned i = 0; i < boxes; ++i) Answer();
    EXPECT_TRUE(button->Press());
    const Texts said = Said();
    ASSERT_EQ(said.size(), boxes);
    EXPECT_EQ(said.back(), Text(text::kCommunicationError));
    EXPECT_EQ(Told(), CommunicationErrorText(app()));
    EXPECT_FALSE(app().state.UiLocked);
  }
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption(), "Ticked: 3");
}

TEST_F(CompareWindow, RestoresTheNewestPointAndOnlyItsOwnMeter) {
  EXPECT_FALSE(window.ShowNewestPoint());
  CompareWithSnapshot([&] { ChangeThree(); });
  CompareRows::Of(window).cmdTickDifferent.Press();
  Answer();
  CompareLine::Of(window).cmdSend.Press();
  EXPECT_EQ(meter().holding().Word(kFluid), 3);
  // The point holds what was there before.
  EXPECT_TRUE(window.ShowNewestPoint());
  EXPECT_EQ(window.cmbSide(0).Items().size(), 5u);
  EXPECT_EQ(window.cmbSide(0).Text().substr(0, 25), "Restore point 2026/11/24 ");
  EXPECT_EQ(window.cmbSide(1).ListIndex(), kMeterEntry);
  EXPECT_EQ(CompareRows::Of(window).optFilter(1).Caption(), "Different (4)")
      << "the right side was there already";
  Answer();
  CompareLine::Of(window).cmdRestore.Press();
  EXPECT_EQ(meter().holding().Word(kFluid), 5);
  EXPECT_TRUE(Told().starts_with("The meter holds what the left side holds. Stored 3, ")) << Told();
  EXPECT_EQ(window.Focused(), &CompareRows::Of(window).grdRows);
  EXPECT_TRUE(CompareRows::Of(window).lblCounts.Caption().starts_with("No differences"))
      << CompareRows::Of(window).lblCounts.Caption();
  EXPECT_EQ(Points(), 2u);
  EXPECT_EQ(window.cmbSide(0).ListIndex(), kPointEntry + 1) << "the same point, now behind a newer one";
  EXPECT_EQ(Said().size(), 2u);
  // Another meter on the line: what belongs to one alone is ticked for itself only.
  meter().holding().PutWord(0x0104, 43);
  Take(frmCompare::kRight);
  Filter(RowFilter::kAll);
  CompareRows::Of(window).cmdTickDifferent.Press();
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption(), "Ticked: 0");
  EXPECT_EQ(ResultOf("ID No."), "belongs to one meter alone: tick it for itself to send it");
  Tick("ID No.");
  EXPECT_EQ(CompareRows::Of(window).lblChosen.Caption(), "Ticked: 1");
  Answer();
  CompareLine::Of(window).cmdRestore.Press();
  EXPECT_EQ(Said(), (Texts{"The left side is of another meter (0042) than the one on the right (0043). "
                           "Tick rows and send them instead."}));
  // And nothing but a snapshot can be restored.
  Choose(frmCompare::kLeft, kFieldsEntry);
  Take(frmCompare::kLeft);
  Answer();
  CompareLine::Of(window).cmdRestore.Press();
  EXPECT_EQ(Said(), Texts{Text(text::kRestoreSource)});
  // A point that has gone meanwhile is a file like any other; the newest one asks for the meter anew.
  Choose(frmCompare::kLeft, kPointEntry + 1);
  Files().erase(RestorePoints(app()).back().path);
  app().windows.Run([&] { window.Show(); });
  EXPECT_EQ(window.cmbSide(0).Items().size(), 5u);
  EXPECT_EQ(window.cmbSide(0).ListIndex(), kSnapshotEntry);
  Choose(frmCompare::kRight, kFieldsEntry);
  Take(frmCompare::kRight);
  EXPECT_TRUE(window.ShowNewestPoint());
  EXPECT_EQ(window.cmbSide(1).ListIndex(), kMeterEntry);
  EXPECT_EQ(window.txtSide(1).Text(), "Not read yet");
  EXPECT_EQ(CompareRows::Of(window).grdRows.Rows(), 1);
  EXPECT_EQ(window.Focused(), &window.cmdSide(1));
}

TEST_F(CompareWindow, ARestoreThatLeavesSomethingTellsEachRow) {
  CompareWithSnapshot([&] { ChangeThree(); });
  test.platform.Arm("ignore-write@00E6*ever");
  Answer();
  CompareLine::Of(window).cmdRestore.Press();
  EXPECT_TRUE(
      Told().starts_with("Rows that are not as on the left side: 2. Stored 2, refused 0, not proven 1"))
      << Told();
  EXPECT_EQ(ResultOf("KIND OF FLUID").substr(0, 12), "not proven (");
}

TEST_F(CompareWindow, KeepsSnapshotsAndReportsInFiles) {
  auto& files = test.platform.files;
  // A snapshot shows the meter on a side that is free.
  dialogs().SaveFile(kPath);
  CompareFiles::Of(window).cmdSnapshot.Press();
  EXPECT_EQ(Told().substr(0, 16), "Saved full.txt: ");
  EXPECT_TRUE(LooksLikeSnapshot(Files()[kPath]));
  EXPECT_EQ(window.txtSide(0).Text(), "This meter");
  for (PushButton* button : {&CompareFiles::Of(window).cmdSaveCsv, &CompareFiles::Of(window).cmdSavePdf,
                             &CompareFiles::Of(window).cmdPrint}) {
    Answer();
    button->Press();
    EXPECT_EQ(Said(), Texts{Text(text::kBothSidesFirst)}) << button->Name();
  }
  TakeFile(frmCompare::kRight, kPath);
  dialogs().SaveFile("/home/operator/compared.csv");
  CompareFiles::Of(window).cmdSaveCsv.Press();
  EXPECT_NE(Files()["/home/operator/compared.csv"].find("No differences"), std::string::npos);
  dialogs().SaveFile("/home/operator/compared.pdf");
  CompareFiles::Of(window).cmdSavePdf.Press();
  EXPECT_EQ(Files()["/home/operator/compared.pdf"], "a pdf");
  const std::size_t all = PrintedPages();
  EXPECT_GT(all, 1u);
  EXPECT_EQ(Told(), "Compare and Restore Settings was sent to the printer");
  Filter(RowFilter::kDifferent);
  EXPECT_LT(PrintedPages(), all) << "what is listed is printed";
  // What is not saved says why, and no file is written.
  const auto before = Files();
  for (const auto& path : {std::optional<std::string>(), std::optional<std::string>(" ")}) {
    dialogs().SaveFile(path);
    CompareFiles::Of(window).cmdSavePdf.Press();
  }
  Answer();
  dialogs().SaveFile("/app/VLT.ini");
  CompareFiles::Of(window).cmdSavePdf.Press();
  EXPECT_EQ(Said(), Texts{Text(4510)});
  Answer();
  files.FailChange(1, FileError::kFull);
  dialogs().SaveFile("/home/operator/other.pdf");
  CompareFiles::Of(window).cmdSavePdf.Press();
  EXPECT_EQ(Said(), Texts{"other.pdf.tmp could not be written: the disk is full"});
  printer.fails = true;
  Answer();
  CompareFiles::Of(window).cmdSavePdf.Press();
  EXPECT_EQ(Said(), Texts{Text(text::kSheetNotMade)});
  test.platform.machine.printer = nullptr;
  for (PushButton* button : {&CompareFiles::Of(window).cmdSavePdf, &CompareFiles::Of(window).cmdPrint}) {
    Answer();
    button->Press();
    EXPECT_EQ(Said(), Texts{Text(text::kPrintingMissing)}) << button->Name();
  }
  EXPECT_EQ(Files(), before);
  // Cancelled, full disk, the program's own settings, a meter that does not answer: the old file stands.
  dialogs().SaveFile(std::nullopt);
  CompareFiles::Of(window).cmdSnapshot.Press();
  Answer();
  dialogs().SaveFile("/app/VLT.ini");
  CompareFiles::Of(window).cmdSnapshot.Press();
  const std::string kept = Files()[kPath];
  files.FailChange(1, FileError::kFull);
  Answer();
  dialogs().SaveFile(kPath);
  CompareFiles::Of(window).cmdSnapshot.Press();
  EXPECT_EQ(Said().back(), "full.txt.tmp could not be written: the disk is full");
  test.platform.Arm("silence*ever");
  Answer();
  dialogs().SaveFile(kPath);
  CompareFiles::Of(window).cmdSnapshot.Press();
  EXPECT_EQ(Said(), Texts{Text(text::kCommunicationError)});
  EXPECT_TRUE(Told().starts_with("No snapshot was saved: ")) << Told();
  EXPECT_EQ(Files()[kPath], kept);
}

TEST_F(CompareWindow, TakesInAFileOfEitherKindAndTellsOneOfNeither) {
  Files()[kPath] = SnapshotText(Read());
  Files()["/home/operator/notes.ini"] = "[NOTES]\nA=1\n";
  Choose(frmCompare::kLeft, kParameterEntry);
  TakeFile(frmCompare::kLeft, kPath);
  EXPECT_EQ(window.cmbSide(0).ListIndex(), kSnapshotEntry) << "the list follows what the file is";
  for (const auto& [path, says] :
       {std::pair{"/home/operator/notes.ini", "notes.ini is neither a snapshot nor a parameter file."},
        std::pair{"/home/operator/gone.txt", "gone.txt could not be read: there is no such file"}}) {
    Answer();
    TakeFile(frmCompare::kLeft, path);
    EXPECT_EQ(Said(), Texts{says});
    EXPECT_EQ(window.txtSide(0).Text(), kPath) << "what was taken in stays";
  }
  dialogs().OpenFile(std::nullopt);
  Take(frmCompare::kLeft);
  EXPECT_EQ(window.txtSide(0).Text(), kPath);
  // The focus goes to what is next: the other side, then the rows.
  Choose(frmCompare::kLeft, kMeterEntry);
  Choose(frmCompare::kRight, kMeterEntry);
  Take(frmCompare::kLeft);
  EXPECT_EQ(window.Focused(), &window.cmdSide(1));
  Take(frmCompare::kRight);
  EXPECT_EQ(window.Focused(), &CompareRows::Of(window).grdRows);
}

}  // namespace
}  // namespace vlt::test
