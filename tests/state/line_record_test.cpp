// SPDX-License-Identifier: GPL-3.0-or-later
// What the record makes of the attempts it is told: counts by station, answer times, the last frames.
#include "state/line_record.h"

#include <gtest/gtest.h>

#include <numeric>

#include "support/virtual_time.h"

namespace vlt::test {
namespace {

using Bytes = std::vector<std::uint8_t>;
using enum AttemptEnd;

const Bytes kRequest{0x01, 0x03, 0x00, 0xD0, 0x00, 0x01, 0x84, 0x33};
const Bytes kReply{0x01, 0x03, 0x02, 0x17, 0x9C, 0xB6, 0x1D};

class LineRecordTest : public testing::Test {
 protected:
  // An attempt that began now and took so long.
  void Attempt(int station, AttemptEnd end, std::int64_t took_ms, int number = 0, bool last = true,
               const Bytes& reply = kReply) {
    const std::int64_t sent = time.NowMs();
    time.Sleep(static_cast<int>(took_ms));
    Bytes request = kRequest;
    request[0] = static_cast<std::uint8_t>(station);
    Bytes signed_reply = reply;
    signed_reply[0] = request[0];
    record.Add({.station = station,
                .number = number,
                .sent_ms = sent,
                .ended_ms = time.NowMs(),
                .request = request,
                .reply = end == kSilence ? Bytes{} : signed_reply,
                .end = end,
                .last = last});
  }
  static std::int64_t AttemptsOf(const LineTotals& totals) {
    return std::accumulate(totals.ends.begin(), totals.ends.end(), std::int64_t{0});
  }

