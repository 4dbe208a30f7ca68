// SPDX-License-Identifier: GPL-3.0-or-later
// Event timing: which bytes are taken when, and whose reply is whose. On 9600 baud a request is out after 9.2
// ms and a reply of one word whole after 22.2 ms. The pattern's limit with nothing received is 218 ms in the
// ordinary mode and for the store register, 178 ms for stations.
#include <gtest/gtest.h>

#include "bench/soak/late_soak.h"
#include "link/owed_replies.h"
#include "link/port.h"
#include "link/registers.h"
#include "state/line_record.h"
#include "support/test_app.h"
#include "values/codecs.h"

namespace vlt {
namespace {

using test::TestApp;

constexpr int kOne = 0x0040;
constexpr int kOther = 0x04B4;
constexpr std::int64_t kWord = 23;  // a reply of one word
constexpr std::int64_t kPatience = 1000;

struct Events : TestApp {
  explicit Events(test::PortKind port = test::PortKind::kSimulated) : TestApp({.port = port}) {
    app.state.EventTiming = true;
    EXPECT_TRUE(OpenPort(app));
    if (port != test::PortKind::kSimulated) return;
    for (const int address : {kOne, kOther, kOther + 2}) platform.Meter().holding().PutWord(address, address);
    platform.line.AddStation(2, {}).holding().PutWord(kOne, 2);
  }
  // The words at an address, -1 without a reply; with `mode` kModeStore in one attempt.
  int Read(int address, int count = 1, SendMode mode = kModeOrdinary, int station = 1) {
    const std::int64_t start = Time().NowMs();
    RegisterData data;
    const bool good = ReadRegisters(app, {station, mode}, {.address = address, .count = count}, data).ok;
    took_ms = Time().NowMs() - start;
    return good ? BytesToUInt16(data[data.size() - 2], data[data.size() - 1]) : -1;
  }
  // One attempt that gets no answer in time, and one so much later.
  void Miss(int address, int late_ms, int count = 1, SendMode mode = kModeStore) {
    platform.Arm("late=" + std::to_string(late_ms));
    EXPECT_EQ(Read(address, count, mode), -1);
    platform.TakeRequests();
  }

