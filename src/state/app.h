// SPDX-License-Identifier: GPL-3.0-or-later
// The App ties together what a handler works with. One a process; a test builds as many as it likes.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/platform.h"
#include "state/line_tally.h"
#include "state/main_frame.h"
#include "state/page_slots.h"
#include "state/shared_state.h"
#include "state/value_origins.h"
#include "values/code_tables.h"
#include "window/form.h"

namespace vlt {

// The title of message boxes.
inline constexpr const char* kProductTitle = "Veltrano3";

struct LinePace;
class LineRecord;

class App {
 public:
  explicit App(Platform& machine);
  ~App();
  App(const App&) = delete;
  App& operator=(const App&) = delete;

  Platform& platform;
  SharedState state;
  PageSlots slots;
  ValueOrigins origins;
  Windows windows;
  LineTally tally;
  // What each attempt on the line did.
  const std::unique_ptr<LineRecord> line;
  // What event timing remembers of the line between two exchanges.
  const std::unique_ptr<LinePace> pace;
  // Told at the end of each operation of a window.
  std::function<void(const OperationReport&)> on_operation;
  // The main window while it exists, else null.
  MainFrame* frame = nullptr;

  // The text of an id in the language in force. An unknown id throws std::out_of_range.
  std::string Text(int id) const;
  // What the code tables depend on.
  CodeContext Codes() const;
  // Current date and time, a blank, the text.
  std::string Stamped(const std::string& text);
  // Writes a stamped line into status panel 1 of the main window, when there is one.
  void Status(const std::string& text);

  // Message boxes under the product's title. `Show` has one button; the icon is none, stop or information.
  void Show(const std::string& text, MessageIcon icon = MessageIcon::kNone);
  // OK and Cancel with a question mark; true for OK.
  bool AskOkCancel(const std::string& text);
  // Yes and No, No answers the enter key; true for Yes.
  bool AskYesNo(const std::string& text, MessageIcon icon);
};

}  // namespace vlt
