// SPDX-License-Identifier: GPL-3.0-or-later
// The words of the script language.
#include <algorithm>
#include <charconv>
#include <optional>

#include "cli/companion.h"
#include "cli/look.h"
#include "link/port.h"
#include "shell/mdi_form1.h"
#include "shell/splash.h"
#include "shell/start.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr auto kDiffers = ScriptStatus::kDiffers;
constexpr auto kUnknown = ScriptStatus::kUnknown;
constexpr int kLookEveryMs = 20;

// Windows that a menu of the main window opens.
struct MenuWindow {
  const char* window;
  const char* item;
};
constexpr MenuWindow kMenuWindows[] = {{"FrmCSet", "ComPort"},
                                       {"frmCalc", "calcSensorSpacing"},
                                       {"frmAbout", "versionInfo"},
                                       {"frmLine", "mnuLine"},
                                       {"frmCompare", "mnuCompare"}};

// A whole number without a sign that is not quoted.
std::optional<int> NumberOf(const Argument& argument) {
  int number = 0;
  const char* end = argument.text.data() + argument.text.size();
  const auto [behind, fault] = std::from_chars(argument.text.data(), end, number);
  if (argument.quoted || fault != std::errc() || behind != end || number < 0) return std::nullopt;
  return number;
}

int NumberOrTrouble(const Argument& argument) {
  const auto number = NumberOf(argument);
  if (!number) throw Trouble{kUnknown, argument.text + " is no whole number"};
  return *number;
}

// Null when nothing in the main window opens a window of this name.
Control* OpenerOf(MDIForm1& frame, const std::string& window) {
  for (const MDIForm1::PageButton& row : MDIForm1::PageButtons()) {
    if (row.page == window) return &(frame.*row.button);
  }
  for (const MenuWindow& row : kMenuWindows) {
    if (row.window == window) return frame.Find(row.item);
  }
  return nullptr;
}

bool IsSplash(const Form& form) {
  return std::any_of(SplashVariants().begin(), SplashVariants().end(),
                     [&](const SplashVariant& variant) { return form.Name() == variant.form; });
}

// Why a person cannot reach the control; empty when they can.
std::string WhyNot(const Place& place) {
  if (!place.form->Visible()) return "its window is not shown";
  const std::string state = StateOf(*place.control);
  return state == "enabled" ? "" : state;
}

constexpr std::string_view kStates[] = {"enabled", "disabled", "hidden"};
constexpr std::string_view kValues[] = {"ticked", "unticked", "running", "stopped"};

constexpr std::string_view kFrom = "from";  // asks for the origin of a value instead of its text

// How `expect` compares a text.
struct Match {
  const char* word;
  const char* fails;
  bool (*fits)(std::string_view is, std::string_view wanted);
};
constexpr Match kMatches[] = {
    {"is", "and not", [](std::string_view is, std::string_view wanted) { return is == wanted; }},
    {"contains", "and does not contain",
     [](std::string_view is, std::string_view wanted) { return is.find(wanted) != std::string_view::npos; }},
    {"ends", "and does not end with",
     [](std::string_view is, std::string_view wanted) { return is.ends_with(wanted); }},
};

const Match& MatchOf(const Argument& how) {
  for (const Match& match : kMatches) {
    if (how.text == match.word) return match;
  }
  throw Trouble{kUnknown, "expect does not know " + how.text};
}

template <std::size_t N>
bool IsOneOf(const std::string_view (&words)[N], const Argument& argument) {
  return !argument.quoted && std::find(std::begin(words), std::end(words), argument.text) != std::end(words);
}

}  // namespace

