// SPDX-License-Identifier: GPL-3.0-or-later
// Runs whose port is lost: they wait for it, go on behind the same meter only, and mark the gap in their log.
#include <algorithm>

#include "measure_fixture.h"
#include "stations_fixture.h"
#include "support/plug_board.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

const PortInfo kAdapter = Adapter("/dev/ttyUSB0", "A1");

bool HasText(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

class WaitingMeasure : public ::testing::Test {
 protected:
  explicit WaitingMeasure(const PortInfo& adapter = kAdapter) {
    board.Plug(adapter);
    t.app().state.RetryNo = 0;
  }
  void Lose() { board.Unplug("/dev/ttyUSB0"); }
  bool IsOpen() { return t.app().platform.port.IsOpen(); }
  // What the log says behind the columns of a record.
  std::string EndOf(const std::string& record) { return record.substr(record.rfind(',') + 1); }
  std::string MainStatus() { return t.test.StatusText(); }

  MeasureTest t{kOneChannel};
  PlugBoard board{t.test.platform, t.app()};
};

TEST_F(WaitingMeasure, GoesOnWithinTwoSecondsUnderAnotherName) {
  t.StartRun("50", "10");
  t.RunCycles(2);
  const std::size_t records = t.Lines().size();
  Lose();
  t.time().RunFor(1000);
  EXPECT_EQ(t.State(), "It is display acquisition data COM1 (/dev/ttyUSB0) was lost, waiting for it");
  EXPECT_EQ(MainStatus(), "COM1 (/dev/ttyUSB0) was lost, waiting for it");
  // A cycle falls into the gap, and has its record.
  t.RunCycles(3);
  EXPECT_EQ(t.Lines().size(), records + 1);
  EXPECT_TRUE(t.Lines().back().ends_with("-,'-,[RECEIVE ERROR(5)] COM1 was lost at 2026/11/24 10:00:12"))
      << t.Lines().back();
  t.test.platform.TakeRequests();
  board.Plug(Adapter("/dev/ttyUSB3", "A1"));
  t.time().RunFor(2000);
  EXPECT_TRUE(IsOpen()) << "long before the next cycle";
  EXPECT_EQ(t.app().state.OpenedDevice, "/dev/ttyUSB3");
  EXPECT_EQ(t.State(), "It is display acquisition data");
  EXPECT_EQ(MainStatus(), "COM1 (/dev/ttyUSB3) came back after 10 s");
  Texts asked = t.test.platform.TakeRequests();
  ASSERT_EQ(asked.size(), 2u) << "its proof";
  EXPECT_EQ(asked[0].substr(0, 17), "01 03 01 00 00 03");
  EXPECT_EQ(asked[1].substr(0, 17), "01 03 01 48 00 01");
  t.RunCycles(5);
  const Texts lines = t.Lines();
  ASSERT_EQ(lines.size(), records + 3);
  const std::string& first = lines[records + 1];
  EXPECT_TRUE(EndOf(first).starts_with("COM1 was away from 2026/11/24 10:00:12 to 2026/11/24 10:00:2"))
      << first;
  EXPECT_EQ(std::ranges::count(first, ','), std::ranges::count(lines[2], ',')) << "the columns stay";
  EXPECT_EQ(EndOf(lines[records + 2]), "") << "told once";
  EXPECT_TRUE(t.test.platform.dialogs.TakeTexts().empty());
  EXPECT_EQ(t.page().Running, 1);
}

TEST_F(WaitingMeasure, DoesNotGoOnWithAnotherMeter) {
  t.app().state.MeterIdNo = "0001";
  sim::Line other_line;
  sim::MeterConfig other;
  other.specification = 182;
  other.id_number = 7;
  other_line.AddStation(1, other);
  t.StartRun();
  t.RunCycles(2);
  Lose();
  t.RunCycles(3);
  board.Plug(kAdapter, other_line);
  t.RunCycles(8);
  EXPECT_TRUE(HasText(
      t.State(), "COM1 (/dev/ttyUSB0) came back, but another meter answers (ID No. 0007 in place of 0001)"))
      << t.State();
  EXPECT_EQ(t.page().txtRyuryo(0).Text(), "-");
  EXPECT_FALSE(IsOpen());
  for (const sim::LogEntry& entry : other_line.Log()) {
    if (entry.kind != sim::LogEntry::Kind::Request) continue;
    EXPECT_EQ(sim::ToHex(entry.bytes).substr(0, 17), "01 03 01 00 00 03") << "no value was asked";
  }
  board.Unplug("/dev/ttyUSB0");
  board.Plug(kAdapter);
  t.RunCycles(12);
  EXPECT_EQ(t.State(), "It is display acquisition data");
  EXPECT_NE(t.page().txtRyuryo(0).Text(), "-");
  const Texts lines = t.Lines();
  EXPECT_EQ(std::ranges::count_if(lines, [](const auto& l) { return HasText(l, "was lost at"); }), 1);
  EXPECT_EQ(std::ranges::count_if(lines, [](const auto& l) { return HasText(l, "was away from"); }), 1);
}

// Without a question at the start two meters of one kind are not told apart the first time.
TEST_F(WaitingMeasure, AsksForTheNumberAtItsStartOnlyWhereTheSettingsWantIt) {
  for (const bool identify : {false, true}) {
    SCOPED_TRACE(identify);
    MeasureTest one(kOneChannel);
    PlugBoard plugs(one.test.platform, one.app());
    one.files()["/app/VLT.ini"] += identify ? "[LINK]\r\nIDENTIFY=1\r\n" : "";
    plugs.Plug(kAdapter);
    one.test.platform.TakeRequests();
    one.StartRun();
    Texts asked = one.test.platform.TakeRequests();
    const auto proofs = std::ranges::count_if(
        asked, [](const std::string& request) { return request.starts_with("01 03 01 00 00 03"); });
    EXPECT_EQ(proofs, identify ? 1 : 0);
    sim::Line other_line;
    other_line.AddStation(1, {.specification = 182, .id_number = 7});
    plugs.Unplug("/dev/ttyUSB0");
    one.RunCycles(3);
    plugs.Plug(kAdapter, other_line);
    one.RunCycles(6);
    EXPECT_EQ(one.page().txtRyuryo(0).Text() == "-", identify);
  }
}

TEST_F(WaitingMeasure, WaitsForAMeterThatIsSilentYet) {
  t.StartRun();
  t.RunCycles(2);
  Lose();
  t.RunCycles(3);
  t.test.platform.Arm("silence*3");
  board.Plug(kAdapter);
  t.RunCycles(5);
  EXPECT_TRUE(HasText(t.State(), "COM1 (/dev/ttyUSB0) came back, but the meter does not answer yet"))
      << t.State();
  t.RunCycles(12);
  EXPECT_EQ(t.State(), "It is display acquisition data");
}

class WaitingWithoutNumber : public WaitingMeasure {
 protected:
  WaitingWithoutNumber() : WaitingMeasure(Adapter("/dev/ttyUSB0", "")) {}
};

TEST_F(WaitingWithoutNumber, OpensNothingThatMayBeAnother) {
  t.StartRun();
  t.RunCycles(2);
  Lose();
  t.RunCycles(3);
  board.Plug(Adapter("/dev/ttyUSB1", ""));
  t.RunCycles(6);
  EXPECT_FALSE(IsOpen());
  EXPECT_TRUE(HasText(t.State(), "no serial number tells apart")) << t.State();
  const int looks = t.test.platform.process.looks;
  t.time().RunFor(10'000);
  EXPECT_LE(t.test.platform.process.looks - looks, 11) << "once a second";
  t.page().Stop.Press();
  EXPECT_FALSE(t.app().state.UiLocked);
}

TEST(WaitingMeasureStop, WorksAtEveryMoment) {
  for (std::int64_t at = 0; at < 5000 && !::testing::Test::HasFailure(); at += 37) {
    SCOPED_TRACE(at);
    MeasureTest t(kOneChannel);
    PlugBoard board(t.test.platform, t.app());
    board.Plug(kAdapter);
    t.StartRun();
    t.RunCycles(2);
    board.Unplug("/dev/ttyUSB0");
    t.time().After(2600, [&] { board.Plug(kAdapter); });
    t.time().After(at, [&] { t.page().Stop.Press(); });
    t.time().RunFor(7000);
    EXPECT_EQ(t.page().Running, 0);
    EXPECT_FALSE(t.app().state.UiLocked);
    EXPECT_TRUE(t.page().Start.Enabled() && !t.page().Stop.Enabled());
    EXPECT_TRUE(t.test.platform.dialogs.TakeTexts().empty());
    EXPECT_EQ(t.time().TimerCount(), 0) << "nobody looks any more";
    t.Lines();
  }
}

// Lasts longer than the run and its port.
struct AnotherLine {
  sim::Line changed;
};

class WaitingStations : protected AnotherLine, public StationsTest {
 protected:
  WaitingStations() : board(test.platform, app) { board.Plug(kAdapter); }
  Texts Lines() { return MeasureTest::LinesOf(Files().at(Page().PvFileName)); }
  PlugBoard board;
};

TEST_F(WaitingStations, GoOnAndMarkTheGapBehindTheLastColumn) {
  AddStations({1, 2});
  Choose(0, kFlowPlace, 0, -1);
  Start("30");
  RunPasses(1);
  board.Unplug("/dev/ttyUSB0");
  Time().RunFor(1000);
  EXPECT_EQ(State(), "It is display acquisition data COM1 (/dev/ttyUSB0) was lost, waiting for it");
  RunPasses(2);
  EXPECT_EQ(Page().txtDisp1(0).Text(), "Communication Error");
  board.Plug(Adapter("/dev/ttyUSB2", "A1"));
  Time().RunFor(2000);
  EXPECT_TRUE(app.platform.port.IsOpen());
  EXPECT_EQ(State(), "It is display acquisition data");
  RunPasses(4);
  const Texts lines = Lines();
  const std::size_t head = lines.size() - 4;
  EXPECT_EQ(lines[head].substr(19), lines[head].substr(19, lines[head].size() - 19));
  EXPECT_TRUE(lines[head + 1].ends_with(",***,,***,,COM1 was lost at 2026/11/24 10:00:32"))
      << lines[head + 1];
  EXPECT_TRUE(HasText(lines[head + 2], ",,COM1 was away from 2026/11/24 10:00:32 to ")) << lines[head + 2];
  EXPECT_TRUE(lines[head + 3].ends_with(",")) << lines[head + 3];
  EXPECT_FALSE(HasText(lines[head + 2], "***"));
  EXPECT_EQ(Page().lblFailed(1).Caption(), "1/4");
}

// The line behind the adapter was changed meanwhile: a station with other units is not taken for the old one.
TEST_F(WaitingStations, DoNotTakeOneStationForAnother) {
  AddStations({1, 2});
  Choose(0, kFlowPlace, 0, -1);
  Start("5");
  RunPasses(1);
  board.Unplug("/dev/ttyUSB0");
  RunPasses(2);
  changed.AddStation(1, {});
  sim::MeterConfig english;
  english.unit_system = 1;
  changed.AddStation(2, english);
  board.Plug(kAdapter, changed);
  RunPasses(4);
  EXPECT_NE(Page().txtDisp1(0).Text(), "Communication Error");
  EXPECT_EQ(Page().txtDisp1(1).Text(), "Communication Error");
  EXPECT_TRUE(HasText(Page().txtDisp1(1).Mark(), "another meter answers (unit system 0001 in place of 0000)"))
      << Page().txtDisp1(1).Mark();
}

}  // namespace
}  // namespace vlt::test
