// SPDX-License-Identifier: GPL-3.0-or-later
// The choice between the firmware tool and the main program, shown at user level Service and Factory.
#pragma once

#include "state/app.h"

namespace vlt {

class frmMssg : public Form {
 public:
  explicit frmMssg(App& app);

  void Form_Load() override;
  // Runs the firmware tool to its end, shows the splash again and "Normal End", and sets ChoiceResult to 1:
  // the splash then ends the program.
  void cmdDown_Click();
  // Goes on to the main program: ChoiceResult 2.
  void cmdLoader_Click();

  PushButton cmdDown{*this, "cmdDown"};
  PushButton cmdLoader{*this, "cmdLoader"};

 private:
  App& app_;
};

}  // namespace vlt
