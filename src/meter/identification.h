// SPDX-License-Identifier: GPL-3.0-or-later
// What the program asks of a meter to know whom it talks to. The port must be open and the interface locked.
// An answer is kept in the shared state; without one the values that were there stay.
#pragma once

#include <string>

#include "state/app.h"

namespace vlt {

// What the session has learnt of the meter, but for the units and the model class: the link leads to another
// one, or nowhere.
void ForgetMeter(SharedState& state);

// The ID number that the meter has told; empty when it was not asked, or since another one was written to it.
std::string KnownIdNumber(const SharedState& state);

// Unit system and display language. What the session knew of a meter before is forgotten, since this one may
// be another. False without an answer.
bool ReadIdentification(App& app);

struct UnitQueries {
  bool operation_mode_first = false;  // ahead of the model class, not at the end
  bool heat_always = false;           // also when the meter is no full model
};

// Units of CH1 and of the heat calculation, model class and operation mode. A query that fails does not end
// the others. The kept captions of the units are emptied.
void ReadUnits(App& app, const UnitQueries& queries);

// Paths, type, version, ID number and specification number. False when one of them has no answer; what came
// is kept all the same.
bool ReadIdentity(App& app);

}  // namespace vlt
