// SPDX-License-Identifier: GPL-3.0-or-later
#include "state/line_record.h"

namespace vlt {

void LineRecord::Add(const LineAttempt& attempt) {
  ++attempts_;
  last_end_ = attempt.end;
}

void LineRecord::CorrectLast(AttemptEnd end) { last_end_ = end; }

}  // namespace vlt
