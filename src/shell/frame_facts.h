// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the main window that tells what is known: the link in force, beside the page buttons, and,
// while no page is open, the meter and the first steps.
#pragma once

#include <string>

#include "state/app.h"

namespace vlt {

class FrameFacts : public FormPart {
 public:
  FrameFacts(App& app, Form& frame);

  // Brings all of it up to date.
  void Show();

  // As choosing the menu Communication.
  void cmdLink_Click();
  // Identifies the meter and asks what the identification at start leaves out.
  void cmdReadMeter_Click();

  PushButton cmdLink;
  Label lblMeter;
  Label lblState;
  ControlArray<Label> lblFact;  // captions
  ControlArray<Label> valFact;
  PushButton cmdReadMeter;
  Label lblFirstSteps;
  Label lblSteps;

 private:
  // Port, device and settings: those of the open port, else those that it will be opened with.
  struct Link {
    int port = 0;
    std::string device;
    std::string settings;
    bool open = false;
  };
  Link LinkInForce() const;
  void ShowLink(const Link& link);
  bool IsLost(const Link& link) const;
  std::string LinkText(const Link& link) const;
  std::string TypeText() const;
  std::string SpecificationText() const;
  std::string PathText() const;
  std::string UnitText() const;
  std::string LanguageText() const;

  App& app_;
};

}  // namespace vlt
