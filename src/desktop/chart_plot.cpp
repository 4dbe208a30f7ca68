// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/chart_plot.h"

// The plotting library's header is written in Qt's keywords, which are off in this program.
#include <QObject>
#define signals Q_SIGNALS
#define slots Q_SLOTS
#define emit
#define foreach Q_FOREACH
#include <qcustomplot.h>
#undef signals
#undef slots
#undef emit
#undef foreach

#include <QBuffer>
#include <QEvent>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <limits>

#include "desktop/qt_text.h"

namespace vlt {
namespace {

// Above so many points the symbols of the points would run into each other.
constexpr qsizetype kMostSymbols = 300;
// Above so many, smooth edges cost more than they show.
constexpr qsizetype kMostSmooth = 5000;
constexpr double kSymbolSize = 4;
constexpr int kDarkBackground = 128;  // lightness
constexpr double kGridShare = 0.2;    // of the text's colour in the ground's
constexpr double kFaintShare = 0.35;  // of a faint line's colour in the ground's
constexpr double kMarkSize = 9;
constexpr int kMinimumHeight = 120;

QColor FromBgr(unsigned bgr) {
  return {static_cast<int>(bgr & 0xFF), static_cast<int>(bgr >> 8 & 0xFF),
          static_cast<int>(bgr >> 16 & 0xFF)};
}

// A colour made for a white ground, so light that it is seen on a dark one.
QColor ReadableOn(const QColor& ground, const QColor& colour) {
  if (ground.lightness() >= kDarkBackground) return colour;
  const int lightness = std::max(colour.lightness(), 255 - colour.lightness() / 2);
  return QColor::fromHsl(colour.hslHue(), colour.hslSaturation(), std::min(lightness, 190));
}

QColor Mix(const QColor& ground, const QColor& colour, double share) {
  const auto channel = [share](int a, int b) { return static_cast<int>(a + (b - a) * share); };
  return {channel(ground.red(), colour.red()), channel(ground.green(), colour.green()),
          channel(ground.blue(), colour.blue())};
}

// An axis that the library can draw: above zero wide, and turned round for a minimum above the maximum.
void ApplyAxis(QCPAxis& axis, const ChartAxis& wanted) {
  axis.setRangeReversed(wanted.min > wanted.max);
  const double low = std::min(wanted.min, wanted.max);
  const double high = std::max(wanted.min, wanted.max);
  axis.setRange(low, high > low ? high : low + 1);
}

// The point that lies nearest in x. Holes count: they lie in the places that they leave.
const QCPGraphData& NearestPoint(const QCPGraphDataContainer& line, double x) {
  auto nearest = line.findBegin(x, true);
  const auto next = std::next(nearest);
  if (next != line.constEnd() && next->key - x < x - nearest->key) nearest = next;
  return *nearest;
}

bool Wants(const QMouseEvent& event, Qt::KeyboardModifier modifier) {
  return event.modifiers().testFlag(modifier);
}

}  // namespace

ChartPlot::ChartPlot(QWidget* parent) : QWidget(parent), plot_(new QCustomPlot(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(plot_);
  setMinimumHeight(kMinimumHeight);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  // Numbers read as they do in the fields and files.
  QLocale locale = QLocale::c();
  locale.setNumberOptions(QLocale::OmitGroupSeparator);
  plot_->setLocale(locale);
  plot_->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
  cursor_ = new QCPItemStraightLine(plot_);
  cursor_->setVisible(false);
  // Lines come into the legend when they have a name.
  plot_->setAutoAddPlottableToLegend(false);
  plot_->installEventFilter(this);
  Connect();
  Dress();
}

ChartPlot::~ChartPlot() = default;

void ChartPlot::Connect() {
  const auto moved = [this] {
    if (!applying_) SetFollowing(false);
  };
  for (QCPAxis* axis : {plot_->xAxis, plot_->yAxis}) {
    QObject::connect(axis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, moved);
  }
  QObject::connect(plot_, &QCustomPlot::afterReplot, this, [this] { ++draw_count_; });
  QObject::connect(plot_, &QCustomPlot::mousePress, this, [this](QMouseEvent* event) {
    const bool rectangle = zoom_mode_ || Wants(*event, Qt::ShiftModifier);
    plot_->setSelectionRectMode(rectangle && event->button() == Qt::LeftButton ? QCP::srmZoom : QCP::srmNone);
  });
  QObject::connect(plot_, &QCustomPlot::mouseDoubleClick, this, [this] { Follow(); });
  QObject::connect(plot_, &QCustomPlot::mouseMove, this,
                   [this](QMouseEvent* event) { PointAt(event->position()); });
}

void ChartPlot::Dress() {
  const QPalette& colours = palette();
  const QColor text = colours.color(QPalette::Text);
  // Mixed by hand: drawing half transparent lines takes twice the time.
  const QColor grid = Mix(colours.color(QPalette::Base), text, kGridShare);
  plot_->setBackground(colours.brush(QPalette::Base));
  for (QCPAxis* axis : {plot_->xAxis, plot_->yAxis}) {
    axis->setBasePen(QPen(text));
    axis->setTickPen(QPen(text));
    axis->setSubTickPen(QPen(text));
    axis->setTickLabelColor(text);
    axis->setLabelColor(text);
    axis->setTickLabelFont(font());
    axis->setLabelFont(font());
    axis->grid()->setPen(QPen(grid, 0, Qt::DotLine));
    axis->grid()->setZeroLinePen(QPen(grid));
  }
  cursor_->setPen(QPen(colours.color(QPalette::Highlight), 0, Qt::DashLine));
  plot_->legend->setBrush(colours.brush(QPalette::Base));
  plot_->legend->setBorderPen(QPen(grid));
  plot_->legend->setTextColor(text);
  plot_->legend->setFont(font());
  plot_->selectionRect()->setPen(QPen(colours.color(QPalette::Highlight)));
  DressGraphs();
}

void ChartPlot::DressGraphs() {
  for (int i = 0; i < plot_->graphCount(); ++i) DressGraph(i);
  const QColor text = palette().color(QPalette::Text);
  for (const MarkItems& mark : marks_) {
    mark.dot->setPen(QPen(text));
    mark.dot->setBrush(palette().color(QPalette::Highlight));
    mark.text->setColor(text);
    mark.text->setFont(font());
    mark.text->setBrush(palette().brush(QPalette::Base));
  }
}

void ChartPlot::DressGraph(int series) {
  QCPGraph& graph = *plot_->graph(series);
  const Look& look = looks_[static_cast<std::size_t>(series)];
  const bool faint = look.style == SeriesStyle::kFaint;
  const QColor ground = palette().color(QPalette::Base);
  QColor colour = ReadableOn(ground, FromBgr(look.colour));
  if (faint) colour = Mix(ground, colour, kFaintShare);
  const qsizetype count = graph.data()->size();
  // A wider pen would cost a thousandfold.
  graph.setPen(QPen(colour, 1));
  graph.setAntialiased(count <= kMostSmooth);
  graph.setScatterStyle(count <= kMostSymbols && !faint
                            ? QCPScatterStyle(QCPScatterStyle::ssDisc, colour, colour, kSymbolSize)
                            : QCPScatterStyle(QCPScatterStyle::ssNone));
  graph.setLayer(faint ? QStringLiteral("grid") : QStringLiteral("main"));
}

void ChartPlot::FillGraph(QCPGraph& graph, std::span<const ChartPoint> points) {
  const std::vector<double> places = PlacesOf(points);
  QVector<QCPGraphData> line;
  line.reserve(static_cast<qsizetype>(points.size()));
  for (std::size_t i = 0; i < points.size(); ++i) {
    line.append({places[i], points[i].IsHole() ? std::numeric_limits<double>::quiet_NaN() : points[i].y});
  }
  graph.data()->set(line, std::is_sorted(places.begin(), places.end()));
}

void ChartPlot::DrawSeries(const Chart& chart) {
  while (plot_->graphCount() < chart.SeriesCount()) plot_->addGraph();
  looks_.clear();
  int named = 0;
  for (int i = 0; i < chart.SeriesCount(); ++i) {
    looks_.push_back({chart.Colour(i), chart.Style(i)});
    QCPGraph& graph = *plot_->graph(i);
    FillGraph(graph, chart.Shown(i));
    graph.setName(ToQt(chart.SeriesName(i)));
    const bool tells = chart.Style(i) == SeriesStyle::kPlain && !chart.SeriesName(i).empty();
    tells ? graph.addToLegend() : graph.removeFromLegend();
    named += tells ? 1 : 0;
  }
  plot_->legend->setVisible(named > 1);
}

void ChartPlot::DrawMarks(const std::vector<ChartMark>& marks) {
  for (; marks_.size() > marks.size(); marks_.pop_back()) {
    plot_->removeItem(marks_.back().text);
    plot_->removeItem(marks_.back().dot);
  }
  while (marks_.size() < marks.size()) {
    const MarkItems items{new QCPItemTracer(plot_), new QCPItemText(plot_)};
    items.dot->setStyle(QCPItemTracer::tsCircle);
    items.dot->setSize(kMarkSize);
    items.text->setObjectName("mark");
    items.text->position->setParentAnchor(items.dot->position);
    items.text->position->setCoords(0, -kMarkSize);
    items.text->setPositionAlignment(Qt::AlignHCenter | Qt::AlignBottom);
    marks_.push_back(items);
  }
  for (std::size_t i = 0; i < marks.size(); ++i) {
    marks_[i].dot->position->setCoords(marks[i].x, marks[i].y);
    marks_[i].text->setText(ToQt(marks[i].text));
  }
}

void ChartPlot::Draw(const Chart& chart) {
  DrawSeries(chart);
  DrawMarks(chart.Marks());
  DressGraphs();
  x_ = chart.X();
  y_ = chart.Y();
  plot_->xAxis->setLabel(ToQt(x_.title));
  plot_->yAxis->setLabel(ToQt(y_.title));
  if (runs_ != chart.Runs()) SetFollowing(true);
  runs_ = chart.Runs();
  if (following_) ApplyAxes();
  Redraw();
}

void ChartPlot::Redraw() { plot_->replot(QCustomPlot::rpQueuedReplot); }

void ChartPlot::ApplyAxes() {
  applying_ = true;
  ApplyAxis(*plot_->xAxis, x_);
  ApplyAxis(*plot_->yAxis, y_);
  applying_ = false;
}

void ChartPlot::Follow() {
  ApplyAxes();
  SetFollowing(true);
  Redraw();
}

void ChartPlot::SetFollowing(bool following) {
  if (following_ == following) return;
  following_ = following;
  if (on_following_changed) on_following_changed();
}

void ChartPlot::SetZoomMode(bool on) { zoom_mode_ = on; }

QByteArray ChartPlot::Png() const {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  plot_->toPixmap().save(&buffer, "PNG");
  return bytes;
}

std::vector<int> ChartPlot::ReadLines() const {
  std::vector<int> lines;
  for (int i = 0; i < plot_->graphCount(); ++i) {
    const bool plain = looks_[static_cast<std::size_t>(i)].style == SeriesStyle::kPlain;
    if (plain && !plot_->graph(i)->data()->isEmpty()) lines.push_back(i);
  }
  return lines;
}

void ChartPlot::PointAt(const QPointF& place) {
  const std::vector<int> lines = ReadLines();
  if (lines.empty() || !plot_->axisRect()->rect().contains(place.toPoint())) {
    StopPointing();
    return;
  }
  double x = plot_->xAxis->pixelToCoord(place.x());
  Reading reading;
  for (const int series : lines) {
    const QCPGraphData& point = NearestPoint(*plot_->graph(series)->data(), x);
    if (series == lines.front()) x = reading.x = point.key;
    const bool hole = std::isnan(point.value);
    reading.lines.push_back({series, hole ? std::nullopt : std::optional(point.value)});
  }
  cursor_->point1->setCoords(reading.x, 0);
  cursor_->point2->setCoords(reading.x, 1);
  cursor_->setVisible(true);
  Redraw();
  if (on_reading) on_reading(reading);
}

void ChartPlot::StopPointing() {
  if (!cursor_->visible()) return;
  cursor_->setVisible(false);
  Redraw();
  if (on_reading) on_reading(std::nullopt);
}

void ChartPlot::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (on_shown) on_shown();
}

void ChartPlot::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) return;
  Dress();
  Redraw();
}

bool ChartPlot::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Leave) StopPointing();
  return QWidget::eventFilter(watched, event);
}

}  // namespace vlt
