// SPDX-License-Identifier: GPL-3.0-or-later
// Events and giving way to them.
#pragma once

#include <cstdint>
#include <functional>

namespace vlt {

// What runs between two steps of a handler: gestures of the operator, timers, arriving bytes. One thread;
// an event may run while another handler waits inside GiveWay.
class EventQueue {
 public:
  using TimerId = int;

  virtual ~EventQueue() = default;

  // Runs what is pending, then sleeps until something happens or the clock's NowMs() reaches `until_ms`.
  // With a moment in the past it only runs what is pending. It may return early.
  virtual void GiveWay(std::int64_t until_ms) = 0;
  // The same for a moment of the clock's NowUs(); where that is too fine, until the next whole millisecond.
  virtual void GiveWayUs(std::int64_t until_us) { GiveWay((until_us + 999) / 1000); }

  // Stands still without running events.
  virtual void Sleep(int ms) = 0;

  // Calls `tick` every `interval_ms` until StopTimer. Ticks that fall into a running tick of the same timer
  // are dropped, not made up. Ids are above 0.
  virtual TimerId StartTimer(int interval_ms, std::function<void()> tick) = 0;
  virtual void StopTimer(TimerId id) = 0;

  // Runs `task` once as an event of its own, as soon as the queue runs.
  virtual void Post(std::function<void()> task) = 0;

  // Asks the process to end once the running handlers have returned.
  virtual void EndProcess() = 0;
};

}  // namespace vlt
