// SPDX-License-Identifier: GPL-3.0-or-later
// Grids and status bars.
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QResizeEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QTableWidget>
#include <vector>

#include "desktop/binding_kinds.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

constexpr int kUnitsPerPixel = 15;   // of a grid's widths
constexpr int kNarrowColumn = 1200;  // a mark or a digit, not a text
constexpr int kRowRoom = 6;          // above and below the text of a row that can be chosen
constexpr int kLongText = 24;        // characters that may not have room in a column
constexpr int kPanelMargin = 6;      // between the frame of a panel and its text

// Row 0 of the control is the head of the table.
class GridBinding : public Binding {
 public:
  GridBinding(Grid& grid, BindContext& context, QWidget* parent)
      : Binding(grid, context, new QTableWidget(0, grid.Columns(), parent)),
        grid_(grid),
        widths_(static_cast<std::size_t>(grid.Columns())) {
    View()->setEditTriggers(QAbstractItemView::NoEditTriggers);
    View()->setSelectionMode(QAbstractItemView::ContiguousSelection);
    View()->setAlternatingRowColors(true);
    View()->verticalHeader()->hide();
    View()->horizontalHeader()->setStretchLastSection(true);
    for (int column = 0; column < grid.Columns(); ++column) {
      View()->setHorizontalHeaderItem(column, new QTableWidgetItem);
    }
    if (grid_.on_choose) LetChoose();
    if (grid_.IsDense()) FitDense();
  }

 private:
  QTableWidget* View() const { return static_cast<QTableWidget*>(Widget()); }

  // Whole rows, one at a time, by a click or the arrow keys. The window is as large as the table asks.
  void LetChoose() {
    View()->setSelectionMode(QAbstractItemView::SingleSelection);
    View()->setSelectionBehavior(QAbstractItemView::SelectRows);
    MakeDense();
    View()->setMinimumWidth(grid_.Width() / kUnitsPerPixel);
    View()->setFixedHeight(grid_.Height() / kUnitsPerPixel);
    connect(View(), &QTableWidget::cellClicked, this, [this](int row) { Choose(row); });
    connect(View(), &QTableWidget::currentCellChanged, this, [this](int row) { Choose(row); });
  }

  // Rows as high as their text.
  void MakeDense() {
    View()->horizontalHeader()->setHighlightSections(false);
    View()->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    View()->verticalHeader()->setDefaultSectionSize(View()->fontMetrics().height() + kRowRoom);
  }

  // Columns that need no scrolling; one that follows is as high as there is room.
  void FitDense() {
    MakeDense();
    const QStyle& style = *View()->style();
    const int beside = style.pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * View()->frameWidth();
    View()->setMinimumSize(grid_.Width() / kUnitsPerPixel + beside, grid_.Height() / kUnitsPerPixel);
    if (grid_.Follows()) View()->setMaximumHeight(QWIDGETSIZE_MAX);
  }

  // Rows go from the top, and what is in view stays in view: its scroll bar counts pixels.
  void PushDropped() {
    const auto gone = static_cast<int>(qMin<qint64>(grid_.DroppedRows() - dropped_, View()->rowCount()));
    dropped_ = grid_.DroppedRows();
    if (gone <= 0) return;
    const int above = gone * View()->verticalHeader()->defaultSectionSize();
    QScrollBar* bar = View()->verticalScrollBar();
    const int at = bar->value();
    View()->model()->removeRows(0, gone);
    keep_at_ = qMax(at - above, 0);
  }

  void Choose(int row) {
    if (row >= 0) Gesture([&] { grid_.Choose(row + 1); });
  }

  void PushChoice() {
    const int row = grid_.SelectedRow() - 1;
    if (row >= 0 && View()->currentRow() != row) View()->setCurrentCell(row, 0);
    if (row < 0) View()->clearSelection();
  }

  void PushState() override {
    const QSignalBlocker quiet(View());
    const QScrollBar* bar = View()->verticalScrollBar();
    const bool at_end = bar->value() >= bar->maximum();
    PushDropped();
    const int rows = qMax(grid_.Rows() - 1, 0);
    // Fewer rows drop their items, and new ones come without.
    if (View()->rowCount() != rows) View()->setRowCount(rows);
    for (int column = 0; column < grid_.Columns(); ++column) PushColumn(column);
    if (grid_.on_choose) PushChoice();
    if (grid_.Follows()) PushPlace(at_end);
  }

