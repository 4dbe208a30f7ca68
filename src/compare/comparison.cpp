// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/comparison.h"

#include <algorithm>
#include <initializer_list>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids_compare.h"
#include "values/codecs.h"
#include "values/hex_digits.h"
#include "values/number_text.h"

namespace vlt {
namespace {

void CheckOrder(const CompareSide& side) {
  const auto wrong = [](const SideCell& a, const SideCell& b) { return !InCatalogueOrder(a.place, b.place); };
  if (std::adjacent_find(side.cells.begin(), side.cells.end(), wrong) != side.cells.end()) {
    throw std::invalid_argument("a side has a parameter twice or out of order");
  }
}

std::string Shown(const SideCell& cell) { return std::string(Trim(cell.text)); }

// Codes and characters are compared as what they mean too: the same code is another unit in another unit
// system, and characters are filled up in more ways than one.
bool SameValue(const SideCell& left, const SideCell& right) {
  const Parameter& row = *left.place.row;
  if (row.wire == Wire::kCharacters) return Shown(left) == Shown(right);
  return left.raw == right.raw && (!row.IsCode() || Shown(left) == Shown(right));
}

// Two values that read the same with more digits, or as bytes.
std::pair<std::string, std::string> Finer(const SideCell& left, const SideCell& right) {
  if (left.place.row->wire == Wire::kDouble) {
    const std::string a = PlainText(BytesToDouble(left.raw, 0));
    const std::string b = PlainText(BytesToDouble(right.raw, 0));
    if (a != b) return {a, b};
  }
  return {HexDigits(left.raw) + "H", HexDigits(right.raw) + "H"};
}

class Pair {
 public:
  Pair(const SideCell& left, const SideCell& right, Language language) : language_(language) {
    row_.place = left.place;
    row_.left = left;
    row_.right = right;
    if (!left.Known() || !right.Known()) {
      Unread();
    } else {
      Compare();
      for (const SideCell* cell : {&row_.left, &row_.right}) Note(cell->cut);
    }
  }
  ComparisonRow Row() && { return std::move(row_); }

 private:
  std::string Word(int id) const { return LookupText(id, language_); }

  void Unread() {
    row_.state = RowState::kUnread;
    if (!row_.left.Known()) row_.note = FormatText(Word(text::kLeftUnknown), {row_.left.problem});
    if (!row_.right.Known()) Note(FormatText(Word(text::kRightUnknown), {row_.right.problem}));
  }

  void Note(const std::string& more) {
    if (!row_.note.empty() && !more.empty()) row_.note += "; ";
    row_.note += more;
  }

  void Compare() {
    const bool same_unit = row_.left.unit == row_.right.unit;
    const bool same_value = SameValue(row_.left, row_.right);
    row_.state = same_unit && same_value ? RowState::kEqual : RowState::kDifferent;
    if (row_.state == RowState::kEqual) return;
    const bool code_of_other_unit = row_.place.row->IsCode() && row_.left.raw == row_.right.raw;
    if (!same_unit || code_of_other_unit) {
      row_.note = Word(text::kUnitsDiffer);
    } else if (Shown(row_.left) == Shown(row_.right)) {
      const auto [left, right] = Finer(row_.left, row_.right);
      row_.note = FormatText(Word(text::kShownAlike), {left, right});
    }
  }

  Language language_;
  ComparisonRow row_;
};

ComparisonRow Alone(const SideCell& cell, RowState state) {
  ComparisonRow row;
  row.place = cell.place;
  row.state = state;
  (state == RowState::kOnlyLeft ? row.left : row.right) = cell;
  row.note = cell.Known() ? cell.cut : cell.problem;
  return row;
}

}  // namespace

Comparison::Comparison(CompareSide left, CompareSide right)
    : left_(std::move(left)), right_(std::move(right)) {
  CheckOrder(left_);
  CheckOrder(right_);
  auto a = left_.cells.begin();
  auto b = right_.cells.begin();
  while (a != left_.cells.end() || b != right_.cells.end()) {
    const bool left_first =
        b == right_.cells.end() || (a != left_.cells.end() && InCatalogueOrder(a->place, b->place));
    const bool both = a != left_.cells.end() && b != right_.cells.end() && a->place == b->place;
    if (both) {
      Add(Pair(*a++, *b++, left_.facts.Spoken()).Row());
    } else if (left_first) {
      Add(Alone(*a++, RowState::kOnlyLeft));
    } else {
      Add(Alone(*b++, RowState::kOnlyRight));
    }
  }
  CheckCounts();
}

void Comparison::Add(ComparisonRow row) {
  ++counts_.at(static_cast<std::size_t>(row.state));
  rows_.push_back(std::move(row));
}

// Each cell of each side stands in one row, and each row has one state.
void Comparison::CheckCounts() const {
  const auto sum = [this](std::initializer_list<RowState> states) {
    return std::accumulate(states.begin(), states.end(), std::size_t{0},
                           [this](std::size_t total, RowState state) { return total + Count(state); });
  };
  using enum RowState;
  const bool good = sum({kEqual, kDifferent, kOnlyLeft, kOnlyRight, kUnread}) == All() &&
                    sum({kEqual, kDifferent, kOnlyLeft, kUnread}) == left_.cells.size() &&
                    sum({kEqual, kDifferent, kOnlyRight, kUnread}) == right_.cells.size();
  if (!good) throw std::logic_error("the counts of a comparison do not add up");
}

bool Comparison::NoDifferences() const {
  return All() > 0 && Count(RowState::kEqual) == All() && left_.remarks.empty() && right_.remarks.empty();
}

bool Comparison::Complete() const {
  const std::size_t judged = Count(RowState::kEqual) + Count(RowState::kDifferent);
  return All() > 0 && judged == All() && left_.remarks.empty() && right_.remarks.empty();
}

std::string RowStateText(RowState state, Language language) {
  return LookupText(text::kRowStateNames + static_cast<int>(state), language);
}

std::string CountText(int one_id, std::size_t count, Language language) {
  const int id = count == 1 ? one_id : one_id + 1;
  return FormatText(LookupText(id, language), {std::to_string(count)});
}

std::string SummaryText(const Comparison& comparison, Language language) {
  const auto word = [&](int id) { return LookupText(id, language); };
  const auto count = [&](RowState state) { return std::to_string(comparison.Count(state)); };
  const std::string all = std::to_string(comparison.All());
  if (comparison.NoDifferences()) {
    return FormatText(word(text::kNoDifferences),
                      {CountText(text::kOneParameter, comparison.All(), language)});
  }
  return FormatText(word(text::kCounts),
                    {all, count(RowState::kEqual), count(RowState::kDifferent), count(RowState::kOnlyLeft),
                     count(RowState::kOnlyRight), count(RowState::kUnread)});
}

}  // namespace vlt
