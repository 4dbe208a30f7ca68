// SPDX-License-Identifier: GPL-3.0-or-later
// One parameter at a time: get and set.
#include "cli/meter_words.h"

#include <algorithm>
#include <utility>

#include "cli/nearest.h"
#include "cli/on_line.h"
#include "cli/trouble.h"
#include "cli/words_of_states.h"
#include "meter/facts.h"
#include "meter/offered_codes.h"
#include "meter/proven_write.h"
#include "meter/single_read.h"
#include "meter/store.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"
#include "resources/text_ids_words.h"
#include "shell/start.h"
#include "values/hex_digits.h"
#include "values/number_text.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr auto kDiffers = ScriptStatus::kDiffers;
constexpr auto kUnknown = ScriptStatus::kUnknown;

std::vector<std::string_view> AllNames() {
  std::vector<std::string_view> names;
  for (const ParameterGroup& group : ParameterGroups()) {
    for (const Parameter& row : group.rows) names.push_back(row.name);
  }
  return names;
}

// The names of the places that the largest meter has of a row: "CH1, CH2".
std::vector<std::string> PlaceNames(const Parameter& row) {
  std::vector<std::string> names;
  for (int index = 0; index < kMostPlaces; ++index) {
    const std::string name = PlaceName(row, index);
    if (!name.empty() && PlaceIndexOf(row, name) == index) names.push_back(name);
  }
  return names;
}

// "1" and "ch1" are CH1.
bool IsPlace(const std::string& place, const std::string& written) {
  std::string upper = written;
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  return place == upper || place.substr(2) == written;
}

// "3:00D2": function and address.
std::string RegisterText(const ParameterPlace& place) {
  return std::to_string(static_cast<int>(place.row->function)) + ":" +
         HexDigits(static_cast<unsigned>(place.Address()), 4);
}

// "process.outer_diameter CH1".
std::string FullName(const ParameterPlace& place) {
  const std::string name = PlaceName(*place.row, place.index);
  return std::string(place.row->name) + (name.empty() ? "" : " " + name);
}

}  // namespace

MeterWords::MeterWords(App& app, Desk desk)
    : app_(app), desk_(std::move(desk)), lock_holder_(app.windows, "vlt", FormPlace::kWindow) {}

void MeterWords::KnowSettings(ScriptStatus status) {
  if (settled_) return;
  if (!ReadStartSettings(app_)) {
    desk_.tell({"refused", "start", app_.state.StartFaultReason});
    throw Trouble{status, app_.state.StartFaultReason};
  }
  settled_ = true;
}

std::string MeterWords::Format(int text_id, std::initializer_list<std::string_view> parts) const {
  return FormatText(app_.Text(text_id), parts);
}

void MeterWords::Fail(int text_id, std::initializer_list<std::string_view> parts) const {
  throw Trouble{kDiffers, Format(text_id, parts)};
}

std::string MeterWords::WhyNot(const ParameterPlace& place, const ToldFacts& facts, const std::string& typed,
                               const EncodedValue& value) const {
  const Parameter& row = *place.row;
  if (value.fault != ValueFault::kNone) return ValueFaultText(row, facts, value.fault);
  if (row.IsCode()) return WhyNoCode(place, facts, CodeAt(row, value.bytes, 0));
  const int most = row.length.In(facts.UnitFlag);
  if (most == 0 || CharCount(Trim(typed)) <= static_cast<std::size_t>(most)) return {};
  return Format(text::kTooLong, {std::to_string(most)});
}

// A code that has no word is given in parentheses, and then meant.
std::string MeterWords::WhyNoCode(const ParameterPlace& place, const ToldFacts& facts, int code) const {
  if (IsOffered(place, facts, code)) return {};
  const std::vector<std::string> words = CodeWords(*place.row, facts);
  if (words.empty()) {
    const std::vector<int> codes = OfferedCodes(place, facts);
    return Format(text::kDoesNotFit, {std::to_string(codes.front()), std::to_string(codes.back())});
  }
  const auto at = static_cast<std::size_t>(code);
  return at < words.size() && !words[at].empty() ? Format(text::kCodeNotThere, {words[at]}) : std::string();
}

const Parameter& MeterWords::ParameterOf(const std::string& name) const {
  if (const Parameter* row = FindParameter(name)) return *row;
  const auto near = NearestNames(name, AllNames());
  throw Trouble{kUnknown, near.empty() ? Format(text::kNoParameter, {name})
                                       : Format(text::kNoParameterButNear, {name, Listed(near)})};
}

int MeterWords::PlaceOf(const Parameter& row, const Arguments& arguments, std::size_t at) const {
  const std::vector<std::string> names = PlaceNames(row);
  if (arguments.size() <= at) return names.empty() ? 0 : kEveryPlace;
  const std::string& written = arguments[at].text;
  for (const std::string& name : names) {
    if (IsPlace(name, written)) return PlaceIndexOf(row, name);
  }
  throw Trouble{kUnknown, names.empty() ? Format(text::kNoPlaces, {row.name})
                                        : Format(text::kNoPlace, {row.name, written, Listed(names)})};
}

