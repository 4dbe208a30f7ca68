// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/walk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>

#include "compare/frm_compare.h"
#include "files/parameter_file.h"
#include "link/port.h"
#include "shell/mdi_form1.h"
#include "shell/start.h"
#include "sim/bytes.h"
#include "sim/scenario.h"
#include "state/tested_meters.h"
#include "support/keeping_printer.h"
#include "support/test_app.h"
#include "support/told_lines.h"

namespace vlt::test {
namespace {

Lines WordsOf(const std::string& line) {
  Lines words;
  std::string word;
  bool quoted = false;
  for (const char c : line + " ") {
    if (c == '"') {
      quoted = !quoted;
    } else if (c != ' ' || quoted) {
      word += c;
    } else if (word == "#") {
      break;
    } else if (!word.empty()) {
      words.push_back(std::exchange(word, {}));
    }
  }
  return words;
}

std::string After(const std::string& text, std::size_t at) { return text.substr(at + 1); }

// "NAME=VALUE" in two.
std::pair<std::string, std::string> Cut(const std::string& text, char between = '=') {
  const std::size_t at = text.find(between);
  return {text.substr(0, at), After(text, at)};
}

// A program and its meter, as the title of a part asks for them.
class Scene {
 public:
  explicit Scene(const std::string& title) : test_(Options(title)) {
    const auto asks = [&](const char* word) { return title.find(word) != std::string::npos; };
    RegisterAllWindows(test_.app);
    SharedState& state = test_.app.state;
    test_.platform.machine.printer = &printer_;
    if (asks("program")) return;
    if (asks("factory")) state.UserInfo = "Factory";
    state.UnitFlag = test_.platform.Meter().config().unit_system;
    EXPECT_TRUE(OpenPort(test_.app));
    if (asks("unknown")) return;
    Know(test_.app, test_.platform.Meter(),
         {{Fact::kUnitSystem}, {Fact::kHeatFlowUnit}, {Fact::kHeatTotalUnit}, {Fact::kTempUnit}});
  }

  // Does a line, and tells what came of it: of ". ..." nothing but what was refused, of "> ..." what was
  // asked and sent, of "= ..." what the controls hold and offer.
  Lines Do(const std::string& line) {
    Lines words = WordsOf(line);
    const std::string mode = words.front().size() == 1 ? words.front() : "";
    if (!mode.empty()) words.erase(words.begin());
    for (auto word = words.begin(); word != words.end(); ++word) {
      if (*word == ";;") {
        Told(".");
        continue;
      }
      if (word->starts_with("after:")) {
        test_.platform.time.After(std::stoi(word->substr(6)), [this, rest = Lines(word + 1, words.end())] {
          for (const std::string& each : rest) DoOne(each);
        });
        break;
      }
      DoOne(*word);
    }
    return Told(mode);
  }

 private:
  static TestOptions Options(const std::string& title) {
    const auto asks = [&](const char* word) { return title.find(word) != std::string::npos; };
    return {.meter = {.specification = asks("single") ? 182 : 81,
                      .path_mode = asks("two pipes")   ? 2
                                   : asks("two paths") ? 1
                                                       : 0,
                      .unit_system = asks("English") ? 1 : 0},
            .lang_offset = asks("Japanese") ? 0 : 5000,
            .frame = !asks("program")};
  }

