// SPDX-License-Identifier: GPL-3.0-or-later
// vlt [--json] [--dir FOLDER] [SCRIPT | WORD ARGUMENTS]: the program without a screen, driven by words.
#include <QCoreApplication>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "cli/companion.h"
#include "cli/input.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "host/host.h"
#include "resources/version.h"
#include "shell/start.h"

namespace vlt {
namespace {

constexpr const char* kUsage =
    "Usage: vlt [--json] [--dir FOLDER] [SCRIPT]\n"
    "       vlt [--json] [--dir FOLDER] WORD [ARGUMENT]...\n"
    "\n"
    "Runs the windows of Veltrano3 without a screen. SCRIPT is a file with one word and its arguments a "
    "line;\n"
    "without it the script comes from standard input. FOLDER holds VLT.ini; default: the folder of vlt.\n"
    "A script has at most 1 MB and is a file, no pipe; a line has at most 64 KB, in standard input too.\n"
    "--json makes each line of output a JSON object. On the command line a WORD does one thing and ends:\n";

constexpr const char* kMore =
    "\n"
    "A control is named as the program names it: OUTER_DIAMETERText, Label2(1). It is looked for on the "
    "topmost\n"
    "window; Form10.Label2(1) says on which one. StatusBar1[2] is a part of it: a panel, a list's entry, a "
    "tab, a\n"
    "grid's cell [ROW,COLUMN], a chart's point. A text with blanks stands in quotes, \"\" in them is one "
    "quote, #\n"
    "begins a comment. expect and await also take enabled, disabled, hidden, ticked, unticked without "
    "quotes.\n"
    "\n"
    "Output is one line an event, its fields separated by tabs: status NAME TEXT, message TEXT ANSWER,\n"
    "file open|save PATH, show NAME TEXT STATE VALUE, refused NAME REASON,\n"
    "operation NAME EXCHANGES FAILED REASON, line STATION FIGURE..., frame TIME WAY STATION BYTES MEANING; "
    "those\n"
    "of the words that work with the meter stand in docs/companion.md.\n"
    "\n"
    "Exit status: 0 when all went well; 1 when an expect differs, a gesture could not be made, the meter did "
    "not\n"
    "do what a word asked of it, or, behind strict, an exchange with it failed; 2 for a word, a name or an "
    "option\n"
    "that is not known; 3 for a message box that no answer was waiting for. compare: 0 equal, 1 different, "
    "2 could\n"
    "not tell.\n";

constexpr int kUnknownStatus = static_cast<int>(ScriptStatus::kUnknown);
constexpr Language kOwnLanguage = Language::kEnglish;  // of what vlt says of itself
constexpr int kStopLookMs = 100;
// A handler that still runs when the script is over gets so long to come to its end.
constexpr int kUnwindMs = 2000;
constexpr int kSignalStatus = 128;  // a shell tells an end by a signal so

// The first signal stops the script behind the exchange in hand; Ctrl+C once more ends it at once.
volatile std::sig_atomic_t stop_signal = 0;
volatile std::sig_atomic_t break_asked = 0;

// Signals that others may have silenced for this process: a terminal's window that was closed, and an output
// that nobody reads any more.
constexpr int kQuietSignals[] = {
#ifdef SIGHUP
    SIGHUP,
#endif
#ifdef SIGPIPE
    SIGPIPE,
#endif
    0};

void NoteSignal(int caught) {
  if (stop_signal == 0) {
    stop_signal = caught;
  } else if (caught == SIGINT) {
    break_asked = 1;
  }
}

void HeedSignals() {
  for (const int number : {SIGINT, SIGTERM}) std::signal(number, NoteSignal);
  for (const int number : kQuietSignals) {
    if (number != 0 && std::signal(number, NoteSignal) == SIG_IGN) std::signal(number, SIG_IGN);
  }
}

struct Options {
  bool help = false;
  bool version = false;
  bool json = false;
  std::string folder;
  std::string script;
  ScriptLine word;    // in place of a script: one line of it
  std::string wrong;  // what is wrong with them
};

// A word that may stand alone, and all that is behind it.
ScriptLine WordAlone(std::span<const std::string> words) {
  const Companion::Word* word = Companion::FindWord(words.front());
  if (word == nullptr || !word->alone) return {};
  ScriptLine line{.number = 0, .word = words.front(), .arguments = {}, .error = {}};
  for (const std::string& argument : words.subspan(1)) line.arguments.push_back({.text = argument});
  return line;
}

Options ReadOptions(const std::vector<std::string>& words) {
  Options options;
  for (std::size_t i = 0; i < words.size() && options.wrong.empty(); ++i) {
    const std::string& word = words[i];
    options.word = WordAlone(std::span(words).subspan(i));
    if (!options.word.word.empty()) break;
    if (word == "--help" || word == "-h") {
      options.help = true;
    } else if (word == "--version") {
      options.version = true;
    } else if (word == "--json") {
      options.json = true;
    } else if (word == "--dir" && i + 1 < words.size()) {
      options.folder = words[++i];
    } else if (word == "--dir") {
      options.wrong = "nothing stands behind --dir";
    } else if (word.starts_with('-') && word != "-") {
      options.wrong = "there is no option " + word;
    } else if (!options.script.empty()) {
      options.wrong = "there is more than one script";
    } else {
      options.script = word;
    }
  }
  if (options.script == "-") options.script.clear();
  return options;
}

void PutError(const std::string& place, const std::string& text) {
  std::fprintf(stderr, "vlt: %s%s%s\n", place.c_str(), place.empty() ? "" : ": ", text.c_str());
}

void PutLine(const std::string& line) {
  std::fwrite(line.data(), 1, line.size(), stdout);
  std::fputc('\n', stdout);
  std::fflush(stdout);
}

class Session {
 public:
  Session(const Options& options, std::string script_name)
      : script_name_(std::move(script_name)),
        json_(options.json),
        host_(options.folder, [this](int number) { return PortDeviceInForce(app_, number); }),
        dialogs_(host_.files),
        events_(host_.events),
        platform_{host_.clock, events_, host_.port, dialogs_, host_.files, host_.process, host_.firmware},
        app_(platform_),
        companion_(app_, dialogs_, events_,
                   {[](const std::string& line) { PutLine(line); },
                    [this](const ScriptTrouble& trouble) { PutTrouble(trouble); },
                    [this] { End(static_cast<int>(companion_.Status())); }}) {
    RegisterAllWindows(app_);
    if (json_) companion_.WriteJson();
  }

