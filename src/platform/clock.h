// SPDX-License-Identifier: GPL-3.0-or-later
// Time as the logic sees it.
#pragma once

#include <cstdint>
#include <string>

namespace vlt {

// A moment on the wall: what the operator's clock shows.
struct LocalTime {
  int year = 0;
  int month = 0;        // 1 to 12
  int day = 0;          // 1 to 31
  int weekday = 0;      // 0 Sunday to 6 Saturday
  int hour = 0;         // 0 to 23
  int minute = 0;       // 0 to 59
  int second = 0;       // 0 to 59
  int millisecond = 0;  // 0 to 999
};

// The moment so many milliseconds later, or earlier for a number below 0, on the calendar.
LocalTime MovedBy(const LocalTime& time, std::int64_t ms);

// "yyyy/mm/dd hh:mm:ss", the form of status lines and records.
std::string DateTimeText(const LocalTime& time);
// "yyyymmddhhmmss", the form of time stamps in file names.
std::string StampText(const LocalTime& time);

// "yyyy/mm/dd hh:mm:ss.000", where milliseconds count.
std::string PreciseTimeText(const LocalTime& time);

class Clock {
 public:
  virtual ~Clock() = default;
  // Milliseconds since an arbitrary moment; never goes back, resolution 1 ms.
  virtual std::int64_t NowMs() = 0;
  // The same in microseconds, as finely as this clock tells them.
  virtual std::int64_t NowUs() { return NowMs() * 1000; }
  virtual LocalTime Now() = 0;
};

}  // namespace vlt
