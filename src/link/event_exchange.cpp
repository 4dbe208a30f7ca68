// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/event_exchange.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "link/owed_replies.h"
#include "state/line_pace.h"

namespace vlt {
namespace {

constexpr std::int64_t kUsOfMs = 1000;
constexpr std::int64_t kLongestFrame = 256;  // characters
// Characters; less is not worth it.
constexpr std::int64_t kShortestHold = 3;
// Between two parts of a frame that an adapter hands over in bundles.
constexpr std::int64_t kBundleUs = 20'000;

class EventExchange {
 public:
  explicit EventExchange(Exchange& x)
      : x_(x), pace_(*x.app.pace), owed_(pace_, x.tx, x.app.platform.clock.NowUs(), x.manner.call) {}
  ~EventExchange() {
    try {
      Hold(false);
    } catch (const PortFault&) {
      // The exchange has ended by it.
    }
  }
  EventExchange(const EventExchange&) = delete;
  EventExchange& operator=(const EventExchange&) = delete;

  bool Run() {
    AwaitOwed();
    for (;;) {
      AwaitSilence();
      Send();
      const AttemptEnd end = Listen();
      KeepReply();
      Settle(end);
      SetText(end);
      x_.Tell(end);
      if (end == AttemptEnd::kAnswered) return true;
      if (FinishFailed()) return false;
    }
  }

 private:
  std::int64_t NowUs() const { return x_.app.platform.clock.NowUs(); }
  std::int64_t NowMs() const { return x_.app.platform.clock.NowMs(); }
  void GiveWayUs(std::int64_t until) const { x_.app.platform.events.GiveWayUs(until); }

  // --- between two requests ------------------------------------------------------------------------------

  // Bytes that nobody waits for any more.
  void TakeStray() {
    if (NowUs() - pace_.last_us > kBundleUs) stray_.clear();
    if (Pull(stray_)) owed_.DropAllLate(stray_, NowUs(), looked_);
    looked_ = true;
  }

  // Until no reply can come that would look like ours.
  void AwaitOwed() {
    for (;;) {
      TakeStray();
      const auto until = owed_.WaitUntil(NowUs(), ReplyRule{});
      if (!until) break;
      GiveWayUs(*until);
    }
    x_.doubts = owed_.Doubts(NowUs());
  }

  // Until the line has been silent for so long as has to lie between two frames. A line that is never silent
  // is not waited for longer than the longest frame takes.
  void AwaitSilence() {
    x_.GiveWay();
    const std::int64_t patience = NowUs() + pace_.CharactersUs(kLongestFrame) + pace_.GapUs();
    for (;;) {
      TakeStray();
      const std::int64_t until = std::min(pace_.last_us + pace_.GapUs(), patience);
      if (NowUs() >= until) break;
      GiveWayUs(until);
    }
    stray_.clear();
  }

  // --- one attempt ---------------------------------------------------------------------------------------

  void Send() {
    drained_ms_.reset();
    first_ms_.reset();
    refusal_.clear();
    x_.Send();
    pace_.last_us = NowUs() + pace_.CharactersUs(static_cast<std::int64_t>(x_.tx.size()));
  }

  AttemptEnd Listen() {
    std::int64_t look_ms = x_.sent_ms;  // for the end of the request
    std::int64_t ready_us = 0;          // what is still to come can't be there before
    for (;;) {
      if (held_ && (NowUs() >= ready_us || AtLimit())) Release();
      if (!held_ && Pull(x_.arrived)) {
        if (const auto end = Judge()) return Listened(*end);
        ready_us = NowUs() + pace_.CharactersUs(Missing() - 1);
      }
      if (!drained_ms_ && NowMs() >= look_ms) LookForDrain(look_ms);
      if (AtLimit()) return Listened(JudgeAtLimit());
      const std::int64_t next_us = (drained_ms_ ? *LimitMs() : look_ms) * kUsOfMs;
      if (ready_us - NowUs() > pace_.CharactersUs(kShortestHold)) Hold(true);
      GiveWayUs(held_ ? std::min(next_us, ready_us) : next_us);
    }
  }

  AttemptEnd Listened(AttemptEnd end) {
    Hold(false);
    return end;
  }

  // The moments at which the pattern looks.
  void LookForDrain(std::int64_t& look_ms) {
    if (x_.Port().BytesOut() == 0) drained_ms_ = NowMs();
    look_ms = NowMs() + Lasts(kDrainPollMs);
  }

  std::optional<std::int64_t> LimitMs() const {
    if (!drained_ms_) return {};
    auto first = first_ms_;
    if (first) *first -= *drained_ms_;
    return *drained_ms_ + LastLookMs(x_, first);
  }

  bool AtLimit() const { return drained_ms_ && NowMs() >= *LimitMs(); }

  void Hold(bool hold) {
    if (hold == held_) return;
    held_ = hold;
    x_.Port().HoldInput(hold);
  }

  // Lets come what lay in the driver: all of it at once, and not a byte a turn.
  void Release() {
    Hold(false);
    x_.GiveWay();
  }

  // Moves what has come behind `bytes`; true when something has.
  bool Pull(Frame& bytes) {
    const int count = x_.Port().BytesIn();
    if (count == 0) return false;
    for (int i = 0; i < count; ++i) bytes.push_back(x_.Port().TakeByte());
    pace_.last_us = std::max(pace_.last_us, NowUs());  // ours may still be going out
    if (!first_ms_) first_ms_ = NowMs();
    return true;
  }

