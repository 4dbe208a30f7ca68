// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the serial settings that tells which device each COM number stands for, follows plugging while
// the dialog is open, and gives a device to a COM number.
#pragma once

#include <string>
#include <vector>

#include "shell/frm_cset.h"
#include "state/app.h"

namespace vlt {

class CSetDevices : public FormPart {
 public:
  CSetDevices(App& app, FrmCSet& dialog);

  void FrmInit() override;
  void Form_Load() override;

  void cmdAssign_Click();
  void tmrDevices_Timer();

  // Row n is COMn: its device, and what the device tells of itself or that it is not there.
  Grid grdPorts;
  Label lblDevices;
  // The devices that can be given to the chosen COM number.
  ComboBox cmbDevices;
  PushButton cmdAssign;
  Timer tmrDevices;

 private:
  void Show();
  void ShowPort(int number);
  void ShowDevices();
  std::string About(const std::string& device, bool assigned) const;

  App& app_;
  FrmCSet& dialog_;
  std::vector<PortInfo> ports_;
  std::vector<std::string> offered_;  // devices of cmbDevices, as the settings file takes them
};

}  // namespace vlt
