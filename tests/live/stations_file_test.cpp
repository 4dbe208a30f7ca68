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

// Station 2 is English, station 3 tells no units, station 5 does not answer the second pass.
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
                "2026/11/24 10:00:12,12.345,'0000000000000000,-0.5,'1000000000000001,***,'0000000000000010,"
                "100,'0000000000000000\r\n"
                "2026/11/24 10:00:22,12.345,'0000000000000000,-0.5,'1000000000000001,***,'0000000000000010,"
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

TEST_F(StationsFileTest, HeatOfTheSecondDisplayIsReadOnTheFirstOnesChannel) {
  AddStations({1});
  Act("1:value=1:supply:55.5");
  Choose(0, kFlowPlace, 0, 15);
  Start("2");
  RunPasses(1);
  EXPECT_EQ(Page().txtDisp2(0).Text(), "55.5");
}

TEST_F(StationsFileTest, NameIsOfOneRunAndItsFolderIsKept) {
  AddStations({1});
  Choose(0, kFlowPlace, 0, -1);
  test.platform.dialogs.SaveFile("/plant/water.csv");
  EXPECT_TRUE(Page().cmdSaveCSV.Press());
  EXPECT_EQ(test.platform.dialogs.questions.back().title, "Specify a saving file name");
  EXPECT_EQ(Page().PvFileName, "/plant/water_20261124100000.csv");
  EXPECT_NE(Files().at("/app/VLT.ini").find("PV_DIR=/plant"), std::string::npos);
  // A cancelled question leaves the name that was given before.
  Start("1", std::nullopt);
  EXPECT_EQ(test.platform.dialogs.questions.back().folder, GetPvCsvDir(app));
  RunPasses(2);
  Page().cmdStop.Press();
  EXPECT_EQ(std::ranges::count(Log(), '\n'), 4 + 2);
  const std::string first = Log();
  // The next run without a name is not recorded.
  Start("1", std::nullopt);
  EXPECT_EQ(Page().StatusBar2.Panel(3), "Not recorded in a file");
  RunPasses(1);
  Page().cmdStop.Press();
  EXPECT_EQ(Files().at("/plant/water_20261124100000.csv"), first);
  // The file of the settings is refused.
  test.platform.dialogs.SaveFile("/app/VLT.ini");
  test.platform.dialogs.Answer(MessageAnswer::kOk);
  EXPECT_TRUE(Page().cmdSaveCSV.Press());
  EXPECT_EQ(test.platform.dialogs.TakeTexts().back(), "The loader early stage file can not be updated");
  // A file of that name asks; without leave the run gets a fresh name.
  Files()["/plant/again_" + StampText(Time().Now()) + ".csv"] = "old";
  const std::string taken = Files().rbegin()->first;
  test.platform.dialogs.SaveFile("/plant/again");
  test.platform.dialogs.Answer(MessageAnswer::kCancel);
  EXPECT_TRUE(Page().cmdSaveCSV.Press());
  EXPECT_EQ(test.platform.dialogs.TakeTexts().back(), "File already exists. Do you want to overwrite it?");
  Start("1", std::nullopt);
  RunPasses(1);
  EXPECT_NE(Page().PvFileName, taken);
  EXPECT_EQ(std::ranges::count(Log(), '\n'), 4 + 1);
}

TEST_F(StationsFileTest, LostRecordsAreToldAndTheRunGoesOn) {
  AddStations({1});
  Choose(0, kFlowPlace, 0, -1);
  Start("1");
  test.platform.files.FailChange(1, FileError::kFull);
  RunPasses(1);
  EXPECT_NE(Page().StatusBar2.Panel(3).find('1'), std::string::npos);
  EXPECT_NE(Page().StatusBar2.Panel(3), "run_20261124100000.csv");
  RunPasses(2);
  EXPECT_TRUE(Page().StatusBar2.Panel(3).starts_with("run_"));
}

}  // namespace
}  // namespace vlt::test
