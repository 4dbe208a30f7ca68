// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of the comparison in the window: what is listed, ticked, counted, and told of the chosen one.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "compare/frm_compare.h"
#include "compare/row_list.h"

namespace vlt {

class CompareRows : public FormPart, public SidesShown {
 public:
  // Of an open window.
  static CompareRows& Of(const Form& window) { return *window.Part<CompareRows>(); }
  CompareRows(App& app, frmCompare& window);

  void Form_Load() override;

  void Compare(const std::optional<CompareSide>& left, const std::optional<CompareSide>& right,
               bool same) override;
  // The rows that are shown; null while a side is missing.
  const RowList* Shown() const { return list_ ? &*list_ : nullptr; }
  RowFilter Filter() const;
  // The right side is a meter, to which rows can be sent; a box says so otherwise.
  bool HasTarget();
  // Behind HasTarget(): how the sending of a row has ended, all of which is forgotten ahead of the next one,
  // and what was sent is listed when there is any.
  void SetResult(const SentRow& sent);
  void ForgetResults() { list_->ForgetResults(); }
  void ShowSent();

  // Which rows are listed, in the order of RowFilter.
  ControlArray<OptionButton> optFilter{Whole(), "optFilter", Indexes(kRowFilters)};
  Label lblCounts{Whole(), "lblCounts"};
  Label lblChosen{Whole(), "lblChosen"};
  Grid grdRows;
  StatusBar stbRow{Whole(), "stbRow", 1};    // the chosen row: name, register, bytes
  StatusBar stbNote{Whole(), "stbNote", 1};  // what is told of it
  PushButton cmdTickDifferent{Whole(), "cmdTickDifferent"};
  PushButton cmdTickNone{Whole(), "cmdTickNone"};

 private:
  // A line of the grid, from row 1 on.
  struct Line {
    enum class Kind { kTitle, kRow, kRemark };
    Kind kind = Kind::kRow;
    std::vector<std::size_t> rows;  // one, or those beneath a title
    std::string text;               // of a title or a remark
  };
  void SetFilter(RowFilter filter);
  void ShowRows();
  void ShowCounts();
  void AddRemarks(const CompareSide& side, int name);
  const Line& LineAt(int at) const { return lines_[static_cast<std::size_t>(at) - 1]; }
  void ShowLine(int at);
  RowTick TickOf(const Line& line) const;
  std::optional<std::size_t> ChosenRow() const;
  void ShowTicks();
  void grdRows_Choose();
  void grdRows_Tick(int at);
  void cmdTickDifferent_Click();
  void cmdTickNone_Click();

  App& app_;
  frmCompare& window_;
  std::optional<RowList> list_;
  std::vector<Line> lines_;
};

}  // namespace vlt
