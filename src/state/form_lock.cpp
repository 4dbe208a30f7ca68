#include "state/form_lock.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace vlt {
namespace {

// The one button of a form that must stay usable during the operation that it stops.
constexpr std::pair<std::string_view, std::string_view> kStopButtons[] = {
    {"Form11", "ProfileStopButton"},
    {"Form6", "Save_As"},
    {"Form9", "Stop"},
    {"Form12", "cmdStop"},
};

// Option buttons that choose what a page looks at rather than a parameter to handle.
constexpr std::string_view kChoiceOptions[] = {
    "ForwardReceiveOption", "ReverseReceiveOption", "ForwardFilterOption",  "ReverseFilterOption",
    "ChannelSelect",        "DigitalOutputSelect",  "CorrelationCalOption",
};

bool IsStopButton(const Form& form, const Control& control) {
  return std::any_of(std::begin(kStopButtons), std::end(kStopButtons), [&](const auto& row) {
    return row.first == form.Name() && row.second == control.Name();
  });
}

void SetCloseCommandByLock(Form& window, int enable) {
  if (enable != 0) {
    RestoreCloseCommand(window);
  } else {
    RemoveCloseCommand(window);
  }
}

// A timer of this name is on, on a form that exists.
bool TimerRuns(const Form& form, std::string_view name) {
  Control* control = form.Find(name);
  return control != nullptr && control->Kind() == ControlKind::kTimer &&
         static_cast<Timer*>(control)->Running();
}

}  // namespace

void SetControlsEnabled(Form& form, int enable) {
  for (Control* control : form.Controls()) {
    const bool button = control->Kind() == ControlKind::kPushButton && !IsStopButton(form, *control);
    const bool master = control->Kind() == ControlKind::kCheckBox && control->Name() == "chkCheck";
    if (button || master) control->SetEnabled(enable != 0);
  }
}

void RemoveCloseCommand(Form& window) { window.SetCloseCommand(false); }
void RestoreCloseCommand(Form& window) { window.SetCloseCommand(true); }

void FormLock(App& app, Form& form, int enable) {
  SetControlsEnabled(form, enable);
  Form* main_window = app.frame != nullptr ? &app.frame->Window() : nullptr;
  if (main_window != nullptr) {
    if (enable != 0) {
      app.frame->enableMenubar();
    } else {
      app.frame->disableMenubar();
    }
    SetCloseCommandByLock(*main_window, enable);
  }
  if (&form != main_window) {
    for (Form* other : app.windows.Open()) {
      if (other != &form && other != main_window) SetControlsEnabled(*other, enable);
    }
    if (form.Place() != FormPlace::kPage) SetCloseCommandByLock(form, enable);
  }
  if (main_window != nullptr) app.frame->ExitButton().SetEnabled(enable != 0);
  app.state.UiLocked = enable == 0;
}

bool IsAnyChecked(const Form& form) {
  return std::any_of(form.Controls().begin(), form.Controls().end(), [](const Control* control) {
    if (!control->Enabled()) return false;
    if (control->Kind() == ControlKind::kCheckBox) {
      return control->Name() != "chkCheck" && static_cast<const CheckBox*>(control)->Ticked();
    }
    if (control->Kind() != ControlKind::kOptionButton) return false;
    return static_cast<const OptionButton*>(control)->Value() &&
           std::find(std::begin(kChoiceOptions), std::end(kChoiceOptions), control->Name()) ==
               std::end(kChoiceOptions);
  });
}

bool IsMonitorIdle(App& app) {
  for (Form* form : app.windows.Open()) {
    app.platform.events.GiveWay(app.platform.clock.NowMs());
    if (!app.windows.Exists(form)) continue;
    if ((form->Name() == "Form9" || form->Name() == "Form12") && TimerRuns(*form, "CycleTimer")) return false;
    if (form->Name() == "Form11" && app.state.PvRunning != 0) return false;
  }
  return app.state.PvRunning == 0;
}

void GetShortPath(App& app, const std::string& path) {
  app.state.IniShortPath = app.platform.process.ShortPath(path);
}

}  // namespace vlt
