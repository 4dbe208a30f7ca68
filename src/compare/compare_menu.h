// SPDX-License-Identifier: GPL-3.0-or-later
// The items of the main window's file menu that compare, keep and restore the settings of a meter.
#pragma once

#include "state/app.h"

namespace vlt {

class frmCompare;

class CompareMenu : public FormPart {
 public:
  CompareMenu(App& app, Form& frame);

  // Captions in the language in force.
  void Form_Activate() override;

  void mnuCompare_Click();
  void mnuSnapshot_Click();
  void mnuRestore_Click();

  MenuItem mnuCompare;
  MenuItem mnuSnapshot;
  MenuItem mnuRestore;

 private:
  frmCompare& Window();

  App& app_;
};

}  // namespace vlt
