// SPDX-License-Identifier: GPL-3.0-or-later
// One exchange as both ways of pacing it share it, and the pattern: fixed waits behind the request and looks
// at what has come, whatever the speed of the line.
#pragma once

#include <cstdint>
#include <span>

#include "link/frame.h"
#include "link/send_mode.h"
#include "state/app.h"
#include "state/line_record.h"

namespace vlt {

inline constexpr const char* kNoResponse = "[NO RESPONSE ERROR]";
inline constexpr const char* kCheckError = "[CRC ERROR]";
inline constexpr const char* kApplicationError = "[APPLICATION ERROR]";

// Waits in ms; each lasts until more than that has passed.
inline constexpr int kDrainPollMs = 3;        // while the driver still holds bytes
inline constexpr int kFirstPollMs = 5;        // until something arrives
inline constexpr int kRestPollMs = 10;        // until the whole reply is there
inline constexpr std::size_t kHeadBytes = 2;  // station and function

struct Exchange {
  App& app;
  std::span<std::uint8_t> tx;
  std::span<std::uint8_t> rx;
  int mode;
  int first_wait_ms;  // from the end of the request
  int poll_limit;     // looks for the first byte; one more for the whole reply
  int count;          // attempt counter: the exchange ends when it exceeds RetryNo
  // Of the attempt that runs.
  int attempt = 0;
  std::int64_t sent_ms = 0;
  Frame arrived = {};
  bool told = false;  // the record of the line knows how it ended

  SerialPort& Port() const { return app.platform.port; }
  void GiveWay() const { app.platform.events.GiveWay(app.platform.clock.NowMs()); }
  bool IsLastAttempt() const { return count >= app.state.RetryNo; }
  // Begins an attempt: notes its moment, empties the port both ways and writes the request.
  void Send();
  // Takes one byte of the reply.
  std::uint8_t Take();
  // Tells the record of the line how the attempt ended. What arrived is in `arrived`. An attempt that was
  // told already has ended otherwise after all.
  void Tell(AttemptEnd end);
};

// Clears LastErrorText and writes the check of tx.
Exchange PrepareExchange(App& app, std::span<std::uint8_t> tx, std::span<std::uint8_t> rx, int mode);

// What LastErrorText says of a reply with another function than asked, by its third byte.
const char* ExceptionText(int code);
// Such a reply is an exception when its function is the one asked with the high bit.
AttemptEnd EndOfOtherFunction(int asked, int function);

// All attempts. Raises PortFault.
bool RunByPattern(Exchange& x);

}  // namespace vlt
