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
// that is seen to come so late doubles the patience. Who reads for proof asks how many of that kind there may
// be (Doubts) and reads once more than that.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "link/frame.h"
#include "state/line_pace.h"

namespace vlt {

// Whose replies are taken: those of the station that was asked, or any.
enum class Signature : std::uint8_t { kAsked, kAny };

// What an exchange takes for its reply.
struct ReplyRule {
  Signature signature = Signature::kAsked;
  bool any_address = false;  // the acknowledgement of a write to another register
};

// The reply to `other` could be taken for that to `request` by an exchange of this rule.
bool LookAlike(std::span<const std::uint8_t> request, std::span<const std::uint8_t> other,
               const ReplyRule& rule = {});
// The head of `bytes` repeats what a reply to `request` repeats. Less than three bytes tell too little.
bool IsHeadOfReply(std::span<const std::uint8_t> request, std::span<const std::uint8_t> bytes);
// The first byte of `bytes` is the station that `request` asks. Station 0 is whichever there is.
bool IsSigned(std::span<const std::uint8_t> request, std::span<const std::uint8_t> bytes);
// `bytes` begin with a refusal of `request` whose check is good.
bool IsRefusal(std::span<const std::uint8_t> request, std::span<const std::uint8_t> bytes);

class OwedReplies {
 public:
  // Begins an exchange. Those of one `call` ask the same question, so that a late reply to one of them
  // answers them all; 0 is a call of its own.
  OwedReplies(LinePace& pace, std::span<const std::uint8_t> request, std::int64_t now_us,
              std::int64_t call = 0);

  bool Any() const { return !pace_.owed.empty(); }
  // Until when this exchange has to wait for replies that look like its own; nothing when it need not.
  std::optional<std::int64_t> WaitUntil(std::int64_t now_us, const ReplyRule& rule) const;
  // How many replies to earlier exchanges could still be taken for one to this.
  int Doubts(std::int64_t now_us) const;

  enum class Late : std::uint8_t {
    kNone,     // the head of the bytes is no reply of an earlier exchange
    kComing,   // it is, and is not whole yet
    kDropped,  // it was, and is taken off
    kRefusal,  // it was one that refuses its function, which may be ours too, and is taken off
  };
  // Looks at the head of `bytes` for a reply to an earlier exchange. What looks like ours is none.
  Late DropLate(Frame& bytes, std::int64_t now_us);
  // Finds late replies, wherever they stand in `bytes` that answer nobody, and takes them off with what is
  // ahead of them. Only of bytes that have `just_come` it is known how late they were.
  void DropAllLate(Frame& bytes, std::int64_t now_us, bool just_come = true);

  // A damaged or shortened reply that can only be ours: its head is, and no other is owed.
  bool IsSurelyOurs(const Frame& reply) const;

  // An attempt of ours has ended: by its reply, by a refusal, without either.
  void Answered(std::int64_t limit_us);
  void Refused(std::int64_t limit_us);
  void GivenUp(std::int64_t limit_us);

 private:
  bool IsOurs(const OwedReply& owed) const { return owed.call == call_; }
  std::size_t Find(std::span<const std::uint8_t> bytes) const;
  // The size of a whole late reply at the head of `bytes`, which is paid then; 0 for none.
  std::size_t TakeWhole(std::span<const std::uint8_t> bytes, std::int64_t now_us, bool just_come);
  void Pay(std::size_t at, std::int64_t now_us, bool just_come = true);

  LinePace& pace_;
  std::span<const std::uint8_t> request_;
  std::int64_t call_;
};

}  // namespace vlt