std::span<const Companion::Word> Companion::Words() {
  static constexpr Word kWords[] = {
      {"start", "", 0, 0, "start the program; goes on when its main or choice window is there",
       &Companion::WordStart},
      {"open", "WINDOW", 1, 1, "press the main window's button or menu that opens it: open Form10",
       &Companion::WordOpen},
      {"close", "[WINDOW]", 0, 1, "end the program by its End button, or close a window by its frame",
       &Companion::WordClose},
      {"tick", "NAME", 1, 1, "tick a check box, or a row of a grid: tick Grid[3]", &Companion::WordTick},
      {"untick", "NAME", 1, 1, "take the tick away", &Companion::WordUntick},
      {"choose", "NAME [ENTRY]", 1, 2,
       "choose an option button, a list's entry by index or text, or a grid's row from 1 on",
       &Companion::WordChoose},
      {"type", "NAME TEXT", 2, 2, "replace what is in a text box", &Companion::WordType},
      {"leave", "NAME", 1, 1, "go on to another field: the text is checked", &Companion::WordLeave},
      {"press", "NAME", 1, 1, "press a button or menu; goes on when its work is done", &Companion::WordPress},
      {"begin", "NAME", 1, 1, "press it and go on at once: press its stop button later",
       &Companion::WordBegin},
      {"select", "NAME TAB", 2, 2, "show a tab, by index or caption", &Companion::WordSelect},
      {"up", "NAME", 1, 1, "press the upper arrow of an up-down", &Companion::WordUp},
      {"down", "NAME", 1, 1, "press the lower one", &Companion::WordDown},
      {"answer", "[ANSWER]...", 0, 64, "ok, cancel, yes, no for the next boxes; none: forget those left",
       &Companion::WordAnswer},
      {"file", "[PATH]", 0, 1, "what the next file or folder dialog is given; none: Cancel",
       &Companion::WordFile},
      {"show", "NAME", 1, 1, "tell name, text, state and value of a control", &Companion::WordShow},
      {"form", "[WINDOW]", 0, 1, "show every control of a window; none: of the topmost one",
       &Companion::WordForm},
      {"wait", "[MS]", 0, 1, "let the program run so long; none: until all that was begun is done",
       &Companion::WordWait},
      {"strict", "[off]", 0, 1, "from here on a failed exchange ends the script with status 1",
       &Companion::WordStrict},
      {"expect", "NAME [HOW] TEXT", 2, 3, "end with status 1 unless it shows TEXT; HOW: contains, ends, from",
       &Companion::WordExpect},
      {"await", "MS NAME [HOW] TEXT", 3, 4, "the same, but it may take so long until it is so",
       &Companion::WordAwait},
      {"get", "NAME [CH]", 1, 2, "read a parameter from the meter; without CH, at each of its places",
       &Companion::Work<&MeterWords::Get>, true},
      {"set", "NAME VALUE [CH]", 2, 3, "write one and read it back; status 1 unless it is stored",
       &Companion::Work<&MeterWords::Set>, true},
      {"keep", "", 0, 0, "have the meter keep what is set when its power goes",
       &Companion::Work<&MeterWords::Keep>, true},
      {"names", "[PART]", 0, 1, "list the parameters whose name or title holds PART",
       &Companion::Work<&MeterWords::Names>, true},
      {"snapshot", "FILE", 1, 1, "read all parameters of the meter into a file",
       &Companion::Work<&MeterWords::TakeSnapshot>, true},
      {"compare", "A B [all]", 2, 3,
       "a snapshot, a parameter file, meter or fields: status 0 equal, 1 different, 2 could not tell",
       &Companion::Work<&MeterWords::CompareSides>, true},
      {"restore", "FILE [other]", 1, 2, "bring the meter to what a snapshot holds; other: also another meter",
       &Companion::Work<&MeterWords::Restore>, true},
      {"scan", "[KEY=VALUE]...", 0, 2, "look for meters on the port; port=2, stations=1-31",
       &Companion::Work<&MeterWords::Scan>, true},
      {"spacing", "KEY=VALUE...", 1, 12, "the distance of the sensors: outer_diameter=60.5 sensor_type=1 ...",
       &Companion::Work<&MeterWords::Spacing>, true},
      {"line", "[WHAT [ARGUMENT]]", 0, 2,
       "tell the line's figures by station; WHAT: frames [N], reset, csv FILE, save FILE",
       &Companion::WordLine},
      {"quit", "", 0, 0, "end the script here; nothing is asked, nothing is saved", &Companion::WordQuit},
      {"end", "", 0, 0, "the same", &Companion::WordQuit},
  };
  return kWords;
}

// Counts a gesture while it is on the stack.
class Companion::Running {
 public:
  explicit Running(int& count) : count_(count) { ++count_; }
  ~Running() { --count_; }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  int& count_;
};

