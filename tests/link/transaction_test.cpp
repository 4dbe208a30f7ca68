// SPDX-License-Identifier: GPL-3.0-or-later
// The exchange on a scripted line: order of the calls to the port, odd replies to the byte, faults of the
// driver, and the port's own opening and closing.
#include <gtest/gtest.h>

#include "link/modbus.h"
#include "link/port.h"
#include "support/test_app.h"

namespace vlt {
namespace {

using test::TestApp;

struct Scripted : TestApp {
  Scripted() : TestApp({.port = test::PortKind::kScripted}) {
    EXPECT_TRUE(OpenPort(app));
    line.calls.clear();
  }
  bool Read(int mode = kModeOrdinary) {
    Frame request = ReadRequest(1, 3, 0x0004, 1);
    const std::int64_t start = Time().NowMs();
    const bool result = SendReceive(app, request, reply, mode);
    took_ms = Time().NowMs() - start;
    return result;
  }
  const std::string& Text() const { return app.state.LastErrorText; }

  test::ScriptedLine& line = platform.scripted;
  Frame reply = Frame(7);
  std::int64_t took_ms = 0;
};

TEST(Transaction, KeepsTheOrderOfItsSteps) {
  Scripted t;
  t.line.drain_ms = 98;  // looked at every 4 ms: empty at 100
  t.line.ReplyChecked("01 03 02 00 05");
  EXPECT_TRUE(t.Read());
  const std::vector<std::string> order = {"discard in", "discard out", "write 01 03 00 04 00 01 C5 CB",
                                          "drained", "discard in"};
  EXPECT_EQ(t.line.calls, order);
  EXPECT_EQ(t.took_ms, 100 + 25 + 6);
  EXPECT_EQ(test::Hex(t.reply), "01 03 02 00 05 78 47");
}

TEST(Transaction, TakesAReplyUpToTheLastLook) {
  const struct {
    int mode;
    int arrives_ms;
    std::int64_t took_ms;  // 0: too late
  } cases[] = {
      {0, 25, 25 + 6}, {0, 26, 31 + 6},         {0, 85, 85 + 6}, {0, 86, 96 + 6},   {0, 206, 206 + 6},
      {0, 207, 0},     {3, 166, 166 + 6 + 201}, {3, 167, 0},     {4, 161, 161 + 6}, {4, 200, 200 + 6},
      {4, 201, 0},
  };
  for (const auto& c : cases) {
    Scripted t;
    t.app.state.RetryNo = 0;
    t.line.ReplyChecked("01 03 02 00 05", c.arrives_ms);
    EXPECT_EQ(t.Read(c.mode), c.took_ms != 0) << c.mode << " " << c.arrives_ms;
    if (c.took_ms != 0) {
      EXPECT_EQ(t.took_ms, c.took_ms) << c.mode << " " << c.arrives_ms;
    }
  }
}

TEST(Transaction, JudgesOddReplies) {
  const struct {
    const char* reply;
    bool result;
    const char* text;
  } cases[] = {
      {"01", false, "[APPLICATION ERROR]"},
      {"01 83", false, "[UNKNOWN FUNCTION CODE ERROR]"},
      {"01 83 01", false, "[FUNCTON CODE ERROR(01H)]"},
      {"01 83 04", false, "[UNKNOWN FUNCTION CODE ERROR]"},
      {"01 83 03", false, "[REGISTER COUNT ERROR(03H)]"},
      {"01 83 02 FF FF", false, "[ADDRESS ERROR(02H)]"},  // its check is not looked at
      {"02 03 02 00 05 3C 47", true, ""},                 // another station's
      {"01 03 02 00 05 47 78", false, "[CRC ERROR]"},     // check bytes the wrong way round
      {"01 03 02 00 05 78 47 00 00", true, ""},
      // The buffer holds a reply that would complete the first of these.
      {"01 03 02 00", false, "[CRC ERROR]"},
      {"02 03 02 00", false, "[CRC ERROR]"},
  };
  for (const auto& c : cases) {
    Scripted t;
    t.app.state.RetryNo = 0;
    t.reply = test::FromHex("01 03 02 00 07 F9 86");
    t.line.Reply(c.reply);
    EXPECT_EQ(t.Read(), c.result) << c.reply;
    EXPECT_EQ(t.Text(), c.text) << c.reply;
    EXPECT_TRUE(test::Hex(t.reply).starts_with(std::string(c.reply).substr(0, 8))) << "the head is kept";
  }
}

TEST(Transaction, KeepsTheTextOfAnEarlierAttempt) {
  Scripted t;
  t.app.state.RetryNo = 1;
  t.line.Reply("01 83 02 C0 F1");
  t.line.Reply("01");
  EXPECT_FALSE(t.Read());
  EXPECT_EQ(t.Text(), "[ADDRESS ERROR(02H)]");
  t.line.Reply("01");
  EXPECT_FALSE(t.Read());
  EXPECT_EQ(t.Text(), "[NO RESPONSE ERROR]");  // of the second attempt; each call starts without a text
}

TEST(Transaction, AFaultOfTheDriverEndsItAtOnce) {
  for (const char* operation : {"discard in", "discard out", "write", "bytes out", "bytes in", "take"}) {
    Scripted t;
    t.line.ReplyChecked("01 03 02 00 05");
    t.line.Fail(operation, PortFaultCode::kRead);
    EXPECT_FALSE(t.Read()) << operation;
    EXPECT_EQ(t.Text(), "[RECEIVE ERROR(7)]") << operation;
    EXPECT_LE(t.line.writes.size(), 1u) << operation;
    EXPECT_EQ(t.line.calls.back(), "discard in") << operation;
    EXPECT_TRUE(t.line.IsOpen()) << operation;
  }
  Scripted t;
  t.line.Fail("write", PortFaultCode::kRemoved);
  t.line.Fail("close", PortFaultCode::kUnknown);
  EXPECT_FALSE(t.Read());
  EXPECT_EQ(t.Text(), "[RECEIVE ERROR(5)]");
}

TEST(Transaction, WaitsLetEventsRunAndEndOnTime) {
  TestApp t;
  int seen = 0;
  t.Time().Post([&] { ++seen; });
  WaitMs(t.app, 0);
  EXPECT_EQ(seen, 1);
  EXPECT_EQ(t.Time().NowMs(), 1);
  for (int at : {2, 5, 12, 13}) t.Time().At(at, [&] { ++seen; });
  WaitMs(t.app, 10);
  EXPECT_EQ(t.Time().NowMs(), 12);
  EXPECT_EQ(seen, 4);
}

TEST(Requests, AreSizedForTheirCheck) {
  const std::uint8_t data[] = {0x12, 0x34, 0x56, 0x78};
  EXPECT_EQ(test::Hex(ReadRequest(31, 4, 0x10F8, 4)), "1F 04 10 F8 00 04 00 00");
  EXPECT_EQ(test::Hex(WriteRegisterRequest(1, 0x0150, -2)), "01 06 01 50 FF FE 00 00");
  EXPECT_EQ(test::Hex(WriteRegistersRequest(1, 0x00D0, data)), "01 10 00 D0 00 02 04 12 34 56 78 00 00");
  EXPECT_EQ(ReplyFor(ReadRequest(1, 3, 0x00D0, 18)).size(), 41u);
  EXPECT_EQ(ReplyFor(WriteRegistersRequest(1, 0x00D0, data)).size(), 8u);
}

TEST(Requests, EchoIsSignedUnlessToldOtherwise) {
  const Frame reply = test::FromHex("01 06 01 50 FF FE 00 00");
  EXPECT_TRUE(EchoWordEqual(reply, -2));
  EXPECT_FALSE(EchoWordEqual(reply, 65534));
  EXPECT_TRUE(EchoWordMatch(reply, 65534, 1));
  EXPECT_FALSE(EchoWordMatch(test::FromHex("01 83 02"), 0, 0));
}

TEST(Port, SilenceBetweenFramesBySpeed) {
  TestApp t;
  const std::pair<const char*, int> cases[] = {{"4800", 10}, {"9600", 5},  {"19200", 3}, {"28800", 3},
                                               {"32000", 3}, {"38400", 2}, {"48000", 1}, {"115200", 1},
                                               {"", 5},      {"0", 5}};
  for (const auto& [speed, ms] : cases) {
    t.app.state.Speed = speed;
    EXPECT_EQ(CalcCharGap(t.app), ms) << speed;
  }
}

TEST(Port, OpensOnceAndKeepsItsSettings) {
  TestApp t({.port = test::PortKind::kScripted});
  EXPECT_TRUE(OpenPort(t.app));
  EXPECT_TRUE(t.app.state.PortIsOpen);
  EXPECT_EQ(t.app.state.CharGapMs, 5);
  t.app.state.Speed = "38400";
  bool result = false;
  OpenPort(t.app, 2, "38400,N,8,1", result);
  EXPECT_TRUE(result);
  EXPECT_EQ(t.app.state.CharGapMs, 5);
  EXPECT_EQ(t.platform.scripted.calls, (std::vector<std::string>{"open 1 9600,O,8,1", "rts off", "dtr off"}));
}

TEST(Port, SaysWhyItDoesNotOpen) {
  const struct {
    PortFaultCode code;
    const char* reason;
  } cases[] = {
      {PortFaultCode::kMissing, "COM1 (scripted) is not there: check that the adapter is plugged in"},
      {PortFaultCode::kNoPermission, "No permission to open COM1 (scripted)"},
      {PortFaultCode::kBusy, "COM1 (scripted) is in use by another program"},
      {PortFaultCode::kSettings, "COM1 (scripted) does not support the settings 9600,O,8,1"},
      {PortFaultCode::kUnknown, "COM1 (scripted) could not be opened: 9"},
  };
  for (const auto& c : cases) {
    TestApp t({.port = test::PortKind::kScripted});
    t.platform.scripted.Fail("open", c.code);
    EXPECT_FALSE(OpenPort(t.app));
    EXPECT_EQ(t.app.state.PortFaultReason, c.reason);
    EXPECT_FALSE(t.app.state.PortIsOpen);
    EXPECT_EQ(t.platform.scripted.calls.back(), "close");
    EXPECT_TRUE(OpenPort(t.app));
    EXPECT_EQ(t.app.state.PortFaultReason, "");
  }
  TestApp t;
  for (const char* number : {"00", "00", "7", "COM1"}) {
    t.app.state.PortNo = number;
    EXPECT_FALSE(OpenPort(t.app)) << number;
    EXPECT_EQ(t.app.state.PortFaultReason.substr(0, 14),
              number[0] == '7' ? "COM7 is not th" : "No port is cho");
  }
}

// A port whose opening is refused as the test says.
class RefusingPort : public test::ScriptedLine {
 public:
  RefusingPort(test::VirtualTime& time, PortFault fault) : ScriptedLine(time), fault_(std::move(fault)) {}
  void Open(int, const std::string&) override { throw fault_; }

