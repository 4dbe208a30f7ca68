// SPDX-License-Identifier: GPL-3.0-or-later
// Runs a script on the program's own windows. Every line is an event of its own: a gesture on a control, as a
// person makes it, or a look at one. The next line follows when the gesture's handler has returned, so
// timers, arriving bytes and cycles run between two lines and inside each of them.
//
// Output is one line an event (cli/event.h):
//   status   NAME TEXT              a panel of a status bar has changed
//   message  TEXT ANSWER            a message box and how it was answered
//   file     open|save PATH         a file dialog; an empty path is Cancel
//   show     NAME TEXT STATE VALUE  what `show` and `form` were asked for
//   refused  NAME REASON            a gesture that nobody could have made
//   operation NAME EXCHANGES FAILED REASON
//                                   what an operation that NAME began did on the line when it ended: how
//                                   many exchanges, how many of them failed, why the first of these did (or
//                                   why the port did not open)
//   line     STATION FIGURE...      what `line` was asked for: figures in the order of LineColumns
//   frame    TIME WAY STATION BYTES MEANING
// and those of the words that need no window (cli/meter_words.h).
//
// The script ends at its first trouble, at `quit`, or behind its last line. Work that it has under way is
// stopped then, as by its stop button: it ends behind the exchange in hand, and tells what became of it. A
// run of the firmware tool is not cut off: the module in hand is finished first, which is told by
//   finishing TEXT                  what it is
// and, at its end, by `show` of its results and of what the tool says of them.
// After that the port is closed, nothing is asked and nothing is saved: that is what `close` is for.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/event.h"
#include "cli/meter_words.h"
#include "cli/names.h"
#include "cli/program_events.h"
#include "cli/script.h"
#include "cli/script_dialogs.h"
#include "cli/trouble.h"
#include "state/app.h"

namespace vlt {

class frmMaint_MAIN;

class Companion {
 public:
  // What goes on when a word is done.
  enum class After {
    kNext,  // the next line
    kHold,  // nothing yet: the word lets the next line run when it is time
  };
  struct Word {
    const char* name;
    const char* arguments;  // as the help shows them
    std::size_t least;      // how many
    std::size_t most;
    const char* help;
    After (Companion::*run)(const Arguments&);
    bool alone = false;  // may stand on the command line in place of a script
  };
  static std::span<const Word> Words();
  // Null for a word that is not known.
  static const Word* FindWord(std::string_view name);
  // One row a word: what is written and what it does.
  static std::string Help();
  // What is wrong with the line before it runs (quotes, word, number of arguments); empty for nothing.
  static std::string Check(const ScriptLine& line);

  struct Sinks {
    std::function<void(const std::string& line)> output;
    // Why the script ended early.
    std::function<void(const ScriptTrouble& trouble)> trouble;
    std::function<void()> finished;
  };

  // Becomes the observer of the app's windows, operations and dialogs until it is destroyed; the dialogs must
  // be those of `app`'s platform, as `program` is its event queue. All windows must be registered.
  Companion(App& app, ScriptDialogs& dialogs, ProgramEvents& program, Sinks sinks);
  ~Companion();
  Companion(const Companion&) = delete;
  Companion& operator=(const Companion&) = delete;

  // From here on each event is a JSON object in place of fields with tabs between them.
  void WriteJson() { json_ = true; }

  // Lines run in the order in which they are added, as soon as events run.
  void Add(ScriptLine line);
  // No line follows.
  void EndOfScript();
  // Ends the script, as `quit` does.
  void Stop() { Finish(); }
  // Ends it now, in the middle of whatever runs.
  void Break() { End(); }

  bool Finished() const { return finished_; }
  ScriptStatus Status() const { return status_; }

 private:
  class Running;
  class Settling;

  void PostNext();
  void Next();
  void Run(const ScriptLine& line);
  void HoldUntil(int look_every_ms, std::function<bool()> over);
  void StopLooking();
  void Fail(int line, ScriptStatus status, const std::string& text);
  void FailOutside(ScriptStatus status, const std::string& text);
  void Finish();
  void FinishModule(const std::string& tool);
  void End();
  // The firmware tool while a run of it goes on, else null.
  frmMaint_MAIN* RunningTool() const;
  void TellRun(frmMaint_MAIN& tool);

  // `names` are those of the fields where the event has others than usual.
  void Report(const EventFields& fields, std::span<const std::string_view> names = {});
  void Describe(const Place& place);
  void Watch(Form& form);
  static void Forget(Form& form);
  void WatchBar(Form& form, StatusBar& bar);
  void TellOperation(const OperationReport& operation);

  Place Find(const Argument& name) const;
  template <class T>
  T& Take(const Place& place, const char* word) const;
  void Refuse(const std::string& name, const std::string& reason);
  // Makes a gesture, or throws Trouble when a person could not make it. The control may be gone afterwards.
  void Gesture(const Place& place, const std::function<bool()>& act);
  bool Press(Control& control);
  // Throws Trouble when what `expect` is given is not so.
  void Compare(const Arguments& arguments) const;
  bool ChooseEntry(const Place& place, ComboBox& list, const Argument& entry);

  After WordStart(const Arguments& arguments);
  After WordOpen(const Arguments& arguments);
  After WordClose(const Arguments& arguments);
  After PutTick(const Arguments& arguments, bool on);
  After WordTick(const Arguments& arguments);
  After WordUntick(const Arguments& arguments);
  After WordChoose(const Arguments& arguments);
  After WordType(const Arguments& arguments);
  After WordLeave(const Arguments& arguments);
  After WordPress(const Arguments& arguments);
  After WordBegin(const Arguments& arguments);
  After WordSelect(const Arguments& arguments);
  After WordUp(const Arguments& arguments);
  After WordDown(const Arguments& arguments);
  After WordAnswer(const Arguments& arguments);
  After WordFile(const Arguments& arguments);
  After WordShow(const Arguments& arguments);
  After WordForm(const Arguments& arguments);
  After WordWait(const Arguments& arguments);
  After WordStrict(const Arguments& arguments);
  After WordExpect(const Arguments& arguments);
  After WordAwait(const Arguments& arguments);
  After WordQuit(const Arguments& arguments);
  template <void (MeterWords::*work)(const Arguments&)>
  After Work(const Arguments& arguments);
  // companion_line.cpp
  After WordLine(const Arguments& arguments);
  void TellLine();
  void TellFrames(std::size_t most);
  void WriteLineFile(const std::string& path, const std::string& content);

  App& app_;
  ScriptDialogs& dialogs_;
  ProgramEvents& program_;
  Sinks sinks_;
  bool json_ = false;
  MeterWords meter_words_;

  std::deque<ScriptLine> lines_;
  bool ended_ = false;    // no line follows
  bool idle_ = true;      // the next line runs when it is added
  int line_ = 0;          // the line that was begun last
  int gestures_ = 0;      // on the stack
  int begun_ = 0;         // of them, those that `begin` has begun
  bool started_ = false;  // `start` was run
  bool strict_ = false;   // a failed exchange ends the script
  EventQueue::TimerId look_ = 0;

  bool failed_ = false;
  bool ending_ = false;  // as soon as the work under way has returned
  bool finished_ = false;
  bool finishing_module_ = false;
  ScriptStatus status_ = ScriptStatus::kGood;
  // Gone before the rest: a task that is still in the queue then does nothing.
  std::shared_ptr<const bool> alive_ = std::make_shared<const bool>(true);
};

}  // namespace vlt
