// SPDX-License-Identifier: GPL-3.0-or-later
// Runs that ended without Stop, by a kill or a power cut: a part of the main window that tells of them from
// the start of the program until they were seen, and the window that lists them. Their files are only read. A
// journal that can't be read is told in the same place.
#pragma once

#include <string>
#include <vector>

#include "files/run_journal.h"
#include "state/app.h"

namespace vlt {

class FoundRuns : public FormPart {
 public:
  FoundRuns(App& app, Form& frame);

  void Form_Load() override;
  // Captions in the program's language.
  void Show();
  void cmdFoundRuns_Click();
  // They are not told any more.
  void cmdFoundRunsSeen_Click();

  // Those that were open when the program started, the oldest first.
  const std::vector<OpenRun>& Runs() const { return runs_; }

  Label lblFoundRuns;
  PushButton cmdFoundRuns;
  PushButton cmdFoundRunsSeen;

 private:
  std::string Told() const;
  std::string Latest() const;

  App& app_;
  std::vector<OpenRun> runs_;
  FileError unread_;  // why nothing is known of them
  RunFile last_;      // of the last one
};

class frmFoundRuns : public Form {
 public:
  explicit frmFoundRuns(App& app);

  void Form_Load() override;
  void grdRuns_Choose();
  void cmdSeen_Click();
  void cmdClose_Click();

  Label lblExplained{*this, "lblExplained"};
  // Row 0 the heads, then the runs, the latest first.
  Grid grdRuns{*this, "grdRuns", 1, 5};
  Label lblPath{*this, "lblPath"};  // of the chosen run's file
  PushButton cmdSeen{*this, "cmdSeen"};
  PushButton cmdClose{*this, "cmdClose"};

 private:
  FoundRuns* Part() const;

  App& app_;
  std::vector<std::string> paths_;  // by the rows of the grid, from row 1 on
};

// The time of the last record of a run, and how much there is, in the language in force; why its file cannot
// be read instead.
std::string LastRecordText(const App& app, const RunFile& file);
std::string RunLengthText(const App& app, const RunFile& file);

}  // namespace vlt