// What windows show is brought up to date behind a word, before the next one looks at it; also behind one
// that has failed.
class Companion::Settling {
 public:
  explicit Settling(Windows& windows) : windows_(windows) {}
  ~Settling() {
    windows_.Run([] {});
  }
  Settling(const Settling&) = delete;
  Settling& operator=(const Settling&) = delete;

 private:
  Windows& windows_;
};

template <void (MeterWords::*work)(const Arguments&)>
Companion::After Companion::Work(const Arguments& arguments) {
  if (program_.Ended()) throw Trouble{kDiffers, "the program has ended"};
  const Settling settling(app_.windows);
  const Running running(gestures_);
  (meter_words_.*work)(arguments);
  return After::kNext;
}

Place Companion::Find(const Argument& name) const {
  if (program_.Ended()) throw Trouble{kDiffers, "the program has ended"};
  return FindControl(app_.windows, name.text);
}

template <class T>
T& Companion::Take(const Place& place, const char* word) const {
  auto* control = dynamic_cast<T*>(place.control);
  if (control != nullptr && place.part.empty()) return *control;
  throw Trouble{kUnknown, place.Name() + " is nothing to " + word};
}

void Companion::Refuse(const std::string& name, const std::string& reason) {
  Report({"refused", name, reason});
  throw Trouble{kDiffers, name + ": " + reason};
}

void Companion::Gesture(const Place& place, const std::function<bool()>& act) {
  const std::string name = place.Name();
  if (const std::string reason = WhyNot(place); !reason.empty()) Refuse(name, reason);
  const Running running(gestures_);
  if (!act()) Refuse(name, "cannot be used now");
}

bool Companion::Press(Control& control) {
  if (auto* button = dynamic_cast<PushButton*>(&control)) return button->Press();
  return static_cast<MenuItem&>(control).Press();
}

Companion::After Companion::WordStart(const Arguments&) {
  if (std::exchange(started_, true)) throw Trouble{kDiffers, "the program can be started only once"};
  // A word before it may have opened the port.
  if (bool closed = false; app_.platform.port.IsOpen()) ClosePort(app_, closed);
  meter_words_.SettingsAreRead();
  if (StartUp(app_) == StartResult::kEnded) {
    const std::string& reason = app_.state.StartFaultReason;
    if (reason.empty()) throw Trouble{kDiffers, "another instance of the program runs in this folder"};
    Refuse("start", reason);
  }
  HoldUntil(kLookEveryMs, [this] {
    const Form* top = TopWindow(app_.windows);
    return program_.Ended() || (top != nullptr && !IsSplash(*top));
  });
  return After::kHold;
}

Companion::After Companion::WordOpen(const Arguments& arguments) {
  const std::string& name = arguments[0].text;
  auto* frame = dynamic_cast<MDIForm1*>(app_.windows.Find("MDIForm1"));
  if (frame == nullptr || program_.Ended()) throw Trouble{kDiffers, "the main window is not open"};
  Control* opener = OpenerOf(*frame, name);
  if (opener == nullptr) throw Trouble{kUnknown, "nothing in the main window opens " + name};
  const auto is_shown = [&] {
    const Form* form = app_.windows.Find(name);
    return form != nullptr && form->Visible();
  };
  // The button of a page that is shown hides it, so bringing it to the front takes two presses.
  const bool was_shown = is_shown();
  if (was_shown && TopWindow(app_.windows)->Name() == name) return After::kNext;
  const auto press = [&] { Gesture({frame, opener, {}}, [&] { return Press(*opener); }); };
  press();
  if (was_shown && !is_shown()) press();
  if (!is_shown()) throw Trouble{kDiffers, name + " did not open"};
  return After::kNext;
}

Companion::After Companion::WordClose(const Arguments& arguments) {
  if (arguments.empty()) {
    const Place end = Find({"MDIForm1.Command13"});
    Gesture(end, [&] { return Press(*end.control); });
    if (!program_.Ended() && !failed_) throw Trouble{kDiffers, "the program did not end"};
    return After::kNext;
  }
  const std::string& name = arguments[0].text;
  const Form& form = FindForm(app_.windows, name);
  if (!form.Visible() || !form.HasCloseCommand()) Refuse(name, "cannot be closed now");
  const Running running(gestures_);
  bool closed = false;
  app_.windows.Run([&] { closed = app_.windows.Unload(name); });
  if (!closed) Refuse(name, "stays open");
  return After::kNext;
}

