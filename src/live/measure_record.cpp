// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/measure_record.h"

namespace vlt {

std::string MeasureRecordLine(const LocalTime& time, std::span<const FieldTexts> channels, int fields,
                              const std::string& error) {
  std::string line = DateTimeText(time) + ",";
  for (const FieldTexts& texts : channels) {
    for (int i = 0; i < fields; ++i) {
      if (i == kAlarmPlace) line += '\'';
      line.append(texts.at(static_cast<std::size_t>(i))).append(1, ',');
    }
  }
  return line + error;
}

std::string MeasureTitleLine(const std::string& title, std::span<const std::string> channels, int fields) {
  std::string line = "<" + title + ">";
  if (channels.size() == 1 && fields == kPlainFields) return line;
  line += ',';
  for (std::size_t i = 0; i < channels.size(); ++i) {
    if (i > 0) line.append(static_cast<std::size_t>(fields), ',');
    line.append("<").append(channels[i]).append(">");
  }
  return line;
}

std::string MeasureHeadLine(const std::string& time, std::span<const std::string> heads) {
  std::string line = time + ",";
  for (const std::string& head : heads) line.append(1, '\'').append(head).append(1, ',');
  return line;
}

}  // namespace vlt