  void PushPlace(bool at_end) {
    if (at_end) {
      View()->scrollToBottom();
    } else if (keep_at_ >= 0) {
      View()->verticalScrollBar()->setValue(keep_at_);
    }
    keep_at_ = -1;
  }

  void PushColumn(int column) {
    const int width = grid_.ColumnWidth(column);
    View()->setColumnHidden(column, width == 0);
    // Only a new width: the operator may have dragged the column to another one.
    if (width > 0 && widths_[static_cast<std::size_t>(column)] != width) {
      View()->setColumnWidth(column, width / kUnitsPerPixel);
    }
    widths_[static_cast<std::size_t>(column)] = width;
    const Qt::Alignment alignment =
        width < kNarrowColumn ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter;
    if (grid_.Rows() > 0) PushCell(*View()->horizontalHeaderItem(column), grid_.Cell(0, column), alignment);
    for (int row = 1; row < grid_.Rows(); ++row) {
      if (View()->item(row - 1, column) == nullptr) View()->setItem(row - 1, column, new QTableWidgetItem);
      PushCell(*View()->item(row - 1, column), grid_.Cell(row, column), alignment);
    }
  }

  static void PushCell(QTableWidgetItem& item, const std::string& text, Qt::Alignment alignment) {
    const QString shown = ToQt(text);
    if (item.text() != shown) {
      item.setText(shown);
      // As rich text it is broken into lines.
      item.setToolTip(shown.size() < kLongText ? QString() : "<qt>" + shown.toHtmlEscaped() + "</qt>");
    }
    if (item.textAlignment() != static_cast<int>(alignment)) item.setTextAlignment(alignment);
  }

  Grid& grid_;
  std::vector<int> widths_;  // that were pushed
  qint64 dropped_ = 0;       // rows, that were taken away
  int keep_at_ = -1;         // where the scroll bar belongs; -1 where it is
};

// One panel: a text that gives way to dots when it has no room, and then shows whole in a tooltip.
class Panel : public QLabel {
 public:
  using QLabel::QLabel;
  void SetText(const QString& text) {
    text_ = text;
    Elide();
  }
  QString FullText() const { return text_; }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QLabel::resizeEvent(event);
    Elide();
  }

 private:
  void Elide() {
    const QString line = QString(text_).replace('\n', ' ');
    const QString shown =
        fontMetrics().elidedText(line, Qt::ElideRight, contentsRect().width() - 2 * kPanelMargin);
    setText(shown);
    setToolTip(shown == line ? QString() : text_);
  }
  QString text_;
};

class StatusBarBinding : public Binding {
 public:
  StatusBarBinding(StatusBar& bar, BindContext& context, QWidget* parent)
      : Binding(bar, context, new QWidget(parent)), bar_(bar) {
    auto* layout = new QHBoxLayout(Widget());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    for (int number = 1; number <= bar.PanelCount(); ++number) AddPanel(layout, number);
  }

 private:
  void AddPanel(QHBoxLayout* layout, int number) {
    auto* panel = new Panel(Widget());
    panel->setObjectName(QString("panel%1").arg(number));
    panel->setTextFormat(Qt::PlainText);
    panel->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    panel->setMargin(kPanelMargin / 2);
    panel->setIndent(kPanelMargin / 2);
    if (number == 1) {
      // Its text must never widen the window.
      panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    } else {
      panel->setAlignment(Qt::AlignCenter);
    }
    layout->addWidget(panel, number == 1 ? 1 : 0);
    panels_.push_back(panel);
  }

  void PushState() override {
    for (std::size_t i = 0; i < panels_.size(); ++i) {
      const QString text = ToQt(bar_.Panel(static_cast<int>(i) + 1));
      if (i > 0) FitPanel(*panels_[i], text);
      if (panels_[i]->FullText() != text) panels_[i]->SetText(text);
    }
  }

  // The short panels never shrink, so that the bar stands still.
  void FitPanel(Panel& panel, const QString& text) {
    const int margins = 2 * (kPanelMargin + panel.frameWidth()) + 2;
    panel.setMinimumWidth(qMax(panel.minimumWidth(), panel.fontMetrics().horizontalAdvance(text) + margins));
  }

  StatusBar& bar_;
  std::vector<Panel*> panels_;
};

}  // namespace

std::unique_ptr<Binding> BindGrid(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<GridBinding>(static_cast<Grid&>(control), context, parent);
}

std::unique_ptr<Binding> BindStatusBar(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<StatusBarBinding>(static_cast<StatusBar&>(control), context, parent);
}

}  // namespace vlt
