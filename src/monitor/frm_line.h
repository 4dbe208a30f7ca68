// SPDX-License-Identifier: GPL-3.0-or-later
// Statistics of the line and its last frames. The window looks at what the exchanges have left in the record;
// it asks nothing of a meter, so it can be open during any work, and its buttons stay usable.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "files/csv_question.h"
#include "monitor/line_report.h"
#include "state/app.h"

namespace vlt {

class frmLine : public Form {
 public:
  explicit frmLine(App& app);

  void Form_Load() override;
  void Form_Activate() override;
  bool StaysUsable(const Control& control) const override;

  Label lblSince{*this, "lblSince"};
  Grid grdStations;  // all stations, then each; the chosen one's outcomes stand beside it
  Label lblOutcomes{*this, "lblOutcomes"};
  Grid grdOutcomes;
  PushButton cmdReset{*this, "cmdReset"};
  PushButton cmdCSV{*this, "cmdCSV"};
  Label lblFrames{*this, "lblFrames"};
  Grid grdFrames;                        // the oldest on top
  CheckBox chkPause{*this, "chkPause"};  // the frames stand still, and are what is saved
  Label lblPaused{*this, "lblPaused"};
  PushButton cmdSave{*this, "cmdSave"};
  PushButton cmdClose{*this, "cmdClose"};
  StatusBar stbLine{*this, "stbLine", 3};  // files, bytes a second now, what the line carries
  Timer tmrLine{*this, "tmrLine"};

 private:
  // A file that the operator has asked for, as it stood then.
  struct Export {
    CsvQuestion question;
    std::string content;
  };

  void cmdReset_Click();
  void cmdCSV_Click();
  void cmdSave_Click();
  void chkPause_Click();
  void grdStations_Choose();
  void tmrLine_Timer();

  void Dress();
  void ShowAll();
  void ShowStations();
  void ShowOutcomes();
  void ShowFrames();
  void ShowSpeed();
  void Save(Export file);
  void SaveWaiting();
  void AskAndWrite(const Export& file);

  App& app_;
  std::int64_t shown_revision_ = -1;
  std::int64_t shown_frames_ = 0;  // LineRecord::FramesEver
  std::optional<int> station_;     // whose outcomes are shown; nothing for all
  bool paused_ = false;
  std::vector<LineFrame> standing_;  // those that a pause shows
  std::vector<Export> waiting_;      // for the end of the work that their button was pressed in
};

}  // namespace vlt
