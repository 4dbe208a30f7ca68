// SPDX-License-Identifier: GPL-3.0-or-later
// Facts that the meter in use has told (state/meter_facts.h).
#pragma once

#include <cstdint>
#include <span>

#include "state/app.h"

namespace vlt {

// The meter that the port is open for, or else that of the settings; these may name another one meanwhile.
MeterPlace MeterInUse(const App& app);

// The exchange that has just ended well proves what it brought: no attempt of it has failed, so the reply is
// none to an earlier request, and the station of the settings has signed it.
bool IsSureReply(const App& app, std::span<const std::uint8_t> reply);

// The variable of a fact takes what the meter has told. Only what is sure counts as learnt.
void Learn(App& app, FactPlace fact, int value, bool sure);

}  // namespace vlt
