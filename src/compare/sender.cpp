// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/sender.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "files/file_report.h"
#include "meter/device_queries.h"
#include "meter/identification.h"
#include "meter/status_table.h"
#include "meter/system_table.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids_compare.h"
#include "values/number_text.h"

namespace vlt {
namespace {

// Units and modes come first: what the others mean hangs on them.
constexpr std::string_view kGroupsAsWritten[] = {"system", "process", "heat",    "range",      "total",
                                                 "status", "display", "details", "maintenance"};

auto WritingKey(const ParameterPlace& place) {
  const ParameterGroup& group = GroupOf(*place.row);
  const auto at = std::find(std::begin(kGroupsAsWritten), std::end(kGroupsAsWritten), group.name);
  return std::tuple(at - std::begin(kGroupsAsWritten), place.index, PlaceInWriting(*place.row));
}

// Another setting that the meter keeps of itself when it is asked by the pages.
void AskUnitsAnew(App& app) {
  ReadUnitSystem(app);
  GetOperationMode(app);
  GetChannelConfig(app);
  for (int channel = 0; channel < LocationCount(Location::kChannel, app.state); ++channel) {
    GetRangeKind(app, channel);
    RefreshChannelUnits(app, channel);
  }
  ClearProcessCache(app);
  if (!LacksHeatRegisters(app.state)) RefreshHeatUnits(app);
}

// The channel that an output of the meter follows.
int OutputChannel(const Snapshot& meter, const ParameterPlace& place) {
  const SnapshotRow* row = meter.Find({&StatusRow("channel"), place.index});
  return row != nullptr && row->Known() ? CodeAt(*row->place.row, row->raw, 0) : 0;
}

std::string IdentityText(const MeterIdentity& identity) {
  return identity.id_number + " / " + identity.specification + " / " + identity.type;
}

class Sending {
 public:
  Sending(App& app, const CompareSide& source, const SendListener& listener)
      : app_(app), source_(source), listener_(listener) {}

  SendReport& Report() { return report_; }
  const Snapshot& Now() const { return now_; }

  // Reads the meter before anything is sent. False when that ends the work.
  bool ReadMeter() {
    if (!ReadAgain()) return false;
    const std::string unknown = UnknownShape(now_);
    if (unknown.empty()) return true;
    return Halt(SendHalt::kNoMeter, FormatText(Word(text::kMeterNotRead), {unknown}));
  }

  // Reads it once more. False when that ends the work.
  bool ReadAgain() {
    SnapshotResult result = ReadSnapshot(app_, listener_);
    now_ = std::move(result.snapshot);
    held_ = now_;
    if (result.stopped) return Halt(SendHalt::kStopped, Word(text::kSendingStopped));
    return app_.state.PortIsOpen || HaltByPort();
  }

  bool IsExpected(const MeterIdentity* expected) {
    if (expected != nullptr && !SameMeter(*expected, now_.identity)) {
      return Halt(SendHalt::kOtherMeter, FormatText(Word(text::kIsOtherMeter),
                                                    {IdentityText(now_.identity), IdentityText(*expected)}));
    }
    report_.before = now_;
    return true;
  }

  // Every place gets its turn, or a reason why not.
  void Send(std::vector<ParameterPlace> places) {
    SortAsWritten(places);
    int number = 0;
    for (const ParameterPlace& place : places) {
      ++number;
      if (report_.halt == SendHalt::kDone && listener_.stop()) {
        Halt(SendHalt::kStopped, Word(text::kSendingStopped));
      }
      if (report_.halt == SendHalt::kDone) {
        listener_.began(number, static_cast<int>(places.size()), PlaceTitle(place, app_.state.Spoken()));
      }
      const SentRow row = report_.halt == SendHalt::kDone ? SendOne(place) : Unsent(place, report_.reason);
      Note(row);
      if (report_.halt == SendHalt::kDone && !app_.state.PortIsOpen) HaltByPort();
    }
  }

  // The session follows what the meter has taken.
  void Finish() {
    if (!app_.state.PortIsOpen || listener_.leaving()) return;
    if (deciding_written_) AskUnitsAnew(app_);
    if (identity_written_) ReadIdentity(app_);
    if ((deciding_written_ || identity_written_) && app_.frame != nullptr) {
      app_.frame->ShowMeter();
      app_.frame->ShowFacts();
    }
  }

