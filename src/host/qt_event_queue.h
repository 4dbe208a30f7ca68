// SPDX-License-Identifier: GPL-3.0-or-later
// The event queue by Qt's event loop: for both the program with windows and the companion without.
#pragma once

#include <QObject>
#include <map>
#include <memory>

#include "host/qt_clock.h"
#include "platform/event_queue.h"

namespace vlt {

// Needs a running QCoreApplication, and lives on its thread.
class QtEventQueue : public EventQueue {
 public:
  explicit QtEventQueue(const QtClock& clock);
  ~QtEventQueue() override;
  QtEventQueue(const QtEventQueue&) = delete;
  QtEventQueue& operator=(const QtEventQueue&) = delete;

  void GiveWay(std::int64_t until_ms) override;
  void GiveWayUs(std::int64_t until_us) override;
  void Sleep(int ms) override;
  TimerId StartTimer(int interval_ms, std::function<void()> tick) override;
  void StopTimer(TimerId id) override;
  void Post(std::function<void()> task) override;
  void EndProcess() override;

  // EndProcess() was called. Qt forgets a wish to quit that comes before its loop runs, so the main function
  // asks here first.
  bool IsEnding() const { return ending_; }

 private:
  struct Timer;

  void GiveWayUntil(std::chrono::nanoseconds moment);

  const QtClock& clock_;
  QObject context_;  // tasks posted and ticks die with it
  std::map<TimerId, std::shared_ptr<Timer>> timers_;
  TimerId last_id_ = 0;
  bool ending_ = false;
};

}  // namespace vlt
