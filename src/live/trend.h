// SPDX-License-Identifier: GPL-3.0-or-later
// The bookkeeping of the trend chart: where the next point goes, and what happens when the chart is full.
//
// A full chart jumps: the last points move to its start and room for 2 % of its width (one point below a
// width of 50) comes free at its end.
#pragma once

#include <cstdint>
#include <optional>

#include "window/chart.h"

namespace vlt {

// Points kept when a chart of so many points is full: all but 2 % of them, halves to the even number, and all
// but one below 50.
std::int64_t TrendKeep(std::int64_t points);

class Trend {
 public:
  explicit Trend(Chart& chart) : chart_(chart) {}

  // An empty chart of so many points, from sample 0 on.
  void Start(std::int64_t points, double y_min, double y_max);
  // Before a cycle: the place of its point, at the cost of the oldest ones when the chart is full.
  void MakeRoom();
  // After a cycle: its point, or a hole when there is no value.
  void Put(std::optional<double> value);

  std::int64_t TrendPointCount = 0;  // width of the chart
  std::int64_t TrendKeepCount = 0;   // points kept when it is full
  std::int64_t TrendWriteIndex = 0;  // where the next point goes
  std::int64_t TrendSampleNo = 0;    // X of the next point: cycles since the start

 private:
  Chart& chart_;
};

}  // namespace vlt
