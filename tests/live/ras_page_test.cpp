// SPDX-License-Identifier: GPL-3.0-or-later
// The RAS page: the grid, the wire, and when its button is live.
#include "link/port.h"
#include "live/form8.h"
#include "measure_fixture.h"

namespace vlt::test {
namespace {

class RasTest {
 public:
  explicit RasTest(const MeterShape& shape)
      : test({.meter = {.specification = shape.specification, .path_mode = shape.path_mode}}) {
    RegisterLiveWindows(test.app);
    page().FrmInit();
    test.app.windows.Run([&] { page().Show(); });
    test.app.state.RetryNo = 0;
  }
  Form8& page() { return static_cast<Form8&>(test.app.windows.Load("Form8")); }
  // A column from bit 15 down to bit 0.
  std::string Column(int column) {
    std::string bits;
    for (int row = 1; row <= 16; ++row) bits += page().MSFlexGrid1.Cell(row, column);
    return bits;
  }
  TestApp test;
};

TEST(RasPage, ShowsTheWordsBitByBit) {
  RasTest t(kTwoPipes);
  const std::uint16_t words[] = {0x8000, 0x0001, 0xA5C3};
  for (int ch = 0; ch < 3; ++ch) t.test.platform.Meter().SetRas(ch, words[ch]);
  EXPECT_EQ(t.Column(0), "");
  EXPECT_EQ(t.page().MSFlexGrid1.Width(), 6635);
  t.page().RASReadParameter.Press();
  EXPECT_EQ(t.Column(0), "1000000000000000");
  EXPECT_EQ(t.Column(1), "0000000000000001");
  EXPECT_EQ(t.Column(2), "1010010111000011");
  EXPECT_EQ(t.page().MSFlexGrid1.Cell(1, 3), "E1:DEVICE ERROR 1");
  EXPECT_EQ(t.page().MSFlexGrid1.Cell(11, 3), "E1:DEVICE ERROR 4");
  EXPECT_EQ(t.page().MSFlexGrid1.Cell(14, 3), "RESERVE");
  EXPECT_EQ(t.page().MSFlexGrid1.Cell(16, 3), "E4:TEMPERATURE ERROR");
  EXPECT_EQ(t.page().MSFlexGrid1.Cell(0, 3), "CATEGORY");
  EXPECT_EQ(t.test.StatusText(), "Reading of RAS was completed ");
}

TEST(RasPage, LeavesTheColumnOfASilentChannel) {
  RasTest t(kTwoPaths);
  for (int ch = 0; ch < 3; ++ch) t.test.platform.Meter().SetRas(ch, 0xFFFF);
  t.page().RASReadParameter.Press();
  for (int ch = 0; ch < 3; ++ch) t.test.platform.Meter().SetRas(ch, 0);
  t.test.platform.Arm("silence@13AC");
  t.page().RASReadParameter.Press();
  EXPECT_EQ(t.Column(0) + t.Column(1) + t.Column(2),
            "0000000000000000"
            "1111111111111111"
            "0000000000000000");
  // The old column is told, although the channel behind it has answered.
  EXPECT_EQ(t.test.StatusText(), "Reading of RAS was completed [NO RESPONSE ERROR]");
  EXPECT_EQ(t.page().MSFlexGrid1.Cell(0, 1), "CH2*");
  EXPECT_EQ(t.page().MSFlexGrid1.Cell(0, 2), "CH3");
  EXPECT_EQ(t.page().lblOldColumns.Caption(), "* did not answer, as read before: CH2 2026/11/24 10:00:00");
  t.test.platform.Arm("crc@2540");
  t.page().RASReadParameter.Press();
  EXPECT_EQ(t.test.StatusText(), "Reading of RAS was completed [CRC ERROR]");
  EXPECT_EQ(t.page().MSFlexGrid1.Cell(0, 1), "CH2");
  // A meter that does not tell its channels leaves two of them unread.
  t.test.platform.Arm("silence@0148");
  t.page().RASReadParameter.Press();
  EXPECT_EQ(t.test.StatusText(), "Reading of RAS was completed [NO RESPONSE ERROR]");
  EXPECT_EQ(t.page().MSFlexGrid1.Cell(0, 1) + t.page().MSFlexGrid1.Cell(0, 2), "CH2*CH3*");
  t.page().FrmInit();
  EXPECT_EQ(t.page().MSFlexGrid1.Cell(0, 1), "CH2*") << "the page is opened again";
  t.page().RASReadParameter.Press();
  EXPECT_EQ(t.page().lblOldColumns.Caption() + t.page().MSFlexGrid1.Cell(0, 2), "CH3");
}

TEST(RasPage, IsNarrowForOneChannel) {
  for (const MeterShape* shape : {&kOneChannel, &kOnePath}) {
    RasTest t(*shape);
    t.page().RASReadParameter.Press();
    const Grid& grid = t.page().MSFlexGrid1;
    EXPECT_EQ(grid.ColumnWidth(1) + grid.ColumnWidth(2), 0);
    EXPECT_EQ(grid.ColumnWidth(0), 800);
    EXPECT_EQ(grid.Width(), 5035);
    EXPECT_EQ(t.Column(1), "");
    t.test.platform.Meter().holding().PutWord(0x03E8, 1);
    t.page().RASReadParameter.Press();
    const bool wide = shape == &kOnePath;
    for (const int column : {1, 2}) EXPECT_EQ(grid.ColumnWidth(column), wide ? 800 : 0) << "two paths now";
    EXPECT_EQ(grid.Width(), wide ? 6635 : 5035);
  }
}

TEST(RasPage, TellsOfAPortThatCannotBeOpened) {
  RasTest t(kOnePath);
  t.test.app.state.PortNo = "9";
  t.test.platform.dialogs.Answer(MessageAnswer::kOk);
  t.page().RASReadParameter.Press();
  EXPECT_TRUE(t.test.StatusText().starts_with("The error occurred at the time of communication"));
  EXPECT_FALSE(t.test.app.state.UiLocked);
  EXPECT_TRUE(t.page().RASReadParameter.Enabled());
}

TEST(RasPage, IsLockedWhileARunIsOn) {
  MeasureTest t(kOneChannel);
  t.StartRun();
  auto& ras = static_cast<Form8&>(t.app().windows.Load("Form8"));
  t.Do([&] { ras.Show(); });
  EXPECT_FALSE(ras.RASReadParameter.Press());
  t.page().Stop.Press();
  t.time().RunFor(1500);
  t.Do([&] { ras.Show(); });
  EXPECT_TRUE(ras.RASReadParameter.Enabled());
}

TEST(RasPage, HasItsOldRoutines) {
  RasTest t(kOnePath);
  std::string text = "old";
  int ok = 7;
  Form8::Chg20Bit("x1", text, ok);
  EXPECT_EQ(text + std::to_string(ok), "old0");
  Form8::Chg20Bit("-1", text, ok);
  EXPECT_EQ(text + std::to_string(ok), "11111111111111111111-1");
  NowDate date;
  t.page().GetNowDate(date);
  EXPECT_EQ(date.year * 10000 + date.month * 100 + date.day, 20261124);
  t.page().tmWait.SetRunning(true);
  t.test.Time().RunFor(2500);
  EXPECT_EQ(t.test.app.state.StopRequest, 0);
  t.test.Time().RunFor(1000);
  EXPECT_EQ(t.test.app.state.StopRequest, 1);
  EXPECT_FALSE(t.page().tmWait.Running());
}

}  // namespace
}  // namespace vlt::test
