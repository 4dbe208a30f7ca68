// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/virtual_time.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace vlt::test {
namespace {

using std::chrono::milliseconds;
using WallPoint = std::chrono::sys_time<milliseconds>;

constexpr LocalTime kStart{.year = 2026, .month = 11, .day = 24, .hour = 10};

WallPoint PointOf(const LocalTime& t) {
  const auto date = std::chrono::year(t.year) / t.month / t.day;
  return WallPoint(std::chrono::sys_days(date)) + std::chrono::hours(t.hour) +
         std::chrono::minutes(t.minute) + std::chrono::seconds(t.second) + milliseconds(t.millisecond);
}

}  // namespace

LocalTime VirtualTime::Now() {
  const WallPoint point = PointOf(kStart) + milliseconds(NowMs() + wall_ms_);
  const auto day = std::chrono::floor<std::chrono::days>(point);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(point - day);
  return {.year = static_cast<int>(date.year()),
          .month = static_cast<int>(static_cast<unsigned>(date.month())),
          .day = static_cast<int>(static_cast<unsigned>(date.day())),
          .weekday = static_cast<int>(std::chrono::weekday(day).c_encoding()),
          .hour = static_cast<int>(time.hours().count()),
          .minute = static_cast<int>(time.minutes().count()),
          .second = static_cast<int>(time.seconds().count()),
          .millisecond = static_cast<int>(time.subseconds().count())};
}

void VirtualTime::SetWall(const LocalTime& wall) {
  wall_ms_ = (PointOf(wall) - PointOf(kStart)).count() - NowMs();
}

void VirtualTime::Add(std::int64_t at_us, TimerId timer, std::function<void()> run) {
  events_.insert({at_us, ++order_, timer, std::move(run)});
}

void VirtualTime::At(std::int64_t at_ms, std::function<void()> gesture) {
  Add(at_ms * 1000, 0, std::move(gesture));
}

EventQueue::TimerId VirtualTime::StartTimer(int interval_ms, std::function<void()> tick) {
  const std::int64_t interval_us = std::int64_t{1000} * std::max(interval_ms, 1);
  timers_[++last_timer_] = {interval_us, std::move(tick)};
  Add(now_us_ + interval_us, last_timer_, {});
  return last_timer_;
}

void VirtualTime::GiveWay(std::int64_t until_ms) {
  GuardAgainstStandstill();
  RunDue();
  const std::int64_t until_us = until_ms * 1000;
  if (until_us <= now_us_) return;
  DropStopped();
  now_us_ = events_.empty() ? until_us : std::clamp(events_.begin()->at_us, now_us_, until_us);
  RunDue();
}

void VirtualTime::RunFor(std::int64_t ms) {
  const std::int64_t until = NowMs() + ms;
  do {
    GiveWay(until);
  } while (NowMs() < until);
}

bool VirtualTime::RunUntilIdle(std::int64_t limit_ms) {
  const std::int64_t until = NowMs() + limit_ms;
  for (DropStopped(); !events_.empty(); DropStopped()) {
    if (NowMs() >= until) return false;
    GiveWay(until);
  }
  return true;
}

// A stopped timer is no event to wait for.
void VirtualTime::DropStopped() {
  std::erase_if(events_, [&](const Event& e) { return e.timer != 0 && !timers_.contains(e.timer); });
}

// Runs what is due and was there at the start; what these events make for the same moment waits for the next
// turn. A handler may give way itself, so the queue is looked at afresh each time.
void VirtualTime::RunDue() {
  const std::uint64_t last = order_;
  for (;;) {
    const auto next = std::find_if(events_.begin(), events_.end(),
                                   [&](const Event& e) { return e.at_us > now_us_ || e.order <= last; });
    if (next == events_.end() || next->at_us > now_us_) return;
    const Event event = *next;
    events_.erase(next);
    if (event.timer != 0) {
      Tick(event.timer, event.at_us);
    } else {
      event.run();
    }
  }
}

void VirtualTime::Tick(TimerId id, std::int64_t at_us) {
  const auto found = timers_.find(id);
  if (found == timers_.end()) return;
  const std::int64_t interval = found->second.interval_us;
  Add(at_us + interval * ((now_us_ - at_us) / interval + 1), id, {});
  if (found->second.ticking) return;
  struct Ticking {
    Ticking(std::map<TimerId, RunningTimer>& timers, TimerId timer) : all(timers), of(timer) { Mark(true); }
    ~Ticking() { Mark(false); }
    void Mark(bool ticking) {
      if (const auto timer = all.find(of); timer != all.end()) timer->second.ticking = ticking;
    }
    std::map<TimerId, RunningTimer>& all;
    TimerId of;
  } ticking(timers_, id);
  const auto tick = found->second.tick;  // its timer may be stopped by it
  tick();
}

// A loop that gives way without ever waiting would run for ever here.
void VirtualTime::GuardAgainstStandstill() {
  constexpr int kPatience = 100'000;
  still_count_ = still_since_us_ == now_us_ ? still_count_ + 1 : 0;
  still_since_us_ = now_us_;
  if (still_count_ > kPatience) throw std::runtime_error("a loop gives way and time stands still");
}

}  // namespace vlt::test
