// SPDX-License-Identifier: GPL-3.0-or-later
// The main window: page buttons, menu, status bar and the port object. It holds no measurement logic.
//
// The colour of a page's button is the only record of which page is open. Two families of buttons:
// family A toggles its page and opens it beside others; family B closes one open page first and never
// toggles. A click while the pointer is the hourglass does nothing.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "state/app.h"

namespace vlt {

class MDIForm1 : public Form, public MainFrame {
 public:
  explicit MDIForm1(App& app);
  ~MDIForm1() override;

  // A page button as data.
  enum class Family { kToggles, kReplaces };
  struct PageButton {
    PushButton MDIForm1::*button;
    const char* page;
    void (MDIForm1::*initialiser)();
    Family family;
    int caption_id;
  };
  // In the order in which excMDIform looks for an open page.
  static std::span<const PageButton> PageButtons();

  void Form_Load() override;
  void Form_Activate() override;
  // The end of the program. Refused while UiLocked, and when the parameter file that the operator asked for
  // could not be written and he does not want to end without it.
  void Form_Unload(int& cancel) override;

  // MainFrame.
  Form& Window() override { return *this; }
  void enableMenubar() override;
  void disableMenubar() override;
  StatusBar& Status() override { return StatusBar1; }
  PushButton& ExitButton() override { return Command13; }
  Timer& OneShotTimer() override { return tmrTimer; }
  void ShowTestState() override;
  void SetPageButtonIdle(std::string_view page) override;
  void ShowFacts() override;
  void ShowMeter() override;

  // Captions and fonts in the program's language, language of the meter, unit system.
  void Dress();
  // Status panel 2 by SystemLangFlag (a value outside 0 to 4 leaves it) and panel 3 by UnitFlag.
  void ShowMeterLanguage();
  void ShowUnitSystem();
  // The PV button is there on RS485 only. Whoever changes TransMethod runs it.
  void ShowPvButton() override;

  // What each family of page buttons does.
  void PressPageButton(const PageButton& row);
  // Looked at before a family A page opens; pages open beside each other, so it has nothing to do.
  void active_form_check();
  // Closes the first page that is open by its button: the button turns idle, and a family A page is hidden.
  void excMDIform();

  // The initialisers of the pages: load the page if needed and set what it shows in the program's language.
  void C01_SECHI_FrmInit();    // Form10
  void C02_RANGE_FrmInit();    // Form2
  void C03_SEKISAN_FrmInit();  // Form3
  void C04_HYOJI_FrmInit();    // Form5
  void C05_STATUS_FrmInit();   // Form4
  void C06_SYSTEM_FrmInit();   // Form6
  void C07_KEISOKU_FrmInit();  // Form9
  void C09_DENPAN_FrmInit();   // Form11
  void C10_RAS_FrmInit();      // Form8
  void C11_MENTE_FrmInit();    // Form7
  void ShowPvForm();           // Form12, which has no initialiser of this kind

  void ComPort_Click();
  void mnuLine_Click();
  void calcSensorSpacing_Click();
  void versionInfo_Click();
  void readparam_Click();
  void setParam_Click();
  void Command13_Click();

  // One shot after `ms`: clears TimerExpired and sets it when the time is over.
  void StartTimer(int ms);
  void tmrTimer_Timer();

  PushButton Command1{*this, "Command1"};    // process setting
  PushButton Command2{*this, "Command2"};    // range
  PushButton Command3{*this, "Command3"};    // total
  PushButton Command4{*this, "Command4"};    // display
  PushButton Command5{*this, "Command5"};    // status
  PushButton Command6{*this, "Command6"};    // system
  PushButton Command7{*this, "Command7"};    // measure
  PushButton Command9{*this, "Command9"};    // transit time
  PushButton Command10{*this, "Command10"};  // RAS
  PushButton Command11{*this, "Command11"};  // maintenance
  PushButton Command14{*this, "Command14"};  // PV
  PushButton Command13{*this, "Command13"};  // end

  MenuItem ComPort{*this, "ComPort"};
  MenuItem Parameter{*this, "Parameter"};
  MenuItem readparam{*this, "readparam", &Parameter};
  MenuItem setParam{*this, "setParam", &Parameter};
  MenuItem mnuLine{*this, "mnuLine", &Parameter};
  MenuItem calcSensorSpacing{*this, "calcSensorSpacing"};
  MenuItem versionInfo{*this, "versionInfo"};

  // Which meters are in their test state; there while one is.
  Label lblTestState{*this, "lblTestState"};
  StatusBar StatusBar1{*this, "StatusBar1", 3};  // messages, meter language, unit system
  Timer tmrTimer{*this, "tmrTimer"};
  SerialPort& objMSComm;

 private:
  // False, with a line in status panel 1, for a window that this version does not have.
  bool IsAvailable(const char* window, const std::string& caption);
  void ShowTool(const char* window, const std::string& caption);
  void ClosePage(const PageButton& row);
  void UnloadOthers();
  // Asks for a parameter file into dialog_file_; false when the operator cancels.
  bool AskParameterFile(bool to_save);
  // Tells in status panel 1 how it went.
  FileError WriteParameterFile(const std::string& path);
  // kGood as well when there is nothing to write.
  FileError SaveAtClosing();
  // Asks about the parameter file and writes the program's own settings in any case. False when the operator
  // stays because a file could not be written.
  bool MayEnd();
  void SaveLoaderFile();

  App& app_;
  // The name that the file dialog held last, as long as the program runs.
  std::string dialog_file_;
  bool closing_ = false;
};

// The main window, loaded when it does not exist yet.
MDIForm1& MainWindow(App& app);

}  // namespace vlt
