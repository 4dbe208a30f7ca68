#include "state/page_slots.h"

namespace vlt {

void PageSlots::ForgetUnits(UnitKind kind) {
  for (std::size_t i = 0; i < texts_.size(); ++i) {
    if (kSlotRows[i].unit == kind) texts_[i].clear();
  }
}

}  // namespace vlt
