#include "state/form_lock.h"

#include <gtest/gtest.h>

#include "support/test_app.h"

namespace vlt::test {
namespace {

// A window with one control of each kind that the lock may touch.
class Panel : public Form {
 public:
  Panel(Windows& windows, const std::string& name, const std::string& stop, FormPlace place)
      : Form(windows, name, place), stop_button(*this, stop) {}

  CheckBox chkCheck{*this, "chkCheck"};
  CheckBox parameter{*this, "OUTER_DIAMETER"};
  TextBox text{*this, "OUTER_DIAMETERText"};
  PushButton button{*this, "ReadParameter"};
  ControlArray<OptionButton> ChannelSelect{*this, "ChannelSelect", {0, 1}};
  OptionButton option{*this, "OUTPUT_DOOption"};
  Timer CycleTimer{*this, "CycleTimer"};
  PushButton stop_button;
};

class FormLockTest : public ::testing::Test {
 protected:
  Panel& Make(const std::string& name, const std::string& stop, FormPlace place = FormPlace::kPage) {
    test.app.windows.Register(
        name, [=, this] { return std::make_unique<Panel>(test.app.windows, name, stop, place); });
    return static_cast<Panel&>(test.app.windows.Load(name));
  }
  TestApp test;
};

TEST_F(FormLockTest, LocksEveryWindowButSparesTheStopButtons) {
  Panel& measure = Make("Form9", "Stop");
  Panel& system = Make("Form6", "Save_As");
  Panel& range = Make("Form2", "Stop");  // of another form: a button like any other
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
  Panel& dialog = Make("FrmCSet", "x", FormPlace::kWindow);
  FormLock(test.app, dialog, 0);
  EXPECT_FALSE(dialog.HasCloseCommand());
  FormLock(test.app, dialog, 1);
  EXPECT_TRUE(dialog.HasCloseCommand());
}

TEST_F(FormLockTest, OnlyAnEnabledParameterIsASelection) {
  Panel& page = Make("Form2", "x");
  page.chkCheck.SetValue(1);
  page.ChannelSelect(1).SetValue(true);
  page.parameter.SetValue(1);
  page.parameter.SetEnabled(false);
  EXPECT_FALSE(IsAnyChecked(page));
  page.option.SetValue(true);
  EXPECT_TRUE(IsAnyChecked(page));
}

TEST_F(FormLockTest, MonitorIsBusyWhileALiveReadRuns) {
  Panel& measure = Make("Form9", "Stop");
  EXPECT_TRUE(IsMonitorIdle(test.app));
  measure.CycleTimer.SetInterval(1000);
  measure.CycleTimer.SetRunning(true);
  EXPECT_FALSE(IsMonitorIdle(test.app));
  measure.CycleTimer.SetRunning(false);
  test.app.state.PvRunning = -1;
  EXPECT_FALSE(IsMonitorIdle(test.app));
  // A window that goes while the others are looked at does no harm.
  test.app.state.PvRunning = 0;
  Make("Form12", "cmdStop").CycleTimer.SetRunning(false);
  test.Time().After(0, [this] { test.app.windows.Unload("Form12"); });
  EXPECT_TRUE(IsMonitorIdle(test.app));
}

}  // namespace
}  // namespace vlt::test
