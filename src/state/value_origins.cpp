// SPDX-License-Identifier: GPL-3.0-or-later
#include "state/value_origins.h"

namespace vlt {

PlaceChange ChangeOf(const ValuePlace& read, const ValuePlace& shown) {
  const bool other_place = read.meter < shown.meter || shown.meter < read.meter;
  // A meter that has not told its number may be the same one.
  const bool other_number =
      !read.id_number.empty() && !shown.id_number.empty() && read.id_number != shown.id_number;
  if (other_place || other_number) return PlaceChange::kMeter;
  if (read.memory != shown.memory) return PlaceChange::kMemory;
  if (read.sent != shown.sent) return PlaceChange::kSent;
  if (read.index != shown.index) return PlaceChange::kIndex;
  if (read.unit_flag != shown.unit_flag) return PlaceChange::kUnitSystem;
  return read.unit != shown.unit ? PlaceChange::kUnit : PlaceChange::kNone;
}

OriginRecord& ValueOrigins::Of(Slot slot) { return by_slot_[slot]; }

OriginRecord& ValueOrigins::Of(std::string_view name) {
  const auto found = by_name_.find(name);
  return found != by_name_.end() ? found->second : by_name_[std::string(name)];
}

void ValueOrigins::FromFile(Slot slot, const std::string& text, const std::string& path) {
  OriginRecord record;
  record.source = OriginRecord::Source::kFile;
  record.awaited = true;
  record.value = text;
  record.file = path.substr(path.find_last_of("/\\") + 1);
  Of(slot) = record;
}

}  // namespace vlt
