// SPDX-License-Identifier: GPL-3.0-or-later
// The firmware tool's choice of the serial port.
#pragma once

#include "state/app.h"

namespace vlt {

class frmMaint_COMM : public Form {
 public:
  explicit frmMaint_COMM(App& app);

  void Form_Load() override;
  // The chosen port becomes the one of the firmware link and of the program, and key PORT of the settings
  // file. Without a choice nothing happens.
  void cmdOK_Click();
  void cmdCan_Click();

  Label lblComm{*this, "lblComm"};
  ComboBox cmbComm{*this, "cmbComm"};
  PushButton cmdOK{*this, "cmdOK"};
  PushButton cmdCan{*this, "cmdCan"};

 private:
  App& app_;
};

}  // namespace vlt
