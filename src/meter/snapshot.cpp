// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/snapshot.h"

#include <algorithm>
#include <utility>

#include "meter/details_table.h"
#include "meter/heat_table.h"
#include "meter/maintenance_table.h"
#include "meter/range_table.h"
#include "meter/read_all.h"
#include "meter/status_table.h"
#include "meter/system_table.h"
#include "meter/total_table.h"
#include "meter/units.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids_compare.h"
#include "state/tested_meters.h"

namespace vlt {
namespace {

// What is not known of a unit; no code of the meter.
constexpr int kUnknownUnit = -1;

std::string Word(int id, const SharedState& facts) { return LookupText(id + facts.LangOffset); }

class RowList {
 public:
  explicit RowList(const std::vector<SnapshotRow>& rows) : rows_(rows) {}

  const SnapshotRow* Find(const ParameterPlace& place) const {
    const auto at = std::lower_bound(rows_.begin(), rows_.end(), place,
                                     [](const SnapshotRow& row, const ParameterPlace& wanted) {
                                       return InCatalogueOrder(row.place, wanted);
                                     });
    return at != rows_.end() && at->place == place ? &*at : nullptr;
  }
  bool Has(const Parameter& row, int index) const {
    const SnapshotRow* found = Find({&row, index});
    return found != nullptr && found->Known();
  }
  int Code(const Parameter& row, int index, int absent) const {
    return Has(row, index) ? CodeAt(row, Find({&row, index})->raw, 0) : absent;
  }

