// SPDX-License-Identifier: GPL-3.0-or-later
// What went over the line: every attempt of every exchange is told here once, with its bytes and times. The
// record counts it for its station and keeps its frames. It takes no more room however long it runs: a
// station has a tally of fixed size (there are 256 at most), and of the frames the last ones are kept.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string_view>
#include <vector>

#include "platform/clock.h"

namespace vlt {

// How one attempt of an exchange ended.
enum class AttemptEnd : std::uint8_t {
  kAnswered,       // a whole reply with the asked function and a good check
  kSilence,        // no byte came
  kShort,          // the reply ended before it was whole
  kException,      // the meter refused; the reply's third byte is its code
  kWrongFunction,  // a reply with a function that was not asked
  kBadCheck,       // the frame check was wrong
  kOtherStation,   // a whole reply that another station has signed; the record knows it by itself too
  kPortFault,      // the port failed
  kOtherEcho,      // a whole reply to a write that repeats something else than was sent
};
inline constexpr std::size_t kAttemptEnds = 9;

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

// How long answers took, from the request's first byte to the reply's last, counted by the millisecond.
class AnswerTimes {
 public:
  // An answer that took longer counts as one of so many milliseconds. The longest limit of an exchange lies
  // far below.
  static constexpr int kLongestMs = 1023;

  void Add(std::int64_t ms);
  // Takes one back that was added.
  void Remove(std::int64_t ms);
  void Add(const AnswerTimes& others);
  std::int64_t Count() const { return count_; }
  // The shortest time that so many per cent (1 to 100) of the answers did not exceed; -1 without an answer.
  int Percentile(int percent) const;

 private:
  std::array<std::uint32_t, kLongestMs + 1> counts_{};
  std::int64_t count_ = 0;
};

// What went over the line to and from one station, or all of them.
struct LineTotals {
  std::int64_t exchanges = 0;  // that have ended
  std::int64_t repeats = 0;    // attempts behind the first one of their exchange
  std::int64_t failed = 0;     // exchanges whose last attempt was not answered
  // Attempts by how they ended. A reply that another station has signed, and that was taken all the same,
  // counts as kOtherStation, and its exchange has not failed.
  std::array<std::int64_t, kAttemptEnds> ends{};
  std::int64_t sent_bytes = 0;
  std::int64_t received_bytes = 0;
  double carried_ms = 0;  // in which the line carried these bytes, at the speed it had
  AnswerTimes answers;    // of whole replies

  std::int64_t Ended(AttemptEnd end) const { return ends[static_cast<std::size_t>(end)]; }
  std::int64_t Bytes() const { return sent_bytes + received_bytes; }
  void Add(const LineTotals& others);
};

enum class FrameWay : std::uint8_t {
  kSent,
  kReceived,
  kNothing,  // stands in the place of a reply that did not come
};

// A frame as the monitor keeps it. Of a reply, or of none, `asked` holds the head of its request, and the
// last three members say how the attempt ended.
struct LineFrame {
  static constexpr std::size_t kHeadBytes = 6;  // station, function, address, count or value

  std::int64_t number = 0;  // 1 for the first frame since the program started
  FrameWay way = FrameWay::kSent;
  int station = 0;
  int attempt = 0;         // as LineAttempt::number
  std::int64_t at_ms = 0;  // Clock::NowMs(); of a reply the moment of its last byte
  LocalTime time;          // the same on the wall
  std::vector<std::uint8_t> bytes;
  std::array<std::uint8_t, kHeadBytes> asked{};
  AttemptEnd end = AttemptEnd::kAnswered;
  std::int64_t took_ms = 0;  // since the request's first byte
};

class LineRecord {
 public:
  // Frames that are kept; a reply that did not come takes the place of one.
  static constexpr std::size_t kFrames = 1000;

  explicit LineRecord(Clock& clock);

  void Add(const LineAttempt& attempt);
  // The attempt told last ended otherwise than the exchange could see: who asked found the reply of another
  // station, or an echo that does not prove a write. Nothing when no attempt was told since Reset.
  void CorrectLast(AttemptEnd end);
  // The port was opened with these settings ("9600,O,8,1").
  void Opened(std::string_view settings);
  // Counts from now on; the frames stay.
  void Reset();

  std::int64_t Attempts() const { return attempts_; }
  AttemptEnd LastEnd() const { return last_end_; }
  // Rises with whatever changes what the record tells.
  std::int64_t Revision() const { return revision_; }

  // Ascending, those that were asked since Reset.
  std::vector<int> Stations() const;
  // A station that was not asked has asked nothing.
  const LineTotals& Of(int station) const;
  LineTotals All() const;
  // When counting began: at the start of the program or at Reset.
  const LocalTime& Since() const { return since_; }
  // Milliseconds from the first request to the end of the last attempt since Reset.
  std::int64_t SpanMs() const { return last_ms_ - first_ms_; }

  // Bits per second of the port that was opened last; 0 before any was.
  int Speed() const { return speed_; }
  // Start, data, parity and stop bits of a byte on it.
  int BitsPerByte() const { return bits_per_byte_; }

  // Frames that are kept, from the oldest (0) on. A frame that is not there throws std::out_of_range.
  std::size_t FrameCount() const;
  const LineFrame& Frame(std::size_t index) const;
  // Frames since the program started.
  std::int64_t FramesEver() const { return frames_ever_; }

 private:
  void Count(const LineAttempt& attempt, AttemptEnd end);
  void Keep(const LineAttempt& attempt, AttemptEnd end);
  LineFrame& NextFrame(const LineAttempt& attempt, std::span<const std::uint8_t> bytes);

  Clock& clock_;
  LocalTime since_;
  std::map<int, LineTotals> stations_;
  std::vector<LineFrame> frames_;  // a ring: frame number n lies at (n - 1) % kFrames
  std::int64_t frames_ever_ = 0;
  std::int64_t attempts_ = 0;
  std::int64_t revision_ = 0;
  std::int64_t first_ms_ = 0;
  std::int64_t last_ms_ = 0;
  int speed_ = 0;
  int bits_per_byte_ = 0;

  // Of the attempt told last: how it ended as it was told, and as it is counted.
  AttemptEnd last_end_ = AttemptEnd::kAnswered;
  AttemptEnd last_counted_ = AttemptEnd::kAnswered;
  int last_station_ = 0;
  std::int64_t last_took_ms_ = 0;
  bool last_of_exchange_ = true;
};

}  // namespace vlt
