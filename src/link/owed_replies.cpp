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

bool LookAlike(Bytes request, Bytes other, const ReplyRule& rule) {
  if (request[kFunction] != other[kFunction]) return false;
  if (rule.signature == Signature::kAsked && request[kStation] != other[kStation]) return false;
  if (IsRead(request)) return ReplySize(request) == ReplySize(other);
  return rule.any_address || SameAddress(request, other);
}

bool IsHeadOfReply(Bytes request, Bytes bytes) {
  if (bytes.size() < kReadHead || !IsSigned(request, bytes) || bytes[kFunction] != request[kFunction]) {
    return false;
  }
  if (IsRead(request)) return bytes[kByteCount] + kReadHead + 2 == ReplySize(request);
  return bytes.size() >= kWriteHead && SameAddress(request, bytes);
}

bool IsSigned(Bytes request, Bytes bytes) {
  return !bytes.empty() && (request[kStation] == 0 || bytes[kStation] == request[kStation]);
}

bool IsRefusal(Bytes request, Bytes bytes) {
  return bytes.size() >= kExceptionBytes && IsSigned(request, bytes) &&
         bytes[kFunction] == (request[kFunction] | kExceptionBit) &&
         IsCheckGood(bytes.first(kExceptionBytes));
}

OwedReplies::OwedReplies(LinePace& pace, Bytes request, std::int64_t now_us, std::int64_t call)
    : pace_(pace), request_(request), call_(call != 0 ? call : ++pace.calls) {
  const std::int64_t doubted_us = LinePace::kDoubtFor * pace.patience_us;
  std::erase_if(pace.owed, [&](const OwedReply& owed) {
    return now_us - owed.limit_us > (owed.passed_over ? doubted_us : 2 * LinePace::kMostPatienceUs);
  });
}

std::optional<std::int64_t> OwedReplies::WaitUntil(std::int64_t now_us, const ReplyRule& rule) const {
  std::optional<std::int64_t> until;
  for (const OwedReply& owed : pace_.owed) {
    if (owed.passed_over || IsOurs(owed) || !LookAlike(request_, owed.request, rule)) continue;
    const std::int64_t end = owed.limit_us + pace_.patience_us;
    if (end > now_us) until = std::max(until, {end});
  }
  return until;
}

int OwedReplies::Doubts(std::int64_t now_us) const {
  return static_cast<int>(std::ranges::count_if(pace_.owed, [&](const OwedReply& owed) {
    return !IsOurs(owed) && LookAlike(request_, owed.request) &&
           owed.limit_us + LinePace::kDoubtFor * pace_.patience_us > now_us;
  }));
}

std::size_t OwedReplies::Find(Bytes bytes) const {
  std::size_t passed_over = kNowhere;
  if (bytes.size() < kReadHead) return kNowhere;
  for (std::size_t at = 0; at < pace_.owed.size(); ++at) {
    const OwedReply& owed = pace_.owed[at];
    if (owed.passed_over && passed_over != kNowhere) continue;
    if ((bytes[kFunction] & ~kExceptionBit) != owed.request[kFunction])
      continue;  // most bytes begin no reply
    if (!IsHeadOfReply(owed.request, bytes) && !IsRefusal(owed.request, bytes)) continue;
    if (!owed.passed_over) return at;
    passed_over = at;
  }
  return passed_over;
}

// What the station was asked before that will not be answered any more.
void OwedReplies::Pay(std::size_t at, std::int64_t now_us, bool just_come) {
  const OwedReply paid = pace_.owed[at];
  if (just_come) {
    pace_.patience_us =
        std::clamp(2 * (now_us - paid.limit_us), pace_.patience_us, LinePace::kMostPatienceUs);
  }
  pace_.owed.erase(pace_.owed.begin() + static_cast<std::ptrdiff_t>(at));
  for (std::size_t i = 0; i < at; ++i) {
    if (pace_.owed[i].request[kStation] == paid.request[kStation]) pace_.owed[i].passed_over = true;
  }
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

std::size_t OwedReplies::TakeWhole(Bytes bytes, std::int64_t now_us, bool just_come) {
  const std::size_t at = Find(bytes);
  if (at == kNowhere) return 0;
  const Frame& asked = pace_.owed[at].request;
  const std::size_t size = IsRefusal(asked, bytes) ? kExceptionBytes : ReplySize(asked);
  if (bytes.size() < size || !IsCheckGood(bytes.first(size))) return 0;
  Pay(at, now_us, just_come);
  return size;
}

void OwedReplies::DropAllLate(Frame& bytes, std::int64_t now_us, bool just_come) {
  constexpr std::size_t kLongestFrame = 256;
  for (std::size_t at = 0; at < bytes.size() && Any();) {
    const std::size_t size = TakeWhole(Bytes(bytes).subspan(at), now_us, just_come);
    if (size == 0) {
      ++at;
    } else {
      TakeOff(bytes, at + size);
      at = 0;
    }
  }
  if (bytes.size() > kLongestFrame) TakeOff(bytes, bytes.size() - kLongestFrame);
}

bool OwedReplies::IsSurelyOurs(const Frame& reply) const {
  return IsHeadOfReply(request_, reply) &&
         std::ranges::all_of(pace_.owed, [](const OwedReply& owed) { return owed.passed_over; });
}

void OwedReplies::Answered(std::int64_t limit_us) {
  for (OwedReply& owed : pace_.owed) {
    if (!IsOurs(owed) && owed.request[kStation] == request_[kStation]) owed.passed_over = true;
  }
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
  pace_.owed.push_back(
      {.request = Frame(request_.begin(), request_.end()), .limit_us = limit_us, .call = call_});
  if (pace_.owed.size() > kMostOwed) pace_.owed.erase(pace_.owed.begin());
}

}  // namespace vlt
