// SPDX-License-Identifier: GPL-3.0-or-later
// The firmware tool's wait window: which module, which step, how long it has taken and should take. The run
// that shows it fills it and hides it.
#pragma once

#include <cstdint>
#include <string>

#include "state/app.h"

namespace vlt {

class frmMaint_Wait : public Form {
 public:
  explicit frmMaint_Wait(App& app);

  void Form_Load() override;
  // Refused while the run that shows it goes on.
  void Form_Unload(int& cancel) override;
  // Sets FwCancelFlag to 1 and does no more: the step that runs is not stopped, the run ends before the next
  // module.
  void cmdCan_Click();
  void tmTime_Timer();

  // Shows the window at the first of `steps` steps.
  void Begin(const std::string& title, const std::string& message, int steps);
  void Step(int value, const std::string& message);
  // A step or pause begins that should take so long.
  void Expect(std::int64_t ms);
  void End();

  Label lblTitle{*this, "lblTitle"};
  Label lblMssg{*this, "lblMssg"};
  ProgressBar pbWait{*this, "pbWait"};
  Label lblTime{*this, "lblTime"};  // elapsed and expected time of the step
  Label lblStop{*this, "lblStop"};  // what Cancel has done
  PushButton cmdCan{*this, "cmdCan"};
  Timer tmTime{*this, "tmTime"};

 private:
  App& app_;
  std::int64_t begun_ms_ = 0;
  std::int64_t expected_ms_ = 0;
};

}  // namespace vlt
