// SPDX-License-Identifier: GPL-3.0-or-later
// A chart as the logic sees it: series of points, axes, colours; no pixels.
//
// Points are counted from 1. A series has a number of points, of which those from the first to the last point
// are shown. A point without a value is a hole: the line has a gap there. Only the points that were set take
// memory, so a series may be declared as wide as an operator likes.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "window/control.h"

namespace vlt {

// The Y value of a hole.
inline constexpr double kChartHole = 1e308;

struct ChartPoint {
  double x = 0;
  double y = kChartHole;
  bool IsHole() const { return y == kChartHole; }
  bool operator==(const ChartPoint&) const = default;
};

// In the data's own units. A minimum above the maximum turns the axis round.
struct ChartAxis {
  double min = 0;
  double max = 1;
  std::string title;
  bool operator==(const ChartAxis&) const = default;
};

// How a line of the chart looks: faint ones (older runs, a reference) lie behind the others.
enum class SeriesStyle : unsigned char { kPlain, kFaint };

// A point that the chart names: the peak of a wave, say.
struct ChartMark {
  double x = 0;
  double y = 0;
  std::string text;
  bool operator==(const ChartMark&) const = default;
};

// Where the points lie in x, holes too: a hole has no place of its own, so those between two points are
// spread evenly, and those at the ends go on with the step beside them (1 where there is none).
std::vector<double> PlacesOf(std::span<const ChartPoint> points);

class Chart : public Control {
 public:
  // Series are counted from 0.
  Chart(ControlOwner& owner, std::string name, int series = 1);

  int SeriesCount() const { return static_cast<int>(series_.size()); }
  std::int64_t PointCount(int series = 0) const { return At(series).count; }
  std::int64_t FirstPoint(int series = 0) const { return At(series).first; }
  std::int64_t LastPoint(int series = 0) const { return At(series).last; }
  // A point that was never set is a hole at 0.
  ChartPoint Point(std::int64_t point, int series = 0) const;
  // From the first to the last point, without the holes behind the last one that was set.
  std::span<const ChartPoint> Shown(int series = 0) const;

  // A new run: so many points, all of them holes; first point 1, last point 0: nothing is shown. Who looks at
  // the chart sees its own axes again.
  void Reset(std::int64_t count, int series = 0);
  void SetFirstPoint(std::int64_t point, int series = 0);
  void SetLastPoint(std::int64_t point, int series = 0);
  // A place outside 1 to PointCount is a programming error and throws std::out_of_range. A value that is not
  // finite is kept as a hole.
  void SetPoint(std::int64_t point, double x, double y, int series = 0);
  // All points of a series at once, first to last of them shown. The run goes on.
  void SetPoints(std::span<const ChartPoint> points, int series = 0);
  // Copies `count` points from `from` on to the start of the series.
  void CopyToStart(std::int64_t from, std::int64_t count, int series = 0);
  // Makes holes of `from` and all points behind it.
  void ClearFrom(std::int64_t from, int series = 0);

  const ChartAxis& X() const { return x_; }
  const ChartAxis& Y() const { return y_; }
  void SetXRange(double min, double max);
  void SetYRange(double min, double max);
  void SetXTitle(const std::string& title);
  void SetYTitle(const std::string& title);

  // Of line and symbols, blue-green-red.
  unsigned Colour(int series = 0) const { return At(series).colour; }
  void SetColour(unsigned bgr, int series = 0);
  // The series' name in a legend.
  const std::string& SeriesName(int series) const { return At(series).name; }
  void SetSeriesName(int series, const std::string& name);

  SeriesStyle Style(int series = 0) const { return At(series).style; }
  void SetStyle(SeriesStyle style, int series = 0);
  // Values of single precision are told with 7 digits, others with 15. What meters send is single.
  bool IsSinglePrecision(int series = 0) const { return At(series).single; }
  void SetSinglePrecision(bool single, int series = 0);
  // A value of the series as text.
  std::string ValueText(double value, int series = 0) const;

  const std::vector<ChartMark>& Marks() const { return marks_; }
  void SetMarks(const std::vector<ChartMark>& marks) { Set(marks_, marks); }

  // How many runs have begun.
  std::uint64_t Runs() const { return runs_; }

  // Between Hold and the matching Release the observer is told nothing; Release tells it once when something
  // has changed.
  void Hold() { ++held_; }
  void Release();
  // Rises with each change that the observer was told of: who has drawn this revision has nothing to draw.
  std::uint64_t Revision() const { return revision_; }

 private:
  struct Series {
    std::int64_t count = 0;
    std::int64_t first = 1;
    std::int64_t last = 0;
    std::vector<ChartPoint> points;
    unsigned colour = 0;
    SeriesStyle style = SeriesStyle::kPlain;
    bool single = true;
    std::string name;
  };
  const Series& At(int series) const { return series_.at(static_cast<std::size_t>(series)); }
  Series& At(int series) { return series_.at(static_cast<std::size_t>(series)); }
  static void CheckPlace(const Series& data, std::int64_t point);
  void Touch();
  template <class T>
  void Set(T& target, const T& value) {
    if (target == value) return;
    target = value;
    Touch();
  }

  std::vector<Series> series_;
  ChartAxis x_;
  ChartAxis y_;
  std::vector<ChartMark> marks_;
  std::uint64_t runs_ = 0;
  int held_ = 0;
  bool dirty_ = false;
  std::uint64_t revision_ = 0;
};

// Holds a chart for as long as it lives.
class ChartBatch {
 public:
  explicit ChartBatch(Chart& chart) : chart_(chart) { chart_.Hold(); }
  ~ChartBatch() { chart_.Release(); }
  ChartBatch(const ChartBatch&) = delete;
  ChartBatch& operator=(const ChartBatch&) = delete;

 private:
  Chart& chart_;
};

}  // namespace vlt
