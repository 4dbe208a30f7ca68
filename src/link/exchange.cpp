// SPDX-License-Identifier: GPL-3.0-or-later
#include "link/exchange.h"

#include <algorithm>
#include <iterator>

#include "link/wait.h"

namespace vlt {
namespace {

constexpr int kStationsRestMs = 200;  // behind a good exchange with one of several stations
constexpr int kOwnStart = -1;         // the attempt counter starts at RetryNo

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

void SendFrame(Exchange& x) {
  x.GiveWay();
  x.Send();
  while (x.Port().BytesOut() > 0) {
    x.GiveWay();
    WaitMs(x.app, kDrainPollMs);
  }
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
    x.app.state.LastErrorText = kNoResponse;
    return AttemptEnd::kSilence;
  }
  if (x.Port().BytesIn() < static_cast<int>(kHeadBytes)) return AttemptEnd::kShort;
  for (std::size_t i = 0; i < kHeadBytes; ++i) x.rx[i] = x.Take();
  if (x.rx[1] == x.tx[1]) return AttemptEnd::kAnswered;
  int code = 0;
  if (x.Port().BytesIn() > 0) code = x.rx[2] = x.Take();
  x.app.state.LastErrorText = ExceptionText(code);
  return EndOfOtherFunction(x.tx[1], x.rx[1]);
}

// Takes the rest when all of it is there, and judges what rx holds then.
AttemptEnd CheckBody(Exchange& x) {
  const auto body = x.rx.subspan(kHeadBytes);
  const bool whole = x.Port().BytesIn() >= static_cast<int>(body.size());
  if (whole) std::generate(body.begin(), body.end(), [&] { return x.Take(); });
  if (IsCheckGood(x.rx)) return AttemptEnd::kAnswered;
  x.app.state.LastErrorText = kCheckError;
  return whole ? AttemptEnd::kBadCheck : AttemptEnd::kShort;
}

// For the record alone what a failed reply left in the port, which the next attempt would throw away.
void TakeRest(Exchange& x) {
  try {
    while (x.Port().BytesIn() > 0) x.Take();
  } catch (const PortFault&) {
    // The next step of the exchange meets it too.
  }
}

void FinishGood(Exchange& x) {
  WaitMs(x.app, x.app.state.CharGapMs);
  x.Port().DiscardInput();
  if (x.mode == kModeStations && x.count == PatternOf(x.mode).first_count) WaitMs(x.app, kStationsRestMs);
}

// True when no attempt is left.
bool FinishFailed(Exchange& x) {
  ++x.count;
  ++x.attempt;
  WaitMs(x.app, x.app.state.CharGapMs);
  if (x.count <= x.app.state.RetryNo) return false;
  x.Port().DiscardInput();
  if (x.app.state.LastErrorText.empty()) x.app.state.LastErrorText = kApplicationError;
  return true;
}

}  // namespace

void Exchange::Send() {
  arrived.clear();
  told = false;
  sent_ms = app.platform.clock.NowMs();
  Port().DiscardInput();
  Port().DiscardOutput();
  Port().Write(tx);
}

std::uint8_t Exchange::Take() {
  arrived.push_back(Port().TakeByte());
  return arrived.back();
}

void Exchange::Tell(AttemptEnd end) {
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

Exchange PrepareExchange(App& app, std::span<std::uint8_t> tx, std::span<std::uint8_t> rx, int mode) {
  app.state.LastErrorText.clear();
  const int count = static_cast<int>(tx.size()) - 2;
  CalcCrc(tx, count, tx[tx.size() - 1], tx[tx.size() - 2]);
  const Pattern& pattern = PatternOf(mode);
  return {.app = app,
          .tx = tx,
          .rx = rx,
          .mode = mode,
          .first_wait_ms = app.state.Speed == "9600" ? pattern.slow_wait_ms : pattern.first_wait_ms,
          .poll_limit = pattern.poll_limit,
          .count = pattern.first_count == kOwnStart ? app.state.RetryNo : pattern.first_count,
          .sent_ms = app.platform.clock.NowMs()};
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
  for (;;) {
    SendFrame(x);
    AwaitReply(x);
    AttemptEnd end = CheckHead(x);
    if (end == AttemptEnd::kAnswered) end = CheckBody(x);
    if (end != AttemptEnd::kAnswered) TakeRest(x);
    x.Tell(end);
    if (end == AttemptEnd::kAnswered) {
      FinishGood(x);
      return true;
    }
    if (FinishFailed(x)) return false;
  }
}

}  // namespace vlt
