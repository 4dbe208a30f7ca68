// SPDX-License-Identifier: GPL-3.0-or-later
// Grids: tables of texts, of which a row may be chosen, ticked, or stand out.
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QTableWidget>
#include <QToolTip>
#include <span>
#include <vector>

#include "desktop/binding_kinds.h"
#include "desktop/layout.h"
#include "desktop/qt_text.h"

namespace vlt {
namespace {

constexpr int kUnitsPerPixel = 15;   // of a grid's widths
constexpr int kNarrowColumn = 1200;  // a mark or a digit, not a text
constexpr int kRowRoom = 6;          // above and below the text of a row that can be chosen
constexpr int kLeastHeight = 160;    // of a grid that takes the room that there is

bool IsSpanned(RowStyle style) { return style == RowStyle::kTitle || style == RowStyle::kNote; }
bool IsBold(RowStyle style) { return style == RowStyle::kTitle || style == RowStyle::kStrong; }

Qt::CheckState CheckStateOf(RowTick tick) {
  if (tick == RowTick::kOn) return Qt::Checked;
  return tick == RowTick::kSome ? Qt::PartiallyChecked : Qt::Unchecked;
}

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
    View()->viewport()->installEventFilter(this);
    if (grid_.on_choose) LetChoose();
    if (grid_.on_tick) LetTick();
    if (grid_.IsDense()) MakeDense();
    Fit(grid_.Width(), grid_.Height());
  }

  void TakeShape(const GridShape& shape) override {
    columns_ = shape.columns;
    if (grid_.Width() == Grid::kOfLayout) Fit(shape.width, shape.height);
    MarkForRefresh();
  }

 private:
  QTableWidget* View() const { return static_cast<QTableWidget*>(Widget()); }

  // Whole rows, one at a time, by a click or the arrow keys.
  void LetChoose() {
    View()->setSelectionMode(QAbstractItemView::SingleSelection);
    View()->setSelectionBehavior(QAbstractItemView::SelectRows);
    MakeDense();
    View()->setTabKeyNavigation(false);
    connect(View(), &QTableWidget::cellClicked, this, [this](int row) { Choose(row); });
    connect(View(), &QTableWidget::currentCellChanged, this, [this](int row) { Choose(row); });
  }

  // Rows as high as their text.
  void MakeDense() {
    View()->horizontalHeader()->setHighlightSections(false);
    View()->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    View()->verticalHeader()->setDefaultSectionSize(View()->fontMetrics().height() + kRowRoom);
  }

  // The window is as large as the tables ask. A dense one needs no scrolling to the side; one that follows is
  // as high as there is room.
  void Fit(int width, int height) {
    const QSize room(qMax(width, 0) / kUnitsPerPixel, qMax(height, 0) / kUnitsPerPixel);
    if (grid_.on_choose) {
      View()->setMinimumWidth(room.width());
      room.height() > 0 ? View()->setFixedHeight(room.height()) : View()->setMinimumHeight(kLeastHeight);
    }
    if (!grid_.IsDense()) return;
    const int beside = View()->style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * View()->frameWidth();
    View()->setMinimumSize(room.width() + beside, room.height());
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
    styles_.erase(styles_.begin(), styles_.begin() + gone);
    keep_at_ = qMax(at - above, 0);
  }

  // A click on the box, or the space bar on the row.
  void LetTick() {
    View()->installEventFilter(this);
    connect(View(), &QTableWidget::itemChanged, this, [this](const QTableWidgetItem* item) {
      if (item->column() == 0) Tick(item->row() + 1, item->checkState() == Qt::Checked);
    });
  }

  void Choose(int row) {
    if (row >= 0) Gesture([&] { grid_.Choose(row + 1); });
  }

