// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/port_switch.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>

#include "platform/serial_firmware_port.h"
#include "support/virtual_platform.h"

namespace vlt {
namespace {

using Bytes = std::vector<std::uint8_t>;
using test::FromHex;

// Station 1 is asked for the word at 0148H, the meter's specification.
constexpr const char* kQuestion = "01 03 01 48 00 01 05 E0";
constexpr const char* kAnswerOfSingle = "01 03 02 00 B6 39 F2";

class PortSwitchTest : public testing::Test {
 protected:
  // Asks and gives way until the line has been at rest for long.
  Bytes Ask(std::string_view question) {
    port.Write(FromHex(question));
    time.RunFor(200);
    Bytes answer;
    while (port.BytesIn() > 0) answer.push_back(port.TakeByte());
    return answer;
  }

  std::optional<PortFault> Fault(int number, const std::string& settings) {
    try {
      port.Open(number, settings);
    } catch (const PortFault& fault) {
      return fault;
    }
    return std::nullopt;
  }

  std::map<int, std::string> devices{{1, "simulator model=single"},
                                     {2, "/dev/veltrano3-none"},
                                     {4, "simulator model=strange"},
                                     {5, "simulators"}};
  test::VirtualTime time;
  PortSwitch port{time, time, [this](int number) { return devices[number]; }};
};

TEST_F(PortSwitchTest, BytesMoveAtTheSpeedThatThePortWasOpenedWith) {
  struct Case {
    const char* settings;
    std::int64_t out_ms;  // 8 characters of 11 bits, to the next whole millisecond
  };
  for (const Case& c : {Case{"9600,O,8,1", 10}, Case{"38400,O,8,1", 3}}) {
    SCOPED_TRACE(c.settings);
    port.Open(1, c.settings);
    const std::int64_t start = time.NowMs();
    port.Write(FromHex(kQuestion));
    EXPECT_EQ(port.BytesOut(), 8);
    while (port.BytesOut() > 0) time.GiveWay(start + 1000);
    EXPECT_EQ(time.NowMs(), start + c.out_ms) << "giving way wakes with the line's bytes";
    EXPECT_EQ(port.BytesIn(), 0);
    while (port.BytesIn() < 7) time.GiveWay(start + 1000);
    EXPECT_LT(time.NowMs(), start + 60);
    Bytes answer;
    while (port.BytesIn() > 0) answer.push_back(port.TakeByte());
    EXPECT_EQ(answer, FromHex(kAnswerOfSingle));
    EXPECT_TRUE(time.RunUntilIdle(1000)) << "a line at rest wakes nobody";
  }
}

TEST_F(PortSwitchTest, AMeterKeepsWhatWasWrittenWhileThePortIsClosed) {
  port.Open(1, "38400,O,8,1");
  EXPECT_EQ(Ask("01 06 01 04 00 07 88 35").size(), 8U);  // its identification number becomes 7
  port.Open(1, "9600,E,8,1");
  EXPECT_EQ(Ask("01 03 01 04 00 01 C4 37").at(4), 7);
}

TEST_F(PortSwitchTest, WhatComesWhileThePortIsClosedOrIsDiscardedIsLost) {
  port.Open(1, "9600,O,8,1");
  port.Write(FromHex(kQuestion));
  time.RunFor(12);  // the question is out
  port.Close();
  time.RunFor(100);
  port.Open(1, "9600,O,8,1");
  EXPECT_EQ(port.BytesIn(), 0);
  port.Write(FromHex(kQuestion));
  port.DiscardOutput();
  time.RunFor(100);
  EXPECT_EQ(port.BytesIn(), 0) << "the meter never saw it whole";
  port.Write(FromHex(kQuestion));
  time.RunFor(100);
  port.DiscardInput();
  EXPECT_EQ(port.BytesIn(), 0);
}

TEST_F(PortSwitchTest, FaultsSayWhichDevice) {
  struct Case {
    int number;
    const char* settings;
    PortFaultCode code;
    const char* device;
  };
  for (const Case& c : {Case{2, "9600,O,8,1", PortFaultCode::kMissing, "/dev/veltrano3-none"},
                        Case{0, "9600,O,8,1", PortFaultCode::kMissing, ""},
                        Case{4, "9600,O,8,1", PortFaultCode::kSettings, "simulator model=strange ("},
                        Case{5, "9600,O,8,1", PortFaultCode::kMissing, "simulators"},
                        Case{1, "9600,O,8", PortFaultCode::kSettings, "simulator model=single"}}) {
    SCOPED_TRACE(c.number);
    const auto fault = Fault(c.number, c.settings);
    ASSERT_TRUE(fault.has_value());
    EXPECT_EQ(fault->Code(), c.code);
    EXPECT_TRUE(fault->Device().starts_with(c.device)) << fault->Device();
    EXPECT_FALSE(port.IsOpen());
  }
  EXPECT_FALSE(Fault(1, "9600,O,8,1").has_value());
}

TEST_F(PortSwitchTest, SettingsAreTakenWholeOrNotAtAll) {
  for (const char* good : {"1,N,5,1", "4000000,E,8,2"}) EXPECT_FALSE(Fault(1, good)) << good;
  for (const char* bad : {"", "9600,O,8,1,", "9600, O,8,1", ",O,8,1", "0,O,8,1", "+9600,O,8,1",
                          "4000001,O,8,1", "99999999999,O,8,1", "9600,X,8,1", "9600,O,9,1", "9600,O,4,1",
                          "9600,O,8,0", "9600,O,8,3", "9600,O,8,1x"}) {
    ASSERT_TRUE(Fault(1, bad)) << bad;
    EXPECT_EQ(Fault(1, bad)->Code(), PortFaultCode::kSettings) << bad;
  }
}

TEST_F(PortSwitchTest, OfTheTwoLinksOneHasThePortAndOnlyByItsHandle) {
  SerialFirmwarePort link{time, time, port};
  port.Open(1, "9600,O,8,1");
  EXPECT_EQ(link.Open("COM1", "38400,N,8,1", {}), FirmwarePort::kNoHandle);
  EXPECT_EQ(link.LastFault()->Code(), PortFaultCode::kBusy);
  EXPECT_TRUE(port.IsOpen()) << "it stays with the other link";
  port.Close();
  for (const char* name : {"COM2", "COM0", "COM", "LPT1", "COM1x", ""}) {
    EXPECT_EQ(link.Open(name, "38400,N,8,1", {}), FirmwarePort::kNoHandle) << name;
    EXPECT_EQ(link.LastFault()->Code(), PortFaultCode::kMissing) << name;
  }
  const auto closed = link.Open("COM1", "38400,N,8,1", {});
  link.Close(closed);
  EXPECT_FALSE(port.IsOpen());
  const auto handle =
      link.Open("COM1", "38400,N,8,1", {.read_interval = 5, .read_constant = 20, .read_per_byte = 3});
  Bytes into(10);
  std::size_t received = 9;
  for (const auto other : {FirmwarePort::kNoHandle, closed}) {
    EXPECT_FALSE(link.Write(other, into) || link.Read(other, into, received));
    EXPECT_EQ(received, 0U);
    link.Close(other);
    EXPECT_TRUE(port.IsOpen());
  }
  const std::int64_t start = time.NowMs();
  EXPECT_TRUE(link.Read(handle, into, received));
  EXPECT_EQ(time.NowMs() - start, 20 + 10 * 3) << "silence lasts its time";
}

}  // namespace
}  // namespace vlt