  // False, with a message, when the file can't be read or a line can't be right: nothing is run then.
  bool AddScript(const std::string& path) {
    std::string content;
    const FileError error = host_.files.ReadAtMost(path, kMostScriptBytes, content);
    if (error != FileError::kGood) {
      PutTrouble(
          {0, ScriptStatus::kUnknown, "the script cannot be read: " + WhyNotRead(error, kOwnLanguage)});
      return false;
    }
    ScriptReader reader;
    reader.Add(content);
    reader.End();
    bool good = true;
    while (auto line = reader.Next()) good = AddLine(std::move(*line)) && good;
    companion_.EndOfScript();
    return good;
  }

  bool AddWord(ScriptLine line) {
    const bool good = AddLine(std::move(line));
    companion_.EndOfScript();
    return good;
  }

  void PutTrouble(const ScriptTrouble& trouble) const {
    const std::string line = trouble.line == 0 ? std::string() : std::to_string(trouble.line);
    PutError(script_name_ + (line.empty() ? "" : ":") + line, EscapedField(trouble.text));
    if (!json_) return;
    const EventFields fields{"trouble", script_name_, line, std::to_string(static_cast<int>(trouble.status)),
                             trouble.text};
    PutLine(JsonLine(fields, NamesOf(fields.front())));
  }

  void ListenToInput() {
    input_ = std::make_unique<StandardInput>([this](ScriptLine line) { companion_.Add(std::move(line)); },
                                             [this] { companion_.EndOfScript(); });
  }

  int Run() {
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [this] {
      if (stop_signal != 0) FollowSignals();
    });
    look.start(kStopLookMs);
    return QCoreApplication::exec();
  }

 private:
  void FollowSignals() {
    if (companion_.Finished()) return;
    if (break_asked != 0) return companion_.Break();
    if (std::exchange(stopping_, true)) return;
    companion_.Stop();
    if (companion_.Finished()) return;
    PutError("", "stopping behind the exchange in hand; Ctrl+C once more ends it at once");
  }

  // False, with a message, for a line that can't be right.
  bool AddLine(ScriptLine line) {
    const std::string wrong = Companion::Check(line);
    if (!wrong.empty()) PutTrouble({line.number, ScriptStatus::kUnknown, wrong});
    companion_.Add(std::move(line));
    return wrong.empty();
  }

  static void End(int status) {
    if (stop_signal != 0) status = kSignalStatus + stop_signal;
    QCoreApplication::exit(status);
    // A loop of the program that waits for a person would never return.
    QTimer::singleShot(kUnwindMs, [status] {
      std::fflush(nullptr);
      std::_Exit(status);
    });
  }

  std::string script_name_;
  bool json_;
  bool stopping_ = false;
  Host host_;
  ScriptDialogs dialogs_;
  ProgramEvents events_;
  Platform platform_;
  App app_;
  Companion companion_;
  std::unique_ptr<StandardInput> input_;
};

int RunScript(const Options& options) {
  if (!options.word.word.empty()) {
    Session session(options, options.word.word);
    return session.AddWord(options.word) ? session.Run() : kUnknownStatus;
  }
  const bool listens = options.script.empty();
  Session session(options, listens ? "line" : options.script);
  if (listens) {
    session.ListenToInput();
    return session.Run();
  }
  return session.AddScript(options.script) ? session.Run() : kUnknownStatus;
}

// The words that may stand alone: "get, set, ...".
std::string WordsAlone() {
  std::string text;
  for (const Companion::Word& word : Companion::Words()) {
    if (word.alone) text += (text.empty() ? "" : ", ") + std::string(word.name);
  }
  return text;
}

}  // namespace
}  // namespace vlt

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const auto options = vlt::ReadOptions({argv + 1, argv + argc});
  if (!options.wrong.empty()) {
    vlt::PutError("", options.wrong + "; vlt --help tells more");
    return vlt::kUnknownStatus;
  }
  if (options.help) {
    std::printf("%s%s.\n\nWords:\n%s%s", vlt::kUsage, vlt::WordsAlone().c_str(),
                vlt::Companion::Help().c_str(), vlt::kMore);
    return 0;
  }
  if (options.version) {
    const vlt::VersionRecord version = vlt::ProductVersion();
    std::printf("vlt %d.%d.%d\n", version.major_number, version.minor_number, version.revision);
    return 0;
  }
  vlt::HeedSignals();
  try {
    return vlt::RunScript(options);
  } catch (const std::exception& failure) {
    vlt::PutError("", std::string("an unexpected error: ") + failure.what());
    return static_cast<int>(vlt::ScriptStatus::kDiffers);
  }
}
