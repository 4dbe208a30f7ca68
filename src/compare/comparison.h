// SPDX-License-Identifier: GPL-3.0-or-later
// Two sides held against each other, row by row. Each row has exactly one state, and the counts are counted
// from the rows: they add up because nothing else can be built.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "compare/side.h"

namespace vlt {

enum class RowState : std::uint8_t {
  kEqual,      // the same register contents, in the same unit
  kDifferent,  // both are known, and the register contents or the units differ
  kOnlyLeft,   // the other side has no such parameter, or no value for it
  kOnlyRight,  // the same the other way round
  kUnread,     // both sides have it, and at least one could not be read or is no value of the register
};
inline constexpr std::size_t kRowStates = 5;

struct ComparisonRow {
  ParameterPlace place;
  RowState state = RowState::kUnread;
  // Empty where a side has no cell; a cell with a problem has its text and no bytes.
  SideCell left;
  SideCell right;
  // What a person should know of it, in the language in force: why it could not be read, that the texts agree
  // and the registers do not, that the units differ.
  std::string note;
};

class Comparison {
 public:
  // Throws std::invalid_argument for a side that has a place twice or out of order, std::logic_error when the
  // counts do not add up.
  Comparison(CompareSide left, CompareSide right);

  const CompareSide& Left() const { return left_; }
  const CompareSide& Right() const { return right_; }
  // In catalogue order; every place that either side has, once.
  const std::vector<ComparisonRow>& Rows() const { return rows_; }

  std::size_t All() const { return rows_.size(); }
  std::size_t Count(RowState state) const { return counts_[static_cast<std::size_t>(state)]; }
  // True when every row is equal, there is at least one, and neither side has a remark.
  bool NoDifferences() const;
  // Neither side lacks a row or has one that could not be read, and there are no remarks: what is left is
  // known to be equal or different.
  bool Complete() const;

 private:
  void Add(ComparisonRow row);
  void CheckCounts() const;

  CompareSide left_;
  CompareSide right_;
  std::vector<ComparisonRow> rows_;
  std::array<std::size_t, kRowStates> counts_{};
};

// "equal", "different", "only left", ... in the language of the offset.
std::string RowStateText(RowState state, Language language);
// "1 row", "312 rows": `one_id` is kOneRow or kOneParameter.
std::string CountText(int one_id, std::size_t count, Language language);
// "No differences in 312 parameters", or the counts of all states: what is shown beside a comparison.
std::string SummaryText(const Comparison& comparison, Language language);

}  // namespace vlt
