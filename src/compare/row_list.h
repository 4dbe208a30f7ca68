// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a comparison as a window lists them: by page and channel, by what is to be seen of them, which
// of them are ticked to be sent, and what became of those that were sent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "compare/comparison.h"
#include "compare/sender.h"

namespace vlt {

enum class RowFilter : std::uint8_t { kAll, kDifferent, kOnlyLeft, kOnlyRight, kUnread, kSent };
inline constexpr int kRowFilters = 6;
// The state that a filter is for; kDifferent for those that are for none.
RowState StateOf(RowFilter filter);

// Rows of one page and channel that are listed one after the other.
struct RowGroup {
  std::string title;              // "RANGE CH1"
  std::vector<std::size_t> rows;  // of the comparison
  std::size_t different = 0;      // how many of them
};

class RowList {
 public:
  explicit RowList(Comparison comparison);

  const Comparison& Compared() const { return comparison_; }
  // The same sides read anew. Ticks stay where the row can still be sent, and so do results.
  void Renew(Comparison comparison);

  std::size_t Count(RowFilter filter) const;
  std::vector<RowGroup> Groups(RowFilter filter) const;
  bool IsListed(std::size_t row, RowFilter filter) const;

  // The row can be ticked: the right side is a meter that has the parameter, the left side has a value for
  // it, and it is none of those that are never sent.
  bool CanSend(std::size_t row) const { return offers_[row].can; }
  // It is one of those that all that differs chooses.
  bool InBatch(std::size_t row) const { return offers_[row].batch; }
  bool Ticked(std::size_t row) const { return ticked_.contains(PlaceOf(row)); }
  void Tick(std::size_t row, bool on);
  void TickDifferent();
  void TickNone() { ticked_.clear(); }
  std::vector<ParameterPlace> Chosen() const { return {ticked_.begin(), ticked_.end()}; }
  // Ticked rows that a list of this filter leaves out.
  std::size_t Hidden(RowFilter filter) const;

  // A row that was stored loses its tick.
  void SetResult(const SentRow& sent);
  void ForgetResults() { results_.clear(); }
  bool AnyResult() const { return !results_.empty(); }
  const SentRow* ResultOf(std::size_t row) const;
  // The row of a place; as many as there are rows when there is none.
  std::size_t RowOf(const ParameterPlace& place) const;

  // What stands beside a row: how its sending ended, else what is to be known before it is sent.
  std::string Remark(std::size_t row) const;

 private:
  struct Offer {
    bool can = false;
    bool batch = false;
    std::string note;  // why it will not be sent as it stands, or as what it will be
  };
  struct Earlier {
    bool operator()(const ParameterPlace& a, const ParameterPlace& b) const { return InCatalogueOrder(a, b); }
  };
  const ParameterPlace& PlaceOf(std::size_t row) const { return comparison_.Rows()[row].place; }
  std::string Word(int id) const;
  void MakeOffers();
  Offer OfferOf(const ComparisonRow& row) const;
  std::string ResultText(const SentRow& sent) const;

  Comparison comparison_;
  std::vector<Offer> offers_;
  std::set<ParameterPlace, Earlier> ticked_;
  std::map<ParameterPlace, SentRow, Earlier> results_;
};

}  // namespace vlt
