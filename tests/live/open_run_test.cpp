// SPDX-License-Identifier: GPL-3.0-or-later
// Runs in the journal: a run that ended without Stop is found with what its file holds, wherever the process
// died; and logs that are flushed to the disk.
#include <algorithm>

#include "files/run_journal.h"
#include "files/whole_file.h"
#include "measure_fixture.h"
#include "stations_fixture.h"

namespace vlt::test {
namespace {

constexpr const char* kJournal = "/app/VLT.runs";

std::vector<std::string> ChangesOf(const MemoryFileSystem& files, std::string_view word) {
  std::vector<std::string> found;
  std::ranges::copy_if(files.changes, std::back_inserter(found),
                       [&](const std::string& change) { return change.starts_with(word); });
  return found;
}

TEST(OpenRun, StandsInTheJournalFromItsHeadToItsStop) {
  MeasureTest t(kOneChannel);
  t.StartRun();
  const std::vector<OpenRun> runs = ReadOpenRuns(t.app());
  ASSERT_EQ(runs.size(), 1u);
  EXPECT_EQ(runs[0].page, "Form9");
  EXPECT_EQ(runs[0].path, t.page().MeasureFilePath);
  // It moves to the next file with the run.
  t.page().MeasureRecordCount = 31997;
  t.RunCycles(3);
  ASSERT_NE(t.page().MeasureFilePath, runs[0].path);
  EXPECT_EQ(ReadOpenRuns(t.app()).at(0).path, t.page().MeasureFilePath);
  const std::size_t changes = ChangesOf(t.test.platform.files, "rename").size();
  t.RunCycles(6);
  EXPECT_EQ(ChangesOf(t.test.platform.files, "rename").size(), changes) << "not with each record";
  t.page().Stop.Press();
  EXPECT_FALSE(t.files().contains(kJournal));
}

TEST(OpenRun, LeavesThoseThatWereNotSeenAlone) {
  MeasureTest t(kOneChannel);
  const OpenRun older{.started = "2026/11/23 09:00:00", .page = "Form12", .path = "/data/x.csv"};
  ASSERT_EQ(EnterRun(t.app(), older), FileError::kGood);
  t.StartRun();
  EXPECT_EQ(ReadOpenRuns(t.app()).size(), 2u);
  t.page().Stop.Press();
  EXPECT_EQ(ReadOpenRuns(t.app()), std::vector<OpenRun>{older});
  for (int i = 0; i < 30; ++i) {
    EnterRun(t.app(), {.started = "s" + std::to_string(i), .page = "p", .path = "f"});
  }
  const std::vector<OpenRun> kept = ReadOpenRuns(t.app());
  EXPECT_EQ(kept.size(), kMostOpenRuns);
  EXPECT_EQ(kept.back().started, "s29");
}

TEST(OpenRun, TellsThatTheJournalCouldNotBeWrittenAndGoesOn) {
  MeasureTest t(kOneChannel);
  t.test.platform.files.FailPath(std::string(kJournal) + ".tmp", FileError::kNoPermission);
  t.StartRun();
  t.RunCycles(3);
  EXPECT_EQ(t.page().StatusBar2.Panel(2), "VLT.runs.tmp could not be written: permission denied");
  EXPECT_EQ(t.Lines().size(), 5u);
}

// What stands in it is not lost to the next run, whatever it is.
TEST(OpenRun, AJournalThatCannotBeReadIsLeftAloneAndTold) {
  const std::string lines =
      "a note\n2026/11/23 08:00:00\tForm9\t\n2026/11/23 09:00:00\tForm12\t/data/x.csv\n2026/11/23 "
      "10:00:00\tForm9\t/data/y.csv\r\n";
  MeasureTest t(kOneChannel);
  t.files()[kJournal] = lines;
  ASSERT_EQ(ReadOpenRuns(t.app()).size(), 2u) << "LF alone ends a line too";
  t.test.platform.files.FailPath(kJournal, FileError::kNoPermission);
  t.StartRun();
  EXPECT_EQ(t.page().StatusBar2.Panel(2), "VLT.runs could not be read: permission denied");
  EXPECT_EQ(t.files()[kJournal], lines);
  t.test.platform.files.FailPath(kJournal, FileError::kGood);
  t.page().Stop.Press();
  EXPECT_EQ(ReadOpenRuns(t.app()).size(), 2u);
  EXPECT_TRUE(t.files()[kJournal].starts_with("a note"));
}

// The process dies at the n-th change of a file; the next start finds what it has left.
TEST(OpenRun, IsFoundWhereverTheProcessDied) {
  bool died = true;
  int n = 1;
  for (; died && !::testing::Test::HasFailure(); ++n) {
    SCOPED_TRACE(n);
    MeasureTest t(kOneChannel);
    t.Save("/data/run");
    MemoryFileSystem& files = t.test.platform.files;
    files.KillAtChange(n);
    died = false;
    try {
      t.page().Start.Press();
      t.page().MeasureRecordCount = 31996;
      t.RunCycles(5);
      t.page().Stop.Press();
    } catch (const Killed&) {
      died = true;
    }
    // What the disk holds now, as the next program sees it.
    TestApp next;
    next.platform.files.files = files.files;
    const auto left = next.platform.files.files;
    int records = 0;
    for (const auto& [path, text] : left) {
      if (path.starts_with("/data/")) records += static_cast<int>(std::ranges::count(text, '\n')) - 2;
    }
    const std::vector<OpenRun> runs = ReadOpenRuns(next.app);
    ASSERT_LE(runs.size(), 1u);
    if (!died) {
      EXPECT_TRUE(runs.empty());
      break;
    }
    EXPECT_TRUE(!runs.empty() || records <= 0) << "records that nobody tells of";
    for (const OpenRun& run : runs) {
      const RunFile found = LookAtRun(next.app, run);
      EXPECT_EQ(found.error, FileError::kGood);
      EXPECT_EQ(found.bytes, left.at(run.path).size());
      EXPECT_EQ(found.half_line, !left.at(run.path).ends_with("\r\n"));
      EXPECT_EQ(found.last_record.empty(), found.records == 0);
    }
    EXPECT_EQ(next.platform.files.files, left) << "looking changes nothing";
  }
  EXPECT_GT(n, 10);
}

TEST(LogSync, FlushesOncePerCycleAndOnlyWhenAskedFor) {
  for (const bool sync : {false, true}) {
    MeasureTest t(kOneChannel);
    t.files()["/app/VLT.ini"] = std::string("[LOG]\r\nSYNC=") + (sync ? "1" : "0") + "\r\n";
    t.StartRun();
    t.RunCycles(4);
    const std::vector<std::string> flushes = ChangesOf(t.test.platform.files, "flush ");
    EXPECT_EQ(flushes.size(), sync ? 4u : 0u);
    if (!sync) continue;
    EXPECT_EQ(flushes[0], "flush " + t.page().MeasureFilePath);
    // A disk that does not take it is told; the record is there all the same.
    t.test.platform.files.FailChange(2, FileError::kFull);
    t.RunCycles(5);
    EXPECT_TRUE(t.page().StatusBar2.Panel(2).ends_with("could not be written: the disk is full"))
        << t.page().StatusBar2.Panel(2);
    EXPECT_EQ(t.Lines().size(), 2u + 5u);
  }
}

TEST_F(StationsTest, ARunWithAFileStandsInTheJournalAndIsFlushed) {
  Files()["/app/VLT.ini"] = "[LOG]\r\nSYNC=1\r\n";
  AddStations({1});
  Choose(0, kFlowPlace, 0, -1);
  Start("1");
  RunPasses(2);
  ASSERT_EQ(ReadOpenRuns(app).size(), 1u);
  EXPECT_EQ(ReadOpenRuns(app)[0].page, "Form12");
  const RunFile found = LookAtRun(app, ReadOpenRuns(app)[0]);
  EXPECT_EQ(found.records, 2);
  EXPECT_EQ(ChangesOf(test.platform.files, "flush ").size(), 2u);
  Page().cmdStop.Press();
  Time().RunFor(2000);
  EXPECT_TRUE(ReadOpenRuns(app).empty());
  Start("1", std::nullopt);
  EXPECT_EQ(Page().txtDisp1(0).Text() + Page().lblFailed(0).Caption() + Page().lblAnswered(0).Hint(), "");
  EXPECT_TRUE(ReadOpenRuns(app).empty()) << "a run that records nothing";
}

}  // namespace
}  // namespace vlt::test
