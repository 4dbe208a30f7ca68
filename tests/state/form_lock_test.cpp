// SPDX-License-Identifier: GPL-3.0-or-later
#include "state/form_lock.h"

#include <gtest/gtest.h>

#include "support/test_app.h"

namespace vlt::test {
namespace {

// A window with one control of each kind that the lock may touch.
class Panel : public Form {
 public:
  Panel(Windows& windows, const std::string& name, bool stops, FormPlace place)
      : Form(windows, name, place), stops_(stops) {}
  const Control* StopButton() const override { return stops_ ? &stop_button : nullptr; }
  bool IsLive() const override { return CycleTimer.Running(); }

  CheckBox chkCheck{*this, "chkCheck"};
  CheckBox parameter{*this, "OUTER_DIAMETER"};
  TextBox text{*this, "OUTER_DIAMETERText"};
  PushButton button{*this, "ReadParameter"};
  ControlArray<OptionButton> ChannelSelect{*this, "ChannelSelect", {0, 1}};
  OptionButton option{*this, "OUTPUT_DOOption"};
  Timer CycleTimer{*this, "CycleTimer"};
  PushButton stop_button{*this, "Stop"};

 private:
  bool stops_;
};

class FormLockTest : public ::testing::Test {
 protected:
  Panel& Make(const std::string& name, bool stops = false, FormPlace place = FormPlace::kPage) {
    test.app.windows.Register(
        name, [=, this] { return std::make_unique<Panel>(test.app.windows, name, stops, place); });
    return static_cast<Panel&>(test.app.windows.Load(name));
  }
  TestApp test;
};

TEST_F(FormLockTest, LocksEveryWindowButSparesTheStopButtons) {
  Panel& measure = Make("Form9", true);
  Panel& system = Make("Form6", true);
  Panel& range = Make("Form2");
  for (const int enable : {0, 1}) {
    FormLock(test.app, range, enable);
    for (Panel* panel : {&measure, &system, &range}) {
      EXPECT_EQ(panel->button.Enabled(), enable == 1) << panel->Name();
      EXPECT_EQ(panel->chkCheck.Enabled(), enable == 1) << panel->Name();
      EXPECT_TRUE(panel->text.Enabled() && panel->parameter.Enabled()) << "entries stay usable";
    }
    EXPECT_TRUE(measure.stop_button.Enabled() && system.stop_button.Enabled());
    EXPECT_EQ(range.stop_button.Enabled(), enable == 1);
    EXPECT_EQ(test.app.frame->ExitButton().Enabled(), enable == 1);
    EXPECT_EQ(test.app.frame->Window().HasCloseCommand(), enable == 1);
    EXPECT_TRUE(range.HasCloseCommand()) << "a page has its close command from the frame";
    EXPECT_EQ(test.app.state.UiLocked, enable == 0);
  }
  Panel& dialog = Make("FrmCSet", false, FormPlace::kWindow);
  FormLock(test.app, dialog, 0);
  EXPECT_FALSE(dialog.HasCloseCommand());
  FormLock(test.app, dialog, 1);
  EXPECT_TRUE(dialog.HasCloseCommand());
}

TEST_F(FormLockTest, MonitorIsBusyWhileALiveReadRuns) {
  Panel& measure = Make("Form9", true);
  EXPECT_TRUE(IsMonitorIdle(test.app));
  measure.CycleTimer.SetInterval(1000);
  measure.CycleTimer.SetRunning(true);
  EXPECT_FALSE(IsMonitorIdle(test.app));
  measure.CycleTimer.SetRunning(false);
  test.app.state.PvRunning = -1;
  EXPECT_FALSE(IsMonitorIdle(test.app));
  test.app.state.PvRunning = 0;
  measure.CycleTimer.SetRunning(true);
  test.app.windows.Unload("Form9");
  EXPECT_TRUE(IsMonitorIdle(test.app)) << "what is gone reads nothing";
  // A window that goes while the others are looked at does no harm.
  Make("Form12", true).CycleTimer.SetRunning(false);
  test.Time().After(0, [this] { test.app.windows.Unload("Form12"); });
  EXPECT_TRUE(IsMonitorIdle(test.app));
}

}  // namespace
}  // namespace vlt::test
