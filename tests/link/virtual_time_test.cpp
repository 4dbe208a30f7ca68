// SPDX-License-Identifier: GPL-3.0-or-later
// The timeline that all logic tests trust.
#include <gtest/gtest.h>

#include "support/test_app.h"

namespace vlt::test {
namespace {

TEST(VirtualTime, RunsEventsInOrderAndJumpsBetweenThem) {
  VirtualTime time;
  std::vector<std::string> seen;
  const auto note = [&](const std::string& what) {
    seen.push_back(what + "@" + std::to_string(time.NowMs()));
  };
  time.At(300'000, [&] { note("late"); });
  time.At(5, [&] {
    note("outer");
    time.GiveWay(7);  // may end early, at what happens first
    time.GiveWay(7);
    note("outer goes on");
  });
  time.At(6, [&] { note("inner"); });
  time.Post([&] { note("posted"); });
  EXPECT_TRUE(time.RunUntilIdle());
  EXPECT_EQ(seen,
            (std::vector<std::string>{"posted@0", "outer@5", "inner@6", "outer goes on@7", "late@300000"}));
  EXPECT_EQ(DateTimeText(time.Now()), "2026/11/24 10:05:00");
}

TEST(VirtualTime, DropsTicksThatFallIntoARunningOne) {
  VirtualTime time;
  std::vector<std::int64_t> ticks;
  const auto id = time.StartTimer(10, [&] {
    ticks.push_back(time.NowMs());
    if (ticks.size() == 1) time.RunFor(25);
  });
  time.RunFor(52);
  EXPECT_EQ(ticks, (std::vector<std::int64_t>{10, 40, 50}));
  time.Sleep(100);
  time.RunFor(10);  // missed ticks are not made up
  EXPECT_EQ(ticks, (std::vector<std::int64_t>{10, 40, 50, 152, 160}));
  time.StopTimer(id);
  EXPECT_TRUE(time.RunUntilIdle());
  EXPECT_EQ(ticks.size(), 5u);
}

TEST(VirtualTime, ALoopThatNeverWaitsIsFound) {
  VirtualTime time;
  EXPECT_THROW(for (;;) time.GiveWay(time.NowMs()), std::runtime_error);
}

TEST(MemoryFiles, FailAndDieAtTheChosenStep) {
  MemoryFileSystem files;
  files.files["a"] = "old";
  files.FailChange(2, FileError::kFull);
  EXPECT_EQ(files.Create("a.tmp", "new!"), FileError::kGood);
  EXPECT_EQ(files.Rename("a.tmp", "a"), FileError::kFull);
  files.KillAtChange(1);
  EXPECT_THROW(files.Create("b", "half"), Killed);
  EXPECT_EQ(files.files, (std::map<std::string, std::string>{{"a", "old"}, {"a.tmp", "new!"}, {"b", "ha"}}));
}

}  // namespace
}  // namespace vlt::test
