// SPDX-License-Identifier: GPL-3.0-or-later
// A run of the measure page: what starts it, what it shows, how it ends, and what may come in between.
#include <set>

#include "link/port.h"
#include "live/form8.h"
#include "measure_fixture.h"
#include "shell/mdi_form1.h"
#include "shell/start.h"
#include "state/form_lock.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

TEST(MeasureStart, ShowsTheChartsOwnAxesAnew) {
  MeasureTest t(kOneChannel);
  for (int run = 0; run < 2; ++run) {
    const std::uint64_t before = t.page().Chart2D1.Runs();
    t.StartRun("3");
    EXPECT_EQ(t.page().Chart2D1.Runs(), before + 1);
    t.RunCycles(8);
    EXPECT_EQ(t.page().Chart2D1.Runs(), before + 1) << "a full chart slides, the view stays";
    t.page().Stop.Press();
  }
}

// A cycle begins so many seconds after the last one has returned; its exchanges lengthen the period.
TEST(MeasureCycle, LastsItsSecondsAndItsExchanges) {
  for (const auto& [text, seconds] : {std::pair{"1", 1}, {"2.5", 2}, {"3.5", 4}}) {
    MeasureTest t(kTwoPipes);
    t.StartRun("50", text);
    t.RunCycles(2);
    t.test.platform.line.ClearLog();
    t.RunCycles(3);
    const std::int64_t begin = t.test.platform.line.Log().front().at;
    const std::int64_t end = t.test.platform.line.Log().back().at;
    t.test.platform.line.ClearLog();
    t.RunCycles(4);
    const std::int64_t period = t.test.platform.line.Log().front().at - begin;
    EXPECT_GT(period, seconds * 1'000'000 + end - begin) << text;
    EXPECT_LT(period, seconds * 1'000'000 + end - begin + 100'000) << text;
  }
}

TEST(MeasureValues, ABlockThatFailsAloneLeavesTheOthersSteady) {
  MeasureTest t(kTwoPaths);
  t.app().state.RetryNo = 0;
  t.meter().SetLive(1, sim::Quantity::Flow, 12.5);
  t.StartRun();
  std::set<std::string> shown;
  t.page().txtRyuryo(1).Observe([&] { shown.insert(t.page().txtRyuryo(1).Text()); });
  t.test.platform.Arm("silence@2448");
  t.RunCycles(2);
  EXPECT_EQ(t.page().txtThermalFlow(1).Text(), "-");
  EXPECT_EQ(t.page().txtRAS(1).Text(), "Normal");
  t.RunCycles(3);
  EXPECT_NE(t.page().txtThermalFlow(1).Text(), "-");
  EXPECT_FALSE(shown.contains("-"));
  // Of a channel whose first block is silent the second one is not asked, and nothing old is shown.
  t.test.platform.Arm("silence@1388");
  t.RunCycles(4);
  EXPECT_EQ(t.page().txtRyuryo(1).Text() + t.page().txtThermalFlow(1).Text(), "--");
}

TEST(MeasureStart, AsksTheUnitsAnewAndShowsThemAtEveryValue) {
  MeasureTest t(kTwoPaths);
  t.meter().holding().PutWord(0x04B8, 5);
  t.meter().holding().PutWord(0x04B4, 1);
  const std::pair<const char*, const char*> kept[] = {{"PROCESS SETTING", "OUTER_DIAMETER_Unit"},
                                                      {"RANGE", "FULL_SCALE1_Unit"},
                                                      {"TOTAL", "TOTAL_RATE_Unit"},
                                                      {"RANGE", "H_FULL_SCALE1_Unit"},
                                                      {"TOTAL", "H_TOTAL_RATE_Unit"},
                                                      {"HEAT SETTING", "SWITCHTEMP_Unit"}};
  for (const auto& [section, key] : kept) t.app().slots.At(section, key) = "[old]";
  std::set<std::string> states;
  for (int at = 0; at < 2000; at += 5) t.time().After(at, [&] { states.insert(t.State()); });
  t.StartRun();
  EXPECT_TRUE(states.contains("The display of data was started"));
  for (const auto& [section, key] : kept) EXPECT_EQ(t.app().slots.At(section, key), "") << key;
  for (const Control* control : t.page().Controls()) {
    EXPECT_TRUE(control->Kind() != ControlKind::kLabel || !control->Caption().empty()) << control->FullName();
  }
  EXPECT_EQ(t.page().lblHSekisanUnit(0).Caption() + t.page().lbldegreeCUnit(0).Caption(), "[kW][K]");
  EXPECT_FALSE(t.page().txtRyuryo(0).Type("1")) << "what is measured is not typed";
}

TEST(MeasurePage, ARunIsOverWithTheTickBehindStop) {
  MeasureTest t(kTwoPaths);
  t.StartRun();
  EXPECT_FALSE(t.test.MainWindow().menubar_enabled);
  t.page().Stop.Press();
  EXPECT_TRUE(t.page().CycleTimer.Running()) << "the next tick ends it";
  EXPECT_EQ(t.app().state.StopRequest, 1);
  // Started again before that tick, the run goes on in a file of its own.
  const std::string first = t.page().MeasureFilePath;
  ASSERT_TRUE(t.page().Start.Press());
  EXPECT_NE(t.page().MeasureFilePath, first);
  t.RunCycles(3);
  EXPECT_EQ(t.Lines().size(), 5u);
  t.page().Stop.Press();
  t.app().state.AppRunning = false;
  t.time().RunFor(1500);
  EXPECT_FALSE(t.page().CycleTimer.Running());
  EXPECT_TRUE(t.time().Ended()) << "a close that was asked for meanwhile";
}

// The program with its real main window, one gesture in the middle of a start or a cycle.
class Interrupted {
 public:
  Interrupted() : test({.meter = {.specification = 182}, .frame = false}) {
    RegisterAllWindows(app());
    app().windows.Load("MDIForm1");
    test.app.windows.Run([&] { MainWindow(app()).Command7.Press(); });
    test.app.state.RetryNo = 0;
    test.platform.dialogs.SaveFile("/data/run");
    page()->SaveCSV.Press();
    test.platform.line.ClearLog();
  }

  App& app() { return test.app; }
  Form9* page() { return static_cast<Form9*>(app().windows.Find("Form9")); }
  void Unload() {
    app().windows.Run([&] { app().windows.Unload("Form9"); });
  }

  void Run(std::int64_t at_ms, const std::function<void(Interrupted&)>& gesture) {
    test.Time().After(at_ms, [this, gesture] { gesture(*this); });
    page()->Start.Press();
    test.Time().RunFor(6000);
  }

  // Each request got its answer before the next one went out; the error answers of this meter are answers.
  void CheckLine() {
    bool waiting = false;
    for (const sim::LogEntry& entry : test.platform.line.Log()) {
      const bool request = entry.kind == sim::LogEntry::Kind::Request;
      ASSERT_EQ(request, !waiting) << "an exchange inside another";
      waiting = request;
    }
  }

  void CheckEnd() {
    EXPECT_FALSE(app().state.UiLocked);
    EXPECT_EQ(app().windows.MousePointer(), kNormalPointer);
    EXPECT_TRUE(MainWindow(app()).Command13.Enabled());
    EXPECT_TRUE(IsMonitorIdle(app()));
    for (const auto& [path, text] : test.platform.files.files) MeasureTest::LinesOf(text);
    if (page() == nullptr) return;
    EXPECT_EQ(page()->Running, 0);
    EXPECT_FALSE(page()->CycleTimer.Running());
    EXPECT_TRUE(page()->Start.Enabled() && page()->SaveCSV.Enabled() && !page()->Stop.Enabled());
    EXPECT_TRUE(page()->Max.Enabled() && page()->CH_Combo.Enabled() && page()->Frame6.Enabled());
    EXPECT_EQ(MeasureTest::WithoutStamp(page()->StatusBar2.Panel(1)), "The display of data was ended ");
  }

  TestApp test;
};

constexpr std::int64_t kStartAndTwoCyclesMs = 3600;

TEST(MeasureInterrupted, StopWaitsForTheRunningExchanges) {
  for (std::int64_t at = 0; at < kStartAndTwoCyclesMs && !::testing::Test::HasFailure(); at += 7) {
    SCOPED_TRACE(at);
    Interrupted t;
    t.Run(at, [&](Interrupted& i) {
      i.page()->Stop.Press();
      i.test.Time().After(at % 40, [&i] { i.page()->Stop.Press(); });
    });
    t.CheckLine();
    t.CheckEnd();
  }
}

TEST(MeasureInterrupted, UnloadLetsTheRunningExchangesEndAndReleasesTheProgram) {
  for (std::int64_t at = 0; at < kStartAndTwoCyclesMs && !::testing::Test::HasFailure(); at += 7) {
    SCOPED_TRACE(at);
    Interrupted t;
    t.Run(at, [&](Interrupted& i) {
      if (at % 3 == 0) i.page()->Stop.Press();
      i.Unload();
      EXPECT_EQ(i.page(), nullptr);
      if (at % 2 == 0) MainWindow(i.app()).Command7.Press();
    });
    t.CheckLine();
    if (t.page() != nullptr) {
      EXPECT_TRUE(t.page()->Start.Enabled());
      t.Unload();
    }
    t.CheckEnd();
  }
}

TEST(MeasureInterrupted, TheMainWindowStaysOpenUntilTheRunIsStopped) {
  for (std::int64_t at = 0; at < kStartAndTwoCyclesMs && !::testing::Test::HasFailure(); at += 25) {
    SCOPED_TRACE(at);
    Interrupted t;
    t.Run(at, [&](Interrupted& i) {
      EXPECT_FALSE(i.app().windows.Unload("MDIForm1"));
      i.page()->Start.Press();
      i.page()->SaveCSV.Press();
    });
    EXPECT_EQ(t.page()->Running, 1);
    t.page()->Stop.Press();
    t.test.platform.dialogs.Answer(MessageAnswer::kNo);
    t.app().windows.Run([&] { EXPECT_TRUE(t.app().windows.Unload("MDIForm1")); });
    EXPECT_EQ(t.page(), nullptr);
    t.test.Time().RunFor(3000);
    t.CheckLine();
    EXPECT_FALSE(t.app().state.UiLocked);
  }
}

// The end of the page asks the meter, which lets events run.
TEST(MeasureInterrupted, UnloadInsideOfUnloadEndsTheRunOnce) {
  for (std::int64_t at = 0; at < 400 && !::testing::Test::HasFailure(); at += 3) {
    SCOPED_TRACE(at);
    Interrupted t;
    t.Run(3600 + at % 2 * 500, [&](Interrupted& i) {
      i.test.Time().After(at, [&i] { i.Unload(); });
      i.Unload();
    });
    EXPECT_EQ(t.page(), nullptr);
    t.CheckLine();
    t.CheckEnd();
  }
}

TEST(MeasureInterrupted, TheLockOfAnotherPageStaysWhenThePageLeaves) {
  Interrupted t;
  Form& ras = t.app().windows.Load("Form8");
  FormLock(t.app(), ras, 0);
  t.Unload();
  EXPECT_TRUE(t.app().state.UiLocked);
  EXPECT_FALSE(MainWindow(t.app()).Command13.Enabled());
  EXPECT_TRUE(t.test.platform.line.Log().empty()) << "nor is its exchange cut into";
}

TEST(MeasureStop, AnotherPageAndBackWithinTheLastTickFindNoRun) {
  Interrupted t;
  t.page()->Start.Press();
  t.page()->Stop.Press();
  ASSERT_TRUE(t.page()->CycleTimer.Running());
  MainWindow(t.app()).Command10.Press();
  MainWindow(t.app()).Command7.Press();
  t.CheckEnd();
  EXPECT_TRUE(t.page()->Start.Press());
  EXPECT_EQ(t.page()->Running, 1);
}

TEST(MeasureStop, APageOpenedBeforeTheLastTickIsUsableBehindIt) {
  Interrupted t;
  t.page()->Start.Press();
  t.page()->Stop.Press();
  MainWindow(t.app()).Command10.Press();
  auto& ras = static_cast<Form8&>(t.app().windows.Load("Form8"));
  t.test.Time().RunFor(1500);
  EXPECT_FALSE(t.page()->CycleTimer.Running());
  EXPECT_TRUE(ras.RASReadParameter.Enabled());
}

// The parameter file, the settings file and the page speak of the same scales.
TEST(MeasureScales, AreOneStoreForThePageAndBothFiles) {
  Interrupted t;
  std::map<std::string, std::string>& files = t.test.platform.files.files;
  MDIForm1& window = MainWindow(t.app());
  t.app().state.IniFilePath = "/app/VLT.ini";
  t.page()->Max.Type(" 12.5 ");
  t.page()->PointText.Type("75");
  t.test.platform.dialogs.SaveFile("/data/pump.ini");
  window.setParam.Press();
  std::string& saved = files["/data/pump.ini"];
  EXPECT_NE(saved.find("Y-SCALE MAX=12.5\r\n"), std::string::npos) << saved;
  EXPECT_NE(saved.find("X-SCALE POINT=75\r\n"), std::string::npos);
  saved.replace(saved.find("MAX=12.5"), 8, "MAX=77");
  t.test.platform.dialogs.OpenFile("/data/pump.ini");
  window.readparam.Press();
  window.Command7.Press();
  EXPECT_EQ(t.page()->Max.Text(), "77");
  EXPECT_EQ(t.page()->PointText.Text(), "75");
  // What is typed on the open page outlives End without a parameter file.
  t.app().state.IniFilePath = "/app/VLT.ini";
  t.page()->Min.Type("-3");
  t.test.platform.dialogs.Answer(MessageAnswer::kNo);
  window.Command13.Press();
  EXPECT_NE(files["/app/VLT.ini"].find("Y-SCALE MIN=-3\r\n"), std::string::npos) << files["/app/VLT.ini"];
}

// Pages may be opened beside a run; none of them may take the meter or give the lock away.
TEST(MeasureInterrupted, PagesOpenedMeanwhileLeaveTheMeterAlone) {
  for (const MDIForm1::PageButton& row : MDIForm1::PageButtons()) {
    SCOPED_TRACE(row.page);
    Interrupted t;
    t.Run(3010, [&](Interrupted& run) {
      (MainWindow(run.app()).*row.button).Press();
      EXPECT_TRUE(run.app().state.UiLocked);
    });
    EXPECT_EQ(t.page()->Running, 1);
    t.CheckLine();
  }
}

}  // namespace
}  // namespace vlt::test
