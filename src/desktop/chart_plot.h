// SPDX-License-Identifier: GPL-3.0-or-later
// The drawing of a chart. The plotting library is known to chart_plot.cpp alone.
#pragma once

#include <QByteArray>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "window/chart.h"

class QCustomPlot;
class QCPGraph;
class QCPItemStraightLine;
class QCPItemText;
class QCPItemTracer;

namespace vlt {

// Follows the axes of its chart until a person zooms or pans; then the view stays until Follow() or a new
// run. The wheel zooms, dragging pans, dragging with Shift or in zoom mode draws a rectangle to zoom into, a
// double click follows again.
class ChartPlot : public QWidget {
 public:
  explicit ChartPlot(QWidget* parent);
  ~ChartPlot() override;

  // Draws what the chart holds, once.
  void Draw(const Chart& chart);
  // Shows the axes of the chart again.
  void Follow();
  bool Following() const { return following_; }
  // While it is on, dragging draws a rectangle instead of panning.
  void SetZoomMode(bool on);
  // The picture on the screen as a PNG file's bytes.
  QByteArray Png() const;

  // What the mouse points at: the nearest point of the first line, or the hole there, and what each line that
  // is not faint has at it.
  struct LineValue {
    int series = 0;
    std::optional<double> y;
  };
  struct Reading {
    double x = 0;
    std::vector<LineValue> lines;
  };
  std::function<void(const std::optional<Reading>&)> on_reading;
  std::function<void()> on_following_changed;
  // The widget came to be seen; what was not drawn while it was hidden is due.
  std::function<void()> on_shown;
  // How often it was drawn.
  int DrawCount() const { return draw_count_; }

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Connect();
  void Dress();
  void DressGraphs();
  void DressGraph(int series);
  static void FillGraph(QCPGraph& graph, std::span<const ChartPoint> points);
  void DrawSeries(const Chart& chart);
  void DrawMarks(const std::vector<ChartMark>& marks);
  // The lines that are read at the mouse: those with points that are not faint.
  std::vector<int> ReadLines() const;
  void ApplyAxes();
  void SetFollowing(bool following);
  void PointAt(const QPointF& place);
  void StopPointing();
  void Redraw();

  QCustomPlot* plot_;
  QCPItemStraightLine* cursor_;
  ChartAxis x_;
  ChartAxis y_;
  // How a series looks, by its number.
  struct Look {
    unsigned colour = 0;
    SeriesStyle style = SeriesStyle::kPlain;
  };
  struct MarkItems {
    QCPItemTracer* dot;
    QCPItemText* text;
  };
  std::vector<Look> looks_;
  std::vector<MarkItems> marks_;
  std::uint64_t runs_ = 0;
  bool following_ = true;
  bool zoom_mode_ = false;
  bool applying_ = false;
  int draw_count_ = 0;
};

}  // namespace vlt
