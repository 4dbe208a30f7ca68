// SPDX-License-Identifier: GPL-3.0-or-later
// The exchange on a simulated meter: for every fault of the line and every mode the result, the text, the
// number of requests and the time from call to return. All on 9600 baud unless told: a request of 8 bytes is
// on its way for 9.2 ms, and the drain looks every 4 ms, so it ends at 12 ms.
#include <gtest/gtest.h>

#include "link/modbus.h"
#include "link/port.h"
#include "state/line_record.h"
#include "support/test_app.h"

namespace vlt {
namespace {

using test::TestApp;

constexpr const char* kGood = "";
constexpr const char* kNoResponse = "[NO RESPONSE ERROR]";
constexpr const char* kCrc = "[CRC ERROR]";

struct Outcome {
  bool result;
  std::string text;
  int requests;
  std::int64_t ms;
  bool operator==(const Outcome&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Outcome& o) {
  return out << (o.result ? "true " : "false ") << o.text << " " << o.requests << " requests, " << o.ms
             << " ms";
}

struct Setting {
  int mode = 0;
  int retry = 3;
  const char* speed = "9600";
  bool events = false;  // paced by what arrives
};

void Open(TestApp& t, const char* speed) {
  t.app.state.Speed = speed;
  t.app.state.CommSettings = std::string(speed) + ",O,8,1";
  ASSERT_TRUE(OpenPort(t.app));
}

// Unit system and language: two words, a reply of 9 bytes, whole after 24.5 ms.
Outcome ReadTwoWords(TestApp& t, const Setting& setting) {
  t.app.state.RetryNo = setting.retry;
  t.app.state.EventTiming = setting.events;
  Frame request = ReadRequest(1, 3, 0x0100, 2);
  Frame reply = ReplyFor(request);
  const std::int64_t start = t.Time().NowMs();
  const bool result = SendReceive(t.app, request, reply, setting.mode);
  return {result, t.app.state.LastErrorText, static_cast<int>(t.platform.TakeRequests().size()),
          t.Time().NowMs() - start};
}

Outcome Try(const Setting& setting, std::string_view fault) {
  TestApp t;
  Open(t, setting.speed);
  if (!fault.empty()) t.platform.Arm(fault);
  return ReadTwoWords(t, setting);
}

// By mode.
using FiveMs = std::array<std::int64_t, 5>;
constexpr FiveMs Ms(int a, int b, int c, int d, int e) { return {a, b, c, d, e}; }
constexpr FiveMs Each(int ms) { return Ms(ms, ms, ms, ms, ms); }
// Four attempts in the modes 0 and 2, one in the others.
constexpr FiveMs Repeated(int in0, int in2, int in3, int in4) { return Ms(4 * in0, in0, 4 * in2, in3, in4); }

struct FaultCase {
  const char* fault;
  const char* results;  // of the five modes: + is good
  const char* text;     // none where the first attempt is good
  const char* requests;
  FiveMs ms;
  FiveMs event_ms;  // in event timing, where the rest of the outcome is the same