 private:
  std::string Word(int id) const { return app_.Text(id); }

  bool Halt(SendHalt halt, std::string reason) {
    report_.halt = halt;
    report_.reason = std::move(reason);
    return false;
  }
  bool HaltByPort() {
    return Halt(SendHalt::kPortLost, FormatText(Word(text::kPortWasLost), {app_.state.LastErrorText}));
  }

  static SentRow Unsent(const ParameterPlace& place, std::string reason) {
    SentRow row;
    row.place = place;
    row.reason = std::move(reason);
    return row;
  }

  SentRow SendOne(const ParameterPlace& place) {
    const SideCell* cell = source_.Find(place);
    if (cell == nullptr) return Unsent(place, Word(text::kNoValue));
    if (!cell->Known()) return Unsent(place, cell->problem);
    Conversion conversion = ConvertFor(*cell, source_.facts, now_.facts, OutputChannel(now_, place));
    if (conversion.raw.empty()) return Unsent(place, conversion.reason);
    const SnapshotRow* held = now_.Find(place);
    if (held == nullptr || !held->Known()) return Unsent(place, Word(text::kNotRestorable));
    return KeepPoint() ? Write(place, conversion) : Unsent(place, report_.reason);
  }

  // What the meter held before the first row. Where nothing is sent there is nothing to go back to.
  bool KeepPoint() {
    if (!report_.restore_point.empty()) return true;
    const KeptPoint point = KeepRestorePoint(app_, report_.before);
    report_.restore_point = point.path;
    if (point.error == FileError::kGood) return true;
    const std::string reason = Word(NotWrittenReason(point.error));
    return Halt(SendHalt::kNoRestorePoint, FormatText(Word(text::kNoPoint), {reason}));
  }

  SentRow Write(const ParameterPlace& place, const Conversion& conversion) {
    const ToldFacts facts = now_.facts;
    const ProvenWrite proven = WriteProven(app_, place, conversion.raw, facts);
    if (place.row->decides && proven.end != WriteEnd::kNotSent) Learn(place, proven.came_back);
    LearnIdentity(place, proven);
    SentRow row = Unsent(place, proven.reason);
    row.end = proven.end;
    if (proven.end != WriteEnd::kNotSent) {
      row.raw = conversion.raw;
      row.sent = ValueText(*place.row, facts, conversion.raw);
    }
    if (!proven.came_back.empty() && proven.end != WriteEnd::kStored) {
      row.came_back = ValueText(*place.row, facts, proven.came_back);
    }
    row.converted = conversion.converted;
    return row;
  }

  void LearnIdentity(const ParameterPlace& place, const ProvenWrite& proven) {
    const bool language = place.row == &SystemRow("language");
    if ((!language && place.row != &SystemRow("id_number")) || proven.came_back.empty()) return;
    identity_written_ = true;
    if (language) app_.state.SystemLangFlag = CodeAt(*place.row, proven.came_back, 0);
  }

  // The meter goes by another unit or mode from here on; what could not be read back is not known any more.
  void Learn(const ParameterPlace& place, const std::vector<std::uint8_t>& raw) {
    deciding_written_ = true;
    for (SnapshotRow& row : held_.rows) {
      if (row.place == place) {
        row.raw = raw;
        row.unread = raw.empty() ? Word(text::kUnitUnread) : std::string();
      }
    }
    now_ = CompleteSnapshot(held_.facts, held_.rows, held_.identity.date);
  }

  void Note(const SentRow& row) {
    const auto at = std::find_if(report_.rows.begin(), report_.rows.end(),
                                 [&](const SentRow& other) { return other.place == row.place; });
    if (at == report_.rows.end()) {
      report_.rows.push_back(row);
    } else {
      *at = row;
    }
    listener_.ended(row);
  }