  void DoOne(const std::string& word) {
    if (form_ != nullptr && !test_.app.windows.Exists(form_)) form_ = nullptr;
    using Handler = void (Scene::*)(const std::string&);
    static const std::pair<std::string_view, Handler> kWords[] = {
        {"open:", &Scene::Open},       {"on:", &Scene::On},
        {"fault:", &Scene::Arm},       {"box:", &Scene::Answer},
        {"file:", &Scene::File},       {"pick:", &Scene::PickFile},
        {"state:", &Scene::Believe},   {"slot:", &Scene::Slot},
        {"slot?", &Scene::TellSlot},   {"origin?", &Scene::TellOrigin},
        {"in:", &Scene::PinInput},     {"key:", &Scene::PressKey},
        {"*", &Scene::Poke},           {"station:", &Scene::Station},
        {"wait:", &Scene::Wait},       {"put:", &Scene::PutFile},
        {"load:", &Scene::LoadFile},   {"write:", &Scene::WriteFile},
        {"start:", &Scene::Start},     {"act:", &Scene::Act},
        {"hear:", &Scene::Hear},       {"rm:", &Scene::RemoveFile},
        {"fail:", &Scene::FailChange}, {"grep:", &Scene::Grep},
        {"print:", &Scene::PrintBy},   {"edit:", &Scene::EditFile},
        {"break:", &Scene::Break}};
    static const std::pair<std::string_view, std::function<void(Scene&)>> kActions[] = {
        {"show", [](Scene& s) { s.form_->Show(); }},
        {"init", [](Scene& s) { s.form_->FrmInit(); }},
        {"leave", [](Scene& s) { s.form_->RunHook(&FormHooks::Form_Deactivate); }},
        {"keep", [](Scene& s) { s.form_->Taihi(); }},
        {"bring", [](Scene& s) { s.form_->SetteiHannei(); }},
        {"settle", [](Scene&) {}},
        {"slots?", [](Scene& s) { s.TellSlots(); }},
        {"took?",
         [](Scene& s) {
           s.notes_.push_back("took " + std::to_string((s.test_.platform.time.NowMs() - s.began_) / 1000) +
                              " s");
         }},
        {"values?", [](Scene& s) { s.TellValues(); }},
        {"fill", [](Scene& s) { s.Fill(); }},
        {"mended", [](Scene& s) { s.test_.platform.Meter().MendMemory(); }},
        {"no ports", [](Scene& s) { s.test_.platform.sockets.clear(); }},
        {"newest", [](Scene& s) { static_cast<frmCompare&>(*s.form_).ShowNewestPoint(); }},
        {"files?", [](Scene& s) { s.TellFiles(); }},
        {"windows?", [](Scene& s) { s.TellWindows(); }},
        {"printed?", [](Scene& s) { s.TellPrinted(); }},
        {"asked?",
         [](Scene& s) {
           const FileQuestion& asked = s.test_.platform.dialogs.questions.back();
           s.notes_.push_back(asked.title + " [" + asked.filter + "] " + asked.folder + asked.name);
         }},
        {"pages?", [](Scene& s) { s.notes_.push_back(std::to_string(s.printer_.pages) + " pages"); }},
        {"unplug", [](Scene& s) { s.test_.platform.line.Unplug(s.Now()); }},
        {"plug", [](Scene& s) { s.test_.platform.line.Plug(s.Now()); }},
        {"close", [](Scene& s) { s.ClosePortOfLine(); }},
        {"sent", [](Scene& s) { s.test_.app.origins.SettingsWereSent(); }},
        {"mend", [](Scene& s) { s.test_.platform.line.faults().Clear(); }},
        {"unload", [](Scene& s) { s.Note(s.test_.app.windows.Unload(s.form_->Name()), "unload"); }}};
    for (const auto& [name, action] : kActions) {
      if (word == name) return test_.app.windows.Run([&, &run = action] { run(*this); });
    }
    for (const auto& [start, handler] : kWords) {
      if (word.starts_with(start)) return (this->*handler)(word.substr(start.size()));
    }
    Work(word);
  }

