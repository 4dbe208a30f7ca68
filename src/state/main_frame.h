// SPDX-License-Identifier: GPL-3.0-or-later
// What lower code needs of the main window.
#pragma once

#include <string_view>

#include "window/control.h"

namespace vlt {

class Form;

class MainFrame {
 public:
  virtual ~MainFrame() = default;
  virtual Form& Window() = 0;
  // ComPort, Parameter, calcSensorSpacing and versionInfo, all together.
  virtual void enableMenubar() = 0;
  virtual void disableMenubar() = 0;
  virtual StatusBar& Status() = 0;
  virtual PushButton& ExitButton() = 0;
  virtual Timer& OneShotTimer() = 0;
  // What is known of the link or of the meter has changed.
  virtual void ShowFacts() {}
  // Language and unit system of the meter were read anew: panels 2 and 3.
  virtual void ShowMeter() {}
  // TransMethod has changed: some buttons are there on RS485 only.
  virtual void ShowPvButton() {}
  // Tells on every page which meters are in their test state, as the shared state has it.
  virtual void ShowTestState() = 0;
  // Gives the navigation button of the page ("Form10") the idle colour.
  virtual void SetPageButtonIdle(std::string_view page) = 0;
};

}  // namespace vlt