  void Tick(int row, bool on) {
    Gesture([&] { on ? grid_.Tick(row) : grid_.Untick(row); });
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == View() && event->type() == QEvent::KeyPress) {
      return static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Space && TickCurrent();
    }
    if (event->type() == QEvent::ToolTip && View() != nullptr && watched == View()->viewport()) {
      return TellCut(static_cast<const QHelpEvent&>(*event));
    }
    return false;
  }

  // False where there is no box to tick.
  bool TickCurrent() {
    const int row = View()->currentRow() + 1;
    if (row < 1 || row >= grid_.Rows() || grid_.Ticked(row) == RowTick::kNoBox) return false;
    Tick(row, grid_.Ticked(row) != RowTick::kOn);
    return true;
  }

  // A cell that has no room for its text tells it whole; as rich text it is broken into lines.
  bool TellCut(const QHelpEvent& event) {
    const QTableWidgetItem* item = View()->itemAt(event.pos());
    if (item == nullptr) return false;
    const QModelIndex index = View()->model()->index(item->row(), item->column());
    const bool cut = View()->sizeHintForIndex(index).width() > View()->visualRect(index).width();
    QToolTip::showText(event.globalPos(), cut ? "<qt>" + item->text().toHtmlEscaped() + "</qt>" : QString(),
                       View()->viewport());
    return true;
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
    PushLooks(rows);
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

  int WidthOf(int column) const {
    const auto at = static_cast<std::size_t>(column);
    const bool by_layout = grid_.ColumnWidth(column) == Grid::kOfLayout && at < columns_.size();
    return by_layout ? columns_[at] : grid_.ColumnWidth(column);
  }

  void PushColumn(int column) {
    const int width = WidthOf(column);
    View()->setColumnHidden(column, width == 0);
    // Only a new width: the operator may have dragged the column to another one.
    if (width > 0 && widths_[static_cast<std::size_t>(column)] != width) {
      View()->setColumnWidth(column, width / kUnitsPerPixel);
    }
    widths_[static_cast<std::size_t>(column)] = width;
    const Qt::Alignment alignment =
        width > 0 && width < kNarrowColumn ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignVCenter;
    if (grid_.Rows() > 0) PushCell(*View()->horizontalHeaderItem(column), grid_.Cell(0, column), alignment);
    for (int row = 1; row < grid_.Rows(); ++row) {
      if (View()->item(row - 1, column) == nullptr) View()->setItem(row - 1, column, new QTableWidgetItem);
      PushCell(*View()->item(row - 1, column), grid_.Cell(row, column), alignment);
    }
  }

  static void PushCell(QTableWidgetItem& item, const std::string& text, Qt::Alignment alignment) {
    const QString shown = ToQt(text);
    if (item.text() != shown) item.setText(shown);
    if (item.textAlignment() != static_cast<int>(alignment)) item.setTextAlignment(alignment);
  }

  // What has changed of styles and boxes since they were pushed last; new rows come plain. `rows` without the
  // head.
  void PushLooks(int rows) {
    styles_.resize(static_cast<std::size_t>(rows), RowStyle::kPlain);
    for (int row = 0; row < rows; ++row) {
      PushBox(*View()->item(row, 0), grid_.Ticked(row + 1));
      RowStyle& pushed = styles_[static_cast<std::size_t>(row)];
      const RowStyle style = grid_.Style(row + 1);
      if (pushed == style) continue;
      pushed = style;
      PushStyle(row, style);
    }
  }

  void PushStyle(int row, RowStyle style) {
    const int columns = IsSpanned(style) ? grid_.Columns() : 1;
    if (View()->columnSpan(row, 0) != columns) View()->setSpan(row, 0, 1, columns);
    const QBrush ground = style == RowStyle::kTitle ? View()->palette().brush(QPalette::Button) : QBrush();
    for (int column = 0; column < grid_.Columns(); ++column) {
      QTableWidgetItem& item = *View()->item(row, column);
      QFont font = item.font();
      font.setBold(IsBold(style));
      item.setFont(font);
      item.setBackground(ground);
    }
  }

  static void PushBox(QTableWidgetItem& item, RowTick tick) {
    const QVariant held = item.data(Qt::CheckStateRole);
    if (tick == RowTick::kNoBox) {
      if (held.isValid()) item.setData(Qt::CheckStateRole, QVariant());
    } else if (!held.isValid() || held.toInt() != CheckStateOf(tick)) {
      item.setCheckState(CheckStateOf(tick));
    }
  }

  Grid& grid_;
  std::span<const int> columns_;  // widths by the layout; empty where it has none
  std::vector<int> widths_;       // that were pushed
  std::vector<RowStyle> styles_;  // that were pushed, without the head
  qint64 dropped_ = 0;            // rows that were taken away
  int keep_at_ = -1;              // where the scroll bar belongs; -1 where it is
};

}  // namespace

std::unique_ptr<Binding> BindGrid(Control& control, BindContext& context, QWidget* parent) {
  return std::make_unique<GridBinding>(static_cast<Grid&>(control), context, parent);
}

}  // namespace vlt
