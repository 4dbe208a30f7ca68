// SPDX-License-Identifier: GPL-3.0-or-later
// What every window shows, against a file of its own in data/: as it opens on each shape of meter and in both
// languages, what it reads, what each of its boxes, options, lists and fields changes in the others, and what
// its buttons ask, send and show. Of a page of parameters also: what each of its channels or outputs reads
// and sets on each shape of meter, what comes back with the page and with a file, what another meter or
// another unit system changes, and what a bad line leaves.
//
// A change of what a window shows is a change of these files, to be looked at before it is committed. Running
// the tests with VELTRANO3_RENEW=1 in the environment writes them anew (and fails, so that nobody leaves it
// on).
#include <gtest/gtest.h>

#include "files/parameter_file.h"
#include "link/port.h"
#include "live/form12.h"
#include "pages/parameter_page.h"
#include "shell/start.h"
#include "shown/told_window.h"
#include "sim/addresses.h"
#include "support/test_app.h"
#include "tests/pages/page_fixture.h"

namespace vlt::test {
namespace {

const char* const kWindows[] = {
    "Form2",      "Form3",   "Form4",         "Form5",         "Form6",         "Form7",        "Form8",
    "Form9",      "Form10",  "Form11",        "Form12",        "FrmCSet",       "frmLine",      "frmAbout",
    "frmCompare", "frmCalc", "frmMaint_MAIN", "frmMaint_COMM", "frmMaint_Wait", "frmFoundRuns", "MDIForm1"};
const Shape kScenes[] = {kOnePath, kTwoPaths, kTwoPipes, kSingleModel};
constexpr int kJapanese = 0;
constexpr int kEnglish = 5000;
constexpr int kChannels = 3;
constexpr int kQuantities = static_cast<int>(sim::Quantity::TempDifference) + 1;

// A window on a meter with a value of its own in every register, which stands still.
class Stage {
 public:
  Stage(const vlt::test::Shape& shape, const std::string& name, int lang_offset = kEnglish)
      : test_({.meter = MeterOf(shape), .lang_offset = lang_offset, .frame = name != "MDIForm1"}),
        shape_(shape) {
    for (int value = 0; value < kChannels * kQuantities; ++value) {
      const auto quantity = static_cast<sim::Quantity>(value % kQuantities);
      if (quantity == sim::Quantity::Ras) continue;
      test_.platform.Meter().SetLive(value / kQuantities, quantity, 1.5 * value + 1);
    }
    test_.platform.Meter().PinInput(sim::address::kSupplyInput, {0x40, 0x46, 0x90, 0, 0, 0, 0, 0});
    test_.platform.Meter().PinInput(sim::address::kReturnInput, {0x40, 0x41, 0x90, 0, 0, 0, 0, 0});
    RegisterAllWindows(test_.app);
    test_.platform.dialogs.CloseUnexpected();
    test_.platform.Meter().Fill(7, 0);
    test_.app.state.UnitFlag = shape.unit_system;
    EXPECT_TRUE(OpenPort(test_.app));
    Know(test_.app, test_.platform.Meter(),
         {{Fact::kUnitSystem}, {Fact::kHeatFlowUnit}, {Fact::kHeatTotalUnit}, {Fact::kTempUnit}});
    test_.app.windows.Run([&] {
      form_ = &test_.app.windows.Load(name);
      form_->FrmInit();
      form_->Show();
    });
    opening_ = Take();
  }
  const vlt::test::Shape& Shape() const { return shape_; }
  Form& Window() { return *form_; }
  ParameterPage* Page() { return dynamic_cast<ParameterPage*>(form_); }
  SharedState& State() { return test_.app.state; }
  VirtualPlatform& Platform() { return test_.platform; }
  // As an event of its own.
  void Do(const std::function<void()>& action) { test_.app.windows.Run(action); }
  void ComeBack() {
    Do([&] { form_->FrmInit(), form_->Show(); });
  }
  void OpenAnew() {
    const std::string name = form_->Name();
    Do([&] { EXPECT_TRUE(test_.app.windows.Unload(name)); });
    Do([&] { form_ = &test_.app.windows.Load(name); });
    ComeBack();
  }
  // A file that holds a text of its own for every key.
  void OpenFile(const std::function<std::string(const std::string& key, int row)>& text_of) {
    std::string text, section;
    int number = 0;
    for (const SlotRow& row : SlotRows()) {
      if (std::exchange(section, row.section) != row.section) text += "[" + section + "]\n";
      text += std::string(row.key) + "=" + text_of(row.key, number++) + "\n";
    }
    test_.platform.files.files["/data/plant.ini"] = text;
    Do([&] { OpenParameterFile(test_.app, "/data/plant.ini"); });
  }
  bool IsOpen() { return test_.app.windows.Exists(form_); }
  const Outcome& Opening() const { return opening_; }

