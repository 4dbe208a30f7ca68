// The plotting library's header is written in Qt's keywords, which are off in this program.
#undef QT_NO_KEYWORDS
#include <qcustomplot.h>
// Apart, so that it stays the first one.
#include "desktop/chart_plot.h"

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
  plot_->selectionRect()->setPen(QPen(colours.color(QPalette::Highlight)));
  DressGraphs();
}

void ChartPlot::DressGraphs() {
  const QColor ground = palette().color(QPalette::Base);
  for (int i = 0; i < plot_->graphCount(); ++i) {
    QCPGraph& graph = *plot_->graph(i);
    const QColor colour = ReadableOn(ground, FromBgr(colours_[static_cast<std::size_t>(i)]));
    const qsizetype count = graph.data()->size();
    // A wider pen would cost a thousandfold.
    graph.setPen(QPen(colour, 1));
    graph.setAntialiased(count <= kMostSmooth);
    graph.setScatterStyle(count <= kMostSymbols
                              ? QCPScatterStyle(QCPScatterStyle::ssDisc, colour, colour, kSymbolSize)
                              : QCPScatterStyle(QCPScatterStyle::ssNone));
  }
}

void ChartPlot::FillGraph(QCPGraph& graph, std::span<const ChartPoint> points) {
  QVector<QCPGraphData> line;
  line.reserve(static_cast<qsizetype>(points.size()));
  double x = points.empty() ? 0 : points.front().x;
  bool sorted = true;
  for (const ChartPoint& point : points) {
    // A hole has no place of its own: it breaks the line behind the point before it.
    sorted = sorted && (point.IsHole() || point.x >= x);
    if (!point.IsHole()) x = point.x;
    line.append({x, point.IsHole() ? std::numeric_limits<double>::quiet_NaN() : point.y});
  }
  graph.data()->set(line, sorted);
}

void ChartPlot::Draw(const Chart& chart) {
  while (plot_->graphCount() < chart.SeriesCount()) plot_->addGraph();
  colours_.clear();
  for (int i = 0; i < chart.SeriesCount(); ++i) {
    colours_.push_back(chart.Colour(i));
    FillGraph(*plot_->graph(i), chart.Shown(i));
    plot_->graph(i)->setName(ToQt(chart.SeriesName(i)));
  }
  DressGraphs();
  x_ = chart.X();
  y_ = chart.Y();
  plot_->xAxis->setLabel(ToQt(x_.title));
  plot_->yAxis->setLabel(ToQt(y_.title));
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

// The point of the first line that lies nearest in x.
void ChartPlot::PointAt(const QPointF& place) {
  if (plot_->graphCount() == 0 || plot_->graph(0)->data()->isEmpty() ||
      !plot_->axisRect()->rect().contains(place.toPoint())) {
    StopPointing();
    return;
  }
  const double x = plot_->xAxis->pixelToCoord(place.x());
  const auto& line = *plot_->graph(0)->data();
  auto nearest = line.findBegin(x, true);
  if (std::next(nearest) != line.constEnd() && std::next(nearest)->key - x < x - nearest->key) ++nearest;
  Reading reading{nearest->key, nearest->value};
  if (std::isnan(nearest->value)) reading = {std::round(x), std::nullopt};
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
