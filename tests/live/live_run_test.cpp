// SPDX-License-Identifier: GPL-3.0-or-later
// A live run by itself, as a window holds it that captures in a loop: stopped and left from every state.
#include "live/live_run.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "link/port.h"
#include "link/registers.h"
#include "state/form_lock.h"
#include "support/test_app.h"

namespace vlt::test {
namespace {

class LoopWindow : public Form {
  App& app_;

 public:
  explicit LoopWindow(App& app) : Form(app.windows, "Form11", FormPlace::kPage), app_(app) {
    run.TellBy({.bar = Bar, .behind = [](int) { return " ..."; }, .pv = LiveRun::Pv::kFromFirstCycle});
    Start.on_click = [this] {
      run.Start([this] { return Prepare(); },
                [this] {
                  while (run.GoesOn() && Ask() && run.Pause(300)) ++captures;
                });
    };
    Stop.on_click = [this] { run.Stop(); };
  }
  void Form_Unload(int&) override { run.Leave(); }
  const Control* StopButton() const override { return &Stop; }

  // What a person finds usable at the start of a run.
  bool Prepare() {
    Stop.SetEnabled(true);
    return Ask();
  }
  bool Ask() {
    RegisterData data;
    return ReadRegisters(app_, {.address = 0x0148, .count = 1}, data) && prepared;
  }
  void Stopped(bool may_ask) {
    ++stops;
    if (may_ask) run.Ask([this] { Ask(); });
    Stop.SetEnabled(false);
  }

  PushButton Start{*this, "Start"};
  PushButton Stop{*this, "Stop"};
  StatusBar Bar{*this, "Bar", 1};
  LiveRun run{app_, *this, [this](bool may_ask) { Stopped(may_ask); }};
  bool prepared = true;
  int captures = 0;
  int stops = 0;
};

class LiveRunTest : public ::testing::Test {
 protected:
  LiveRunTest() {
    app.windows.Register("Form11", [this] { return std::make_unique<LoopWindow>(app); });
    app.windows.Load("Form11");
    OpenPort(app);
  }
  LoopWindow* Page() { return static_cast<LoopWindow*>(app.windows.Find("Form11")); }
  // Each request got its answer before the next one went out.
  void CheckLine() {
    bool waiting = false;
    for (const sim::LogEntry& entry : test.platform.line.Log()) {
      const bool request = entry.kind == sim::LogEntry::Kind::Request;
      ASSERT_EQ(request, !waiting) << "an exchange inside another";
      waiting = request;
    }
  }
  TestApp test;
  App& app = test.app;
};

TEST_F(LiveRunTest, StopsFromEveryState) {
  for (std::int64_t at = 0; at < 900 && !HasFailure(); at += 3) {
    SCOPED_TRACE(at);
    std::int64_t stopped_at = 0;
    const int stops = Page()->stops;
    test.Time().After(at, [&] {
      stopped_at = test.Time().NowMs();
      Page()->Stop.Press();
      for (const int later : {0, 10, 60}) test.Time().After(later, [&] { Page()->Stop.Press(); });
    });
    Page()->Start.Press();
    EXPECT_LE(test.Time().NowMs() - stopped_at, 200) << "a pause is left at once";
    test.Time().RunFor(100);
    EXPECT_EQ(Page()->stops, stops + 1);
    EXPECT_EQ(Page()->run.Running, 0);
    EXPECT_FALSE(app.state.UiLocked || Page()->run.Busy());
    EXPECT_TRUE(Page()->Start.Enabled());
  }
  EXPECT_GT(Page()->captures, 100);
  CheckLine();
}

TEST_F(LiveRunTest, IsLeftFromEveryStateAndStartsNoMore) {
  for (std::int64_t at = 0; at < 900 && !HasFailure(); at += 7) {
    SCOPED_TRACE(at);
    app.windows.Load("Form11");
    test.platform.line.ClearLog();
    std::size_t seen = 0;
    LoopWindow* left = Page();
    test.Time().After(at, [&] {
      seen = test.platform.line.Log().size();
      app.windows.Unload("Form11");
      left->run.Start([] { return true; }, [] { ADD_FAILURE() << "a run of a window that is gone"; });
    });
    app.windows.Run([&] { left->Start.Press(); });
    EXPECT_LE(test.platform.line.Log().size(), seen + 2) << "only the running exchange ends";
    EXPECT_FALSE(app.state.UiLocked);
    CheckLine();
  }
}

TEST_F(LiveRunTest, StartsNoMoreOnceItsWindowLeaves) {
  app.windows.Run([&] {
    LoopWindow* left = Page();
    app.windows.Unload("Form11");
    left->run.Start([] { return true; }, [] { ADD_FAILURE() << "a run of a window that is gone"; });
  });
  EXPECT_FALSE(app.state.UiLocked);
}

TEST_F(LiveRunTest, ThatCannotBePreparedEndsAsByStop) {
  Page()->prepared = false;
  Page()->Start.Press();
  EXPECT_EQ(Page()->stops, 1);
  EXPECT_EQ(Page()->captures, 0);
  EXPECT_FALSE(app.state.UiLocked);
  EXPECT_TRUE(Page()->run.GoesOn());
}

TEST_F(LiveRunTest, LeavesNothingTakenBehindAFault) {
  LiveRun& run = Page()->run;
  EXPECT_THROW(run.Start([]() -> bool { throw std::out_of_range("no row"); }, [] {}), std::out_of_range);
  EXPECT_FALSE(app.state.UiLocked || run.Busy());
  EXPECT_EQ(Page()->stops, 1) << "the window has its controls back";
  run.Start([] { return true; }, [] {});
  EXPECT_TRUE(app.state.UiLocked && app.state.PvRunning != 0);
  EXPECT_THROW(run.Cycle([] { throw std::out_of_range("no row"); }), std::out_of_range);
  EXPECT_FALSE(app.state.UiLocked || app.state.PvRunning != 0 || run.Begun());
  EXPECT_EQ(run.Running, 0);
  EXPECT_EQ(Page()->stops, 2);
  EXPECT_EQ(Page()->Bar.Panel(1).substr(20), "The display of data was ended ...");
}

// What another window has asked for is heeded, and none takes the run of another one for its own.
TEST_F(LiveRunTest, RequestsAreItsOwnOrHeeded) {
  LiveRun& run = Page()->run;
  app.state.StopRequest = 1;
  EXPECT_TRUE(run.MayStart());
  EXPECT_EQ(app.state.StopRequest, 0) << "asked for earlier";
  app.state.PvRunning = 1;
  run.RequestStop();
  EXPECT_EQ(app.state.StopRequest, 0) << "it would stop the other one";
  app.state.PvRunning = 0;
  run.Start([] { return true; }, [] {});
  EXPECT_FALSE(run.MayStart());
  EXPECT_TRUE(run.HeedRequest());
  app.state.AppRunning = false;
  app.state.StopRequest = 1;
  EXPECT_FALSE(run.HeedRequest());
  EXPECT_EQ(run.Running, 0);
  EXPECT_FALSE(app.state.UiLocked || app.state.PvRunning != 0);
  EXPECT_TRUE(test.Time().Ended()) << "the program is gone already";
}

TEST_F(LiveRunTest, LeavesTheLockOfAnotherOperationAlone) {
  TestFrame other(app.windows);
  FormLock(app, other, 0);
  test.platform.TakeRequests();
  Page()->run.Stop();
  app.windows.Unload("Form11");
  EXPECT_TRUE(app.state.UiLocked);
  EXPECT_TRUE(test.platform.TakeRequests().empty());
}

}  // namespace
}  // namespace vlt::test