  // What has happened since the last call.
  Outcome Take() {
    Outcome outcome{test_.platform.dialogs.TakeTexts(), test_.platform.TakeBareRequests(), {}};
    if (!IsOpen()) return outcome;
    outcome.shown = FacetsOf(*form_);
    const auto tell = [&](const char* facet, const std::string& text) {
      if (!text.empty()) outcome.shown[{"", facet}] = text;
    };
    const StatusBar& bar = test_.app.frame->Status();
    tell("status", test_.StatusText());
    tell("panel 2", bar.Panel(2));
    tell("panel 3", bar.Panel(3));
    tell("line", State().UiLocked ? "line is taken" : "");
    tell("pointer", test_.app.windows.MousePointer() != kNormalPointer ? "hourglass" : "");
    return outcome;
  }

 private:
  TestApp test_;
  vlt::test::Shape shape_;
  Form* form_ = nullptr;
  Outcome opening_;
};

void Explore(Stage& stage, Control& control, ToldWindow& told) {
  const std::string name = control.FullName();
  const auto step = [&](const std::string& what, bool done) {
    if (done) told.Step(name + " " + what, stage.Take(), name);
  };
  switch (control.Kind()) {
    case ControlKind::kCheckBox: {
      auto& box = static_cast<CheckBox&>(control);
      if (!box.Ticked()) step("on", box.Tick());
      step("off", box.Untick());
      return step("on again", box.Tick());
    }
    case ControlKind::kOptionButton:
      return step("chosen", static_cast<OptionButton&>(control).Choose());
    case ControlKind::kTextBox: {
      auto& box = static_cast<TextBox&>(control);
      return step("typed", box.Type("7") && box.LoseFocus());
    }
    case ControlKind::kComboBox: {
      auto& box = static_cast<ComboBox&>(control);
      for (int at = 0; at < box.Count(); ++at) {
        if (box.Choose(at)) told.Step(name + "(" + std::to_string(at) + ")", stage.Take(), name);
      }
      return;
    }
    case ControlKind::kTab: {
      auto& tabs = static_cast<TabControl&>(control);
      for (int at = tabs.Count() - 1; at >= 0; --at) step("tab " + std::to_string(at), tabs.Select(at));
      return;
    }
    case ControlKind::kUpDown:
      step("up", static_cast<UpDown&>(control).Up());
      return step("down", static_cast<UpDown&>(control).Down());
    case ControlKind::kPushButton:
      // What begins a run that only a person ends is worked by tests of its own.
      if (stage.Window().StopButton() == nullptr) step("pressed", static_cast<PushButton&>(control).Press());
      return;
    case ControlKind::kGrid:
      return step("row 1", static_cast<Grid&>(control).Choose(1));
    default:
      return;
  }
}

void ReadAndExplore(Stage& stage, ToldWindow& told) {
  if (ParameterPage* page = stage.Page()) {
    page->chkCheck.Tick();
    page->ReadParameter.Press();
    told.Step("read", stage.Take());
  }
  const std::vector<Control*> controls = stage.Window().Controls();
  for (const bool buttons : {false, true}) {
    for (Control* control : controls) {
      if (!stage.IsOpen()) return;
      if ((control->Kind() == ControlKind::kPushButton) == buttons) Explore(stage, *control, told);
    }
  }
}

// The options that choose a channel or an output.
std::vector<OptionButton*> Choosers(Form& window) {
  std::vector<OptionButton*> found;
  for (Control* control : window.Controls()) {
    if (control->Kind() != ControlKind::kOptionButton || !window.IsChoice(*control)) continue;
    found.push_back(static_cast<OptionButton*>(control));
  }
  return found;
}

void Press(Stage& stage, std::initializer_list<const char*> commands, const std::string& when,
           ToldWindow& told) {
  for (const char* command : commands) {
    auto* button = static_cast<PushButton*>(stage.Window().Find(command));
    if (button == nullptr) continue;
    button->Press();
    told.Step(command + (" at " + when), stage.Take());
  }
}

void TickAll(Stage& stage) {
  for (const char* all : {"chkCheck", "chkCheckHeat"}) {
    if (Control* box = stage.Window().Find(all)) static_cast<CheckBox*>(box)->Tick();
  }
  // The read-out of everything is a work of its own.
  if (Control* box = stage.Window().Find("Read_All_Set_Data")) static_cast<CheckBox*>(box)->Untick();
}

void ReadAndSet(Stage& stage, ToldWindow& told) {
  const auto commands = {"ReadParameter", "SetParameter", "ReadParameterHeat", "SetParameterHeat"};
  Press(stage, commands, "nothing ticked", told);
  TickAll(stage);
  told.Step("all ticked", stage.Take());
  const std::vector<OptionButton*> choosers = Choosers(stage.Window());
  if (choosers.empty()) Press(stage, commands, "all ticked", told);
  for (OptionButton* chooser : choosers) {
    if (!chooser->Choose()) continue;
    told.Step(chooser->FullName() + " chosen", stage.Take());
    Press(stage, commands, chooser->FullName(), told);
  }
}

// What changes a page without a gesture on it.
void ComeAndGo(Stage& stage, ToldWindow& told) {
  const auto step = [&](const std::string& what) { told.Step(what, stage.Take()); };
  stage.OpenAnew();
  told.Anew("opened anew", stage.Take());
  TickAll(stage);
  step("all ticked");
  stage.State().UiLocked = true;
  stage.ComeBack();
  step("shown while another page has the line");
  stage.State().UiLocked = false;
  stage.ComeBack();
  step("shown again");
  stage.State().UnitFlag = 1 - stage.State().UnitFlag;
  stage.Do([&] { stage.Window().FrmInit(); });
  step("captions anew with the other unit system");
  stage.ComeBack();
  step("shown with the other unit system");
  const auto is_unit = [](const std::string& key) { return key.ends_with("_Unit"); };
  const auto text_of = [&](int most) {
    return [=](const std::string& key, int row) {
      return is_unit(key) ? "[" + std::to_string(row) + "]" : std::to_string(row % most);
    };
  };
  stage.OpenFile(text_of(1000));
  step("a file of large numbers opened");
  stage.OpenFile(text_of(3));
  step("a file of small numbers opened");
  stage.OpenFile([&](const std::string& key, int) { return is_unit(key) ? "0" : ""; });
  step("a file without values opened");
  stage.OpenAnew();
  told.Anew("opened anew", stage.Take());
  for (const int path_mode : {0, 1, 2}) {
    stage.Platform().Meter().holding().PutWord(0x03E8, path_mode);
    stage.ComeBack();
    step("shown on a meter of path mode " + std::to_string(path_mode));
  }
}

// Another meter was left on its second channel.
void OnAChannelThatIsNotThere(Stage& stage, ToldWindow& told) {
  SharedState& state = stage.State();
  for (int* kept : {&state.ProcessChannel, &state.RangeChannel, &state.TotalChannel, &state.DetailChannel}) {
    *kept = 1;
  }
  stage.OpenAnew();
  TickAll(stage);
  told.Anew("opened on the second channel", stage.Take());
  Press(stage, {"ReadParameter", "SetParameter"}, "the second channel", told);
}

// A run of a window, looked at behind so many requests and stopped at the last look.
struct Run {
  const char* window;
  const char* save;  // asks for a file, where there is such a button
  const char* start;
  const char* stop;
  std::vector<int> looks;
  int silence;  // behind so many requests the meter does not answer for a while
};
const Run kRuns[] = {
    {"Form9", "SaveCSV", "Start", "Stop", {1, 13, 20, 30, 42}, 22},
    {"Form12", "cmdSaveCSV", "cmdStart", "cmdStop", {1, 6, 10, 14, 20}, 12},
    {"Form11", "", "ProfileStartButton", "ProfileStopButton", {1, 3, 20, 45, 50}, 47},
};

void PrepareRun(Form& window) {
  if (window.Name() != "Form12") return;
  auto& page = static_cast<Form12&>(window);
  page.chkStationNo(0).Tick();
  page.chkStationNo(1).Tick();
  page.CH_Combo1.Choose(0);
  page.CH_Combo2.Choose(0);
  page.cmbDisp1.Choose(1);
  page.cmbDisp2.Choose(2);
  page.txtCycle.Type("2");
}

void WorkARun(Stage& stage, const Run& run, ToldWindow& told) {
  VirtualPlatform& platform = stage.Platform();
  PrepareRun(stage.Window());
  told.Step("prepared", stage.Take());
  for (const bool locked : {true, false}) {
    stage.State().UiLocked = locked;
    stage.ComeBack();
    told.Step(locked ? "shown while another page has the line" : "shown again", stage.Take());
  }
  if (*run.save != '\0') platform.dialogs.SaveFile("/data/run");
  Press(stage, {run.save}, "rest", told);
  VirtualTime& time = platform.time;
  int asked = 0;
  const auto look = [&](int at) {
    told.Step("behind " + std::to_string(at) + " requests", stage.Take());
    if (at != run.looks.back()) return;
    stage.ComeBack();
    told.Step("shown again", stage.Take());
    Press(stage, {run.stop}, "work", told);
  };
  platform.line.SetLogSink([&](const sim::LogEntry& entry) {
    if (entry.kind != sim::LogEntry::Kind::Request) return;
    if (++asked == run.silence) time.Post([&] { platform.Arm("silence*4"); });
    if (std::find(run.looks.begin(), run.looks.end(), asked) == run.looks.end()) return;
    time.Post([&look, at = asked] { look(at); });
  });
  stage.Do([&] { static_cast<PushButton*>(stage.Window().Find(run.start))->Press(); });
  time.RunFor(60'000);
  platform.line.SetLogSink({});
  told.Step("over", stage.Take());
  stage.OpenAnew();
  told.Anew("opened anew", stage.Take());
}

void OnBadLines(Stage& stage, ToldWindow& told) {
  TickAll(stage);
  Press(stage, {"ReadParameter", "ReadParameterHeat"}, "a good line", told);
  stage.State().RetryNo = 0;
  for (const char* fault : {"silence*ever", "exception=2*ever", "wrong-echo*ever"}) {
    stage.Platform().Arm(fault);
    Press(stage, {"ReadParameter", "SetParameter", "ReadParameterHeat", "SetParameterHeat", "SaveParameter"},
          fault, told);
    stage.Platform().line.faults().Clear();
  }
  Press(stage, {"ReadParameter", "ReadParameterHeat"}, "a good line", told);
}

std::string AsText(const std::string& name) {
  ToldWindow told;
  for (const Shape& shape : kScenes) told.Opened(shape.name, Stage(shape, name).Opening());
  const auto part = [&](const char* kind, std::initializer_list<int> scenes,
                        const std::function<void(Stage&)>& work) {
    for (const int scene : scenes) {
      Stage stage(kScenes[scene], name);
      told.Part(kind, kScenes[scene].name, stage.Opening());
      work(stage);
    }
  };
  part("read and worked", {0, 2}, [&](Stage& stage) { ReadAndExplore(stage, told); });
  for (const Run& run : kRuns) {
    if (run.window != name) continue;
    part("a run", {1, 2, 3}, [&](Stage& stage) { WorkARun(stage, run, told); });
  }
  if (Stage(kScenes[0], name).Page() == nullptr) return told.Whole();
  part("read and set", {0, 1, 2, 3}, [&](Stage& stage) {
    stage.Platform().dialogs.AgreeToUnexpected();
    ReadAndSet(stage, told);
    if (stage.Shape().specification == kSingle) return OnAChannelThatIsNotThere(stage, told);
    if (stage.Shape().unit_system != 0) return;
    told.Part("shown again", stage.Shape().name, stage.Opening());
    ComeAndGo(stage, told);
  });
  part("on bad lines", {0}, [&](Stage& stage) {
    stage.Platform().dialogs.AgreeToUnexpected();
    OnBadLines(stage, told);
  });
  return told.Whole();
}

std::string AllWords() {
  ToldWords words;
  for (const char* window : kWindows) {
    words.Add(window, Stage(kScenes[0], window).Opening().shown,
              Stage(kScenes[0], window, kJapanese).Opening().shown);
  }
  return words.Whole();
}

class WindowsAsText : public testing::TestWithParam<const char*> {};

TEST_P(WindowsAsText, IsWhatItsFileTells) {
  ExpectFileTells(std::string(TEST_DATA) + "/" + GetParam() + ".txt", AsText(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(All, WindowsAsText, testing::ValuesIn(kWindows),
                         [](const auto& window) { return std::string(window.param); });

TEST(WordsOfWindowsAsText, AreWhatTheirFileTells) {
  ExpectFileTells(std::string(TEST_DATA) + "/words.txt", AllWords());
}

}  // namespace
}  // namespace vlt::test
