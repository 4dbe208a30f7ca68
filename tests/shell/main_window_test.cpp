#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "shell/frm_about.h"
#include "shell/version.h"
#include "shell_fixture.h"
#include "state/form_lock.h"

namespace vlt::test {
namespace {

class MainWindowTest : public ShellTest {
 protected:
  bool IsActive(const char* button) { return On<PushButton>("MDIForm1", button).BackColour() == 0x80C0FF; }
  void Press(const char* button) { On<PushButton>("MDIForm1", button).Press(); }
  void Choose(const char* item) { On<MenuItem>("MDIForm1", item).Press(); }
  std::string NotAvailable(const char* what) { return FormatText(app->Text(text::kPageMissing), {what}); }
};

struct ButtonCase {
  const char* button;
  const char* page;
  bool toggles;
  const char* caption;
};

constexpr ButtonCase kButtons[] = {
    {"Command1", "Form10", true, "PROCESS SETTING"},
    {"Command2", "Form2", true, "RANGE"},
    {"Command3", "Form3", true, "TOTAL"},
    {"Command4", "Form5", true, "DISPLAY"},
    {"Command5", "Form4", true, "STATUS"},
    {"Command6", "Form6", true, "SYSTEM"},
    {"Command10", "Form8", true, "RAS"},
    {"Command11", "Form7", true, "MAINTENANCE"},
    {"Command7", "Form9", false, "MEASURE"},
    {"Command9", "Form11", false, "TRANSIT TIME"},
    {"Command14", "Form12", false, "PV"},
};

class PageButtonTest : public MainWindowTest, public ::testing::WithParamInterface<ButtonCase> {};

TEST_P(PageButtonTest, OpensItsPageAndClosesItByFamily) {
  const ButtonCase& given = GetParam();
  RegisterNotingPages();
  OpenMainWindow();
  app->state.TransMethod = "RS485";
  app->frame->Window().Form_Activate();
  EXPECT_EQ(On<PushButton>("MDIForm1", given.button).Caption(), given.caption);
  app->windows.SetMousePointer(kHourglassPointer);
  Press(given.button);
  EXPECT_EQ(app->windows.Open().size(), 1U);
  EXPECT_FALSE(IsActive(given.button));
  app->windows.SetMousePointer(kNormalPointer);

  Press(given.button);
  EXPECT_TRUE(IsShown(given.page));
  EXPECT_TRUE(IsActive(given.button));
  EXPECT_EQ(app->windows.Open().size(), 2U);
  Press(given.button);
  EXPECT_EQ(IsShown(given.page), !given.toggles);
  EXPECT_EQ(IsActive(given.button), !given.toggles);
  Press(given.button);
  EXPECT_TRUE(IsShown(given.page));
  // It was hidden and shown, never made anew; what it says is set at each opening.
  EXPECT_EQ(notes[given.page].loads, 1);
  EXPECT_EQ(notes[given.page].inits, given.toggles ? 2 : 3);
}

INSTANTIATE_TEST_SUITE_P(Buttons, PageButtonTest, ::testing::ValuesIn(kButtons));

TEST_F(MainWindowTest, TogglingPagesLieBesideEachOther) {
  RegisterNotingPages();
  OpenMainWindow();
  Press("Command2");
  Press("Command3");
  EXPECT_TRUE(IsShown("Form2"));
  EXPECT_EQ(app->windows.VisiblePages().back()->Name(), "Form3");
  Press("Command7");
  EXPECT_FALSE(IsShown("Form2"));
  EXPECT_FALSE(IsActive("Command2"));
  EXPECT_TRUE(IsShown("Form3"));
  EXPECT_TRUE(IsActive("Command3"));
  EXPECT_EQ(app->windows.VisiblePages().back()->Name(), "Form9");
}

TEST_F(MainWindowTest, OnePageIsClosedAtATimeInAFixedOrder) {
  RegisterNotingPages();
  MDIForm1& window = OpenMainWindow();
  const char* order[] = {"Command1", "Command2",  "Command3",  "Command4", "Command5", "Command6",
                         "Command7", "Command10", "Command11", "Command9", "Command14"};
  for (const char* button : order) On<PushButton>("MDIForm1", button).SetBackColour(kActiveButtonColour);
  for (const ButtonCase& row : kButtons) app->windows.Load(row.page).Show();
  for (const char* button : order) {
    SCOPED_TRACE(button);
    EXPECT_TRUE(IsActive(button));
    window.excMDIform();
    EXPECT_FALSE(IsActive(button));
    for (const ButtonCase& row : kButtons) {
      // A page of the other family stays where it is.
      if (row.button != std::string(button)) continue;
      EXPECT_EQ(IsShown(row.page), !row.toggles);
    }
  }
  window.excMDIform();
  EXPECT_EQ(app->windows.VisiblePages().size(), 3U);
}

TEST_F(MainWindowTest, WhatThisVersionLacksIsSaidAndNothingElseHappens) {
  OpenMainWindow();
  app->windows.Register("Form2",
                        [this] { return std::make_unique<NotingPage>(*app, "Form2", notes["Form2"]); });
  Press("Command2");
  Press("Command7");
  EXPECT_EQ(StatusText(), NotAvailable("MEASURE"));
  EXPECT_EQ(app->frame->Status().Panel(1).substr(0, 20), "2026/11/24 10:00:00 ");
  EXPECT_FALSE(IsActive("Command7"));
  EXPECT_TRUE(IsShown("Form2"));
  Choose("ComPort");
  EXPECT_EQ(StatusText(), NotAvailable("Communication"));
  Choose("calcSensorSpacing");
  EXPECT_EQ(StatusText(), NotAvailable("CalcSensorSpacing"));
  EXPECT_EQ(app->windows.Open().size(), 2U);
}

struct DressCase {
  const char* system;
  std::map<std::string, std::string> captions;
  const char* font;
  const char* language;
  const char* units;
};

TEST_F(MainWindowTest, SpeaksTheProgramsLanguage) {
  const DressCase cases[] = {
      {"VR=M627\r\nLANG_FLAG=1\r\nSYSTEM_LANG_FLAG=1\r\nUNIT_FLAG=0\r\n",
       {{"Parameter", "File"},
        {"setParam", "Save"},
        {"readparam", "Open"},
        {"versionInfo", "Version"},
        {"Command13", "End"}},
       "Arial",
       "JAPANESE",
       "METRIC"},
      {"VR=M627\r\nSYSTEM_LANG_FLAG=0\r\nUNIT_FLAG=1\r\n",
       {{"Parameter", LookupText(1655)}, {"Command13", LookupText(400)}, {"Command14", LookupText(1342)}},
       "ＭＳ ゴシック",
       LookupText(3890),
       LookupText(2270)},
  };
  for (const DressCase& given : cases) {
    SCOPED_TRACE(given.font);
    MDIForm1& window = OpenMainWindow(given.system);
    for (const auto& [name, caption] : given.captions)
      EXPECT_EQ(window.Find(name)->Caption(), caption) << name;
    EXPECT_EQ(window.Command1.GetFont(), (Font{given.font, 12, true}));
    EXPECT_EQ(window.readparam.GetFont(), (Font{given.font, 8, false}));
    EXPECT_EQ(window.StatusBar1.GetFont(), (Font{given.font, 10, true}));
    EXPECT_EQ(window.StatusBar1.Panel(2), given.language);
    EXPECT_EQ(window.StatusBar1.Panel(3), given.units);
    app->windows.Run([&] { platform->dialogs.Answer(MessageAnswer::kNo); });
    app->windows.Unload("MDIForm1");
  }
}

TEST_F(MainWindowTest, OneMeterOnALineHasNoPvButton) {
  for (const auto& [method, visible] : {std::pair("RS232C", false), {"RS485", true}, {"rs485", false}}) {
    MDIForm1& window = OpenMainWindow();
    app->state.TransMethod = method;
    window.Dress();
    EXPECT_EQ(window.Command14.Visible(), visible) << method;
    app->state.TransMethod = visible ? "RS232C" : "RS485";
    window.Show();
    EXPECT_EQ(window.Command14.Visible(), !visible) << method;
  }
}

TEST_F(MainWindowTest, ALockReachesMenusExitAndClosing) {
  RegisterNotingPages();
  MDIForm1& window = OpenMainWindow();
  Press("Command2");
  FormLock(*app, *app->windows.Find("Form2"), 0);
  for (const char* item : {"ComPort", "readparam", "setParam", "versionInfo", "calcSensorSpacing"})
    Choose(item);
  Press("Command13");
  EXPECT_FALSE(window.HasCloseCommand());
  EXPECT_FALSE(app->windows.Unload("MDIForm1"));
  EXPECT_EQ(StatusText(), "");
  EXPECT_TRUE(platform->dialogs.messages.empty());
  EXPECT_EQ(app->windows.Open().size(), 2U);
  FormLock(*app, *app->windows.Find("Form2"), 1);
  EXPECT_TRUE(window.HasCloseCommand());
  Choose("versionInfo");
  EXPECT_TRUE(IsShown("frmAbout"));
}

TEST_F(MainWindowTest, AboutShowsTheVersionOfTheVariant) {
  const std::pair<const char*, const char*> cases[] = {
      {"VR=M627\r\n", "D"}, {"VR=T305\r\n", "J"}, {"VR=K410\r\nLANG_FLAG=1\r\n", "E"}};
  for (const auto& [system, suffix] : cases) {
    PutIni(system);
    StartUp(*app);
    Form& about = app->windows.Load("frmAbout");
    EXPECT_EQ(about.Find("lblVersion")->Caption(), VersionText(suffix)) << system;
    EXPECT_EQ(about.Find("lblTitle")->Caption(), "Veltrano3");
    On<PushButton>("frmAbout", "cmdOK").Press();
    EXPECT_EQ(app->windows.Find("frmAbout"), nullptr);
  }
}

TEST_F(MainWindowTest, CancelOfTheWaitWindowOnlySetsItsFlag) {
  OpenMainWindow();
  app->windows.Load("frmWait").Show();
  On<PushButton>("frmWait", "cmdCan").Press();
  EXPECT_EQ(app->state.WaitCancel, 1);
  EXPECT_TRUE(IsShown("frmWait"));
}

TEST_F(MainWindowTest, TheTimerShootsOnce) {
  MDIForm1& window = OpenMainWindow();
  app->state.TimerExpired = true;
  window.StartTimer(300);
  platform->time.RunFor(299);
  EXPECT_FALSE(app->state.TimerExpired);
  platform->time.RunFor(1);
  EXPECT_TRUE(app->state.TimerExpired);
  EXPECT_EQ(platform->time.TimerCount(), 0);
}

}  // namespace
}  // namespace vlt::test
