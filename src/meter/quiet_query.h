// SPDX-License-Identifier: GPL-3.0-or-later
// Queries of the meter that a page makes by itself, without a word to the operator: whoever opens a page may
// want no meter.
#pragma once

#include <functional>

#include "state/app.h"
#include "state/device_facts.h"

namespace vlt {

// Runs `ask` under the lock of `page` with the hourglass, on an open port. Without a port nothing is asked.
// Nor is anything asked while the interface is locked or a live read runs.
void AskUnderLock(App& app, Form& page, const std::function<void()>& ask);

// GetChannelConfig in this way, and the unit system when it is not known; unknown without a port. While the
// line is taken it is what the meter last told.
ChannelConfig AskChannelConfig(App& app, Form& page);

// GetChannelConfig inside of an operation.
ChannelConfig AskChannelConfig(App& app);

}  // namespace vlt
