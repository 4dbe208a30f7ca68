// SPDX-License-Identifier: GPL-3.0-or-later
// The lines of the log of several stations, as texts. Head and records have the stations in the same order,
// two columns each.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "live/stations.h"

namespace vlt {

// When a run began and how often it asks.
struct StationRun {
  LocalTime started;
  int cycle_seconds = 0;
};

// The title; the start of the run and its cycle; a line a station with the two items and their units; the
// names of the columns.
std::vector<std::string> StationHeadLines(const StationRun& run, std::span<const Station> stations,
                                          const StationDisplays& displays, Language language);

// The names of a station's columns, one for each display: "Station No.2 CH1 FLOW RATE(m3/h)". Empty for a
// display that is not used.
std::vector<std::string> StationColumns(const Station& station, const StationDisplays& displays,
                                        Language language);

// The time of the pass, and for each station a comma and the value of display 1, a comma and the value of
// display 2. A value that is text has an apostrophe in front (a spreadsheet would read it as a number).
std::string StationRecordLine(const LocalTime& time, std::span<const Station> stations,
                              const StationDisplays& displays);

}  // namespace vlt
