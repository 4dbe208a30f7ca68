// SPDX-License-Identifier: GPL-3.0-or-later
#include "pages/origins.h"

#include <algorithm>

#include "meter/facts.h"
#include "meter/identification.h"
#include "meter/units.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_guard.h"
#include "resources/text_ids_origin.h"
#include "values/number_text.h"

namespace vlt {
namespace {

using Source = OriginRecord::Source;

constexpr const char* kShowUnitInForce = "0";  // as a kept unit caption

int OutdatedText(PlaceChange change, Location location) {
  constexpr int kTexts[] = {0,
                            text::kOutdatedMeter,
                            text::kOutdatedMemory,
                            text::kOutdatedSent,
                            text::kOutdatedChannel,
                            text::kOutdatedUnitSystem,
                            text::kOutdatedUnit};
  if (change == PlaceChange::kIndex && IsOutput(location)) return text::kOutdatedOutput;
  return kTexts[static_cast<std::size_t>(change)];
}

// The same value, however it is written.
bool AreSame(const Field& field, const std::string& a, const std::string& b) {
  if (a == b) return true;
  if (field.text == nullptr || field.parameter->wire == Wire::kCharacters) return false;
  const auto number = ParseNumber(a);
  return number && number == ParseNumber(b);
}

// Whether the registers of a write hold what the field shows.
bool WasWritten(const App& app, const Field& field, std::span<const std::uint8_t> data) {
  const Encoded shown = EncodeField(app, field);
  return shown.fault == TextFault::kNone && !shown.bytes.empty() &&
         std::equal(shown.bytes.begin(), shown.bytes.end(), data.begin(), data.end());
}

}  // namespace

// Of an exchange that has not come to its end nothing is known.
FieldOrigins::~FieldOrigins() {
  for (const Field* field : awaited_) RecordOf(*field) = {};
}

OriginRecord& FieldOrigins::RecordOf(const Field& field) const {
  const Parameter& row = *field.parameter;
  return row.slot != Slot::kNone ? app_.origins.Of(row.slot) : app_.origins.Of(row.name);
}

ValuePlace FieldOrigins::PlaceOf(const Field& field) const {
  const Parameter& row = *field.parameter;
  return {.meter = MeterInUse(app_),
          .id_number = KnownIdNumber(app_.state),
          .index = row.location == Location::kMeter ? 0 : places_.IndexOf(row.location),
          .unit_flag = app_.state.UnitFlag,
          .unit = UnitCode(app_.state, row.unit, places_.UnitChannel(field)),
          .memory = app_.origins.Memory(),
          .sent = app_.origins.Sent()};
}

PlaceChange FieldOrigins::ChangeSince(const Field& field, const OriginRecord& record) const {
  return record.awaited ? PlaceChange::kNone : ChangeOf(record.place, PlaceOf(field));
}

bool FieldOrigins::Holds(const Field& field, const OriginRecord& record, const std::string& value) const {
  if (record.source == Source::kNone || !AreSame(field, value, record.value)) return false;
  return record.source == Source::kFile ? !record.awaited : ChangeSince(field, record) == PlaceChange::kNone;
}

// --- what happens
// -------------------------------------------------------------------------------------------

void FieldOrigins::Entered(const Control& control) {
  for (const Field& field : fields_) {
    if (!field.HasEntry(control) || !places_.IsShown(field)) continue;
    OriginRecord& record = RecordOf(field);
    const std::string value = ValueText(field);
    record.typed.reset();
    if (value.empty() || Holds(field, record, value)) continue;
    record.typed = value;
    record.typed_unit = UnitShown(field);
  }
}

void FieldOrigins::Restored(const Field& field) {
  OriginRecord& record = RecordOf(field);
  if (record.source != Source::kFile || !record.awaited) return;
  // A page that did not show the file's text may have kept another one since.
  if (app_.slots[field.parameter->slot] != record.value) {
    record = {};
    return;
  }
  record.awaited = false;
  record.value = ValueText(field);
  record.shown = field.ShownText();
  record.unit = UnitInFile(field);
}

OriginRecord& FieldOrigins::Note(const Field& field, Source source, const std::string& value) {
  OriginRecord record;
  record.source = source;
  record.awaited = true;
  record.value = value;
  record.shown = value;
  record.unit = UnitShown(field);
  awaited_.push_back(&field);
  return RecordOf(field) = record;
}

void FieldOrigins::WasRead(const Field& field, std::span<const std::uint8_t> registers) {
  Note(field, Source::kRead, ValueText(field)).registers.assign(registers.begin(), registers.end());
}

void FieldOrigins::WasReadBehind(const Field& field, const std::string& value) {
  Note(field, Source::kRead, value);
}

template <class F>
void FieldOrigins::ForEachIn(const PlannedWrite& write, F&& action) const {
  for (const Field& field : fields_) {
    const Parameter& row = *field.parameter;
    const int offset = AddressOf(row, places_.IndexOf(row.location)) - write.address;
    const int bytes = 2 * row.Words();
    if (offset < 0 || offset + bytes > static_cast<int>(write.data.size()) || !places_.IsShown(field)) {
      continue;
    }
    const auto data = std::span(write.data).subspan(static_cast<std::size_t>(offset));
    if (WasWritten(app_, field, data.first(static_cast<std::size_t>(bytes)))) action(field);
  }
}

void FieldOrigins::WasSet(const PlannedWrite& write) {
  ForEachIn(write, [this](const Field& field) { Note(field, Source::kSet, ValueText(field)); });
}

void FieldOrigins::MayBeSet(const PlannedWrite& write) {
  ForEachIn(write, [this](const Field& field) {
    OriginRecord& record = RecordOf(field);
    if (record.typed) record.source = Source::kNone;
  });
}

void FieldOrigins::ExchangeEnded() {
  for (const Field* field : awaited_) {
    OriginRecord& record = RecordOf(*field);
    record.awaited = false;
    record.place = PlaceOf(*field);
    record.when = DateTimeText(app_.platform.clock.Now());
    // A list may have been filled anew meanwhile. What was typed meanwhile is not the meter's.
    if (record.typed || !places_.IsShown(*field)) continue;
    record.value = ValueText(*field);
    record.shown = field->ShownText();
    record.unit = UnitShown(*field);
  }
  awaited_.clear();
}

// --- what a value means
// --------------------------------------------------------------------------------------

std::string FieldOrigins::UnitShown(const Field& field) {
  if (field.unit != nullptr) return WithoutBrackets(std::string(Trim(field.unit->Caption())));
  return NamesUnit(*field.parameter) ? field.ShownText() : std::string();
}

std::string FieldOrigins::UnitInFile(const Field& field) const {
  const MeterFacts& facts = app_.origins.file_facts;
  const Parameter& row = *field.parameter;
  if (field.unit != nullptr) {
    const std::string& kept = row.unit_slot == Slot::kNone ? std::string() : app_.slots[row.unit_slot];
    if (!kept.empty() && kept != kShowUnitInForce) return WithoutBrackets(std::string(Trim(kept)));
    return UnitText(facts, app_.state.Spoken(), row.unit, places_.UnitChannel(field));
  }
  if (!NamesUnit(row) || field.Selected() < 0) return {};
  return UnitName(*NamesUnit(row), field.CodeOf(field.Selected()), facts.UnitFlag, app_.state.Spoken());
}

bool FieldOrigins::IsTyped(const Field& field, const OriginRecord& record) const {
  return record.typed && AreSame(field, ValueText(field), *record.typed);
}

std::string FieldOrigins::UnitOfValue(const Field& field) const {
  const OriginRecord& record = RecordOf(field);
  if (IsTyped(field, record)) return record.typed_unit;
  const bool known = record.source != Source::kNone && !record.awaited;
  return known && AreSame(field, ValueText(field), record.value) ? record.unit : UnitShown(field);
}

Source FieldOrigins::SourceOf(const Field& field) const {
  const OriginRecord& record = RecordOf(field);
  return IsTyped(field, record) ? Source::kNone : record.source;
}

const std::vector<std::uint8_t>* FieldOrigins::RegistersOf(const Field& field) const {
  const OriginRecord& record = RecordOf(field);
  const bool shows_it = field.text != nullptr && record.source == Source::kRead && !record.awaited &&
                        !record.typed && !record.registers.empty() && ValueText(field) == record.value;
  return shows_it ? &record.registers : nullptr;
}

// --- what is shown
// ------------------------------------------------------------------------------------------

const Field* FieldOrigins::ShownIn(const Control& entry) const {
  const auto found = std::find_if(fields_.begin(), fields_.end(), [&](const Field& field) {
    return &field.Entry() == &entry && places_.IsShown(field);
  });
  return found == fields_.end() ? nullptr : &*found;
}

void FieldOrigins::Show() {
  not_set_.clear();
  for (const Field& field : fields_) {
    const Field* shown = ShownIn(field.Entry());
    const Told told = shown == nullptr ? Told{} : Tell(*shown);
    ShowAt(field, told);
    if (told.origin == ValueOrigin::kTyped) not_set_.insert(&RecordOf(*shown));
  }
}

// Of two options the chosen one carries it.
void FieldOrigins::ShowAt(const Field& field, const Told& told) const {
  if (field.options[0] == nullptr) return field.Entry().SetOrigin(told.origin, told.text);
  for (OptionButton* option : field.options) {
    if (option->Value()) {
      option->SetOrigin(told.origin, told.text);
    } else {
      option->SetOrigin(ValueOrigin::kNone);
    }
  }
}

FieldOrigins::Told FieldOrigins::Tell(const Field& field) const {
  const OriginRecord& record = RecordOf(field);
  const std::string value = ValueText(field);
  if (value.empty()) return {};
  if (IsTyped(field, record)) {
    if (record.typed_unit != UnitShown(field)) {
      return {ValueOrigin::kTyped, FormatText(app_.Text(text::kOriginTypedFor), {record.typed_unit})};
    }
    if (record.source == Source::kNone || record.awaited || record.shown.empty()) {
      return {ValueOrigin::kTyped, app_.Text(text::kOriginTyped)};
    }
    return {ValueOrigin::kTyped,
            FormatText(app_.Text(text::kOriginTypedOver), {record.shown, SourceText(field, record)})};
  }
  if (record.source == Source::kNone || !AreSame(field, value, record.value)) return {};
  if (record.source != Source::kFile) return TellRead(field, record);
  if (record.awaited) return {};
  const std::string source = SourceText(field, record);
  if (record.unit == UnitShown(field)) return {ValueOrigin::kFile, source};
  return {ValueOrigin::kOutdated, FormatText(app_.Text(text::kGuardFileFor), {record.unit, source})};
}

FieldOrigins::Told FieldOrigins::TellRead(const Field& field, const OriginRecord& record) const {
  if (record.awaited) return {ValueOrigin::kRead, {}};  // until its exchange ends
  const PlaceChange change = ChangeSince(field, record);
  const std::string source = SourceText(field, record);
  if (change == PlaceChange::kNone) return {ValueOrigin::kRead, source};
  const int id = OutdatedText(change, field.parameter->location);
  return {ValueOrigin::kOutdated, FormatText(app_.Text(id), {source})};
}

std::string FieldOrigins::SourceText(const Field& field, const OriginRecord& record) const {
  if (record.source == Source::kFile) return FormatText(app_.Text(text::kOriginFile), {record.file});
  return FormatText(app_.Text(record.source == Source::kRead ? text::kOriginRead : text::kOriginSet),
                    {PlaceText(field, record.place), record.when});
}

std::string FieldOrigins::PlaceText(const Field& field, const ValuePlace& place) const {
  std::string told = "COM" + std::to_string(place.meter.port);
  if (place.meter.station != 0) told += "-" + ZeroPadded(place.meter.station, 2);
  const Location location = field.parameter->location;
  if (location == Location::kMeter) return told;
  if (!IsOutput(location)) return told + " " + app_.Text(text::kFirstChannelName + place.index);
  return told + " " + app_.Text(text::kDigitalOutputName) + std::to_string(place.index + 1);
}

}  // namespace vlt
