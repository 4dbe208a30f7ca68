// SPDX-License-Identifier: GPL-3.0-or-later
#include "state/page_slots.h"

namespace vlt {

std::string& PageSlots::operator[](std::size_t index) {
  std::string& own = texts_.at(index);
  const SlotRow& row = kSlotRows[index];
  return row.text == nullptr ? own : state_.*row.text;
}

const std::string& PageSlots::operator[](std::size_t index) const {
  const std::string& own = texts_.at(index);
  const SlotRow& row = kSlotRows[index];
  return row.text == nullptr ? own : state_.*row.text;
}

void PageSlots::ForgetUnits(UnitKind kind) {
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    if (kSlotRows[i].unit == kind) texts_[i].clear();
  }
}

}  // namespace vlt
