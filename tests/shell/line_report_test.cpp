// SPDX-License-Identifier: GPL-3.0-or-later
// What is told of the line: frames in words, figures as rows, both files byte for byte.
#include "monitor/line_report.h"

#include <gtest/gtest.h>

#include "link/port.h"
#include "link/registers.h"
#include "monitor/frame_meaning.h"
#include "monitor/register_names.h"
#include "resources/version.h"
#include "support/test_app.h"

namespace vlt::test {
namespace {

using enum AttemptEnd;

struct Sent {
  const char* request;
  const char* reply;
  AttemptEnd end = kAnswered;
  int took_ms = 40;
  int number = 0;
  bool last = true;
};

// An attempt that begins now.
void Tell(TestApp& t, const Sent& sent) {
  const std::vector<std::uint8_t> request = FromHex(sent.request);
  const std::vector<std::uint8_t> reply = FromHex(sent.reply);
  const std::int64_t at = t.Time().NowMs();
  t.Time().Sleep(sent.took_ms);
  t.app.line->Add({.station = request[0],
                   .number = sent.number,
                   .sent_ms = at,
                   .ended_ms = t.Time().NowMs(),
                   .request = request,
                   .reply = reply,
                   .end = sent.end,
                   .last = sent.last});
}

TEST(FrameMeaningTest, RequestsAndRepliesInWords) {
  constexpr const char* kReadDiameter = "01 03 00 D2 00 02 00 00";
  const struct {
    Sent sent;
    const char* request;
    const char* outcome;
  } cases[] = {
      {{kReadDiameter, "01 03 04 00 00 17 A2 00 00"},
       "Reads 00D2, length 2: process.outer_diameter CH1",
       "Answer in 40 ms, length 2: process.outer_diameter CH1 = 60.50"},
      {{"01 03 14 5E 00 01 00 00", "01 03 02 00 01 00 00", kAnswered, 31},
       "Reads 145E, length 1: process.pipe_material CH2",
       "Answer in 31 ms, length 1: process.pipe_material CH2 = STAINLESS STEEL"},
      {{"01 03 00 D0 00 04 00 00", "01 03 08 00 63 00 00 17 A2 00 00 00 00"},
       "Reads 00D0, length 4: process.sensor_type CH1 to process.pipe_material CH1 (3 values)",
       "Answer in 40 ms, length 4: process.sensor_type CH1 to process.pipe_material CH1 (3 values)"},
      {{"01 04 00 24 00 01 00 00", "01 04 02 80 00 00 00"},
       "Reads input 0024, length 1: measured.alarms CH1",
       "Answer in 40 ms, length 1: measured.alarms CH1 = 1000000000000000"},
      {{"01 06 01 50 00 01 00 00", "01 06 01 50 00 01 00 00"},
       "Writes 0150, length 1: command.store = 1",
       "Write confirmed in 40 ms"},
      {{"01 10 00 D2 00 02 04 00 00 17 A2 00 00", "01 10 00 D2 00 02 00 00"},
       "Writes 00D2, length 2: process.outer_diameter CH1 = 60.50",
       "Write confirmed in 40 ms"},
      {{"01 03 70 00 00 01 00 00", "01 83 02 C0 F1", kException},
       "Reads 7000, length 1",
       "Refused: exception 02 (no such address)"},
      {{kReadDiameter, "01 83 63 00 00", kException, 40, 2},
       "Repeat 2: Reads 00D2, length 2: process.outer_diameter CH1",
       "Refused: exception 63 (not known)"},
      {{kReadDiameter, "", kSilence, 144}, nullptr, "No reply within 144 ms"},
      {{kReadDiameter, "01 03 04", kShort}, nullptr, "Cut short: 3 of 9 bytes"},
      {{"01 10 00 D2 00 02 04 00 00 17 A2 00 00", "01", kShort}, nullptr, "Cut short: 1 of 8 bytes"},
      {{"01 03 00 D6 00 01 00 00", "01 03 02 00 01 79 85", kBadCheck},
       nullptr,
       "Wrong frame check: 79 85 instead of 79 84"},
      {{kReadDiameter, "01 04 04", kWrongFunction}, nullptr, "Reply to function 04 instead of 03"},
      {{kReadDiameter, "05 03 04 00 00 17 A2 00 00", kOtherStation},
       nullptr,
       "Signed by station 5 instead of 1"},
      {{kReadDiameter, "05 03 04 00 00 17 A2 00 00"}, nullptr, "Signed by station 5 instead of 1"},
      {{"01 06 01 5C 00 01 00 00", "01 06 01 5C 00 00 00 00", kOtherEcho},
       "Writes 015C, length 1: maintenance.test_mode = ON",
       "Repeats 00 00 instead of 00 01"},
      {{kReadDiameter, "", kPortFault, 3}, nullptr, "The port failed after 3 ms"},
      {{"01 2B 0E 01 00 00 00 00", "", kSilence}, "Function 2B", nullptr},
      // What no meter would send is told all the same.
      {{"01 03", "01", kBadCheck}, "Reads 0000, length 0", "Wrong frame check"},
      {{"01 06 01 5C 00 01 00 00", "01 06", kOtherEcho}, nullptr, "Echo differs from the write"},
  };
  for (const auto& c : cases) {
    TestApp t;
    Tell(t, c.sent);
    const auto meaning = [&](std::size_t i) {
      return FrameMeaning(t.app, t.app.line->Frame(i), Telling::kShort);
    };
    if (c.request != nullptr) {
      EXPECT_EQ(meaning(0), c.request);
    }
    if (c.outcome != nullptr) {
      EXPECT_EQ(meaning(1), c.outcome) << c.sent.reply;
    }
  }
}

// In the words in which every other place says it.
TEST(FrameMeaningTest, TheWholeTellingHasEachValue) {
  const struct {
    const char* request;
    const char* reply;
    const char* told;
  } cases[] = {
      {"01 03 00 D0 00 04 00 00", "01 03 08 00 63 00 00 17 A2 00 01 00 00",
       "length 4: process.sensor_type CH1 = (99), process.outer_diameter CH1 = 60.50, "
       "process.pipe_material CH1 = STAINLESS STEEL"},
      {"01 03 00 C4 00 04 00 00", "01 03 08 00 04 00 05 00 00 00 07 00 00",
       "length 4: display.item_2 = +TOTAL PULSE, display.decimal_point_2 = ******.*, display.backlight = ON, "
       "display.lights_out_time = 7"},
      {"01 03 00 7E 00 01 00 00", "01 03 02 00 02 00 00", "length 1: status.flow_switch DO2 = LOW (2)"},
  };
  for (const auto& c : cases) {
    TestApp t;
    Tell(t, {c.request, c.reply});
    EXPECT_EQ(FrameMeaning(t.app, t.app.line->Frame(1), Telling::kWhole),
              std::string("Answer in 40 ms, ") + c.told);
  }
}

// Every read of the settings and every live block has a name for each of its registers' starts.
TEST(RegisterNamesTest, SpansBringWhatLiesInThem) {
  const struct {
    RegisterSpan span;
    std::vector<std::string> names;
  } cases[] = {
      {{ReadFunction::kHolding, 0x0100, 3}, {"system.unit", "system.language", "system.id_number"}},
      {{ReadFunction::kInput, 0x0086, 11}, {"system.version", "system.type"}},
      {{ReadFunction::kHolding, 0x00D3, 2}, {}},
      {{ReadFunction::kInput, 0x0140, 64}, {"wave.samples 2"}},
      {{ReadFunction::kInput, 0x0030, 2}, {"condition.wedge_velocity CH1", "condition.wedge_angle CH1"}},
      {{ReadFunction::kHolding, 0x0150, 0}, {}},
  };
  for (const auto& c : cases) {
    std::vector<std::string> names;
    for (const NamedRegisters* named : NamesIn(c.span)) names.push_back(named->name);
    EXPECT_EQ(names, c.names);
  }
}

class LineFilesTest : public testing::Test {
 protected:
  LineFilesTest() {
    t.app.state.OpenedPort = 3;
    t.app.state.OpenedDevice = "/dev/ttyUSB0";
    t.app.state.OpenedSettings = "9600,O,8,1";
    t.app.line->Opened("9600,O,8,1");
    Tell(t, {"01 03 00 D6 00 01 64 32", "01 03 02 00 01 79 84", kAnswered, 30});
    Tell(t, {"02 03 00 D6 00 01 64 01", "", kSilence, 120, 0, false});
    Tell(t, {"02 03 00 D6 00 01 64 01", "02 83 02 30 F1", kException, 50, 1});
  }
  TestApp t;
};

// 15 + 8 + 13 bytes in 200 ms, of which the line carried them for 11 / 9.6 ms each.
TEST_F(LineFilesTest, TheCsvOfTheStatistics) {
  EXPECT_EQ(StatisticsCsv(t.app),
            "\xEF\xBB\xBF"
            "Counted since 2026/11/24 10:00:00\r\n"
            "COM3 /dev/ttyUSB0 9600 O 8 1\r\n"
            "Station,Exchanges,Repeats,Failed,No reply,Reply cut short,Wrong frame check,"
            "Refused by the meter,Reply to another function,Reply of another station,"
            "Echo differs from the write,Port failed,Median [ms],99 % [ms],Sent [bytes],Received [bytes],"
            "Bytes/s,Line load [%]\r\n"
            "All,2,1,1,1,0,0,1,0,0,0,0,30,30,24,12,180,20.6\r\n"
            "1,1,0,0,0,0,0,0,0,0,0,0,30,30,8,7,75,8.6\r\n"
            "2,1,1,1,1,0,0,1,0,0,0,0,,,16,5,105,12.0\r\n");
}

TEST_F(LineFilesTest, TheRecordOfTheFrames) {
  const std::string record = FrameRecord(t.app, KeptFrames(*t.app.line));
  const std::string head = "Veltrano3 " + VersionText("") +
                           "\r\n2026/11/24 10:00:00\r\nCOM3 /dev/ttyUSB0 9600,O,8,1\r\n\r\n"
                           "Counted since 2026/11/24 10:00:00\r\nStation\tExchanges\t";
  EXPECT_EQ(record.substr(0, head.size()), head);
  const std::string frames =
      "\r\n\r\n"
      "2026/11/24 10:00:00.000\t→\t1\t01 03 00 D6 00 01 64 32\tReads 00D6, length 1: process.pipe_material "
      "CH1\r\n"
      "2026/11/24 10:00:00.030\t←\t1\t01 03 02 00 01 79 84\tAnswer in 30 ms, length 1: "
      "process.pipe_material CH1 = STAINLESS STEEL\r\n"
      "2026/11/24 10:00:00.030\t→\t2\t02 03 00 D6 00 01 64 01\tReads 00D6, length 1: process.pipe_material "
      "CH1\r\n"
      "2026/11/24 10:00:00.150\t×\t2\t\tNo reply within 120 ms\r\n"
      "2026/11/24 10:00:00.150\t→\t2\t02 03 00 D6 00 01 64 01\tRepeat 1: Reads 00D6, length 1: "
      "process.pipe_material CH1\r\n"
      "2026/11/24 10:00:00.200\t←\t2\t02 83 02 30 F1\tRefused: exception 02 (no such address)\r\n";
  ASSERT_GT(record.size(), frames.size());
  EXPECT_EQ(record.substr(record.size() - frames.size()), frames);
}

TEST_F(LineFilesTest, TheRateOfTheLastSecondsFallsWithTheLineAtRest) {
  EXPECT_EQ(RateNow(*t.app.line, 200).bytes_per_second, 36 * 1000 / 5000.0);
  EXPECT_NEAR(RateNow(*t.app.line, 200).share, 7.2 * 11 / 9600, 1e-9);
  EXPECT_EQ(RateNow(*t.app.line, 5100).bytes_per_second, 13.0 / 5) << "the last reply and its request";
  EXPECT_EQ(RateNow(*t.app.line, 60'000).bytes_per_second, 0);
}

// Whatever strikes the line has its name in the figures.
TEST(LineFaultsTest, EachFaultOfTheLineHasItsOutcome) {
  const struct {
    const char* fault;
    AttemptEnd end;
  } cases[] = {{"silence", kSilence},  {"one-byte", kShort},        {"short", kShort},
               {"crc", kBadCheck},     {"exception=2", kException}, {"function", kWrongFunction},
               {"unplug", kPortFault}, {"station", kOtherStation}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.fault);
    TestApp t;
    t.platform.line.AddStation(2, {});
    ASSERT_TRUE(OpenPort(t.app));
    t.app.state.RetryNo = 1;
    t.platform.Arm(std::string(c.fault) + "*9");
    RegisterData data;
    const bool stations = c.end == kOtherStation;
    EXPECT_FALSE(ReadRegisters(t.app, {2, stations ? kModeStations : kModeOrdinary},
                               {.address = 0x0100, .count = 2}, data));
    const LineTotals& totals = t.app.line->Of(2);
    EXPECT_EQ(totals.failed, 1);
    EXPECT_EQ(totals.exchanges, 1);
    EXPECT_EQ(totals.Ended(c.end), totals.repeats + 1);
    EXPECT_EQ(totals.repeats, stations || c.end == kPortFault ? 0 : 1);
  }
  TestApp t;
  ASSERT_TRUE(OpenPort(t.app));
  t.platform.Arm("wrong-echo");
  EXPECT_EQ(WriteRegister(t.app, 0x0104, 5).result, WriteResult::kOtherEcho);
  EXPECT_EQ(t.app.line->Of(1).Ended(kOtherEcho), 1);
  EXPECT_EQ(t.app.line->Of(1).failed, 1);
}

}  // namespace
}  // namespace vlt::test
