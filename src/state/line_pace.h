// SPDX-License-Identifier: GPL-3.0-or-later
// What is remembered of the line between two exchanges: how long a character takes, when the line carried its
// last one, and which replies may still come. Moments are Clock::NowUs().
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vlt {

// A request that was given up and whose reply may still come.
struct OwedReply {
  std::vector<std::uint8_t> request;
  std::int64_t limit_us = 0;  // its waits ended
  std::int64_t call = 0;      // the exchange that it belonged to
  // The station has answered a later request since, and stations answer in order: nobody waits for it any
  // more. A value that has to be proof is doubted all the same.
  bool passed_over = false;
};

struct LinePace {
  int speed = 9600;                   // bit/s
  int bits_of_character = 11;         // start, data, parity and stop bits
  std::int64_t last_us = kLongAgoUs;  // the last character, out or in, was over
  std::int64_t calls = 0;             // exchanges since the port was opened
  std::int64_t patience_us = kPatienceUs;
  std::vector<OwedReply> owed;         // oldest first
  std::vector<std::uint8_t> stray;     // of the pattern: bytes that answered nobody, the last of them
  std::int64_t stray_us = kLongAgoUs;  // when they came

  // How much later than its limit a reply is reckoned with. A meter answers within some ten milliseconds, a
  // gateway or a radio link gives up after a second. A reply that comes later still doubles it.
  static constexpr std::int64_t kPatienceUs = 1'000'000;
  static constexpr std::int64_t kLongAgoUs = -1'000'000;
  static constexpr std::int64_t kMostPatienceUs = 10'000'000;
  // For how many times the patience a reply that looks the same is doubted.
  static constexpr std::int64_t kDoubtFor = 2;

  // Time of so many characters, rounded up.
  std::int64_t CharactersUs(std::int64_t count) const { return BitsUs(count * bits_of_character); }
  // The silence between two frames: 3.5 characters, and 1.75 ms where these take less, as the rules of the
  // protocol for serial lines have it.
  std::int64_t GapUs() const {
    constexpr std::int64_t kShortestGapUs = 1'750;
    return std::max((BitsUs(7 * static_cast<std::int64_t>(bits_of_character)) + 1) / 2, kShortestGapUs);
  }

 private:
  std::int64_t BitsUs(std::int64_t bits) const { return (bits * 1'000'000 + speed - 1) / speed; }
};

}  // namespace vlt
