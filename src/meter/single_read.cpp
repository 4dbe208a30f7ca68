// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/single_read.h"

#include <algorithm>
#include <utility>

#include "meter/facts.h"
#include "meter/proven_write.h"
#include "meter/status_table.h"
#include "meter/system_table.h"

namespace vlt {
namespace {

class Reader {
 public:
  explicit Reader(App& app) : app_(app), facts_(app.state) {}

  SingleRead Run(const Parameter& row, int index) {
    SingleRead result;
    if (!ReadShape()) {
      result.failure = failure_;
      return result;
    }
    std::vector<ParameterPlace> places;
    for (int at = 0; at < kMostPlaces; ++at) {
      if ((index == kEveryPlace || index == at) && HasPlace({&row, at}, facts_)) places.push_back({&row, at});
    }
    for (const ParameterPlace& place : places) ReadMeaning(place);
    const Snapshot snapshot = Complete();
    result.facts = snapshot.facts;
    for (const ParameterPlace& place : places) result.rows.push_back(*snapshot.Find(place));
    return result;
  }

 private:
  // False without the answers that decide which parameters there are.
  bool ReadShape() {
    for (const Parameter* row : {&SystemRow("specification"), &SystemRow("unit"),
                                 &SystemRow("operation_mode"), &SystemRow("measurement_mode")}) {
      if (!HasPlace({row, 0}, facts_)) continue;
      const SnapshotRow& read = Read({row, 0});
      if (!read.Known()) {
        failure_ = read.unread;
        return false;
      }
      const Snapshot told = Complete();
      failure_ = UnknownShape(told);
      if (!failure_.empty()) return false;
      facts_ = told.facts;
    }
    return true;
  }

  // The place, and what its value is shown by.
  void ReadMeaning(const ParameterPlace& place) {
    Read(place);
    if (place.row->unit == UnitKind::kNone) return;
    int channel = place.index;
    if (const ParameterPlace follows{&StatusRow("channel"), place.index}; IsOutput(*place.row)) {
      // A meter with one channel has no choice of it.
      const bool chosen = HasPlace(follows, facts_);
      if (chosen && !Read(follows).Known()) return;
      channel = chosen ? CodeAt(*follows.row, Read(follows).raw, 0) : 0;
    }
    channel = std::clamp(channel, 0, kChannels - 1);
    FactSet facts;
    AddUnitFacts(place.row->unit, channel, facts);
    for (const FactPlace& fact : facts) Read(PlaceOfFact(fact));
  }

  const SnapshotRow& Read(const ParameterPlace& place) {
    const auto at = std::lower_bound(rows_.begin(), rows_.end(), place,
                                     [](const SnapshotRow& row, const ParameterPlace& wanted) {
                                       return InCatalogueOrder(row.place, wanted);
                                     });
    if (at != rows_.end() && at->place == place) return *at;
    SnapshotRow row{.place = place, .raw = {}, .value = {}, .unit = {}, .unread = {}};
    ExchangeReport exchange = ReadPlace(app_, place, row.raw);
    if (!exchange) row.unread = std::move(exchange.text);
    return *rows_.insert(at, std::move(row));
  }

  Snapshot Complete() const { return CompleteSnapshot(facts_, rows_, {}); }

  App& app_;
  ToldFacts facts_;
  std::vector<SnapshotRow> rows_;  // in catalogue order
  std::string failure_;
};

}  // namespace

SingleRead ReadSingle(App& app, const Parameter& row, int index) { return Reader(app).Run(row, index); }

}  // namespace vlt
