// SPDX-License-Identifier: GPL-3.0-or-later
// The writes of a set, worked out and judged before the first of them is sent, so that a value that can't be
// sent leaves no meter half set.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pages/field.h"

namespace vlt {

struct PlannedWrite {
  const Field* field = nullptr;  // whose value it is; null for a write of several values
  std::string name;              // in the failure box
  int address = 0;
  WriteWith write = WriteWith::kSeveral;
  std::vector<std::uint8_t> data;  // whole registers; one for WriteWith::kSingle
};

class WritePlan {
 public:
  void Add(PlannedWrite write) { writes_.push_back(std::move(write)); }
  // The first value that can't be sent; later ones are not taken.
  void Refuse(const Field& field, TextFault fault) {
    if (refused_ != nullptr) return;
    refused_ = &field;
    fault_ = fault;
  }
  const std::vector<PlannedWrite>& Writes() const { return writes_; }
  const Field* Refused() const { return refused_; }
  TextFault Fault() const { return fault_; }

 private:
  std::vector<PlannedWrite> writes_;
  const Field* refused_ = nullptr;
  TextFault fault_ = TextFault::kNone;
};

}  // namespace vlt