void MeterWords::TellValue(const SnapshotRow& row) {
  const std::string place = PlaceName(*row.place.row, row.place.index);
  const std::string name(row.place.row->name);
  if (row.Known()) {
    desk_.tell({"value", name, place, row.value, row.unit, RegisterText(row.place), HexDigits(row.raw)});
  } else {
    desk_.tell({"unread", name, place, row.unread});
  }
}

SingleRead MeterWords::ReadPlaces(const Parameter& row, int index) {
  SingleRead read = ReadSingle(app_, row, index);
  if (!read.failure.empty()) Fail(text::kMeterUnknown, {read.failure});
  if (read.rows.empty()) Fail(text::kNotInThisMeter, {FullName({&row, std::max(index, 0)})});
  return read;
}

void MeterWords::Get(const Arguments& arguments) {
  KnowSettings();
  const Parameter& row = ParameterOf(arguments[0].text);
  const int index = PlaceOf(row, arguments, 1);
  const OnLine line(app_, lock_holder_);
  const SingleRead read = ReadPlaces(row, index);
  for (const SnapshotRow& found : read.rows) TellValue(found);
  for (const SnapshotRow& found : read.rows) {
    if (!found.Known()) Fail(text::kNameAndReason, {FullName(found.place), found.unread});
  }
}

void MeterWords::Set(const Arguments& arguments) {
  KnowSettings();
  const Parameter& row = ParameterOf(arguments[0].text);
  const int index = PlaceOf(row, arguments, 2);
  if (row.write == WriteWith::kNothing)
    Fail(text::kNameAndReason, {row.name, app_.Text(text::kMeterComputes)});
  // What a page asks before it does it is not done by a word.
  if (row.Sending() == SendRule::kNever) Fail(text::kNotByWord, {row.name});
  const OnLine line(app_, lock_holder_);
  const SingleRead read = ReadPlaces(row, index);
  if (read.rows.size() > 1) {
    throw Trouble{kUnknown, Format(text::kWhichPlace, {row.name, Listed(PlaceNames(row))})};
  }
  const SnapshotRow& before = read.rows.front();
  const std::string& typed = arguments[1].text;
  // Its registers may be there all the same.
  if (!IsInUse(before.place, read.facts)) Fail(text::kNotInThisMeter, {FullName(before.place)});
  if (!before.Known()) TellSent(before, {.value = typed, .reason = before.unread});
  const EncodedValue value = EncodeValue(row, read.facts, typed);
  std::string refusal = WhyNot(before.place, read.facts, typed, value);
  if (refusal.empty() && desk_.stop()) refusal = app_.Text(text::kWordStopped);
  if (!refusal.empty()) TellSent(before, {.value = typed, .holds = before.value, .reason = refusal});
  // By what was read of the meter: the session's own units are those of the settings.
  const ProvenWrite written = WriteProven(app_, before.place, value.bytes, read.facts);
  const auto shown = [&](std::span<const std::uint8_t> bytes) {
    return bytes.empty() ? std::string() : ValueText(row, read.facts, bytes);
  };
  TellSent(before, {written.end, shown(value.bytes), shown(written.came_back), written.reason,
                    CutText(row, read.facts, typed, value.bytes)});
}

void MeterWords::Keep(const Arguments&) {
  KnowSettings();
  const OnLine line(app_, lock_holder_);
  if (!SaveToDevice(app_)) {
    throw Trouble{kDiffers, Joined(app_.Text(text::kNotSaved), app_.state.LastErrorText)};
  }
  desk_.tell({"kept"});
}

void MeterWords::Names(const Arguments& arguments) {
  KnowSettings();
  const std::string part = arguments.empty() ? std::string() : LowerText(arguments[0].text);
  bool found = false;
  for (const ParameterGroup& group : ParameterGroups()) {
    for (const Parameter& row : group.rows) {
      const std::string title = RowTitle(row, app_.state.Spoken());
      const bool fits =
          row.name.find(part) != std::string_view::npos || LowerText(title).find(part) != std::string::npos;
      if (!fits) continue;
      found = true;
      EventFields fields{"parameter", std::string(row.name), Listed(PlaceNames(row), ","), title,
                         row.Sending() == SendRule::kNever ? "no" : "yes"};
      for (const std::string& entry : CodeWords(row, app_.state)) fields.push_back(entry);
      desk_.tell(fields);
    }
  }
  if (!found) ParameterOf(arguments[0].text);  // throws, with what is near
}

void MeterWords::TellSent(const SnapshotRow& before, const Sent& sent) const {
  const Parameter& row = *before.place.row;
  EventFields fields{"sent",
                     std::string(row.name),
                     PlaceName(row, before.place.index),
                     WordOf(sent.end),
                     sent.value,
                     sent.holds,
                     before.value,
                     before.unit,
                     sent.reason};
  if (!sent.cut.empty()) fields.push_back(sent.cut);
  desk_.tell(fields);
  if (sent.end != WriteEnd::kStored) Fail(text::kNameAndReason, {FullName(before.place), sent.reason});
}

}  // namespace vlt
