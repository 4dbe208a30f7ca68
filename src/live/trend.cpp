// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/trend.h"

#include "values/number_text.h"

namespace vlt {

std::int64_t TrendKeep(std::int64_t points) {
  const double width = static_cast<double>(points);
  const double jump = width * 2 / 100;
  if (jump < 1) return points - 1;
  return static_cast<std::int64_t>(RoundHalfEven(width - jump));
}

void Trend::Start(std::int64_t points, double y_min, double y_max) {
  TrendSampleNo = 0;
  TrendPointCount = points;
  TrendKeepCount = TrendKeep(points);
  TrendWriteIndex = 0;
  const ChartBatch batch(chart_);
  chart_.SetXRange(0, static_cast<double>(points));
  chart_.Reset(points);
  chart_.SetYRange(y_min, y_max);
}

void Trend::MakeRoom() {
  const std::int64_t last = chart_.LastPoint();
  if (last < chart_.PointCount()) {
    TrendWriteIndex = last + 1;
    return;
  }
  const ChartBatch batch(chart_);
  if (TrendKeepCount != 0) {
    chart_.CopyToStart(TrendPointCount - TrendKeepCount + 1, TrendKeepCount);
  }
  TrendWriteIndex = TrendKeepCount + 1;
  chart_.ClearFrom(TrendWriteIndex);
  const double start = chart_.X().min + static_cast<double>(TrendPointCount - TrendKeepCount);
  chart_.SetXRange(start, start + static_cast<double>(TrendPointCount));
  chart_.SetLastPoint(TrendKeepCount);
}

void Trend::Put(std::optional<double> value) {
  const ChartBatch batch(chart_);
  if (value) chart_.SetPoint(TrendWriteIndex, static_cast<double>(TrendSampleNo), *value);
  // The place counts as used either way, so that a missing point stays a gap.
  chart_.SetLastPoint(TrendWriteIndex);
  ++TrendSampleNo;
  ++TrendWriteIndex;
}

}  // namespace vlt
