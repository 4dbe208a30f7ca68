// SPDX-License-Identifier: GPL-3.0-or-later
// What every window shows, against a file of its own in data/: as it opens on each shape of meter and in both
// languages, what it reads, what each of its boxes, options, lists and fields changes in the others, and what
// its buttons ask, send and show.
//
// A change of what a window shows is a change of these files, to be looked at before it is committed. Running
// the tests with VELTRANO3_RENEW=1 in the environment writes them anew (and fails, so that nobody leaves it
// on).
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "link/port.h"
#include "pages/parameter_page.h"
#include "shell/start.h"
#include "shown/shown_facets.h"
#include "support/test_app.h"
#include "tests/pages/page_fixture.h"

namespace vlt::test {
namespace {

using Lines = std::vector<std::string>;

struct Scene {
  Shape shape;
  int lang_offset;
};
constexpr int kJapanese = 0;
constexpr int kEnglish = 5000;

const Scene kScenes[] = {{kOnePath, kEnglish},
                         {kOnePath, kJapanese},
                         {kTwoPaths, kEnglish},
                         {kTwoPipes, kEnglish},
                         {kSingleModel, kEnglish}};

// A window on a meter with a value of its own in every register.
class Stage {
 public:
  Stage(const Scene& scene, const std::string& name)
      : test_({.meter = {.specification = scene.shape.specification,
                         .path_mode = scene.shape.path_mode,
                         .unit_system = scene.shape.unit_system},
               .lang_offset = scene.lang_offset,
               .frame = name != "MDIForm1"}) {
    RegisterAllWindows(test_.app);
    test_.platform.dialogs.CloseUnexpected();
    test_.platform.Meter().Fill(7, 0);
    test_.app.state.UnitFlag = scene.shape.unit_system;
    EXPECT_TRUE(OpenPort(test_.app));
    test_.app.windows.Run([&] {
      form_ = &test_.app.windows.Load(name);
      form_->FrmInit();
      form_->Show();
    });
    test_.platform.TakeRequests();
    shown_ = FacetsOf(*form_);
  }
  Form& Window() { return *form_; }
  bool IsOpen() { return test_.app.windows.Exists(form_); }
  const Facets& Shown() const { return shown_; }

  // What has changed since the last call, boxes and requests first.
  Lines TakeChanges(const std::string& except = {}) {
    Lines lines;
    for (const std::string& text : test_.platform.dialogs.TakeTexts()) lines.push_back("! " + text);
    for (const std::string& frame : test_.platform.TakeRequests()) {
      lines.push_back("> " + frame.substr(3, frame.size() - 9));
    }
    if (!IsOpen()) return {"closed"};
    const Facets before = std::exchange(shown_, FacetsOf(*form_));
    const Lines changed = Differences(before, shown_, except);
    lines.insert(lines.end(), changed.begin(), changed.end());
    return lines;
  }

 private:
  TestApp test_;
  Form* form_ = nullptr;
  Facets shown_;
};

// A text as it grows, line by line.
class Text {
 public:
  void Title(const std::string& title) { text_ += "\n== " + title + "\n"; }
  void Add(const Lines& lines) {
    for (const std::string& line : lines) text_ += "  " + line + "\n";
  }
  void Step(const std::string& what, const Lines& changes) {
    text_ += what + (changes.empty() ? ": nothing else\n" : "\n");
    Add(changes);
  }
  const std::string& Whole() const { return text_; }

 private:
  std::string text_;
};

void Explore(Stage& stage, Control& control, Text& text) {
  const std::string name = control.FullName();
  const auto step = [&](const std::string& what, bool done) {
    if (done) text.Step(name + " " + what, stage.TakeChanges(name));
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
      step("typed", box.Type("7") && box.LoseFocus());
      return;
    }
    case ControlKind::kComboBox: {
      auto& box = static_cast<ComboBox&>(control);
      for (int at = 0; at < box.Count(); ++at) {
        if (!box.Choose(at)) return;
        const Lines changes = stage.TakeChanges(name);
        if (!changes.empty()) text.Step(name + " " + std::to_string(at), changes);
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
      step("row 1", static_cast<Grid&>(control).Choose(1));
      return;
    default:
      return;
  }
}

void ReadAndExplore(const Scene& scene, const std::string& name, Text& text) {
  Stage stage(scene, name);
  if (auto* page = dynamic_cast<ParameterPage*>(&stage.Window())) {
    page->chkCheck.Tick();
    page->ReadParameter.Press();
    text.Step("read", stage.TakeChanges());
  }
  const std::vector<Control*> controls = stage.Window().Controls();
  for (const bool buttons : {false, true}) {
    for (Control* control : controls) {
      if (!stage.IsOpen()) return;
      if ((control->Kind() == ControlKind::kPushButton) == buttons) Explore(stage, *control, text);
    }
  }
}

std::string AsText(const std::string& name) {
  Text text;
  Facets first;
  for (const Scene& scene : kScenes) {
    text.Title(std::string("opened: ") + scene.shape.name +
               (scene.lang_offset == kJapanese ? ", Japanese" : ""));
    const Stage stage(scene, name);
    text.Add(Differences(first, stage.Shown()));
    if (first.empty()) first = stage.Shown();
  }
  for (const int scene : {0, 3}) {
    text.Title(std::string("read and worked: ") + kScenes[scene].shape.name);
    ReadAndExplore(kScenes[scene], name, text);
  }
  return text.Whole();
}

class WindowsAsText : public testing::TestWithParam<const char*> {};

TEST_P(WindowsAsText, IsWhatItsFileTells) {
  const std::string path = std::string(TEST_DATA) + "/" + GetParam() + ".txt";
  const std::string now = AsText(GetParam());
  if (std::getenv("VELTRANO3_RENEW") != nullptr) {
    std::ofstream(path, std::ios::binary) << now;
    FAIL() << path << " is written anew";
  }
  SCOPED_TRACE("If this is meant, look at what VELTRANO3_RENEW=1 makes of " + path);
  std::ifstream file(path, std::ios::binary);
  std::string line, told;
  std::istringstream lines(now);
  for (int number = 1; std::getline(file, told); ++number) {
    ASSERT_TRUE(std::getline(lines, line)) << "ends before line " << number << ": " << told;
    ASSERT_EQ(line, told) << "in line " << number;
  }
  EXPECT_FALSE(std::getline(lines, line)) << "goes on with " << line;
}

INSTANTIATE_TEST_SUITE_P(All, WindowsAsText,
                         testing::Values("Form2", "Form3", "Form4", "Form5", "Form6", "Form7", "Form8",
                                         "Form9", "Form10", "Form11", "Form12", "FrmCSet", "frmLine",
                                         "frmAbout", "frmCompare", "frmCalc", "frmMaint_MAIN",
                                         "frmMaint_COMM", "frmMaint_Wait", "frmFoundRuns", "MDIForm1"),
                         [](const auto& window) { return std::string(window.param); });

}  // namespace
}  // namespace vlt::test
