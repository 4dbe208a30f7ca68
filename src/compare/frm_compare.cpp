// SPDX-License-Identifier: GPL-3.0-or-later
// The window's life and its two sides.
#include "compare/frm_compare.h"

#include <algorithm>
#include <utility>

#include "files/file_report.h"
#include "files/settings_file.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"
#include "resources/text_ids_compare_window.h"
#include "resources/text_ids_origin.h"

namespace vlt {
namespace {

constexpr int kFontSize = 9;
constexpr const char* kNoFact = "-";

// What a side can be, in the order of the list; the restore points follow.
enum Entry { kThisMeter, kSnapshotFile, kParameterFile, kFields, kFirstPoint };

struct GridColumn {
  int head_id;
  int width;
};
constexpr int kGridWidth = 17400;  // the last column takes what the others leave
constexpr std::array<GridColumn, 7> kColumns = {{{text::kParameterColumn, 4350},
                                                 {text::kLeftColumn, 2250},
                                                 {text::kUnitColumn, 1230},
                                                 {text::kRightColumn, 2250},
                                                 {text::kUnitColumn, 1230},
                                                 {text::kStateColumn, 1950},
                                                 {text::kResultColumn, 2700}}};

const std::string& FactOr(const std::string& fact, const std::string& other) {
  return fact.empty() ? other : fact;
}

}  // namespace

frmCompare::frmCompare(App& app)
    : Form(app.windows, "frmCompare", FormPlace::kWindow),
      grdRows(*this, "grdRows", 1, static_cast<int>(kColumns.size())),
      app_(app) {
  for (const int side : {kLeft, kRight}) {
    cmbSide(side).on_click = [this, side] { cmbSide_Click(side); };
    cmdSide(side).on_click = [this, side] { cmdSide_Click(side); };
    txtSide(side).SetLocked(true);
    txtSide(side).SetBackColour(kButtonFaceColour);
  }
  optFilter.ForEach([this](OptionButton& option) { option.on_click = [this] { ShowRows(); }; });
  grdRows.on_choose = [this] { grdRows_Choose(); };
  grdRows.on_tick = [this](int at) { grdRows_Tick(at); };
  struct Command {
    PushButton& button;
    void (frmCompare::*handler)();
  };
  for (const Command& row :
       {Command{cmdSwap, &frmCompare::cmdSwap_Click},
        Command{cmdTickDifferent, &frmCompare::cmdTickDifferent_Click},
        Command{cmdTickNone, &frmCompare::cmdTickNone_Click}, Command{cmdSend, &frmCompare::cmdSend_Click},
        Command{cmdRestore, &frmCompare::cmdRestore_Click},
        Command{SaveParameter, &frmCompare::SaveParameter_Click},
        Command{cmdSnapshot, &frmCompare::cmdSnapshot_Click},
        Command{cmdSaveCsv, &frmCompare::cmdSaveCsv_Click},
        Command{cmdSavePdf, &frmCompare::cmdSavePdf_Click}, Command{cmdPrint, &frmCompare::cmdPrint_Click}}) {
    row.button.on_click = [this, handler = row.handler] { (this->*handler)(); };
  }
  cmdStop.on_click = [this] { stop_ = true; };
  cmdClose.on_click = [this] { List().Unload(Name()); };
}

void frmCompare::Form_Load() {
  Dress();
  for (std::size_t i = 0; i < kColumns.size(); ++i) {
    grdRows.SetCell(0, static_cast<int>(i), app_.Text(kColumns[i].head_id));
    grdRows.SetColumnWidth(static_cast<int>(i), kColumns[i].width);
  }
  grdRows.SetSize(kGridWidth, 0);
  cmdStop.SetEnabled(false);
  sides_[kRight].entry = kSnapshotFile;
  FillLists();
  optFilter(0).SetValue(true);
  for (const int side : {kLeft, kRight}) ShowSide(side);
  CompareSides(false);
}

void frmCompare::Form_Activate() { FillLists(); }

void frmCompare::Form_Unload(int& cancel) {
  if (!busy_) return;
  stop_ = leave_ = true;
  Tell(app_.Text(text::kStaysWhileBusy));
  cancel = -1;
}

void frmCompare::Dress() {
  SetCaption(app_.Text(text::kCompareTitle));
  for (Control* control : Controls()) control->SetFont({app_.state.PageFont, kFontSize, false});
  lblCounts.SetFont({app_.state.PageFont, kFontSize, true});
  struct Caption {
    Control& control;
    int text_id;
  };
  for (const Caption& row :
       {Caption{fraSide(kLeft), text::kLeftSide}, Caption{fraSide(kRight), text::kRightSide},
        Caption{cmdSwap, text::kSwapSides}, Caption{cmdTickDifferent, text::kTickDifferent},
        Caption{cmdTickNone, text::kTickNone}, Caption{cmdSend, text::kSendRows},
        Caption{cmdRestore, text::kRestoreAll}, Caption{SaveParameter, text::kSaveInMeter},
        Caption{cmdStop, text::kStop}, Caption{cmdSnapshot, text::kSaveSnapshot},
        Caption{cmdSaveCsv, text::kSaveAsCsv}, Caption{cmdSavePdf, text::kSavePdf},
        Caption{cmdPrint, text::kCalcPrint}, Caption{cmdClose, text::kClose}}) {
    row.control.SetCaption(app_.Text(row.text_id));
  }
}

// --- the lists ---------------------------------------------------------------------------------------------

const RestorePoint* frmCompare::PointOf(int entry) const {
  const auto at = static_cast<std::size_t>(entry - kFirstPoint);
  return entry >= kFirstPoint && at < points_.size() ? &points_[at] : nullptr;
}

// A side that is a restore point stays the same one; it is a snapshot file when it is none of the last any
// more.
void frmCompare::FillLists() {
  std::array<std::string, 2> paths;
  for (const int side : {kLeft, kRight}) {
    if (const RestorePoint* point = PointOf(sides_[side].entry)) paths[side] = point->path;
  }
  points_ = RestorePoints(app_);
  std::vector<std::string> items;
  for (int entry = kThisMeter; entry < kFirstPoint; ++entry) {
    items.push_back(app_.Text(text::kSideEntries + entry));
  }
  for (const RestorePoint& point : points_) {
    items.push_back(FormatText(app_.Text(text::kPointEntry), {point.date, FactOr(point.id_number, kNoFact)}));
  }
  for (const int side : {kLeft, kRight}) {
    if (!paths[side].empty()) {
      const auto same = [&](const RestorePoint& point) { return point.path == paths[side]; };
      const auto found = std::find_if(points_.begin(), points_.end(), same);
      sides_[side].entry = found == points_.end() ? static_cast<int>(kSnapshotFile)
                                                  : kFirstPoint + static_cast<int>(found - points_.begin());
    }
    if (cmbSide(side).Items() != items) cmbSide(side).SetItems(items);
    cmbSide(side).SetListIndex(sides_[side].entry);
  }
}

void frmCompare::Choose(int side, int entry) {
  sides_[side].entry = entry;
  cmbSide(side).SetListIndex(entry);
}

// Another choice: what was taken in belongs to the one before.
void frmCompare::cmbSide_Click(int side) {
  const int entry = cmbSide(side).ListIndex();
  if (entry < 0 || entry == sides_[side].entry) return;
  sides_[side] = {.entry = entry, .held = std::nullopt};
  ShowSide(side);
  CompareSides(false);
}

void frmCompare::ShowSide(int side) {
  struct Words {
    int take;
    int not_taken;
  };
  constexpr Words kFileWords{text::kTakeFile, text::kFileNotTaken};
  constexpr std::array<Words, kFirstPoint> kWords = {Words{text::kTakeMeter, text::kMeterNotTaken},
                                                     kFileWords, kFileWords,
                                                     Words{text::kTakeFields, text::kFieldsNotTaken}};
  const int entry = sides_[side].entry;
  const Words& words = entry < kFirstPoint ? kWords[static_cast<std::size_t>(entry)] : kFileWords;
  cmdSide(side).SetCaption(app_.Text(words.take));
  const auto& held = sides_[side].held;
  txtSide(side).SetText(held ? HeldText(sides_[side]) : app_.Text(words.not_taken));
  ShowIdentity(side);
}

std::string frmCompare::HeldText(const Side& side) const {
  if (!side.held->name.empty()) return side.held->name;
  const std::string title = SideTitle(app_, *side.held);
  const bool old = side.held->kind == SideKind::kMeter && side.changes != app_.origins.Changes();
  return old ? FormatText(app_.Text(text::kOutdatedSide), {title}) : title;
}

// Settings may have been sent, by a page, a script or this window; it reads anew what it has changed itself.
void frmCompare::Settled() {
  if (busy_) return;
  for (const int side : {kLeft, kRight}) {
    if (sides_[side].held) txtSide(side).SetText(HeldText(sides_[side]));
  }
}

// Two lines in any case, so that the window stands still.
void frmCompare::ShowIdentity(int side) {
  const auto& held = sides_[side].held;
  if (!held) return lblIdentity(side).SetCaption(" \n ");
  const MeterIdentity& who = held->identity;
  const std::string none = kNoFact;
  lblIdentity(side).SetCaption(
      FormatText(app_.Text(text::kIdentity), {FactOr(who.id_number, none), FactOr(who.specification, none),
                                              FactOr(who.type, none), FactOr(who.version, none)}) +
      "\n" +
      FormatText(app_.Text(text::kIdentityModes),
                 {FactOr(who.unit_system, none), FactOr(who.path_mode, none), FactOr(who.date, none)}));
}

// --- taking in ---------------------------------------------------------------------------------------------

void frmCompare::cmdSide_Click(int side) {
  const int entry = sides_[side].entry;
  if (entry == kThisMeter) return TakeMeter(side);
  if (entry == kFields) return Put(side, SideOfFields(app_));
  const RestorePoint* point = PointOf(entry);
  if (point == nullptr) return AskAndTakeFile(side);
  TakeFile(side, point->path);
}

void frmCompare::AskAndTakeFile(int side) {
  const bool snapshot = sides_[side].entry == kSnapshotFile;
  const std::string snapshots = app_.Text(text::kSnapshotKind) + "(*.txt)|*.txt";
  const std::string parameters = app_.Text(text::kSideEntries + kParameterFile) + "(*.ini)|*.ini";
  const auto path = app_.platform.dialogs.AskOpenFile(
      {.title = app_.Text(text::kOpenTitle),
       .filter = (snapshot ? snapshots : parameters) + "|" + app_.Text(text::kAllFiles) + "(*.*)|*.*",
       .folder = {},
       .name = {},
       .ask_before_overwrite = false});
  if (path && !path->empty()) TakeFile(side, *path);
}

void frmCompare::TakeFile(int side, const std::string& path) {
  FileSide file = SideOfFile(app_, path);
  if (file.error == FileError::kOther && file.error.SystemNumber() == 0) {
    return app_.Show(FormatText(app_.Text(text::kNoSide), {LastComponent(path)}), MessageIcon::kStop);
  }
  if (file.error != FileError::kGood) {
    return app_.Show(NotReadText(app_, LastComponent(path), file.error), MessageIcon::kStop);
  }
  // A snapshot may have been chosen among the parameter files, and the other way round.
  if (PointOf(sides_[side].entry) == nullptr) {
    Choose(side, file.side.kind == SideKind::kSnapshot ? kSnapshotFile : kParameterFile);
  }
  Put(side, std::move(file.side));
}

void frmCompare::Put(int side, CompareSide taken) {
  const auto unknown =
      std::count_if(taken.cells.begin(), taken.cells.end(), [](const SideCell& c) { return !c.Known(); });
  Tell(
      FormatText(app_.Text(unknown == 0 ? text::kSideTaken : text::kSideUnread),
                 {SideTitle(app_, taken), CountText(text::kOneRow, taken.cells.size(), app_.state.LangOffset),
                  std::to_string(unknown)}));
  const auto& held = sides_[side].held;
  const bool same = held && taken.kind == SideKind::kMeter && SameMeter(held->identity, taken.identity);
  Hold(side, std::move(taken));
  CompareSides(same);
}

void frmCompare::Hold(int side, CompareSide taken) {
  sides_[side].held = std::move(taken);
  sides_[side].changes = app_.origins.Changes();
  ShowSide(side);
}

void frmCompare::cmdSwap_Click() {
  std::swap(sides_[kLeft], sides_[kRight]);
  for (const int side : {kLeft, kRight}) {
    cmbSide(side).SetListIndex(sides_[side].entry);
    ShowSide(side);
  }
  CompareSides(false);
}

bool frmCompare::ShowNewestPoint() {
  FillLists();
  if (points_.empty()) return false;
  Choose(kLeft, kFirstPoint);
  TakeFile(kLeft, points_.front().path);
  if (sides_[kRight].entry != kThisMeter) {
    sides_[kRight].held.reset();
    Choose(kRight, kThisMeter);
    ShowSide(kRight);
    CompareSides(false);
  }
  SetFocus(cmdSide(kRight));
  return true;
}

}  // namespace vlt