Companion::After Companion::PutTick(const Arguments& arguments, bool on) {
  const Place place = Find(arguments[0]);
  if (place.control->Kind() == ControlKind::kGrid && place.part.size() == 1) {
    auto& grid = static_cast<Grid&>(*place.control);
    const int row = place.part.front();
    Gesture(place, [&] { return on ? grid.Tick(row) : grid.Untick(row); });
  } else {
    auto& box = Take<CheckBox>(place, on ? "tick" : "untick");
    Gesture(place, [&] { return on ? box.Tick() : box.Untick(); });
  }
  return After::kNext;
}

Companion::After Companion::WordTick(const Arguments& arguments) { return PutTick(arguments, true); }

Companion::After Companion::WordUntick(const Arguments& arguments) { return PutTick(arguments, false); }

bool Companion::ChooseEntry(const Place& place, ComboBox& list, const Argument& entry) {
  const auto index = NumberOf(entry);
  if (index && *index < list.Count()) return list.Choose(*index);
  const auto& items = list.Items();
  const auto found = std::find(items.begin(), items.end(), entry.text);
  if (found == items.end()) Refuse(place.Name(), "has no entry " + entry.text);
  return list.Choose(static_cast<int>(found - items.begin()));
}

Companion::After Companion::WordChoose(const Arguments& arguments) {
  const Place place = Find(arguments[0]);
  if (arguments.size() == 1) {
    auto& option = Take<OptionButton>(place, "choose without an entry");
    Gesture(place, [&] { return option.Choose(); });
  } else if (place.control->Kind() == ControlKind::kGrid) {
    const int row = NumberOf(arguments[1]).value_or(0);
    Gesture(place, [&] { return static_cast<Grid*>(place.control)->Choose(row); });
  } else {
    auto& list = Take<ComboBox>(place, "choose an entry of");
    Gesture(place, [&] { return ChooseEntry(place, list, arguments[1]); });
  }
  return After::kNext;
}

Companion::After Companion::WordType(const Arguments& arguments) {
  const Place place = Find(arguments[0]);
  auto& box = Take<TextBox>(place, "type into");
  const std::string& text = arguments[1].text;
  Gesture(place, [&] {
    if (box.Locked()) Refuse(place.Name(), "is read-only");
    // A person sees that the rest is not taken; a script would send the wrong value.
    if (box.MaxLength() > 0 && CharCount(text) > static_cast<std::size_t>(box.MaxLength())) {
      Refuse(place.Name(), "takes no more than " + std::to_string(box.MaxLength()) + " characters");
    }
    return box.Type(text);
  });
  return After::kNext;
}

Companion::After Companion::WordLeave(const Arguments& arguments) {
  const Place place = Find(arguments[0]);
  auto& box = Take<TextBox>(place, "leave");
  Gesture(place, [&] { return box.LoseFocus(); });
  return After::kNext;
}

Companion::After Companion::WordPress(const Arguments& arguments) {
  const Place place = Find(arguments[0]);
  if (place.control->Kind() != ControlKind::kMenuItem) Take<PushButton>(place, "press");
  Gesture(place, [&] { return Press(*place.control); });
  return After::kNext;
}

Companion::After Companion::WordBegin(const Arguments& arguments) {
  const Running begun(begun_);
  PostNext();
  WordPress(arguments);
  return After::kHold;
}

Companion::After Companion::WordSelect(const Arguments& arguments) {
  const Place place = Find(arguments[0]);
  auto& tabs = Take<TabControl>(place, "select a tab of");
  Gesture(place, [&] {
    const auto index = NumberOf(arguments[1]);
    for (int tab = 0; tab < tabs.Count(); ++tab) {
      if (index ? tab == *index : tabs.TabCaption(tab) == arguments[1].text) return tabs.Select(tab);
    }
    Refuse(place.Name(), "has no tab " + arguments[1].text);
    return false;
  });
  return After::kNext;
}

