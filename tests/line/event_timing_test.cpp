// SPDX-License-Identifier: GPL-3.0-or-later
// Event timing on a paced pseudo-terminal: the same contents as by the pattern, and the faults of a real
// port. How long anything takes is the bench's to tell.
#include <gtest/gtest.h>

#include <memory>

#include "host/host.h"
#include "link/port.h"
#include "link/registers.h"
#include "meter_program.h"

namespace vlt {
namespace {

class EventTimingLine : public testing::Test {
 protected:
  void Start(const QStringList& words) {
    meter = std::make_unique<MeterProgram>(words);
    app.state.PortNo = "1";
    app.state.Speed = "38400";
    app.state.CommSettings = "38400,E,8,1";
    app.state.RetryNo = 5;  // a loaded machine may let the meter wait
    app.state.EventTiming = true;
    ASSERT_TRUE(OpenPort(app));
  }
  RegisterData Read(int address, int count) {
    RegisterData data;
    EXPECT_TRUE(ReadRegisters(app, {.address = address, .count = count}, data)) << app.state.LastErrorText;
    return data;
  }

  std::unique_ptr<MeterProgram> meter;
  AnsweringDialogs dialogs;
  Host host{"", [this](int /*number*/) { return meter->Port(); }};
  Platform machine = host.With(dialogs);
  App app{machine};
};

TEST_F(EventTimingLine, ReadsWhatThePatternReads) {
  Start({"speed=38400", "fault=crc@00D0H", "fault=extra=3@00D0H#2", "fault=trickle=1@00D0H#3"});
  std::vector<RegisterData> events;
  for (int i = 0; i < 4; ++i) events.push_back(Read(0x00D0, 18));
  events.push_back(Read(0x0100, 2));
  app.state.EventTiming = false;
  for (int i = 0; i < 4; ++i) EXPECT_EQ(events[static_cast<std::size_t>(i)], Read(0x00D0, 18)) << i;
  EXPECT_EQ(events.back(), Read(0x0100, 2));
}

TEST_F(EventTimingLine, APlugThatComesOutEndsItAtOnce) {
  Start({"speed=38400", "fault=unplug=3@00D0H"});
  RegisterData data;
  EXPECT_FALSE(ReadRegisters(app, {.address = 0x00D0, .count = 18}, data));
  EXPECT_EQ(app.state.LastErrorText, "[RECEIVE ERROR(5)]");
  EXPECT_FALSE(app.state.PortIsOpen);
}

}  // namespace
}  // namespace vlt
