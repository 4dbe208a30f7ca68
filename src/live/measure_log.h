// SPDX-License-Identifier: GPL-3.0-or-later
// The file of a run: a head, a record a cycle, the next file when one is full. A record that cannot be
// written is lost and counted; the run goes on. While a run records it stands in the journal of runs, and
// with SharedState::LogSync each record is flushed to the disk.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "files/run_journal.h"
#include "platform/clock.h"
#include "platform/file_system.h"
#include "state/app.h"

namespace vlt {

class MeasureLog {
 public:
  // Head and records of a file together, what spreadsheets of old can load.
  static constexpr int kLinesInFile = 32000;

  // `head` gives the lines at the head of a file, as the run is now.
  MeasureLog(App& app, std::function<std::vector<std::string>()> head);

  // A new run never adds to a file that is there: its name gets a fresh stamp. With `stamp` the name gets
  // that one in any case, or the next one that is free.
  void BeginRun(const std::optional<LocalTime>& stamp = {});
  // Adds the head to a file. Nothing for an empty path or "***".
  void WriteHead(const std::string& path);
  // Adds a record of this time to a file; a file that is not there gets its head first. Behind the last
  // record of a full file Path is the next one's, stamped with `time`, and holds its head. Nothing for an
  // empty path or "***". False when the record was not written.
  bool Append(const std::string& path, const std::string& record, const LocalTime& time);
  // The run of `page` begins to record into Path, whose head was written: from here on it is told at the next
  // start if it does not end by EndRun. Nothing for a Path that names no file. LogSync is read anew.
  void EnterRun(const std::string& page);
  // The run has ended as it should.
  void EndRun();
  // What is wrong with the file, in the language in force: how many records were lost since the last one that
  // was written, or that the head was not written. Empty when all is well.
  std::string Trouble() const;
  // Records that the current file still takes.
  int RecordsLeft() const { return kLinesInFile - head_lines_ - RecordCount; }

  std::string Path;     // of the current file; empty until the operator has given one
  int RecordCount = 0;  // records in it

 private:
  FileError AddHead(const std::string& path);
  void Note(const std::string& path, FileError error);
  void FollowRun();

  App& app_;
  std::function<std::vector<std::string>()> head_;
  int head_lines_ = 0;
  int lost_records_ = 0;  // since the last one that was written
  FileError last_error_ = FileError::kGood;
  std::string last_name_;
  std::optional<OpenRun> run_;  // as it stands in the journal
  FileError journal_error_ = FileError::kGood;
};

}  // namespace vlt
