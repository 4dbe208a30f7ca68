// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/clock.h"

#include <chrono>

namespace vlt {
namespace {

void AppendPadded(std::string& out, int value, std::size_t width) {
  const std::string digits = std::to_string(value);
  if (digits.size() < width) out.append(width - digits.size(), '0');
  out += digits;
}

std::string Join(const LocalTime& t, const char* date, const char* between, const char* time) {
  std::string out;
  AppendPadded(out, t.year, 4);
  out += date;
  AppendPadded(out, t.month, 2);
  out += date;
  AppendPadded(out, t.day, 2);
  out += between;
  AppendPadded(out, t.hour, 2);
  out += time;
  AppendPadded(out, t.minute, 2);
  out += time;
  AppendPadded(out, t.second, 2);
  return out;
}

}  // namespace

LocalTime MovedBy(const LocalTime& time, std::int64_t ms) {
  using namespace std::chrono;
  const year_month_day date{year(time.year), month(static_cast<unsigned>(time.month)),
                            day(static_cast<unsigned>(time.day))};
  const auto moment = sys_days(date) + hours(time.hour) + minutes(time.minute) + seconds(time.second) +
                      milliseconds(time.millisecond + ms);
  const auto midnight = floor<days>(moment);
  const year_month_day moved(midnight);
  const hh_mm_ss clock(moment - midnight);
  return {.year = static_cast<int>(moved.year()),
          .month = static_cast<int>(static_cast<unsigned>(moved.month())),
          .day = static_cast<int>(static_cast<unsigned>(moved.day())),
          .weekday = static_cast<int>(weekday(midnight).c_encoding()),
          .hour = static_cast<int>(clock.hours().count()),
          .minute = static_cast<int>(clock.minutes().count()),
          .second = static_cast<int>(clock.seconds().count()),
          .millisecond = static_cast<int>(clock.subseconds().count())};
}

std::string DateTimeText(const LocalTime& time) { return Join(time, "/", " ", ":"); }
std::string StampText(const LocalTime& time) { return Join(time, "", "", ""); }

std::string PreciseTimeText(const LocalTime& time) {
  std::string out = DateTimeText(time) + '.';
  AppendPadded(out, time.millisecond, 3);
  return out;
}

}  // namespace vlt
