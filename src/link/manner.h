// SPDX-License-Identifier: GPL-3.0-or-later
// How an exchange is made and judged.
#pragma once

#include <cstdint>

#include "link/owed_replies.h"
#include "link/send_mode.h"

namespace vlt {

// What an exchange is told beyond its frames.
struct ExchangeManner {
  int mode = kModeOrdinary;
  // kAsked: a reply that another station has signed is none, and the attempt has failed.
  Signature signature = Signature::kAny;
  // The caller looks at the signature: replies that other stations still owe need not be waited for.
  bool signature_is_checked = false;
  std::int64_t call = 0;  // as of OwedReplies
};

}  // namespace vlt
