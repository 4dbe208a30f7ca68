// SPDX-License-Identifier: GPL-3.0-or-later
// The files of the measure page: their names, their bytes, and what happens when they cannot be written.
#include <cmath>

#include "files/csv_log.h"
#include "measure_fixture.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

TEST(CsvNames, AreCutAtTheFirstPointAndStamped) {
  const LocalTime now{.year = 2026, .month = 1, .day = 2, .hour = 3, .minute = 4, .second = 5};
  const std::pair<const char*, const char*> rows[] = {
      {"/data/run", "/data/run_20260102030405.csv"},
      {"  /data/my run.csv ", "/data/my run_20260102030405.csv"},
      {"/data/run.old.csv", "/data/run_20260102030405.csv"},
      {"/my.data/run.csv", "/my_20260102030405.csv"},
      {"C:\\計測\\流量.csv", "C:\\計測\\流量_20260102030405.csv"},
  };
  for (const auto& [chosen, path] : rows) EXPECT_EQ(StampedCsvPath(chosen, now), path);
}

TEST(CsvNames, GetAFreshStampThatIsNotTakenYet) {
  MemoryFileSystem files;
  const LocalTime now{.year = 2027, .month = 12, .day = 31, .hour = 23, .minute = 59, .second = 58};
  const std::string old = "/data/run_20260102030405.csv";
  EXPECT_EQ(RestampedCsvPath(files, old, now), "/data/run_20271231235958.csv");
  files.files["/data/run_20271231235958.csv"];
  files.files["/data/run_20271231235959.csv"];
  EXPECT_EQ(RestampedCsvPath(files, old, now), "/data/run_20280101000000.csv");
  EXPECT_EQ(RestampedCsvPath(files, "short", now), "20271231235958.csv");
}

struct Golden {
  const MeterShape& shape;
  int lang_offset;
  const char* silence;  // of the last block of a cycle
  Texts lines;
};

// Every field with a value of its own; the first channel has what registers hold at their worst.
void PinValues(sim::Meter& meter) {
  using Q = sim::Quantity;
  for (int ch = 1; ch < kChannels; ++ch) {
    for (int q = 0; q <= static_cast<int>(Q::TempDifference); ++q) {
      meter.SetLive(ch, static_cast<Q>(q), ch * 100 + q + 0.0625);
    }
    meter.SetRas(ch, static_cast<std::uint16_t>(ch));
  }
  const std::pair<Q, double> worst[] = {
      {Q::Velocity, 1.2345},          {Q::Flow, -12345.6789},
      {Q::FlowPercent, std::nan("")}, {Q::PlusTotal, 123456789.98765},
      {Q::MinusTotal, -0.0},          {Q::PlusPulses, 2147483647},
      {Q::MinusPulses, -1},           {Q::Ras, 0x8001},
      {Q::ThermalPercent, INFINITY},  {Q::ThermalFlow, 1e20},
      {Q::TempDifference, -0.0009},   {Q::HeatingTotal, 2e15},
      {Q::HeatingPulses, 7},          {Q::CoolingTotal, 0.29},
      {Q::CoolingPulses, -7},         {Q::SupplyTemp, 45.6789},
      {Q::ReturnTemp, -INFINITY},
  };
  for (const auto& [quantity, value] : worst) meter.SetLive(0, quantity, value);
}

std::vector<Golden> Goldens();

// A good cycle, and one whose last block is not answered.
TEST(MeasureRecords, AreTheseBytes) {
  for (const Golden& golden : Goldens()) {
    SCOPED_TRACE(golden.shape.name);
    MeasureTest t(golden.shape, golden.lang_offset);
    t.files()["/app/VLT.ini"] = "[LINK]\r\nIDENTIFY=0\r\n";
    t.app().state.RetryNo = 0;
    PinValues(t.meter());
    t.StartRun();
    t.test.platform.Arm(golden.silence);
    t.RunCycles(2);
    EXPECT_EQ(t.Lines(), golden.lines);
  }
}

