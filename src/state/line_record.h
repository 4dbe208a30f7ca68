// SPDX-License-Identifier: GPL-3.0-or-later
// What went over the line: every attempt of every exchange is told here once, with its bytes and times.
#pragma once

#include <cstdint>
#include <span>

namespace vlt {

// How one attempt of an exchange ended.
enum class AttemptEnd : std::uint8_t {
  kAnswered,       // a whole reply with the asked function and a good check
  kSilence,        // no byte came
  kShort,          // the reply ended before it was whole
  kException,      // the meter refused; the reply's third byte is its code
  kWrongFunction,  // a reply with a function that was not asked
  kBadCheck,       // the frame check was wrong
  kOtherStation,   // a whole reply that another station has signed
  kPortFault,      // the port failed
};

// One request and what came of it. Moments are Clock::NowMs().
struct LineAttempt {
  int station = 0;
  int number = 0;             // 0 for the first attempt of an exchange, above it for its repeats
  std::int64_t sent_ms = 0;   // the request's first byte went out
  std::int64_t ended_ms = 0;  // the reply's last byte was taken, or the attempt was given up
  std::span<const std::uint8_t> request = {};  // valid during the call
  std::span<const std::uint8_t> reply = {};    // what arrived, valid during the call
  AttemptEnd end = AttemptEnd::kAnswered;
  bool last = true;  // no repeat follows: the exchange ends with this attempt
};

class LineRecord {
 public:
  void Add(const LineAttempt& attempt);
  // The attempt told last ended otherwise than the exchange could see: who asked found the reply of another
  // station.
  void CorrectLast(AttemptEnd end);

  std::int64_t Attempts() const { return attempts_; }
  AttemptEnd LastEnd() const { return last_end_; }

 private:
  std::int64_t attempts_ = 0;
  AttemptEnd last_end_ = AttemptEnd::kAnswered;
};

}  // namespace vlt
