// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/operation.h"

#include "link/port.h"
#include "resources/text_ids.h"
#include "state/form_lock.h"

namespace vlt {

Operation::Operation(App& app, Form& form, std::string_view command, int started_text)
    : app_(app), form_(form) {
  report_.window = form.Name();
  report_.command = command;
  report_.exchanges = app.tally.exchanges;
  report_.failed = app.tally.failed;
  app_.tally.first_failure.clear();
  FormLock(app_, form_, 0);
  app_.windows.SetMousePointer(kHourglassPointer);
  if (started_text != kQuiet) app_.Status(app_.Text(started_text));
}

Operation::~Operation() {
  if (!ended_) Release();
}

bool Operation::OpenPortOrTell(MessageIcon icon) {
  if (OpenPort(app_)) return true;
  report_.port_failed = true;
  app_.Show(app_.Text(text::kCommunicationError), icon);
  End(CommunicationErrorText(app_));
  return false;
}

void Operation::End(const std::string& text) {
  if (ended_) return;
  Release();
  app_.Status(text);
}

void Operation::Refuse(const std::string& why) {
  report_.refused = why;
  End(why);
}

void Operation::ShowNormalPointer() { app_.windows.SetMousePointer(kNormalPointer); }

void Operation::Release() {
  ended_ = true;
  FormLock(app_, form_, 1);
  ShowNormalPointer();
  report_.exchanges = app_.tally.exchanges - report_.exchanges;
  report_.failed = app_.tally.failed - report_.failed;
  report_.first_failure = app_.tally.first_failure;
  if (app_.on_operation && !report_.command.empty()) app_.on_operation(report_);
}

}  // namespace vlt