  void Open(const std::string& name) {
    test_.app.windows.Run([&] {
      form_ = &test_.app.windows.Load(name);
      form_->FrmInit();
      form_->Show();
    });
    if (!shown_.contains(name)) shown_[name] = Shown();
  }
  void On(const std::string& name) {
    form_ = test_.app.windows.Find(name);
    if (form_ != nullptr && !shown_.contains(name)) shown_[name] = Shown();
  }
  // The program from its settings on: the main window, as it stands behind the splash.
  void Start(const std::string& settings) {
    test_.platform.files.files["/app/VLT.ini"] =
        "[SYSTEM]\r\nINI_FILENAME=VLT.ini\r\nVR=M627\r\n" +
        std::string(test_.app.state.LangOffset == 0 ? "" : "LANG_FLAG=1\r\n") + "[COMM]\r\n" +
        std::regex_replace(settings, std::regex(","), "\r\n") + "\r\n";
    StartUp(test_.app);
    MDIForm1& window = MainWindow(test_.app);
    window.Dress();
    window.Show();
    test_.app.windows.Unload("frmSplash");
    On("MDIForm1");
  }
  void Arm(const std::string& words) { test_.platform.Arm(words); }
  void Answer(const std::string& word) {
    static const std::map<std::string, MessageAnswer> kAnswers = {{"ok", MessageAnswer::kOk},
                                                                  {"cancel", MessageAnswer::kCancel},
                                                                  {"yes", MessageAnswer::kYes},
                                                                  {"no", MessageAnswer::kNo}};
    const auto [answer, meanwhile] = Cut(word, '@');
    test_.platform.dialogs.Answer(kAnswers.at(answer), [this, does = answer == word ? "" : meanwhile] {
      if (!does.empty()) DoOne(does);
      const bool waits = test_.app.windows.MousePointer() != kNormalPointer;
      const std::string status = std::regex_replace(test_.StatusText(), std::regex("\n"), "\\n");
      if ((status.empty() || status == status_) && !waits && !test_.app.state.UiLocked) return;
      at_boxes_.push_back("at the box: " + (status == status_ ? "" : status) + (waits ? " (hourglass)" : "") +
                          (test_.app.state.UiLocked ? " (line is taken)" : ""));
    });
  }
  void File(const std::string& path) {
    test_.platform.dialogs.SaveFile(path.empty() ? std::nullopt : std::optional(path));
  }
  void PickFile(const std::string& path) {
    test_.platform.dialogs.OpenFile(path.empty() ? std::nullopt : std::optional(path));
  }
  void Believe(const std::string& what) {
    SharedState& state = test_.app.state;
    const std::map<std::string, int*> numbers = {{"UnitFlag", &state.UnitFlag},
                                                 {"PathMode", &state.PathMode},
                                                 {"OperationMode", &state.OperationMode},
                                                 {"TempUnit", &state.TempUnit},
                                                 {"PvRunning", &state.PvRunning},
                                                 {"RetryNo", &state.RetryNo},
                                                 {"ProcessChannel", &state.ProcessChannel},
                                                 {"TrendChannelIndex", &state.TrendChannelIndex},
                                                 {"RangeKind", &state.RangeKind[0]},
                                                 {"RangeUnit", &state.RangeUnit[0]},
                                                 {"TotalUnit", &state.TotalUnit[0]},
                                                 {"RangeChannel", &state.RangeChannel},
                                                 {"OpenedPort", &state.OpenedPort},
                                                 {"LangOffset", &state.LangOffset}};
    const std::map<std::string, std::string*> texts = {
        {"StationNo", &state.StationNo},           {"PortNo", &state.PortNo},
        {"MeterIdNo", &state.MeterIdNo},           {"ModelCode", &state.ModelCode},
        {"TrendYScaleMin", &state.TrendYScaleMin}, {"IniFilePath", &state.IniFilePath}};
    const auto [name, value] = Cut(what);
    if (const auto text = texts.find(name); text != texts.end()) {
      *text->second = value;
    } else {
      *numbers.at(name) = std::stoi(value);
    }
  }
  std::string& SlotOf(const std::string& name) {
    const auto [section, key] = Cut(name, '/');
    return test_.app.slots.At(section, key);
  }
  void Slot(const std::string& what) {
    const auto [name, text] = Cut(what);
    SlotOf(name) = text;
  }
  void TellSlot(const std::string& name) { notes_.push_back(name + " = " + SlotOf(name)); }
  void TellSlots() {
    std::string told;
    for (std::size_t at = 0; at < SlotRows().size(); ++at) {
      if (const std::string& text = test_.app.slots[at]; !text.empty())
        told += " " + std::string(SlotRows()[at].key) + "=" + text;
    }
    notes_.push_back("slots:" + (told.empty() ? " none" : told));
  }
  void TellOrigin(const std::string& name) { notes_.push_back(name + ": " + At(name).OriginText()); }
  void PutFile(const std::string& what) {
    const auto [path, text] = Cut(what);
    test_.platform.files.files[path] = std::regex_replace(text, std::regex(R"(\\n)"), "\n");
  }
  void LoadFile(const std::string& path) {
    test_.app.windows.Run([&] { OpenParameterFile(test_.app, path); });
  }
  void WriteFile(const std::string& path) {
    test_.app.windows.Run([&] { SaveParameterFile(test_.app, path); });
  }
  void RemoveFile(const std::string& path) { test_.platform.files.files.erase(path); }
  // "/a.ini=OLD=>NEW".
  void EditFile(const std::string& what) {
    const auto [path, how] = Cut(what);
    const std::size_t between = how.find("=>");
    std::string& text = test_.platform.files.files[path];
    const std::size_t at = text.find(how.substr(0, between));
    if (at == std::string::npos) throw std::invalid_argument("no such text");
    text.replace(at, between, how.substr(between + 2));
  }
  // "001C=4": a register that answers with this exception.
  void Break(const std::string& what) {
    const std::uint32_t at = AddressOf(what);
    test_.platform.Meter().BreakMemory(sim::Space::Holding, at, at + 1, std::stoi(After(what, 4)));
  }
  // A value of its own in every register, as an operator may have set them: no total is being reset.
  void Fill() {
    test_.platform.Meter().Fill(7, 0);
    sim::Memory& registers = test_.platform.Meter().holding();
    for (const std::uint32_t mode : {0x0042u, 0x13CAu, 0x1B9Au}) {
      if (registers.Has(mode, 2) && registers.Word(mode) == 2) registers.PutWord(mode, 1);
    }
  }
  // "2=full": the second change from now; "/data/run.csv=full": all of this path.
  void FailChange(const std::string& what) {
    static const std::map<std::string, FileError> kErrors = {{"full", FileError::kFull},
                                                             {"good", FileError::kGood},
                                                             {"permission", FileError::kNoPermission},
                                                             {"missing", FileError::kMissing},
                                                             {"folder", FileError::kNotAFile}};
    const auto [which, error] = Cut(what);
    if (which.starts_with('/')) return test_.platform.files.FailPath(which, kErrors.at(error));
    test_.platform.files.FailChange(std::stoi(which), kErrors.at(error));
  }
  void TellFiles() {
    Lines names;
    for (const auto& [path, text] : test_.platform.files.files) names.push_back(path);
    notes_.push_back("files: " + (names.empty() ? "none" : Joined(names)));
  }
  void TellWindows() {
    Lines names;
    for (const Form* form : test_.app.windows.Open()) {
      if (form->Visible()) names.push_back(form->Name());
    }
    notes_.push_back("windows: " + (names.empty() ? "none" : Joined(names)));
  }
  // The lines of a file that an expression is found in, or its first group in them.
  void Grep(const std::string& what) {
    const auto [path, wanted] = Cut(what);
    std::istringstream lines(test_.platform.files.files[path]);
    Lines found;
    for (std::string line; std::getline(lines, line);) {
      if (line.ends_with('\r')) line.pop_back();
      std::smatch part;
      if (std::regex_search(line, part, std::regex(wanted)))
        found.push_back(part.size() > 1 ? part.str(1) : line);
    }
    notes_.push_back(found.empty() ? "no such line" : Packed("", found, " | ").front());
  }
  void PrintBy(const std::string& how) {
    static const std::map<std::string, PrintOutcome> kOutcomes = {{"good", PrintOutcome::kPrinted},
                                                                  {"cancelled", PrintOutcome::kCancelled},
                                                                  {"none", PrintOutcome::kNoPrinter},
                                                                  {"failed", PrintOutcome::kFailed}};
    printer_.fails = how == "broken";
    if (how == "missing") test_.platform.machine.printer = nullptr;
    if (const auto outcome = kOutcomes.find(how); outcome != kOutcomes.end())
      printer_.outcome = outcome->second;
  }
  void TellPrinted() {
    if (printer_.sheets.empty()) return notes_.push_back("nothing printed");
    Lines texts;
    std::set<std::string> now;
    for (const SheetItem& item : printer_.sheets.back().Items()) {
      now.insert(item.text);
      if (!sheet_.contains(item.text)) texts.push_back(item.text);
    }
    sheet_ = now;
    notes_.push_back(Packed("sheet of " + std::to_string(printer_.pages) + ": ", texts, "; ").front());
  }
  std::int64_t Now() { return test_.platform.time.NowMs() * 1000; }
  // What a running meter does: "1:value=1:flow:nan".
  void Act(const std::string& words) { EXPECT_EQ(sim::ApplyAction(test_.platform.line, words, Now()), ""); }
  // "9=38400,E": the station hears only so.
  void Hear(const std::string& what) {
    const auto [station, how] = Cut(what);
    test_.platform.line.SetHearing(std::stoi(station), {std::stoi(how), how.back()});
  }
  void ClosePortOfLine() {
    bool closed = false;
    ClosePort(test_.app, closed);
  }
  // Another meter in the place of a station, of the shape that follows.
  void Station(const std::string& what) {
    const auto [station, shape] = Cut(what);
    test_.platform.line.AddStation(std::stoi(station), Options(shape).meter);
  }
  // A register that a person sets at the meter itself.
  void PressKey(const std::string& what) {
    const auto at = static_cast<int>(AddressOf(what));
    const std::uint8_t request[] = {6, static_cast<std::uint8_t>(at >> 8), static_cast<std::uint8_t>(at), 0,
                                    static_cast<std::uint8_t>(std::stoi(After(what, 4)))};
    test_.platform.Meter().Serve(request, test_.platform.time.NowMs() * 1000);
  }
  void PinInput(const std::string& what) {
    sim::Bytes bytes;
    EXPECT_TRUE(sim::FromHex(After(what, 4), bytes)) << what;
    EXPECT_TRUE(test_.platform.Meter().PinInput(AddressOf(what), bytes)) << what;
  }
  static std::uint32_t AddressOf(const std::string& what) {
    return static_cast<std::uint32_t>(std::stoul(what.substr(0, 4), nullptr, 16));
  }
  void Wait(const std::string& ms) { test_.platform.time.RunFor(std::stoi(ms)); }
  void Poke(const std::string& what) {
    sim::Memory& registers = test_.platform.Meter().holding();
    const std::string value = After(what, 4);
    if (value.ends_with('d')) return registers.PutDouble(AddressOf(what), std::stod(value));
    if (value.ends_with('l')) return registers.PutLong(AddressOf(what), std::stol(value));
    registers.PutWord(AddressOf(what), std::stoi(value));
  }

