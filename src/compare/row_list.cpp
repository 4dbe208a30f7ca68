// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/row_list.h"

#include <algorithm>
#include <utility>

#include "compare/conversion.h"
#include "meter/status_table.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids_compare_window.h"

namespace vlt {
namespace {

std::string GroupName(const ParameterPlace& place, Language language) {
  const std::string name = PlaceName(*place.row, place.index);
  return GroupTitle(GroupOf(*place.row), language) + (name.empty() ? "" : " " + name);
}

void Add(std::string& text, const std::string& more) {
  if (more.empty()) return;
  if (!text.empty()) text += "; ";
  text += more;
}

// The channel that an output of the meter follows.
int OutputChannel(const CompareSide& meter, const ParameterPlace& place) {
  const SideCell* cell = meter.Find({&StatusRow("channel"), place.index});
  return cell != nullptr && !cell->raw.empty() ? CodeAt(*cell->place.row, cell->raw, 0) : 0;
}

}  // namespace

RowState StateOf(RowFilter filter) {
  switch (filter) {
    case RowFilter::kOnlyLeft:
      return RowState::kOnlyLeft;
    case RowFilter::kOnlyRight:
      return RowState::kOnlyRight;
    case RowFilter::kUnread:
      return RowState::kUnread;
    default:
      return RowState::kDifferent;
  }
}

RowList::RowList(Comparison comparison) : comparison_(std::move(comparison)) { MakeOffers(); }

void RowList::Renew(Comparison comparison) {
  comparison_ = std::move(comparison);
  MakeOffers();
  std::erase_if(ticked_, [this](const ParameterPlace& place) {
    const std::size_t row = RowOf(place);
    return row == offers_.size() || !CanSend(row);
  });
}

std::string RowList::Word(int id) const { return LookupText(id, comparison_.Left().facts.Spoken()); }

void RowList::MakeOffers() {
  offers_.clear();
  for (const ComparisonRow& row : comparison_.Rows()) offers_.push_back(OfferOf(row));
  if (comparison_.Right().kind != SideKind::kMeter) return;
  for (const ParameterPlace& place : ChooseDifferent(comparison_)) offers_[RowOf(place)].batch = true;
}

RowList::Offer RowList::OfferOf(const ComparisonRow& row) const {
  Offer offer;
  const CompareSide& meter = comparison_.Right();
  const bool differs = row.state == RowState::kDifferent || row.state == RowState::kUnread;
  if (meter.kind != SideKind::kMeter || !differs || !row.left.Known()) return offer;
  const SendRule rule = row.place.row->Sending();
  offer.can = rule != SendRule::kNever;
  const Conversion conversion =
      ConvertFor(row.left, comparison_.Left().facts, meter.facts, OutputChannel(meter, row.place));
  offer.note = conversion.reason;
  if (!conversion.raw.empty() && conversion.converted) {
    offer.note =
        FormatText(Word(text::kConvertedValue), {ValueText(*row.place.row, meter.facts, conversion.raw)});
  }
  const bool same = SameMeter(comparison_.Left().identity, meter.identity);
  if (offer.can && rule == SendRule::kByHand && !same) Add(offer.note, Word(text::kChosenByHand));
  return offer;
}

bool RowList::IsListed(std::size_t row, RowFilter filter) const {
  if (filter == RowFilter::kAll) return true;
  if (filter == RowFilter::kSent) return results_.contains(PlaceOf(row));
  return comparison_.Rows()[row].state == StateOf(filter);
}

std::size_t RowList::Count(RowFilter filter) const {
  if (filter == RowFilter::kAll) return comparison_.All();
  if (filter != RowFilter::kSent) return comparison_.Count(StateOf(filter));
  return results_.size();
}

std::vector<RowGroup> RowList::Groups(RowFilter filter) const {
  std::vector<RowGroup> groups;
  for (std::size_t row = 0; row < offers_.size(); ++row) {
    if (!IsListed(row, filter)) continue;
    const std::string title = GroupName(PlaceOf(row), comparison_.Left().facts.Spoken());
    if (groups.empty() || groups.back().title != title) groups.push_back({title, {}, 0});
    groups.back().rows.push_back(row);
    if (comparison_.Rows()[row].state == RowState::kDifferent) ++groups.back().different;
  }
  return groups;
}

void RowList::Tick(std::size_t row, bool on) {
  if (!CanSend(row)) return;
  if (on) {
    ticked_.insert(PlaceOf(row));
  } else {
    ticked_.erase(PlaceOf(row));
  }
}

void RowList::TickDifferent() {
  for (std::size_t row = 0; row < offers_.size(); ++row) {
    if (InBatch(row)) Tick(row, true);
  }
}

std::size_t RowList::Hidden(RowFilter filter) const {
  return static_cast<std::size_t>(
      std::count_if(ticked_.begin(), ticked_.end(),
                    [&](const ParameterPlace& place) { return !IsListed(RowOf(place), filter); }));
}

void RowList::SetResult(const SentRow& sent) {
  results_[sent.place] = sent;
  if (sent.end == WriteEnd::kStored) ticked_.erase(sent.place);
}

const SentRow* RowList::ResultOf(std::size_t row) const {
  const auto found = results_.find(PlaceOf(row));
  return found == results_.end() ? nullptr : &found->second;
}

std::size_t RowList::RowOf(const ParameterPlace& place) const {
  const auto& rows = comparison_.Rows();
  const auto found = std::lower_bound(rows.begin(), rows.end(), place,
                                      [](const ComparisonRow& row, const ParameterPlace& wanted) {
                                        return InCatalogueOrder(row.place, wanted);
                                      });
  if (found == rows.end() || found->place != place) return rows.size();
  return static_cast<std::size_t>(found - rows.begin());
}

std::string RowList::ResultText(const SentRow& sent) const {
  std::string text = WriteEndText(sent.end, comparison_.Left().facts.Spoken());
  if (!sent.sent.empty()) text += " (" + sent.sent + ")";
  return text + (sent.reason.empty() ? "" : ": " + sent.reason);
}

std::string RowList::Remark(std::size_t row) const {
  std::string text;
  if (const SentRow* sent = ResultOf(row)) text = ResultText(*sent);
  Add(text, comparison_.Rows()[row].note);
  Add(text, offers_[row].note);
  return text;
}

}  // namespace vlt
