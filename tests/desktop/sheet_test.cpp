// SPDX-License-Identifier: GPL-3.0-or-later
// Sheets of shapes as they are seen: painted, in a window, in a picture and as pages of a document.
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "desktop/fonts.h"
#include "desktop/qt_printer.h"
#include "desktop/sheet_painter.h"
#include "desktop/support/screen.h"
#include "window/drawing.h"

namespace vlt::test {
namespace {

constexpr int kDots = 10;  // a unit

Sheet Blank() { return {100, 60}; }

// The sheet in the middle of a square of 100 by 100 units, so 20 units down.
QImage Painted(const Sheet& sheet, Ground ground = Ground::kPaper) {
  QImage image(100 * kDots, 100 * kDots, QImage::Format_RGB32);
  image.fill(ground == Ground::kPaper ? Qt::white : Qt::black);
  QPainter painter(&image);
  PaintSheet(painter, sheet, image.rect(), {BaseFont(), ground});
  return image;
}

bool IsInk(const QImage& image, int x, int y) { return image.pixelColor(x, y).lightness() < 200; }

bool IsSeen(const QImage& image, double x, double y) {
  return IsInk(image, static_cast<int>(x * kDots), static_cast<int>((y + 20) * kDots));
}

// What lies around all that is seen, in units of the sheet.
QRectF Around(const QImage& image) {
  QRect box;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      if (IsInk(image, x, y)) box |= QRect(x, y, 1, 1);
    }
  }
  return {box.x() / 10.0, box.y() / 10.0 - 20, box.width() / 10.0, box.height() / 10.0};
}

TEST(SheetPainter, ShapesLieWhereTheSheetHasThem) {
  const auto line = [](const LineStyle& style) {
    Sheet sheet = Blank();
    sheet.Line(style, {{20, 30}, {60, 30}});
    return Painted(sheet);
  };
  Sheet box = Blank();
  box.Box(Ink::kElement, 20, 10, 30, 15);
  Sheet moved = Blank();
  moved.Place(box, {7, 3});
  const struct {
    const char* what;
    QImage image;
    std::vector<SheetPoint> seen, free;
  } cases[] = {
      {"box", Painted(box), {{20.2, 10.2}, {49.8, 24.8}}, {{19.8, 11}, {50.2, 11}, {21, 9.8}, {21, 25.2}}},
      {"placed", Painted(moved), {{27.2, 13.2}, {56.8, 27.8}}, {{26.8, 14}, {57.2, 14}, {28, 12.8}}},
      {"thick",
       line({.width = 2}),
       {{19.4, 30}, {60.6, 30}, {40, 29.2}, {40, 30.8}},
       {{40, 28.8}, {40, 31.2}}},
      {"thin", line({.width = 0.01}), {{40, 30}}, {{19.7, 30}, {60.4, 30}, {40, 29.7}}},
      {"dashed", line({.width = 0.5, .dashed = true}), {{21, 30}, {24.5, 30}}, {{22.8, 30}, {26.2, 30}}},
      {"arrow",
       line({.ends = LineEnds::kOneArrow}),
       {{58, 30.3}, {58, 29.7}, {59.5, 30}},
       {{60.3, 30}, {22, 30.3}, {57, 30.3}, {58, 30.6}}},
      {"arrows", line({.ends = LineEnds::kTwoArrows}), {{58, 30.3}, {22, 30.3}, {22, 29.7}}, {{19.7, 30}}},
  };
  for (const auto& c : cases) {
    for (const auto& [x, y] : c.seen) EXPECT_TRUE(IsSeen(c.image, x, y)) << c.what << " " << x << ", " << y;
    for (const auto& [x, y] : c.free) EXPECT_FALSE(IsSeen(c.image, x, y)) << c.what << " " << x << ", " << y;
  }
  const auto colour = [&](Ground ground) { return Painted(box, ground).pixelColor(300, 350).lightness(); };
  EXPECT_LT(colour(Ground::kPaper), 100);
  EXPECT_GT(colour(Ground::kDark), 150) << "a light one, seen on a dark ground";
}