  // The row of a grid that begins so, or of this number.
  static int RowOf(const Grid& grid, const std::string& begin) {
    if (begin.find_first_not_of("0123456789") == std::string::npos) return std::stoi(begin);
    for (int row = 0; row < grid.Rows(); ++row) {
      if (grid.Cell(row, 0).starts_with(begin)) return row;
    }
    throw std::invalid_argument("no row " + begin);
  }
  // A gesture on a row of a grid: "grdRows#KIND", ticked by "+" and unticked by "-".
  void WorkRow(const std::string& word) {
    const bool ticks = word.starts_with('+') || word.starts_with('-');
    const auto [name, begin] = Cut(ticks ? word.substr(1) : word, '#');
    auto& grid = dynamic_cast<Grid&>(At(name));
    const int row = RowOf(grid, begin);
    Note(!ticks ? grid.Choose(row) : word[0] == '+' ? grid.Tick(row) : grid.Untick(row), word);
  }
  void AskRows(const std::string& name) {
    const auto& grid = dynamic_cast<Grid&>(At(name));
    for (int row = 1; row < grid.Rows(); ++row) Ask(name + "#" + std::to_string(row));
  }
  // What a control holds, or a row of a grid.
  void Ask(const std::string& name) {
    static const std::set<std::string> kLooks = {"items", "most", "ground", "font"};
    static const std::set<std::string> kOfTheFrame = {"title", "# in the title", "panel 2", "panel 3"};
    if (form_ == nullptr) return notes_.push_back("no window");
    const auto [control, begin] = Cut(name, '#');
    const bool of_row = control != name;
    const int row = of_row ? RowOf(dynamic_cast<Grid&>(At(control)), begin) : 0;
    const std::string wanted = of_row ? control + "(" + std::to_string(row) + ")" : control;
    std::string told;
    for (const auto& [facet, text] : Shown()) {
      if (kLooks.contains(facet.second) || (name.empty() && kOfTheFrame.contains(facet.second))) continue;
      if (facet.first == wanted) told += (told.empty() ? "" : "; ") + Saying(facet.second, text);
    }
    if (const auto* grid = dynamic_cast<Grid*>(form_->Find(control)); grid != nullptr && !of_row) {
      told = std::to_string(grid->Rows()) + " rows; selected " + std::to_string(grid->SelectedRow());
    }
    notes_.push_back((of_row || name.empty() ? "" : name + ": ") + (told.empty() ? "nothing" : told));
  }

