// SPDX-License-Identifier: GPL-3.0-or-later
// The chart: what the control keeps and tells, and the bookkeeping of the trend on the page.
#include <cmath>

#include "measure_fixture.h"

namespace vlt::test {
namespace {

class ChartTest : public ::testing::Test {
 protected:
  struct Window : Form {
    explicit Window(Windows& windows) : Form(windows, "Window", FormPlace::kWindow) {}
    Chart chart{*this, "chart", 2};
  };
  TestApp test;
  Window window{test.app.windows};
  Chart& chart = window.chart;
};

TEST_F(ChartTest, AResetKeepsNoPointOfTheRunBefore) {
  chart.Reset(3);
  for (int point = 1; point <= 3; ++point) chart.SetPoint(point, point, 7);
  chart.Reset(3);
  chart.SetPoint(3, 3, 1);
  EXPECT_NE(chart.Point(1).y, 7) << "a gap of this run";
}

TEST_F(ChartTest, TellsOfABatchOnceAndOfNoChangeNotAtAll) {
  int told = 0;
  chart.Observe([&] { ++told; });
  {
    const ChartBatch outer(chart);
    const ChartBatch inner(chart);
    chart.Reset(10);
    for (int i = 1; i <= 10; ++i) chart.SetPoint(i, i, i);
    chart.SetYRange(5, -5);
    EXPECT_EQ(told, 0);
  }
  EXPECT_EQ(told, 1);
  const std::uint64_t drawn = chart.Revision();
  chart.SetPoint(3, 3, 3);
  chart.SetYRange(5, -5);
  chart.SetColour(chart.Colour());
  chart.ClearFrom(10);
  EXPECT_EQ(chart.Revision(), drawn + 1) << "only the last call has changed something";
  { const ChartBatch idle(chart); }
  EXPECT_EQ(told, 2);
}

TEST_F(ChartTest, KeepsHolesThroughCopiesAndTakesNoRoomForThem) {
  chart.Reset(2147483647);
  chart.SetPoint(1, 1, 10);
  chart.SetPoint(2, 2, std::nan(""));
  chart.SetPoint(4, 4, 40);
  chart.SetLastPoint(6);
  const auto y = [&](int point) { return chart.Point(point).y; };
  EXPECT_EQ(y(2), kChartHole);
  EXPECT_EQ(y(3), kChartHole);
  EXPECT_EQ(y(2147483647), kChartHole);
  EXPECT_EQ(chart.Shown().size(), 4u) << "holes behind the last point set are nothing to draw";
  chart.CopyToStart(4, 3);
  EXPECT_EQ(y(1), 40);
  EXPECT_EQ(y(2), kChartHole);
  EXPECT_EQ(y(3), kChartHole);
  EXPECT_EQ(y(4), 40) << "a copy leaves its source";
  chart.CopyToStart(1000, 2);
  EXPECT_EQ(y(1), kChartHole);
  EXPECT_THROW(chart.CopyToStart(2147483647, 2), std::out_of_range);
  EXPECT_THROW(chart.SetPoint(0, 0, 0), std::out_of_range);
  EXPECT_EQ(chart.PointCount(1), 0) << "series are apart";
}

struct FillCase {
  const char* point_text;
  int width;
  int jump;  // of a full chart
};

class TrendFills : public ::testing::TestWithParam<FillCase> {};

// Sample s has the flow s + 0.5; sample 3 finds the meter silent, and so does the first one behind a slide.
TEST_P(TrendFills, SlideByTwoPercent) {
  const FillCase& c = GetParam();
  MeasureTest t(kOneChannel);
  t.app().state.RetryNo = 0;
  const auto is_silent = [&](int s) { return s == 3 || s == c.width; };
  const auto set_sample = [&](int s) { t.meter().SetLive(0, sim::Quantity::Flow, s + 0.5); };
  set_sample(0);
  t.StartRun(c.point_text);
  int sample = 1;
  for (int fill = 1; fill <= 3; ++fill) {
    for (; sample < c.width + (fill - 1) * c.jump; ++sample) {
      set_sample(sample);
      if (is_silent(sample)) t.test.platform.Arm("silence/04");
      t.RunCycles(sample + 1);
    }
    SCOPED_TRACE(fill);
    const int oldest = (fill - 1) * c.jump;
    const Chart& chart = t.page().Chart2D1;
    EXPECT_EQ(chart.PointCount(), c.width);
    EXPECT_EQ(chart.FirstPoint(), 1);
    ASSERT_EQ(chart.LastPoint(), c.width);
    EXPECT_EQ(chart.X().min, oldest);
    EXPECT_EQ(chart.X().max, oldest + c.width);
    for (int i = 1; i <= c.width; ++i) {
      const int s = oldest + i - 1;
      EXPECT_EQ(chart.Point(i), is_silent(s) ? ChartPoint{} : (ChartPoint{double(s), s + 0.5})) << s;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Widths, TrendFills,
                         ::testing::Values(FillCase{"1", 1, 1}, FillCase{"49", 49, 1}, FillCase{"50", 50, 1},
                                           FillCase{"75", 75, 1}, FillCase{"100.9", 100, 2}),
                         [](const auto& fill) { return "Width" + std::to_string(fill.param.width); });

TEST(Trend, KeepsAllButTwoPercent) {
  const std::pair<std::int64_t, std::int64_t> rows[] = {{1, 0},     {2, 1},    {49, 48},
                                                        {50, 49},   {75, 74},  {125, 122},
                                                        {175, 172}, {100, 98}, {2147483647, 2104533974}};
  for (const auto& [points, keep] : rows) EXPECT_EQ(TrendKeep(points), keep) << points;
}

TEST(Trend, TakesAnyScaleThatPassesTheCheck) {
  MeasureTest t(kOneChannel);
  ASSERT_TRUE(t.page().Max.Type("-5"));
  ASSERT_TRUE(t.page().Min.Type("7.5"));
  t.StartRun("2147483647");
  t.RunCycles(5);
  EXPECT_EQ(t.page().Chart2D1.Y(), (ChartAxis{7.5, -5, "[m3/h]"}));
  EXPECT_EQ(t.page().Chart2D1.X(), (ChartAxis{0, 2147483647, ""}));
  EXPECT_EQ(t.page().Chart2D1.Shown().size(), 5u);
}

TEST(Trend, LeavesAHoleForWhatIsNoNumberAndForAFailedCycle) {
  MeasureTest t(kTwoPipes);
  t.meter().SetLive(0, sim::Quantity::Flow, std::nan(""));
  t.StartRun();
  t.meter().SetLive(0, sim::Quantity::Flow, -INFINITY);
  t.RunCycles(2);
  t.meter().SetLive(0, sim::Quantity::Flow, -0.0);
  t.RunCycles(3);
  t.test.platform.Arm("silence@251C*4");
  t.RunCycles(4);
  t.RunCycles(5);
  const auto shown = t.page().Chart2D1.Shown();
  ASSERT_EQ(shown.size(), 5u);
  const bool holes[] = {true, true, false, true, false};
  for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(shown[i].IsHole(), holes[i]) << i;
  EXPECT_EQ(shown[4].x, 4);
}

// What is plotted for each choice, and what the axis is called.
TEST(Trend, FollowsTheChosenChannelAndQuantity) {
  struct Case {
    const MeterShape& shape;
    int channel;
    int quantity;
    double value;
    const char* title;
  };
  const Case cases[] = {
      {kOnePath, 0, 0, 20, "[m3/h]"}, {kOnePath, 0, 1, 10, "[m/s]"}, {kOnePath, 0, 2, 30, "[%]"},
      {kTwoPaths, 2, 1, 12, "[m/s]"}, {kTwoPipes, 1, 2, 31, "[%]"},  {kTwoPipes, 2, 0, 22, "[m3/h]"},
      {kTwoPipes, 2, 1, 32, "[%]"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.shape.name) + " " + std::to_string(c.channel) + std::to_string(c.quantity));
    MeasureTest t(c.shape);
    for (int ch = 0; ch < kChannels; ++ch) {
      t.meter().SetLive(ch, sim::Quantity::Velocity, 10 + ch);
      t.meter().SetLive(ch, sim::Quantity::Flow, 20 + ch);
      t.meter().SetLive(ch, sim::Quantity::FlowPercent, 30 + ch);
    }
    ASSERT_TRUE(t.page().CH_Combo.Choose(c.channel));
    ASSERT_EQ(t.page().Flow_Combo.Count(), &c.shape == &kTwoPipes && c.channel == 2 ? 2 : 3);
    ASSERT_TRUE(t.page().Flow_Combo.Choose(c.quantity));
    t.StartRun();
    EXPECT_EQ(t.page().Chart2D1.Point(1).y, c.value);
    EXPECT_EQ(t.page().Chart2D1.Y().title, c.title);
    EXPECT_EQ(t.page().Chart2D1.Colour(), 0xFF0000u);
    EXPECT_FALSE(t.page().CH_Combo.Choose(0)) << "fixed while a run is on";
  }
}

}  // namespace
}  // namespace vlt::test
