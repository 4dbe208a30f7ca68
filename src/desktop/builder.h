// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the widgets of a window from its layout table.
#pragma once

#include <QPointer>
#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "desktop/binding.h"
#include "desktop/layout.h"

class QGridLayout;
class QHBoxLayout;
class QLabel;
class QStackedWidget;
class QVBoxLayout;

namespace vlt {

class Form;

// Grids that lie above each other share the widths of their columns.
using AlignedGrids = std::vector<QGridLayout*>;

// What a table has become.
struct BuiltWindow {
  std::vector<std::unique_ptr<Binding>> bindings;
  std::vector<AlignedGrids> aligned;
  QStackedWidget* page_area = nullptr;  // of kPageArea
  QLabel* page_title = nullptr;         // above it
  std::vector<std::string> unknown;     // names of the table that no control has
  std::vector<std::string> unplaced;    // controls that the table does not name; they lie at the end
};

// Gives the columns of the grids the width that the widest cell of each needs.
void AlignColumns(const AlignedGrids& grids);

class Builder {
 public:
  // `text` looks up the titles that a table gives by id.
  Builder(Form& form, BindContext& context, std::function<QString(int)> text);

  // Fills `root`, which must be empty. `items` may be empty: all controls then lie one below the other.
  BuiltWindow Build(std::span<const LayoutItem> items, QWidget* root);

 private:
  // A container that is open: what it lies in, where its flow goes and the grid that takes the next row.
  struct Open {
    LayoutKind kind;
    Open* outer = nullptr;  // null for the window itself
    QWidget* parent = nullptr;
    QVBoxLayout* flow = nullptr;
    QHBoxLayout* columns = nullptr;
    QWidget* tabs = nullptr;
    int next_tab = 0;
    QGridLayout* grid = nullptr;
    std::size_t aligned = 0;  // which set of grids it belongs to
    bool filled = false;      // something takes the height that is left
  };

  void Add(const LayoutItem& item);
  void AddEach(const LayoutItem& item);
  // Opens a container inside the one on top.
  Open& Enter(LayoutKind kind, QWidget* parent);
  void OpenColumns();
  void OpenColumn(int stretch);
  void OpenGroup(const LayoutItem& item);
  void OpenTabs(const LayoutItem& item);
  void OpenTab();
  void Close();
  void CloseColumn();
  void AddRow(const LayoutItem& item);
  void AddStrip(const LayoutItem& item);
  void AddSpace();
  void AddWide(const LayoutItem& item);
  void AddText(const LayoutItem& item);
  void AddNavigation(const LayoutItem& item);
  void AddPageArea();
  void OpenEmptyPage();
  void SetBackdrop(const LayoutItem& item);
  void AddUnplaced();

  // The widget of a control; null, and noted, when the form has none of this name or it has no widget.
  QWidget* Make(std::string_view name, ControlKind* kind = nullptr);
  void Place(QWidget* widget, ControlKind kind, QGridLayout* grid, int row, int column, bool last);
  Open& Top() { return *open_.back(); }
  void ReleaseWidth();
  void PlaceCell(const LayoutItem& item, QWidget* widget, ControlKind kind, QGridLayout* grid, int row,
                 int column);
  // What an entry of these cells has room for.
  int CellTextWidth(const LayoutItem& item, const QWidget& cell) const;
  std::size_t NewAlignment();

  Form& form_;
  BindContext& context_;
  std::function<QString(int)> text_;
  BuiltWindow built_;
  std::vector<std::unique_ptr<Open>> open_;
};

}  // namespace vlt