TEST(MeasureRecords, StartANewFileBehindTheLastOne) {
  MeasureTest t(kOneChannel);
  t.StartRun();
  const std::string first = t.page().MeasureFilePath;
  t.page().MeasureRecordCount = 31996;  // the first record is in the file
  t.RunCycles(3);
  EXPECT_EQ(t.page().MeasureRecordCount, 0);
  ASSERT_NE(t.page().MeasureFilePath, first);
  EXPECT_EQ(MeasureTest::LinesOf(t.files()[first]).size(), 2u + 3u);
  Texts head = MeasureTest::LinesOf(t.files()[first]);
  head.resize(2);
  EXPECT_EQ(t.Lines(), head);
  t.RunCycles(4);
  EXPECT_EQ(t.Lines().size(), 3u);
}

// The page names the file, what is in it and when the next one is due: 31998 records of a second each and
// their exchange, which has a tenth of one.
TEST(MeasureRecords, AreCountedOnThePageWithTheNextFile) {
  MeasureTest t(kOneChannel);
  const auto log = [&] { return t.page().LogBar.Panel(1); };
  EXPECT_EQ(log(), "");
  t.StartRun();
  t.RunCycles(1);
  EXPECT_EQ(
      log(),
      "run_20261124100000.csv: 1 recorded, next file after 31997 more, about 2026/11/24 18:53 (/data/)");
  t.RunCycles(3);
  EXPECT_TRUE(
      log().starts_with("run_20261124100000.csv: 3 recorded, next file after 31995 more, about 2026/11/24 1"))
      << log();
  EXPECT_GT(log().substr(log().find("24 1")), "24 18:53") << "cycles last longer than their seconds";
  t.page().MeasureRecordCount = 31997;
  t.RunCycles(4);
  const std::string name = t.page().MeasureFilePath.substr(6);
  EXPECT_NE(name, "run_20261124100000.csv");
  EXPECT_TRUE(log().starts_with(name + ": 0 recorded, next file after 31998 more")) << log();
  t.RunCycles(5);
  t.page().Stop.Press();
  EXPECT_EQ(log(), name + ": 1 recorded (/data/)");
}

TEST(MeasureRecords, AreLostOnlyWhileTheFileCannotBeWritten) {
  MeasureTest t(kOneChannel);
  MemoryFileSystem& files = t.test.platform.files;
  t.StartRun();
  const std::string path = t.page().MeasureFilePath;
  const std::string name = path.substr(6);
  files.FailPath(path, FileError::kFull);
  t.RunCycles(4);
  EXPECT_EQ(t.page().StatusBar2.Panel(2), "3 records could not be written to " + name + ": the disk is full");
  EXPECT_EQ(t.State(), "It is display acquisition data");
  files.FailPath(path, FileError::kGood);
  t.RunCycles(5);
  EXPECT_EQ(t.page().StatusBar2.Panel(2), "");
  EXPECT_EQ(t.Lines().size(), 2u + 2u);
  // The folder vanished and is back: the file begins again with its head.
  files.files.erase(path);
  files.FailPath(path, FileError::kMissing);
  t.RunCycles(6);
  EXPECT_EQ(t.page().StatusBar2.Panel(2),
            "1 records could not be written to " + name + ": the folder does not exist");
  files.FailPath(path, FileError::kGood);
  t.RunCycles(8);
  EXPECT_EQ(t.Lines().size(), 2u + 2u);
  EXPECT_EQ(t.page().MeasureRecordCount, 2);
}

TEST(MeasureRecords, AreNotAskedForWithoutAName) {
  MeasureTest t(kOneChannel);
  for (const char* path : {"", "  ", "***", " *** "}) {
    t.page().WriteMeasureHeader(path);
    t.page().AppendMeasureRecord(path, {}, {}, "");
  }
  EXPECT_TRUE(t.files().empty());
  EXPECT_EQ(t.page().MeasureRecordCount, 0);
}

// Heads and values of a channel, those with heat behind the others.
const char kHeads[] =
    "'VELOCITY[m/s],'FLOW RATE[m3/h],'FLOW RATE%[%],'+TOTAL(ACTUAL)[m3],'-TOTAL(ACTUAL)[m3],"
    "'+TOTAL PULSE[PULSE],'-TOTAL PULSE[PULSE],'ERROR,";