 private:
  PortFault fault_;
};

TEST(Port, NamesTheGroupToJoinAndThePortThatThereIsNot) {
  const struct {
    PortFault fault;
    const char* port;
    const char* beyond;
    const char* reason;
  } cases[] = {
      {{PortFaultCode::kNoPermission, "/dev/ttyUSB0", "uucp"},
       "3",
       "",
       "No permission to open COM3 (/dev/ttyUSB0): add your user to the group uucp and log in again"},
      {{PortFaultCode::kMissing, ""}, "", "11", "The settings name port COM11, which is above COM10"},
      {{PortFaultCode::kMissing, "/dev/ttyS3"},
       "4",
       "11",
       "COM4 (/dev/ttyS3) is not there: check that the adapter is plugged in"},
  };
  for (const auto& c : cases) {
    test::VirtualPlatform platform;
    RefusingPort port(platform.time, c.fault);
    Platform machine{platform.time,    platform.time,    port, platform.dialogs, platform.files,
                     platform.process, platform.firmware};
    App app(machine);
    app.state.LangOffset = 5000;
    app.state.PortNo = c.port;
    app.state.PortBeyond = c.beyond;
    EXPECT_FALSE(OpenPort(app));
    EXPECT_EQ(app.state.PortFaultReason, c.reason);
  }
}

TEST(Port, APortThatRefusesItsLinesIsClosedAgain) {
  TestApp t({.port = test::PortKind::kScripted});
  t.platform.scripted.Fail("dtr", PortFaultCode::kUnknown);
  EXPECT_FALSE(OpenPort(t.app));
  EXPECT_FALSE(t.platform.scripted.IsOpen());
}

TEST(Port, ClosesAndComesToRest) {
  Scripted t;
  t.MainWindow().tmrTimer.SetInterval(50);
  t.MainWindow().tmrTimer.SetRunning(true);
  bool ran = false;
  t.Time().At(100, [&] { ran = true; });
  bool result = false;
  ClosePort(t.app, result);
  EXPECT_TRUE(result);
  EXPECT_FALSE(t.app.state.PortIsOpen);
  EXPECT_FALSE(t.MainWindow().tmrTimer.Running());
  EXPECT_EQ(t.Time().NowMs(), 200);
  EXPECT_FALSE(ran);
  ClosePort(t.app, result);
  EXPECT_TRUE(result);
  EXPECT_EQ(t.line.calls, (std::vector<std::string>{"rts off", "close"}));
  EXPECT_EQ(t.Time().NowMs(), 400);
}

TEST(Port, AFaultWhileClosingIsToldAndStillCloses) {
  Scripted t;
  t.line.Fail("rts", PortFaultCode::kRemoved);
  bool result = true;
  ClosePort(t.app, result);
  EXPECT_FALSE(result);
  EXPECT_FALSE(t.line.IsOpen());
  EXPECT_EQ(t.Time().NowMs(), 200);
}

}  // namespace
}  // namespace vlt
