// SPDX-License-Identifier: GPL-3.0-or-later
// The firmware link's port on a real serial device.
#include <gtest/gtest.h>

#include <numeric>
#include <thread>

#include "host/port_switch.h"
#include "host/qt_event_queue.h"
#include "platform/serial_firmware_port.h"
#include "tests/line/pty.h"

namespace vlt {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr const char* kSettings = "38400,N,8,1";

class FirmwarePortTest : public testing::Test {
 protected:
  QtClock clock;
  QtEventQueue queue{clock};
  std::string device;
  PortSwitch serial{clock, queue, [this](int /*number*/) { return device; }};
  SerialFirmwarePort port{clock, queue, serial};
};

// More than the driver takes at once goes out whole while events run, and an answer ends by its gap.
TEST_F(FirmwarePortTest, AModuleGoesOutAndAnAnswerComesBack) {
  Pty pty;
  device = pty.Path();
  const auto handle = port.Open("COM3", kSettings, {50, 5000, 0, 0, 1});
  ASSERT_NE(handle, FirmwarePort::kNoHandle);
  Bytes module(100'000);
  std::iota(module.begin(), module.end(), std::uint8_t{0});
  Bytes heard;
  std::thread device_end([&] {
    heard = pty.Receive(module.size());
    pty.Send(Bytes(300, 0x0D));
  });
  EXPECT_TRUE(port.Write(handle, module));
  Bytes into(1000);
  std::size_t received = 0;
  EXPECT_TRUE(port.Read(handle, into, received));
  device_end.join();
  EXPECT_TRUE(heard == module);
  EXPECT_EQ(received, 300U);
  EXPECT_EQ(into[299], 0x0D);
  // Silence lasts as long as the total, and no longer than it must.
  port.Close(handle);
  const auto again = port.Open("COM3", kSettings, {50, 120, 0, 0, 1});
  ASSERT_NE(again, FirmwarePort::kNoHandle);
  const auto begun = clock.NowMs();
  EXPECT_TRUE(port.Read(again, into, received));
  EXPECT_EQ(received, 0U);
  EXPECT_GE(clock.NowMs() - begun, 119);
  pty.Hangup();
  EXPECT_FALSE(port.Read(again, into, received));
  ASSERT_TRUE(port.LastFault());
  EXPECT_EQ(port.LastFault()->Code(), PortFaultCode::kRemoved);
}

TEST_F(FirmwarePortTest, WhatCantBeOpenedSaysWhy) {
  Pty pty;
  device = pty.Path();
  serial.Open(3, kSettings);  // the other link has it
  EXPECT_EQ(port.Open("COM3", kSettings, {}), FirmwarePort::kNoHandle);
  EXPECT_EQ(port.LastFault()->Code(), PortFaultCode::kBusy);
  EXPECT_TRUE(serial.IsOpen());
  serial.Close();
  device = "/dev/no_such_device";
  for (const char* name : {"COM3", "COM0", "COM", "LPT1", "COM3x", ""}) {
    EXPECT_EQ(port.Open(name, kSettings, {}), FirmwarePort::kNoHandle) << name;
    EXPECT_EQ(port.LastFault()->Code(), PortFaultCode::kMissing) << name;
  }
}

}  // namespace
}  // namespace vlt