  Outcome In(int mode, bool events) const {
    const bool good = results[mode] == '+';
    return {good, good && requests[mode] == '1' ? kGood : text, requests[mode] - '0',
            (events ? event_ms : ms)[static_cast<std::size_t>(mode)]};
  }
};

// Parts of the times, in ms. A wait of n lasts n + 1.
constexpr int kDrain = 12;
constexpr int kFirst = 25, kFirstLong = 481, kFirstStations = 155;
constexpr int kGap = 6;         // silence of 5 ms
constexpr int kAnyPoll = 6;     // for the first byte, up to 10 times, 0 and 2 in the modes 3 and 4
constexpr int kWholePoll = 11;  // for the whole reply, up to 11 times, 1 and 3 in the modes 3 and 4
constexpr int kRest = 201;      // behind a good exchange of mode 3

constexpr int kGood0 = kDrain + kFirst + kGap, kGood2 = kDrain + kFirstLong + kGap;
constexpr int kGood4 = kDrain + kFirstStations + kGap, kGood3 = kGood4 + kRest;
constexpr int kPart0 = kGood0 + 11 * kWholePoll, kPart2 = kGood2 + 11 * kWholePoll;
constexpr int kPart3 = kGood4 + kWholePoll, kPart4 = kGood4 + 3 * kWholePoll;
constexpr int kNone0 = kPart0 + 10 * kAnyPoll, kNone2 = kPart2 + 10 * kAnyPoll;
constexpr int kNone3 = kPart3, kNone4 = kPart4 + 2 * kAnyPoll;

// In event timing the request is out at 9.2 ms, the reply is whole at 24.5 and an exception at 19.9; the
// silence of 4 ms stands in front of the next request, and behind the last failure. The limits are the
// pattern's.
constexpr int kReply = 25, kSilence = 5;
constexpr int kFailed = kReply + kSilence;
constexpr int kRefused = 20 + kSilence;
constexpr int kOddEnd = 28 + kSilence;  // noise ahead: the line is silent when the reply is over
constexpr int kEmpty0 = kNone0 - kGap, kEmpty2 = kNone2 - kGap, kEmpty3 = kNone3 - kGap,
              kEmpty4 = kNone4 - kGap;
constexpr int kCut0 = kPart0 - kGap, kCut2 = kPart2 - kGap, kCut3 = kPart3 - kGap, kCut4 = kPart4 - kGap;

constexpr FiveMs kGoodMs = Ms(kGood0, kGood0, kGood2, kGood3, kGood4);

const FaultCase kFaultCases[] = {
    {"", "+++++", kGood, "11111", kGoodMs, Each(kReply)},
    {"silence*ever", "-----", kNoResponse, "41411", Repeated(kNone0, kNone2, kNone3, kNone4),
     Repeated(kEmpty0, kEmpty2, kEmpty3, kEmpty4)},
    // The late reply to the first request is there 324.5 ms after the start, in the second attempt's polls
    // for the whole reply (321 + 11); in mode 2 it is still in time.
    {"late=300", "+-+--", kNoResponse, "21111", Ms(332 + kGap, kNone0, kGood2, kNone3, kNone4),
     Ms(kReply + 300, kEmpty0, kReply + 300, kEmpty3, kEmpty4)},
    {"one-byte*ever", "-----", "[APPLICATION ERROR]", "41411", Repeated(kPart0, kPart2, kPart3, kPart4),
     Repeated(kCut0, kCut2, kCut3, kCut4)},
    {"short=3*ever", "-----", kCrc, "41411", Repeated(kPart0, kPart2, kPart3, kPart4),
     Repeated(kCut0, kCut2, kCut3, kCut4)},
    {"crc*ever", "-----", kCrc, "41411", Repeated(kGood0, kGood2, kGood4, kGood4),
     Repeated(kFailed, kFailed, kFailed, kFailed)},
    {"crc", "+-+--", kCrc, "21211", Ms(2 * kGood0, kGood0, 2 * kGood2, kGood4, kGood4),
     Ms(kFailed + kReply, kFailed, kFailed + kReply, kFailed, kFailed)},
    // The byte behind the function is the reply's byte count, 4, which is no known exception.
    {"function=17*ever", "-----", "[UNKNOWN FUNCTION CODE ERROR]", "41411",
     Repeated(kGood0, kGood2, kGood4, kGood4), Repeated(kFailed, kFailed, kFailed, kFailed)},
    // An exception is shorter than the reply that was asked for, so all polls pass.
    {"exception=2*ever", "-----", "[ADDRESS ERROR(02H)]", "41411", Repeated(kPart0, kPart2, kPart3, kPart4),
     Repeated(kRefused, kRefused, kRefused, kRefused)},
    {"station", "+++++", kGood, "11111", kGoodMs, Each(kReply)},
    {"noise=3*ever", "-----", "[UNKNOWN FUNCTION CODE ERROR]", "41411",
     Repeated(kGood0, kGood2, kGood4, kGood4), Repeated(kOddEnd, kOddEnd, kOddEnd, kOddEnd)},
    {"extra=3", "+++++", kGood, "11111", kGoodMs, Each(kReply)},
    // The ninth byte is there after 69.5 ms: three polls.
    {"trickle=5", "+++++", kGood, "11111",
     Ms(kGood0 + 3 * kWholePoll, kGood0 + 3 * kWholePoll, kGood2, kGood3, kGood4), Each(kReply + 45)},
    // The first look behind the first wait finds the port gone, and no wait follows.
    {"unplug=3", "-----", "[RECEIVE ERROR(5)]", "11111",
     Ms(kDrain + kFirst, kDrain + kFirst, kDrain + kFirstLong, kDrain + kFirstStations,
        kDrain + kFirstStations),
     Each(18)},
};

TEST(Exchange, EveryFaultEndsAsItsModePaces) {
  for (const FaultCase& c : kFaultCases) {
    for (int mode = 0; mode < 5; ++mode) {
      for (const bool events : {false, true}) {
        EXPECT_EQ(Try({.mode = mode, .events = events}, c.fault), c.In(mode, events))
            << c.fault << " in mode " << mode << (events ? ", by events" : "");
      }
    }
  }
}

TEST(Exchange, TheRecordKnowsHowItEnded) {
  using enum AttemptEnd;
  for (const auto& [fault, end] : {std::pair{"exception=2", kException},
                                   {"function=17", kWrongFunction},
                                   {"crc", kBadCheck},
                                   {"short=3", kShort},
                                   {"silence", kSilence}}) {
    for (const bool events : {false, true}) {
      TestApp t;
      Open(t, "9600");
      t.platform.Arm(fault);
      ReadTwoWords(t, {.retry = 0, .events = events});
      EXPECT_EQ(t.app.line->All().Ended(end), 1) << fault << events;
    }
  }
}

TEST(Exchange, PacesByTheSpeedOfTheLine) {
  const struct {
    Setting setting;
    const char* fault;
    Outcome outcome;
  } cases[] = {
      {{.speed = "19200"}, "", {true, kGood, 1, 8 + 25 + 4}},
      {{.speed = "38400"}, "", {true, kGood, 1, 4 + 25 + 3}},
      {{.mode = 2, .speed = "19200"}, "", {true, kGood, 1, 8 + 25 + 4}},
      {{.mode = 3, .speed = "38400"}, "", {true, kGood, 1, 4 + 155 + 3 + 201}},
      {{.speed = "38400"}, "silence*ever", {false, kNoResponse, 4, 4 * (4 + 25 + 60 + 121 + 3)}},
      {{.mode = 7}, "", {true, kGood, 1, kGood0}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Try(c.setting, c.fault), c.outcome) << c.setting.speed << " in mode " << c.setting.mode;
  }
}

TEST(Exchange, RetryNoLimitsTheCounterNotTheAttempts) {
  const struct {
    int retry;
    int attempts[5];
  } cases[] = {{0, {1, 1, 1, 1, 1}}, {3, {4, 1, 4, 1, 1}}, {4, {5, 1, 5, 1, 1}}, {5, {6, 1, 6, 2, 2}}};
  constexpr int kNone[] = {kNone0, kNone0, kNone2, kNone3, kNone4};
  for (const auto& c : cases) {
    for (int mode = 0; mode < 5; ++mode) {
      const int attempts = c.attempts[mode];
      EXPECT_EQ(Try({.mode = mode, .retry = c.retry}, "silence*ever"),
                (Outcome{false, kNoResponse, attempts, attempts * kNone[mode]}))
          << c.retry << " retries in mode " << mode;
    }
  }
  // The rest behind a good exchange of mode 3 is for the first attempt only.
  EXPECT_EQ(Try({.mode = 3, .retry = 5}, "silence"), (Outcome{true, kNoResponse, 2, kNone3 + kGood4}));
}

}  // namespace
}  // namespace vlt