Companion::After Companion::WordUp(const Arguments& arguments) {
  const Place place = Find(arguments[0]);
  auto& arrows = Take<UpDown>(place, "move up");
  Gesture(place, [&] { return arrows.Up(); });
  return After::kNext;
}

Companion::After Companion::WordDown(const Arguments& arguments) {
  const Place place = Find(arguments[0]);
  auto& arrows = Take<UpDown>(place, "move down");
  Gesture(place, [&] { return arrows.Down(); });
  return After::kNext;
}

Companion::After Companion::WordAnswer(const Arguments& arguments) {
  if (arguments.empty()) dialogs_.DropAnswers();
  for (const Argument& argument : arguments) {
    const auto answer = AnswerOf(argument.text);
    if (!answer) throw Trouble{kUnknown, "there is no answer " + argument.text};
    dialogs_.Answer(*answer);
  }
  return After::kNext;
}

Companion::After Companion::WordFile(const Arguments& arguments) {
  dialogs_.File(arguments.empty() ? std::nullopt : std::optional(arguments[0].text));
  return After::kNext;
}

Companion::After Companion::WordShow(const Arguments& arguments) {
  Describe(Find(arguments[0]));
  return After::kNext;
}

Companion::After Companion::WordForm(const Arguments& arguments) {
  Form* form = arguments.empty() ? TopWindow(app_.windows) : &FindForm(app_.windows, arguments[0].text);
  if (form == nullptr) throw Trouble{kDiffers, "no window is open"};
  for (Control* control : form->Controls()) Describe({form, control, {}});
  return After::kNext;
}

Companion::After Companion::WordWait(const Arguments& arguments) {
  if (arguments.empty()) {
    HoldUntil(kLookEveryMs, [this] { return begun_ == 0; });
  } else {
    HoldUntil(NumberOrTrouble(arguments[0]), [] { return true; });
  }
  return After::kHold;
}

Companion::After Companion::WordStrict(const Arguments& arguments) {
  strict_ = arguments.empty();
  if (!strict_ && arguments[0].text != "off")
    throw Trouble{kUnknown, "strict does not know " + arguments[0].text};
  return After::kNext;
}

void Companion::Compare(const Arguments& arguments) const {
  const Place place = Find(arguments[0]);
  const Argument& wanted = arguments.back();
  const bool whole = arguments.size() == 2;
  const bool origin = !whole && arguments[1].text == kFrom;
  if (origin && !IsOneOf(kOriginWords, wanted)) {
    throw Trouble{kUnknown, "expect does not know from " + wanted.text};
  }
  const Match& match = whole || origin ? kMatches[0] : MatchOf(arguments[1]);
  std::string is;
  if (origin) {
    is = OriginOf(*place.control);
  } else if (whole && IsOneOf(kStates, wanted)) {
    is = StateOf(*place.control);
  } else if (whole && IsOneOf(kValues, wanted)) {
    is = ValueOf(*place.control);
  } else {
    is = TextOf(place);
  }
  if (match.fits(is, wanted.text)) return;
  throw Trouble{kDiffers, place.Name() + " is \"" + is + "\" " + match.fails + " \"" + wanted.text + "\""};
}

Companion::After Companion::WordExpect(const Arguments& arguments) {
  Compare(arguments);
  return After::kNext;
}

Companion::After Companion::WordAwait(const Arguments& arguments) {
  const Arguments wanted(arguments.begin() + 1, arguments.end());
  const auto until = app_.platform.clock.NowMs() + NumberOrTrouble(arguments[0]);
  HoldUntil(kLookEveryMs, [this, wanted, until, line = line_] {
    try {
      Compare(wanted);
      return true;
    } catch (const Trouble& trouble) {
      const bool over = program_.Ended() || app_.platform.clock.NowMs() >= until;
      if (over) Fail(line, trouble.status, trouble.text);
      return over;
    }
  });
  return After::kHold;
}

Companion::After Companion::WordQuit(const Arguments&) {
  ended_ = true;
  lines_.clear();
  return After::kNext;
}

}  // namespace vlt
