// SPDX-License-Identifier: GPL-3.0-or-later
// Where the values that the pages show come from: one record for each parameter, which outlives a page as its
// slot does.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "state/shared_state.h"
#include "state/slot_rows.h"

namespace vlt {

// What a value that was read holds for. It is outdated while what the page shows differs from it.
struct ValuePlace {
  MeterPlace meter;
  std::string id_number;  // of the meter; empty while it has not told it
  int index = 0;          // channel or output, from 0
  int unit_flag = 0;      // unit system
  int unit = 0;           // code of the value's unit, where it has one that can change
  int memory = 0;         // ValueOrigins::Memory
  int sent = 0;           // ValueOrigins::Sent
};

// What has changed since a value was read, the first of them.
enum class PlaceChange { kNone, kMeter, kMemory, kSent, kIndex, kUnitSystem, kUnit };
PlaceChange ChangeOf(const ValuePlace& read, const ValuePlace& shown);

struct OriginRecord {
  enum class Source {
    kNone,
    kRead,  // from the meter
    kSet,   // to the meter, which has confirmed it
    kFile,
  };
  Source source = Source::kNone;
  // A read value whose place is not known before the exchange ends, or a file's that no page has shown yet.
  bool awaited = false;
  std::string
      value;  // as text; of a list and of options the code; while a file's is awaited, the slot's text
  std::string shown;  // the same as the page showed it
  // The unit that stood beside it, or of a list of units the entry's text: what the number means.
  std::string unit;
  // What the registers held; the entry may show less of it. Of a value that was read.
  std::vector<std::uint8_t> registers;
  ValuePlace place;
  std::string when;  // date and time
  std::string file;  // its name without folders
  // What a person has entered and not set, and the unit that stood beside it then.
  std::optional<std::string> typed;
  std::string typed_unit;
};

class ValueOrigins {
 public:
  // Of a parameter with a slot, and of one that has none, by its name.
  OriginRecord& Of(Slot slot);
  OriginRecord& Of(std::string_view name);

  // A file has filled the slot with `text`, or emptied it.
  void FromFile(Slot slot, const std::string& text, const std::string& path);
  void Forget(Slot slot) { Of(slot) = {}; }
  // Units of the file that was opened last: what its values mean that say nothing of theirs.
  MeterFacts file_facts;

  // Counts how often a meter was told to begin with its own settings anew: nothing that was read before
  // holds.
  int Memory() const { return memory_; }
  void MemoryWasReset() { ++memory_; }
  // The same for settings that reached a meter past the pages: a restore, a comparison, a word of a script.
  int Sent() const { return sent_; }
  void SettingsWereSent() { ++sent_; }
  // A page has sent a setting: its own fields know that by themselves.
  void PageHasSent() { ++page_sent_; }

  // How often one of these has happened. What was read of a whole meter holds while this stays the same.
  int Changes() const { return memory_ + sent_ + page_sent_; }

 private:
  std::map<Slot, OriginRecord> by_slot_;
  std::map<std::string, OriginRecord, std::less<>> by_name_;
  int memory_ = 0;
  int sent_ = 0;
  int page_sent_ = 0;
};

}  // namespace vlt
