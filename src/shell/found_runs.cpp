// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/found_runs.h"

#include <algorithm>
#include <array>

#include "files/file_report.h"
#include "files/settings_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_files.h"
#include "resources/text_ids_heal.h"
#include "values/text.h"

namespace vlt {
namespace {

constexpr const char* kWindow = "frmFoundRuns";
constexpr std::size_t kNameChars = 40;  // of a file, that have room in the line above the pages

// Captions of the pages that record.
constexpr struct {
  const char* page;
  int text_id;
} kPages[] = {{"Form9", 1310}, {"Form12", 1343}};

std::string PageText(const App& app, const std::string& page) {
  for (const auto& row : kPages) {
    if (row.page == page) return app.Text(row.text_id);
  }
  return page;
}

}  // namespace

std::string LastRecordText(const App& app, const RunFile& file) {
  if (file.error != FileError::kGood) {
    return FormatText(app.Text(text::kRunGone), {WhyNotRead(file.error, app.state.Spoken())});
  }
  return file.last_record.empty() ? app.Text(text::kRunNoRecord) : file.last_record;
}

std::string RunLengthText(const App& app, const RunFile& file) {
  if (file.error != FileError::kGood) return "-";
  const std::string bytes = std::to_string(file.bytes);
  const std::string length =
      file.records ? FormatText(app.Text(text::kRunRecords), {std::to_string(*file.records), bytes})
                   : FormatText(app.Text(text::kRunBytes), {bytes});
  return file.half_line ? length + app.Text(text::kRunHalfLine) : length;
}

FoundRuns::FoundRuns(App& app, Form& frame)
    : FormPart(frame),
      lblFoundRuns(frame, "lblFoundRuns"),
      cmdFoundRuns(frame, "cmdFoundRuns"),
      cmdFoundRunsSeen(frame, "cmdFoundRunsSeen"),
      app_(app) {
  cmdFoundRuns.on_click = [this] { cmdFoundRuns_Click(); };
  cmdFoundRunsSeen.on_click = [this] { cmdFoundRunsSeen_Click(); };
}

void FoundRuns::Form_Load() {
  unread_ = ReadOpenRuns(app_, runs_);
  if (!runs_.empty()) last_ = LookAtRun(app_, runs_.back());
  Show();
}

// The latest run in short: its file, its last record, and how many there are.
std::string FoundRuns::Latest() const {
  std::string name = LastComponent(runs_.back().path);
  if (CharCount(name) > kNameChars) name = std::string(FirstChars(name, kNameChars - 1)) + "…";
  const std::string records = last_.records
                                  ? FormatText(app_.Text(text::kRunCount), {std::to_string(*last_.records)})
                                  : RunLengthText(app_, last_);
  return FormatText(app_.Text(text::kRunInShort), {name, LastRecordText(app_, last_), records});
}

std::string FoundRuns::Told() const {
  if (unread_ != FileError::kGood) {
    const std::string name = LastComponent(RunJournalPath(app_));
    return FormatText(app_.Text(text::kRunsNotRead), {NotReadText(app_, name, unread_)});
  }
  if (runs_.empty()) return {};
  const int id = runs_.size() == 1 ? text::kRunFound : text::kRunsFound;
  return FormatText(app_.Text(id), {Latest(), std::to_string(runs_.size())});
}

void FoundRuns::Show() {
  lblFoundRuns.SetCaption(Told());
  const bool unread = unread_ != FileError::kGood;
  lblFoundRuns.SetHint(unread ? RunJournalPath(app_) : runs_.empty() ? "" : runs_.back().path);
  cmdFoundRuns.SetCaption(app_.Text(text::kRunsShow));
  cmdFoundRunsSeen.SetCaption(app_.Text(text::kRunsSeen));
  for (Control* control : std::initializer_list<Control*>{&lblFoundRuns, &cmdFoundRuns, &cmdFoundRunsSeen}) {
    control->SetFont({app_.state.PageFont, 8, false});
    control->SetVisible(unread || !runs_.empty());
  }
  if (unread) cmdFoundRuns.SetVisible(false);
}

void FoundRuns::cmdFoundRuns_Click() { Whole().List().Load(kWindow).Show(); }

void FoundRuns::cmdFoundRunsSeen_Click() {
  if (unread_ != FileError::kGood) {
    unread_ = FileError::kGood;
    Show();
    return;
  }
  const FileError error = TakeOutRuns(app_, runs_);
  if (error != FileError::kGood) {
    ReportNotWritten(app_, RunJournalPath(app_), error);
    return;
  }
  runs_.clear();
  Show();
}

frmFoundRuns::frmFoundRuns(App& app) : Form(app.windows, kWindow, FormPlace::kWindow), app_(app) {
  grdRuns.on_choose = [this] { grdRuns_Choose(); };
  cmdSeen.on_click = [this] { cmdSeen_Click(); };
  cmdClose.on_click = [this] { cmdClose_Click(); };
}

FoundRuns* frmFoundRuns::Part() const {
  return app_.frame == nullptr ? nullptr : app_.frame->Window().Part<FoundRuns>();
}

void frmFoundRuns::Form_Load() {
  SetCaption(app_.Text(text::kRunsTitle));
  lblExplained.SetCaption(app_.Text(text::kRunsExplained));
  cmdSeen.SetCaption(app_.Text(text::kRunsSeen));
  cmdClose.SetCaption(app_.Text(text::kClose));
  grdRuns.SetRow(
      0, std::array{app_.Text(text::kRunFile), app_.Text(text::kRunPage), app_.Text(text::kRunStarted),
                    app_.Text(text::kRunLastRecord), app_.Text(text::kRunLength)});
  const FoundRuns* part = Part();
  std::vector<OpenRun> runs = part == nullptr ? std::vector<OpenRun>() : part->Runs();
  std::reverse(runs.begin(), runs.end());
  grdRuns.SetRows(static_cast<int>(runs.size()) + 1);
  int row = 0;
  for (const OpenRun& run : runs) {
    const RunFile file = LookAtRun(app_, run);
    paths_.push_back(run.path);
    grdRuns.SetRow(++row, std::array{LastComponent(run.path), PageText(app_, run.page), run.started,
                                     LastRecordText(app_, file), RunLengthText(app_, file)});
  }
  grdRuns.SetSelectedRow(row == 0 ? 0 : 1);
  grdRuns_Choose();
}

void frmFoundRuns::grdRuns_Choose() {
  const int row = grdRuns.SelectedRow();
  lblPath.SetCaption(row == 0 ? "" : paths_.at(static_cast<std::size_t>(row - 1)));
}

void frmFoundRuns::cmdSeen_Click() {
  if (FoundRuns* part = Part()) part->cmdFoundRunsSeen_Click();
  cmdClose_Click();
}

void frmFoundRuns::cmdClose_Click() { List().Unload(Name()); }

}  // namespace vlt
