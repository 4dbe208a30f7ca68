// SPDX-License-Identifier: GPL-3.0-or-later
// The chart on the screen: what is drawn and when, and what mouse and buttons do.
#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QToolButton>
#include <QWheelEvent>
#include <QtTest/QTest>

#include "desktop/bind.h"
#include "desktop/chart_plot.h"
#include "resources/string_table.h"
#include "support/virtual_platform.h"
#include "window/chart.h"
#include "window/form.h"

namespace vlt::test {
namespace {

constexpr QSize kSize(640, 400);

class ChartOnScreen : public ::testing::Test {
 protected:
  struct Window : Form {
    explicit Window(Windows& windows) : Form(windows, "Window", FormPlace::kWindow) {}
    Chart chart{*this, "chart", 3};
  };

  ChartOnScreen() {
    chart.SetXRange(0, 10);
    chart.SetYRange(0, 100);
    chart.SetYTitle("[m3/h]");
    chart.SetColour(0xFF0000);
    chart.Reset(10);
    for (int i = 1; i <= 9; ++i) {
      if (i != 5) chart.SetPoint(i, i, 10.0 * i);
    }
    chart.SetLastPoint(9);
    binding = Bind(chart, context, &frame);
    binding->Widget()->resize(kSize);
  }

  void Show() {
    frame.resize(kSize);
    frame.show();
    Settle();
  }
  void Settle() {
    for (int i = 0; i < 5; ++i) QApplication::processEvents();
  }
  ChartPlot& Plot() { return *frame.findChild<ChartPlot*>("plot"); }
  QWidget& Canvas() { return *Plot().findChild<QWidget*>(); }
  QString Reading() { return frame.findChild<QLabel*>("reading")->text(); }
  void Press(const char* tool) {
    QTest::mouseClick(frame.findChild<QToolButton*>(tool), Qt::LeftButton);
    Settle();
  }
  void Drag(QPoint from, QPoint to, Qt::KeyboardModifier modifier = Qt::NoModifier) {
    QTest::mousePress(&Canvas(), Qt::LeftButton, modifier, from);
    QMouseEvent move(QEvent::MouseMove, QPointF(to), Canvas().mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                     modifier);
    QApplication::sendEvent(&Canvas(), &move);
    QTest::mouseRelease(&Canvas(), Qt::LeftButton, modifier, to);
    Settle();
  }
  void Wheel(QPoint at, int steps) {
    QWheelEvent event(QPointF(at), Canvas().mapToGlobal(at), {}, {0, 120 * steps}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Canvas(), &event);
    Settle();
  }
  // The rows of the picture in which the line is seen, between two columns.
  std::vector<int> LineRows(int from, int to) {
    const QImage image = Canvas().grab().toImage();
    std::vector<int> rows;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = from; x < to; ++x) {
        const QColor colour = image.pixelColor(x, y);
        if (colour.blue() > colour.red() + 80) rows.push_back(y);
      }
    }
    return rows;
  }
  // The middle of the columns at which the reading tells this x; 0 when none does.
  int ColumnOf(double x) {
    int first = 0;
    int last = 0;
    for (int column = 0; column < Canvas().width(); column += 2) {
      Point({column, Canvas().height() / 2});
      if (!Reading().startsWith(QString("x %1 ").arg(x))) continue;
      if (first == 0) first = column;
      last = column;
    }
    return (first + last) / 2;
  }
  void Point(QPoint at) {
    QMouseEvent move(QEvent::MouseMove, QPointF(at), Canvas().mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&Canvas(), &move);
  }

  VirtualPlatform platform;
  Windows windows{platform.machine};
  Window window{windows};
  Chart& chart = window.chart;
  RefreshQueue queue;
  InputGate gate;
  BindContext context{queue, gate, [](int id) { return QString(LookupText(id + 5000)); }};
  QWidget frame;
  std::unique_ptr<Binding> binding;
};

TEST_F(ChartOnScreen, IsDrawnOnceABatchAndNeverWhileHidden) {
  Settle();
  const int made = Plot().DrawCount();
  chart.SetPoint(1, 1, 50);
  Settle();
  EXPECT_EQ(Plot().DrawCount(), made);
  Show();
  const int shown = Plot().DrawCount();
  EXPECT_GT(shown, made);
  {
    const ChartBatch batch(chart);
    for (int i = 1; i <= 9; ++i) chart.SetPoint(i, i, i);
    chart.SetYRange(0, 20);
  }
  chart.SetPoint(2, 2, 7);  // before the screen was brought up to date
  Settle();
  EXPECT_EQ(Plot().DrawCount(), shown + 1);
  chart.SetPoint(2, 2, 7);
  chart.SetHint("hint");
  Settle();
  EXPECT_EQ(Plot().DrawCount(), shown + 1);
  frame.hide();
  chart.SetPoint(2, 2, 8);
  Settle();
  EXPECT_EQ(Plot().DrawCount(), shown + 1);
  frame.show();
  Settle();
  EXPECT_GT(Plot().DrawCount(), shown + 1);
}

