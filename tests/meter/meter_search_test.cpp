// SPDX-License-Identifier: GPL-3.0-or-later
// The search for meters: who is found, how long silence takes, what disturbs it, what it leaves behind.
#include "meter/meter_search.h"

#include <gtest/gtest.h>

#include <numeric>

#include "link/modbus.h"
#include "link/port.h"
#include "support/test_app.h"

namespace vlt::test {
namespace {

class MeterSearchTest : public ::testing::Test {
 protected:
  explicit MeterSearchTest(PortKind port = PortKind::kSimulated) : test({.port = port}) {}

  SearchResult Run(const SearchPlan& plan) {
    return SearchMeters(test.app, plan,
                        {.step =
                             [this](const SearchStep& step) {
                               steps.push_back(step.number);
                               return stop_at == 0 || step.number < stop_at;
                             },
                         .found =
                             [this](const FoundMeter& meter) {
                               found.push_back(meter.link.speed + ' ' + meter.link.parity + ' ' +
                                               std::to_string(meter.station) + ' ' +
                                               std::to_string(meter.unit_system) +
                                               std::to_string(meter.language));
                             }});
  }
  static SearchPlan WholeLine() {
    SearchPlan plan;
    plan.port = 1;
    plan.tries = AllTries({"9600", "O"});
    plan.stations.resize(31);
    std::iota(plan.stations.begin(), plan.stations.end(), 1);
    return plan;
  }
  // A single attempt that nobody answers, at 9600 baud.
  std::int64_t SilentAttemptMs() {
    EXPECT_TRUE(OpenPort(test.app));
    Frame request = ReadRequest(31, 3, 0x0100, 2);
    Frame reply = ReplyFor(request);
    const std::int64_t start = test.Time().NowMs();
    EXPECT_FALSE(SendReceive(test.app, request, reply, kModeStore));
    return test.Time().NowMs() - start;
  }
  void ClosePortNow() {
    bool closed = false;
    ClosePort(test.app, closed);
  }

