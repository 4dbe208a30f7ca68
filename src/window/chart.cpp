// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/chart.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "values/number_text.h"

namespace vlt {
namespace {

// The step from one place to the next across the holes from `first` up to `end`.
double StepAcross(std::span<const ChartPoint> points, std::span<const double> places, std::size_t first,
                  std::size_t end) {
  const bool before = first > 0;
  const bool behind = end < points.size();
  if (before && behind) return (points[end].x - places[first - 1]) / static_cast<double>(end - first + 1);
  if (behind)
    return end + 1 < points.size() && !points[end + 1].IsHole() ? points[end + 1].x - points[end].x : 1;
  return first > 1 ? places[first - 1] - places[first - 2] : 1;
}

}  // namespace

std::vector<double> PlacesOf(std::span<const ChartPoint> points) {
  std::vector<double> places(points.size());
  for (std::size_t at = 0; at < points.size(); ++at) {
    places[at] = points[at].x;
    if (!points[at].IsHole()) continue;
    std::size_t end = at;
    while (end < points.size() && points[end].IsHole()) ++end;
    const double step = StepAcross(points, places, at, end);
    double place = 0;
    if (at > 0) {
      place = places[at - 1];
    } else if (end < points.size()) {
      place = points[end].x - static_cast<double>(end + 1) * step;
    }
    for (; at < end; ++at) places[at] = place += step;
    if (at < points.size()) places[at] = points[at].x;
  }
  return places;
}

Chart::Chart(ControlOwner& owner, std::string name, int series)
    : Control(owner, ControlKind::kChart, std::move(name)), series_(static_cast<std::size_t>(series)) {}

void Chart::CheckPlace(const Series& data, std::int64_t point) {
  if (point < 1 || point > data.count) throw std::out_of_range("chart point");
}

void Chart::Touch() {
  if (held_ > 0) {
    dirty_ = true;
    return;
  }
  ++revision_;
  Changed();
}

void Chart::Release() {
  if (--held_ > 0 || !dirty_) return;
  dirty_ = false;
  Touch();
}

ChartPoint Chart::Point(std::int64_t point, int series) const {
  const Series& data = At(series);
  CheckPlace(data, point);
  const auto at = static_cast<std::size_t>(point - 1);
  return at < data.points.size() ? data.points[at] : ChartPoint{};
}

std::span<const ChartPoint> Chart::Shown(int series) const {
  const Series& data = At(series);
  const auto last = std::min(data.last, static_cast<std::int64_t>(data.points.size()));
  const std::int64_t first = std::max<std::int64_t>(data.first, 1);
  if (last < first) return {};
  return std::span(data.points)
      .subspan(static_cast<std::size_t>(first - 1), static_cast<std::size_t>(last - first + 1));
}

void Chart::Reset(std::int64_t count, int series) {
  Series& data = At(series);
  data.count = std::max<std::int64_t>(count, 0);
  data.first = 1;
  data.last = 0;
  data.points.clear();
  data.points.shrink_to_fit();
  ++runs_;
  Touch();
}

void Chart::SetFirstPoint(std::int64_t point, int series) { Set(At(series).first, point); }

void Chart::SetLastPoint(std::int64_t point, int series) { Set(At(series).last, point); }

void Chart::SetPoint(std::int64_t point, double x, double y, int series) {
  Series& data = At(series);
  CheckPlace(data, point);
  const auto at = static_cast<std::size_t>(point - 1);
  if (at >= data.points.size()) data.points.resize(at + 1);
  Set(data.points[at], ChartPoint{x, std::isfinite(y) ? y : kChartHole});
}

void Chart::SetPoints(std::span<const ChartPoint> points, int series) {
  Series& data = At(series);
  data.count = static_cast<std::int64_t>(points.size());
  data.first = 1;
  data.last = data.count;
  data.points.assign(points.begin(), points.end());
  for (ChartPoint& point : data.points) {
    if (!std::isfinite(point.y)) point.y = kChartHole;
  }
  Touch();
}

void Chart::CopyToStart(std::int64_t from, std::int64_t count, int series) {
  Series& data = At(series);
  if (count < 1) return;
  CheckPlace(data, from);
  CheckPlace(data, from + count - 1);
  const auto stored = static_cast<std::int64_t>(data.points.size());
  const std::int64_t there = std::clamp<std::int64_t>(stored - from + 1, 0, count);
  const auto begin = data.points.begin() + std::min(from - 1, stored);
  std::copy(begin, begin + there, data.points.begin());
  // What lies behind the stored points are holes, and they are copied as such.
  const std::int64_t end = std::min(count, stored);
  if (there < end) std::fill(data.points.begin() + there, data.points.begin() + end, ChartPoint{});
  Touch();
}

void Chart::ClearFrom(std::int64_t from, int series) {
  Series& data = At(series);
  CheckPlace(data, from);
  const auto keep = static_cast<std::size_t>(from - 1);
  if (keep >= data.points.size()) return;
  data.points.resize(keep);
  Touch();
}

void Chart::SetXRange(double min, double max) { Set(x_, ChartAxis{min, max, x_.title}); }

void Chart::SetYRange(double min, double max) { Set(y_, ChartAxis{min, max, y_.title}); }

void Chart::SetXTitle(const std::string& title) { Set(x_.title, title); }

void Chart::SetYTitle(const std::string& title) { Set(y_.title, title); }

void Chart::SetColour(unsigned bgr, int series) { Set(At(series).colour, bgr); }

void Chart::SetStyle(SeriesStyle style, int series) { Set(At(series).style, style); }

void Chart::SetSinglePrecision(bool single, int series) { Set(At(series).single, single); }

std::string Chart::ValueText(double value, int series) const {
  return IsSinglePrecision(series) ? SingleText(static_cast<float>(value)) : GeneralText(value);
}

void Chart::SetSeriesName(int series, const std::string& name) { Set(At(series).name, name); }

}  // namespace vlt