  void TellValues() {
    Lines values;
    for (const auto& [facet, text] : Shown()) {
      if (facet.second == "text" || facet.second == "ticked") values.push_back(facet.first + " = " + text);
    }
    notes_.push_back(values.empty() ? "empty" : Packed("", values, "; ").front());
  }

  // A gesture on a control of the window.
  void Work(const std::string& word) {
    if (word.ends_with("??")) return AskRows(word.substr(0, word.size() - 2));
    if (word.ends_with('?')) return Ask(word.substr(0, word.size() - 1));
    if (word.find('#') != std::string::npos) return WorkRow(word);
    const std::size_t value = word.find('=');
    if (value != std::string::npos) {
      const bool by_program = word[value - 1] == ':';
      return Put(At(word.substr(0, by_program ? value - 1 : value)), After(word, value), by_program);
    }
    if (word.starts_with('+') || word.starts_with('-')) {
      auto& box = dynamic_cast<CheckBox&>(At(word.substr(1)));
      return Note(word[0] == '+' ? box.Tick() : box.Untick(), word);
    }
    const std::string whole = word.substr(0, word.size() - 1);
    if (word.ends_with('~')) return Note(dynamic_cast<TextBox&>(At(whole)).LoseFocus(), word);
    if (word.ends_with('+')) return Note(dynamic_cast<UpDown&>(At(whole)).Up(), word);
    if (word.ends_with('-')) return Note(dynamic_cast<UpDown&>(At(whole)).Down(), word);
    Control& control = At(word);
    if (auto* grid = dynamic_cast<Grid*>(&control)) return Note(grid->Choose(1), word);
    if (auto* item = dynamic_cast<MenuItem*>(&control)) return Note(item->Press(), word);
    if (auto* button = dynamic_cast<PushButton*>(&control)) return Note(button->Press(), word);
    Note(dynamic_cast<OptionButton&>(control).Choose(), word);
  }
  void Put(Control& control, const std::string& value, bool by_program) {
    const std::string name = control.FullName();
    if (auto* text = dynamic_cast<TextBox*>(&control)) {
      if (by_program) return text->SetText(value);
      return Note(text->Type(value), name);
    }
    const int number = std::stoi(value);
    if (auto* list = dynamic_cast<ComboBox*>(&control)) {
      if (by_program) return list->SetListIndex(number);
      return Note(list->Choose(number), name);
    }
    if (auto* box = dynamic_cast<CheckBox*>(&control)) return box->SetValue(number);
    if (auto* button = dynamic_cast<PushButton*>(&control)) return button->SetEnabled(number != 0);
    if (auto* option = dynamic_cast<OptionButton*>(&control)) return option->SetValue(number != 0);
    Note(dynamic_cast<TabControl&>(control).Select(number), name);
  }
  Control& At(const std::string& name) {
    Control* control = form_ == nullptr ? nullptr : form_->Find(name);
    if (control == nullptr) throw std::invalid_argument("no control " + name);
    return *control;
  }
  void Note(bool done, const std::string& what) {
    if (!done) refused_.push_back(what);
  }

