// SPDX-License-Identifier: GPL-3.0-or-later
// Faults of the line while waves are captured: what each costs, in requests and in milliseconds.
#include <algorithm>
#include <map>

#include "transit_fixture.h"

namespace vlt::test {
namespace {

// An answer of the meter; requests behind the last one meet silence.
struct Answer {
  std::string hex;
  int times = 1;
  bool checked = true;  // the frame check is put behind it
  int after_ms = 0;
  int each_ms = 0;
};

const Answer kMethod{"01 03 02 00 00"};
const Answer kHead{"01 04 10 07 D0 0B B8 09 C4 EC 78 00 01 86 A0 00 01 11 70"};
const Answer kAccepted{"01 06 01 68 00 0A"};
const Answer kReady{"01 03 02 00 14"};
const Answer kBusy{"01 03 02 00 01"};
const Answer kFailed{"01 03 02 00 00"};
const Answer kEnded{"01 06 01 68 00 00"};
const Answer kSilence{"", 1, false};

Answer Times(Answer answer, int times) {
  answer.times = times;
  return answer;
}

Answer Block() {
  std::string hex = "01 04 80";
  for (int byte = 0; byte < 128; ++byte) hex += " 00";
  return {hex};
}

// Requests as letters: method, head, command, poll, first and second block, end of the capture mode.
std::string Letters(const std::vector<std::string>& writes) {
  static const std::map<std::string, char> kLetters = {{"01 03 01 14 00 01", 'M'}, {"01 04 00 70 00 08", 'H'},
                                                       {"01 06 01 68 00 01", 'C'}, {"01 03 01 68 00 01", 'P'},
                                                       {"01 04 00 C0 00 40", '1'}, {"01 04 01 40 00 40", '2'},
                                                       {"01 06 01 68 00 00", 'E'}};
  std::string letters;
  for (const std::string& write : writes) {
    const auto letter = kLetters.find(write.substr(0, write.size() - 6));
    letters += letter == kLetters.end() ? '?' : letter->second;
  }
  return letters;
}

class FaultyCapture : public TransitTest {
 public:
  // At 9600 baud, the wave that needs the scale head, three retries.
  // What the page asked when it was opened nobody answered, and no answer is awaited any more.
  FaultyCapture() : TransitTest({.port = PortKind::kScripted}) {
    time().RunFor(2'000);
    Line().writes.clear();
  }
  ScriptedLine& Line() { return test.platform.scripted; }

  void Lay(const std::vector<Answer>& answers) {
    for (const Answer& answer : answers) {
      for (int n = 0; n < answer.times; ++n) {
        if (answer.checked) Line().ReplyChecked(answer.hex, answer.after_ms, answer.each_ms);
        if (!answer.checked) Line().Reply(answer.hex, answer.after_ms, answer.each_ms);
      }
    }
  }
  // Milliseconds from Start to the end of the run.
  std::int64_t Run() {
    const std::int64_t start = time().NowMs();
    EXPECT_TRUE(waves().ProfileStartButton.Press());
    return time().NowMs() - start;
  }
  void ExpectGivenBack() {
    EXPECT_FALSE(app().state.UiLocked);
    EXPECT_EQ(app().state.PvRunning, 0);
    EXPECT_TRUE(waves().ProfileStartButton.Enabled());
    EXPECT_FALSE(waves().ProfileStopButton.Enabled());
  }
};

// Each wait lasts a millisecond more than it says, and a silent interval of 5 ms ends each attempt.
constexpr int kFirst = 24 + 1;          // before the line is looked at
constexpr int kLongFirst = 480 + 1;     // the same for a block
constexpr int kNothing = 10 * (5 + 1);  // until something has come, in vain
constexpr int kRest = 11 * (10 + 1);    // until all has come, in vain
constexpr int kGap = 5 + 1;
constexpr int kPause = 50 + 1;  // before each poll

constexpr int kGood = kFirst + kGap;  // all is there at the first look, good or bad
constexpr int kGoodBlock = kLongFirst + kGap;
constexpr int kSilent = kFirst + kNothing + kRest + kGap;
constexpr int kSilentBlock = kLongFirst + kNothing + kRest + kGap;
constexpr int kPartly = kFirst + kRest + kGap;  // something is there, and never all of it
constexpr int kToPoll = 3 * kGood + kPause;     // method, head, command, and the pause before the first poll

struct FaultRow {
  const char* fault;
  std::vector<Answer> answers;
  std::int64_t ms;
  std::string requests;
  const char* why;
};

std::vector<FaultRow> HeadAndCommandRows() {
  return {
      {"no scale head", {kMethod}, kGood + 4 * kSilent, "MHHHH", "[NO RESPONSE ERROR]"},
      {"a short head", {kMethod, {"01 04 10 07 D0", 4, false}}, kGood + 4 * kPartly, "MHHHH", "[CRC ERROR]"},
      {"a lone byte", {kMethod, {"01", 4, false}}, kGood + 4 * kPartly, "MHHHH", "[APPLICATION ERROR]"},
      {"the head of another function",
       {kMethod, {"01 03 10 07 D0 0B B8 09 C4 EC 78 00 01 86 A0 00 01 11 70", 4}},
       kGood + 4 * kGood,
       "MHHHH",
       "[UNKNOWN FUNCTION CODE ERROR]"},
      {"an exception to the command",
       {kMethod, kHead, {"01 86 02", 4}},
       2 * kGood + 4 * kPartly,
       "MHCCCC",
       "[ADDRESS ERROR(02H)]"},
      {"the command refused",
       {kMethod, kHead, {"01 06 01 68 00 01"}},
       3 * kGood,
       "MHC",
       "[NO RESPONSE ERROR]"},
      // Eight bytes 20 ms apart: the last one comes at 140 ms, and the last look is at 25 + 11 * 11 = 146 ms.
      {"a trickle that is just in time",
       {kMethod, kHead, {kAccepted.hex, 1, true, 0, 20}, kFailed},
       2 * kGood + kPartly + kPause + kGood,
       "MHCP",
       "[NO RESPONSE ERROR]"},
      // 21 ms apart it comes at 147 ms, and is discarded with what came before.
      {"a trickle that is a millisecond late",
       {kMethod, kHead, {kAccepted.hex, 4, true, 0, 21}},
       2 * kGood + 4 * kPartly,
       "MHCCCC",
       "[CRC ERROR]"},
      // The answer of the first attempt comes 250 - 212 = 38 ms into the second, which sees it at its third
      // poll.
      {"an answer that the next attempt takes",
       {kMethod, kHead, {kAccepted.hex, 1, true, 250}, kSilence, kFailed},
       2 * kGood + kSilent + (kFirst + 3 * (5 + 1) + kGap) + kPause + kGood,
       "MHCCP",
       "[NO RESPONSE ERROR]"},
  };
}

std::vector<FaultRow> PollRows() {
  return {
      {"a poll with a wrong check",
       {kMethod, kHead, kAccepted, {"01 03 02 00 14 00 00", 4, false}, kEnded},
       kToPoll + 4 * kGood + kGood,
       "MHCPPPPE",
       "[CRC ERROR]"},
      {"noise before the answer of a poll",
       {kMethod, kHead, kAccepted, {"FF 01 03 02 00 14", 4}, kEnded},
       kToPoll + 4 * kGood + kGood,
       "MHCPPPPE",
       "[REGISTER COUNT ERROR(03H)]"},
      {"the meter fails",
       {kMethod, kHead, kAccepted, kBusy, kFailed},
       kToPoll + kGood + kPause + kGood,
       "MHCPP",
       "[NO RESPONSE ERROR]"},
      {"the meter is never ready",
       {kMethod, kHead, kAccepted, Times(kBusy, 200), kEnded},
       3 * kGood + 200 * (kPause + kGood) + kGood,
       "MHC" + std::string(200, 'P') + "E",
       "[NO RESPONSE ERROR]"},
      {"an exception to the end as well",
       {kMethod, kHead, kAccepted, {"01 83 01", 8}},
       kToPoll + 4 * kPartly + 4 * kPartly,
       "MHCPPPPEEEE",
       "[FUNCTON CODE ERROR(01H)]"},
  };
}

// A block that is lost ends the capture mode and begins anew; the head of the next capture meets silence.
std::vector<FaultRow> BlockRows() {
  const std::int64_t to_block = kToPoll + kGood;
  return {
      {"a silent block",
       {kMethod, kHead, kAccepted, kReady, Block(), Times(kSilence, 4), kEnded},
       to_block + kGoodBlock + 4 * kSilentBlock + kGood + 4 * kSilent,
       "MHCP12222EHHHH",
       "[NO RESPONSE ERROR]"},
      {"a short block, good at the second attempt, and one that is silent",
       {kMethod, kHead, kAccepted, kReady, {"01 04 80 00 00", 1, false}, Block(), Times(kSilence, 4), kEnded},
       to_block + (kLongFirst + kRest + kGap) + kGoodBlock + 4 * kSilentBlock + kGood + 4 * kSilent,
       "MHCP112222EHHHH",
       "[NO RESPONSE ERROR]"},
      // The run's end tries once more to end the mode.
      {"a silent block, and the mode can't be ended",
       {kMethod, kHead, kAccepted, kReady, Times(kSilence, 4), {"01 86 02", 8}},
       to_block + 4 * kSilentBlock + 2 * 4 * kPartly,
       "MHCP1111EEEEEEEE",
       "[ADDRESS ERROR(02H)]"},
  };
}

TEST(WaveFaults, EachFaultTakesTheseMilliseconds) {
  std::vector<FaultRow> rows = HeadAndCommandRows();
  std::ranges::move(PollRows(), std::back_inserter(rows));
  std::ranges::move(BlockRows(), std::back_inserter(rows));
  for (const FaultRow& row : rows) {
    SCOPED_TRACE(row.fault);
    FaultyCapture t;
    t.Lay(row.answers);
    EXPECT_EQ(t.Run(), row.ms);
    EXPECT_EQ(Letters(t.Line().writes), row.requests);
    EXPECT_EQ(t.State(), std::string("The display of data was ended ") + row.why);
    EXPECT_EQ(t.waves().Captures, 0);
    EXPECT_FALSE(t.waves().store.WaveSaved);
    t.ExpectGivenBack();
  }
}

// Without an answer about the method there is no run.
TEST(WaveFaults, ASilentMethodTakesFourAttempts) {
  FaultyCapture t;
  EXPECT_EQ(t.Run(), 4 * kSilent);
  EXPECT_EQ(Letters(t.Line().writes), "MMMM");
  EXPECT_EQ(t.State(), "The error occurred at the time of communication [NO RESPONSE ERROR]");
  t.ExpectGivenBack();
}

// The device goes away at the n-th request, or while its answer is taken: nothing is asked any more, not even
// the end of the capture mode, and no time is spent on a port that is closed.
TEST(WaveFaults, ALostPortEndsTheRunAtOnce) {
  const struct {
    const char* operation;
    int n;  // the fault strikes its n-th call
    std::int64_t ms;
    std::string requests;
    const char* end;
  } rows[] = {
      {"write", 1, 0, "M", "The error occurred at the time of communication [RECEIVE ERROR(5)]"},
      {"write", 2, kGood, "MH", "The display of data was ended [RECEIVE ERROR(5)]"},
      {"write", 3, 2 * kGood, "MHC", "The display of data was ended [RECEIVE ERROR(5)]"},
      {"write", 4, kToPoll, "MHCP", "The display of data was ended [RECEIVE ERROR(5)]"},
      // The end of the capture mode finds the port closed.
      {"write", 5, kToPoll + kGood, "MHCP1", "The display of data was ended [RECEIVE ERROR(8)]"},
      // Seven bytes of the method's answer and 21 of the head's; then the third of the command's.
      {"take", 7 + 21 + 3, 2 * kGood + kFirst, "MHC", "The display of data was ended [RECEIVE ERROR(5)]"},
      {"take", 7 + 21 + 8 + 7 + 60, kToPoll + kGood + kLongFirst, "MHCP1",
       "The display of data was ended [RECEIVE ERROR(8)]"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.operation << " " << row.n);
    FaultyCapture t;
    t.Lay({kMethod, kHead, kAccepted, kReady, Block()});
    t.Line().Fail(row.operation, PortFaultCode::kRemoved, row.n);
    EXPECT_EQ(t.Run(), row.ms);
    EXPECT_EQ(Letters(t.Line().writes), row.requests);
    EXPECT_EQ(t.State(), row.end);
    EXPECT_FALSE(t.app().state.PortIsOpen);
    EXPECT_FALSE(t.Line().IsOpen());
    EXPECT_EQ(t.waves().Captures, 0);
    t.ExpectGivenBack();
  }
}

}  // namespace
}  // namespace vlt::test
