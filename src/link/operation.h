// SPDX-License-Identifier: GPL-3.0-or-later
// One operation of a window that exchanges with the meter, as an object on the stack: the interface is locked
// and the pointer an hourglass while it lives, and both are given back on every way out. What it did on the
// line is reported to App::on_operation at its end.
#pragma once

#include <string>
#include <string_view>

#include "state/app.h"

namespace vlt {

class Operation {
 public:
  // `command` names the control that began it, for the report; an operation without a name is not reported.
  // `started_text` is the id of the text that goes into status panel 1, or kQuiet for an operation that says
  // nothing.
  static constexpr int kQuiet = 0;
  static constexpr std::string_view kUnnamed = {};
  Operation(App& app, Form& form, std::string_view command, int started_text = kQuiet);
  // Ends it, with the status line as it is, when End has not.
  ~Operation();
  Operation(const Operation&) = delete;
  Operation& operator=(const Operation&) = delete;

  // Opens the port when it is closed. On failure a box says "The error occurred at the time of
  // communication", the operation ends with that text and the reason in the status line, and the result is
  // false.
  bool OpenPortOrTell(MessageIcon icon = MessageIcon::kStop);
  // Releases the interface, then the pointer, then writes `text` into status panel 1. Once.
  void End(const std::string& text);
  // Ends it with a reason why nothing was sent, which stands in its report too.
  void Refuse(const std::string& why);
  // The pointer alone, for a box that is shown before the end.
  void ShowNormalPointer();
  bool Ended() const { return ended_; }

 private:
  void Release();

  App& app_;
  Form& form_;
  OperationReport report_;
  bool ended_ = false;
};

}  // namespace vlt
