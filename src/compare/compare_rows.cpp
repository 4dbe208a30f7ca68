// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/compare_rows.h"

#include <algorithm>

#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"
#include "resources/text_ids_compare_window.h"
#include "values/hex_digits.h"

namespace vlt {
namespace {

constexpr const char* kUnknownValue = "?";

constexpr std::array kHeads = {text::kParameterColumn, text::kLeftColumn, text::kUnitColumn,
                               text::kRightColumn,     text::kUnitColumn, text::kStateColumn,
                               text::kResultColumn};

// A side that has the row and no value for it is not an empty one.
std::string ValueOf(const SideCell& cell) {
  const bool unknown = cell.place.row != nullptr && !cell.Known() && cell.text.empty();
  return unknown ? kUnknownValue : cell.text;
}

}  // namespace

CompareRows::CompareRows(App& app, frmCompare& window)
    : FormPart(window),
      grdRows(window, "grdRows", 1, static_cast<int>(kHeads.size())),
      app_(app),
      window_(window) {
  optFilter.ForEach([this](OptionButton& option) { option.on_click = [this] { ShowRows(); }; });
  grdRows.on_choose = [this] { grdRows_Choose(); };
  grdRows.on_tick = [this](int at) { grdRows_Tick(at); };
  cmdTickDifferent.on_click = [this] { cmdTickDifferent_Click(); };
  cmdTickNone.on_click = [this] { cmdTickNone_Click(); };
}

void CompareRows::Form_Load() {
  Font bold = lblCounts.GetFont();
  bold.bold = true;
  lblCounts.SetFont(bold);
  window_.SetCaptions({{&cmdTickDifferent, text::kTickDifferent}, {&cmdTickNone, text::kTickNone}});
  for (std::size_t i = 0; i < kHeads.size(); ++i) {
    grdRows.SetCell(0, static_cast<int>(i), app_.Text(kHeads[i]));
  }
  optFilter(0).SetValue(true);
  ShowRows();
}

RowFilter CompareRows::Filter() const {
  int chosen = 0;
  for (int i = 0; i < kRowFilters; ++i) {
    if (optFilter(i).Value()) chosen = i;
  }
  return static_cast<RowFilter>(chosen);
}

void CompareRows::SetFilter(RowFilter filter) {
  OptionButton& option = optFilter(static_cast<int>(filter));
  if (option.Value()) return ShowRows();
  option.SetValue(true);
}

void CompareRows::Compare(const std::optional<CompareSide>& left, const std::optional<CompareSide>& right,
                          bool same) {
  if (!left || !right) {
    list_.reset();
  } else if (same && list_) {
    list_->Renew(Comparison(*left, *right));
  } else {
    list_.emplace(Comparison(*left, *right));
  }
  const bool sent_is_gone = Filter() == RowFilter::kSent && !(list_ && list_->AnyResult());
  if (sent_is_gone) return SetFilter(RowFilter::kAll);
  ShowRows();
}

void CompareRows::SetResult(const SentRow& sent) {
  if (list_->RowOf(sent.place) == list_->Compared().All()) return;
  list_->SetResult(sent);
  ShowRows();
}

void CompareRows::ShowSent() {
  if (list_->AnyResult()) SetFilter(RowFilter::kSent);
}

bool CompareRows::HasTarget() {
  const bool target = list_ && list_->Compared().Right().kind == SideKind::kMeter;
  if (!target) app_.Show(app_.Text(text::kTargetFirst), MessageIcon::kInformation);
  return target;
}

// Lines of files that were not taken stand where somebody looks for what is missing.
void CompareRows::AddRemarks(const CompareSide& side, int name) {
  if (side.remarks.empty()) return;
  lines_.push_back(
      {Line::Kind::kTitle,
       {},
       FormatText(app_.Text(text::kRemarksOf), {app_.Text(name), std::to_string(side.remarks.size())})});
  for (const std::string& remark : side.remarks) lines_.push_back({Line::Kind::kRemark, {}, remark});
}

void CompareRows::ShowRows() {
  const auto kept = ChosenRow();
  lines_.clear();
  if (list_) {
    const RowFilter filter = Filter();
    if (filter == RowFilter::kAll || filter == RowFilter::kUnread) {
      AddRemarks(list_->Compared().Left(), text::kLeftSide);
      AddRemarks(list_->Compared().Right(), text::kRightSide);
    }
    for (RowGroup& group : list_->Groups(filter)) {
      const std::string title =
          FormatText(app_.Text(text::kGroupLine),
                     {group.title, CountText(text::kOneRow, group.rows.size(), app_.state.Spoken()),
                      std::to_string(group.different)});
      lines_.push_back({Line::Kind::kTitle, group.rows, title});
      for (const std::size_t row : group.rows) lines_.push_back({Line::Kind::kRow, {row}, {}});
    }
  }
  grdRows.SetRows(static_cast<int>(lines_.size()) + 1);
  for (int at = 1; at < grdRows.Rows(); ++at) ShowLine(at);
  int chosen = 0;
  for (int at = 1; kept && at < grdRows.Rows(); ++at) {
    const Line& line = LineAt(at);
    if (line.kind == Line::Kind::kRow && line.rows.front() == *kept) chosen = at;
  }
  grdRows.SetSelectedRow(chosen);
  grdRows_Choose();
  ShowCounts();
}

void CompareRows::ShowCounts() {
  for (int i = 0; i < kRowFilters; ++i) {
    const auto filter = static_cast<RowFilter>(i);
    const std::size_t count = list_ ? list_->Count(filter) : 0;
    optFilter(i).SetCaption(FormatText(app_.Text(text::kFilters + i), {std::to_string(count)}));
    optFilter(i).SetEnabled(list_.has_value());
    if (filter == RowFilter::kSent) optFilter(i).SetVisible(list_ && list_->AnyResult());
  }
  lblCounts.SetCaption(list_ ? SummaryText(list_->Compared(), app_.state.Spoken())
                             : app_.Text(text::kBothSidesFirst));
  const std::size_t ticked = list_ ? list_->Chosen().size() : 0;
  const std::size_t hidden = list_ ? list_->Hidden(Filter()) : 0;
  lblChosen.SetCaption(FormatText(app_.Text(hidden == 0 ? text::kRowsChosen : text::kRowsHidden),
                                  {std::to_string(ticked), std::to_string(hidden)}));
}

void CompareRows::ShowLine(int at) {
  const Line& line = LineAt(at);
  std::vector<std::string> cells(static_cast<std::size_t>(grdRows.Columns()));
  RowStyle style = RowStyle::kTitle;
  if (line.kind == Line::Kind::kRow) {
    const ComparisonRow& row = list_->Compared().Rows()[line.rows.front()];
    const Language language = app_.state.Spoken();
    cells = {RowTitle(*row.place.row, language),
             ValueOf(row.left),
             row.left.unit,
             ValueOf(row.right),
             row.right.unit,
             RowStateText(row.state, language),
             list_->Remark(line.rows.front())};
    style = row.state == RowState::kDifferent ? RowStyle::kStrong : RowStyle::kPlain;
  } else {
    cells[0] = line.text;
    if (line.kind == Line::Kind::kRemark) style = RowStyle::kNote;
  }
  grdRows.SetRow(at, cells);
  grdRows.SetStyle(at, style);
  grdRows.SetTicked(at, TickOf(line));
}

// A title has a box when all that differs can be ticked by it.
RowTick CompareRows::TickOf(const Line& line) const {
  if (line.rows.empty()) return RowTick::kNoBox;
  if (line.kind == Line::Kind::kRow) {
    if (!list_->CanSend(line.rows.front())) return RowTick::kNoBox;
    return list_->Ticked(line.rows.front()) ? RowTick::kOn : RowTick::kOff;
  }
  std::size_t batch = 0, batch_ticked = 0, ticked = 0;
  for (const std::size_t row : line.rows) {
    batch += list_->InBatch(row) ? 1 : 0;
    batch_ticked += list_->InBatch(row) && list_->Ticked(row) ? 1 : 0;
    ticked += list_->Ticked(row) ? 1 : 0;
  }
  if (batch == 0) return RowTick::kNoBox;
  if (batch_ticked == batch) return RowTick::kOn;
  return ticked > 0 ? RowTick::kSome : RowTick::kOff;
}

void CompareRows::ShowTicks() {
  for (int at = 1; at < grdRows.Rows(); ++at) grdRows.SetTicked(at, TickOf(LineAt(at)));
  ShowCounts();
}

void CompareRows::grdRows_Tick(int at) {
  const Line& line = LineAt(at);
  const bool on = grdRows.Ticked(at) == RowTick::kOn;
  for (const std::size_t row : line.rows) {
    const bool meant = line.kind == Line::Kind::kRow || !on || list_->InBatch(row);
    if (!window_.Busy() && meant) list_->Tick(row, on);
  }
  ShowTicks();
}

std::optional<std::size_t> CompareRows::ChosenRow() const {
  const int at = grdRows.SelectedRow();
  if (at < 1 || static_cast<std::size_t>(at) > lines_.size()) return std::nullopt;
  const Line& line = LineAt(at);
  if (line.kind != Line::Kind::kRow) return std::nullopt;
  return line.rows.front();
}

// What stands in the list may be cut; below it the row is told whole.
void CompareRows::grdRows_Choose() {
  const auto chosen = list_ ? ChosenRow() : std::nullopt;
  if (!chosen) {
    stbRow.SetPanel(1, "");
    stbNote.SetPanel(1, "");
    return;
  }
  const ComparisonRow& row = list_->Compared().Rows()[*chosen];
  std::string facts =
      FormatText(app_.Text(text::kRowFacts), {PlaceTitle(row.place, app_.state.Spoken()), row.place.row->name,
                                              HexDigits(static_cast<unsigned>(row.place.Address()), 4)});
  const auto add = [&](int side, const SideCell& cell) {
    if (cell.raw.empty()) return;
    facts += "   " + app_.Text(side) + ": " + HexDigits(cell.raw, " ");
  };
  add(text::kLeftSide, row.left);
  add(text::kRightSide, row.right);
  stbRow.SetPanel(1, facts);
  const std::string remark = list_->Remark(*chosen);
  const std::string state = RowStateText(row.state, app_.state.Spoken());
  stbNote.SetPanel(1, remark.empty() ? state : state + "; " + remark);
}

void CompareRows::cmdTickDifferent_Click() {
  if (!HasTarget()) return;
  list_->TickDifferent();
  ShowTicks();
}

void CompareRows::cmdTickNone_Click() {
  if (list_) list_->TickNone();
  ShowTicks();
}

}  // namespace vlt
