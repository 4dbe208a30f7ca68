// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/builder.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStringList>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/bind.h"
#include "desktop/fonts.h"
#include "desktop/qt_text.h"
#include "window/form.h"

namespace vlt {
namespace {

constexpr int kMargin = 10;
constexpr int kGap = 8;
constexpr int kRowGap = 5;
constexpr int kCellGap = 4;
constexpr int kCellRowGap = 2;
constexpr int kEntryWidth = 100;
constexpr int kUnitWidth = 58;
constexpr const char* kWidestCell = "-12345678.12345";     // a total with its sign
constexpr const char* kWidestTotal = "-123456789012.345";  // as many digits as a number text has
constexpr int kCellFrame = 12;                             // beside the text of an entry
constexpr int kButtonWidth = 96;
constexpr int kNavigationWidth = 168;
constexpr int kNavigationHeight = 38;
constexpr int kColumnWidth = 620;  // wider columns would tear captions and entries apart
constexpr int kTextWidth = 860;    // the least of a text of several lines
constexpr std::string_view kStretch = ">";
constexpr char kTitleMark = '*';

QVBoxLayout* NewFlow(QWidget* parent, int margin) {
  auto* flow = new QVBoxLayout(parent);
  flow->setContentsMargins(margin, margin, margin, margin);
  flow->setSpacing(kGap);
  return flow;
}

// The name with `number` for each '#'.
std::string Numbered(std::string_view name, int number) {
  std::string text;
  for (const char letter : name) text += letter == '#' ? std::to_string(number) : std::string(1, letter);
  return text;
}

bool IsPlacedByBuilder(const Control& control) {
  return control.Kind() != ControlKind::kTimer && control.Kind() != ControlKind::kMenuItem;
}

// What a cell needs. A label that was given a least width may still need more for its text.
int CellWidth(QLayoutItem& item) {
  const int least = item.minimumSize().width();
  const auto* label = qobject_cast<const QLabel*>(item.widget());
  return label == nullptr || label->isHidden() ? least : std::max(least, label->minimumSizeHint().width());
}

}  // namespace

void AlignColumns(const AlignedGrids& grids) {
  std::vector<int> widths;
  for (QGridLayout* grid : grids) {
    for (int i = 0; i < grid->count(); ++i) {
      int row = 0, column = 0, rows = 0, columns = 0;
      grid->getItemPosition(i, &row, &column, &rows, &columns);
      if (columns != 1) continue;
      if (static_cast<int>(widths.size()) <= column) widths.resize(static_cast<std::size_t>(column) + 1);
      int& width = widths[static_cast<std::size_t>(column)];
      width = std::max(width, CellWidth(*grid->itemAt(i)));
    }
  }
  for (QGridLayout* grid : grids) {
    for (std::size_t column = 0; column < widths.size(); ++column) {
      grid->setColumnMinimumWidth(static_cast<int>(column), widths[column]);
    }
  }
}

Builder::Builder(Form& form, BindContext& context, std::function<QString(int)> text)
    : form_(form), context_(context), text_(std::move(text)) {}

BuiltWindow Builder::Build(std::span<const LayoutItem> items, QWidget* root) {
  Enter(LayoutKind::kColumn, root).flow = NewFlow(root, kMargin);
  Top().aligned = NewAlignment();
  for (const LayoutItem& item : items) AddEach(item);
  AddUnplaced();
  return std::move(built_);
}

void Builder::AddEach(const LayoutItem& item) {
  if (item.last == 0) return Add(item);
  for (int number = item.first; number <= item.last; ++number) {
    std::array<std::string, kLayoutNames> names;
    LayoutItem row = item;
    for (std::size_t i = 0; i < names.size(); ++i) {
      names[i] = Numbered(item.names[i], number);
      row.names[i] = names[i];
    }
    Add(row);
  }
}

Builder::Open& Builder::Enter(LayoutKind kind, QWidget* parent) {
  Open* outer = open_.empty() ? nullptr : open_.back().get();
  open_.push_back(std::make_unique<Open>(Open{.kind = kind, .outer = outer, .parent = parent}));
  return Top();
}

void Builder::Add(const LayoutItem& item) {
  if (item.kind != LayoutKind::kRow && item.kind != LayoutKind::kCells) Top().grid = nullptr;
  switch (item.kind) {
    case LayoutKind::kColumns:
      return OpenColumns();
    case LayoutKind::kColumn:
      return OpenColumn(1);
    case LayoutKind::kSide:
      return OpenColumn(0);
    case LayoutKind::kGroup:
      return OpenGroup(item);
    case LayoutKind::kTabs:
      return OpenTabs(item);
    case LayoutKind::kTab:
      return OpenTab();
    case LayoutKind::kEnd:
      return Close();
    case LayoutKind::kRow:
    case LayoutKind::kCells:
      return AddRow(item);
    case LayoutKind::kStrip:
      return AddStrip(item);
    case LayoutKind::kWide:
      return AddWide(item);
    case LayoutKind::kText:
      return AddText(item);
    case LayoutKind::kSpace:
      return AddSpace();
    case LayoutKind::kNavigation:
      return AddNavigation(item);
    case LayoutKind::kPageArea:
      return AddPageArea();
    case LayoutKind::kEmptyPage:
      return OpenEmptyPage();
    case LayoutKind::kBackdrop:
      return SetBackdrop(item);
  }
}

std::size_t Builder::NewAlignment() {
  built_.aligned.emplace_back();
  return built_.aligned.size() - 1;
}

void Builder::OpenColumns() {
  Open& columns = Enter(LayoutKind::kColumns, Top().parent);
  columns.columns = new QHBoxLayout;
  columns.columns->setSpacing(kGap);
  columns.outer->flow->addLayout(columns.columns);
}

void Builder::OpenColumn(int stretch) {
  if (Top().kind == LayoutKind::kColumn) CloseColumn();
  Open& column = Enter(LayoutKind::kColumn, new QWidget(Top().parent));
  column.parent->setMaximumWidth(kColumnWidth);
  column.flow = NewFlow(column.parent, 0);
  column.aligned = NewAlignment();
  column.outer->columns->addWidget(column.parent, stretch);
}

void Builder::OpenGroup(const LayoutItem& item) {
  QWidget* box = item.names[0].empty() ? nullptr : Make(item.names[0]);
  if (box == nullptr) box = new QGroupBox(item.text_id != 0 ? text_(item.text_id) : QString(), Top().parent);
  Open& group = Enter(LayoutKind::kGroup, box);
  group.flow = NewFlow(box, kGap);
  group.aligned = group.outer->aligned;
  group.outer->flow->addWidget(box);
}

void Builder::OpenTabs(const LayoutItem& item) {
  QWidget* tabs = Make(item.names[0]);
  if (tabs == nullptr) tabs = new QTabWidget(Top().parent);
  Top().flow->addWidget(tabs, 1);
  Enter(LayoutKind::kTabs, Top().parent).tabs = tabs;
}

void Builder::OpenTab() {
  if (Top().kind == LayoutKind::kTab) open_.pop_back();
  auto* tabs = static_cast<QTabWidget*>(Top().tabs);
  Open& tab = Enter(LayoutKind::kTab, tabs->widget(Top().next_tab++));
  tab.flow = NewFlow(tab.parent, kMargin);
  tab.aligned = NewAlignment();
}

void Builder::Close() {
  const LayoutKind closed = Top().kind;
  // Columns and tabs end together with the last of them.
  if (closed == LayoutKind::kColumn) {
    CloseColumn();
    Top().columns->addStretch();
  } else if (closed == LayoutKind::kTab) {
    open_.pop_back();
  }
  open_.pop_back();
}

void Builder::CloseColumn() {
  if (!Top().filled) Top().flow->addStretch(1);
  open_.pop_back();
}

void Builder::AddSpace() {
  Top().flow->addStretch(1);
  Top().filled = true;
}

QWidget* Builder::Make(std::string_view name, ControlKind* kind) {
  Control* control = form_.Find(name);
  std::unique_ptr<Binding> binding;
  if (control != nullptr) binding = Bind(*control, context_, Top().parent);
  if (binding == nullptr) {
    built_.unknown.emplace_back(name);
    return nullptr;
  }
  if (kind != nullptr) *kind = control->Kind();
  QWidget* widget = binding->Widget();
  built_.bindings.push_back(std::move(binding));
  return widget;
}

void Builder::AddRow(const LayoutItem& item) {
  if (Top().grid == nullptr) {
    Top().grid = new QGridLayout;
    Top().grid->setHorizontalSpacing(kGap);
    Top().grid->setVerticalSpacing(kRowGap);
    Top().flow->addLayout(Top().grid);
    built_.aligned[Top().aligned].push_back(Top().grid);
  }
  QGridLayout* grid = Top().grid;
  const int row = grid->rowCount();
  const auto last = std::find_if(item.names.rbegin(), item.names.rend(), [](auto n) { return !n.empty(); });
  const auto count = item.names.rend() - last;
  for (int column = 0; column < count; ++column) {
    ControlKind kind{};
    const std::string_view name = item.names[static_cast<std::size_t>(column)];
    if (name.empty()) {
      // A free column between others keeps its place beside the grids above and below.
      if (column > 0) grid->addWidget(new QWidget(Top().parent), row, column);
      continue;
    }
    QWidget* widget = Make(name, &kind);
    if (widget == nullptr) continue;
    if (item.kind == LayoutKind::kCells) {
      ReleaseWidth();
      if (item.narrow) built_.bindings.back()->MakeNarrow();
      PlaceCell(item, widget, kind, grid, row, column);
    } else {
      Place(widget, kind, grid, row, column, column + 1 == count);
    }
  }
}

void Builder::Place(QWidget* widget, ControlKind kind, QGridLayout* grid, int row, int column, bool last) {
  if (kind == ControlKind::kComboBox) {
    // A list has no unit and takes that room too.
    widget->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    // Qt would size it by its entries a moment after they change, whatever its cell gives it.
    static_cast<QComboBox*>(widget)->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    widget->setMinimumWidth(kEntryWidth);
    grid->setColumnStretch(column, 1);
    grid->addWidget(widget, row, column, 1, last ? -1 : 1);
    return;
  }
  if (kind == ControlKind::kTextBox) {
    static_cast<QLineEdit*>(widget)->setAlignment(Qt::AlignRight);
    widget->setMinimumWidth(kEntryWidth);
    grid->setColumnStretch(column, 1);
  }
  if (column > 1 && kind == ControlKind::kLabel) widget->setMinimumWidth(kUnitWidth);
  grid->addWidget(widget, row, column);
}

// A table of values is as wide as it needs, and so is the column that it lies in.
void Builder::ReleaseWidth() {
  for (Open* open = &Top(); open->outer != nullptr; open = open->outer) {
    if (open->kind == LayoutKind::kColumn) open->parent->setMaximumWidth(QWIDGETSIZE_MAX);
  }
}

int Builder::CellTextWidth(const LayoutItem& item, const QWidget& cell) const {
  if (!item.narrow) return cell.fontMetrics().horizontalAdvance(kWidestCell);
  const QFontMetrics metrics(NarrowFont(DesktopFont(built_.bindings.back()->Bound().GetFont())));
  return qMax(metrics.horizontalAdvance(kWidestTotal), metrics.horizontalAdvance(text_(item.text_id)));
}

void Builder::PlaceCell(const LayoutItem& item, QWidget* widget, ControlKind kind, QGridLayout* grid, int row,
                        int column) {
  grid->setHorizontalSpacing(kCellGap);
  grid->setVerticalSpacing(kCellRowGap);
  grid->addWidget(widget, row, column);
  if (kind != ControlKind::kTextBox) return;
  static_cast<QLineEdit*>(widget)->setAlignment(Qt::AlignRight);
  widget->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  widget->setMinimumWidth(CellTextWidth(item, *widget) + kCellFrame);
  grid->setColumnStretch(column, 1);
}

void Builder::AddStrip(const LayoutItem& item) {
  auto* strip = new QHBoxLayout;
  strip->setSpacing(kGap);
  Top().flow->addLayout(strip);
  for (const std::string_view name : item.names) {
    if (name.empty()) continue;
    if (name == kStretch) {
      strip->addStretch(1);
      continue;
    }
    ControlKind kind{};
    const bool title = name.front() == kTitleMark;
    QWidget* widget = Make(title ? name.substr(1) : name, &kind);
    if (widget == nullptr) continue;
    if (title) built_.bindings.back()->MakeTitle();
    if (kind == ControlKind::kPushButton) widget->setMinimumWidth(kButtonWidth);
    strip->addWidget(widget);
  }
}

void Builder::AddWide(const LayoutItem& item) {
  if (QWidget* widget = Make(item.names[0])) {
    if (!item.grid.columns.empty()) built_.bindings.back()->TakeShape(item.grid);
    Top().flow->addWidget(widget, 1);
  }
  Open* columns = Top().outer;
  if (Top().kind == LayoutKind::kColumn && columns != nullptr) {
    // The columns around it take the room that is left.
    Top().parent->setMaximumWidth(QWIDGETSIZE_MAX);
    columns->outer->flow->setStretchFactor(columns->columns, 1);
  }
  Top().filled = true;
}

// Neither how much it says nor how long its lines are changes what it asks of the window.
void Builder::AddText(const LayoutItem& item) {
  QWidget* label = Make(item.names[0]);
  if (label == nullptr) return;
  built_.bindings.back()->WrapText();
  const QFont font = DesktopFont(built_.bindings.back()->Bound().GetFont());
  auto* scroll = new QScrollArea(Top().parent);
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setWidgetResizable(true);
  scroll->setWidget(label);
  scroll->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  scroll->setMinimumWidth(kTextWidth);
  const QString lines = QStringList(item.lines, "M").join('\n');
  scroll->setFixedHeight(QFontMetrics(font).size(Qt::TextExpandTabs, lines).height());
  Top().flow->addWidget(scroll);
}

void Builder::AddNavigation(const LayoutItem& item) {
  Top().parent->setFixedWidth(kNavigationWidth);
  Top().filled = true;
  QVBoxLayout* flow = Top().flow;
  flow->setSpacing(kRowGap);
  for (const std::string_view name : item.names) {
    if (name.empty()) continue;
    if (name == kStretch) {
      flow->addStretch(1);
    } else if (QWidget* button = Make(name)) {
      button->setMinimumHeight(kNavigationHeight);
      flow->addWidget(button);
    }
  }
}

void Builder::AddPageArea() {
  built_.page_area = new QStackedWidget(Top().parent);
  Top().parent->setMaximumWidth(QWIDGETSIZE_MAX);
  built_.page_title = new QLabel(Top().parent);
  built_.page_title->setObjectName("pageTitle");
  built_.page_title->setTextFormat(Qt::PlainText);
  Top().flow->addWidget(built_.page_title);
  Top().flow->addWidget(built_.page_area, 1);
  Top().filled = true;
}

// It scrolls, so that what it tells never asks for a larger frame.
void Builder::OpenEmptyPage() {
  auto* scroll = new QScrollArea(built_.page_area);
  scroll->setObjectName("empty");
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setWidgetResizable(true);
  auto* content = new QWidget(scroll);
  scroll->setWidget(content);
  built_.page_area->addWidget(scroll);
  Open& page = Enter(LayoutKind::kEmptyPage, content);
  page.flow = NewFlow(content, kMargin);
  page.aligned = NewAlignment();
}

void Builder::SetBackdrop(const LayoutItem& item) {
  auto* picture = static_cast<QLabel*>(Make(item.names[0]));
  if (picture == nullptr) return;
  const QPixmap pixmap = picture->pixmap();
  Top().parent->setFixedSize(pixmap.deviceIndependentSize().toSize());
  picture->setGeometry(QRect(QPoint(), Top().parent->size()));
  picture->lower();
  Top().flow->addStretch(1);
}

void Builder::AddUnplaced() {
  while (open_.size() > 1) open_.pop_back();
  Top().grid = nullptr;
  for (const Control* control : form_.Controls()) {
    if (!IsPlacedByBuilder(*control)) continue;
    const bool placed = std::any_of(built_.bindings.begin(), built_.bindings.end(),
                                    [&](const auto& binding) { return &binding->Bound() == control; });
    if (placed) continue;
    const std::string name = control->FullName();
    built_.unplaced.push_back(name);
    AddRow(layout::Row(std::string_view(name)));
  }
}

}  // namespace vlt
