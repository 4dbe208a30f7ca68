// SPDX-License-Identifier: GPL-3.0-or-later
// Where the values of a column's fields come from: what the column tells of reads, writes and typing goes
// into the records of App::origins, and what follows from them is shown at the entries.
#pragma once

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "pages/field.h"
#include "pages/write_plan.h"

namespace vlt {

// What the fields of a column belong to, as the page answers it.
class FieldPlaces {
 public:
  virtual ~FieldPlaces() = default;
  // The channel or output that the page shows, from 0, among places of this kind.
  virtual int IndexOf(Location location) {
    (void)location;
    return 0;
  }
  // The channel that the unit of a field is the unit of.
  virtual int UnitChannel(const Field& field) { return IndexOf(field.parameter->location); }
  // Whether the entry of a field shows it; false for the other field of an entry that two share.
  virtual bool IsShown(const Field& field) {
    (void)field;
    return true;
  }
};

class FieldOrigins {
 public:
  // Both live as long as the column.
  FieldOrigins(App& app, FieldPlaces& places, const std::vector<Field>& fields)
      : app_(app), places_(places), fields_(fields) {}
  ~FieldOrigins();
  FieldOrigins(const FieldOrigins&) = delete;
  FieldOrigins& operator=(const FieldOrigins&) = delete;

  // A person has entered a value; nothing for a control that is no entry. What is typed back to what the
  // meter or the file holds counts as theirs.
  void Entered(const Control& control);
  // An entry shows what the slot holds.
  void Restored(const Field& field);

  // The meter has told a value, or confirmed a write. What the exchange learns of units meanwhile counts for
  // it too: channel, units and time are taken when it ends.
  void WasRead(const Field& field, std::span<const std::uint8_t> registers);
  // The same for a value that is kept behind the entry, which shows another row.
  void WasReadBehind(const Field& field, const std::string& value);
  void WasSet(const PlannedWrite& write);
  // A write was not answered, or answered with another value: what was known of the meter's value is in
  // doubt.
  void MayBeSet(const PlannedWrite& write);
  void ExchangeEnded();

  // The registers that a number was read from, when the entry still shows just that: they hold all of it, the
  // entry perhaps less.
  const std::vector<std::uint8_t>* RegistersOf(const Field& field) const;
  // The unit that the entry's value was typed, read or kept in a file for; of a list of units the text of the
  // entry. Where nobody can tell it is what stands beside it now.
  std::string UnitOfValue(const Field& field) const;
  // What stands beside the entry now: its unit without brackets, of a list of units the chosen text.
  static std::string UnitShown(const Field& field);
  // Where the entry's value comes from: kNone for what a person has entered.
  OriginRecord::Source SourceOf(const Field& field) const;

  // Brings the entries up to date.
  void Show();
  // How many parameters hold a value that was typed and not set, as of the last Show.
  int NotSet() const { return static_cast<int>(not_set_.size()); }

 private:
  struct Told {
    ValueOrigin origin = ValueOrigin::kNone;
    std::string text;
  };
  OriginRecord& RecordOf(const Field& field) const;
  ValuePlace PlaceOf(const Field& field) const;
  PlaceChange ChangeSince(const Field& field, const OriginRecord& record) const;
  // Whether what the record tells of the meter or a file still holds for this value.
  bool Holds(const Field& field, const OriginRecord& record, const std::string& value) const;
  // Calls `action` for each field whose registers a write holds, when they hold what the entry shows.
  template <class F>
  void ForEachIn(const PlannedWrite& write, F&& action) const;
  OriginRecord& Note(const Field& field, OriginRecord::Source source, const std::string& value);
  bool IsTyped(const Field& field, const OriginRecord& record) const;
  // The unit that a file's value has by what the file says.
  std::string UnitInFile(const Field& field) const;
  // The field whose value the entry shows, or null.
  const Field* ShownIn(const Control& entry) const;
  void ShowAt(const Field& field, const Told& told) const;
  Told Tell(const Field& field) const;
  Told TellRead(const Field& field, const OriginRecord& record) const;
  std::string SourceText(const Field& field, const OriginRecord& record) const;
  // "COM1-02 CH1"
  std::string PlaceText(const Field& field, const ValuePlace& place) const;

  App& app_;
  FieldPlaces& places_;
  const std::vector<Field>& fields_;
  std::vector<const Field*> awaited_;
  std::set<const OriginRecord*> not_set_;
};

}  // namespace vlt
