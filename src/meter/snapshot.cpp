// SPDX-License-Identifier: GPL-3.0-or-later
#include "meter/snapshot.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "meter/details_table.h"
#include "meter/facts.h"
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

std::string Word(int id, const ToldFacts& facts) { return LookupText(id, facts.Spoken()); }

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
  // Nothing for a place that is not known.
  std::optional<int> Code(const ParameterPlace& place) const {
    const SnapshotRow* found = Find(place);
    if (found == nullptr || !found->Known()) return {};
    return CodeAt(*place.row, found->raw, 0);
  }

 private:
  const std::vector<SnapshotRow>& rows_;
};

// The channel whose units a place carries: its own, or the one that its output follows.
int UnitChannel(const RowList& rows, const ParameterPlace& place) {
  if (!IsOutput(*place.row)) return std::min(place.index, kChannels - 1);
  return std::clamp(rows.Code({&StatusRow("channel"), place.index}).value_or(0), 0, kChannels - 1);
}

// Of units that the meter has once nothing is taken over from before.
void Learn(const RowList& rows, MeterFacts& facts) {
  facts.TempUnit = facts.HeatFlowUnit = facts.HeatTotalUnit = kUnknownUnit;
  LearnAll(facts, [&](const ParameterPlace& place) { return rows.Code(place); });
}

// The rows that tell by what the value of a place is shown.
std::vector<ParameterPlace> MeaningOf(const RowList& rows, const ParameterPlace& place) {
  const Parameter& row = *place.row;
  const int channel = UnitChannel(rows, place);
  std::vector<ParameterPlace> meaning;
  const ParameterPlace follows{&StatusRow("channel"), place.index};
  if (IsOutput(row) && row.unit != UnitKind::kNone && rows.Find(follows) != nullptr) {
    meaning.push_back(follows);
  }
  FactSet facts;
  AddUnitFacts(row.unit, channel, facts);
  if (rows.Code({&RangeRow("kind"), channel}) == kVelocityKind) facts.erase({Fact::kRangeUnit, channel});
  if (NamesUnit(row)) facts.insert({Fact::kUnitSystem});
  if (row.codes == DetailsRow("send_count").codes) facts.insert({Fact::kOperationMode});
  for (const FactPlace& fact : facts) meaning.push_back(PlaceOfFact(fact));
  return meaning;
}

// Why it is not known what a row says; empty when it is. A code that its table does not have says nothing.
std::string NotTold(const RowList& rows, const ParameterPlace& place, const ToldFacts& facts) {
  const auto code = rows.Code(place);
  if (!code) return Word(text::kUnitUnread, facts);
  const auto fact = FactToldBy(*place.row);
  if (!fact || IsUnderstood({*fact, place.index}, *code)) return {};
  return FormatText(Word(text::kCodeNotUnderstood, facts),
                    {PlaceTitle(place, facts.Spoken()), std::to_string(*code)});
}

// Why the value of a place can't be shown, though its registers were read; empty when it can.
std::string NotMeant(const RowList& rows, const ToldFacts& facts, const ParameterPlace& place) {
  for (const ParameterPlace& needed : MeaningOf(rows, place)) {
    std::string reason = NotTold(rows, needed, facts);
    if (!reason.empty()) return reason;
  }
  return {};
}

void TellRow(const RowList& rows, const ToldFacts& facts, SnapshotRow& row) {
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
  return rows.Code({&MaintenanceRow("test_mode"), 0}).value_or(0) != 0 ||
         std::any_of(std::begin(kOutputChecks), std::end(kOutputChecks), [&](const Parameter* row) {
           return rows.Code({row, 0}).value_or(0) != 0;
         });
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

Snapshot CompleteSnapshot(ToldFacts facts, std::vector<SnapshotRow> rows, std::string date) {
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

void RetellSnapshot(Snapshot& snapshot, const ToldFacts& speaker) {
  snapshot.facts.LangOffset = speaker.LangOffset;
  snapshot.facts.ModelCode = speaker.ModelCode;
  Tell(snapshot);
}

}  // namespace vlt
