#include "host/port_switch.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>

#include "host/qt_event_queue.h"

namespace vlt {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Station 1 is asked for the word at 0148H, the meter's specification.
const Bytes kQuestion{0x01, 0x03, 0x01, 0x48, 0x00, 0x01, 0x04, 0x20};
constexpr int kAnswerLength = 7;

class PortSwitchTest : public testing::Test {
 protected:
  // Asks and waits for the answer's length, at most `ms`.
  Bytes Ask(const Bytes& question, int ms = 5000) {
    port.DiscardInput();
    port.Write(question);
    const std::int64_t end = clock.NowMs() + ms;
    while (port.BytesIn() < kAnswerLength && clock.NowMs() < end) queue.GiveWay(end);
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
                                     {3, "simulator speed=19200"},
                                     {4, "simulator model=strange"},
                                     {5, "simulators"},
                                     {6, "simulator parity=E"}};
  QtClock clock;
  QtEventQueue queue{clock};
  PortSwitch port{clock, queue, [this](int number) { return devices[number]; }};
};

TEST_F(PortSwitchTest, TheSimulatedMeterAnswersAtTheSpeedOfTheLine) {
  port.Open(1, "38400,O,8,1");
  const std::int64_t start = clock.NowMs();
  const Bytes answer = Ask(kQuestion);
  ASSERT_EQ(answer.size(), static_cast<std::size_t>(kAnswerLength));
  EXPECT_EQ((Bytes{answer.begin(), answer.begin() + 5}), (Bytes{0x01, 0x03, 0x02, 0x00, 182}));
  // 15 characters of 11 bits, and the giving way ends with the last of them.
  EXPECT_GE(clock.NowMs(), start + 4);
  EXPECT_LT(clock.NowMs(), start + 2000);
}

TEST_F(PortSwitchTest, TheFrameIsOutWhenTheLineHasCarriedIt) {
  port.Open(1, "9600,O,8,1");
  port.Write(kQuestion);
  EXPECT_EQ(port.BytesOut(), 8);
  const std::int64_t start = clock.NowMs();
  while (port.BytesOut() > 0 && clock.NowMs() < start + 5000) queue.GiveWay(start + 5000);
  EXPECT_GE(clock.NowMs(), start + 8);  // 9.2 ms, less the millisecond that had begun
  EXPECT_LT(clock.NowMs(), start + 4000);
  EXPECT_EQ(port.BytesIn(), 0);
}

TEST_F(PortSwitchTest, AMeterKeepsWhatWasWrittenWhileThePortIsClosed) {
  // The outer diameter of CH1 becomes 0.0001 of its unit more or less: the value itself doesn't matter.
  const Bytes read{0x01, 0x03, 0x01, 0x04, 0x00, 0x01, 0xC4, 0x37};
  const Bytes write{0x01, 0x06, 0x01, 0x04, 0x00, 0x07, 0x88, 0x35};
  port.Open(1, "38400,O,8,1");
  ASSERT_EQ(Ask(write, 200).size(), 8U);
  port.Open(1, "38400,E,8,1");
  const Bytes answer = Ask(read);
  ASSERT_GE(answer.size(), 5U);
  EXPECT_EQ(answer[4], 7);
}

TEST_F(PortSwitchTest, AMeterOfAnotherSpeedOrParityHearsGarbage) {
  port.Open(3, "19200,O,8,1");
  EXPECT_EQ(Ask(kQuestion).size(), 7U);
  port.Open(3, "9600,O,8,1");
  EXPECT_TRUE(Ask(kQuestion, 60).empty());
  port.Open(6, "38400,O,8,1");
  EXPECT_TRUE(Ask(kQuestion, 60).empty());
  port.Open(6, "38400,E,8,1");
  EXPECT_EQ(Ask(kQuestion).size(), 7U);
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

TEST(SimulatedPort, TheUnpluggedLineClosesThePortAndSaysSo) {
  QtClock clock;
  QtEventQueue queue(clock);
  sim::LineShelf shelf;
  sim::SimulatedPort port(clock, queue, [&](int) { return shelf.Find("simulator", 0); });
  port.Open(1, "9600,O,8,1");
  sim::Line* line = port.OpenLine();
  port.Write(kQuestion);
  line->Unplug(clock.NowMs() * 1000);
  EXPECT_THROW(port.BytesIn(), PortFault);
  EXPECT_FALSE(port.IsOpen());
  for (int attempt = 0; attempt < 2; ++attempt) {
    try {
      port.Write(kQuestion);
      ADD_FAILURE() << "the line is gone";
    } catch (const PortFault& fault) {
      EXPECT_EQ(fault.Code(), PortFaultCode::kRemoved);
    }
  }
  EXPECT_THROW(port.Open(1, "9600,O,8,1"), PortFault);
  line->Plug(clock.NowMs() * 1000);
  port.Open(1, "9600,O,8,1");
  EXPECT_EQ(port.BytesIn(), 0);
}

}  // namespace
}  // namespace vlt
