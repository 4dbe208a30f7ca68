// SPDX-License-Identifier: GPL-3.0-or-later
// vlt [--dir FOLDER] [SCRIPT]: the program without a screen, driven by words.
#include <QCoreApplication>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "cli/companion.h"
#include "cli/input.h"
#include "files/settings_file.h"
#include "host/host.h"
#include "shell/start.h"
#include "shell/version.h"

namespace vlt {
namespace {

constexpr const char* kUsage =
    "Usage: vlt [--dir FOLDER] [SCRIPT]\n"
    "\n"
    "Runs the windows of Veltrano3 without a screen. SCRIPT is a file with one word and its arguments a "
    "line;\n"
    "without it the script comes from standard input. FOLDER holds VLT.ini; default: the folder of vlt.\n"
    "\n"
    "Words:\n";

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
    "operation NAME EXCHANGES FAILED REASON, line STATION FIGURE..., frame TIME WAY STATION BYTES MEANING.\n"
    "\n"
    "Exit status: 0 when all went well; 1 when an expect differs, a gesture could not be made, or, behind "
    "strict,\n"
    "an exchange with the meter failed; 2 for a word,\n"
    "a name or an option that is not known; 3 for a message box that no answer was waiting for.\n";

constexpr int kUnknownStatus = static_cast<int>(ScriptStatus::kUnknown);
constexpr int kStopLookMs = 100;
// A handler that still runs when the script is over gets so long to come to its end.
constexpr int kUnwindMs = 2000;
constexpr int kSignalStatus = 128;  // a shell tells an end by a signal so

volatile std::sig_atomic_t stop_signal = 0;

struct Options {
  bool help = false;
  bool version = false;
  std::string folder;
  std::string script;
  std::string wrong;  // what is wrong with them
};

Options ReadOptions(const std::vector<std::string>& words) {
  Options options;
  for (std::size_t i = 0; i < words.size() && options.wrong.empty(); ++i) {
    const std::string& word = words[i];
    if (word == "--help" || word == "-h") {
      options.help = true;
    } else if (word == "--version") {
      options.version = true;
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

class Session {
 public:
  Session(const std::string& folder, std::string script_name)
      : script_name_(std::move(script_name)),
        host_(folder, [this](int number) { return PortDeviceInForce(app_, number); }),
        dialogs_(host_.files),
        events_(host_.events),
        platform_{host_.clock, events_, host_.port, dialogs_, host_.files, host_.process, host_.firmware},
        app_(platform_),
        companion_(app_, dialogs_, events_,
                   {[](const std::string& line) { PutLine(line); },
                    [this](int line, const std::string& text) { PutError(PlaceOf(line), text); },
                    [this] { End(static_cast<int>(companion_.Status())); }}) {
    RegisterAllWindows(app_);
  }

  // False, with a message, when a line can't be right: nothing is run then.
  bool AddScript(const std::string& content) {
    ScriptReader reader;
    reader.Add(content);
    reader.End();
    bool good = true;
    while (auto line = reader.Next()) {
      if (const std::string wrong = Companion::Check(*line); !wrong.empty()) {
        PutError(PlaceOf(line->number), wrong);
        good = false;
      }
      companion_.Add(std::move(*line));
    }
    companion_.EndOfScript();
    return good;
  }

  void ListenToInput() {
    input_ = std::make_unique<StandardInput>([this](ScriptLine line) { companion_.Add(std::move(line)); },
                                             [this] { companion_.EndOfScript(); });
  }

  int Run() {
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [this] {
      if (stop_signal != 0 && !companion_.Finished()) companion_.Stop();
    });
    look.start(kStopLookMs);
    return QCoreApplication::exec();
  }

 private:
  static void PutLine(const std::string& line) {
    std::fwrite(line.data(), 1, line.size(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
  }

  std::string PlaceOf(int line) const {
    return line == 0 ? script_name_ : script_name_ + ":" + std::to_string(line);
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
  Host host_;
  ScriptDialogs dialogs_;
  ProgramEvents events_;
  Platform platform_;
  App app_;
  Companion companion_;
  std::unique_ptr<StandardInput> input_;
};

int RunScript(const Options& options) {
  const bool listens = options.script.empty();
  Session session(options.folder, listens ? "line" : options.script);
  if (listens) {
    session.ListenToInput();
    return session.Run();
  }
  const auto content = ReadScriptFile(options.script);
  if (!content) {
    PutError(options.script, "the script cannot be read");
    return kUnknownStatus;
  }
  return session.AddScript(*content) ? session.Run() : kUnknownStatus;
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
    std::printf("%s%s%s", vlt::kUsage, vlt::Companion::Help().c_str(), vlt::kMore);
    return 0;
  }
  if (options.version) {
    const vlt::VersionRecord version = vlt::ProductVersion();
    std::printf("vlt %d.%d.%d\n", version.major_number, version.minor_number, version.revision);
    return 0;
  }
  for (const int number : {SIGINT, SIGTERM}) {
    std::signal(number, [](int caught) { vlt::stop_signal = caught; });
  }
  try {
    return vlt::RunScript(options);
  } catch (const std::exception& failure) {
    vlt::PutError("", std::string("an unexpected error: ") + failure.what());
    return static_cast<int>(vlt::ScriptStatus::kDiffers);
  }
}