  Facets Shown() {
    Facets shown = FacetsOf(*form_);
    std::erase_if(shown, [](const auto& facet) { return facet.first.second == "hint"; });
    const auto tell = [&](const char* facet, const std::string& text) {
      if (!text.empty()) shown[{"", facet}] = text;
    };
    const StatusBar& bar = test_.app.frame->Status();
    tell("status", std::regex_replace(test_.StatusText(), std::regex("\n"), "\\n"));
    tell("panel 2", bar.Panel(2));
    tell("panel 3", bar.Panel(3));
    tell("line", test_.app.state.UiLocked ? "line is taken" : "");
    tell("pointer", test_.app.windows.MousePointer() != kNormalPointer ? "hourglass" : "");
    tell("in test", MetersInTestText(test_.app));
    tell("focus", form_->Focused() == nullptr ? "" : form_->Focused()->FullName());
    return shown;
  }
  // The boxes whose text was selected for whoever types next.
  Lines Selected() {
    Lines names;
    for (const Control* control : form_->Controls()) {
      const auto* box = dynamic_cast<const TextBox*>(control);
      if (box == nullptr) continue;
      int& count = selections_[form_->Name() + "." + box->FullName()];
      if (std::exchange(count, box->SelectAllCount()) < box->SelectAllCount())
        names.push_back(box->FullName());
    }
    return names;
  }
  Lines Told(const std::string& mode) {
    Lines lines;
    const auto add = [&](const Lines& more) { lines.insert(lines.end(), more.begin(), more.end()); };
    Lines boxes = test_.platform.dialogs.TakeTexts();
    const auto& messages = test_.platform.dialogs.messages;
    for (std::size_t at = 0; at < boxes.size(); ++at) {
      if (messages[messages.size() - boxes.size() + at].second_is_default)
        boxes[at] += " (the second button)";
    }
    if (test_.app.windows.Find("MDIForm1") != nullptr) {
      status_ = std::regex_replace(test_.StatusText(), std::regex("\n"), "\\n");
    }
    began_ = test_.platform.time.NowMs();
    Lines requests = test_.platform.TakeBareRequests();
    std::erase_if(requests, [&](const auto& request) {
      // The queries of model and measurement mode, which every page makes when it comes.
      if (mode == "=") return request == "03 01 48 00 01" || request == "03 03 E8 00 01";
      return mode == "w" && (request.starts_with("03") || request.starts_with("04"));
    });
    if (form_ != nullptr && !test_.app.windows.Exists(form_)) form_ = nullptr;
    Facets changes;
    if (form_ != nullptr) {
      Facets shown = Shown();
      changes = Changes(shown_[form_->Name()], shown);
      shown_[form_->Name()] = std::move(shown);
    }
    const Lines selected = form_ == nullptr ? Lines{} : Selected();
    if (mode == ">" || mode == "w" || mode == "n") changes.clear();
    if (mode == "o") {
      std::erase_if(changes, [](const auto& change) {
        const std::string& facet = change.first.second;
        return facet != "origin" && facet != "mark" && facet != "# in the title";
      });
    }
    if (mode == "s") std::erase_if(changes, [](const auto& change) { return !change.first.first.empty(); });
    if (mode == "=") {
      std::erase_if(changes, [](const auto& change) {
        const auto& [control, facet] = change.first;
        return control.empty() || facet == "origin" || facet == "state";
      });
    }
    if (!boxes.empty() && mode != ".") add(BoxLines(boxes));
    if (!requests.empty() && mode != "." && mode != "o" && mode != "n") add(RequestLines(requests));
    if (!refused_.empty()) add(Packed("refused: ", std::exchange(refused_, {}), ", "));
    if (mode == "" || mode == "s") add(Packed("text selected: ", selected, ", "));
    for (std::string& note : notes_) note = Whole(note);
    if (mode == "" || mode == "s" || mode == "=") add(at_boxes_);
    if (mode != ".") add(Packed("", notes_, " / "));
    notes_.clear();
    at_boxes_.clear();
    if (mode != ".") add(ChangeLines(changes));
    static const std::regex kMoment(R"(20\d\d/\d\d/\d\d \d\d:\d\d:\d\d|20\d{12})");
    Lines broken;
    for (const std::string& line : lines) {
      for (const std::string& part : Broken(std::regex_replace(line, kMoment, "DATE")))
        broken.push_back(part);
    }
    return broken;
  }

