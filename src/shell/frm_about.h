// SPDX-License-Identifier: GPL-3.0-or-later
// Name and version of the program.
#pragma once

#include "state/app.h"

namespace vlt {

class frmAbout : public Form {
 public:
  explicit frmAbout(App& app);

  void Form_Load() override;
  void cmdOK_Click();

  Label lblTitle{*this, "lblTitle"};
  Label lblVersion{*this, "lblVersion"};
  PushButton cmdOK{*this, "cmdOK"};

 private:
  App& app_;
};

}  // namespace vlt
