// SPDX-License-Identifier: GPL-3.0-or-later
// The window that holds two sides against each other, sends what differs to the meter, and restores it.
//
// Each side is chosen in a list and taken in by the button beside it; when both are there, the rows below
// show them. What was taken in stays as it was then, with its date, until it is taken in anew. Only a meter
// on the right side can be sent to.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "compare/comparison_export.h"
#include "compare/restore_points.h"
#include "compare/row_list.h"
#include "compare/sender.h"
#include "link/operation.h"
#include "state/app.h"

namespace vlt {

class frmCompare : public Form {
 public:
  static constexpr int kLeft = 0;
  static constexpr int kRight = 1;

  explicit frmCompare(App& app);

  void Form_Load() override;
  // Restore points may have come since.
  void Form_Activate() override;
  // A meter that was sent settings since it was taken in says so.
  void Settled() override;
  // Stays while it works on the line, and stops that behind the exchange in hand. It goes then, unless rows
  // were sent: how these have ended is to be seen.
  void Form_Unload(int& cancel) override;
  const Control* StopButton() const override { return &cmdStop; }

  // The newest restore point on the left, this meter on the right. False when there is no restore point.
  bool ShowNewestPoint();
  // Reads the meter and keeps it in the file. The window shows what it does, so it should be visible.
  void SaveSnapshotTo(const std::string& path);
  // Where a snapshot is to be kept; nothing when the operator cancels or has chosen a file that no snapshot
  // may take the place of.
  static std::optional<std::string> AskSnapshotFile(App& app);

  // Index 0 is the left side, 1 the right one.
  ControlArray<FrameBox> fraSide{*this, "fraSide", Indexes(2)};
  ControlArray<ComboBox> cmbSide{*this, "cmbSide", Indexes(2)};
  ControlArray<PushButton> cmdSide{*this, "cmdSide", Indexes(2)};
  ControlArray<TextBox> txtSide{*this, "txtSide", Indexes(2)};
  ControlArray<Label> lblIdentity{*this, "lblIdentity", Indexes(2)};
  PushButton cmdSwap{*this, "cmdSwap"};

  // Which rows are listed, in the order of RowFilter.
  ControlArray<OptionButton> optFilter{*this, "optFilter", Indexes(kRowFilters)};
  Label lblCounts{*this, "lblCounts"};
  Label lblChosen{*this, "lblChosen"};
  Grid grdRows;
  StatusBar stbRow{*this, "stbRow", 1};    // the chosen row: name, register, bytes
  StatusBar stbNote{*this, "stbNote", 1};  // what is told of it

  PushButton cmdTickDifferent{*this, "cmdTickDifferent"};
  PushButton cmdTickNone{*this, "cmdTickNone"};
  PushButton cmdSend{*this, "cmdSend"};
  PushButton cmdRestore{*this, "cmdRestore"};
  PushButton SaveParameter{*this, "SaveParameter"};  // the meter keeps it over a power failure

  StatusBar stbCompare{*this, "stbCompare", 1};  // what is done, or how it ended
  ProgressBar pbWork{*this, "pbWork"};
  PushButton cmdStop{*this, "cmdStop"};
  PushButton cmdSnapshot{*this, "cmdSnapshot"};
  PushButton cmdSaveCsv{*this, "cmdSaveCsv"};
  PushButton cmdSavePdf{*this, "cmdSavePdf"};
  PushButton cmdPrint{*this, "cmdPrint"};
  PushButton cmdClose{*this, "cmdClose"};

 private:
  struct Side {
    int entry = 0;                    // of its list
    std::optional<CompareSide> held;  // what was taken in
    int changes = 0;                  // ValueOrigins::Changes() at that time
  };
  // A line of the grid, from row 1 on.
  struct Line {
    enum class Kind { kTitle, kRow, kRemark };
    Kind kind = Kind::kRow;
    std::vector<std::size_t> rows;  // one, or those beneath a title
    std::string text;               // of a title or a remark
  };
  class Work;

  void Dress();
  // --- sides
  void FillLists();
  void ShowSide(int side);
  std::string HeldText(const Side& side) const;
  void ShowIdentity(int side);
  void cmbSide_Click(int side);
  void cmdSide_Click(int side);
  void cmdSwap_Click();
  void TakeMeter(int side);
  void TakeFile(int side, const std::string& path);
  void AskAndTakeFile(int side);
  void Put(int side, CompareSide taken);
  void Hold(int side, CompareSide taken);
  void Choose(int side, int entry);
  const RestorePoint* PointOf(int entry) const;

  // --- rows
  // Builds the comparison when both sides are there; `same` when they are the sides of before, read anew.
  void CompareSides(bool same);
  void ShowRows();
  void ShowCounts();
  void AddRemarks(int side, std::vector<Line>& lines);
  const Line& LineAt(int at) const { return lines_[static_cast<std::size_t>(at) - 1]; }
  void ShowLine(int at);
  RowTick TickOf(const Line& line) const;
  std::optional<std::size_t> ChosenRow() const;
  void ShowTicks();
  void grdRows_Choose();
  void grdRows_Tick(int at);
  RowFilter Filter() const;
  void SetFilter(RowFilter filter);
  void cmdTickDifferent_Click();
  void cmdTickNone_Click();

  // --- the meter
  bool IsLineTaken();
  std::optional<Snapshot> ReadMeter(Operation& operation);
  WorkListener Listener(int started);
  SendListener Sender();
  void ShowStep(int doing, int number, int count, const std::string& what);
  void Ended(const SentRow& sent);
  void ShowMeterSide(const Snapshot& meter);
  void FocusWhatIsNext(int side);
  bool HasTarget();
  bool MayRestore();
  void cmdSend_Click();
  void cmdRestore_Click();
  // `send` does the work and gives the text of its end.
  void LeaveIfAsked(bool stays);
  void AskAndSend(const std::string& question, const std::string& command, std::string (frmCompare::*send)());
  std::string SendChosen();
  std::string RestoreLeft();
  void LookAgain(const SendReport& report);
  void ShowMeterAs(const Snapshot& meter);
  std::string EndText(const SendReport& report, const std::string& outcome);
  void SaveParameter_Click();

  // --- files and paper
  void cmdSnapshot_Click();
  void cmdSaveCsv_Click();
  void cmdSavePdf_Click();
  void cmdPrint_Click();
  RowRemark Remarks() const;
  std::vector<Sheet> Sheets() const;
  bool HasComparison();
  void WriteTo(const std::string& path, const std::string& content);

  void Tell(const std::string& text) { stbCompare.SetPanel(1, text); }

  App& app_;
  std::array<Side, 2> sides_;
  std::vector<RestorePoint> points_;
  std::optional<RowList> list_;
  std::vector<Line> lines_;
  std::string halt_;   // why a sending has ended before its time, for a box
  bool busy_ = false;  // on the line
  bool stop_ = false;
  bool leave_ = false;  // was to be closed while it was on the line
  bool sent_ = false;   // rows have gone to the meter in this work
};

}  // namespace vlt
