// SPDX-License-Identifier: GPL-3.0-or-later
// The comparison's window, stopped while it works.
#include "compare/frm_compare.h"

#include <gtest/gtest.h>

#include "compare/compare.h"
#include "compare/compare_fixture.h"
#include "compare/compare_line.h"
#include "compare/compare_rows.h"

namespace vlt::test {
namespace {

constexpr int kMeterEntry = 0;
constexpr int kSnapshotEntry = 1;
constexpr std::uint32_t kFluid = 0x00E6;
constexpr std::uint32_t kWall = 0x00DA;
constexpr std::uint32_t kTimer = 0x001C;

class CompareWindow : public testing::Test, public CompareTest {
 public:
  CompareWindow() : CompareTest(kOnePath) {
    meter().holding().PutWord(kFluid, 3);
    meter().holding().PutWord(kTimer, 10);
    Files()["/full.txt"] = SnapshotText(Read());
    meter().holding().PutWord(kFluid, 5);
    meter().holding().PutWord(kWall + 2, meter().holding().Word(kWall + 2) ^ 0x40);
    meter().holding().PutWord(kTimer, 20);
    RegisterCompareWindows(app());
    app().windows.Run([&] { app().windows.Load("frmCompare").Show(); });
    frmCompare& window = Window();
    window.cmbSide(frmCompare::kLeft).Choose(kSnapshotEntry);
    dialogs().OpenFile("/full.txt");
    window.cmdSide(frmCompare::kLeft).Press();
    window.cmbSide(frmCompare::kRight).Choose(kMeterEntry);
    window.cmdSide(frmCompare::kRight).Press();
  }
  frmCompare& Window() { return static_cast<frmCompare&>(*app().windows.Find("frmCompare")); }
  std::string Told() { return Window().stbCompare.Panel(1); }
  // The first line of the list whose first cell is this.
  int LineOf(const std::string& name) {
    const CompareRows& rows = CompareRows::Of(Window());
    int at = 1;
    while (at < rows.grdRows.Rows() && rows.grdRows.Cell(at, 0) != name) ++at;
    return at;
  }
};

TEST_F(CompareWindow, StopEndsAReadingAndASending) {
  frmCompare& window = Window();
  CompareRows& rows = CompareRows::Of(window);
  CompareLine& line = CompareLine::Of(window);
  const std::string before = window.lblIdentity(1).Caption();
  test.Time().After(300, [&] { EXPECT_TRUE(line.cmdStop.Press()); });
  window.cmdSide(frmCompare::kRight).Press();
  EXPECT_EQ(Told(), "The reading was stopped");
  EXPECT_EQ(window.lblIdentity(1).Caption(), before) << "what was there stays, with its date";

  rows.cmdTickDifferent.Press();
  // When the first row has ended, somebody wants the window to close: it stops behind the row on the line.
  std::function<void()> watch = [&] {
    if (RestorePoints(app()).empty() || !rows.optFilter(5).Visible()) return test.Time().After(5, watch);
    EXPECT_TRUE(Told().starts_with("Sending to the meter: PROCESS SETTING CH1 ")) << Told();
    EXPECT_EQ(window.pbWork.Max(), 3);
    EXPECT_GT(window.pbWork.Value(), 0);
    EXPECT_TRUE(window.HasCloseCommand()) << "closing is a way to stop";
    EXPECT_FALSE(window.cmdClose.Enabled());
    EXPECT_FALSE(window.cmbSide(0).Choose(kMeterEntry));
    EXPECT_TRUE(rows.grdRows.Untick(LineOf("BURNOUT TIMER")));
    EXPECT_FALSE(app().windows.Unload("frmCompare")) << "it stops instead";
  };
  test.Time().After(5, watch);
  dialogs().Answer(MessageAnswer::kOk);
  line.cmdSend.Press();
  ASSERT_NE(app().windows.Find("frmCompare"), nullptr);
  EXPECT_TRUE(Told().starts_with("the sending was stopped. Stored 2, refused 0, not proven 0, not sent 1. "))
      << Told();
  EXPECT_EQ(rows.lblChosen.Caption(), "Ticked: 1") << "no tick is taken away meanwhile";
  EXPECT_EQ(rows.optFilter(5).Caption(), "Sent (3)");
  int stored = 0;
  for (int at = 1; at < rows.grdRows.Rows(); ++at) {
    stored += rows.grdRows.Cell(at, 5) == "equal" && rows.grdRows.Cell(at, 6).starts_with("stored") ? 1 : 0;
  }
  EXPECT_EQ(stored, 2) << "what was proven is known without another reading";
  EXPECT_EQ(dialogs().TakeTexts().size(), 1u) << "a stop needs no box";
  EXPECT_TRUE(window.cmdClose.Press());
  EXPECT_EQ(app().windows.Find("frmCompare"), nullptr);
}

}  // namespace
}  // namespace vlt::test
