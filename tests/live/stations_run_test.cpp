// SPDX-License-Identifier: GPL-3.0-or-later
// Several stations in turn: what refuses a start, what goes over the line and when, what a run ends by.
#include <functional>

#include "bench/soak/station_soak.h"
#include "live/frm_wait.h"
#include "stations_fixture.h"

namespace vlt::test {
namespace {

frmWait* Wait(App& app) { return static_cast<frmWait*>(app.windows.Find("frmWait")); }

TEST_F(StationsTest, AsksUnitsOfEachStationThenPollsFromTheFirstCycleOn) {
  AddStations({1, 31});
  Choose(0, kFlowPlace, 1, kHeatPlace);
  int max = 0;
  std::vector<int> steps;
  Time().After(300, [&] {
    ASSERT_NE(Wait(app), nullptr);
    EXPECT_EQ(Wait(app)->lblMssg.Caption(), "Wait ...... Get Unit");
    max = Wait(app)->pbWait.Max();
    EXPECT_TRUE(Wait(app)->Visible());
    EXPECT_FALSE(Page().CH_Combo1.Enabled() || Page().txtCycle.Enabled() || Page().chkStationNo(5).Enabled());
    EXPECT_TRUE(Wait(app)->cmdCan.Enabled());
    EXPECT_TRUE(app.state.UiLocked);
    EXPECT_EQ(app.state.PvRunning, 0);
  });
  for (int at = 100; at < 10'000; at += 100) {
    Time().After(at, [&] {
      if (Wait(app) == nullptr) return;
      const int step = Wait(app)->pbWait.Value();
      if (steps.empty() || steps.back() != step) steps.push_back(step);
    });
  }
  Start("2");
  EXPECT_EQ(max, 2);
  EXPECT_EQ(steps, (std::vector<int>{0, 1}));
  EXPECT_EQ(Wait(app), nullptr);
  EXPECT_EQ(Page().PvStations, (std::vector<int>{1, 31}));
  EXPECT_EQ(test.platform.dialogs.questions.back().title, "Please specify the file name to save");
  std::vector<std::string> asked = test.platform.TakeRequests();
  ASSERT_EQ(asked.size(), 16u);
  const char* const addresses[] = {"01 00", "00 04", "00 40", "13 8C", "13 C8", "04 B6", "04 B8", "04 B4"};
  for (std::size_t i = 0; i < asked.size(); ++i) {
    EXPECT_EQ(asked[i].substr(0, 17),
              std::string(i < 8 ? "01" : "1F") + " 03 " + addresses[i % 8] + " 00 01");
  }
  EXPECT_EQ(State(), "The display of data was started");
  EXPECT_NE(app.state.PvRunning, 0);
  Time().RunFor(1999);
  EXPECT_TRUE(test.platform.TakeRequests().empty()) << "the first pass comes a cycle after the start";
  RunPasses(1);
  EXPECT_EQ(test.platform.TakeRequests(),
            (std::vector<std::string>{"01 04 00 00 00 13 B1 C7", "01 04 13 88 00 13 35 69",
                                      "01 04 24 48 00 1C 7B 25", "01 03 01 00 00 03 04 37",
                                      "1F 04 00 00 00 13 B2 79", "1F 04 13 88 00 13 36 D7",
                                      "1F 04 24 48 00 1C 78 9B", "1F 03 01 00 00 03 07 89"}));
  EXPECT_EQ(Page().txtDisp1(1).Text(), "") << "a station that is not asked";
  CheckNoneInsideAnother();
}

// 31 stations, four silent, one with a wrong check, one whose answer another station has signed: as bytes and
// as milliseconds.
TEST_F(StationsTest, PassOverAllStationsAsBytesAndMilliseconds) {
  Files()["/app/VLT.ini"] = "[LINK]\r\nIDENTIFY=0\r\n";
  AddStations(1, 31);
  Choose(0, kFlowPlace, 0, -1);
  Start("16");
  for (const char* fault : {"silence:4*ever", "silence:9*ever", "silence:17*ever", "silence:31*ever",
                            "crc:12*ever", "station:20*ever"}) {
    test.platform.Arm(fault);
  }
  test.platform.line.ClearLog();
  const std::int64_t begun = Time().NowMs() + 16'000;
  RunPasses(1);
  const std::set<int> silent = {4, 9, 17, 31};
  const std::set<int> bad = {4, 9, 12, 17, 20, 31};
  // A request of 8 bytes is on the line after 9.2 ms. A tick of 100 ms serves a station: an exchange takes
  // 374 ms with an answer, behind which the line rests, and under 200 ms without a good one. The ticks begin
  // when the first station is done.
  std::int64_t at = begun;
  int station = 0;
  for (const sim::LogEntry& entry : test.platform.line.Log()) {
    if (entry.kind != sim::LogEntry::Kind::Request) continue;
    ++station;
    EXPECT_EQ(sim::ToHex(entry.bytes).substr(3, 14), "04 00 00 00 13");
    EXPECT_EQ(entry.bytes[0], station);
    EXPECT_EQ(entry.at / 1000, at + 9) << "station " << station;
    const bool short_one = silent.contains(station) || station == 12;
    at += station == 1 ? 474 : short_one ? 200 : 400;
  }
  EXPECT_EQ(station, 31);
  EXPECT_EQ(Page().StatusBar2.Panel(2), "Cycle - s  Pass 11.5 s  Line load - %");
  for (int i = 0; i < 31; ++i) {
    SCOPED_TRACE(i + 1);
    const bool failed = bad.contains(i + 1);
    EXPECT_EQ(Page().txtDisp1(i).Text() == "Communication Error", failed);
    EXPECT_EQ(Page().txtDisp1(i).Mark().empty(), !failed);
    EXPECT_EQ(Page().lblFailed(i).Caption(), failed ? "1/1" : "0/1");
    EXPECT_EQ(Page().lblAnswered(i).Caption() == "-", failed);
  }
  EXPECT_EQ(Page().txtDisp1(3).Mark(), "No valid answer [NO RESPONSE ERROR]");
  EXPECT_EQ(Page().txtDisp1(11).Mark(), "No valid answer [CRC ERROR]");
  EXPECT_EQ(Page().txtDisp1(19).Mark(), "No valid answer [NO RESPONSE ERROR]");
  test.platform.line.faults().Clear();
  RunPasses(2);
  EXPECT_EQ(Page().txtDisp1(3).Mark(), "");
  EXPECT_EQ(Page().lblFailed(3).Caption(), "1/2");
  EXPECT_EQ(Page().StatusBar2.Panel(2), "Cycle 16.0 s  Pass 12.5 s  Line load 66 %");
  EXPECT_EQ(Page().lblAnswered(0).Hint(), "2026/11/24 " + Page().lblAnswered(0).Caption());
}

TEST_F(StationsTest, CancelInTheWaitWindowEndsBeforeAnyCycle) {
  AddStations({1, 2, 3});
  Choose(0, kFlowPlace, 0, -1);
  Page().txtCycle.Type("5");
  const std::function<void()> ways[] = {[&] { Wait(app)->cmdCan.Press(); },
                                        [&] { app.windows.Unload("frmWait"); },
                                        [&] { Page().cmdStop.Press(); }};
  for (const auto& way : ways) {
    test.platform.TakeRequests();
    Time().After(500, way);
    app.windows.Run([this] { EXPECT_TRUE(Page().cmdStart.Press()); });
    EXPECT_LT(test.platform.TakeRequests().size(), 5u);
    EXPECT_EQ(Wait(app), nullptr);
    EXPECT_FALSE(app.state.UiLocked || Page().CycleTimer.Running() || app.state.PvRunning != 0);
    EXPECT_TRUE(Page().cmdStart.Enabled() && Page().txtCycle.Enabled() && !Page().cmdStop.Enabled());
    EXPECT_EQ(State(), "The start was cancelled");
    Time().RunFor(20'000);
    EXPECT_TRUE(test.platform.TakeRequests().empty());
  }
  EXPECT_TRUE(Files().empty());
}

// Stop and unload at every giving way, from the unit queries into the second pass.
TEST_F(StationsTest, EndsWhereverItIsStoppedOrLeft) {
  AddStations({1, 2});
  test.platform.Arm("silence/04:2*ever");
  Choose(0, kFlowPlace, 0, kHeatPlace);
  std::int64_t units_ms = Time().NowMs();
  Start("2");
  units_ms = Time().NowMs() - units_ms;
  Page().cmdStop.Press();
  for (std::int64_t at = 1; at < 6'000 && !HasFailure(); at += 37) {
    for (const bool leaves : {false, true}) {
      SCOPED_TRACE(std::to_string(at) + (leaves ? " left" : " stopped"));
      app.windows.Load("Form12").Show();
      Choose(0, kFlowPlace, 0, kHeatPlace);
      Page().chkStationNo(0).SetValue(1);
      Page().chkStationNo(1).SetValue(1);
      Page().txtCycle.Type("2");
      test.platform.line.ClearLog();
      const Form12* page = &Page();
      Time().After(at, [&] {
        if (leaves) {
          app.windows.Unload("Form12");
        } else {
          Page().cmdStop.Press();
        }
      });
      // Whom it ends before the question, nobody asks.
      const std::size_t asked = test.platform.dialogs.questions.size();
      Time().After(0, [&] { EXPECT_TRUE(app.state.UiLocked); });
      if (at > units_ms) test.platform.dialogs.SaveFile("/data/run");
      app.windows.Run([this] { Page().cmdStart.Press(); });
      Time().RunFor(8'000);
      EXPECT_EQ(test.platform.dialogs.questions.size(), asked + (at > units_ms ? 1 : 0));
      EXPECT_FALSE(app.state.UiLocked);
      EXPECT_EQ(app.state.PvRunning, 0);
      EXPECT_EQ(app.state.StopRequest, 1);
      EXPECT_EQ(app.windows.Exists(page), !leaves);
      test.platform.TakeRequests();
      Time().RunFor(5'000);
      EXPECT_TRUE(test.platform.TakeRequests().empty()) << "nothing goes on";
      EXPECT_EQ(Time().TimerCount(), 0);
    }
  }
}

TEST_F(StationsTest, EndOfTheProgramDuringARunEndsItWithTheRun) {
  AddStations({1});
  Choose(0, kFlowPlace, 0, -1);
  Start("1");
  app.state.AppRunning = false;
  app.state.StopRequest = 1;
  Time().RunFor(1'000);
  EXPECT_TRUE(Time().Ended());
  EXPECT_EQ(State(), "The display of data was ended");
}

TEST_F(StationsTest, AWindowThatClosesWhileUnitsAreAskedEndsNoRun) {
  app.windows.Load("Form9").Show();
  Page().Show();
  AddStations({1, 2});
  Choose(0, kFlowPlace, 0, -1);
  bool closed = false;
  Time().After(300, [&] {
    EXPECT_TRUE(app.state.UiLocked);
    closed = app.windows.Unload("Form9");
  });
  Start("2");
  EXPECT_TRUE(closed);
  RunPasses(2);
  EXPECT_EQ(State(), "It is display acquisition data");
  EXPECT_TRUE(app.state.UiLocked);
}

TEST_F(StationsTest, APassOpensThePortThatSomebodyHasClosed) {
  AddStations({1, 2});
  Choose(0, kFlowPlace, 0, -1);
  Start("2");
  app.platform.port.Close();
  RunPasses(1);
  EXPECT_EQ(Page().lblFailed(1).Caption(), "0/1");
  EXPECT_EQ(Page().lblFailed(0).Caption(), "0/1");
}

TEST(StationsSoak, ShowsAndLogsNoValueOfAnother) {
  const SoakResult r = SoakStations({.passes = 10'000 / 31 + 1, .fault_share = 0.02});
  EXPECT_GE(r.polls, 10'000);
  EXPECT_GT(r.faults, 300);
  EXPECT_EQ(r.foreign + r.stale + r.unreadable + r.screen_differs, 0);
  // A late answer of the same station's other channel is a frame like the one that was asked for.
  EXPECT_LE(r.swapped, 2);
  EXPECT_LE(r.missing, 2 * r.faults) << "a bad answer spoils its own exchange and at most the next one";
  EXPECT_EQ(r.good + r.missing + r.swapped, r.passes * 31 * 2);
}

}  // namespace
}  // namespace vlt::test
