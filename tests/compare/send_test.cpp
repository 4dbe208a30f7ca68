// SPDX-License-Identifier: GPL-3.0-or-later
// Rows sent to a meter: the order, the proof of each, what is never sent, and restore points.
#include <algorithm>
#include <array>
#include <cstdint>

#include "bench/soak/round_soak.h"
#include "bench/soak/write_soak.h"
#include "compare/row_list.h"
#include "compare_fixture.h"
#include "link/port.h"
#include "meter/proven_write.h"
#include "meter/single_read.h"
#include "pages/parameter_page.h"

namespace vlt::test {
namespace {

using Texts = std::vector<std::string>;

const SentRow& RowAt(const SendReport& report, const char* name, int index = 0) {
  return *std::find_if(report.rows.begin(), report.rows.end(),
                       [&](const SentRow& row) { return row.place == At(name, index); });
}

bool AllStored(const SendReport& report) {
  return !report.rows.empty() && report.Count(WriteEnd::kStored) == report.rows.size();
}

bool IsWrite(const std::string& request) { return request.starts_with("10 ") || request.starts_with("06 "); }

// Function, address and quantity of a request: a page sends numbers as it shows them, to fewer digits.
std::string Head(const std::string& request) {
  return request.substr(0, request.starts_with("10 ") ? 14 : 8);
}

Texts Writes(const Texts& requests) {
  Texts writes;
  std::copy_if(requests.begin(), requests.end(), std::back_inserter(writes), IsWrite);
  return writes;
}

// --- order and frames

// What a page writes when all of it is set, is written by the sender in the same frames and the same order.
TEST(Sender, WritesAsThePagesWrite) {
  constexpr const char* kPages[] = {"Form6", "Form10", "Form2", "Form3", "Form4", "Form5", "Form11"};
  CompareTest test(kTwoPaths);
  test.meter().holding().PutWord(0x00C0, 1);  // the one item that has a decimal point
  test.meter().holding().PutWord(0x00C4, 1);
  test.meter().holding().PutWord(0x005A, 5);  // DO1 is a flow switch
  test.meter().holding().PutWord(0x00C8, 1);  // the backlight goes out
  test.meter().holding().PutWord(0x0042, 1);  // the totals stand still
  for (const std::uint32_t control : {0x0190u, 0x0194u, 0x01A2u}) test.meter().holding().PutWord(control, 1);
  const CompareSide side = test.Meter();
  Texts by_pages;
  for (const char* name : kPages) {
    auto& page = test.Open<ParameterPage>(name);
    for (const auto& column : page.Columns()) {
      for (int round = 0; round < 2; ++round) {
        for (CheckBox* box : column->DistinctBoxes()) box->SetValue(box->Name() == "SPEC" ? 0 : 1);
        column->ReadParameter_Click();
      }
      if (auto* action = static_cast<CheckBox*>(page.Find("MODE_DO_1"))) action->Tick();
      test.Requests();
      column->SetParameter_Click();
      for (const std::string& write : Writes(test.Requests())) by_pages.push_back(Head(write));
    }
    test.app().windows.Unload(name);
  }
  std::vector<ParameterPlace> places;
  for (const SideCell& cell : side.cells) {
    if (cell.place.row->Sending() != SendRule::kNever) places.push_back(cell.place);
  }
  std::reverse(places.begin(), places.end());
  test.Requests();
  const SendReport report = test.Send(side, places);
  Texts by_sender = Writes(test.Requests());
  for (std::string& write : by_sender) write = Head(write);
  EXPECT_EQ(report.rows.size(), places.size());
  EXPECT_GT(by_pages.size(), 80u);
  auto at = by_sender.begin();
  for (const std::string& write : by_pages) {
    const auto next = std::find(at, by_sender.end(), write);
    EXPECT_NE(next, by_sender.end()) << write
                                     << (std::count(by_sender.begin(), by_sender.end(), write) > 0
                                             ? " is written, but out of order"
                                             : " is not written");
    if (next != by_sender.end()) at = next + 1;
  }
}

TEST(Sender, ReadsTheMeterAndKeepsItBeforeTheFirstWrite) {
  CompareTest test(kTwoPipes);
  CompareSide side = test.Meter();
  test.Fill(8);
  const std::string before = SnapshotText(test.Read());
  test.Requests();
  test.test.platform.files.changes.clear();
  std::size_t changes_at_first_write = 0;
  SendListener listener;
  listener.ended = [&](const SentRow&) {
    if (changes_at_first_write == 0) changes_at_first_write = test.test.platform.files.changes.size();
  };
  const SendReport report =
      SendRows(test.app(), side, {At("process.fluid", 1), At("range.type", 2)}, listener);
  EXPECT_TRUE(AllStored(report));
  EXPECT_EQ(changes_at_first_write, test.test.platform.files.changes.size())
      << "nothing is written behind a write";
  const std::string path = "/home/operator/veltrano3/restore/" + std::string("20261124100006_00_") +
                           report.before.identity.id_number + ".txt";
  EXPECT_EQ(report.restore_point, path);
  ASSERT_TRUE(test.Files().contains(path));
  const Texts kept = Lines(test.Files()[path]);
  const Texts held = Lines(before);
  ASSERT_EQ(kept.size(), held.size());
  EXPECT_TRUE(std::equal(kept.begin() + 2, kept.end(), held.begin() + 2)) << "but for the date";
  const Texts requests = test.Requests();
  const auto first = std::find_if(requests.begin(), requests.end(), IsWrite);
  EXPECT_EQ(first - requests.begin(), 31) << "the blocks of a whole reading come first";
  EXPECT_EQ(Texts(first, requests.end()).size(), 4u) << "and each row is read back";
}

// --- the proof of a write

struct Proof {
  const char* fault;
  WriteEnd end;
  const char* reason;
};

TEST(Sender, EachRowEndsAsWhatItsRegistersSay) {
  // The burnout timer of CH1: 001CH, 4509 in the source, 77 in the meter.
  const Proof cases[] = {
      {"", WriteEnd::kStored, ""},
      {"silence@001C/10*2", WriteEnd::kStored, ""},
      {"crc@001C/10*ever", WriteEnd::kStored, ""},  // the meter took it; its registers prove it
      {"wrong-echo@001C/10*ever", WriteEnd::kStored, ""},
      {"crc@001C/03*3", WriteEnd::kStored, ""},
      {"ignore-write@001C", WriteEnd::kNotProven, "the meter holds 77"},
      {"exception=3@001C/10*ever", WriteEnd::kRefused, "[REGISTER COUNT ERROR(03H)]"},
      {"exception=6@001C/10*ever", WriteEnd::kRefused, "[UNKNOWN FUNCTION CODE ERROR]"},
      {"crc@001C/03*ever", WriteEnd::kNotProven, "it could not be read back: [CRC ERROR]"},
      {"exception=2@001C/03*ever", WriteEnd::kNotProven, "it could not be read back: [ADDRESS ERROR(02H)]"},
  };
  for (const Proof& c : cases) {
    SCOPED_TRACE(c.fault);
    CompareTest test(kOnePath);
    const CompareSide side = test.Meter();
    test.meter().holding().PutWord(0x001C, 77);
    if (*c.fault != 0) test.test.platform.Arm(c.fault);
    const SendReport report = test.Send(side, {At("range.burnout_timer"), At("range.output_limit_low")});
    const SentRow& row = RowAt(report, "range.burnout_timer");
    EXPECT_EQ(row.end, c.end);
    EXPECT_EQ(row.reason, c.reason);
    EXPECT_EQ(row.sent, "4509");
    EXPECT_EQ(row.end == WriteEnd::kStored, test.meter().holding().Word(0x001C) == 4509 &&
                                                std::string(c.fault).find("/03*ever") == std::string::npos);
    EXPECT_EQ(RowAt(report, "range.output_limit_low").end, WriteEnd::kStored) << "the others go on";
    EXPECT_EQ(report.halt, SendHalt::kDone);
  }
  CompareTest silent(kOnePath);
  const CompareSide side = silent.Meter();
  silent.meter().holding().PutWord(0x001C, 77);
  silent.test.platform.Arm("silence@001C/10*ever");
  const SendReport report = silent.Send(side, {At("range.burnout_timer")});
  EXPECT_EQ(report.rows[0].end == WriteEnd::kStored, silent.meter().holding().Word(0x001C) == 4509);
}

// The meter does not answer in time, and its late answer must not pass for that of the next question.
TEST(Sender, ALateAnswerProvesNothing) {
  for (int late = 20; late < 1200; late += 37) {
    CompareTest test(kOnePath);
    CompareSide side = test.Meter();
    const auto fault = "late=" + std::to_string(late) + "/03#36*6";
    test.Fill(9);
    test.test.platform.Arm(fault);
    test.test.platform.Arm("ignore-write@001C");
    const SendReport report =
        test.Send(side, {At("range.burnout_timer"), At("range.output_limit_low"), At("range.hysteresis")});
    for (const SentRow& row : report.rows) {
      if (row.end != WriteEnd::kStored) continue;
      const auto held = test.meter().holding().Read(static_cast<std::uint32_t>(row.place.Address()), 2);
      EXPECT_TRUE(std::equal(row.raw.begin(), row.raw.end(), held.begin()))
          << fault << " " << row.place.row->name;
    }
  }
}

// Backlight and its time go in one frame, as the display page writes them.
TEST(Sender, TheBacklightAndItsTimeGoTogether) {
  CompareTest test(kOnePath);
  test.meter().holding().PutWord(0x00C8, 1);
  test.meter().holding().PutWord(0x00CA, 7);
  const CompareSide side = test.Meter();
  test.meter().holding().PutWord(0x00C8, 0);
  test.meter().holding().PutWord(0x00CA, 5);
  test.Requests();
  EXPECT_TRUE(AllStored(test.Send(side, {At("display.lights_out_time"), At("display.backlight")})));
  EXPECT_EQ(Writes(test.Requests()),
            (Texts{"10 00 C8 00 02 04 00 01 00 05", "10 00 C8 00 02 04 00 01 00 07"}));
  EXPECT_EQ(test.meter().holding().Word(0x00CA), 7);
}

// --- what is not sent

TEST(Sender, NeverSendsWhatWouldClearOrTestOrWhatHasNoValue) {
  CompareTest test(kTwoPaths);
  CompareSide side = test.Meter();
  side.cells.erase(std::find_if(side.cells.begin(), side.cells.end(),
                                [](const SideCell& cell) { return cell.place == At("process.fluid"); }));
  auto& type = *std::find_if(side.cells.begin(), side.cells.end(),
                             [](const SideCell& cell) { return cell.place == At("range.type"); });
  type.raw.clear();
  type.problem = "no answer";
  test.meter().BreakMemory(sim::Space::Holding, 0x0190, 0x0191, 2);
  test.Requests();
  const SendReport report =
      test.Send(side, {At("system.specification"), At("maintenance.test_mode"), At("maintenance.ao_check"),
                       At("process.sensor_spacing"), At("process.fluid"), At("range.type"),
                       At("details.send_pattern")});
  EXPECT_EQ(Writes(test.Requests()), Texts{});
  EXPECT_EQ(report.Count(WriteEnd::kNotSent), 7u);
  EXPECT_EQ(RowAt(report, "system.specification").reason,
            "it would clear the meter's memory: never sent with others");
  EXPECT_EQ(RowAt(report, "maintenance.test_mode").reason,
            "it would put the meter into its test state: never sent with others");
  EXPECT_EQ(RowAt(report, "process.sensor_spacing").reason, "the meter works it out itself");
  EXPECT_EQ(RowAt(report, "process.fluid").reason, "there is no value to send");
  EXPECT_EQ(RowAt(report, "range.type").reason, "no answer");
  EXPECT_EQ(RowAt(report, "details.send_pattern").reason,
            "its present value could not be read, so it could not be restored");
}

TEST(Sender, AllThatDiffersLeavesOutWhatBelongsToOneMeter) {
  CompareTest source(kTwoPaths);
  CompareTest target(kTwoPaths, 5000, 8);
  const Comparison other(source.Meter(), target.Meter());
  const auto chosen = ChooseDifferent(other);
  const auto has = [](const std::vector<ParameterPlace>& places, const char* name) {
    return std::find(places.begin(), places.end(), At(name)) != places.end();
  };
  EXPECT_FALSE(has(chosen, "system.id_number") || has(chosen, "maintenance.ao1_adjustment_4ma"));
  EXPECT_FALSE(has(chosen, "maintenance.ao_check") || has(chosen, "system.specification"));
  EXPECT_TRUE(has(chosen, "process.outer_diameter"));
  // The same meter takes its own adjustment back.
  target.meter().holding().PutWord(0x0104, source.meter().holding().Word(0x0104));
  EXPECT_TRUE(
      has(ChooseDifferent(Comparison(source.Meter(), target.Meter())), "maintenance.ao1_adjustment_4ma"));
}

// Units go first, and what cannot be turned into those of the meter stays.
TEST(Sender, WhatAnotherUnitSystemMeansIsConvertedOrLeft) {
  CompareTest metric({"metric", kFull, 0, 0});
  metric.meter().holding().PutLong(0x00D2, 5080);  // 2 inches
  metric.meter().holding().PutLong(0x00DA, 381);   // 0.15 inch
  metric.meter().holding().PutLong(0x00E2, 100);   // no even number of inches
  const CompareSide side = metric.Meter();
  const std::vector<ParameterPlace> lengths = {At("process.outer_diameter"), At("process.wall_thickness"),
                                               At("process.lining_thickness")};
  CompareTest english({"English", kFull, 0, 1}, 5000, 8);
  SendReport report = english.Send(side, lengths);
  EXPECT_EQ(report.Count(WriteEnd::kStored), 2u);
  EXPECT_TRUE(RowAt(report, "process.outer_diameter").converted);
  EXPECT_EQ(RowAt(report, "process.outer_diameter").sent, "2.0000");
  EXPECT_EQ(english.meter().holding().Long(0x00D2), 20000);
  EXPECT_EQ(RowAt(report, "process.lining_thickness").reason,
            "1.00 mm has no exact value in the meter's unit inch");
  // With the unit system chosen too, the meter is metric by then.
  std::vector<ParameterPlace> all = lengths;
  all.push_back(At("system.unit"));
  report = english.Send(side, all);
  EXPECT_TRUE(AllStored(report));
  EXPECT_EQ(english.meter().holding().Long(0x00E2), 100);
  EXPECT_EQ(english.app().state.UnitFlag, 0) << "and the session knows";
}

// A row that decides what others mean, sent with one of those: that goes by what the meter is then, byte for
// byte. Without it the value is another one there, or stays.
TEST(Sender, WhatARowDecidesHoldsForTheRowsBehindIt) {
  const struct {
    const char* row;
    int here, there;  // the code in the source and in the meter
    const char* other;
    int code = 0;  // of a list; a number is 12.5
  } cases[] = {
      {"range.kind", 0, 1, "range.full_scale_1"},
      {"range.unit", 8, 7, "range.full_scale_1"},
      {"total.unit", 2, 1, "total.rate"},
      {"heat.flow_unit", 0, 1, "range.thermal_full_scale_1"},
      {"heat.total_unit", 0, 1, "total.thermal_rate"},
      {"heat.temperature_unit", 0, 1, "heat.change_temperature"},
      {"status.channel", 0, 1, "status.flow_switch_high"},
      {"system.operation_mode", 0, 1, "details.send_count", 6},
      {"system.measurement_mode", 0, 2, "system.ao1_source", 3},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.row);
    CompareTest test(kOnePath);
    auto& holding = test.meter().holding();
    const auto register_of = [](const char* name) { return static_cast<std::uint32_t>(At(name).Address()); };
    for (const std::uint32_t kind : {0x0002u, 0x138Au}) holding.PutWord(kind, 1);
    holding.PutWord(0x0004, 8);  // m3/h
    holding.PutWord(0x138C, 7);  // m3/min
    holding.PutWord(0x04A8, 0);
    holding.PutWord(register_of(c.row), c.here);
    if (c.code != 0) {
      holding.PutWord(register_of(c.other), c.code);
    } else {
      holding.PutDouble(register_of(c.other), 12.5);
    }
    const CompareSide side = test.Meter();
    holding.PutWord(register_of(c.row), c.there);
    const SentRow alone = RowAt(test.Send(side, {At(c.other)}), c.other);
    EXPECT_TRUE(alone.converted || alone.end == WriteEnd::kNotSent);
    const SendReport report = test.Send(side, {At(c.other), At(c.row)});
    EXPECT_TRUE(AllStored(report)) << RowAt(report, c.other).reason;
    EXPECT_EQ(RowAt(report, c.other).raw, side.Find(At(c.other))->raw);
  }
}

// What the window says of the value is what is sent.
TEST(Sender, AnOutputGoesByTheUnitOfTheChannelThatItFollows) {
  CompareTest test(kTwoPipes);
  auto& holding = test.meter().holding();
  const ParameterPlace place = At("status.flow_switch_high");
  const auto set = [&](int channel, int unit_of_second) {
    for (const std::uint32_t kind : {0x0002u, 0x138Au}) holding.PutWord(kind, 1);
    holding.PutWord(0x0004, 8);  // m3/h
    holding.PutWord(0x138C, unit_of_second);
    holding.PutWord(0x04A8, channel);
    holding.PutDouble(static_cast<std::uint32_t>(place.Address()), 12);
  };
  set(0, 8);
  const CompareSide side = test.Meter();
  set(1, 7);  // m3/min
  const RowList rows(Comparison(side, test.Meter()));
  EXPECT_EQ(rows.Remark(rows.RowOf(place)), "the units differ; is sent as 0.2 in the meter's unit");
  EXPECT_EQ(RowAt(test.Send(side, {place}), "status.flow_switch_high").sent, "0.2");
  EXPECT_EQ(holding.Double(static_cast<std::uint32_t>(place.Address())), 0.2);
}

TEST(Sender, TheSessionFollowsWhatTheMeterHasTaken) {
  CompareTest test(kOnePath);
  test.meter().holding().PutWord(0x0104, 42);
  test.meter().holding().PutWord(0x0102, 2);
  test.meter().holding().PutWord(0x0100, 0);
  const CompareSide side = test.Meter();
  test.meter().holding().PutWord(0x0104, 43);
  test.meter().holding().PutWord(0x0102, 0);
  SharedState& state = test.app().state;
  state.MeterIdNo = "0043";
  const int sent = test.app().origins.Sent();
  EXPECT_TRUE(AllStored(test.Send(side, {At("system.id_number"), At("system.language")})));
  EXPECT_EQ(state.MeterIdNo, "0042");
  EXPECT_EQ(state.SystemLangFlag, 2);
  EXPECT_TRUE(state.PathModeKnown);
  EXPECT_EQ(test.app().origins.Sent(), sent + 2) << "what pages have read is old now";
  // Another unit system: every unit that the session knew is asked for anew.
  state.RangeKind = state.RangeUnit = state.TotalUnit = {-9, -9, -9};
  state.OperationMode = state.PathMode = state.TempUnit = state.HeatFlowUnit = state.HeatTotalUnit = -9;
  test.meter().holding().PutWord(0x0100, 1);
  EXPECT_TRUE(AllStored(test.Send(side, {At("system.unit")})));
  EXPECT_EQ(test.test.MainWindow().StatusBar1.Panel(3), "METRIC");
  const auto word = [&](std::uint32_t address) -> int { return test.meter().holding().Word(address); };
  EXPECT_EQ(state.RangeKind, (std::array{word(0x0002), word(0x138A), word(0x1B5A)}));
  EXPECT_EQ(state.RangeUnit, (std::array{word(0x0004), word(0x138C), word(0x1B5C)}));
  for (const int unit : state.TotalUnit) EXPECT_GE(unit, 0);
  EXPECT_EQ((std::array{state.OperationMode, state.PathMode, state.TempUnit, state.HeatFlowUnit,
                        state.HeatTotalUnit}),
            (std::array{word(0x003E), word(0x03E8), word(0x04B4), word(0x04B6), word(0x04B8)}));
}

TEST(Sender, AnotherMeterThanExpectedIsLeftAlone) {
  CompareTest test(kOnePath);
  const CompareSide side = test.Meter();
  MeterIdentity expected = side.identity;
  test.Fill(8);  // another ID number
  test.Requests();
  SendReport report = SendRows(test.app(), side, {At("process.fluid")}, {}, &expected);
  EXPECT_EQ(report.halt, SendHalt::kOtherMeter);
  EXPECT_EQ(report.rows[0].end, WriteEnd::kNotSent);
  EXPECT_TRUE(test.Files().empty());
  EXPECT_EQ(Writes(test.Requests()), Texts{});
  expected = test.Meter().identity;
  EXPECT_EQ(SendRows(test.app(), side, {At("process.fluid")}, {}, &expected).halt, SendHalt::kDone);
}

// --- ends

TEST(Sender, WithoutARestorePointNothingIsSent) {
  for (int change = 1; change <= 3; ++change) {
    CompareTest test(kOnePath);
    const CompareSide side = test.Meter();
    test.Fill(8);
    test.Requests();
    test.test.platform.files.FailChange(change, FileError::kFull);
    const SendReport report = test.Send(side, {At("process.fluid"), At("range.type")});
    EXPECT_EQ(report.halt, SendHalt::kNoRestorePoint);
    EXPECT_EQ(report.reason, "the restore point could not be written, so nothing was sent: the disk is full");
    EXPECT_EQ(report.rows[1].reason, report.reason);
    EXPECT_EQ(Writes(test.Requests()), Texts{});
    EXPECT_TRUE(test.Files().empty()) << "nothing half written stays";
  }
}

TEST(Sender, StopEndsBeforeTheNextRowAndTheRestIsTold) {
  CompareTest test(kOnePath);
  const CompareSide side = test.Meter();
  test.Fill(8);
  Texts told;
  SendListener listener;
  listener.began = [&](int number, int count, const std::string& what) {
    if (count == 3) told.push_back(std::to_string(number) + " " + what);
  };
  listener.stop = [&] { return told.size() == 2; };
  const SendReport report =
      SendRows(test.app(), side, {At("range.type"), At("process.fluid", 1), At("process.fluid")}, listener);
  EXPECT_EQ(told, (Texts{"1 PROCESS SETTING CH1 KIND OF FLUID", "2 PROCESS SETTING CH2 KIND OF FLUID"}));
  EXPECT_EQ(report.halt, SendHalt::kStopped);
  EXPECT_EQ(report.Count(WriteEnd::kStored), 2u);
  EXPECT_EQ(report.rows[2].reason, "the sending was stopped");
  // Stopped while the meter is read before: what was read so far is no restore point.
  test.Files().clear();
  listener.began = {[](int, int, const std::string&) {}};
  listener.stop = [] { return true; };
  const SendReport early = SendRows(test.app(), side, {At("range.type")}, listener);
  EXPECT_EQ(early.halt, SendHalt::kStopped);
  EXPECT_EQ(early.Count(WriteEnd::kNotSent), 1u);
  EXPECT_TRUE(test.Files().empty());
}

TEST(Sender, ALostPortEndsItAndEveryRowIsTold) {
  CompareTest test(kOnePath);
  const CompareSide side = test.Meter();
  test.Fill(8);
  test.test.platform.Arm("unplug@00E6/10");
  const SendReport report =
      test.Send(side, {At("process.outer_diameter"), At("process.fluid"), At("range.type")});
  EXPECT_EQ(report.halt, SendHalt::kPortLost);
  EXPECT_EQ(report.rows[0].end, WriteEnd::kStored);
  EXPECT_EQ(report.rows[1].end, WriteEnd::kNotProven) << "the meter may have taken it";
  EXPECT_EQ(report.rows[2].end, WriteEnd::kNotSent);
  EXPECT_TRUE(report.rows[2].reason.starts_with("the port was lost: ")) << report.rows[2].reason;
  EXPECT_FALSE(report.restore_point.empty());
  EXPECT_FALSE(test.app().state.PortIsOpen);
}

// --- restore points

TEST(RestorePoints, TheLastTwentyAreKeptNewestFirst) {
  CompareTest test(kOnePath);
  test.meter().holding().PutWord(0x0104, 42);
  const Snapshot snapshot = test.Read();
  const Texts foreign = {"notes.txt",
                         "2026112410000x_00_0042.txt",
                         "20261124100000-00_0042.txt",
                         "20261124100000_00-0042.txt",
                         "20261124100000_00_0042.bak",
                         "20261124100000_00_.tx"};
  for (const std::string& name : foreign) {
    test.Files()["/home/operator/veltrano3/restore/" + name] = "of the operator";
  }
  std::string newest;
  for (int i = 0; i < 25; ++i) {
    if (i % 5 != 0) test.test.Time().RunFor(1000);
    const KeptPoint kept = KeepRestorePoint(test.app(), snapshot);
    EXPECT_EQ(kept.error, FileError::kGood);
    EXPECT_TRUE(kept.left_over.empty());
    newest = kept.path;
  }
  const std::vector<RestorePoint> points = RestorePoints(test.app());
  ASSERT_EQ(points.size(), kKeptRestorePoints);
  EXPECT_EQ(points.front().path, newest);
  EXPECT_EQ(points.front().id_number, "0042");
  EXPECT_EQ(points.front().date.substr(0, 14), "2026/11/24 10:");
  EXPECT_EQ(test.Files().size(), kKeptRestorePoints + foreign.size()) << "what is not ours stays";
  // Another meter pushes none of them out, whatever its ID number.
  for (const auto& [id, specification] : {std::pair{"0043", "0081"}, {"0042", "0182"}}) {
    Snapshot other = snapshot;
    for (SnapshotRow& row : other.rows) {
      const auto number =
          static_cast<std::uint8_t>(std::stoi(row.place == At("system.id_number") ? id : specification));
      if (row.place == At("system.id_number") || row.place == At("system.specification"))
        row.raw = {0, number};
    }
    other = CompleteSnapshot(other.facts, other.rows, other.identity.date);
    EXPECT_EQ(other.identity.specification, specification);
    for (int i = 0; i < 22; ++i) {
      test.test.Time().RunFor(1000);
      EXPECT_EQ(KeepRestorePoint(test.app(), other).error, FileError::kGood);
    }
  }
  EXPECT_EQ(RestorePoints(test.app()).size(), 3 * kKeptRestorePoints);
  for (const RestorePoint& point : points) EXPECT_TRUE(test.Files().contains(point.path)) << point.path;
  // An old one that can't be removed does not stand in the way.
  test.test.platform.files.FailPath(points.back().path, FileError::kNoPermission);
  const KeptPoint kept = KeepRestorePoint(test.app(), snapshot);
  EXPECT_EQ(kept.error, FileError::kGood);
  EXPECT_EQ(kept.left_over, Texts{points.back().path});
}

// --- restore

TEST(Restore, BringsTheMeterBackAlsoFromAnotherUnitSystem) {
  const RestoreSoakResult result = SoakRestores(20);
  EXPECT_EQ(result.equal, 20);
  EXPECT_EQ(result.called_equal, 20);
  EXPECT_GT(result.rows, 2000);
  for (const std::string& row : result.left) ADD_FAILURE() << row;
}

TEST(Restore, TellsWhatItCouldNotBringBack) {
  CompareTest test(kOnePath);
  test.meter().holding().PutWord(0x0104, 42);
  const Snapshot point = test.Read();
  test.Fill(8);
  test.meter().holding().PutWord(0x0104, 42);
  test.meter().holding().PutWord(0x0154, 50);  // an output is being checked
  test.test.platform.Arm("exception=4@001C/10*ever");
  test.test.platform.Arm("ignore-write@00E6*ever");
  const RestoreReport report = test.Restore(point);
  EXPECT_FALSE(report.Equal());
  EXPECT_TRUE(report.verified);
  const auto reason = [&](const char* name) {
    for (const SentRow& row : report.left) {
      if (row.place == At(name)) return row.reason;
    }
    return std::string("not left");
  };
  EXPECT_EQ(report.left.size(), 4u);
  EXPECT_EQ(reason("range.burnout_timer"), "[UNKNOWN FUNCTION CODE ERROR]");
  EXPECT_EQ(reason("process.fluid").substr(0, 16), "the meter holds ");
  EXPECT_EQ(reason("process.sensor_spacing"), "the meter works it out itself") << "from another fluid";
  EXPECT_EQ(reason("maintenance.ao_check"),
            "it would put the meter into its test state: never sent with others");
  // Once the meter takes it, the same point restores the rest.
  test.test.platform.line.faults().Clear();
  const RestoreReport again = test.Restore(point);
  EXPECT_EQ(again.left.size(), 1u);
  EXPECT_EQ(RestorePoints(test.app()).size(), 2u) << "each began with a point of its own";
}

// Where no row can go out there is nothing to go back to.
TEST(Restore, KeepsNoPointWhenNothingIsSent) {
  CompareTest test(kOnePath);
  const CompareSide side = test.Meter();
  EXPECT_TRUE(RestoreMeter(test.app(), side, {}).Equal());
  EXPECT_EQ(test.Send(side, {At("system.specification"), At("process.sensor_spacing")}).restore_point, "");
  EXPECT_TRUE(test.Files().empty());
  test.meter().holding().PutWord(0x001C, 77);
  EXPECT_FALSE(RestoreMeter(test.app(), side, {}).sent.restore_point.empty());
  EXPECT_EQ(RestorePoints(test.app()).size(), 1u);
}

TEST(Restore, AnotherMeterIsAskedForExpressly) {
  CompareTest test(kOnePath);
  const CompareSide point = SideOfMeter(test.Read());
  test.Fill(8);  // another ID number too
  const int id_number = test.meter().holding().Word(0x0104);
  test.Requests();
  const RestoreReport refused = RestoreMeter(test.app(), point, {});
  EXPECT_EQ(refused.sent.halt, SendHalt::kOtherMeter);
  EXPECT_EQ(Writes(test.Requests()), Texts{});
  EXPECT_FALSE(refused.Equal());
  const RestoreReport taken = RestoreMeter(test.app(), point, {}, OtherMeter::kTake);
  EXPECT_EQ(taken.sent.halt, SendHalt::kDone);
  EXPECT_EQ(test.meter().holding().Word(0x0104), id_number);
  for (const SentRow& row : taken.left) EXPECT_EQ(row.place.row->Sending(), SendRule::kNever);
  EXPECT_EQ(taken.kept.size(), 5u) << "its number and its adjustments";
  for (const SentRow& row : taken.kept) {
    EXPECT_TRUE(row.place.row->one_meter);
    EXPECT_TRUE(row.reason.starts_with("it is the meter's own and stays ")) << row.reason;
  }
}

// Of every kind of trouble some, and meters that answer each request so late that the next one meets it.
TEST(Rounds, OnBadLinesNothingIsToldThatTheMeterDoesNotHold) {
  const struct {
    double least, most;
    int slow_ms;
    std::array<std::int64_t, kRoundKinds> rounds;
    std::int64_t sets;  // told as stored, at least
  } lines[] = {{0.01, 0.05, 0, {60, 6, 6, 2}, 30},
               {0, 0, 230, {10, 2, 1, 1}, 10},
               {0, 0, 300, {10, 2, 1, 1}, 10},
               {0, 0, 400, {10, 2, 1, 1}, 10}};
  for (const auto& line : lines) {
    for (const bool events : {false, true}) {
      const RoundResult result = SoakRounds({.events = events,
                                             .rounds = line.rounds,
                                             .seed = 3,
                                             .least_share = line.least,
                                             .most_share = line.most,
                                             .slow_ms = line.slow_ms});
      EXPECT_TRUE(result.Right()) << line.slow_ms << events;
      for (const std::string& told : result.told) ADD_FAILURE() << line.slow_ms << events << " " << told;
      EXPECT_GE(result.Of(RoundKind::kSet).good, line.sets) << line.slow_ms << events;
    }
  }
}

TEST(Sender, AMeterWhoseUnitSystemNobodyUnderstandsGetsNothing) {
  CompareTest test(kOnePath);
  const CompareSide side = test.Meter();
  test.Fill(8);
  test.meter().holding().PutWord(0x0100, 7);
  test.Requests();
  const SendReport report = test.Send(side, {At("process.outer_diameter"), At("process.fluid")});
  EXPECT_EQ(report.halt, SendHalt::kNoMeter);
  EXPECT_TRUE(report.reason.ends_with("SYSTEM UNIT is 7, which is not understood")) << report.reason;
  EXPECT_EQ(Writes(test.Requests()), Texts{});
  const Snapshot now = test.Read();
  EXPECT_EQ(now.Find(At("process.outer_diameter"))->unread, UnknownShape(now));
  EXPECT_TRUE(now.Find(At("process.fluid"))->Known());
  EXPECT_EQ(ReadSingle(test.app(), *FindParameter("process.outer_diameter"), 0).failure, UnknownShape(now));
  // A unit code that its table has not takes the meaning of what rests on it alone.
  test.meter().holding().PutWord(0x0100, 0);
  test.meter().holding().PutWord(0x0040, 40);
  const SingleRead read = ReadSingle(test.app(), *FindParameter("total.rate"), 0);
  ASSERT_EQ(read.rows.size(), 1u) << read.failure;
  EXPECT_TRUE(read.rows[0].unread.ends_with(" is 40, which is not understood")) << read.rows[0].unread;
}

TEST(Restore, AnswersThatAreLostOnTheWayCallNothingStored) {
  const WriteSoakResult result = SoakWrites({.writes = 1500, .fault_share = 0.03, .seed = 5});
  EXPECT_EQ(result.wrongly_stored, 0);
  EXPECT_EQ(result.unexplained, 0);
  EXPECT_GT(result.refused, 0);
  EXPECT_GT(result.not_proven, 10);
  EXPECT_GT(result.stored, 1200);
}

}  // namespace
}  // namespace vlt::test
