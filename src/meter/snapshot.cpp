// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/snapshot.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "meter/details_table.h"
#include "meter/facts.h"
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
#include "resources/text_ids_proof.h"
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

// The rows that tell by what the value of a place is shown.
std::vector<ParameterPlace> MeaningOf(const RowList& rows, const ParameterPlace& place) {
  const Parameter& row = *place.row;
  const int channel = UnitChannel(rows, place);
  const ParameterPlace unit_system{&SystemRow("unit"), 0};
  std::vector<ParameterPlace> meaning;
  const ParameterPlace follows{&StatusRow("channel"), place.index};
  if (IsOutput(row) && row.unit != UnitKind::kNone && rows.Find(follows) != nullptr) {
    meaning.push_back(follows);
  }
  const auto add = [&](std::initializer_list<ParameterPlace> places) {
    meaning.insert(meaning.end(), places);
  };
  if (row.unit == UnitKind::kLength || row.unit == UnitKind::kVelocity || row.unit == UnitKind::kViscosity ||
      row.unit == UnitKind::kVoltage || &row == &RangeRow("unit") || &row == &TotalRow("unit")) {
    add({unit_system});
  }
  if (row.unit == UnitKind::kFlow) {
    add({unit_system, {&RangeRow("kind"), channel}});
    if (rows.Code(RangeRow("kind"), channel, kUnknownUnit) != kVelocityKind) {
      add({{&RangeRow("unit"), channel}});
    }
  }
  if (row.unit == UnitKind::kTotal) add({unit_system, {&TotalRow("unit"), channel}});
  if (row.unit == UnitKind::kHeatFlow) add({{&HeatRow("flow_unit"), 0}});
  if (row.unit == UnitKind::kHeatTotal) add({{&HeatRow("total_unit"), 0}});
  if (row.unit == UnitKind::kTemperature) add({{&HeatRow("temperature_unit"), 0}});
  if (row.codes == DetailsRow("send_count").codes) add({{&SystemRow("operation_mode"), 0}});
  return meaning;
}

// Why it is not known what a row says; empty when it is. A code that its table does not have says nothing.
std::string NotTold(const RowList& rows, const ParameterPlace& place, const SharedState& facts) {
  if (!rows.Has(*place.row, place.index)) return Word(text::kUnitUnread, facts);
  const auto fact = FactToldBy(*place.row);
  const int code = rows.Code(*place.row, place.index, 0);
  if (!fact || IsUnderstood({*fact, place.index}, code)) return {};
  return FormatText(Word(text::kCodeNotUnderstood, facts),
                    {PlaceTitle(place, facts.LangOffset), std::to_string(code)});
}

// Why the value of a place can't be shown, though its registers were read; empty when it can.
std::string NotMeant(const RowList& rows, const SharedState& facts, const ParameterPlace& place) {
  for (const ParameterPlace& needed : MeaningOf(rows, place)) {
    std::string reason = NotTold(rows, needed, facts);
    if (!reason.empty()) return reason;
  }
  return {};
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

std::string UnknownShape(const Snapshot& snapshot) {
  const RowList rows(snapshot.rows);
  for (const Parameter* row :
       {&SystemRow("unit"), &SystemRow("specification"), &SystemRow("measurement_mode")}) {
    const SnapshotRow* found = rows.Find({row, 0});
    if (found == nullptr) continue;
    std::string reason = found->Known() ? NotTold(rows, found->place, snapshot.facts) : found->unread;
    if (!reason.empty()) return reason;
  }
  return {};
}

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
  std::vector<std::pair<SnapshotRow*, std::string>> meaningless;
  for (SnapshotRow& row : snapshot.rows) {
    std::string reason = row.Known() ? NotMeant(list, facts, row.place) : std::string();
    if (!reason.empty()) meaningless.emplace_back(&row, std::move(reason));
  }
  for (auto& [row, reason] : meaningless) {
    row->raw.clear();
    row->unread = std::move(reason);
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
