// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/exchange.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "link/wait.h"
#include "state/line_pace.h"

namespace vlt {
namespace {

constexpr int kStationsRestMs = 200;  // behind a good exchange with one of several stations
constexpr std::int64_t kUsOfMs = 1000;
constexpr int kOwnStart = -1;  // the attempt counter starts at RetryNo

struct Pattern {
  int first_count;    // attempt counter at the start, or kOwnStart
  int first_wait_ms;  // from the end of the request
  int slow_wait_ms;   // the same at 9600 baud
  int poll_limit;
};

// A failed attempt adds 1 to the counter and the exchange ends when it exceeds RetryNo, so a counter that
// starts at 4 leaves one attempt unless RetryNo is 5.
constexpr Pattern kPatterns[] = {
    {0, 24, 24, 10},          // kModeOrdinary
    {kOwnStart, 24, 24, 10},  // kModeStore
    {0, 24, 480, 10},         // kModeLongBlock
    {4, 154, 154, 0},         // kModeStations
    {4, 154, 154, 2},         // kModeUnitQuery
};

const Pattern& PatternOf(int mode) {
  const bool known = mode >= 0 && mode < static_cast<int>(std::size(kPatterns));
  return kPatterns[known ? mode : kModeOrdinary];
}

// --- what has come and answers nobody ----------------------------------------------------------------------

// Looks for late replies in what has come behind the bytes before it. What is long over is no part of them,
// and without any that may still come nothing is looked at.
void AddStray(Exchange& x, OwedReplies& owed, const Frame& came, bool just_come) {
  constexpr std::int64_t kLongOverUs = 1'000'000;  // longer than the pattern ever does not look
  LinePace& pace = *x.app.pace;
  if (!owed.Any() || x.NowUs() - pace.stray_us > kLongOverUs) pace.stray.clear();
  if (came.empty() || !owed.Any()) return;
  pace.stray.insert(pace.stray.end(), came.begin(), came.end());
  pace.stray_us = x.NowUs();
  owed.DropAllLate(pace.stray, x.NowUs(), just_come);
}

// Bytes that the next step would throw away may be replies that are awaited.
void TakeStray(Exchange& x, OwedReplies& owed, bool just_come = true) {
  Frame came;
  while (owed.Any() && x.Port().BytesIn() > 0) came.push_back(x.Port().TakeByte());
  AddStray(x, owed, came, just_come);
}

void DiscardInput(Exchange& x, OwedReplies& owed) {
  TakeStray(x, owed);
  x.Port().DiscardInput();
}

// Until no reply to another exchange can come that could be taken for one to this.
void AwaitOwed(Exchange& x, OwedReplies& owed) {
  TakeStray(x, owed, false);
  bool waited = false;
  while (const auto until = owed.WaitUntil(x.NowUs(), x.Takes())) {
    x.app.platform.events.GiveWayUs(*until);
    TakeStray(x, owed);
    waited = true;
  }
  if (waited) WaitMs(x.app, x.app.state.CharGapMs);
  x.doubts = owed.Doubts(x.NowUs());
}

// --- one attempt -------------------------------------------------------------------------------------------

void SendFrame(Exchange& x, OwedReplies& owed) {
  x.GiveWay();
  TakeStray(x, owed);
  x.Send();
  while (x.Port().BytesOut() > 0) {
    x.GiveWay();
    WaitMs(x.app, kDrainPollMs);
  }
  x.limit_us = (x.app.platform.clock.NowMs() + LastLookMs(x, {})) * kUsOfMs;
}

void AwaitReply(Exchange& x) {
  WaitMs(x.app, x.first_wait_ms);
  for (int n = 0; x.Port().BytesIn() == 0 && n != x.poll_limit; ++n) {
    x.GiveWay();
    WaitMs(x.app, kFirstPollMs);
  }
  const int whole = static_cast<int>(x.rx.size());
  for (int n = 0; x.Port().BytesIn() < whole && n <= x.poll_limit; ++n) {
    x.GiveWay();
    WaitMs(x.app, kRestPollMs);
  }
}

// Takes station and function. A lone byte fails without a text: the exchange finds one at its end.
AttemptEnd CheckHead(Exchange& x) {
  if (x.Port().BytesIn() == 0) {
    x.text = kNoResponse;
    return AttemptEnd::kSilence;
  }
  if (x.Port().BytesIn() < static_cast<int>(kHeadBytes)) return AttemptEnd::kShort;
  for (std::size_t i = 0; i < kHeadBytes; ++i) x.rx[i] = x.Take();
  if (x.rx[1] == x.tx[1]) return AttemptEnd::kAnswered;
  int code = 0;
  if (x.Port().BytesIn() > 0) code = x.rx[2] = x.Take();
  x.text = ExceptionText(code);
  return EndOfOtherFunction(x.tx[1], x.rx[1]);
}

// Takes the rest when all of it is there; what is not whole is no reply, whatever rx held before.
AttemptEnd CheckBody(Exchange& x) {
  const auto body = x.rx.subspan(kHeadBytes);
  const bool whole = x.Port().BytesIn() >= static_cast<int>(body.size());
  if (whole) std::generate(body.begin(), body.end(), [&] { return x.Take(); });
  if (!whole || !IsCheckGood(x.rx)) {
    x.text = kCheckError;
    return whole ? AttemptEnd::kBadCheck : AttemptEnd::kShort;
  }
  if (x.manner.signature == Signature::kAny || !x.IsSignedByOther(x.rx)) return AttemptEnd::kAnswered;
  x.text = kNoResponse;
  return AttemptEnd::kOtherStation;
}

// What a failed reply left in the port, which the next attempt would throw away: for the record, and to find
// late replies in it.
void TakeRest(Exchange& x) {
  try {
    while (x.Port().BytesIn() > 0) x.Take();
  } catch (const PortFault&) {
    // The next step of the exchange meets it too.
  }
}

// What may still come of the attempt. A reply that another station has signed, or that names another
// register, is not the one that was asked for, also where it is taken.
void Settle(Exchange& x, OwedReplies& owed, AttemptEnd end) {
  if (end == AttemptEnd::kException) ++x.refused;
  if (end == AttemptEnd::kAnswered && IsHeadOfReply(x.tx, x.rx)) return owed.Answered(x.limit_us);
  const bool damaged = end == AttemptEnd::kBadCheck || end == AttemptEnd::kShort;
  if (damaged && owed.IsSurelyOurs(x.arrived)) {
    // What it still lacks may come behind it and must not make of it a reply to what is asked next.
    x.app.pace->stray.clear();
    return;
  }
  owed.GivenUp(x.limit_us);
  AddStray(x, owed, x.arrived, true);
}

void FinishGood(Exchange& x, OwedReplies& owed) {
  WaitMs(x.app, x.app.state.CharGapMs);
  DiscardInput(x, owed);
  const bool first = x.count == PatternOf(x.manner.mode).first_count;
  if (x.manner.mode == kModeStations && first) WaitMs(x.app, kStationsRestMs);
}

// True when no attempt is left.
bool FinishFailed(Exchange& x, OwedReplies& owed) {
  ++x.count;
  ++x.attempt;
  WaitMs(x.app, x.app.state.CharGapMs);
  if (x.count <= x.app.state.RetryNo) return false;
  DiscardInput(x, owed);
  if (x.text.empty()) x.text = kApplicationError;
  return true;
}

}  // namespace

void Exchange::Send() {
  arrived.clear();
  told = false;
  sent_ms = app.platform.clock.NowMs();
  Port().DiscardInput();
  Port().DiscardOutput();
  ++requests;
  Port().Write(tx);
}

std::uint8_t Exchange::Take() {
  arrived.push_back(Port().TakeByte());
  return arrived.back();
}

void Exchange::Tell(AttemptEnd how) {
  end = how;
  if (told) {
    app.line->CorrectLast(end);
    return;
  }
  told = true;
  const bool last = end == AttemptEnd::kAnswered || end == AttemptEnd::kPortFault || IsLastAttempt();
  app.line->Add({.station = tx[0],
                 .number = attempt,
                 .sent_ms = sent_ms,
                 .ended_ms = app.platform.clock.NowMs(),
                 .request = tx,
                 .reply = arrived,
                 .end = end,
                 .last = last});
}

Exchange PrepareExchange(App& app, std::span<std::uint8_t> tx, std::span<std::uint8_t> rx,
                         const ExchangeManner& manner) {
  app.state.LastErrorText.clear();
  const int count = static_cast<int>(tx.size()) - 2;
  CalcCrc(tx, count, tx[tx.size() - 1], tx[tx.size() - 2]);
  const Pattern& pattern = PatternOf(manner.mode);
  return {.app = app,
          .tx = tx,
          .rx = rx,
          .manner = manner,
          .first_wait_ms = app.state.Speed == "9600" ? pattern.slow_wait_ms : pattern.first_wait_ms,
          .poll_limit = pattern.poll_limit,
          .count = pattern.first_count == kOwnStart ? app.state.RetryNo : pattern.first_count,
          .sent_ms = app.platform.clock.NowMs()};
}

std::int64_t LastLookMs(const Exchange& x, std::optional<std::int64_t> first_ms) {
  const std::int64_t first_look = Lasts(x.first_wait_ms);
  const std::int64_t late =
      first_ms ? std::max<std::int64_t>(*first_ms - first_look, 0) : std::numeric_limits<std::int32_t>::max();
  const std::int64_t looks =
      std::min<std::int64_t>((late + kFirstPollMs) / Lasts(kFirstPollMs), x.poll_limit);
  return first_look + looks * Lasts(kFirstPollMs) + (x.poll_limit + 1) * Lasts(kRestPollMs);
}

const char* ExceptionText(int code) {
  static constexpr const char* kTexts[] = {"[FUNCTON CODE ERROR(01H)]", "[ADDRESS ERROR(02H)]",
                                           "[REGISTER COUNT ERROR(03H)]"};
  return code >= 1 && code <= 3 ? kTexts[code - 1] : "[UNKNOWN FUNCTION CODE ERROR]";
}

AttemptEnd EndOfOtherFunction(int asked, int function) {
  return function == (asked | kExceptionBit) ? AttemptEnd::kException : AttemptEnd::kWrongFunction;
}

bool RunByPattern(Exchange& x) {
  OwedReplies owed(*x.app.pace, x.tx, x.NowUs(), x.manner.call);
  AwaitOwed(x, owed);
  for (;;) {
    SendFrame(x, owed);
    AwaitReply(x);
    AttemptEnd end = CheckHead(x);
    if (end == AttemptEnd::kAnswered) end = CheckBody(x);
    if (end != AttemptEnd::kAnswered) TakeRest(x);
    Settle(x, owed, end);
    x.Tell(end);
    if (end == AttemptEnd::kAnswered) {
      FinishGood(x, owed);
      return true;
    }
    if (FinishFailed(x, owed)) return false;
  }
}

}  // namespace vlt