  VirtualTime time;
  LineRecord record{time};
};

TEST_F(LineRecordTest, CountsExchangesRepeatsAndFailuresByCauseAndStation) {
  record.Opened("9600,O,8,1");
  Attempt(1, kAnswered, 40);
  Attempt(1, kSilence, 100, 0, false);
  Attempt(1, kBadCheck, 50, 1, false);
  Attempt(1, kAnswered, 42, 2);
  time.Sleep(768);  // the line rests
  Attempt(7, kShort, 60, 0, false, {0x07});
  Attempt(7, kException, 40, 1, true, {0x07, 0x83, 0x02});

  EXPECT_EQ(record.Stations(), (std::vector<int>{1, 7}));
  const LineTotals& one = record.Of(1);
  EXPECT_EQ(one.exchanges, 2);
  EXPECT_EQ(one.repeats, 2);
  EXPECT_EQ(one.failed, 0);
  EXPECT_EQ(one.Ended(kAnswered), 2);
  EXPECT_EQ(one.Ended(kSilence), 1);
  EXPECT_EQ(one.Ended(kBadCheck), 1);
  EXPECT_EQ(one.sent_bytes, 4 * 8);
  EXPECT_EQ(one.received_bytes, 3 * 7);
  // 53 bytes of 11 bits at 9600 bits a second.
  EXPECT_NEAR(one.carried_ms, 53 * 11 / 9.6, 1e-9);
  const LineTotals& seven = record.Of(7);
  EXPECT_EQ(seven.exchanges, 1);
  EXPECT_EQ(seven.failed, 1);
  EXPECT_EQ(seven.Ended(kShort), 1);
  EXPECT_EQ(seven.Ended(kException), 1);
  EXPECT_EQ(seven.answers.Count(), 0) << "a refusal is no answer";

  const LineTotals all = record.All();
  EXPECT_EQ(all.exchanges, 3);
  EXPECT_EQ(all.Bytes(), one.Bytes() + seven.Bytes());
  EXPECT_EQ(record.SpanMs(), 40 + 100 + 50 + 42 + 768 + 60 + 40);
  // Each attempt that was not answered was repeated, or its exchange failed.
  for (const LineTotals* totals : {&one, &seven, &all}) {
    EXPECT_EQ(AttemptsOf(*totals) - totals->Ended(kAnswered), totals->repeats + totals->failed);
    EXPECT_EQ(AttemptsOf(*totals), totals->exchanges + totals->repeats);
  }
  EXPECT_EQ(record.Of(9).exchanges, 0);
}

TEST_F(LineRecordTest, AnswerTimesAreTheShortestThatTheShareDoesNotExceed) {
  AnswerTimes times;
  EXPECT_EQ(times.Percentile(50), -1);
  times.Add(30);
  EXPECT_EQ(times.Percentile(1), 30);
  EXPECT_EQ(times.Percentile(50), 30);
  EXPECT_EQ(times.Percentile(99), 30);
  for (int ms = 31; ms <= 129; ++ms) times.Add(ms);  // 30 to 129, one each
  EXPECT_EQ(times.Percentile(50), 79);
  EXPECT_EQ(times.Percentile(99), 128);
  EXPECT_EQ(times.Percentile(100), 129);
  times.Add(5'000'000);
  EXPECT_EQ(times.Percentile(100), AnswerTimes::kLongestMs);
  AnswerTimes fast;
  for (int i = 0; i < 1000; ++i) fast.Add(0);
  fast.Add(times);
  EXPECT_EQ(fast.Count(), 1101);
  EXPECT_EQ(fast.Percentile(50), 0);
  EXPECT_EQ(fast.Percentile(99), 119) << "1090 of 1101";
}

TEST_F(LineRecordTest, WhatTheAskerFindsInTheReplyCorrectsTheCount) {
  Attempt(2, kAnswered, 40);
  Attempt(2, kAnswered, 90);
  record.CorrectLast(kOtherStation);
  EXPECT_EQ(record.Of(2).failed, 1);
  EXPECT_EQ(record.Of(2).Ended(kAnswered), 1);
  EXPECT_EQ(record.Of(2).Ended(kOtherStation), 1);
  EXPECT_EQ(record.Of(2).answers.Percentile(100), 40) << "its time was another's";
  EXPECT_EQ(record.Frame(record.FrameCount() - 1).end, kOtherStation);
  Attempt(2, kAnswered, 60);
  record.CorrectLast(kOtherEcho);
  record.CorrectLast(kOtherEcho);
  EXPECT_EQ(record.Of(2).failed, 2) << "once";
  EXPECT_EQ(record.Of(2).answers.Percentile(100), 60) << "the meter did answer";
  EXPECT_EQ(record.LastEnd(), kOtherEcho);
  record.Reset();
  record.CorrectLast(kOtherStation);
  EXPECT_TRUE(record.Stations().empty()) << "it belongs to what was reset";
}

// Only who polls several stations looks at who has signed; the record always does.
TEST_F(LineRecordTest, AForeignReplyIsNamedAlsoWhereItIsTaken) {
  const auto add = [&](std::uint8_t asked, std::uint8_t signed_by) {
    const Bytes request{asked, 3, 0, 0xD0, 0, 1, 0, 0};
    const Bytes reply{signed_by, 3, 2, 0, 1, 0, 0};
    record.Add({.station = asked, .sent_ms = 0, .ended_ms = 30, .request = request, .reply = reply});
  };
  add(0, 5);
  EXPECT_EQ(record.Of(0).Ended(kAnswered), 1) << "whoever is there";
  add(1, 5);
  EXPECT_EQ(record.Of(1).Ended(kOtherStation), 1);
  EXPECT_EQ(record.Of(1).failed, 0);
  EXPECT_EQ(record.Of(1).answers.Count(), 0);
  EXPECT_EQ(record.LastEnd(), kAnswered) << "as it was told";
  record.CorrectLast(kOtherStation);
  EXPECT_EQ(record.Of(1).Ended(kOtherStation), 1);
  EXPECT_EQ(record.Of(1).failed, 1);
}

TEST_F(LineRecordTest, ResetCountsAnewAndKeepsTheFrames) {
  Attempt(3, kAnswered, 40);
  time.Sleep(5000);
  const std::int64_t before = record.Revision();
  record.Reset();
  EXPECT_GT(record.Revision(), before);
  EXPECT_EQ(record.All().exchanges, 0);
  EXPECT_EQ(record.SpanMs(), 0);
  EXPECT_EQ(DateTimeText(record.Since()), "2026/11/24 10:00:05");
  EXPECT_EQ(record.FrameCount(), 2u);
  Attempt(3, kAnswered, 70);
  EXPECT_EQ(record.SpanMs(), 70);
  EXPECT_EQ(record.Of(3).answers.Percentile(50), 70);
}

TEST_F(LineRecordTest, FramesTellWhenAndForWhat) {
  time.Sleep(500);
  Attempt(1, kAnswered, 35);
  Attempt(1, kSilence, 74, 1);
  ASSERT_EQ(record.FrameCount(), 4u);
  const LineFrame& request = record.Frame(0);
  EXPECT_EQ(request.way, FrameWay::kSent);
  EXPECT_EQ(PreciseTimeText(request.time), "2026/11/24 10:00:00.500");
  EXPECT_EQ(request.bytes, kRequest);
  const LineFrame& reply = record.Frame(1);
  EXPECT_EQ(reply.way, FrameWay::kReceived);
  EXPECT_EQ(PreciseTimeText(reply.time), "2026/11/24 10:00:00.535");
  EXPECT_EQ(reply.bytes, kReply);
  EXPECT_EQ(reply.took_ms, 35);
  EXPECT_TRUE(std::equal(reply.asked.begin(), reply.asked.end(), kRequest.begin()));
  const LineFrame& silence = record.Frame(3);
  EXPECT_EQ(silence.way, FrameWay::kNothing);
  EXPECT_EQ(silence.end, kSilence);
  EXPECT_EQ(silence.attempt, 1);
  EXPECT_EQ(silence.took_ms, 74);
  // The calendar counts back over a day, a month and a leap year.
  EXPECT_EQ(PreciseTimeText(MovedBy({.year = 2028, .month = 3, .day = 1, .millisecond = 4}, -5)),
            "2028/02/29 23:59:59.999");
}

TEST_F(LineRecordTest, TheRingKeepsTheLastFramesInOrder) {
  for (int i = 1; i <= 1003; ++i) {
    Attempt(1 + i % 31, kAnswered, 1, 0, true, {0, static_cast<std::uint8_t>(i % 251)});
    ASSERT_EQ(record.FrameCount(), std::min<std::size_t>(2u * static_cast<unsigned>(i), LineRecord::kFrames));
  }
  EXPECT_EQ(record.FramesEver(), 2006);
  for (std::size_t i = 0; i < LineRecord::kFrames; ++i) {
    const LineFrame& frame = record.Frame(i);
    ASSERT_EQ(frame.number, 1007 + static_cast<std::int64_t>(i));
    ASSERT_EQ(frame.way, i % 2 == 0 ? FrameWay::kSent : FrameWay::kReceived);
    if (frame.way == FrameWay::kReceived) {
      ASSERT_EQ(frame.bytes[1], frame.number / 2 % 251);
    }
  }
  EXPECT_THROW(static_cast<void>(LineRecord(time).Frame(0)), std::out_of_range);
}

TEST_F(LineRecordTest, TheLineCarriesAsManyBytesAsItsSettingsLeave) {
  const struct {
    const char* settings;
    int speed;
    int bits;
  } cases[] = {
      {"9600,O,8,1", 9600, 11}, {"19200,N,8,1", 19200, 10}, {"38400,E,8,2", 38400, 12}, {"fast", 38400, 12}};
  double carried = 0;
  for (const auto& c : cases) {
    record.Opened(c.settings);
    EXPECT_EQ(record.Speed(), c.speed);
    EXPECT_EQ(record.BitsPerByte(), c.bits);
    Attempt(1, kAnswered, 40);
    carried += 15.0 * c.bits * 1000 / c.speed;
    EXPECT_NEAR(record.All().carried_ms, carried, 1e-9) << "each byte at its own speed";
  }
}

}  // namespace
}  // namespace vlt::test
