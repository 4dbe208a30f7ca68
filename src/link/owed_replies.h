// SPDX-License-Identifier: GPL-3.0-or-later
// Replies that may still come after their request was given up, and how they are kept from being taken for
// the reply to a later one.
//
// Modbus RTU numbers nothing, so a reply is told by what it repeats of its request: the station, the
// function, and the count of bytes (a read) or the address (a write). What differs in one of these is
// recognised and dropped whenever it comes. Where a late reply would look like the one that is asked for, the
// request waits until the late one has come, or until LinePace::patience_us behind its limit have passed.
//
// A station answers in the order in which it was asked. So a reply to a later request shows that the earlier
// ones will not be answered any more; and of several attempts of one exchange, the replies to the later ones
// may still come when one reply has come.
//
// What no rule can tell apart: a reply that looks the same and comes later than the patience. The first one
// that is seen to come so late doubles the patience.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "link/frame.h"
#include "state/line_pace.h"

namespace vlt {

// A request and its reply look alike for these two: the reply to one could be taken for the other's.
bool LookAlike(std::span<const std::uint8_t> request, std::span<const std::uint8_t> other);
// The head of `bytes` repeats what a reply to `request` repeats. Less than three bytes tell too little.
bool IsHeadOfReply(std::span<const std::uint8_t> request, std::span<const std::uint8_t> bytes);
// `bytes` begin with a refusal of `request` whose check is good.
bool IsRefusal(std::span<const std::uint8_t> request, std::span<const std::uint8_t> bytes);

class OwedReplies {
 public:
  // Begins an exchange.
  OwedReplies(LinePace& pace, std::span<const std::uint8_t> request)
      : pace_(pace), request_(request), call_(++pace.calls) {}

  // Until when this exchange has to wait for replies that look like its own; nothing when it need not.
  std::optional<std::int64_t> WaitUntil(std::int64_t now_us) const;

  enum class Late : std::uint8_t {
    kNone,     // the head of the bytes is no reply of an earlier exchange
    kComing,   // it is, and is not whole yet
    kDropped,  // it was, and is taken off
    kRefusal,  // it was one that refuses its function, which may be ours too, and is taken off
  };
  // Looks at the head of `bytes` for a reply to an earlier exchange. What looks like ours is none.
  Late DropLate(Frame& bytes, std::int64_t now_us);
  // Replies to earlier exchanges, while nothing is asked.
  void DropAllLate(Frame& bytes, std::int64_t now_us);

  // A damaged reply that can only be ours: its head is, and no other is owed.
  bool IsSurelyOurs(const Frame& reply) const;

  // An attempt of ours has ended: by its reply, by a refusal, without either.
  void Answered(std::int64_t limit_us);
  void Refused(std::int64_t limit_us);
  void GivenUp(std::int64_t limit_us);

 private:
  bool IsOurs(const OwedReply& owed) const { return owed.call == call_; }
  std::size_t Find(const Frame& bytes) const;
  void Pay(std::size_t at, std::int64_t now_us);

  LinePace& pace_;
  std::span<const std::uint8_t> request_;
  std::int64_t call_;
};

}  // namespace vlt
