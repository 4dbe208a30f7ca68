// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/stations_record.h"

#include "resources/string_table.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

constexpr const char* kGap = ",,,,";  // between a station and its items

// "CH1 FLOW RATE(m3/h)"
std::string ItemWithUnit(const Station& station, const StationDisplay& display, Language language) {
  if (!display.IsUsed()) return {};
  const std::string unit = StationUnitName(station, display, language);
  return DisplayItem(display, language) + (unit.empty() ? "" : "(" + unit + ")");
}

bool IsText(const StationDisplay& display) {
  return display.IsUsed() && LiveFieldAt(display.place).type == LiveType::kBits;
}

}  // namespace

std::vector<std::string> StationColumns(const Station& station, const StationDisplays& displays,
                                        Language language) {
  std::vector<std::string> columns;
  const std::string number = LookupText(text::kStationNumber, language) + std::to_string(station.number);
  for (const StationDisplay& display : displays) {
    const std::string item = ItemWithUnit(station, display, language);
    columns.push_back(item.empty() ? "" : FormatText("%1 %2", {number, item}));
  }
  return columns;
}

std::vector<std::string> StationHeadLines(const StationRun& run, std::span<const Station> stations,
                                          const StationDisplays& displays, Language language) {
  const auto text = [language](int id) { return std::string(LookupText(id, language)); };
  std::vector<std::string> lines = {"<" + text(text::kPvRead) + ">",
                                    text(text::kTime) + "," + DateTimeText(run.started) + "," +
                                        text(text::kCycle) + "," + std::to_string(run.cycle_seconds) + "," +
                                        text(text::kSecondUnit)};
  std::string columns = text(text::kTime);
  for (const Station& station : stations) {
    std::string line = text(text::kStationNumber) + std::to_string(station.number) + kGap;
    for (const StationDisplay& display : displays) {
      line += (&display == &displays.front() ? "" : ",") + ItemWithUnit(station, display, language);
    }
    lines.push_back(line);
    for (const std::string& column : StationColumns(station, displays, language)) columns += "," + column;
  }
  lines.push_back(columns);
  return lines;
}

std::string StationRecordLine(const LocalTime& time, std::span<const Station> stations,
                              const StationDisplays& displays) {
  std::string line = DateTimeText(time);
  for (const Station& station : stations) {
    for (const StationDisplay& display : displays) {
      line.append(IsText(display) ? ",'" : ",").append(StationValue(station, display));
    }
  }
  return line;
}

}  // namespace vlt
