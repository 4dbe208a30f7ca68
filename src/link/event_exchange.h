// SPDX-License-Identifier: GPL-3.0-or-later
// The exchange paced by what happens on the line: a reply is taken when its last byte is in, by the length
// that was asked for or the five bytes of an exception, and the next request leaves 3.5 characters of silence
// later. The waits of the pattern (link/exchange.h) are only limits: to the millisecond the pattern's last
// look is the last moment at which a reply is taken. Attempts, results and texts are the pattern's, but that
// a reply to an earlier exchange which looks different is dropped when it comes, and the attempt goes on.
// Within one exchange the late reply to an earlier attempt counts: the question is the same.
#pragma once

#include "link/exchange.h"

namespace vlt {

// All attempts. Raises PortFault.
bool RunByEvents(Exchange& x);

}  // namespace vlt