  KeepingPrinter printer_;
  TestApp test_;
  Form* form_ = nullptr;
  std::map<std::string, Facets> shown_;  // of each window, when it was looked at last
  Lines refused_, notes_, at_boxes_;
  std::string status_;  // as it was told last
  std::map<std::string, int> selections_;
  std::set<std::string> sheet_{""};  // the texts of the sheet that was told last
  std::int64_t began_ = 0;           // when what is told next has begun
};

// A line for each of its cases: "each:a,1|b,2 X=%1 Y=%2".
std::vector<std::pair<std::string, std::string>> CasesOf(const std::string& line) {
  static const std::regex kEach(R"((.*)each:(\S+) (.*))");
  std::smatch found;
  if (!std::regex_match(line, found, kEach)) return {{"", line}};
  std::vector<std::pair<std::string, std::string>> cases;
  for (const std::string& name : PartsOf(found.str(2), '|')) {
    std::string each = found.str(1) + found.str(3);
    int number = 0;
    for (std::string value : PartsOf(name, ',')) {
      std::replace(value.begin(), value.end(), ';', ',');
      std::replace(value.begin(), value.end(), '&', ' ');
      each = std::regex_replace(each, std::regex("%" + std::to_string(++number)), value);
    }
    cases.emplace_back(name, each);
  }
  return cases;
}

// The text of a walk, told anew line by line.
class Walk {
 public:
  std::string Told(std::istream& walk) {
    for (std::string line; std::getline(walk, line);) {
      if (line.starts_with("  ")) continue;
      told_ += line + "\n";
      if (line.empty() || line.starts_with("#")) continue;
      SCOPED_TRACE(line);
      if (line.starts_with("begin ")) {
        beginning_ = ". " + line.substr(6);
      } else if (line.starts_with("== ")) {
        title_ = line.substr(0, line.find(": "));
        Begin();
      } else {
        Tell(line);
      }
    }
    return told_;
  }

