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
  EXPECT_TRUE(t.Lines().back().ends_with(
      "-,'-,[RECEIVE ERROR(5)] COM1 was lost at 2026/11/24 10:00:12 (ID No. 0001)"))
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
  EXPECT_TRUE(first.ends_with(" (ID No. 0001)")) << first;
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

bool AsksForNumber(const std::string& request) { return request.starts_with("01 03 01 00 00 03"); }

// A run asks once, behind its queries for units, and again when that was not answered. Without a question two
// meters of one kind are not told apart the first time.
TEST_F(WaitingMeasure, AsksForTheNumberAtItsStartUnlessTheSettingsForbidIt) {
  const struct {
    const char* settings;
    const char* known;  // to the session, of the meter that was there before
    const char* fault;
    int questions;
    bool told_apart;
  } cases[] = {{"", "0007", "", 1, true},
               {"IDENTIFY=1\r\n", "", "", 1, true},
               {"IDENTIFY=0\r\n", "", "", 0, false},
               {"", "", "silence@0100H#2", 2, true},
               {"", "", "silence@0100H#2*ever", 3, false}};
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.settings) + c.fault);
    MeasureTest one(kOneChannel);
    PlugBoard plugs(one.test.platform, one.app());
    one.files()["/app/VLT.ini"] += std::string("[LINK]\r\n") + c.settings;
    one.app().state.MeterIdNo = c.known;
    one.app().state.RetryNo = 0;
    if (*c.fault != 0) one.test.platform.Arm(c.fault);
    plugs.Plug(kAdapter);
    one.test.platform.TakeRequests();
    one.StartRun();
    one.RunCycles(5);
    Texts asked = one.test.platform.TakeRequests();
    EXPECT_EQ(std::ranges::count_if(asked, AsksForNumber), c.questions);
    if (c.questions > 0) {
      EXPECT_EQ(std::ranges::find_if(asked, AsksForNumber) - asked.begin(), 8) << "behind the units";
    }
    sim::Line other_line;
    other_line.AddStation(1, {.specification = 182, .id_number = 7});
    plugs.Unplug("/dev/ttyUSB0");
    one.RunCycles(7);
    plugs.Plug(kAdapter, other_line);
    one.RunCycles(10);
    EXPECT_EQ(one.page().txtRyuryo(0).Text() == "-", c.told_apart);
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
  t.test.platform.line.faults().Clear();
  t.test.platform.Arm("silence*ever");
  t.time().RunFor(3000);
  t.test.platform.TakeRequests();
  t.time().RunFor(30'000);
  const std::size_t questions = t.test.platform.TakeRequests().size();
  EXPECT_GE(questions, 8u);
  EXPECT_LE(questions, 12u) << "not each second, though the port is looked for as often";
  t.test.platform.line.faults().Clear();
  t.RunCycles(t.page().trend.TrendSampleNo + 7);
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
  EXPECT_TRUE(
      lines[head + 1].ends_with(",***,,***,,COM1 was lost at 2026/11/24 10:00:33 (ID No. 01=0001 02=0001)"))
      << lines[head + 1];
  EXPECT_TRUE(HasText(lines[head + 2], ",,COM1 was away from 2026/11/24 10:00:33 to ")) << lines[head + 2];
  EXPECT_TRUE(lines[head + 2].ends_with(" (ID No. 01=0001 02=0001)")) << lines[head + 2];
  EXPECT_TRUE(lines[head + 3].ends_with(",")) << lines[head + 3];
  EXPECT_FALSE(HasText(lines[head + 2], "***"));
  EXPECT_EQ(Page().lblFailed(1).Caption(), "1/4");
}

// The line behind the adapter was changed meanwhile: a station with other units is not taken for the old one.
TEST_F(WaitingStations, DoNotTakeOneStationForAnother) {
  AddStations({1, 2, 3});
  Choose(0, kFlowPlace, 0, -1);
  Start("5");
  RunPasses(1);
  board.Unplug("/dev/ttyUSB0");
  RunPasses(2);
  changed.AddStation(1, {});
  sim::MeterConfig english;
  english.unit_system = 1;
  changed.AddStation(2, english);
  changed.AddStation(3, {.id_number = 7});
  board.Plug(kAdapter, changed);
  RunPasses(4);
  EXPECT_NE(Page().txtDisp1(0).Text(), "Communication Error");
  const std::pair<int, const char*> others[] = {{1, "unit system 0001 in place of 0000"},
                                                {2, "ID No. 0007 in place of 0001"}};
  for (const auto& [at, differs] : others) {
    EXPECT_EQ(Page().txtDisp1(at).Text(), "Communication Error");
    EXPECT_TRUE(HasText(Page().txtDisp1(at).Mark(), std::string("another meter answers (") + differs + ")"))
        << Page().txtDisp1(at).Mark();
  }
  const Texts lines = Lines();
  EXPECT_TRUE(std::ranges::any_of(lines, [](const auto& line) {
    return HasText(line, "was away from") && line.ends_with(" (ID No. 01=0001)");
  })) << "only who has proven itself";
}

// A cycle that all stations just fit into loses no pass to the questions: they wait for room.
TEST_F(WaitingStations, AskForNumbersOnlyWhereTheCycleHasRoom) {
  AddStations(1, 31);
  Choose(0, kFlowPlace, 0, -1);
  Start("16");
  test.platform.TakeRequests();
  for (int pass = 1; pass <= 6; ++pass) {
    RunPasses(pass);
    EXPECT_EQ(State(), "It is display acquisition data");
  }
  const Texts asked = test.platform.TakeRequests();
  EXPECT_EQ(std::ranges::count_if(asked, [](const auto& r) { return HasText(r, " 03 01 00 00 03 "); }), 31);
}

}  // namespace
}  // namespace vlt::test
