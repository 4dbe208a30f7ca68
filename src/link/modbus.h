// SPDX-License-Identifier: GPL-3.0-or-later
// The exchange with the meter: one request, one reply, Modbus RTU, this program being the only master.
//
// The port must be open and the interface locked. Every wait lets events run, so a caller must not assume
// that nothing changed across a call.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "link/frame.h"
#include "link/manner.h"
#include "link/send_mode.h"
#include "link/wait.h"
#include "state/app.h"
#include "state/line_record.h"

namespace vlt {

// Sends tx[0..txLast] after writing its check into the last two bytes, and fills rx[0..rxLast] with the
// reply. txLast and rxLast are last indexes: 7 for a request of 8 bytes. `mode` is a SendMode; any other
// number counts as kModeOrdinary. True for a whole reply with the asked function and a good check; the
// station byte is not compared, and a register value is not judged. Paced by the pattern (link/exchange.h),
// or with EventTiming by what arrives (link/event_exchange.h).
//
// On false rx holds whatever arrived. LastErrorText is ExchangeReport::text, for the status line.
bool SendReceive(App& app, std::span<std::uint8_t> tx, int txLast, std::span<std::uint8_t> rx, int rxLast,
                 int mode);

// The same for frames that are sized exactly.
bool SendReceive(App& app, Frame& tx, Frame& rx, int mode = kModeOrdinary);

// How an exchange ended.
struct ExchangeReport {
  bool ok = false;                        // as SendReceive
  int attempts = 0;                       // requests that went out
  AttemptEnd end = AttemptEnd::kSilence;  // of the last one
  // Why it has failed; never empty then. Of one that ended well what was wrong with an earlier attempt, where
  // that has a text: whether there was one is told by `attempts` alone.
  std::string text = {};
  bool refused = false;  // not ok, and each attempt was refused by the meter
  int doubts = 0;        // OwedReplies::Doubts when the first attempt began

  explicit operator bool() const { return ok; }
  // No attempt has failed ahead of the good one, so the reply is none to an earlier request.
  bool Clean() const { return ok && attempts == 1; }
};

// The same with an account of it. The frames are whole ones.
ExchangeReport Transact(App& app, std::span<std::uint8_t> tx, std::span<std::uint8_t> rx,
                        const ExchangeManner& manner);

// StationNo as a number; 0 for a text that is none.
int StationNumber(const App& app);

}  // namespace vlt