 private:
  void Begin() {
    scene_ = nullptr;  // one program at a time
    scene_ = std::make_unique<Scene>(title_);
    if (!beginning_.empty()) Done(beginning_);
  }
  Lines Done(std::string line) {
    if (const std::size_t at = line.find("fresh "); at != std::string::npos) {
      Begin();
      line.erase(at, 6);
    }
    try {
      return scene_->Do(line);
    } catch (const std::exception& fault) {
      throw std::invalid_argument(line + ": " + fault.what());
    }
  }
  void Tell(const std::string& line) {
    const auto cases = CasesOf(line);
    if (cases.front().second == line) return Add("  ", InOne("  ", Done(line)));
    // Cases that end alike stand together.
    std::vector<std::pair<std::string, Lines>> ends;
    for (const auto& [name, each] : cases) {
      const Lines lines = Done(each);
      if (!ends.empty() && ends.back().second == lines && ends.back().first.size() < 80) {
        ends.back().first += " | " + name;
      } else {
        ends.push_back({name, lines});
      }
    }
    for (const auto& [name, lines] : ends) {
      const Lines end = InOne("  " + name + ": ", lines);
      const bool one = end.size() == 1;
      told_ += "  " + name + ":" + (one ? " " + (end[0].empty() ? "nothing" : end[0]) : "") + "\n";
      if (!one) Add("    ", end);
    }
  }
  void Add(const std::string& before, const Lines& lines) {
    for (const std::string& line : lines) {
      if (!line.empty()) told_ += before + line + "\n";
    }
  }

  std::string title_, beginning_, told_;
  std::unique_ptr<Scene> scene_;
};

}  // namespace

void ExpectWalk(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  ASSERT_TRUE(file) << path;
  const std::string told = Walk().Told(file);
  file.close();
  ExpectFileTells(path, told);
}

}  // namespace vlt::test
