// SPDX-License-Identifier: GPL-3.0-or-later
// The page slots: one text for each key of the parameter file. They carry what the pages show between the
// pages and the file, and outlive a page.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "state/slot_rows.h"

namespace vlt {

constexpr std::span<const SlotRow> SlotRows() { return kSlotRows; }

class PageSlots {
 public:
  // All slots start empty. Those that the settings file holds too lie in `state`.
  explicit PageSlots(SharedState& state) : state_(state), texts_(std::size(kSlotRows)) {}
  // Slot::kNone, and a key that is not there, throw std::out_of_range.
  std::string& operator[](Slot slot) { return (*this)[static_cast<std::size_t>(slot)]; }
  const std::string& operator[](Slot slot) const { return (*this)[static_cast<std::size_t>(slot)]; }
  std::string& At(std::string_view section, std::string_view key) { return (*this)[SlotOf(section, key)]; }
  // By place in SlotRows().
  std::string& operator[](std::size_t index);
  const std::string& operator[](std::size_t index) const;
  // Empties the unit captions of a kind: an empty one means that the caption on the page is right.
  void ForgetUnits(UnitKind kind);

 private:
  SharedState& state_;
  std::vector<std::string> texts_;
};

}  // namespace vlt
