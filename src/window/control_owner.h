// SPDX-License-Identifier: GPL-3.0-or-later
// What a control asks of the window that it lies on.
#pragma once

#include <functional>
#include <vector>

#include "platform/platform.h"

namespace vlt {

class Control;

class ControlOwner {
 public:
  virtual ~ControlOwner() = default;

  // In the order in which they were made.
  const std::vector<Control*>& Controls() const { return controls_; }
  virtual Platform& Machine() const = 0;
  // Runs `handler` as an event of the window list.
  virtual void RunHandler(const std::function<void()>& handler) = 0;

  // A person has entered a value into `control`: typed into a field, chosen from a list or among options.
  virtual void Entered(const Control& control) { (void)control; }

  // The last control that asked for the focus, or null, and a count that rises with each request.
  Control* Focused() const { return focused_; }
  int FocusCount() const { return focus_count_; }
  void SetFocus(Control& control) {
    focused_ = &control;
    ++focus_count_;
    Changed();
  }

 protected:
  virtual void Changed() = 0;

 private:
  friend class Control;
  std::vector<Control*> controls_;
  Control* focused_ = nullptr;
  int focus_count_ = 0;
};

}  // namespace vlt
