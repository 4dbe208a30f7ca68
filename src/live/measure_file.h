// SPDX-License-Identifier: GPL-3.0-or-later
// The file of the measure page: its head and records, and the line that tells of it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "live/live_run.h"
#include "live/measure_log.h"
#include "live/measure_record.h"
#include "live/measure_scale.h"
#include "live/measure_values.h"
#include "live/trend.h"

namespace vlt {

class MeasureFile {
 public:
  // `scale` names the channels, `trend` counts the cycles.
  MeasureFile(App& app, MeasureControls& page, LiveRun& run, const MeasureValues& values,
              const MeasureScale& scale, const Trend& trend);

  // The operator chooses the file of the next run.
  void Choose();
  // The two head lines (MeasureLog::WriteHead).
  void WriteHead(const std::string& path);
  // A record of this time (MeasureLog::Append), the error and a gap of the line behind the values.
  void Append(const std::string& path, const LocalTime& time, std::span<const FieldTexts> texts,
              const std::string& error);
  // The length of a cycle: as entered at first, then, told at each of its beginnings, as it really is.
  void SetPeriod(std::int64_t ms) { period_ms_ = ms; }
  void TakePeriod();
  // While a run records, also when its file will be full.
  void Show();

  MeasureLog log;

 private:
  std::vector<std::string> HeadLines() const;

  App& app_;
  MeasureControls& page_;
  LiveRun& run_;
  const MeasureValues& values_;
  const MeasureScale& scale_;
  const Trend& trend_;
  std::int64_t first_cycle_ms_ = 0;  // when the first cycle of the run began
  std::int64_t period_ms_ = 0;
};

}  // namespace vlt
