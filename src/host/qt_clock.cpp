// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_clock.h"

#include <QDateTime>

namespace vlt {

std::int64_t QtClock::NowMs() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(Elapsed()).count();
}

std::int64_t QtClock::NowUs() {
  return std::chrono::duration_cast<std::chrono::microseconds>(Elapsed()).count();
}

LocalTime QtClock::Now() {
  const QDateTime now = QDateTime::currentDateTime();
  LocalTime time;
  time.year = now.date().year();
  time.month = now.date().month();
  time.day = now.date().day();
  time.weekday = now.date().dayOfWeek() % 7;  // Qt counts Monday 1 to Sunday 7
  time.hour = now.time().hour();
  time.minute = now.time().minute();
  time.second = now.time().second();
  time.millisecond = now.time().msec();
  return time;
}

}  // namespace vlt
