// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/clock.h"

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

std::string DateTimeText(const LocalTime& time) { return Join(time, "/", " ", ":"); }
std::string StampText(const LocalTime& time) { return Join(time, "", "", ""); }

}  // namespace vlt
