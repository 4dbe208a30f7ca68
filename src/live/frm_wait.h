// SPDX-License-Identifier: GPL-3.0-or-later
// A small window with a text and a progress bar. Who shows it fills it, reads WaitCancel and unloads it.
#pragma once

#include "state/app.h"

namespace vlt {

class frmWait : public Form {
 public:
  explicit frmWait(App& app);

  void Form_Load() override;
  // Sets WaitCancel to 1 and does no more.
  void cmdCan_Click();

  Label lblMssg{*this, "lblMssg"};
  ProgressBar pbWait{*this, "pbWait"};
  PushButton cmdCan{*this, "cmdCan"};

 private:
  App& app_;
};

}  // namespace vlt
