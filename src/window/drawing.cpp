// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/drawing.h"

#include <utility>

namespace vlt {

Drawing::Drawing(ControlOwner& owner, std::string name)
    : Control(owner, ControlKind::kDrawing, std::move(name)) {}

void Drawing::SetSheet(Sheet sheet) {
  if (note_.empty() && sheet_ == sheet) return;
  sheet_ = std::move(sheet);
  note_.clear();
  Changed();
}

void Drawing::SetNote(const std::string& note) {
  if (note_ == note) return;
  note_ = note;
  Changed();
}

}  // namespace vlt
