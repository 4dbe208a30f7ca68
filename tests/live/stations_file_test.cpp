// SPDX-License-Identifier: GPL-3.0-or-later
// Several stations in turn: the texts of values, and the file.
#include <algorithm>

#include "files/settings_file.h"
#include "live/stations_record.h"
#include "stations_fixture.h"

namespace vlt::test {
namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";

class StationsFileTest : public StationsTest {
 protected:
  std::string Log() { return Files().contains(Page().PvFileName) ? Files().at(Page().PvFileName) : ""; }
};

// Station 2 is English, station 3 tells no units, which takes a second more because a late reply to one query
// could be taken for that to the next, station 5 does not answer the second pass.
TEST_F(StationsFileTest, Golden) {
  AddStations({1});
  AddStations({2}, {.unit_system = 1});
  AddStations({3, 5});
  for (const char* words : {"1:value=1:flow:12.34567", "1:ras=1:0000", "2:value=1:flow:-0.5", "2:ras=1:8001",
                            "3:value=1:flow:nan", "3:ras=1:0002", "5:value=1:flow:100"}) {
    Act(words);
  }
  test.platform.Arm("silence/03:3*ever");
  test.platform.Arm("silence/04:5#2");
  Choose(0, kFlowPlace, 0, kAlarmPlace);
  Start("10", "/data/plant.csv");
  RunPasses(1);
  const char* const shown[][2] = {
      {"12.345", "Normal"}, {"-0.5", "E1:DEVICE ERROR 1"}, {"***", "E4:RANGE OVER"}, {"100", "Normal"}};
  const int boxes[] = {0, 1, 2, 4};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(Page().txtDisp1(boxes[i]).Text(), shown[i][0]);
    EXPECT_EQ(Page().txtDisp2(boxes[i]).Text(), shown[i][1]);
  }
  EXPECT_EQ(Page().lblUnit1(1).Caption(), "[gal/min]");
  EXPECT_EQ(Page().lblUnit1(2).Caption(), "[?]");
  RunPasses(2);
  EXPECT_EQ(Page().txtDisp2(4).Text(), "Communication Error");
  Page().cmdStop.Press();
  EXPECT_EQ(Log(),
            std::string(kMark) +
                "<PV Read>\r\n"
                "TIME,2026/11/24 10:00:00,Cycle,10,[sec]\r\n"
                "Station No.1,,,,CH1 FLOW RATE(m3/h),CH1 ERROR\r\n"
                "Station No.2,,,,CH1 FLOW RATE(gal/min),CH1 ERROR\r\n"
                "Station No.3,,,,CH1 FLOW RATE(Unit acquisition error),CH1 ERROR\r\n"
                "Station No.5,,,,CH1 FLOW RATE(m3/h),CH1 ERROR\r\n"
                "TIME,Station No.1 CH1 FLOW RATE(m3/h),Station No.1 CH1 ERROR,"
                "Station No.2 CH1 FLOW RATE(gal/min),Station No.2 CH1 ERROR,"
                "Station No.3 CH1 FLOW RATE(Unit acquisition error),Station No.3 CH1 ERROR,"
                "Station No.5 CH1 FLOW RATE(m3/h),Station No.5 CH1 ERROR\r\n"
                "2026/11/24 10:00:13,12.345,'0000000000000000,-0.5,'1000000000000001,***,'0000000000000010,"
                "100,'0000000000000000\r\n"
                "2026/11/24 10:00:23,12.345,'0000000000000000,-0.5,'1000000000000001,***,'0000000000000010,"
                "***,'***\r\n");
}

// Head and records agree whatever is shown: as many columns, each under its name.
TEST_F(StationsFileTest, EveryItemHasItsColumnUnderItsName) {
  AddStations({1, 2});
  Page().txtCycle.Type("2");
  for (int place = 0; place < kAllFields; ++place) {
    SCOPED_TRACE(place);
    app.windows.Load("Form12");
    Choose(1, place, 2, kAllFields - 1 - place);
    Files().clear();
    Start("2");
    RunPasses(1);
    Page().cmdStop.Press();
    const std::string log = Log();
    const auto columns = [](const std::string& line) { return std::ranges::count(line, ','); };
    const std::string record = log.substr(log.rfind('\n', log.size() - 2) + 1);
    const std::size_t names = log.rfind("TIME,");
    EXPECT_EQ(columns(record), 4);
    EXPECT_EQ(columns(log.substr(names, log.find('\r', names) - names)), 4);
    const std::string item = "Station No.2 CH2 " + app.Text(LiveFieldAt(place).head);
    EXPECT_NE(log.find(item, names), std::string::npos);
  }
}

// A meter that has no such register is not asked for it behind every poll.
TEST_F(StationsFileTest, AUnitThatNeverComesIsAskedForSeldom) {
  AddStations({1});
  test.platform.Arm("silence@0100H*ever");
  Choose(0, kFlowPlace, 0, -1);
  Start("2");
  const auto asked = [&] {
    return std::ranges::count_if(test.platform.TakeRequests(), [](const std::string& request) {
      return request.starts_with("01 03 01 00 00 01");
    });
  };
  asked();
  RunPasses(4);
  EXPECT_EQ(asked(), 4);
  RunPasses(24);
  EXPECT_EQ(asked(), 3);
  Page().cmdStop.Press();
  // Nor does it stand in the way of another one.
  Choose(0, kFlowPlace, 0, kAllFields - 1);
  test.platform.Arm("silence@04B4H*ever");
  Start("2");
  EXPECT_EQ(Page().lblUnit2(0).Caption(), "[?]");
  test.platform.line.faults().Clear();
  test.platform.Arm("silence@0100H*ever");
  RunPasses(1);
  EXPECT_EQ(Page().lblUnit1(0).Caption() + Page().lblUnit2(0).Caption(), "[?][degC]");
}

TEST_F(StationsFileTest, TheStampIsThatOfTheStart) {
  AddStations({1, 2});
  Choose(0, kFlowPlace, 0, -1);
  Start("2", "/data/run.csv");
  EXPECT_GT(Time().Now().second, 0) << "the units took their time";
  EXPECT_EQ(Page().PvFileName, "/data/run_20261124100000.csv");
  Page().cmdStop.Press();
  // A name that was given before the start too.
  test.platform.dialogs.SaveFile("/data/early.csv");
  EXPECT_TRUE(Page().cmdSaveCSV.Press());
  Time().RunFor(60'000);
  const std::string stamp = StampText(Time().Now());
  Start("2", std::nullopt);
  EXPECT_EQ(Page().PvFileName, "/data/early_" + stamp + ".csv");
}

}  // namespace
}  // namespace vlt::test
