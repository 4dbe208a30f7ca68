// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/companion.h"

#include <exception>
#include <utility>

#include "cli/look.h"
#include "firmware/frm_maint_main.h"
#include "link/port.h"
#include "shell/closing.h"
#include "shell/handler_fault.h"

namespace vlt {
namespace {

constexpr int kLookAtRunMs = 20;

}  // namespace

const Companion::Word* Companion::FindWord(std::string_view name) {
  for (const Word& word : Words()) {
    if (word.name == name) return &word;
  }
  return nullptr;
}

std::string Companion::Help() {
  constexpr std::size_t kColumn = 29;
  std::string text;
  for (const Word& word : Words()) {
    std::string written = std::string("  ") + word.name + " " + word.arguments;
    written.resize(kColumn, ' ');
    text += written + word.help + "\n";
  }
  return text;
}

std::string Companion::Check(const ScriptLine& line) {
  if (!line.error.empty() || line.word.empty()) return line.error;
  const Word* word = FindWord(line.word);
  if (word == nullptr) return "there is no word " + line.word;
  const std::size_t count = line.arguments.size();
  if (count >= word->least && count <= word->most) return "";
  return std::string("it is written: ") + word->name + " " + word->arguments;
}

Companion::Companion(App& app, ScriptDialogs& dialogs, ProgramEvents& program, Sinks sinks)
    : app_(app),
      dialogs_(dialogs),
      program_(program),
      sinks_(std::move(sinks)),
      meter_words_(app, {.tell = [this](const EventFields& fields) { Report(fields); },
                         .stop = [this] { return finished_ || failed_ || ending_; }}) {
  app_.windows.SetObserver({[this](Form& form) { Watch(form); },
                            [](Form& form) { Forget(form); },
                            {},
                            [this](const std::string& what) { TellHandlerFault(app_, what); }});
  app_.on_operation = [this](const OperationReport& operation) { TellOperation(operation); };
  dialogs_.SetObserver({
      [this](const std::string& text, const std::string& answer) {
        Report({"message", text, answer});
      },
      [this](const std::string& kind, const std::string& path) {
        Report({"file", kind, path});
      },
      [this](const std::string& what) { FailOutside(ScriptStatus::kUnanswered, what); },
      [this](const std::string& what) { FailOutside(ScriptStatus::kDiffers, what); },
  });
}

Companion::~Companion() {
  StopLooking();
  dialogs_.SetObserver({});
  app_.on_operation = {};
  app_.windows.SetObserver({});
  for (Form* form : app_.windows.Open()) Forget(*form);
}

void Companion::Add(ScriptLine line) {
  if (ended_) return;  // behind `quit`
  lines_.push_back(std::move(line));
  if (std::exchange(idle_, false)) PostNext();
}

void Companion::EndOfScript() {
  ended_ = true;
  if (std::exchange(idle_, false)) PostNext();
}

void Companion::PostNext() {
  program_.Post([this, alive = std::weak_ptr(alive_)] {
    if (!alive.expired()) Next();
  });
}

void Companion::Next() {
  if (finished_) return;
  if (failed_ || (lines_.empty() && ended_)) {
    Finish();
  } else if (lines_.empty()) {
    idle_ = true;
  } else {
    const ScriptLine line = std::move(lines_.front());
    lines_.pop_front();
    Run(line);
  }
}

void Companion::Run(const ScriptLine& line) {
  line_ = line.number;
  After after = After::kNext;
  try {
    if (const std::string wrong = Check(line); !wrong.empty()) throw Trouble{ScriptStatus::kUnknown, wrong};
    if (!line.word.empty()) after = (this->*FindWord(line.word)->run)(line.arguments);
  } catch (const Trouble& trouble) {
    Fail(line.number, trouble.status, trouble.text);
  } catch (const std::exception& failure) {
    Fail(line.number, ScriptStatus::kDiffers, std::string("an unexpected error: ") + failure.what());
  }
  if (failed_ || ending_) {
    Finish();
  } else if (after == After::kNext) {
    PostNext();
  }
}

void Companion::HoldUntil(int look_every_ms, std::function<bool()> over) {
  StopLooking();
  look_ = program_.StartTimer(look_every_ms, [this, over = std::move(over)] {
    if (!over()) return;
    StopLooking();
    PostNext();
  });
}

void Companion::StopLooking() {
  if (look_ != 0) program_.StopTimer(std::exchange(look_, 0));
}

void Companion::Fail(int line, ScriptStatus status, const std::string& text) {
  if (std::exchange(failed_, true)) return;
  status_ = status;
  sinks_.trouble({line, status, text});
  // Its handler goes on to its end, and that of a run is behind its last module otherwise.
  if (frmMaint_MAIN* tool = RunningTool()) tool->StopSoon();
}

// For what comes up inside the program. Its handler goes on to its end: a gesture of the script finishes
// behind it.
void Companion::FailOutside(ScriptStatus status, const std::string& text) {
  if (finished_ || finishing_module_) return;
  Fail(line_, status, text);
  if (gestures_ == 0) PostNext();
}

// The work whose handler is on the stack is not cut off in the middle of an exchange: Run comes back here. A
// module on its way into the device is finished first.
void Companion::Finish() {
  if (finishing_module_) return;
  frmMaint_MAIN* tool = RunningTool();
  if (tool == nullptr && gestures_ == 0) return End();
  if (std::exchange(ending_, true)) return;
  StopLooking();
  ended_ = true;
  lines_.clear();
  if (tool == nullptr) return StopWork(app_);
  tool->StopSoon();
  FinishModule(tool->Name());
}

// The run lies on the stack below, so it is waited for by looking.
void Companion::FinishModule(const std::string& tool) {
  finishing_module_ = true;
  if (const auto* wait = dynamic_cast<const frmMaint_Wait*>(app_.windows.Find("frmMaint_Wait"))) {
    Report({"finishing", wait->lblTitle.Caption()});
  }
  look_ = program_.StartTimer(kLookAtRunMs, [this, tool] {
    if (RunningTool() != nullptr) return;
    StopLooking();
    if (auto* window = dynamic_cast<frmMaint_MAIN*>(app_.windows.Find(tool))) TellRun(*window);
    End();
  });
}

void Companion::End() {
  if (std::exchange(finished_, true)) return;
  StopLooking();
  lines_.clear();
  if (app_.platform.port.IsOpen()) {
    bool closed = false;
    ClosePort(app_, closed);
  }
  sinks_.finished();
}

frmMaint_MAIN* Companion::RunningTool() const {
  auto* tool = dynamic_cast<frmMaint_MAIN*>(app_.windows.Find("frmMaint_MAIN"));
  return tool != nullptr && tool->Running() ? tool : nullptr;
}

// How each module has ended, and what the tool says of it.
void Companion::TellRun(frmMaint_MAIN& tool) {
  const auto tell = [&](TextBox& result) {
    if (!result.Text().empty()) Describe({&tool, &result, {}});
  };
  tool.txtDL_Result.ForEach(tell);
  tool.txtResult.ForEach(tell);
  tell(tool.txtVer);
  Describe({&tool, &tool.lblNote, {}});
}

void Companion::Report(const EventFields& fields, std::span<const std::string_view> names) {
  sinks_.output(json_ ? JsonLine(fields, names.empty() ? NamesOf(fields.front()) : names)
                      : TabbedLine(fields));
}

void Companion::Describe(const Place& place) {
  const bool has_rows = place.part.empty() && place.control->Kind() == ControlKind::kGrid;
  std::span<const std::string_view> names;
  for (EventFields& fields : Description(place)) {
    fields.insert(fields.begin(), "show");
    Report(fields, names);
    if (has_rows) names = GridRowNames();
  }
}

void Companion::Watch(Form& form) {
  for (Control* control : form.Controls()) {
    if (control->Kind() == ControlKind::kStatusBar) WatchBar(form, static_cast<StatusBar&>(*control));
  }
}

void Companion::Forget(Form& form) {
  for (Control* control : form.Controls()) {
    if (control->Kind() == ControlKind::kStatusBar) control->Observe({});
  }
}

void Companion::WatchBar(Form& form, StatusBar& bar) {
  std::vector<std::string> told(static_cast<std::size_t>(bar.PanelCount()));
  bar.Observe([this, &form, &bar, told]() mutable {
    for (int panel = 1; panel <= bar.PanelCount(); ++panel) {
      std::string& last = told[static_cast<std::size_t>(panel - 1)];
      if (last == bar.Panel(panel)) continue;
      last = bar.Panel(panel);
      const std::vector<int> part = panel == 1 ? std::vector<int>{} : std::vector<int>{panel};
      Report({"status", Place{&form, &bar, part}.Name(), last});
    }
  });
}

void Companion::TellOperation(const OperationReport& operation) {
  const std::string name = operation.window + "." + operation.command;
  const std::string reason = operation.port_failed        ? CommunicationErrorText(app_)
                             : !operation.refused.empty() ? operation.refused
                                                          : operation.first_failure;
  Report({"operation", name, std::to_string(operation.exchanges), std::to_string(operation.failed), reason});
  if (!strict_ || (operation.failed == 0 && !operation.port_failed && operation.refused.empty())) return;
  FailOutside(ScriptStatus::kDiffers, name + ": " + reason);
}

}  // namespace vlt
