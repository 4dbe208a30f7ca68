// SPDX-License-Identifier: GPL-3.0-or-later
#include <stdexcept>

#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/version.h"
#include "shell/handler_fault.h"
#include "shell_fixture.h"
#include "state/form_lock.h"
#include "state/tested_meters.h"

namespace vlt::test {
namespace {

struct ButtonCase {
  const char* button;
  const char* page;
  bool toggles;
  const char* caption;
};

// In the order in which an open page is looked for.
constexpr ButtonCase kButtons[] = {
    {"Command1", "Form10", true, "PROCESS SETTING"},
    {"Command2", "Form2", true, "RANGE"},
    {"Command3", "Form3", true, "TOTAL"},
    {"Command4", "Form5", true, "DISPLAY"},
    {"Command5", "Form4", true, "STATUS"},
    {"Command6", "Form6", true, "SYSTEM"},
    {"Command7", "Form9", false, "MEASURE"},
    {"Command10", "Form8", true, "RAS"},
    {"Command11", "Form7", true, "MAINTENANCE"},
    {"Command9", "Form11", false, "TRANSIT TIME"},
    {"Command14", "Form12", false, "PV"},
};

class MainWindowTest : public ShellTest {
 protected:
  bool IsActive(const char* button) { return On<PushButton>("MDIForm1", button).BackColour() == 0x80C0FF; }
  std::string NotAvailable(const char* what) { return FormatText(app->Text(text::kPageMissing), {what}); }
};

TEST_F(MainWindowTest, AButtonOpensItsPageAndClosesItByFamily) {
  OpenMainWindow();
  app->state.TransMethod = "RS485";
  app->frame->Window().Form_Activate();
  for (const ButtonCase& given : kButtons) {
    SCOPED_TRACE(given.button);
    EXPECT_EQ(On<PushButton>("MDIForm1", given.button).Caption(), given.caption);
    app->windows.SetMousePointer(kHourglassPointer);
    Press(given.button);
    EXPECT_FALSE(IsActive(given.button) || IsShown(given.page));
    app->windows.SetMousePointer(kNormalPointer);
    for (const bool open : {true, !given.toggles, true}) {
      Press(given.button);
      EXPECT_EQ(IsShown(given.page), open);
      EXPECT_EQ(IsActive(given.button), open);
    }
    // It was hidden and shown, never made anew; what it says is set at each opening.
    EXPECT_EQ(notes[given.page].loads, 1);
    EXPECT_EQ(notes[given.page].inits, given.toggles ? 2 : 3);
  }
}

TEST_F(MainWindowTest, ATestStateIsTold) {
  MDIForm1& window = OpenMainWindow("VR=M627\r\nLANG_FLAG=1\r\n[COMM]\r\nPORT=2\r\nSTATION_NO=07\r\n");
  EXPECT_FALSE(window.lblTestState.Visible());
  MeterIsInTest(*app);
  EXPECT_TRUE(window.lblTestState.Visible());
  EXPECT_EQ(window.lblTestState.BackColour(), kWarningColour);
  EXPECT_EQ(window.lblTestState.Caption(),
            "TEST STATE (COM2-07): outputs may not be what is measured. End it by \"TEST Cancel\" on page "
            "MAINTENANCE.");
  app->state.StationNo = "08";
  MeterTestHasEnded(*app);
  EXPECT_TRUE(window.lblTestState.Visible()) << "another meter's";
  app->state.StationNo = "07";
  MeterTestHasEnded(*app);
  EXPECT_FALSE(window.lblTestState.Visible());
}

TEST_F(MainWindowTest, TheOtherFamilyClosesOnePageAtATime) {
  MDIForm1& window = OpenMainWindow();
  Press("Command3");
  Press("Command2");
  EXPECT_EQ(app->windows.VisiblePages().size(), 2U);
  Press("Command7");
  EXPECT_FALSE(IsShown("Form2") || IsActive("Command2"));
  EXPECT_TRUE(IsShown("Form3") && IsActive("Command3"));
  EXPECT_EQ(app->windows.VisiblePages().back()->Name(), "Form9");
  for (const ButtonCase& row : kButtons) {
    On<PushButton>("MDIForm1", row.button).SetBackColour(kActiveButtonColour);
    app->windows.Load(row.page).Show();
  }
  for (const ButtonCase& row : kButtons) {
    SCOPED_TRACE(row.button);
    EXPECT_TRUE(IsActive(row.button));
    window.excMDIform();
    EXPECT_FALSE(IsActive(row.button));
    EXPECT_EQ(IsShown(row.page), !row.toggles);
  }
}

TEST_F(MainWindowTest, WhatThisVersionLacksIsSaidAndNothingElseHappens) {
  Start("VR=M627\r\nLANG_FLAG=1\r\n");
  MainWindow(*app).Dress();
  RegisterPage("Form2");
  Press("Command2");
  Press("Command7");
  EXPECT_EQ(app->frame->Status().Panel(1), "2026/11/24 10:00:00 " + NotAvailable("MEASURE"));
  EXPECT_FALSE(IsActive("Command7"));
  EXPECT_TRUE(IsShown("Form2"));
  Choose("calcSensorSpacing");
  EXPECT_EQ(StatusText(), NotAvailable("CalcSensorSpacing"));
}

TEST_F(MainWindowTest, SpeaksTheProgramsLanguage) {
  const struct {
    const char* system;
    int offset;
    const char* font;
    int language;  // text ids of panels 2 and 3
    int units;
  } cases[] = {
      {"VR=M627\r\nLANG_FLAG=1\r\nSYSTEM_LANG_FLAG=1\r\n", 5000, "Arial", 2280, 2260},
      {"VR=T305\r\nUNIT_FLAG=1\r\n", 0, "ＭＳ ゴシック", 3890, 2270},
  };
  for (const auto& given : cases) {
    SCOPED_TRACE(given.font);
    UseMeter({});
    MDIForm1& window = OpenMainWindow(given.system);
    const std::pair<const char*, int> captions[] = {
        {"ComPort", 1920},    {"Parameter", 1655},         {"setParam", 1670}, {"readparam", 1660},
        {"versionInfo", 890}, {"calcSensorSpacing", 1381}, {"Command13", 400}, {"Command14", 1342}};
    for (const auto& [name, id] : captions) {
      EXPECT_EQ(window.Find(name)->Caption(), LookupText(id + given.offset)) << name;
    }
    EXPECT_EQ(window.Command1.GetFont(), (Font{given.font, 12, true}));
    EXPECT_EQ(window.readparam.GetFont(), (Font{given.font, 8, false}));
    EXPECT_EQ(window.StatusBar1.GetFont(), (Font{given.font, 10, true}));
    EXPECT_EQ(window.StatusBar1.Panel(2), LookupText(given.language + given.offset));
    EXPECT_EQ(window.StatusBar1.Panel(3), LookupText(given.units + given.offset));
    EXPECT_FALSE(window.Command14.Visible());
    Choose("versionInfo");
    EXPECT_EQ(app->windows.Find("frmAbout")->Find("lblVersion")->Caption(),
              VersionText(given.offset ? "D" : "J"));
    On<PushButton>("frmAbout", "cmdOK").Press();
    EXPECT_EQ(app->windows.Find("frmAbout"), nullptr);
  }
}

// A page whose initialiser ends as nobody foresaw.
class BrokenPage : public PageForm {
 public:
  explicit BrokenPage(App& app) : PageForm(app, "Form7") {}
  void FrmInit() override {
    List().SetMousePointer(kHourglassPointer);
    throw std::runtime_error("boom");
  }
};

TEST_F(MainWindowTest, AHandlerThatThrowsIsToldAndTheProgramGoesOn) {
  app->windows.SetObserver({{}, {}, {}, [this](const std::string& what) { TellHandlerFault(*app, what); }});
  OpenMainWindow();
  app->windows.Register("Form7", [this] { return std::make_unique<BrokenPage>(*app); });
  // Another one while the box is up reaches the status line only.
  platform->dialogs.Answer(MessageAnswer::kOk, [this] {
    Press("Command11");
    Press("Command11");
  });
  Press("Command11");
  EXPECT_EQ(
      platform->dialogs.TakeTexts(),
      Texts{"An unexpected error occurred: boom\nSaved files are unchanged. Please restart the program."});
  EXPECT_EQ(StatusText(), "An unexpected error occurred: boom");
  Press("Command2");
  EXPECT_TRUE(IsShown("Form2"));
}

}  // namespace
}  // namespace vlt::test
