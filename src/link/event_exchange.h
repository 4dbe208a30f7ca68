// SPDX-License-Identifier: GPL-3.0-or-later
// The exchange paced by what happens on the line: a reply is taken when its last byte is in, by the length
// that was asked for or the five bytes of an exception, and the next request leaves 3.5 characters of silence
// later. The waits of the pattern (link/exchange.h) are only limits: to the millisecond the pattern's last
// look is the last moment at which a reply is taken. Attempts, results and texts are the pattern's, with two
// exceptions that keep values from being taken that were not answered to the request:
//
// - A reply that comes after its limit is never the reply to a later exchange (link/owed_replies.h). Within
// one
//   exchange the late reply to an earlier attempt counts: the question is the same.
// - A reply that is cut short is a check error, whatever rx held before.
#pragma once

#include "link/exchange.h"

namespace vlt {

// All attempts. Raises PortFault.
bool RunByEvents(Exchange& x);

}  // namespace vlt