TEST_F(ChartOnScreen, LeavesAGapForAHole) {
  Show();
  const int three = ColumnOf(3), four = ColumnOf(4), six = ColumnOf(6);
  ASSERT_LT(three, four);
  EXPECT_FALSE(LineRows(three + 8, four - 8).empty());
  EXPECT_TRUE(LineRows(four + 8, six - 8).empty());
}

TEST_F(ChartOnScreen, TurnsRoundForAMinimumAboveTheMaximum) {
  Show();
  const int two = ColumnOf(2), eight = ColumnOf(8);
  const auto middle = [&](int column) { return LineRows(column - 2, column + 2).at(2); };
  EXPECT_GT(middle(two), middle(eight)) << "greater values lie higher";
  chart.SetYRange(100, 0);
  Settle();
  EXPECT_LT(middle(two), middle(eight));
  chart.SetXRange(6, 6);
  Settle();
  EXPECT_LT(ColumnOf(6), ColumnOf(7)) << "an axis without a length has one all the same";
}

TEST_F(ChartOnScreen, TellsWhatLiesAtTheMouse) {
  Show();
  Point({ColumnOf(7), 100});
  EXPECT_EQ(Reading(), "x 7    y 70 [m3/h]");
  const int four = ColumnOf(4), six = ColumnOf(6);
  Point({(four + six) / 2, 100});
  EXPECT_EQ(Reading(), "x 5    y -");
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&Canvas(), &leave);
  EXPECT_EQ(Reading(), "");
}

TEST_F(ChartOnScreen, FindsTheSampleBesideAGap) {
  chart.SetPoint(6, 6, kChartHole);
  Show();
  const int three = ColumnOf(3), four = ColumnOf(4), five = ColumnOf(5), seven = ColumnOf(7);
  for (const int column : {four - (four - three) / 3, four, four + (five - four) / 3}) {
    Point({column, 100});
    EXPECT_EQ(Reading(), "x 4    y 40 [m3/h]");
  }
  Point({five, 100});
  EXPECT_EQ(Reading(), "x 5    y -") << "each hole has its place";
  Point({seven - (seven - five) / 3, 100});
  EXPECT_EQ(Reading(), "x 6    y -");
  Point({seven, 100});
  EXPECT_EQ(Reading(), "x 7    y 70 [m3/h]");
}

TEST_F(ChartOnScreen, TellsAValueAsPreciselyAsItIs) {
  chart.SetPoint(3, 3, 0.1F);
  chart.SetXTitle("[us]");
  Show();
  const auto reading = [&] {
    for (int column = 0; column < Canvas().width(); column += 2) {
      Point({column, 100});
      if (Reading().startsWith("x 3 ")) break;
    }
    return Reading();
  };
  EXPECT_EQ(reading(), "x 3 [us]    y 0.1 [m3/h]");
  chart.SetSinglePrecision(false);
  EXPECT_EQ(reading(), "x 3 [us]    y 0.100000001490116 [m3/h]");
}

TEST_F(ChartOnScreen, ShowsSeveralLinesWithFaintOnesBehindAndNamesAPeak) {
  const std::vector<ChartPoint> older = {{1, 5}, {9, 5}};
  chart.SetPoints(older, 1);
  chart.SetStyle(SeriesStyle::kFaint, 1);
  chart.SetColour(0xFF0000, 1);
  chart.SetMarks({{.x = 8, .y = 80, .text = "peak"}, {.x = 2, .y = 20, .text = "first"}});
  Show();
  const int seven = ColumnOf(7), eight = ColumnOf(8);
  Point({seven, 100});
  EXPECT_EQ(Reading(), "x 7    y 70 [m3/h]") << "a faint line is looked at, not read";
  EXPECT_EQ(Plot().findChildren<QObject*>("mark").size(), 2);
  const std::vector<int> strong = LineRows(seven + 8, eight - 8);
  chart.SetStyle(SeriesStyle::kPlain, 1);
  chart.SetMarks({});
  std::vector<QImage> pictures;
  for (const int named : {-1, 0, 1}) {
    if (named >= 0) chart.SetSeriesName(named, named == 0 ? "now" : "then");
    Settle();
    pictures.push_back(Canvas().grab().toImage());
  }
  EXPECT_EQ(pictures[1], pictures[0]) << "one name alone needs no legend";
  EXPECT_NE(pictures[2], pictures[1]);
  EXPECT_GT(LineRows(seven + 8, eight - 8).size(), strong.size());
  EXPECT_TRUE(Plot().findChildren<QObject*>("mark").isEmpty());
  Point({seven, 100});
  EXPECT_EQ(Reading(), "x 7    now 70 [m3/h]    then 5 [m3/h]");
}

