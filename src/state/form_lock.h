// SPDX-License-Identifier: GPL-3.0-or-later
// The busy lock. It is taken around every exchange with the meter, and it is the only guard against a second
// exchange that starts from a click while the first one waits.
#pragma once

#include "state/app.h"

namespace vlt {

// `enable` 0 locks the interface on behalf of `form`, anything else releases it.
void FormLock(App& app, Form& form, int enable);

// The lock's part for one window: its push buttons, but for the one that stops a running operation and those
// that stay usable, and the check boxes named chkCheck follow `enable`. All other controls are left as they
// are.
void SetControlsEnabled(Form& form, int enable);

// Take the Close item out of a window's system menu and put it back.
void RemoveCloseCommand(Form& window);
void RestoreCloseCommand(Form& window);

// Something is selected on the form: a ticked, enabled check box other than chkCheck, or a set, enabled
// option button that is no choice of channel, output or kind of wave.
bool IsAnyChecked(const Form& form);

// No live read runs. Gives way to events between the windows it looks at.
bool IsMonitorIdle(App& app);

// Neither a lock nor a live read holds the line. Looking for live reads gives way, so the lock is looked at
// again behind it.
bool IsLineFree(App& app);

// Stores the 8.3 form of `path` into IniShortPath.
void GetShortPath(App& app, const std::string& path);

}  // namespace vlt
