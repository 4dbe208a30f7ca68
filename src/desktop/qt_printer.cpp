// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/qt_printer.h"

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include "desktop/fonts.h"
#include "desktop/qt_text.h"
#include "desktop/sheet_painter.h"

namespace vlt {
namespace {

constexpr double kMmAnInch = 25.4;
constexpr int kPictureDpi = 200;
constexpr int kPdfDpi = 600;

SheetLook OnPaper() { return {BaseFont(), Ground::kPaper}; }

QPageLayout LayoutOf(const Sheet& sheet) {
  const QPageSize size(QSizeF(sheet.Width(), sheet.Height()), QPageSize::Millimeter, QString(),
                       QPageSize::FuzzyMatch);
  QPageLayout layout(size, QPageLayout::Portrait, QMarginsF());
  layout.setMode(QPageLayout::FullPageMode);
  return layout;
}

bool PaintOn(QPagedPaintDevice& device, std::span<const Sheet> pages) {
  QPainter painter;
  if (!painter.begin(&device)) return false;
  for (const Sheet& sheet : pages) {
    if (&sheet != pages.data() && !device.newPage()) return false;
    PaintSheet(painter, sheet, QRectF(0, 0, device.width(), device.height()), OnPaper());
  }
  return painter.end();
}

bool WritePdf(std::span<const Sheet> pages, const QString& title, QBuffer& into) {
  QPdfWriter writer(&into);
  writer.setTitle(title);
  writer.setCreator(QApplication::applicationName());
  writer.setResolution(kPdfDpi);
  writer.setPageLayout(LayoutOf(pages.front()));
  return PaintOn(writer, pages);
}

bool WritePng(const Sheet& sheet, const QString& title, QBuffer& into) {
  const double dots = kPictureDpi / kMmAnInch;
  QImage image(QSizeF(sheet.Width() * dots, sheet.Height() * dots).toSize(), QImage::Format_RGB32);
  if (image.isNull()) return false;
  image.fill(Qt::white);
  image.setDotsPerMeterX(static_cast<int>(dots * 1000));
  image.setDotsPerMeterY(static_cast<int>(dots * 1000));
  image.setText("Title", title);
  QPainter painter(&image);
  PaintSheet(painter, sheet, QRectF(image.rect()), OnPaper());
  painter.end();
  return image.save(&into, "PNG");
}

}  // namespace

PrintOutcome QtPrinter::Print(std::span<const Sheet> pages, const std::string& title) {
  if (QPrinterInfo::availablePrinters().isEmpty()) return PrintOutcome::kNoPrinter;
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(ToQt(title));
  printer.setPageLayout(LayoutOf(pages.front()));
  QPrintDialog dialog(&printer, QApplication::activeWindow());
  dialog.setOption(QAbstractPrintDialog::PrintPageRange, false);
  if (dialog.exec() != QDialog::Accepted) return PrintOutcome::kCancelled;
  printer.setFullPage(true);
  return PaintOn(printer, pages) && printer.printerState() != QPrinter::Error ? PrintOutcome::kPrinted
                                                                              : PrintOutcome::kFailed;
}

std::optional<std::string> QtPrinter::Render(std::span<const Sheet> pages, SheetFormat format,
                                             const std::string& title) {
  QBuffer buffer;
  buffer.open(QIODevice::WriteOnly);
  const bool done = format == SheetFormat::kPdf ? WritePdf(pages, ToQt(title), buffer)
                                                : WritePng(pages.front(), ToQt(title), buffer);
  if (!done) return std::nullopt;
  return buffer.data().toStdString();
}

}  // namespace vlt