  // Bytes that still lack to the next thing that can be judged.
  std::int64_t Missing() const {
    const bool head = x_.arrived.size() > kHeadBytes;
    const std::size_t wanted = head && x_.arrived[1] == x_.tx[1] ? x_.rx.size() : kExceptionBytes;
    return std::max<std::int64_t>(
        static_cast<std::int64_t>(wanted) - static_cast<std::int64_t>(x_.arrived.size()), 1);
  }

  // --- what has come -------------------------------------------------------------------------------------

  std::size_t Whole() const { return x_.rx.size(); }
  bool HasOurFunction() const { return x_.arrived[1] == x_.tx[1]; }

  // How the attempt ends by what is there; nothing while more may change it.
  std::optional<AttemptEnd> Judge() {
    for (;;) {
      const Frame head(x_.arrived.begin(), x_.arrived.begin() + std::min(x_.arrived.size(), kExceptionBytes));
      const auto late = owed_.DropLate(x_.arrived, NowUs());
      if (late == OwedReplies::Late::kComing) return {};
      if (late == OwedReplies::Late::kNone) return JudgeOurs();
      // The waits go on as if it had not come.
      first_ms_ = x_.arrived.empty() ? std::nullopt : std::optional(NowMs());
      if (late == OwedReplies::Late::kRefusal) refusal_ = head;
      if (x_.arrived.empty()) return {};
    }
  }

  std::optional<AttemptEnd> JudgeOurs() const {
    if (x_.arrived.size() >= Whole()) return JudgeWhole();
    if (IsRefusal(x_.tx, x_.arrived)) return AttemptEnd::kException;
    return {};
  }

  AttemptEnd JudgeWhole() const {
    if (!HasOurFunction()) return EndOfOtherFunction(x_.tx[1], x_.arrived[1]);
    if (!IsCheckGood(std::span(x_.arrived).first(Whole()))) return AttemptEnd::kBadCheck;
    const bool taken = x_.manner.signature == Signature::kAny || !x_.IsSignedByOther(x_.arrived);
    return taken ? AttemptEnd::kAnswered : AttemptEnd::kOtherStation;
  }

  // A refusal that was held back counts when nothing else has come. What is not whole goes on coming.
  AttemptEnd JudgeAtLimit() {
    stray_ = x_.arrived;
    if (x_.arrived.empty()) x_.arrived = refusal_;
    if (x_.arrived.empty()) return AttemptEnd::kSilence;
    if (x_.arrived.size() < kHeadBytes || HasOurFunction()) return AttemptEnd::kShort;
    return EndOfOtherFunction(x_.tx[1], x_.arrived[1]);
  }

  // As much into rx as the pattern takes.
  void KeepReply() {
    const Frame& reply = x_.arrived;
    if (reply.size() < kHeadBytes) return;
    std::size_t count = HasOurFunction() ? kHeadBytes : kHeadBytes + 1;
    if (HasOurFunction() && reply.size() >= Whole()) count = Whole();
    std::copy_n(reply.begin(), std::min({count, reply.size(), Whole()}), x_.rx.begin());
  }

  void SetText(AttemptEnd end) {
    const Frame& reply = x_.arrived;
    std::string& text = x_.text;
    if (end == AttemptEnd::kSilence || end == AttemptEnd::kOtherStation) text = kNoResponse;
    if (end == AttemptEnd::kBadCheck || (end == AttemptEnd::kShort && reply.size() >= kHeadBytes)) {
      text = kCheckError;
    }
    if (end == AttemptEnd::kException || end == AttemptEnd::kWrongFunction) {
      text = ExceptionText(reply.size() > kHeadBytes ? reply[kHeadBytes] : 0);
    }
  }

  // What may still come of it. A reply that another station has signed is not the one that was asked for,
  // also where it is taken.
  void Settle(AttemptEnd end) {
    const std::int64_t limit_us = LimitMs().value_or(NowMs() + LastLookMs(x_, {})) * kUsOfMs;
    const bool damaged = end == AttemptEnd::kBadCheck || end == AttemptEnd::kShort;
    if (end == AttemptEnd::kAnswered && !x_.IsSignedByOther(x_.arrived)) {
      owed_.Answered(limit_us);
    } else if (refusal_.empty() && IsRefusal(x_.tx, x_.arrived)) {
      owed_.Refused(limit_us);
    } else if (!damaged || !owed_.IsSurelyOurs(x_.arrived)) {
      owed_.GivenUp(limit_us);
    }
    if (end == AttemptEnd::kException) ++x_.refused;
  }

  // True when no attempt is left.
  bool FinishFailed() {
    ++x_.attempt;
    if (++x_.count <= x_.app.state.RetryNo) return false;
    AwaitSilence();
    x_.Port().DiscardInput();
    if (x_.text.empty()) x_.text = kApplicationError;
    return true;
  }

  Exchange& x_;
  LinePace& pace_;
  OwedReplies owed_;
  Frame stray_;
  bool looked_ = false;  // what has lain in the port before the exchange is taken
  bool held_ = false;
  // Of the attempt that runs: when the driver had sent the request, when the first byte came, and a refusal
  // that may be meant for an earlier exchange.
  std::optional<std::int64_t> drained_ms_;
  std::optional<std::int64_t> first_ms_;
  Frame refusal_;
};

}  // namespace

bool RunByEvents(Exchange& x) { return EventExchange(x).Run(); }

}  // namespace vlt
