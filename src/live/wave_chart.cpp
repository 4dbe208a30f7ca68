// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "live/wave_tab.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"

namespace vlt {
namespace {

// Blue-green-red.
constexpr unsigned kWaveColour = 0xFF0000;
constexpr unsigned kTriggerColour = 0x0000C0;

constexpr double kLeastHeight = 100;  // counts

std::vector<ChartPoint> PointsOf(const WaveSampleArray& samples) {
  std::vector<ChartPoint> points;
  points.reserve(samples.size());
  for (const std::int32_t sample : samples) {
    points.push_back({static_cast<double>(points.size()), static_cast<double>(sample)});
  }
  return points;
}

// The next of 1, 2, 5, 10, 20, ... that is not below.
double RoundUp(double value) {
  const double power = std::pow(10.0, std::floor(std::log10(value)));
  for (const double step : {1.0, 2.0, 5.0}) {
    if (step * power >= value) return step * power;
  }
  return 10 * power;
}

std::size_t PeakOf(const WaveSampleArray& samples) {
  const auto magnitude = [](std::int32_t sample) { return std::abs(static_cast<std::int64_t>(sample)); };
  return static_cast<std::size_t>(std::ranges::max_element(samples, {}, magnitude) - samples.begin());
}

}  // namespace

void WaveTab::ShowAxes() {
  const ChartBatch batch(DeltaChart2D1);
  DeltaChart2D1.SetXTitle(app_.Text(text::kWaveTime));
  DeltaChart2D1.SetYTitle(app_.Text(text::kWaveAmplitude));
}

void WaveTab::PrepareChart() {
  const ChartBatch batch(DeltaChart2D1);
  XOrigin = 0;
  height_ = kLeastHeight;
  for (int series = 0; series < DeltaChart2D1.SeriesCount(); ++series) {
    DeltaChart2D1.Reset(kWaveSampleCount, series);
    DeltaChart2D1.SetColour(series == kTriggerSeries ? kTriggerColour : kWaveColour, series);
    DeltaChart2D1.SetStyle(series >= kTrailSeries ? SeriesStyle::kFaint : SeriesStyle::kPlain, series);
  }
  DeltaChart2D1.SetSeriesName(kTriggerSeries, "");
  std::vector<ChartPoint> holes = PointsOf({});
  for (ChartPoint& point : holes) point.y = kChartHole;
  DeltaChart2D1.SetPoints(holes, kWaveSeries);
  DeltaChart2D1.SetXRange(0, kWaveSampleCount - 1);
  DeltaChart2D1.SetYRange(-height_, height_);
  DeltaChart2D1.SetMarks({});
}

void WaveTab::DrawWave() {
  const ChartBatch batch(DeltaChart2D1);
  DeltaChart2D1.SetPoints(PointsOf(store.WaveSamples), kWaveSeries);
  DrawTrigger();
  DrawTrail();
  MarkPeak();
  FitHeight();
}

void WaveTab::DrawTrail() {
  const ChartBatch batch(DeltaChart2D1);
  for (int behind = 1; behind <= kMostTrail; ++behind) {
    const auto slot =
        behind <= cmbWaveTrail.ListIndex() ? store.Earlier(behind) : std::optional<int>(std::nullopt);
    const int series = kTrailSeries + behind - 1;
    if (!slot) {
      if (DeltaChart2D1.PointCount(series) > 0) DeltaChart2D1.SetPoints({}, series);
      continue;
    }
    WaveSampleArray samples{};
    for (std::size_t i = 0; i < samples.size(); ++i) {
      samples[i] = store.WaveHistory[i][static_cast<std::size_t>(*slot)];
    }
    DeltaChart2D1.SetPoints(PointsOf(samples), series);
  }
}

// The axis that a wave is judged against; a correlation lies on zero.
void WaveTab::DrawTrigger() {
  if (!order_.HasHead()) {
    DeltaChart2D1.SetPoints({}, kTriggerSeries);
    return;
  }
  const ChartPoint ends[] = {{0, XOrigin}, {kWaveSampleCount - 1, XOrigin}};
  DeltaChart2D1.SetPoints(ends, kTriggerSeries);
  DeltaChart2D1.SetSeriesName(kTriggerSeries, app_.Text(order_.kind->trigger));
}

void WaveTab::MarkPeak() {
  const std::size_t at = PeakOf(store.WaveSamples);
  const std::string value = std::to_string(store.WaveSamples[at]);
  DeltaChart2D1.SetMarks({{static_cast<double>(at), static_cast<double>(store.WaveSamples[at]),
                           FormatText(app_.Text(text::kWavePeak), {value, std::to_string(at)})}});
}

// Grows with the run, so that captures can be compared by eye.
void WaveTab::FitHeight() {
  const double peak = std::abs(static_cast<double>(store.WaveSamples[PeakOf(store.WaveSamples)]));
  // Room for what stands at the peak.
  constexpr double kRoom = 1.1;
  height_ = std::max(height_, RoundUp(std::max(kRoom * peak, kLeastHeight)));
  DeltaChart2D1.SetYRange(-height_, height_);
}

}  // namespace vlt
