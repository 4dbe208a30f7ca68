// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/owed_replies.h"

#include <algorithm>

namespace vlt {
namespace {

constexpr std::size_t kMostOwed = 128;  // of stations that are off, the oldest are forgotten
constexpr std::size_t kStation = 0;
constexpr std::size_t kFunction = 1;
constexpr std::size_t kByteCount = 2;  // of the reply to a read
constexpr std::size_t kAddress = 2;    // high byte; in a write and its reply
constexpr std::size_t kReadHead = 3;
constexpr std::size_t kWriteHead = 4;
constexpr std::size_t kNowhere = static_cast<std::size_t>(-1);

using Bytes = std::span<const std::uint8_t>;

bool IsRead(Bytes request) { return request[kFunction] == 0x03 || request[kFunction] == 0x04; }

bool SameAddress(Bytes a, Bytes b) {
  return a[kAddress] == b[kAddress] && a[kAddress + 1] == b[kAddress + 1];
}

bool SameAsked(Bytes a, Bytes b) { return a[kStation] == b[kStation] && a[kFunction] == b[kFunction]; }

void TakeOff(Frame& bytes, std::size_t count) {
  bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count));
}

}  // namespace

bool LookAlike(Bytes request, Bytes other) {
  if (!SameAsked(request, other)) return false;
  return IsRead(request) ? ReplySize(request) == ReplySize(other) : SameAddress(request, other);
}

bool IsHeadOfReply(Bytes request, Bytes bytes) {
  if (bytes.size() < kReadHead || !SameAsked(request, bytes)) return false;
  if (IsRead(request)) return bytes[kByteCount] + kReadHead + 2 == ReplySize(request);
  return bytes.size() >= kWriteHead && SameAddress(request, bytes);
}

bool IsRefusal(Bytes request, Bytes bytes) {
  return bytes.size() >= kExceptionBytes && bytes[kStation] == request[kStation] &&
         bytes[kFunction] == (request[kFunction] | kExceptionBit) &&
         IsCheckGood(bytes.first(kExceptionBytes));
}

std::optional<std::int64_t> OwedReplies::WaitUntil(std::int64_t now_us) const {
  std::optional<std::int64_t> until;
  for (const OwedReply& owed : pace_.owed) {
    const std::int64_t end = owed.limit_us + pace_.patience_us;
    if (!IsOurs(owed) && LookAlike(request_, owed.request) && end > now_us) until = std::max(until, {end});
  }
  return until;
}

std::size_t OwedReplies::Find(const Frame& bytes) const {
  const auto found = std::ranges::find_if(pace_.owed, [&](const OwedReply& owed) {
    return IsHeadOfReply(owed.request, bytes) || IsRefusal(owed.request, bytes);
  });
  return found == pace_.owed.end() ? kNowhere : static_cast<std::size_t>(found - pace_.owed.begin());
}

// What the station was asked before that will not be answered any more.
void OwedReplies::Pay(std::size_t at, std::int64_t now_us) {
  const OwedReply paid = pace_.owed[at];
  const std::int64_t late_us = now_us - paid.limit_us;
  pace_.patience_us = std::clamp(2 * late_us, pace_.patience_us, LinePace::kMostPatienceUs);
  std::size_t place = 0;
  std::erase_if(pace_.owed, [&](const OwedReply& owed) {
    return place++ <= at && owed.request[kStation] == paid.request[kStation];
  });
}

OwedReplies::Late OwedReplies::DropLate(Frame& bytes, std::int64_t now_us) {
  if (pace_.owed.empty() || IsHeadOfReply(request_, bytes)) return Late::kNone;
  const std::size_t at = Find(bytes);
  if (at == kNowhere || IsOurs(pace_.owed[at])) return Late::kNone;
  const Frame& asked = pace_.owed[at].request;
  if (IsRefusal(asked, bytes)) {
    const bool could_be_ours = SameAsked(request_, asked);
    TakeOff(bytes, kExceptionBytes);
    Pay(at, now_us);
    return could_be_ours ? Late::kRefusal : Late::kDropped;
  }
  const std::size_t size = ReplySize(asked);
  if (bytes.size() < size) return Late::kComing;
  if (!IsCheckGood(Bytes(bytes).first(size))) return Late::kNone;
  TakeOff(bytes, size);
  Pay(at, now_us);
  return Late::kDropped;
}

void OwedReplies::DropAllLate(Frame& bytes, std::int64_t now_us) {
  for (;;) {
    const std::size_t at = bytes.empty() ? kNowhere : Find(bytes);
    if (at == kNowhere) return;
    const Frame& asked = pace_.owed[at].request;
    const std::size_t size = IsRefusal(asked, bytes) ? kExceptionBytes : ReplySize(asked);
    if (bytes.size() < size || !IsCheckGood(Bytes(bytes).first(size))) return;
    TakeOff(bytes, size);
    Pay(at, now_us);
  }
}

bool OwedReplies::IsSurelyOurs(const Frame& reply) const {
  return pace_.owed.empty() && IsHeadOfReply(request_, reply);
}

void OwedReplies::Answered(std::int64_t limit_us) {
  std::erase_if(pace_.owed, [&](const OwedReply& owed) {
    return !IsOurs(owed) && owed.request[kStation] == request_[kStation];
  });
  Refused(limit_us);
}

// One reply less to come. It is taken for the one to our oldest attempt, so that those to the later ones,
// this one's too, may still come.
void OwedReplies::Refused(std::int64_t limit_us) {
  const auto oldest = std::ranges::find_if(pace_.owed, [&](const OwedReply& owed) { return IsOurs(owed); });
  if (oldest == pace_.owed.end()) return;
  pace_.owed.erase(oldest);
  GivenUp(limit_us);
}

void OwedReplies::GivenUp(std::int64_t limit_us) {
  std::erase_if(pace_.owed, [&](const OwedReply& owed) {
    return limit_us - owed.limit_us > 2 * LinePace::kMostPatienceUs;
  });
  pace_.owed.push_back({Frame(request_.begin(), request_.end()), limit_us, call_});
  if (pace_.owed.size() > kMostOwed) pace_.owed.erase(pace_.owed.begin());
}

}  // namespace vlt
