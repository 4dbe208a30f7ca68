// SPDX-License-Identifier: GPL-3.0-or-later
#include "host/qt_serial_port.h"

#include <gtest/gtest.h>

#include <ctime>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <optional>

#include "host/qt_event_queue.h"
#include "tests/host/scratch.h"
#include "tests/line/pty.h"

namespace vlt {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Every byte value, so that one that the driver would treat as a control character shows.
Bytes AllBytes() {
  Bytes bytes(256);
  std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
  return bytes;
}

class QtSerialPortTest : public testing::Test {
 protected:
  // Gives way until `done`, at most five seconds.
  template <typename Done>
  bool Until(Done done) {
    const std::int64_t end = clock.NowMs() + 5000;
    while (!done() && clock.NowMs() < end) queue.GiveWay(end);
    return done();
  }

  Bytes Take(std::size_t count) {
    Until([&] { return port.BytesIn() >= static_cast<int>(count); });
    Bytes bytes;
    while (port.BytesIn() > 0) bytes.push_back(port.TakeByte());
    return bytes;
  }

  std::string device;
  QtClock clock;
  QtEventQueue queue{clock};
  QtSerialPort port{[this](int /*number*/) { return device; }};
};

// The fault that an operation ends with; nothing when it goes well.
template <typename Act>
std::optional<PortFaultCode> FaultOf(Act act) {
  try {
    act();
  } catch (const PortFault& fault) {
    return fault.Code();
  }
  return std::nullopt;
}

TEST_F(QtSerialPortTest, CarriesEveryByteBothWaysAtEverySetting) {
  for (const char* settings : {"9600,O,8,1", "19200,E,8,2", "38400,N,8,1"}) {
    SCOPED_TRACE(settings);
    const Pty pty;
    device = pty.Path();
    port.Open(1, settings);
    ASSERT_TRUE(port.IsOpen());
    port.SetRts(false);
    port.SetDtr(false);
    port.Write(AllBytes());
    ASSERT_TRUE(Until([&] { return port.BytesOut() == 0; }));
    EXPECT_EQ(pty.Receive(256), AllBytes());
    pty.Send(AllBytes());
    EXPECT_EQ(Take(256), AllBytes());
    port.Close();
    EXPECT_FALSE(port.IsOpen());
  }
}

TEST_F(QtSerialPortTest, AWriteLeavesBeforeTheQueueRuns) {
  const Pty pty;
  device = pty.Path();
  port.Open(1, "9600,N,8,1");
  port.Write(Bytes{1, 3, 0, 0xD0});
  EXPECT_EQ(pty.Receive(4), (Bytes{1, 3, 0, 0xD0}));
}

TEST_F(QtSerialPortTest, GivingWayWakesWhenBytesArrive) {
  const Pty pty;
  device = pty.Path();
  port.Open(1, "9600,N,8,1");
  const auto timer = queue.StartTimer(20, [&] { pty.Send(Bytes{7}); });
  const std::int64_t start = clock.NowMs();
  while (port.BytesIn() == 0 && clock.NowMs() < start + 5000) queue.GiveWay(start + 5000);
  queue.StopTimer(timer);
  EXPECT_GE(port.BytesIn(), 1);
  EXPECT_LT(clock.NowMs(), start + 4000);
}

TEST_F(QtSerialPortTest, HeldInputDoesNotWakeAndLosesNothing) {
  const Pty pty;
  device = pty.Path();
  port.Open(1, "9600,N,8,1");
  port.AskPrompt();  // which a pseudo-terminal does not know
  port.HoldInput(true);
  const Bytes all = AllBytes();
  Bytes taken;
  for (std::size_t at = 0; at < all.size(); at += 64) {
    pty.Send(Bytes(all.begin() + static_cast<std::ptrdiff_t>(at),
                   all.begin() + static_cast<std::ptrdiff_t>(at + 64)));
    for (int turn = 0; turn < 10; ++turn) queue.GiveWay(clock.NowMs());
    EXPECT_LE(port.BytesIn(), 1);
    if (at == 128 && port.BytesIn() > 0) taken.push_back(port.TakeByte());  // looking meanwhile harms nothing
  }
  port.HoldInput(false);
  const Bytes rest = Take(all.size() - taken.size());
  taken.insert(taken.end(), rest.begin(), rest.end());
  EXPECT_EQ(taken, all);

  port.HoldInput(true);
  port.Open(1, "9600,N,8,1");
  pty.Send(Bytes{1, 2, 3});
  EXPECT_EQ(Take(3), (Bytes{1, 2, 3})) << "opening ends it";
}

TEST_F(QtSerialPortTest, DiscardedInputIsGoneAndLaterBytesAreNot) {
  const Pty pty;
  const DriverInput other(pty.Path());  // before the port claims the device for itself
  device = pty.Path();
  port.Open(1, "9600,N,8,1");
  pty.Send(Bytes{1, 2, 3});
  ASSERT_TRUE(Until([&] { return port.BytesIn() == 3; }));
  pty.Send(Bytes{4, 5});
  ASSERT_TRUE(other.Awaits(2)) << "with the driver, and the queue has not run";
  port.DiscardInput();
  port.DiscardOutput();
  EXPECT_EQ(port.BytesIn(), 0);
  pty.Send(Bytes{6});
  EXPECT_EQ(Take(1), Bytes{6});
}

TEST_F(QtSerialPortTest, ADeviceThatGoesAwayIsNoticedOnceAndCostsNothing) {
  Pty pty;
  device = pty.Path();
  port.Open(3, "9600,O,8,1");
  pty.Hangup();
  ASSERT_TRUE(Until([&] { return !port.IsOpen(); }));
  const std::clock_t used_before = std::clock();
  const std::int64_t start = clock.NowMs();
  int rounds = 0;
  for (; clock.NowMs() < start + 100; ++rounds) queue.GiveWay(start + 100);
  EXPECT_LT(rounds, 20) << "the port's error doesn't repeat";
  EXPECT_LT(1000.0 * static_cast<double>(std::clock() - used_before) / CLOCKS_PER_SEC, 40);

  EXPECT_EQ(FaultOf([&] { port.Write(Bytes{1}); }), PortFaultCode::kRemoved);
  EXPECT_EQ(FaultOf([&] { port.BytesIn(); }), PortFaultCode::kRemoved);
  EXPECT_EQ(FaultOf([&] { port.Open(3, "9600,O,8,1"); }), PortFaultCode::kMissing);

  const Pty again;
  device = again.Path();
  port.Open(3, "9600,O,8,1");
  again.Send(Bytes{9});
  EXPECT_EQ(Take(1), Bytes{9}) << "plugged in again it works";
}

TEST_F(QtSerialPortTest, AWriteAfterTheUnpluggingTellsAtOnceOrSoon) {
  Pty pty;
  device = pty.Path();
  port.Open(1, "9600,N,8,1");
  pty.Hangup();
  std::optional<PortFaultCode> fault;
  Until([&] { return (fault = FaultOf([&] { port.Write(Bytes{1, 2}); })).has_value(); });
  EXPECT_EQ(fault, PortFaultCode::kRemoved);
}

TEST_F(QtSerialPortTest, OneHolderADeviceUnderWhateverName) {
  const Pty pty;
  const Scratch scratch;
  const std::string alias = scratch.Path("ttyMeter");
  std::filesystem::create_symlink(pty.Path(), alias);
  device = alias;
  port.Open(1, "9600,N,8,1");
  for (const std::string& name : {alias, pty.Path()}) {
    QtSerialPort second([&](int /*number*/) { return name; });
    EXPECT_EQ(FaultOf([&] { second.Open(2, "9600,N,8,1"); }), PortFaultCode::kBusy) << name;
    EXPECT_FALSE(second.IsOpen());
  }
  pty.Send(Bytes{5});
  EXPECT_EQ(Take(1), Bytes{5}) << "the holder isn't disturbed";
  port.Close();
  QtSerialPort second([&](int /*number*/) { return pty.Path(); });
  EXPECT_EQ(FaultOf([&] { second.Open(2, "9600,N,8,1"); }), std::nullopt);
}

TEST_F(QtSerialPortTest, SaysWhyAPortDoesNotOpen) {
  const Pty pty;
  const Scratch scratch;
  std::ofstream(scratch.Path("file")).close();
  struct Case {
    const char* what;
    int number;
    std::string device;
    const char* settings;
    PortFaultCode code;
  };
  const std::vector<Case> cases{
      {"no number", 0, pty.Path(), "9600,O,8,1", PortFaultCode::kMissing},
      {"a number below", -3, pty.Path(), "9600,O,8,1", PortFaultCode::kMissing},
      {"no such device", 1, scratch.Path("ttyUSB7"), "9600,O,8,1", PortFaultCode::kMissing},
      {"a file", 1, scratch.Path("file"), "9600,O,8,1", PortFaultCode::kMissing},
      {"a folder", 1, scratch.Folder(), "9600,O,8,1", PortFaultCode::kMissing},
      {"nothing mapped, none of the system's", 9999, "", "9600,O,8,1", PortFaultCode::kMissing},
      {"no settings", 1, pty.Path(), "", PortFaultCode::kSettings},
      {"settings cut short", 1, pty.Path(), "9600,O,8", PortFaultCode::kSettings},
      {"more settings", 1, pty.Path(), "9600,O,8,1,", PortFaultCode::kSettings},
      {"a blank", 1, pty.Path(), "9600, O,8,1", PortFaultCode::kSettings},
      {"no speed", 1, pty.Path(), ",O,8,1", PortFaultCode::kSettings},
      {"speed 0", 1, pty.Path(), "0,O,8,1", PortFaultCode::kSettings},
      {"a sign", 1, pty.Path(), "+9600,O,8,1", PortFaultCode::kSettings},
      {"speed beyond int", 1, pty.Path(), "99999999999,O,8,1", PortFaultCode::kSettings},
      {"a strange parity", 1, pty.Path(), "9600,X,8,1", PortFaultCode::kSettings},
      {"nine data bits", 1, pty.Path(), "9600,O,9,1", PortFaultCode::kSettings},
      {"no stop bit", 1, pty.Path(), "9600,O,8,0", PortFaultCode::kSettings},
  };
  for (const Case& c : cases) {
    device = c.device;
    EXPECT_EQ(FaultOf([&] { port.Open(c.number, c.settings); }), c.code) << c.what;
    EXPECT_FALSE(port.IsOpen()) << c.what;
  }
}

TEST_F(QtSerialPortTest, ADeviceOfOthersIsNotAllowedRatherThanBusy) {
  const Pty pty;
  std::filesystem::permissions(pty.Path(), std::filesystem::perms(0600));
  device = pty.Path();
  const WithoutRights nobody;
  if (::access(pty.Path().c_str(), R_OK) == 0 && ::getuid() != 0)
    GTEST_SKIP() << "a user owns his own devices";
  EXPECT_EQ(FaultOf([&] { port.Open(1, "9600,N,8,1"); }), PortFaultCode::kNoPermission);
}

TEST_F(QtSerialPortTest, AClosedPortRefusesEverythingButClosing) {
  port.Close();
  EXPECT_EQ(FaultOf([&] { port.Write(Bytes{1}); }), PortFaultCode::kNotOpen);
  EXPECT_EQ(FaultOf([&] { port.BytesIn(); }), PortFaultCode::kNotOpen);
  EXPECT_EQ(FaultOf([&] { port.BytesOut(); }), PortFaultCode::kNotOpen);
  EXPECT_EQ(FaultOf([&] { port.TakeByte(); }), PortFaultCode::kNotOpen);
  EXPECT_EQ(FaultOf([&] { port.DiscardInput(); }), PortFaultCode::kNotOpen);
  EXPECT_EQ(FaultOf([&] { port.SetRts(true); }), PortFaultCode::kNotOpen);
}

}  // namespace
}  // namespace vlt
