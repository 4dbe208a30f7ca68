// SPDX-License-Identifier: GPL-3.0-or-later
// Clock and event queue on one virtual timeline. Nothing here sleeps: giving way jumps to the next event or
// to the given moment, so a wait of five minutes takes no time and ends at its exact millisecond.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <set>

#include "platform/clock.h"
#include "platform/event_queue.h"

namespace vlt::test {

class VirtualTime : public Clock, public EventQueue {
 public:
  // The timeline starts at 0 ms, on the wall at 2026/11/24 10:00:00.
  std::int64_t NowMs() override { return now_us_ / 1000; }
  LocalTime Now() override;
  // Sets what the wall shows now.
  void SetWall(const LocalTime& wall);

  void GiveWay(std::int64_t until_ms) override;
  void Sleep(int ms) override { now_us_ += std::int64_t{1000} * ms; }
  TimerId StartTimer(int interval_ms, std::function<void()> tick) override;
  void StopTimer(TimerId id) override { timers_.erase(id); }
  void Post(std::function<void()> task) override { At(NowMs(), std::move(task)); }
  void EndProcess() override { ended_ = true; }

  // Runs `gesture` once as an event at a moment of the timeline, or so long after now.
  void At(std::int64_t at_ms, std::function<void()> gesture);
  void After(std::int64_t ms, std::function<void()> gesture) { At(NowMs() + ms, std::move(gesture)); }

  // Runs events for so long, as a program without work of its own does.
  void RunFor(std::int64_t ms);
  // Runs events until none is left, timers counted; false when `limit_ms` pass first.
  bool RunUntilIdle(std::int64_t limit_ms = 600'000);

  bool Ended() const { return ended_; }
  int TimerCount() const { return static_cast<int>(timers_.size()); }

 private:
  struct Event {
    std::int64_t at_us = 0;
    std::uint64_t order = 0;  // events of one moment run in the order in which they were made
    TimerId timer = 0;        // 0: the event happens once
    std::function<void()> run;
    bool operator<(const Event& other) const {
      return at_us != other.at_us ? at_us < other.at_us : order < other.order;
    }
  };
  struct RunningTimer {
    std::int64_t interval_us = 0;
    std::function<void()> tick;
    bool ticking = false;
  };

  void Add(std::int64_t at_us, TimerId timer, std::function<void()> run);
  void DropStopped();
  void RunDue();
  void Tick(TimerId id, std::int64_t at_us);
  void GuardAgainstStandstill();

  std::int64_t now_us_ = 0;
  std::int64_t wall_ms_ = 0;  // wall less timeline; counted from the default start
  std::uint64_t order_ = 0;
  std::set<Event> events_;
  std::map<TimerId, RunningTimer> timers_;
  TimerId last_timer_ = 0;
  std::int64_t still_since_us_ = -1;
  int still_count_ = 0;
  bool ended_ = false;
};

}  // namespace vlt::test
