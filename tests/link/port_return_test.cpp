// SPDX-License-Identifier: GPL-3.0-or-later
// A lost adapter among those that the machine has, and what the next operation opens.
#include "link/port_return.h"

#include <gtest/gtest.h>

#include "link/port.h"
#include "meter/meter_mark.h"
#include "support/plug_board.h"
#include "support/test_app.h"

namespace vlt::test {
namespace {

using Ports = std::vector<PortInfo>;

const PortInfo kNumbered = Adapter("/dev/ttyUSB0", "A1");
const PortInfo kPlain = Adapter("/dev/ttyUSB0", "");

struct SightCase {
  const char* what;
  PortInfo adapter;
  bool twins;
  Ports present;
  Sight sight;
  const char* device;
};

PortInfo OtherMaker(PortInfo port) {
  port.maker = "Other";
  return port;
}

TEST(FindAdapter, TellsWhichOneItIsOrThatNothingTells) {
  const SightCase cases[] = {
      {"nothing is there", kNumbered, false, {}, Sight::kAway, ""},
      {"as before", kNumbered, false, {kNumbered}, Sight::kThere, "/dev/ttyUSB0"},
      {"another name", kNumbered, false, {Adapter("/dev/ttyUSB7", "A1")}, Sight::kThere, "/dev/ttyUSB7"},
      {"another one has its name", kNumbered, false, {Adapter("/dev/ttyUSB0", "B2")}, Sight::kAway, ""},
      {"its name went to another one",
       kNumbered,
       false,
       {Adapter("/dev/ttyUSB0", "B2"), Adapter("/dev/ttyUSB1", "A1")},
       Sight::kThere,
       "/dev/ttyUSB1"},
      {"the number of another make", kNumbered, false, {OtherMaker(kNumbered)}, Sight::kAway, ""},
      {"one number twice", kNumbered, false, {kNumbered, Adapter("/dev/ttyUSB1", "A1")}, Sight::kUnsure, ""},
      {"no number, alone, its name", kPlain, false, {kPlain, kNumbered}, Sight::kThere, "/dev/ttyUSB0"},
      {"no number, another name", kPlain, false, {Adapter("/dev/ttyUSB1", "")}, Sight::kUnsure, ""},
      {"no numbers, two", kPlain, false, {kPlain, Adapter("/dev/ttyUSB1", "")}, Sight::kUnsure, ""},
      {"two were seen before", kPlain, true, {kPlain}, Sight::kUnsure, ""},
      {"not listed", {}, false, {}, Sight::kUnlisted, ""},
      {"not listed before, now it is", {}, false, {kPlain}, Sight::kUnsure, ""},
  };
  for (const SightCase& c : cases) {
    SCOPED_TRACE(c.what);
    const LostPort lost{.port = 1, .device = "/dev/ttyUSB0", .adapter = c.adapter, .twins = c.twins};
    const Sighting found = FindAdapter(lost, c.present);
    EXPECT_EQ(found.sight, c.sight);
    EXPECT_EQ(found.device, c.device);
  }
}

class PortReturnTest : public ::testing::Test {
 protected:
  PortReturnTest() { test.platform.line.SetMaster({9600, 'O'}); }
  bool Read() {
    RegisterData data;
    return ReadRegisters(app, {.address = 0x0148, .count = 1}, data).ok;
  }
  TestApp test;
  App& app = test.app;
  PlugBoard board{test.platform, app};
};

TEST_F(PortReturnTest, TheNextOperationOpensTheAdapterWhereverItIs) {
  board.Plug(kNumbered);
  ASSERT_TRUE(OpenPort(app));
  EXPECT_EQ(app.state.Lost.adapter.serial_number, "A1");
  board.Unplug("/dev/ttyUSB0");
  EXPECT_FALSE(Read());
  EXPECT_EQ(app.state.LastErrorText, "[RECEIVE ERROR(5)]");
  EXPECT_TRUE(IsPortLost(app));
  EXPECT_FALSE(OpenPort(app));

  board.Plug(Adapter("/dev/ttyUSB4", "A1"));
  ASSERT_TRUE(OpenPort(app));
  EXPECT_EQ(app.state.OpenedDevice, "/dev/ttyUSB4");
  EXPECT_FALSE(IsPortLost(app));
  EXPECT_TRUE(Read());

  // And back to its old name.
  board.Unplug("/dev/ttyUSB4");
  EXPECT_FALSE(Read());
  board.Plug(kNumbered);
  ASSERT_TRUE(OpenPort(app));
  EXPECT_EQ(app.state.OpenedDevice, "/dev/ttyUSB0");
  EXPECT_TRUE(app.state.MovedPorts.empty());

  // What the operator assigns counts more than where it was seen.
  board.Unplug("/dev/ttyUSB0");
  EXPECT_FALSE(Read());
  board.Plug(Adapter("/dev/ttyUSB4", "A1"));
  ASSERT_TRUE(OpenPort(app));
  SetPortDevice(app, 1, "/dev/ttyUSB9");
  EXPECT_EQ(PortDeviceInForce(app, 1), "/dev/ttyUSB9");
}

TEST_F(PortReturnTest, AnotherAdapterIsOpenedByTheOperatorOnly) {
  board.Plug(kPlain);
  ASSERT_TRUE(OpenPort(app));
  board.Unplug("/dev/ttyUSB0");
  ASSERT_TRUE(IsPortLost(app)) << "noticed without an exchange";
  EXPECT_FALSE(app.state.PortIsOpen);
  // Its twin shows itself, and from then on nothing tells the two apart.
  board.Plug(kPlain);
  test.platform.process.ports.push_back(Adapter("/dev/ttyUSB1", ""));
  EXPECT_FALSE(OpenFound(app, LookForPort(app)));
  test.platform.process.ports.pop_back();
  EXPECT_FALSE(OpenFound(app, LookForPort(app)));
  EXPECT_FALSE(LookForPortInTurn(app)) << "not more often than once a second";
  EXPECT_TRUE(OpenPort(app)) << "the operator chose COM1, and that is what the settings say";
}

TEST_F(PortReturnTest, AMeterProvesItselfByWhatItHasTold) {
  board.Plug(kNumbered);
  ASSERT_TRUE(OpenPort(app));
  struct Case {
    MeterMark mark;
    MeterProof proof;
    const char* differs;
  };
  const Case cases[] = {
      {{}, MeterProof::kSame, ""},
      {{.unit_system = 0, .specification = 81, .id_number = 1}, MeterProof::kSame, ""},
      {{.id_number = 7}, MeterProof::kOther, "ID No. 0001 in place of 0007"},
      {{.specification = 182}, MeterProof::kOther, "specification 0081 in place of 0182"},
      {{.unit_system = 1}, MeterProof::kOther, "unit system 0000 in place of 0001"},
  };
  for (const Case& c : cases) {
    MeterMark mark = c.mark;
    const MeterAnswer answer = ProveMeter(app, OwnStation(app, kModeUnitQuery), mark);
    EXPECT_EQ(answer.proof, c.proof) << c.differs;
    EXPECT_EQ(answer.why, c.differs);
    if (c.proof == MeterProof::kSame) {
      EXPECT_EQ(mark.id_number, 1) << "learnt";
    }
  }
  // A number that was just written is not held against the meter.
  app.state.MeterIdNo = "0001";
  const std::uint8_t seven[] = {0, 7};
  WriteRegisters(app, 0x0104, seven);
  EXPECT_FALSE(KnownMark(app.state).id_number.has_value());
  test.platform.Arm("silence*ever");
  MeterMark mark;
  const MeterAnswer silent = ProveMeter(app, OwnStation(app, kModeUnitQuery), mark);
  EXPECT_EQ(silent.proof, MeterProof::kSilent);
  EXPECT_EQ(silent.why, "[NO RESPONSE ERROR]");
}

}  // namespace
}  // namespace vlt::test
