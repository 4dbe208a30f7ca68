// SPDX-License-Identifier: GPL-3.0-or-later
#include "state/form_lock.h"

#include <algorithm>

namespace vlt {
namespace {

void SetCloseCommandByLock(Form& window, int enable) {
  if (enable != 0) {
    RestoreCloseCommand(window);
  } else {
    RemoveCloseCommand(window);
  }
}

}  // namespace

void SetControlsEnabled(Form& form, int enable) {
  for (Control* control : form.Controls()) {
    const bool button = control->Kind() == ControlKind::kPushButton && control != form.StopButton() &&
                        !form.StaysUsable(*control);
    if (button || form.IsMasterBox(*control)) control->SetEnabled(enable != 0);
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
  return std::any_of(form.Controls().begin(), form.Controls().end(), [&form](const Control* control) {
    if (!control->Enabled()) return false;
    if (control->Kind() == ControlKind::kCheckBox) {
      return !form.IsMasterBox(*control) && static_cast<const CheckBox*>(control)->Ticked();
    }
    if (control->Kind() != ControlKind::kOptionButton) return false;
    return static_cast<const OptionButton*>(control)->Value() && !form.IsChoice(*control);
  });
}

bool IsMonitorIdle(App& app) {
  for (Form* form : app.windows.Open()) {
    app.platform.events.GiveWay(app.platform.clock.NowMs());
    if (!app.windows.Exists(form)) continue;
    if (form->IsLive()) return false;
  }
  return app.state.PvRunning == 0;
}

bool IsLineFree(App& app) { return !app.state.UiLocked && IsMonitorIdle(app) && !app.state.UiLocked; }

void GetShortPath(App& app, const std::string& path) {
  app.state.IniShortPath = app.platform.process.ShortPath(path);
}

}  // namespace vlt
