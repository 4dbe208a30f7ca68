// SPDX-License-Identifier: GPL-3.0-or-later
// The window that holds two sides against each other, sends what differs to the meter, and restores it.
//
// Each side is chosen in a list and taken in by the button beside it. What was taken in stays as it was then,
// with its date, until it is taken in anew. The window itself is its two sides and the line that tells what
// is done; its parts are the rows that show both, the work on the line, and what is kept in files or printed.
#pragma once

#include <array>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "compare/restore_points.h"
#include "compare/side.h"
#include "meter/snapshot.h"
#include "state/app.h"

namespace vlt {

// What the window asks of the parts that other sources add to it.
class SidesShown {
 public:
  virtual ~SidesShown() = default;
  // Shows two sides, or no rows while one of them is missing; `same` when they are those of before, read
  // anew: what is ticked and how rows have ended stays.
  virtual void Compare(const std::optional<CompareSide>& left, const std::optional<CompareSide>& right,
                       bool same) = 0;
};
class MeterTaken {
 public:
  virtual ~MeterTaken() = default;
  // At work on the line.
  virtual bool Busy() const = 0;
  // Reads the meter and puts it on a side.
  virtual void TakeMeter(int side) = 0;
};

class frmCompare : public Form {
 public:
  static constexpr int kLeft = 0;
  static constexpr int kRight = 1;

  explicit frmCompare(App& app);

  void Form_Load() override;
  // Restore points may have come since.
  void Form_Activate() override { FillLists(); }
  // A meter that was sent settings since it was taken in says so.
  void Settled() override;

  // The newest restore point on the left, this meter on the right. False when there is no restore point.
  bool ShowNewestPoint();

  // Index 0 is the left side, 1 the right one.
  ControlArray<FrameBox> fraSide{*this, "fraSide", Indexes(2)};
  ControlArray<ComboBox> cmbSide{*this, "cmbSide", Indexes(2)};
  ControlArray<PushButton> cmdSide{*this, "cmdSide", Indexes(2)};
  ControlArray<TextBox> txtSide{*this, "txtSide", Indexes(2)};
  ControlArray<Label> lblIdentity{*this, "lblIdentity", Indexes(2)};
  PushButton cmdSwap{*this, "cmdSwap"};
  StatusBar stbCompare{*this, "stbCompare", 1};  // what is done, or how it ended
  ProgressBar pbWork{*this, "pbWork"};
  PushButton cmdClose{*this, "cmdClose"};

  // --- for the parts
  bool Busy() const { return Part<MeterTaken>()->Busy(); }
  // Captions in the language in force, by text id.
  void SetCaptions(std::initializer_list<std::pair<Control*, int>> rows);
  void Tell(const std::string& text) { stbCompare.SetPanel(1, text); }
  // The lists of both sides with the restore points that there are now.
  void FillLists();
  // What was taken in on a side.
  void Put(int side, CompareSide taken);
  // The meter as it was just read stands on the side that shows it; else on one that shows nothing.
  void ShowMeter(const Snapshot& meter);
  // The meter that rows were sent to, as it is now.
  void ShowTarget(const Snapshot& meter);

 private:
  struct Side {
    int entry = 0;                    // of its list
    std::optional<CompareSide> held;  // what was taken in
    int changes = 0;                  // ValueOrigins::Changes() at that time
  };
  void ShowSide(int side);
  std::string HeldText(const Side& side) const;
  void ShowIdentity(int side);
  void cmbSide_Click(int side);
  void cmdSide_Click(int side);
  void cmdSwap_Click();
  void TakeFile(int side, const std::string& path);
  void AskAndTakeFile(int side);
  void Hold(int side, CompareSide taken);
  void Choose(int side, int entry);
  const RestorePoint* PointOf(int entry) const;
  // `same` when the sides are those of before, read anew.
  void CompareSides(bool same);

  App& app_;
  std::array<Side, 2> sides_;
  std::vector<RestorePoint> points_;
};

}  // namespace vlt
