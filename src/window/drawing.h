// SPDX-License-Identifier: GPL-3.0-or-later
// A drawing in a window: a sheet of shapes, and a note in its place or over it.
#pragma once

#include "platform/sheet.h"
#include "window/control.h"

namespace vlt {

class Drawing : public Control {
 public:
  Drawing(ControlOwner& owner, std::string name);

  const Sheet& Shown() const { return sheet_; }
  // A new sheet; the note goes.
  void SetSheet(Sheet sheet);
  // Why the sheet that is shown does not hold any more. It stays, but is shown faintly behind the note.
  const std::string& Note() const { return note_; }
  void SetNote(const std::string& note);

 private:
  Sheet sheet_;
  std::string note_;
};

}  // namespace vlt