  TestApp test;
  std::vector<int> steps;
  std::vector<std::string> found;
  int stop_at = 0;
};

TEST_F(MeterSearchTest, SilenceTakesTheAttemptsAndLittleMore) {
  test.platform.line.SetHearing(1, {57600, 'N'});
  const std::int64_t attempt = SilentAttemptMs();
  const struct {
    bool open_before;
    std::size_t tries;
  } cases[] = {{false, 1}, {false, 9}, {true, 9}};
  for (const auto& given : cases) {
    SCOPED_TRACE(given.tries);
    if (given.open_before) {
      EXPECT_TRUE(OpenPort(test.app));
    } else {
      ClosePortNow();
    }
    SearchPlan plan = WholeLine();
    plan.tries.resize(given.tries);
    const std::int64_t start = test.Time().NowMs();
    EXPECT_EQ(Run(plan).end, SearchEnd::kFinished);
    const std::int64_t took = test.Time().NowMs() - start;
    EXPECT_LE(took * 100, plan.Steps() * attempt * 105) << took << " ms";
    EXPECT_EQ(test.platform.simulated.IsOpen(), given.open_before);
  }
  EXPECT_TRUE(found.empty());
}

TEST_F(MeterSearchTest, FindsMetersOfOtherSpeedsAndLeavesTheLinkAsItWas) {
  sim::Line& line = test.platform.line;
  line.AddStation(7, {.unit_system = 1, .language = 2});
  line.AddStation(31, {});
  line.SetHearing(1, {9600, 'N'});
  line.SetHearing(7, {19200, 'E'});
  line.SetHearing(31, {38400, 'O'});
  ASSERT_TRUE(OpenPort(test.app));
  const int gap = test.app.state.CharGapMs;
  const std::string wrong = "crc*2";  // a disturbed answer is asked for again
  test.platform.Arm(wrong);
  const SearchResult result = Run(WholeLine());
  EXPECT_EQ(result.end, SearchEnd::kFinished);
  EXPECT_EQ(found, (std::vector<std::string>{"9600 N 1 00", "19200 E 7 12", "38400 O 31 00"}));
  EXPECT_EQ(result.found, 3);
  EXPECT_EQ(result.odd, 0);
  EXPECT_EQ(test.app.state.OpenedSettings, "9600,O,8,1");
  EXPECT_EQ(test.app.state.Speed, "9600");
  EXPECT_EQ(test.app.state.CharGapMs, gap);
  for (const std::string& request : test.platform.TakeRequests()) {
    EXPECT_EQ(request.substr(3, 14), "03 01 00 00 02") << "nothing else is sent";
  }
}

TEST_F(MeterSearchTest, OneMeterAtTheOtherEndEndsTheSearch) {
  test.platform.line.SetHearing(1, {19200, 'N'});
  SearchPlan plan = WholeLine();
  plan.stations = {0};
  plan.first_only = true;
  plan.tries = AllTries({"38400", "E"});
  EXPECT_EQ(plan.tries.size(), 9U);
  EXPECT_EQ(plan.tries.front(), (LinkTry{"38400", "E"}));
  EXPECT_EQ(Run(plan).found, 1);
  EXPECT_EQ(found, std::vector<std::string>{"19200 N 0 00"});
  EXPECT_EQ(steps.back(), 7);
}

TEST_F(MeterSearchTest, EndsWhenStoppedOrWithoutAPort) {
  stop_at = 40;
  SearchPlan plan = WholeLine();
  EXPECT_EQ(Run(plan).end, SearchEnd::kStopped);
  EXPECT_EQ(found.size(), 2U) << "what was found before stays";
  EXPECT_FALSE(test.platform.simulated.IsOpen());
  stop_at = 0;
  ASSERT_TRUE(OpenPort(test.app));
  plan.port = 5;
  EXPECT_EQ(Run(plan).end, SearchEnd::kPortClosed);
  EXPECT_NE(test.app.state.PortFaultReason.find("COM5"), std::string::npos)
      << "also behind the port's return";
  EXPECT_TRUE(test.platform.simulated.IsOpen());
  ClosePortNow();
  plan.port = 1;
  test.Time().After(2000, [this] { test.platform.line.Unplug(test.Time().NowMs() * 1000); });
  const SearchResult lost = Run(plan);
  EXPECT_EQ(lost.end, SearchEnd::kPortLost);
  EXPECT_EQ(lost.fault, "[RECEIVE ERROR(5)]");
  test.platform.line.Plug(test.Time().NowMs() * 1000);
  found.clear();
  plan.tries.resize(1);
  EXPECT_EQ(Run(plan).end, SearchEnd::kFinished) << "usable again";
  EXPECT_EQ(found.size(), 1U);
}

class BusyLineTest : public MeterSearchTest {
 protected:
  BusyLineTest() : MeterSearchTest(PortKind::kScripted) {}
};

TEST_F(BusyLineTest, AnotherMasterEndsTheSearchAndNothingMoreIsSent) {
  // Requests and answers of others, a byte each 20 ms, as long as the search listens.
  std::string traffic;
  for (int i = 0; i < 80; ++i) traffic += "05 ";
  test.platform.scripted.Reply(traffic, 30, 20);
  EXPECT_EQ(Run(WholeLine()).end, SearchEnd::kOtherMaster);
  EXPECT_EQ(test.platform.scripted.writes.size(), 1U);
}

TEST_F(BusyLineTest, ASpeedThatTheAdapterLacksIsPassedOver) {
  SearchPlan plan = WholeLine();
  plan.tries.resize(3);
  plan.stations = {1, 2};
  test.Time().After(100, [this] { test.platform.scripted.Fail("open", PortFaultCode::kSettings); });
  EXPECT_EQ(Run(plan).end, SearchEnd::kFinished);
  EXPECT_EQ(steps, (std::vector{1, 2, 5, 6}));
}

TEST_F(BusyLineTest, WhatIsNoMetersAnswerIsCountedAndTheSearchGoesOn) {
  SearchPlan plan = WholeLine();
  plan.tries.resize(1);
  plan.stations = {1, 2, 3};
  // Station 1: another one answers, three times. Station 2: noise, then its answer. Station 3: nothing.
  for (int i = 0; i < 3; ++i) test.platform.scripted.ReplyChecked("09 03 04 00 00 00 00", 10, 1);
  test.platform.scripted.Reply("FF 00 FE", 10, 1);
  test.platform.scripted.ReplyChecked("02 03 04 00 01 00 00", 10, 1);
  const SearchResult result = Run(plan);
  EXPECT_EQ(result.end, SearchEnd::kFinished);
  EXPECT_EQ(result.odd, 1);
  EXPECT_EQ(found, std::vector<std::string>{"9600 O 2 10"});
}

}  // namespace
}  // namespace vlt::test
