// SPDX-License-Identifier: GPL-3.0-or-later
#include "state/app.h"

#include "resources/string_table.h"
#include "state/line_pace.h"
#include "state/line_record.h"

namespace vlt {

App::App(Platform& machine)
    : platform(machine),
      slots(state),
      windows(machine),
      line(std::make_unique<LineRecord>(machine.clock)),
      pace(std::make_unique<LinePace>()) {}

App::~App() = default;

std::string App::Text(int id) const { return LookupText(id, state.Spoken()); }

CodeContext App::Codes() const {
  return {state.Spoken(), state.UnitFlag, state.ModelCode, state.OperationMode};
}

std::string App::Stamped(const std::string& text) { return DateTimeText(platform.clock.Now()) + " " + text; }

void App::Status(const std::string& text) {
  if (frame != nullptr) frame->Status().SetPanel(1, Stamped(text));
}

void App::Show(const std::string& text, MessageIcon icon) {
  platform.dialogs.Ask({.text = text, .title = kProductTitle, .buttons = MessageButtons::kOk, .icon = icon});
}

bool App::AskOkCancel(const std::string& text) {
  return platform.dialogs.Ask({.text = text,
                               .title = kProductTitle,
                               .buttons = MessageButtons::kOkCancel,
                               .icon = MessageIcon::kQuestion}) == MessageAnswer::kOk;
}

bool App::AskYesNo(const std::string& text, MessageIcon icon) {
  return platform.dialogs.Ask({.text = text,
                               .title = kProductTitle,
                               .buttons = MessageButtons::kYesNo,
                               .icon = icon,
                               .second_is_default = true}) == MessageAnswer::kYes;
}

}  // namespace vlt