  std::int64_t took_ms = 0;
};

TEST(EventTiming, ARequestLeavesWhenTheLineHasBeenSilent) {
  for (const auto& [speed, gap_ms] : {std::pair{"9600", 5}, {"19200", 3}, {"38400", 2}}) {
    TestApp t({.port = test::PortKind::kScripted});
    t.app.state.EventTiming = true;
    t.app.state.CommSettings = std::string(speed) + ",O,8,1";
    ASSERT_TRUE(OpenPort(t.app));
    t.platform.scripted.drain_ms = 2;
    for (int i = 0; i < 2; ++i) t.platform.scripted.ReplyChecked("01 03 02 00 05", 20);
    Frame request = ReadRequest(1, 3, kOne, 1);
    Frame reply(7);
    for (int i = 0; i < 2; ++i) EXPECT_TRUE(SendReceive(t.app, request, reply));
    EXPECT_EQ(t.platform.scripted.write_times_ms, (std::vector<std::int64_t>{0, 22 + gap_ms})) << speed;
    EXPECT_EQ(t.Time().NowMs(), 2 * 22 + gap_ms) << "no rest behind the last one";
  }
}

// To the millisecond what the pattern takes and what it leaves.
TEST(EventTiming, ItsLimitsAreThoseOfThePattern) {
  const struct {
    int mode;
    int arrives_ms;
    bool taken;
  } cases[] = {{0, 206, true}, {0, 207, false}, {2, 662, true}, {2, 663, false},
               {3, 166, true}, {3, 167, false}, {4, 200, true}, {4, 201, false}};
  for (const auto& c : cases) {
    for (const bool events : {false, true}) {
      TestApp t({.port = test::PortKind::kScripted});
      t.app.state.EventTiming = events;
      t.app.state.RetryNo = 0;
      ASSERT_TRUE(OpenPort(t.app));
      t.platform.scripted.ReplyChecked("01 03 02 00 05", c.arrives_ms);
      Frame request = ReadRequest(1, 3, kOne, 1);
      Frame reply(7);
      EXPECT_EQ(SendReceive(t.app, request, reply, c.mode), c.taken) << c.mode << " " << c.arrives_ms;
    }
  }
  // A first byte at 31 ms is seen at the pattern's look at 31, one at 32 at that of 37; 121 ms are left then.
  for (const auto& [first_ms, limit_ms] : {std::pair{10, 146}, {31, 152}, {32, 158}, {90, 206}}) {
    TestApp t({.port = test::PortKind::kScripted});
    t.app.state.EventTiming = true;
    t.app.state.RetryNo = 0;
    ASSERT_TRUE(OpenPort(t.app));
    t.platform.scripted.Reply("01 03", first_ms);
    Frame request = ReadRequest(1, 3, kOne, 1);
    Frame reply(7);
    EXPECT_FALSE(SendReceive(t.app, request, reply));
    EXPECT_EQ(t.Time().NowMs(), limit_ms) << first_ms;
  }
}

TEST(EventTiming, AReplyCutShortIsNeverCompletedFromTheBuffer) {
  Events t(test::PortKind::kScripted);
  t.app.state.RetryNo = 0;
  Frame request = ReadRequest(1, 3, kOne, 1);
  Frame reply = test::FromHex("01 03 02 00 07 F9 86");
  t.platform.scripted.Reply("01 03 02 00");
  EXPECT_FALSE(SendReceive(t.app, request, reply));
  EXPECT_EQ(t.app.state.LastErrorText, "[CRC ERROR]");
}

TEST(EventTiming, NoiseThatLooksLikeAnExceptionDoesNotEndTheAttempt) {
  Events t(test::PortKind::kScripted);
  t.app.state.RetryNo = 0;
  Frame request = ReadRequest(1, 3, kOne, 2);
  Frame reply(9);
  t.platform.scripted.Reply("01 83 02 FF FF");
  EXPECT_FALSE(SendReceive(t.app, request, reply));
  EXPECT_EQ(t.app.state.LastErrorText, "[ADDRESS ERROR(02H)]");
  EXPECT_EQ(t.Time().NowMs(), 146) << "its check is wrong, so that more may come";
}

// A read's reply repeats station, function and length, a write's station, function and address.
TEST(EventTiming, RequestsWhoseRepliesLookAlike) {
  const struct {
    const char *one, *other;
    bool alike;
  } rows[] = {
      {"01 03 00 08 00 04", "01 03 13 90 00 04", true},  {"01 03 00 08 00 04", "01 03 00 08 00 02", false},
      {"01 04 00 00 00 13", "01 04 13 88 00 13", true},  {"01 04 00 00 00 13", "01 04 00 00 00 1C", false},
      {"01 03 00 08 00 04", "02 03 00 08 00 04", false}, {"01 03 00 08 00 04", "01 04 00 08 00 04", false},
      {"01 06 00 D6 00 01", "01 06 00 D6 00 02", true},  {"01 06 00 D6 00 01", "01 06 00 DE 00 01", false},
      {"01 06 00 D6 00 01", "01 06 14 D6 00 01", false}};
  for (const auto& row : rows) {
    const auto one = test::FromHex(row.one), other = test::FromHex(row.other);
    EXPECT_EQ(LookAlike(one, other), row.alike) << row.one << " and " << row.other;
  }
}

TEST(EventTiming, ALateReplyThatLooksAlikeIsAwaited) {
  Events t;
  t.Miss(kOne, 500);
  EXPECT_EQ(t.Read(kOther), kOther);
  // The late one is over at 522.2 ms, the silence at 527.
  EXPECT_EQ(t.Time().NowMs(), 523 + 5 + kWord);
  EXPECT_EQ(t.Read(kOne), kOne);
  EXPECT_EQ(t.took_ms, 5 + kWord) << "and everything is paid";

  t.platform.Arm("silence");
  EXPECT_EQ(t.Read(kOne, 1, kModeStore), -1);
  EXPECT_EQ(t.Read(kOther), kOther);
  EXPECT_EQ(t.took_ms, kPatience + kWord) << "what never comes is awaited to the end";
}

TEST(EventTiming, OneThatLooksDifferentIsDroppedWhenItComes) {
  const struct {
    int count;
    int station;
  } cases[] = {{2, 1}, {1, 2}};
  for (const auto& c : cases) {
    Events t;
    t.Miss(kOne, 220);  // it begins when the next request is out
    t.platform.Arm("late=100");
    EXPECT_EQ(t.Read(c.station == 1 ? kOther : kOne, c.count, kModeOrdinary, c.station),
              c.station == 1 ? kOther + 2 : 2);
    EXPECT_LT(t.took_ms, 150);
    EXPECT_EQ(t.platform.TakeRequests().size(), 1u) << "in one attempt";
    EXPECT_EQ(t.app.state.LastErrorText, "");
    EXPECT_EQ(t.Read(kOther), kOther);
    EXPECT_EQ(t.took_ms, 5 + kWord);
  }
  // A reply to a later request shows that the earlier one got lost.
  Events t;
  t.platform.Arm("silence");
  EXPECT_EQ(t.Read(kOne, 1, kModeStore), -1);
  EXPECT_EQ(t.Read(kOther, 2), kOther + 2);
  EXPECT_EQ(t.Read(kOther), kOther);
  EXPECT_EQ(t.took_ms, 5 + kWord);
}

TEST(EventTiming, ALateEchoProvesNoOtherWrite) {
  Events t;
  const Target once{.station = 1, .mode = kModeStore};
  t.platform.Arm("late=240/06");
  EXPECT_EQ(WriteRegister(t.app, once, kOne, 3).result, WriteResult::kNoReply);
  t.platform.Arm("ignore-write");
  EXPECT_EQ(WriteRegister(t.app, once, kOther, 1).result, WriteResult::kProven) << "the meter says so";
  t.platform.Arm("late=300/06");
  EXPECT_EQ(WriteRegister(t.app, once, kOne, 2).result, WriteResult::kNoReply);
  t.platform.Arm("silence");
  EXPECT_EQ(WriteRegister(t.app, once, kOne, 2).result, WriteResult::kNoReply)
      << "the echo was the first one's";
}

TEST(EventTiming, ALateRefusalIsHeldUntilTheReplyHasHadItsTime) {
  Events t;
  t.platform.Arm("exception=2");
  t.platform.line.config().turnaround = 240'000;
  EXPECT_EQ(t.Read(kOne, 1, kModeStore), -1);
  t.platform.line.config().turnaround = 100'000;
  EXPECT_EQ(t.Read(kOther, 2, kModeStore), kOther + 2);
  EXPECT_EQ(t.app.state.LastErrorText, "");
  // With nothing behind it, it counts as ours.
  t.platform.Arm("silence");
  EXPECT_EQ(t.Read(kOne, 1, kModeStore), -1);
  t.platform.Arm("exception=3");
  EXPECT_EQ(t.Read(kOther, 2, kModeStore), -1);
  EXPECT_EQ(t.app.state.LastErrorText, "[REGISTER COUNT ERROR(03H)]");
}

TEST(EventTiming, RepeatsOfOneQuestionShareTheirReplies) {
  Events t;
  t.platform.Arm("late=300");
  EXPECT_EQ(t.Read(kOne), kOne);
  EXPECT_EQ(t.took_ms, kWord + 300);
  EXPECT_EQ(t.platform.TakeRequests().size(), 2u);
  // The reply to the repeat comes right behind, and answers nobody.
  EXPECT_EQ(t.Read(kOther), kOther);
  EXPECT_LT(t.took_ms, 50);
}

TEST(EventTiming, ASlowLineIsGivenMoreTime) {
  Events t;
  t.Miss(kOne, 1100);
  EXPECT_EQ(t.app.pace->patience_us, kPatience * 1000);
  EXPECT_EQ(t.Read(kOther), kOther);
  EXPECT_GT(t.app.pace->patience_us, 1'800'000);
  t.Miss(kOne, 1900);
  EXPECT_EQ(t.Read(kOther), kOther);
  ASSERT_TRUE(OpenPort(t.app));
  bool done = false;
  ClosePort(t.app, done);
  ASSERT_TRUE(OpenPort(t.app));
  EXPECT_EQ(t.app.pace->patience_us, kPatience * 1000);
}

TEST(EventTiming, TheRestBehindAStationIsItsSilence) {
  Events t;
  t.app.platform.port.DiscardInput();
  for (int i = 0; i < 2; ++i) EXPECT_EQ(t.Read(kOne, 1, kModeStations, 2), 2);
  EXPECT_EQ(t.Time().NowMs(), 2 * kWord + 5);
}

TEST(EventTiming, ALineThatIsNeverSilentIsWaitedForOnlySoLong) {
  Events t(test::PortKind::kScripted);
  t.app.state.RetryNo = 0;
  std::string babble;
  for (int i = 0; i < 1500; ++i) babble += "55 ";
  t.platform.scripted.Reply(babble, 0, 3);
  Frame request = ReadRequest(1, 3, kOne, 1);
  Frame reply(7);
  for (int i = 0; i < 2; ++i) EXPECT_FALSE(SendReceive(t.app, request, reply));
  EXPECT_EQ(t.platform.scripted.writes.size(), 2u);
  EXPECT_EQ(t.app.state.LastErrorText, "[UNKNOWN FUNCTION CODE ERROR]");
}

// --- both timings

TEST(LateReplies, AreNeverTakenForAnother) {
  for (const bool events : {false, true}) {
    const auto result = test::SoakLateReplies({.exchanges = 10'000, .seed = 1, .events = events});
    EXPECT_EQ(result.wrong, 0) << events;
    EXPECT_EQ(result.unproven, 0) << events;
    EXPECT_GT(result.good, 6'000) << events;
    EXPECT_GT(result.late, 2'000) << events;
  }
}

TEST(LateReplies, ThePatternWaitsForOneThatLooksAlikeAndForNoOther) {
  Events t;
  t.app.state.EventTiming = false;
  t.platform.Arm("silence");
  EXPECT_EQ(t.Read(kOne, 1, kModeStore), -1);
  EXPECT_EQ(t.Read(kOther, 2), kOther + 2);
  EXPECT_EQ(t.took_ms, 43) << "as ever: 12 ms until it is sent, 25 and 6 behind it";
  t.Miss(kOne, 500);
  const std::int64_t sent_ms = t.Time().NowMs() - 224;
  EXPECT_EQ(t.Read(kOther), kOther);
  EXPECT_EQ(t.Time().NowMs() - sent_ms, 523 + 6 + 43) << "behind the late one, and one silence";
  EXPECT_EQ(t.Read(kOne), kOne);
  EXPECT_EQ(t.took_ms, 43) << "and everything is paid";
  t.platform.Arm("silence");
  EXPECT_EQ(t.Read(kOne, 1, kModeStore), -1);
  EXPECT_EQ(t.Read(kOther), kOther);
  EXPECT_EQ(t.took_ms, kPatience + 43) << "what never comes is awaited to the end";
}

// Some reply was lost, so that the pattern looks at what it throws away. The last byte of the cut reply comes
// 156 ms behind its request: the last look was at 146, and the next request is out.
TEST(LateReplies, TheRestOfACutReplyPaysForNoOther) {
  Events t(test::PortKind::kScripted);
  t.app.state.EventTiming = false;
  t.app.state.RetryNo = 0;
  t.platform.scripted.Reply("");
  t.platform.scripted.ReplyChecked("01 03 04 00 00 00 01");
  EXPECT_EQ(t.Read(kOne), -1);
  EXPECT_EQ(t.Read(kOther, 2), 1);
  t.platform.scripted.Reply("01 03 02 00 05 78 47", 0, 26);
  t.platform.scripted.ReplyChecked("01 03 02 00 06", 300);
  t.platform.scripted.ReplyChecked("01 03 02 00 07", 10);
  EXPECT_EQ(t.Read(kOne), -1);
  EXPECT_EQ(t.Read(kOne), -1);
  EXPECT_EQ(t.Read(kOther), 7);
}

TEST(LateReplies, ThePatternWaitsForTheEchoOfAWriteWhereverItWent) {
  Events t;
  t.app.state.EventTiming = false;
  const Target once{.station = 1, .mode = kModeStore};
  t.platform.Arm("late=300/06");
  EXPECT_EQ(WriteRegister(t.app, once, kOne, 1).result, WriteResult::kNoReply);
  t.platform.Arm("silence");
  EXPECT_EQ(WriteRegister(t.app, once, kOther, 1).result, WriteResult::kNoReply)
      << "the echo was the first one's";
}

struct Proof {
  const char* what;
  std::vector<const char*> replies;
  bool was_clean;
  int value;  // -1: none
  std::size_t requests;
};

TEST(ProvenRead, TakesAValueBehindAFailureWhenReadingsAgree) {
  constexpr const char* kBad = "01 03 02 00 05 00 00";
  const Proof rows[] = {
      {"a clean reading", {"05"}, true, 5, 1},
      {"something ahead has failed", {"05", "05"}, false, 5, 2},
      {"a failed attempt", {kBad, "05", "05"}, true, 5, 3},
      {"others between", {kBad, "05", "06", "06"}, true, 6, 4},
      {"signed by another", {"02 03 02 00 07", "05", "05"}, true, 5, 3},
      {"never twice the same", {kBad, "05", "06", "05", "06", "05", "06"}, true, -1, 7},
  };
  for (const Proof& row : rows) {
    for (const bool events : {false, true}) {
      Events t(test::PortKind::kScripted);
      t.app.state.EventTiming = events;
      for (const std::string reply : row.replies) {
        if (reply == kBad) {
          t.platform.scripted.Reply(reply);
        } else {
          t.platform.scripted.ReplyChecked(reply.size() == 2 ? "01 03 02 00 " + reply : reply);
        }
      }
      RegisterData data;
      const bool good = ReadRegistersProven(t.app, {.address = kOne, .count = 1}, data, row.was_clean).ok;
      EXPECT_EQ(good ? BytesToUInt16(data, 0) : -1, row.value) << row.what << events;
      EXPECT_EQ(t.platform.scripted.writes.size(), row.requests) << row.what << events;
      EXPECT_EQ(t.app.state.LastErrorText == "Its readings differ from each other", !good) << row.what;
    }
  }
}

}  // namespace
}  // namespace vlt
