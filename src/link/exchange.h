// SPDX-License-Identifier: GPL-3.0-or-later
// One exchange as both ways of pacing it share it, and the pattern: fixed waits behind the request and looks
// at what has come, whatever the speed of the line. Each attempt judges only bytes that have come in it.
//
// Ahead of its first request the pattern waits, too, for replies to earlier exchanges that could be taken for
// one to this (link/owed_replies.h); within an exchange its waits know nothing of them.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "link/frame.h"
#include "link/manner.h"
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
  ExchangeManner manner;
  int first_wait_ms;                      // from the end of the request
  int poll_limit;                         // looks for the first byte; one more for the whole reply
  int count;                              // attempt counter: the exchange ends when it exceeds RetryNo
  int requests = 0;                       // that went out
  int refused = 0;                        // attempts that the meter has refused
  int doubts = 0;                         // of the first attempt
  std::string text = {};                  // what was wrong last
  AttemptEnd end = AttemptEnd::kSilence;  // of the attempt told last
  // Of the attempt that runs.
  int attempt = 0;
  std::int64_t sent_ms = 0;
  std::int64_t limit_us = 0;  // of the pattern: its last look
  Frame arrived = {};
  bool told = false;  // the record of the line knows how it ended

  std::int64_t NowUs() const { return app.platform.clock.NowUs(); }
  SerialPort& Port() const { return app.platform.port; }
  void GiveWay() const { app.platform.events.GiveWay(app.platform.clock.NowMs()); }
  // Station 0 is whichever there is.
  bool IsSignedByOther(std::span<const std::uint8_t> reply) const { return !IsSigned(tx, reply); }
  // What the pattern takes for the reply: it does not look at the register that a write names.
  ReplyRule Takes() const {
    return {manner.signature_is_checked ? Signature::kAsked : manner.signature, /*any_address=*/true};
  }
  bool IsLastAttempt() const { return count >= app.state.RetryNo; }
  // Begins an attempt: notes its moment, empties the port both ways and writes the request.
  void Send();
  // Takes one byte of the reply.
  std::uint8_t Take();
  // Tells the record of the line how the attempt ended. What arrived is in `arrived`. An attempt that was
  // told already has ended otherwise after all.
  void Tell(AttemptEnd how);
};

// Clears LastErrorText, which nobody shall take for that of this exchange, and writes the check of tx.
Exchange PrepareExchange(App& app, std::span<std::uint8_t> tx, std::span<std::uint8_t> rx,
                         const ExchangeManner& manner);

// When the pattern looks for the last time, in ms from the moment at which the driver had sent the request.
// `first_ms` is when the first byte came, nothing while none has.
std::int64_t LastLookMs(const Exchange& x, std::optional<std::int64_t> first_ms);
// A wait of the pattern lasts until more than its time has passed.
constexpr std::int64_t Lasts(int ms) { return ms + 1; }

// What is said of a reply with another function than asked, by its third byte.
const char* ExceptionText(int code);
// Such a reply is an exception when its function is the one asked with the high bit.
AttemptEnd EndOfOtherFunction(int asked, int function);

// All attempts. Raises PortFault.
bool RunByPattern(Exchange& x);

}  // namespace vlt
