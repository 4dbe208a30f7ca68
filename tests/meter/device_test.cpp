// SPDX-License-Identifier: GPL-3.0-or-later
// The store command and the queries of the meter's facts, on a simulated meter at 9600 baud. An exchange of
// one word takes 43 ms, one that meets silence 224 ms an attempt.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "link/modbus.h"
#include "link/port.h"
#include "meter/device_queries.h"
#include "meter/store.h"
#include "support/test_app.h"

namespace vlt {
namespace {

using test::TestApp;

struct StoreCase {
  const char* fault;
  bool stored;
  std::size_t requests;
  std::int64_t ms;
};

TEST(Store, EndsAsTheMeterAllows) {
  const StoreCase cases[] = {
      {"", true, 3, 43 + 43 + 200 + 43},
      // Busy for longer than the pause and one poll: the second poll finds it idle.
      {"slow-store=270/06", true, 4, 43 + 43 + 200 + 43 + 43},
      {"slow-store=2000/06", false, 7, 43 + 43 + 200 + 5 * 43},
      // An exception has 5 bytes, so the polls for 7 pass: 164 ms.
      {"exception=2@0150H*ever", false, 5, 5 * 164},
      // A lost reply to one poll could be taken for that to the next, which waits for it.
      {"silence@0150H/03*2", true, 5, 2 * (224 + 1000) + 43 + 43 + 200 + 43},
      {"silence@0150H/03#2*ever", false, 7, 43 + 43 + 200 + 5 * 224 + 4 * 1000},
      // A round whose write fails pauses too, and the next one asks first.
      {"silence@0150H/06*ever", false, 10, 5 * (43 + 224 + 200)},
      {"wrong-echo@0150H/06", true, 5, 2 * (43 + 43 + 200) + 43},
  };
  for (const StoreCase& c : cases) {
    TestApp t;
    if (*c.fault != '\0') t.platform.Arm(c.fault);
    EXPECT_EQ(SaveToDevice(t.app), c.stored) << c.fault;
    EXPECT_EQ(t.platform.TakeRequests().size(), c.requests) << c.fault;
    EXPECT_EQ(t.Time().NowMs(), c.ms) << c.fault;
  }
}

TEST(Store, SendsTheseFrames) {
  TestApp t;
  EXPECT_TRUE(SaveToDevice(t.app));
  const std::vector<std::string> frames = {"01 03 01 50 00 01 85 E7", "01 06 01 50 00 01 49 E7",
                                           "01 03 01 50 00 01 85 E7"};
  EXPECT_EQ(t.platform.TakeRequests(), frames);
}

TEST(Store, TellsAPortThatDoesNotOpen) {
  TestApp t;
  t.app.state.PortNo = "00";
  t.app.windows.SetMousePointer(kHourglassPointer);
  t.platform.dialogs.Answer(MessageAnswer::kOk);
  EXPECT_FALSE(SaveToDevice(t.app));
  EXPECT_EQ(t.platform.dialogs.messages.front().text, "The error occurred at the time of communication");
  EXPECT_EQ(t.platform.dialogs.messages.front().icon, MessageIcon::kStop);
  EXPECT_EQ(t.StatusText(), "The error occurred at the time of communication No port is chosen");
  EXPECT_EQ(t.app.windows.MousePointer(), kNormalPointer);
}

// A query, the register it must ask, and where its answer is kept (null: nowhere).
struct QueryCase {
  int (*ask)(App&);
  std::uint32_t address;
  int* (*kept)(SharedState&);
};

template <int (*Query)(App&, int), int ch>
int OfChannel(App& app) {
  return Query(app, ch);
}

int* Nowhere(SharedState&) { return nullptr; }

const QueryCase kQueries[] = {
    {GetUnitFlag, 0x0100, [](SharedState& s) { return &s.UnitFlag; }},
    {ReadUnitSystem, 0x0100, [](SharedState& s) { return &s.UnitFlag; }},
    {GetOperationMode, 0x003E, [](SharedState& s) { return &s.OperationMode; }},
    {GetHeatFlowUnit, 0x04B6, [](SharedState& s) { return &s.HeatFlowUnit; }},
    {GetHeatTotalUnit, 0x04B8, [](SharedState& s) { return &s.HeatTotalUnit; }},
    {GetTempUnit, 0x04B4, [](SharedState& s) { return &s.TempUnit; }},
    {OfChannel<GetRangeKind, 0>, 0x0002, [](SharedState& s) { return &s.RangeKind[0]; }},
    {OfChannel<GetRangeKind, 2>, 0x1B5A, [](SharedState& s) { return &s.RangeKind[2]; }},
    {OfChannel<GetRangeUnit, 1>, 0x138C, [](SharedState& s) { return &s.RangeUnit[1]; }},
    {OfChannel<GetRangeUnit, 2>, 0x1B5C, [](SharedState& s) { return &s.RangeUnit[2]; }},
    {OfChannel<GetTotalUnit, 0>, 0x0040, [](SharedState& s) { return &s.TotalUnit[0]; }},
    {OfChannel<GetTotalUnit, 1>, 0x13C8, [](SharedState& s) { return &s.TotalUnit[1]; }},
    {OfChannel<GetTotalUnit, 2>, 0x1B98, [](SharedState& s) { return &s.TotalUnit[2]; }},
    {GetPathMode, 0x03E8, Nowhere},
};

TEST(Queries, AskTheirRegisterAndKeepTheAnswer) {
  for (const QueryCase& c : kQueries) {
    TestApp t;
    ASSERT_TRUE(OpenPort(t.app));
    t.platform.Meter().holding().PutWord(c.address, -3);
    EXPECT_EQ(c.ask(t.app), -3) << c.address;
    const Frame asked = test::FromHex(t.platform.TakeRequests().at(0));
    EXPECT_EQ(sim::ReadBig(std::span(asked).subspan(1, 5)), 0x03'0000'0001 | (c.address << 16)) << c.address;
    int* kept = c.kept(t.app.state);
    if (kept != nullptr) {
      EXPECT_EQ(*kept, -3) << c.address;
    }
    t.platform.Arm("silence*ever");
    EXPECT_EQ(c.ask(t.app), -1) << c.address;
    if (kept != nullptr) {
      EXPECT_EQ(*kept, -3) << c.address;
    }
  }
}

TEST(Queries, OfAnotherStationKeepNothingAndArePacedByTheirMode) {
  const struct {
    int (*ask)(App&, int);
    std::uint32_t address;
    int silent_ms;
  } cases[] = {
      {GetUnitFlagAt, 0x0100, 218},
      {[](App& a, int s) { return GetRangeUnitAt(a, s, 2); }, 0x1B5C, 218},
      {[](App& a, int s) { return GetTotalUnitAt(a, s, 1); }, 0x13C8, 218},
      {GetHeatFlowUnitAt, 0x04B6, 4 * 224},
      {GetHeatTotalUnitAt, 0x04B8, 4 * 224},
      {GetTempUnitAt, 0x04B4, 4 * 224},
  };
  TestApp t;
  ASSERT_TRUE(OpenPort(t.app));
  sim::Meter& meter = t.platform.line.AddStation(5, {});
  int silent = 5;
  for (const auto& c : cases) {
    meter.holding().PutWord(c.address, 2);
    EXPECT_EQ(c.ask(t.app, 5), 2) << c.address;
    t.platform.Arm("station");
    EXPECT_EQ(c.ask(t.app, 5), -1) << "signed by another station, " << c.address;
    const std::int64_t start = t.Time().NowMs();
    EXPECT_EQ(c.ask(t.app, ++silent), -1) << c.address;
    EXPECT_EQ(t.Time().NowMs() - start, c.silent_ms) << c.address;
  }
  const SharedState& s = t.app.state;
  EXPECT_EQ(s.UnitFlag + s.RangeUnit[2] + s.TotalUnit[1] + s.HeatFlowUnit + s.HeatTotalUnit + s.TempUnit, 0);
}

TEST(Queries, AReplyCutShortIsNotCompletedFromTheOneBefore) {
  for (const bool events : {false, true}) {
    TestApp t;
    t.app.state.EventTiming = events;
    ASSERT_TRUE(OpenPort(t.app));
    t.platform.Meter().holding().PutWord(0x0100, 1);
    EXPECT_EQ(ReadUnitSystem(t.app), 1);
    t.platform.Meter().holding().PutWord(0x0100, 0);
    t.platform.Arm("short=2*ever");
    EXPECT_EQ(ReadUnitSystem(t.app), -1) << events;
    EXPECT_EQ(t.app.state.LastErrorText, "[CRC ERROR]");
  }
}

TEST(Queries, SpecificationDecidesTheModel) {
  const struct {
    int spec;
    int spec_class;
  } cases[] = {{0, 0}, {81, 0}, {181, 0}, {182, 1}, {280, 1}, {281, 0}, {282, 1}, {-1, 0}};
  for (const auto& c : cases) {
    TestApp t;
    ASSERT_TRUE(OpenPort(t.app));
    t.platform.Meter().holding().PutWord(0x0148, c.spec);
    t.app.state.SpecClass = 7;
    EXPECT_EQ(GetSpecClass(t.app), c.spec_class) << c.spec;
    EXPECT_EQ(t.app.state.SpecClass, 7);
  }
}

TEST(Queries, ChannelConfig) {
  const struct {
    int spec;
    int paths;
    const char* fault;
    int config;
    int spec_class;
    int path_mode;  // 9 was there before
    std::size_t requests;
  } cases[] = {
      {81, 0, "", 1, 0, 0, 2},
      {81, 1, "", 2, 0, 1, 2},
      {81, 2, "", 3, 0, 2, 2},
      {81, 3, "", -1, 0, 3, 2},
      {182, 1, "", 1, 1, 9, 1},
      {81, 1, "silence@0148H*ever", -1, -1, 9, 4},
      {81, 1, "exception@03E8H*ever", -1, 0, -1, 5},
  };
  for (const auto& c : cases) {
    TestApp t;
    ASSERT_TRUE(OpenPort(t.app));
    t.platform.Meter().holding().PutWord(0x0148, c.spec);
    t.platform.Meter().holding().PutWord(0x03E8, c.paths);
    if (*c.fault != '\0') t.platform.Arm(c.fault);
    t.app.state.PathMode = 9;
    EXPECT_EQ(GetChannelConfig(t.app), c.config) << c.spec << c.fault;
    EXPECT_EQ(t.app.state.SpecClass, c.spec_class) << c.spec << c.fault;
    EXPECT_EQ(t.app.state.PathMode, c.path_mode) << c.spec << c.fault;
    EXPECT_EQ(t.platform.TakeRequests().size(), c.requests) << c.spec << c.fault;
  }
}

TEST(Queries, APathModeAskedOverByAnotherQueryIsNotTrusted) {
  TestApp t;
  ASSERT_TRUE(OpenPort(t.app));
  t.Time().After(20, [&] { t.app.state.MemTxFrame[3] = 0x04; });
  EXPECT_EQ(GetPathMode(t.app), -2);
}

TEST(Queries, TheTotalUnitWithoutMetricTextBecomesTheFirst) {
  TestApp t;
  ASSERT_TRUE(OpenPort(t.app));
  t.platform.Meter().holding().PutWord(0x0040, 8);
  for (const auto& [unit_flag, unit] : {std::pair(0, 0), std::pair(1, 8)}) {
    t.app.state.UnitFlag = unit_flag;
    EXPECT_EQ(GetTotalUnit(t.app, 0), unit);
    EXPECT_EQ(t.app.state.TotalUnit[0], unit);
  }
}

TEST(Queries, UnitSystemIsShown) {
  TestApp t;
  ASSERT_TRUE(OpenPort(t.app));
  const struct {
    int flag;
    const char* panel;
  } cases[] = {{1, "ENGLISH"}, {0, "METRIC"}};
  for (const auto& c : cases) {
    t.platform.Meter().holding().PutWord(0x0100, c.flag);
    EXPECT_EQ(GetUnitFlag(t.app), c.flag);
    EXPECT_EQ(t.MainWindow().StatusBar1.Panel(3), c.panel);
  }
}

// Which slots a routine empties, as "section/key".
std::set<std::string> Emptied(void (*clear)(App&)) {
  TestApp t;
  const auto rows = SlotRows();
  for (std::size_t i = 0; i < rows.size(); ++i) t.app.slots[i] = "kept";
  clear(t.app);
  std::set<std::string> emptied;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (t.app.slots[i].empty()) emptied.insert(std::string(rows[i].section) + "/" + rows[i].key);
  }
  return emptied;
}

TEST(Caches, HoldEveryUnitCaptionThatChangesWithAUnitAndNoValue) {
  void (*const clears[])(App&) = {ClearProcessCache,  ClearFlowCache,      ClearTotalCache,
                                  ClearHeatFlowCache, ClearHeatTotalCache, ClearTempCache};
  std::set<std::string> emptied;
  for (const auto clear : clears) {
    for (const std::string& slot : Emptied(clear)) EXPECT_TRUE(emptied.insert(slot).second) << slot;
  }
  // Seconds, milliseconds and per cent are the same in every unit system.
  const std::set<std::string> fixed = {"SUPPLYTEMPSPAN_Unit", "SUPPLYTEMPFILTER_Unit", "RETURNTEMPSPAN_Unit",
                                       "RETURNTEMPFILTER_Unit", "TOTAL_PULSE_WIDTH1_Unit"};
  std::set<std::string> captions;
  for (const SlotRow& row : SlotRows()) {
    const std::string key = row.key;
    if (key.ends_with("_Unit") && !fixed.contains(key)) captions.insert(std::string(row.section) + "/" + key);
  }
  EXPECT_EQ(emptied, captions);
  EXPECT_TRUE(Emptied(ClearFlowCache).contains("STATUS/DO_FLOW_SW_HIGH_Unit"));
  EXPECT_TRUE(Emptied(ClearHeatFlowCache).contains("RANGE/H_FULL_SCALE2_Unit"));
}

}  // namespace
}  // namespace vlt
