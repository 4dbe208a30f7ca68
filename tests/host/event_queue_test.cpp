// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_event_queue.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <algorithm>
#include <ctime>
#include <string>
#include <vector>

namespace vlt {
namespace {

class EventQueueTest : public testing::Test {
 protected:
  // Gives way until `done`, at most five seconds.
  template <typename Done>
  bool Until(Done done) {
    const std::int64_t end = clock.NowMs() + 5000;
    while (!done() && clock.NowMs() < end) queue.GiveWay(end);
    return done();
  }

  QtClock clock;
  QtEventQueue queue{clock};
};

TEST_F(EventQueueTest, GivesWayToTheMomentWithoutBurningTheProcessor) {
  const std::clock_t used_before = std::clock();
  const std::int64_t start = clock.NowMs();
  int rounds = 0;
  while (clock.NowMs() < start + 200) {
    queue.GiveWay(start + 200);
    ++rounds;
  }
  const double used_ms = 1000.0 * static_cast<double>(std::clock() - used_before) / CLOCKS_PER_SEC;
  EXPECT_LT(rounds, 20) << "sleeps instead of asking again and again";
  EXPECT_LT(used_ms, 60) << "of 200 ms waited";
}

TEST_F(EventQueueTest, ComesBackWhenSomethingHappenedNotOnlyAtTheMoment) {
  bool happened = false;
  queue.Post([&] { happened = true; });
  const std::int64_t start = clock.NowMs();
  while (!happened) queue.GiveWay(start + 5000);
  EXPECT_LT(clock.NowMs(), start + 4000);
}

TEST_F(EventQueueTest, AMomentInThePastRunsWhatIsPending) {
  std::string order;
  queue.Post([&] { order += "a"; });
  queue.Post([&] { order += "b"; });
  EXPECT_EQ(order, "") << "a posted task is an event of its own";
  queue.GiveWay(clock.NowMs());
  EXPECT_EQ(order, "ab");
}

TEST_F(EventQueueTest, EventsRunInsideAHandlerThatGivesWay) {
  std::string order;
  bool inner_done = false;
  queue.Post([&] {
    order += "(";
    queue.Post([&] {
      order += "[";
      const std::int64_t until = clock.NowMs() + 3;
      while (clock.NowMs() < until) queue.GiveWay(until);
      order += "]";
      inner_done = true;
    });
    Until([&] { return inner_done; });
    order += ")";
  });
  ASSERT_TRUE(Until([&] { return order.ends_with(")"); }));
  EXPECT_EQ(order, "([])");
}

TEST_F(EventQueueTest, TicksThatFallIntoARunningTickAreDropped) {
  int depth = 0;
  int deepest = 0;
  int slow_ticks = 0;
  int other_ticks = 0;
  const auto other = queue.StartTimer(1, [&] { ++other_ticks; });
  const auto slow = queue.StartTimer(1, [&] {
    deepest = std::max(deepest, ++depth);
    const int target = other_ticks + 10;
    Until([&] { return other_ticks >= target; });  // its own tick is due many times over
    ++slow_ticks;
    --depth;
  });
  ASSERT_TRUE(Until([&] { return slow_ticks == 3; }));
  queue.StopTimer(slow);
  queue.StopTimer(other);
  EXPECT_EQ(deepest, 1);
  EXPECT_LE(slow_ticks, other_ticks / 10) << "and are not made up";
}

TEST_F(EventQueueTest, ATickMayStopItsTimerAndStartAnother) {
  int first = 0;
  int second = 0;
  EventQueue::TimerId id = 0;
  EventQueue::TimerId next = 0;
  id = queue.StartTimer(1, [&] {
    ++first;
    queue.StopTimer(id);
    next = queue.StartTimer(1, [&] { ++second; });
  });
  EXPECT_GT(id, 0);
  ASSERT_TRUE(Until([&] { return second == 3; }));
  EXPECT_EQ(first, 1);
  EXPECT_NE(next, id);
  queue.StopTimer(next);
  queue.StopTimer(next);
  queue.StopTimer(9999);
}

TEST_F(EventQueueTest, TheWishToEndComesThroughFromInsideAndFromBefore) {
  bool returned = false;
  queue.Post([&] {
    queue.EndProcess();
    queue.GiveWay(clock.NowMs() + 1);
    returned = true;
  });
  EXPECT_FALSE(queue.IsEnding());
  EXPECT_EQ(QCoreApplication::exec(), 0);
  EXPECT_TRUE(returned) << "the handler that asked runs to its end";
  EXPECT_TRUE(queue.IsEnding());
}

TEST(QtClock, TheTextOfNowIsTheWallClocks) {
  QtClock clock;
  const std::time_t before = std::time(nullptr);
  const LocalTime now = clock.Now();
  const std::time_t after = std::time(nullptr);
  std::tm parts{};
  parts.tm_year = now.year - 1900;
  parts.tm_mon = now.month - 1;
  parts.tm_mday = now.day;
  parts.tm_hour = now.hour;
  parts.tm_min = now.minute;
  parts.tm_sec = now.second;
  parts.tm_isdst = -1;
  const std::time_t told = std::mktime(&parts);
  EXPECT_GE(told, before);
  EXPECT_LE(told, after);
  EXPECT_EQ(now.weekday, parts.tm_wday);
}

}  // namespace
}  // namespace vlt
