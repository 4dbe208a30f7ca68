// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/mdi_form1.h"

#include <algorithm>

#include "meter/device_queries.h"
#include "meter/facts.h"
#include "meter/system_table.h"
#include "meter/value_text.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_line.h"
#include "shell/found_runs.h"
#include "shell/frame_facts.h"
#include "shell/port_watch.h"
#include "state/tested_meters.h"

namespace vlt {
namespace {

constexpr int kPageFont = 1;

constexpr const char* kRs485 = "RS485";

struct MenuCaption {
  MenuItem MDIForm1::*item;
  int caption_id;
};

constexpr MenuCaption kMenuCaptions[] = {
    {&MDIForm1::ComPort, 1920},
    {&MDIForm1::Parameter, 1655},
    {&MDIForm1::setParam, 1670},
    {&MDIForm1::readparam, 1660},
    {&MDIForm1::versionInfo, 890},
    {&MDIForm1::calcSensorSpacing, 1381},
    {&MDIForm1::mnuLine, text::kLineTitle},
};

constexpr MDIForm1::Family kToggles = MDIForm1::Family::kToggles;
constexpr MDIForm1::Family kReplaces = MDIForm1::Family::kReplaces;

constexpr MDIForm1::PageButton kPageButtons[] = {
    {&MDIForm1::Command1, "Form10", &MDIForm1::C01_SECHI_FrmInit, kToggles, 1640},
    {&MDIForm1::Command2, "Form2", &MDIForm1::C02_RANGE_FrmInit, kToggles, 1170},
    {&MDIForm1::Command3, "Form3", &MDIForm1::C03_SEKISAN_FrmInit, kToggles, 1610},
    {&MDIForm1::Command4, "Form5", &MDIForm1::C04_HYOJI_FrmInit, kToggles, 2120},
    {&MDIForm1::Command5, "Form4", &MDIForm1::C05_STATUS_FrmInit, kToggles, 720},
    {&MDIForm1::Command6, "Form6", &MDIForm1::C06_SYSTEM_FrmInit, kToggles, 650},
    {&MDIForm1::Command7, "Form9", &MDIForm1::C07_KEISOKU_FrmInit, kReplaces, 1310},
    {&MDIForm1::Command10, "Form8", &MDIForm1::C10_RAS_FrmInit, kToggles, 460},
    {&MDIForm1::Command11, "Form7", &MDIForm1::C11_MENTE_FrmInit, kToggles, 1070},
    {&MDIForm1::Command9, "Form11", &MDIForm1::C09_DENPAN_FrmInit, kReplaces, 2000},
    {&MDIForm1::Command14, "Form12", &MDIForm1::ShowPvForm, kReplaces, 1342},
};

void InitPage(Windows& windows, const char* page) { windows.Load(page).RunHook(&FormHooks::FrmInit); }

}  // namespace

MDIForm1::MDIForm1(App& app)
    : Form(app.windows, "MDIForm1", FormPlace::kFrame), objMSComm(app.platform.port), app_(app) {
  for (const PageButton& row : kPageButtons) {
    (this->*row.button).on_click = [this, &row] { PressPageButton(row); };
  }
  Command13.on_click = [this] { Command13_Click(); };
  ComPort.on_click = [this] { ComPort_Click(); };
  mnuLine.on_click = [this] { mnuLine_Click(); };
  // It looks at what goes over the line, whatever work that is.
  mnuLine.SetStaysUsable(true);
  readparam.on_click = [this] { readparam_Click(); };
  setParam.on_click = [this] { setParam_Click(); };
  calcSensorSpacing.on_click = [this] { calcSensorSpacing_Click(); };
  versionInfo.on_click = [this] { versionInfo_Click(); };
  tmrTimer.on_timer = [this] { tmrTimer_Timer(); };
  lblTestState.SetBackColour(kWarningColour);
  lblTestState.SetVisible(false);
  app_.frame = this;
}

MDIForm1::~MDIForm1() {
  if (app_.frame == this) app_.frame = nullptr;
}

MDIForm1& MainWindow(App& app) { return dynamic_cast<MDIForm1&>(app.windows.Load("MDIForm1")); }

std::span<const MDIForm1::PageButton> MDIForm1::PageButtons() { return kPageButtons; }

void MDIForm1::Form_Load() {
  app_.state.AppRunning = true;
  tmrTimer.SetRunning(false);
  app_.state.TimerExpired = false;
}

void MDIForm1::Form_Activate() {
  ShowPvButton();
  ShowFacts();
}

void MDIForm1::ShowFacts() {
  if (auto* facts = Part<FrameFacts>()) facts->Show();
  if (auto* watch = Part<PortWatch>()) watch->Follow();
}

void MDIForm1::ShowMeter() {
  ShowMeterLanguage();
  ShowUnitSystem();
}

void MDIForm1::ShowPvButton() { Command14.SetVisible(app_.state.TransMethod == kRs485); }

void MDIForm1::enableMenubar() {
  for (MenuItem* item : {&ComPort, &Parameter, &calcSensorSpacing, &versionInfo}) item->SetEnabled(true);
  // An operation has ended.
  ShowFacts();
}

void MDIForm1::disableMenubar() {
  for (MenuItem* item : {&ComPort, &Parameter, &calcSensorSpacing, &versionInfo}) item->SetEnabled(false);
  ShowFacts();
}

void MDIForm1::SetPageButtonIdle(std::string_view page) {
  for (const PageButton& row : kPageButtons) {
    if (row.page == page) (this->*row.button).SetBackColour(kButtonFaceColour);
  }
}

void MDIForm1::Dress() {
  const std::string& font = app_.state.PageFont = app_.Text(kPageFont);
  SetCaption(app_.Text(text::kLoaderName));
  for (const MenuCaption& row : kMenuCaptions) {
    MenuItem& item = this->*row.item;
    item.SetFont({font, 8, false});
    item.SetCaption(app_.Text(row.caption_id));
  }
  ShowMeterLanguage();
  ShowUnitSystem();
  StatusBar1.SetFont({font, 10, true});
  const auto dress_button = [&](PushButton& button, int caption_id) {
    button.SetFont({font, 12, true});
    button.SetCaption(app_.Text(caption_id));
  };
  for (const PageButton& row : kPageButtons) dress_button(this->*row.button, row.caption_id);
  dress_button(Command13, text::kEnd);
  lblTestState.SetFont({font, 12, true});
  ShowTestState();
  ShowPvButton();
  ShowFacts();
  if (auto* runs = Part<FoundRuns>()) runs->Show();
}

void MDIForm1::ShowTestState() {
  lblTestState.SetCaption(
      FormatText(app_.Text(text::kTestState),
                 {MetersInTestText(app_), app_.Text(text::kMaintenance), app_.Text(text::kTestCancel)}));
  lblTestState.SetVisible(IsAnyMeterInTest(app_));
}

void MDIForm1::ShowMeterLanguage() {
  const std::string name = CodeWord(SystemRow("language"), app_.state, app_.state.SystemLangFlag);
  if (!name.empty()) StatusBar1.SetPanel(2, name);
}

void MDIForm1::ShowUnitSystem() { StatusBar1.SetPanel(3, UnitSystemText(app_)); }

bool MDIForm1::IsAvailable(const char* window, const std::string& caption) {
  if (List().IsRegistered(window)) return true;
  app_.Status(FormatText(app_.Text(text::kPageMissing), {caption}));
  return false;
}

void MDIForm1::PressPageButton(const PageButton& row) {
  if (List().MousePointer() == kHourglassPointer) return;
  PushButton& button = this->*row.button;
  if (!IsAvailable(row.page, button.Caption())) return;
  if (row.family == Family::kToggles) {
    if (button.BackColour() == kActiveButtonColour) {
      ClosePage(row);
      return;
    }
    active_form_check();
  } else {
    excMDIform();
  }
  button.SetBackColour(kActiveButtonColour);
  (this->*row.initialiser)();
  List().Load(row.page).Show();
}

void MDIForm1::ClosePage(const PageButton& row) {
  (this->*row.button).SetBackColour(kButtonFaceColour);
  Form* page = List().Find(row.page);
  if (page == nullptr) return;
  page->RunHook(&FormHooks::Form_Deactivate);
  page->Hide();
}

void MDIForm1::active_form_check() {}

void MDIForm1::excMDIform() {
  const auto* open = std::find_if(
      std::begin(kPageButtons), std::end(kPageButtons),
      [this](const PageButton& row) { return (this->*row.button).BackColour() == kActiveButtonColour; });
  if (open == std::end(kPageButtons)) return;
  if (open->family == Family::kToggles) {
    ClosePage(*open);
  } else {
    (this->*open->button).SetBackColour(kButtonFaceColour);
  }
}

void MDIForm1::C01_SECHI_FrmInit() { InitPage(List(), "Form10"); }
void MDIForm1::C02_RANGE_FrmInit() { InitPage(List(), "Form2"); }
void MDIForm1::C03_SEKISAN_FrmInit() { InitPage(List(), "Form3"); }
void MDIForm1::C04_HYOJI_FrmInit() { InitPage(List(), "Form5"); }
void MDIForm1::C05_STATUS_FrmInit() { InitPage(List(), "Form4"); }
void MDIForm1::C06_SYSTEM_FrmInit() { InitPage(List(), "Form6"); }
void MDIForm1::C07_KEISOKU_FrmInit() { InitPage(List(), "Form9"); }
void MDIForm1::C09_DENPAN_FrmInit() { InitPage(List(), "Form11"); }
void MDIForm1::C10_RAS_FrmInit() { InitPage(List(), "Form8"); }
void MDIForm1::C11_MENTE_FrmInit() { InitPage(List(), "Form7"); }
void MDIForm1::ShowPvForm() { InitPage(List(), "Form12"); }

void MDIForm1::ComPort_Click() { ShowTool("FrmCSet", ComPort.Caption()); }
void MDIForm1::mnuLine_Click() { ShowTool("frmLine", mnuLine.Caption()); }
void MDIForm1::calcSensorSpacing_Click() { ShowTool("frmCalc", calcSensorSpacing.Caption()); }
void MDIForm1::versionInfo_Click() { ShowTool("frmAbout", versionInfo.Caption()); }

void MDIForm1::ShowTool(const char* window, const std::string& caption) {
  if (IsAvailable(window, caption)) List().Load(window).Show();
}

void MDIForm1::Command13_Click() { List().Unload(Name()); }

void MDIForm1::StartTimer(int ms) {
  tmrTimer.SetRunning(false);
  tmrTimer.SetInterval(ms);
  app_.state.TimerExpired = false;
  tmrTimer.SetRunning(true);
}

void MDIForm1::tmrTimer_Timer() {
  tmrTimer.SetRunning(false);
  app_.state.TimerExpired = true;
}

}  // namespace vlt