const char kHeatHeads[] =
    "'THERMAL FLOW(%)[%],'THERMAL FLOW[MJ/h],'TEMP DIFFERENCE[degC],'H:TOTAL(THERMAL)[MJ],"
    "'H:TOTAL PULSE(T)[PULSE],'C:TOTAL(THERMAL)[MJ],'C:TOTAL PULSE(T)[PULSE],'SUPPLY TEMP.[degC],"
    "'RETURN TEMP.[degC],";
const char kJapaneseHeads[] =
    "時刻,'流速[m/s],'流量[m3/"
    "h],'流量%[%],'+積算(実量)[m3],'-積算(実量)[m3],'+積算ﾊﾟﾙｽ[ﾊﾟﾙｽ],'-積算ﾊﾟﾙｽ[ﾊﾟﾙｽ],"
    "'ｴﾗｰ,'熱流量(%)[%],'熱流量[MJ/h],'温度差[℃],'温熱積算(熱量)[MJ],'温熱積算ﾊﾟﾙｽ[ﾊﾟﾙｽ],'冷熱積算(熱量)[MJ],"
    "'冷熱積算ﾊﾟﾙｽ[ﾊﾟﾙｽ],'往き温度[℃],'還り温度[℃],";
const char kWorst[] = "1.234,-12345.68,NaN,123456789.987,0,2147483647,-1,'1000000000000001,";
const char kWorstHeat[] = "INF,1E+20,0,2E+15,7,0.29,-7,45.678,-INF,";
const char kSecond[] = "100.062,101.062,102.062,103.062,104.062,105,106,'0000000000000001,";
const char kSecondHeat[] = "109.062,108.062,116.062,110.062,112,111.062,113,114.062,115.062,";
const char kThird[] = "200.062,201.062,202.062,203.062,204.062,205,206,'0000000000000010,";
const char kThirdHeat[] = "209.062,208.062,216.062,210.062,212,211.062,213,214.062,215.062,";
const char kFailed[] = "-,-,-,-,-,-,-,'-,";
const char kFailedHeat[] = "-,-,-,-,-,-,-,-,-,";

std::string Join(std::initializer_list<const char*> parts) {
  std::string line;
  for (const char* part : parts) line += part;
  return line;
}

std::vector<Golden> Goldens() {
  return {
      {kOneChannel,
       5000,
       "silence@0000",
       {"<The measurement data>", Join({"TIME,", kHeads}), Join({"2026/11/24 10:00:01,", kWorst}),
        Join({"2026/11/24 10:00:02,", kFailed, "[NO RESPONSE ERROR]"})}},
      {kOnePath,
       0,
       "silence@10C0",
       {"<測定データ>,<CH1>", kJapaneseHeads, Join({"2026/11/24 10:00:00,", kWorst, kWorstHeat}),
        Join({"2026/11/24 10:00:02,", kFailed, kFailedHeat, "[NO RESPONSE ERROR]"})}},
      {kTwoPaths,
       5000,
       "silence@2648",
       {"<The measurement data>,<CH1>,,,,,,,,,,,,,,,,,<CH2>,,,,,,,,,,,,,,,,,<CH3>",
        Join({"TIME,", kHeads, kHeatHeads, kHeads, kHeatHeads, kHeads, kHeatHeads}),
        Join({"2026/11/24 10:00:01,", kWorst, kWorstHeat, kSecond, kSecondHeat, kThird, kThirdHeat}),
        Join({"2026/11/24 10:00:02,", kWorst, kWorstHeat, kSecond, kSecondHeat, kFailed, kFailedHeat,
              "[NO RESPONSE ERROR]"})}},
      {kTwoPipes,
       5000,
       "silence@251C",
       {"<The measurement data>,<CH1>,,,,,,,,<CH2>,,,,,,,,<CH3>", Join({"TIME,", kHeads, kHeads, kHeads}),
        Join({"2026/11/24 10:00:00,", kWorst, kSecond,
              ",201.062,202.062,203.062,204.062,205,206,'0000000000000010,"}),
        Join({"2026/11/24 10:00:02,", kWorst, kSecond, kFailed, "[NO RESPONSE ERROR]"})}},
  };
}

}  // namespace
}  // namespace vlt::test