TEST(SheetPainter, TextsStandAtTheirPointBySide) {
  const auto text = [](const TextStyle& style) {
    Sheet sheet = Blank();
    sheet.Text(style, {50, 30}, "HHHH");
    return Around(Painted(sheet));
  };
  const QRectF left = text({.size = 6});
  EXPECT_NEAR(left.left(), 50, 0.8);
  EXPECT_NEAR(left.bottom(), 30, 0.3);
  EXPECT_NEAR(left.height(), 4.4, 0.6);
  EXPECT_NEAR(text({.size = 6, .side = TextSide::kMiddle}).center().x(), 50, 0.3);
  EXPECT_NEAR(text({.size = 6, .side = TextSide::kRight}).right(), 50, 0.8);
  EXPECT_NE(text({.size = 6, .bold = true}), left);
  const QRectF up = text({.size = 6, .upwards = true});
  EXPECT_NEAR(up.right(), 50, 0.3);
  EXPECT_NEAR(up.bottom(), 30, 0.8);
  EXPECT_NEAR(up.height(), left.width(), 0.3);
}

TEST(QtPrinter, RendersAPictureAndADocumentOfTheSheetsSize) {
  Sheet sheet(148, 210);
  sheet.Box(Ink::kElement, 0, 0, 74, 210);
  const Sheet pages[] = {sheet, sheet};
  QtPrinter printer;
  const auto png = printer.Render(pages, SheetFormat::kPng, "Spacing");
  ASSERT_TRUE(png);
  const QImage image = QImage::fromData(QByteArray::fromStdString(*png), "PNG");
  EXPECT_EQ(image.size(), QSize(1165, 1654)) << "200 dots an inch";
  EXPECT_NEAR(image.dotsPerMeterX(), 7874, 1);
  EXPECT_NEAR(image.dotsPerMeterY(), 7874, 1);
  EXPECT_EQ(image.text("Title"), "Spacing");
  EXPECT_TRUE(IsInk(image, 578, 1650));
  EXPECT_EQ(image.pixelColor(588, 1650), QColor(Qt::white));

  const auto pdf = printer.Render(pages, SheetFormat::kPdf, "Spacing");
  ASSERT_TRUE(pdf);
  const QByteArray document = QByteArray::fromStdString(*pdf);
  EXPECT_EQ(document.count("/Type /Page\n"), 2);
  EXPECT_EQ(document.count("/MediaBox [0 0 420"), 2) << "A5, in points";
  EXPECT_TRUE(document.contains(QByteArray("S\0p\0a\0c\0i\0n\0g", 13)));
  const Sheet none[] = {Sheet()};
  EXPECT_EQ(printer.Render(none, SheetFormat::kPng, ""), std::nullopt);
}

class DrawingForm : public Form {
 public:
  explicit DrawingForm(Windows& windows) : Form(windows, "Draws", FormPlace::kWindow) {}
  Drawing drawing{*this, "drawing"};
};

TEST(DrawingOnScreen, ANoteStandsOverAFaintDrawingUntilTheNext) {
  Screen screen;
  screen.Add<DrawingForm>("Draws", {"Draws", WindowStyle::kDialog, {}});
  Drawing& drawing = screen.Show<DrawingForm>("Draws").drawing;
  Sheet sheet = Blank();
  sheet.Box(Ink::kElement, 0, 0, 100, 60);
  QWidget& widget = screen.hands.Widget("Draws", "drawing");
  const auto shown = [&] {
    screen.desktop.Flush();
    return widget.grab().toImage();
  };
  const auto lightness = [&] {
    return shown().pixelColor(widget.width() / 2, widget.height() / 4).lightness();
  };
  EXPECT_GT(lightness(), 200) << "nothing yet";
  drawing.SetSheet(sheet);
  EXPECT_LT(lightness(), 100);
  const QImage strong = shown();
  drawing.SetNote("The inputs have changed");
  EXPECT_GT(lightness(), 180);
  const QImage noted = shown();
  drawing.SetNote("They have changed");
  EXPECT_NE(shown(), noted) << "the note itself is seen";
  EXPECT_EQ(widget.accessibleDescription(), "They have changed");
  drawing.SetSheet(sheet);
  EXPECT_EQ(shown(), strong);
  EXPECT_EQ(widget.accessibleDescription(), "");
}

}  // namespace
}  // namespace vlt::test