TEST_F(ChartOnScreen, ComesBackFromHidingWithAllThatCameMeanwhile) {
  Show();
  chart.SetVisible(false);
  Settle();
  const int drawn = Plot().DrawCount();
  chart.SetPoint(7, 7, 77);
  Settle();
  EXPECT_EQ(Plot().DrawCount(), drawn);
  chart.SetVisible(true);
  Settle();
  Point({ColumnOf(7), 100});
  EXPECT_EQ(Reading(), "x 7    y 77 [m3/h]");
}

TEST_F(ChartOnScreen, ANewRunShowsItsOwnAxes) {
  Show();
  const int two = ColumnOf(2);
  Wheel(Canvas().rect().center(), 2);
  const std::vector<ChartPoint> next = {{1, 10}, {2, 20}, {3, 30}};
  chart.SetPoints(next);
  Settle();
  EXPECT_FALSE(Plot().Following()) << "the run goes on";
  chart.Reset(10);
  for (int i = 1; i <= 3; ++i) chart.SetPoint(i, i, i);
  chart.SetLastPoint(3);
  Settle();
  EXPECT_TRUE(Plot().Following());
  EXPECT_TRUE(frame.findChild<QToolButton*>("follow")->isChecked());
  EXPECT_EQ(ColumnOf(2), two);
}

TEST_F(ChartOnScreen, FollowsUntilAPersonMovesTheView) {
  Show();
  EXPECT_TRUE(frame.findChild<QToolButton*>("follow")->isChecked()) << "from the start";
  Press("follow");
  EXPECT_TRUE(frame.findChild<QToolButton*>("follow")->isChecked()) << "it can't be put off by its button";
  const QPoint centre = Canvas().rect().center();
  const std::function<void()> moves[] = {
      [&] { Wheel(centre, 2); },
      [&] { Drag(centre, centre + QPoint(60, 20)); },
      [&] { Drag(centre, centre + QPoint(120, 60), Qt::ShiftModifier); },
      [&] {
        Press("zoom");
        Drag(centre, centre + QPoint(120, 60));
        Press("zoom");
      },
  };
  for (std::size_t i = 0; i < std::size(moves); ++i) {
    SCOPED_TRACE(i);
    const int three = ColumnOf(3);
    moves[i]();
    EXPECT_FALSE(Plot().Following());
    EXPECT_NE(ColumnOf(3), three);
    const int moved = ColumnOf(8);
    chart.SetXRange(1, 11);
    Settle();
    EXPECT_EQ(ColumnOf(8), moved) << "the view stays where the person put it";
    chart.SetXRange(0, 10);
    if (i % 2 == 0) {
      Press("follow");
    } else {
      QTest::mouseDClick(&Canvas(), Qt::LeftButton, Qt::NoModifier, centre);
      Settle();
    }
    EXPECT_TRUE(Plot().Following());
    EXPECT_TRUE(frame.findChild<QToolButton*>("follow")->isChecked());
    EXPECT_EQ(ColumnOf(3), three);
  }
}

TEST_F(ChartOnScreen, SavesThePicture) {
  Show();
  platform.dialogs.SaveFile("/trend.png");
  Press("export");
  EXPECT_EQ(platform.files.files["/trend.png"].substr(1, 3), "PNG");
  EXPECT_TRUE(platform.dialogs.questions.back().ask_before_overwrite);
  platform.dialogs.SaveFile(std::nullopt);
  Press("export");
  platform.files.FailChange(1, FileError::kFull);
  platform.dialogs.SaveFile("/other.png");
  platform.dialogs.Answer(MessageAnswer::kOk);
  Press("export");
  EXPECT_EQ(platform.dialogs.TakeTexts(),
            std::vector<std::string>{"other.png could not be written: the disk is full"});
}

TEST_F(ChartOnScreen, IsReadableOnADarkGround) {
  Show();
  QPalette dark;
  dark.setColor(QPalette::Base, QColor(20, 20, 20));
  dark.setColor(QPalette::Text, Qt::white);
  frame.setPalette(dark);
  Settle();
  const QImage image = Canvas().grab().toImage();
  EXPECT_LT(image.pixelColor(image.width() / 2, 12).lightness(), 60);
  int lightest = 0;
  for (int x = 0; x < image.width(); ++x) {
    for (int y = 0; y < image.height(); ++y) {
      const QColor colour = image.pixelColor(x, y);
      if (colour.blue() > colour.red() + 60) lightest = std::max(lightest, colour.lightness());
    }
  }
  EXPECT_GT(lightest, 150) << "a blue that is seen";
}

TEST_F(ChartOnScreen, TakesOverALargerFont) {
  Show();
  const int two = ColumnOf(2);
  QFont large = binding->Widget()->font();
  large.setPointSizeF(2 * large.pointSizeF());
  binding->Widget()->setFont(large);
  Settle();
  EXPECT_GT(ColumnOf(2), two) << "the numbers of the axis need more room";
}

}  // namespace
}  // namespace vlt::test
