// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_event_queue.h"

#include <QCoreApplication>
#include <QTimer>
#include <chrono>
#include <thread>
#include <utility>

namespace vlt {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

struct QtEventQueue::Timer {
  QTimer* timer = nullptr;  // the context's child
  std::function<void()> tick;
  bool running = false;
};

QtEventQueue::QtEventQueue(const QtClock& clock) : clock_(clock) {}

QtEventQueue::~QtEventQueue() = default;

void QtEventQueue::GiveWay(std::int64_t until_ms) { GiveWayUntil(milliseconds(until_ms)); }

void QtEventQueue::GiveWayUs(std::int64_t until_us) { GiveWayUntil(std::chrono::microseconds(until_us)); }

void QtEventQueue::GiveWayUntil(nanoseconds moment) {
  const nanoseconds left = moment - clock_.Elapsed();
  if (left < milliseconds(1)) {
    QCoreApplication::processEvents(QEventLoop::AllEvents);
    // Qt's timers know whole milliseconds. Waiting out the rest here keeps every wait exact, and one that
    // follows begins on a whole millisecond.
    std::this_thread::sleep_for(moment - clock_.Elapsed());
    return;
  }
  QTimer alarm;  // one for each call: a handler that runs meanwhile may give way itself
  alarm.setTimerType(Qt::PreciseTimer);
  alarm.setSingleShot(true);
  alarm.start(std::chrono::duration_cast<milliseconds>(left));
  // Returns without sleeping when something was pending: it may be what the caller waits for.
  QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void QtEventQueue::Sleep(int ms) { std::this_thread::sleep_for(milliseconds(ms)); }

EventQueue::TimerId QtEventQueue::StartTimer(int interval_ms, std::function<void()> tick) {
  auto timer = std::make_shared<Timer>();
  timer->timer = new QTimer(&context_);
  timer->tick = std::move(tick);
  timer->timer->setTimerType(Qt::PreciseTimer);
  QObject::connect(timer->timer, &QTimer::timeout, &context_, [timer] {
    if (timer->running) return;
    timer->running = true;
    timer->tick();
    timer->running = false;
  });
  timer->timer->start(interval_ms);
  timers_[++last_id_] = std::move(timer);
  return last_id_;
}

void QtEventQueue::StopTimer(TimerId id) {
  const auto found = timers_.find(id);
  if (found == timers_.end()) return;
  found->second->timer->stop();
  found->second->timer->deleteLater();  // this may be its own tick
  timers_.erase(found);
}

void QtEventQueue::Post(std::function<void()> task) {
  QMetaObject::invokeMethod(&context_, std::move(task), Qt::QueuedConnection);
}

void QtEventQueue::EndProcess() {
  ending_ = true;
  // Not quit(): with windows that one asks each of them first, and any may refuse.
  QCoreApplication::exit(0);
}

}  // namespace vlt