 private:
  const std::vector<SnapshotRow>& rows_;
};

// The channel whose units a place carries: its own, or the one that its output follows.
int UnitChannel(const RowList& rows, const ParameterPlace& place) {
  if (!IsOutput(*place.row)) return std::min(place.index, kChannels - 1);
  return std::clamp(rows.Code(StatusRow("channel"), place.index, 0), 0, kChannels - 1);
}

void Learn(const RowList& rows, SharedState& facts) {
  facts.UnitFlag = rows.Code(SystemRow("unit"), 0, facts.UnitFlag);
  facts.OperationMode = rows.Code(SystemRow("operation_mode"), 0, facts.OperationMode);
  facts.PathMode = rows.Code(SystemRow("measurement_mode"), 0, facts.PathMode);
  if (rows.Has(SystemRow("specification"), 0)) {
    facts.SpecClass = SpecClassOf(rows.Code(SystemRow("specification"), 0, 0));
  }
  for (int channel = 0; channel < kChannels; ++channel) {
    const auto at = static_cast<std::size_t>(channel);
    facts.RangeKind.at(at) = rows.Code(RangeRow("kind"), channel, facts.RangeKind.at(at));
    facts.RangeUnit.at(at) = rows.Code(RangeRow("unit"), channel, facts.RangeUnit.at(at));
    const int total = rows.Code(TotalRow("unit"), channel, facts.TotalUnit.at(at));
    facts.TotalUnit.at(at) = TotalUnitOf(facts.UnitFlag, total);
  }
  facts.TempUnit = rows.Code(HeatRow("temperature_unit"), 0, kUnknownUnit);
  facts.HeatFlowUnit = rows.Code(HeatRow("flow_unit"), 0, kUnknownUnit);
  facts.HeatTotalUnit = rows.Code(HeatRow("total_unit"), 0, kUnknownUnit);
}

// Whether all is known that the value of a place is shown by.
bool MeaningIsKnown(const RowList& rows, const SharedState& facts, const ParameterPlace& place) {
  const Parameter& row = *place.row;
  const int channel = UnitChannel(rows, place);
  const bool follows = IsOutput(row) && row.unit != UnitKind::kNone;
  if (follows && rows.Find({&StatusRow("channel"), place.index}) != nullptr &&
      !rows.Has(StatusRow("channel"), place.index)) {
    return false;
  }
  const bool unit_system = rows.Has(SystemRow("unit"), 0);
  switch (row.unit) {
    case UnitKind::kLength:
    case UnitKind::kVelocity:
    case UnitKind::kViscosity:
    case UnitKind::kVoltage:
      return unit_system;
    case UnitKind::kFlow:
      return unit_system && rows.Has(RangeRow("kind"), channel) && rows.Has(RangeRow("unit"), channel);
    case UnitKind::kTotal:
      return unit_system && rows.Has(TotalRow("unit"), channel);
    case UnitKind::kHeatFlow:
      return facts.HeatFlowUnit != kUnknownUnit;
    case UnitKind::kHeatTotal:
      return facts.HeatTotalUnit != kUnknownUnit;
    case UnitKind::kTemperature:
      return facts.TempUnit != kUnknownUnit;
    default:
      break;
  }
  if (&row == &RangeRow("unit") || &row == &TotalRow("unit")) return unit_system;
  return row.codes != DetailsRow("send_count").codes || rows.Has(SystemRow("operation_mode"), 0);
}

void TellRow(const RowList& rows, const SharedState& facts, SnapshotRow& row) {
  row.value = row.Known() ? ValueText(*row.place.row, facts, row.raw) : std::string();
  row.unit = row.Known() ? UnitText(facts, row.place.row->unit, UnitChannel(rows, row.place)) : std::string();
}

std::string ValueAt(const RowList& rows, const Parameter& row) {
  const SnapshotRow* found = rows.Find({&row, 0});
  return found == nullptr ? std::string() : found->value;
}

void Tell(Snapshot& snapshot) {
  const RowList rows(snapshot.rows);
  for (SnapshotRow& row : snapshot.rows) TellRow(rows, snapshot.facts, row);
  MeterIdentity& identity = snapshot.identity;
  identity.id_number = ValueAt(rows, SystemRow("id_number"));
  identity.specification = ValueAt(rows, SystemRow("specification"));
  identity.type = ValueAt(rows, SystemRow("type"));
  identity.version = ValueAt(rows, SystemRow("version"));
  identity.unit_system = ValueAt(rows, SystemRow("unit"));
  identity.path_mode = ValueAt(rows, SystemRow("measurement_mode"));
}

std::string UnreadReason(const MeterSettings& settings, const ParameterPlace& place, bool stopped) {
  for (const UnreadBlock& block : settings.unread) {
    const int offset = place.Address() - block.span.address;
    const bool inside = offset >= 0 && offset + 2 * place.row->Words() <= 2 * block.span.count;
    if (block.span.function == place.row->function && inside) return block.reason;
  }
  return Word(stopped ? text::kReadingStopped : text::kNotAskedFor, settings.facts);
}

std::vector<SnapshotRow> RowsOf(const MeterSettings& settings, bool stopped) {
  std::vector<SnapshotRow> rows;
  for (const ParameterPlace& place : PlacesOf(settings.facts)) {
    SnapshotRow row{.place = place, .raw = {}, .value = {}, .unit = {}, .unread = {}};
    const auto bytes = settings.registers.Of(*place.row, place.index);
    row.raw.assign(bytes.begin(), bytes.end());
    if (bytes.empty()) row.unread = UnreadReason(settings, place, stopped);
    rows.push_back(std::move(row));
  }
  return rows;
}

// What holds outputs or simulates the input counts while it is not 0.
bool IsInTest(const Snapshot& snapshot) {
  const RowList rows(snapshot.rows);
  return rows.Code(MaintenanceRow("test_mode"), 0, 0) != 0 ||
         std::any_of(std::begin(kOutputChecks), std::end(kOutputChecks),
                     [&](const Parameter* row) { return rows.Code(*row, 0, 0) != 0; });
}

}  // namespace

const SnapshotRow* Snapshot::Find(const ParameterPlace& place) const { return RowList(rows).Find(place); }

bool Snapshot::AllKnown() const {
  return !rows.empty() &&
         std::all_of(rows.begin(), rows.end(), [](const SnapshotRow& row) { return row.Known(); });
}

SnapshotResult ReadSnapshot(App& app, const WorkListener& listener) {
  SettingsReader reader(app, {.began = listener.began, .failed = [] {}, .stop = listener.stop},
                        ReadScope::kWhole);
  SnapshotResult result;
  result.stopped = !reader.ReadAll();
  const MeterSettings& settings = reader.Settings();
  result.snapshot = CompleteSnapshot(settings.facts, RowsOf(settings, result.stopped),
                                     DateTimeText(app.platform.clock.Now()));
  if (IsInTest(result.snapshot)) MeterIsInTest(app);
  return result;
}

Snapshot CompleteSnapshot(SharedState facts, std::vector<SnapshotRow> rows, std::string date) {
  Snapshot snapshot;
  snapshot.rows = std::move(rows);
  const RowList list(snapshot.rows);
  Learn(list, facts);
  std::vector<SnapshotRow*> meaningless;
  for (SnapshotRow& row : snapshot.rows) {
    if (row.Known() && !MeaningIsKnown(list, facts, row.place)) meaningless.push_back(&row);
  }
  for (SnapshotRow* row : meaningless) {
    row->raw.clear();
    row->unread = Word(text::kUnitUnread, facts);
  }
  snapshot.facts = std::move(facts);
  Tell(snapshot);
  snapshot.identity.date = std::move(date);
  return snapshot;
}

void RetellSnapshot(Snapshot& snapshot, const SharedState& speaker) {
  snapshot.facts.LangOffset = speaker.LangOffset;
  snapshot.facts.ModelCode = speaker.ModelCode;
  Tell(snapshot);
}

}  // namespace vlt
