// SPDX-License-Identifier: GPL-3.0-or-later
// The exchange with the meter: one request, one reply, Modbus RTU, this program being the only master.
//
// The port must be open and the interface locked. Every wait lets events run, so a caller must not assume
// that nothing changed across a call.
#pragma once

#include <cstdint>
#include <span>

#include "link/frame.h"
#include "link/manner.h"
#include "link/send_mode.h"
#include "link/wait.h"
#include "state/app.h"

namespace vlt {

// Sends tx[0..txLast] after writing its check into the last two bytes, and fills rx[0..rxLast] with the
// reply. txLast and rxLast are last indexes: 7 for a request of 8 bytes. `mode` is a SendMode; any other
// number counts as kModeOrdinary. True for a whole reply with the asked function and a good check; the
// station byte is not compared, and a register value is not judged. Paced by the pattern (link/exchange.h),
// or with EventTiming by what arrives (link/event_exchange.h).
//
// On false LastErrorText says why and rx holds whatever arrived. On true LastErrorText may still hold what
// was wrong with an earlier attempt.
bool SendReceive(App& app, std::span<std::uint8_t> tx, int txLast, std::span<std::uint8_t> rx, int rxLast,
                 int mode);

// The same for frames that are sized exactly.
bool SendReceive(App& app, Frame& tx, Frame& rx, int mode = kModeOrdinary);

struct ExchangeReport {
  bool answered = false;  // as SendReceive
  bool clean = false;     // by the first attempt
  bool refused = false;   // not answered, and each attempt was refused by the meter
  int doubts = 0;         // OwedReplies::Doubts when the first attempt began
};

// The same with an account of it.
ExchangeReport Transact(App& app, Frame& tx, Frame& rx, const ExchangeManner& manner);

// The reply's first byte is the station that was asked. Where several stations hang on the line, who asks one
// of them looks at it: the exchange itself takes a reply from any. When it is another one's, LastErrorText
// says that there was no response.
bool IsFromStation(App& app, std::span<const std::uint8_t> reply, int station);

// StationNo as a number; 0 for a text that is none.
int StationNumber(const App& app);

}  // namespace vlt