  App& app_;
  const CompareSide& source_;
  const SendListener& listener_;
  SendReport report_;
  Snapshot now_;
  Snapshot held_;  // the same, with the bytes of rows whose units are not known
  bool deciding_written_ = false;
  bool identity_written_ = false;
};

// What a comparison with a restore point sends: all that differs and may be sent.
std::vector<ParameterPlace> DifferentPlaces(const Comparison& comparison, bool same_meter) {
  std::vector<ParameterPlace> places;
  for (const ComparisonRow& row : comparison.Rows()) {
    const SendRule rule = row.place.row->Sending();
    const bool may = rule == SendRule::kOrdinary || (rule == SendRule::kByHand && same_meter);
    if (row.state == RowState::kDifferent && may) places.push_back(row.place);
  }
  return places;
}

// Why a row is still not what the point says.
SentRow LeftRow(const ComparisonRow& row, const CompareSide& point, const SendReport& sent,
                const Snapshot& now) {
  for (const SentRow& ended : sent.rows) {
    if (ended.place == row.place && ended.end != WriteEnd::kStored) return ended;
  }
  SentRow left;
  left.place = row.place;
  left.reason = row.note;
  if (row.state == RowState::kOnlyLeft || row.state == RowState::kDifferent) {
    const Conversion conversion = ConvertFor(row.left, point.facts, now.facts, OutputChannel(now, row.place));
    if (!conversion.reason.empty()) left.reason = conversion.reason;
  }
  if (left.reason.empty() && row.state == RowState::kDifferent) {
    left.reason = FormatText(LookupText(text::kRegisterHolds, now.facts.Spoken()), {row.right.text});
  }
  if (left.reason.empty()) left.reason = RowStateText(row.state, now.facts.Spoken());
  return left;
}

SentRow KeptRow(const ComparisonRow& row, Language language) {
  SentRow kept;
  kept.place = row.place;
  kept.reason = FormatText(LookupText(text::kStaysItsOwn, language), {Trim(row.right.text)});
  return kept;
}

// What is not equal once all is sent.
void TellDifferent(const Comparison& comparison, const Snapshot& now, RestoreReport& report) {
  const bool same_meter = SameMeter(comparison.Left().identity, comparison.Right().identity);
  for (const ComparisonRow& row : comparison.Rows()) {
    if (row.state == RowState::kEqual) continue;
    const bool own = row.state == RowState::kDifferent && row.place.row->one_meter;
    if (own && !same_meter) {
      report.kept.push_back(KeptRow(row, now.facts.Spoken()));
    } else {
      report.left.push_back(LeftRow(row, comparison.Left(), report.sent, now));
    }
  }
}

}  // namespace

std::size_t SendReport::Count(WriteEnd end) const {
  return static_cast<std::size_t>(
      std::count_if(rows.begin(), rows.end(), [end](const SentRow& row) { return row.end == end; }));
}

void SortAsWritten(std::vector<ParameterPlace>& places) {
  std::stable_sort(places.begin(), places.end(), [](const ParameterPlace& a, const ParameterPlace& b) {
    return WritingKey(a) < WritingKey(b);
  });
}

SendReport SendRows(App& app, const CompareSide& source, std::vector<ParameterPlace> chosen,
                    const SendListener& listener, const MeterIdentity* expected) {
  Sending sending(app, source, listener);
  if (sending.ReadMeter()) sending.IsExpected(expected);
  sending.Send(std::move(chosen));
  sending.Finish();
  return std::move(sending.Report());
}

RestoreReport RestoreMeter(App& app, const CompareSide& point, const SendListener& listener,
                           OtherMeter other) {
  constexpr int kMostRounds = 4;
  RestoreReport report;
  Sending sending(app, point, listener);
  const MeterIdentity* expected = other == OtherMeter::kRefuse ? &point.identity : nullptr;
  if (!sending.ReadMeter() || !sending.IsExpected(expected)) {
    report.sent = std::move(sending.Report());
    return report;
  }
  std::vector<ParameterPlace> last;
  for (int round = 0; round < kMostRounds; ++round) {
    const auto places = DifferentPlaces(Comparison(point, SideOfMeter(sending.Now())),
                                        SameMeter(point.identity, sending.Now().identity));
    // What a second round has not changed a third one would not.
    if (places.empty() || places == last) break;
    sending.Send(places);
    if (sending.Report().halt != SendHalt::kDone || !sending.ReadAgain()) break;
    last = places;
  }
  sending.Finish();
  report.sent = std::move(sending.Report());
  report.verified = report.sent.halt == SendHalt::kDone && UnknownShape(sending.Now()).empty();
  TellDifferent(Comparison(point, SideOfMeter(sending.Now())), sending.Now(), report);
  return report;
}

std::vector<ParameterPlace> ChooseDifferent(const Comparison& comparison) {
  return DifferentPlaces(comparison, SameMeter(comparison.Left().identity, comparison.Right().identity));
}

}  // namespace vlt
