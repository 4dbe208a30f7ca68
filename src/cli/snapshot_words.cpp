// SPDX-License-Identifier: GPL-3.0-or-later
// All parameters of a meter at once: snapshot, compare, restore.
#include <algorithm>
#include <utility>

#include "cli/meter_words.h"
#include "cli/on_line.h"
#include "cli/trouble.h"
#include "cli/words_of_states.h"
#include "files/file_report.h"
#include "meter/snapshot_file.h"
#include "resources/string_table.h"
#include "resources/text_ids_compare.h"
#include "resources/text_ids_words.h"
#include "values/hex_digits.h"

namespace vlt {
namespace {

constexpr auto kDiffers = ScriptStatus::kDiffers;
// Of a comparison: that it could not be made, or says too little.
constexpr auto kCouldNotTell = ScriptStatus::kUnknown;

constexpr const char* kMeterSide = "meter";
constexpr const char* kFieldsSide = "fields";
constexpr const char* kAllRows = "all";
constexpr const char* kAnotherMeter = "other";

std::string Count(std::size_t number) { return std::to_string(number); }

// Why a meter of which nothing at all could be read says nothing; empty when something is known.
std::string Silence(const Snapshot& snapshot) {
  const auto& rows = snapshot.rows;
  const bool known =
      std::any_of(rows.begin(), rows.end(), [](const SnapshotRow& row) { return row.Known(); });
  return known || rows.empty() ? std::string() : rows.front().unread;
}

}  // namespace

WorkListener MeterWords::Listener() const {
  WorkListener listener;
  listener.began = [this](int number, int count, const std::string& what) {
    desk_.tell({"progress", std::to_string(number), std::to_string(count), what});
  };
  listener.stop = desk_.stop;
  return listener;
}

Snapshot MeterWords::ReadMeter() {
  const OnLine line(app_, lock_holder_);
  SnapshotResult result = ReadSnapshot(app_, Listener());
  if (result.stopped) Fail(text::kWordStopped, {});
  if (const std::string reason = Silence(result.snapshot); !reason.empty())
    Fail(text::kMeterUnknown, {reason});
  return std::move(result.snapshot);
}

void MeterWords::TellIdentity(const char* side, const std::string& title, const MeterIdentity& who) const {
  desk_.tell({"identity", side, title, who.id_number, who.specification, who.type, who.version, who.date,
              who.unit_system, who.path_mode});
}

void MeterWords::TakeSnapshot(const Arguments& arguments) {
  KnowSettings();
  const std::string& path = arguments[0].text;
  std::string there;
  const FileError error = app_.platform.files.ReadAtMost(path, kMostSnapshotBytes, there);
  const bool is_free =
      error == FileError::kMissing || (error == FileError::kGood && LooksLikeSnapshot(there));
  if (!is_free) Fail(text::kNoSnapshotThere, {path});
  const Snapshot snapshot = ReadMeter();
  if (const FileError written = WriteSnapshotFile(app_, path, snapshot); written != FileError::kGood) {
    throw Trouble{kDiffers, NotWrittenText(app_, path, written)};
  }
  const auto unread = static_cast<std::size_t>(std::count_if(
      snapshot.rows.begin(), snapshot.rows.end(), [](const SnapshotRow& row) { return !row.Known(); }));
  TellIdentity(kMeterSide, "", snapshot.identity);
  desk_.tell({"snapshot", path, Count(snapshot.rows.size()), Count(unread)});
  if (unread > 0) {
    Fail(text::kSnapshotPartly,
         {Count(unread), CountText(text::kOneParameter, snapshot.rows.size(), app_.state.Spoken())});
  }
}

CompareSide MeterWords::SideOfNamedFile(const std::string& path) {
  FileSide file = SideOfFile(app_, path);
  if (file.error == FileError::kOther && file.error.SystemNumber() == 0) Fail(text::kNeitherFile, {path});
  if (file.error != FileError::kGood) throw Trouble{kDiffers, NotReadText(app_, path, file.error)};
  return std::move(file.side);
}

CompareSide MeterWords::SideOf(const std::string& name) {
  try {
    if (name == kMeterSide) return SideOfMeter(ReadMeter());
    if (name != kFieldsSide) return SideOfNamedFile(name);
    CompareSide fields = SideOfFields(app_);
    if (fields.cells.empty()) Fail(text::kNoFields, {});
    return fields;
  } catch (const Trouble& trouble) {
    throw Trouble{kCouldNotTell, trouble.text};
  }
}

void MeterWords::OnlyWord(const char* word, const Argument& argument) const {
  if (argument.text == word) return;
  throw Trouble{ScriptStatus::kUnknown, Format(text::kOnlyWord, {word, argument.text})};
}

void MeterWords::TellSide(const char* side, const CompareSide& shown) const {
  TellIdentity(side, SideTitle(app_, shown), shown.identity);
  for (const std::string& remark : shown.remarks) desk_.tell({"remark", side, remark});
}

void MeterWords::TellRow(const ComparisonRow& row) const {
  const Parameter& parameter = *row.place.row;
  desk_.tell({"row", std::string(parameter.name), PlaceName(parameter, row.place.index), WordOf(row.state),
              row.left.text, row.left.unit, HexDigits(row.left.raw), row.right.text, row.right.unit,
              HexDigits(row.right.raw), row.note});
}

void MeterWords::CompareSides(const Arguments& arguments) {
  KnowSettings(kCouldNotTell);
  const bool all = arguments.size() > 2;
  if (all) OnlyWord(kAllRows, arguments[2]);
  // The meter last: a file that can't be read need not wait for it.
  const bool meter_is_left = arguments[0].text == kMeterSide;
  CompareSide first = SideOf(arguments[meter_is_left ? 1 : 0].text);
  CompareSide second = SideOf(arguments[meter_is_left ? 0 : 1].text);
  if (meter_is_left) std::swap(first, second);
  const Comparison comparison(std::move(first), std::move(second));
  TellSide("left", comparison.Left());
  TellSide("right", comparison.Right());
  for (const ComparisonRow& row : comparison.Rows()) {
    if (all || row.state != RowState::kEqual) TellRow(row);
  }
  const std::string summary = SummaryText(comparison, app_.state.Spoken());
  EventFields counts{"compared", Count(comparison.All())};
  for (std::size_t state = 0; state < kRowStates; ++state) {
    counts.push_back(Count(comparison.Count(static_cast<RowState>(state))));
  }
  counts.push_back(summary);
  desk_.tell(counts);
  if (comparison.NoDifferences()) return;
  throw Trouble{comparison.Count(RowState::kDifferent) > 0 ? kDiffers : kCouldNotTell, summary};
}

void MeterWords::TellRestored(const RestoreReport& report) const {
  const SendReport& sent = report.sent;
  if (!sent.before.rows.empty()) TellIdentity(kMeterSide, "", sent.before.identity);
  for (const SentRow& row : sent.rows) {
    const SnapshotRow* before = sent.before.Find(row.place);
    const Parameter& parameter = *row.place.row;
    const std::string& holds = row.end == WriteEnd::kStored ? row.sent : row.came_back;
    desk_.tell({"sent", std::string(parameter.name), PlaceName(parameter, row.place.index), WordOf(row.end),
                row.sent, holds, before == nullptr ? "" : before->value,
                before == nullptr ? "" : before->unit, row.reason});
  }
  if (report.verified) {
    TellRows("kept", report.kept);
    TellRows("differs", report.left);
  }
  desk_.tell({"restored", Count(sent.Count(WriteEnd::kStored)), Count(sent.Count(WriteEnd::kRefused)),
              Count(sent.Count(WriteEnd::kNotProven)), Count(sent.Count(WriteEnd::kNotSent)),
              report.verified ? Count(report.left.size()) : std::string(), sent.restore_point,
              report.verified ? Count(report.kept.size()) : std::string()});
}

void MeterWords::TellRows(const char* event, const std::vector<SentRow>& rows) const {
  for (const SentRow& row : rows) {
    const Parameter& parameter = *row.place.row;
    desk_.tell({event, std::string(parameter.name), PlaceName(parameter, row.place.index), row.reason});
  }
}

void MeterWords::Restore(const Arguments& arguments) {
  KnowSettings();
  const std::string& path = arguments[0].text;
  const bool other = arguments.size() > 1;
  if (other) OnlyWord(kAnotherMeter, arguments[1]);
  const CompareSide point = SideOfNamedFile(path);
  if (point.kind != SideKind::kSnapshot) Fail(text::kNotASnapshot, {path});
  TellSide("left", point);
  const OnLine line(app_, lock_holder_);
  SendListener listener;
  static_cast<WorkListener&>(listener) = Listener();
  listener.leaving = desk_.stop;
  const RestoreReport report =
      RestoreMeter(app_, point, listener, other ? OtherMeter::kTake : OtherMeter::kRefuse);
  TellRestored(report);
  if (report.sent.halt != SendHalt::kDone) throw Trouble{kDiffers, report.sent.reason};
  if (!report.verified) Fail(text::kNotVerified, {});
  if (!report.left.empty()) Fail(text::kRestoredPartly, {Count(report.left.size())});
  if (!point.remarks.empty()) Fail(text::kRestoredWithRemarks, {Count(point.remarks.size()), path});
}

}  // namespace vlt
