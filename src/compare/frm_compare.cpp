// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/frm_compare.h"

#include <algorithm>
#include <utility>

#include "compare/comparison.h"
#include "compare/conversion.h"
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

const std::string& FactOr(const std::string& fact, const std::string& other) {
  return fact.empty() ? other : fact;
}

}  // namespace

frmCompare::frmCompare(App& app) : Form(app.windows, "frmCompare", FormPlace::kWindow), app_(app) {
  for (const int side : {kLeft, kRight}) {
    cmbSide(side).on_click = [this, side] { cmbSide_Click(side); };
    cmdSide(side).on_click = [this, side] { cmdSide_Click(side); };
    txtSide(side).SetLocked(true);
    txtSide(side).SetBackColour(kButtonFaceColour);
  }
  cmdSwap.on_click = [this] { cmdSwap_Click(); };
  cmdClose.on_click = [this] { List().Unload(Name()); };
}

// The parts load behind it.
void frmCompare::Form_Load() {
  SetCaption(app_.Text(text::kCompareTitle));
  for (Control* control : Controls()) control->SetFont({app_.state.PageFont, kFontSize, false});
  SetCaptions({{&fraSide(kLeft), text::kLeftSide},
               {&fraSide(kRight), text::kRightSide},
               {&cmdSwap, text::kSwapSides},
               {&cmdClose, text::kClose}});
  sides_[kRight].entry = kSnapshotFile;
  FillLists();
  for (const int side : {kLeft, kRight}) ShowSide(side);
}

void frmCompare::SetCaptions(std::initializer_list<std::pair<Control*, int>> rows) {
  for (const auto& [control, text_id] : rows) control->SetCaption(app_.Text(text_id));
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
  if (Busy()) return;
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
  if (entry == kThisMeter) return Part<MeterTaken>()->TakeMeter(side);
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
  Tell(FormatText(app_.Text(unknown == 0 ? text::kSideTaken : text::kSideUnread),
                  {SideTitle(app_, taken), CountText(text::kOneRow, taken.cells.size(), app_.state.Spoken()),
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

void frmCompare::CompareSides(bool same) {
  Part<SidesShown>()->Compare(sides_[kLeft].held, sides_[kRight].held, same);
}

void frmCompare::ShowMeter(const Snapshot& meter) {
  const auto shows = [this](int side) {
    return sides_[side].held && sides_[side].held->kind == SideKind::kMeter;
  };
  for (const int side : {kRight, kLeft}) {
    if (shows(side)) return Put(side, SideOfMeter(meter));
  }
  for (const int side : {kLeft, kRight}) {
    if (sides_[side].held) continue;
    Choose(side, kThisMeter);
    return Put(side, SideOfMeter(meter));
  }
}

void frmCompare::ShowTarget(const Snapshot& meter) {
  Hold(kRight, SideOfMeter(meter));
  CompareSides(true);
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
