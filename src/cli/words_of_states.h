// SPDX-License-Identifier: GPL-3.0-or-later
// What a script calls the ends of writes and the states of compared rows: the same in every language.
#pragma once

#include <string>

#include "compare/comparison.h"
#include "meter/proven_write.h"

namespace vlt {

// "stored", "refused", "not_proven", "not_sent".
std::string WordOf(WriteEnd end);
// "equal", "different", "only_left", "only_right", "unread".
std::string WordOf(RowState state);

}  // namespace vlt
