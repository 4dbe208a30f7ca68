// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/handler_fault.h"

#include "resources/string_table.h"
#include "resources/text_ids.h"

namespace vlt {

void TellHandlerFault(App& app, const std::string& what) {
  const std::string told = FormatText(app.Text(text::kHandlerFault), {what});
  app.windows.SetMousePointer(kNormalPointer);
  app.Status(told.substr(0, told.find('\n')));
  bool& telling = app.state.TellingFault;
  if (telling) return;
  telling = true;
  app.Show(told, MessageIcon::kStop);
  telling = false;
}

}  // namespace vlt
