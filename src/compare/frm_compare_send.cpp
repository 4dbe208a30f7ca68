// SPDX-License-Identifier: GPL-3.0-or-later
// What the window does on the line: reading the meter, sending ticked rows, restoring.
#include <algorithm>
#include <memory>
#include <set>
#include <utility>

#include "compare/frm_compare.h"
#include "files/file_report.h"
#include "files/settings_file.h"
#include "link/port.h"
#include "link/store.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"
#include "resources/text_ids_compare_window.h"
#include "state/form_lock.h"

namespace vlt {
namespace {

constexpr int kThisMeter = 0;  // of the list of a side

bool AnyKnown(const Snapshot& snapshot) {
  return std::any_of(snapshot.rows.begin(), snapshot.rows.end(),
                     [](const SnapshotRow& row) { return row.Known(); });
}

std::size_t UnknownIn(const Snapshot& snapshot) {
  return static_cast<std::size_t>(std::count_if(snapshot.rows.begin(), snapshot.rows.end(),
                                                [](const SnapshotRow& row) { return !row.Known(); }));
}

bool AnythingSent(const SendReport& report) { return report.Count(WriteEnd::kNotSent) < report.rows.size(); }

// The meter as it was read before, with what is known to be stored; the other rows that were sent are not
// known.
Snapshot AfterSending(const SendReport& report, const std::string& unread) {
  std::vector<SnapshotRow> rows = report.before.rows;
  for (const SentRow& sent : report.rows) {
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [&](const SnapshotRow& held) { return held.place == sent.place; });
    if (row == rows.end() || sent.end == WriteEnd::kNotSent) continue;
    const bool stored = sent.end == WriteEnd::kStored;
    row->raw = stored ? sent.raw : std::vector<std::uint8_t>();
    row->unread = stored ? std::string() : unread;
  }
  return CompleteSnapshot(report.before.facts, std::move(rows), report.before.identity.date);
}

}  // namespace

// The window at work on the line: Stop is there, and the sides stay what they are.
class frmCompare::Work {
 public:
  explicit Work(frmCompare& window) : window_(window) { Set(true); }
  ~Work() { Set(false); }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

 private:
  void Set(bool on) {
    window_.busy_ = on;
    window_.stop_ = false;
    if (on) {
      window_.leave_ = window_.sent_ = false;
      // Closing is a way to stop.
      window_.SetCloseCommand(true);
    }
    window_.cmdStop.SetEnabled(on);
    for (const int side : {kLeft, kRight}) window_.cmbSide(side).SetEnabled(!on);
    window_.pbWork.SetValue(0);
  }
  frmCompare& window_;
};

bool frmCompare::IsLineTaken() {
  if (IsLineFree(app_)) return false;
  Tell(app_.Text(text::kMonitorRuns));
  app_.Status(app_.Text(text::kMonitorRuns));
  return true;
}

WorkListener frmCompare::Listener(int started) {
  WorkListener listener;
  listener.began = [this, started](int number, int count, const std::string& what) {
    ShowStep(started, number, count, what);
  };
  listener.stop = [this] { return stop_; };
  return listener;
}

void frmCompare::ShowStep(int doing, int number, int count, const std::string& what) {
  pbWork.SetMax(count);
  pbWork.SetValue(number);
  Tell(FormatText(app_.Text(text::kProgress),
                  {app_.Text(doing), what, std::to_string(number), std::to_string(count)}));
}

// Sending reads the meter too; a step that bears the name of a row sends it.
SendListener frmCompare::Sender() {
  auto titles = std::make_shared<std::set<std::string>>();
  for (const ComparisonRow& row : list_->Compared().Rows()) {
    titles->insert(PlaceTitle(row.place, app_.state.LangOffset));
  }
  SendListener listener;
  listener.began = [this, titles](int number, int count, const std::string& what) {
    ShowStep(titles->contains(what) ? text::kSendingRows : text::kReadingSide, number, count, what);
  };
  listener.stop = [this] { return stop_; };
  listener.ended = [this](const SentRow& row) { Ended(row); };
  return listener;
}

void frmCompare::Ended(const SentRow& sent) {
  const std::size_t row = list_->RowOf(sent.place);
  if (row == list_->Compared().All()) return;
  list_->SetResult(sent);
  ShowRows();
}

// --- reading -----------------------------------------------------------------------------------------------

// Nothing, and the operation has ended, when the port can't be opened, the reading was stopped, or nothing
// came.
std::optional<Snapshot> frmCompare::ReadMeter(Operation& operation) {
  if (!operation.OpenPortOrTell()) {
    Tell(CommunicationErrorText(app_));
    return std::nullopt;
  }
  SnapshotResult result;
  {
    const Work work(*this);
    result = ReadSnapshot(app_, Listener(text::kReadingSide));
  }
  std::string failure;
  if (result.stopped) {
    failure = app_.Text(text::kReadingEnded);
  } else if (!AnyKnown(result.snapshot)) {
    failure = app_.Text(text::kCommunicationError) + " " + app_.state.LastErrorText;
  }
  if (failure.empty()) return std::move(result.snapshot);
  operation.ShowNormalPointer();
  if (!result.stopped) app_.Show(app_.Text(text::kCommunicationError), MessageIcon::kStop);
  Tell(failure);
  operation.End(failure);
  LeaveIfAsked(false);
  return std::nullopt;
}

void frmCompare::LeaveIfAsked(bool stays) {
  if (std::exchange(leave_, false) && !stays) List().Unload(Name());
}

void frmCompare::TakeMeter(int side) {
  if (IsLineTaken()) return;
  Operation operation(app_, *this, cmdSide(side).FullName(), text::kReadingSide);
  const auto meter = ReadMeter(operation);
  if (!meter) return;
  Put(side, SideOfMeter(*meter));
  operation.End(stbCompare.Panel(1));
  FocusWhatIsNext(side);
  LeaveIfAsked(false);
}

// The button that began it could not keep the focus while it was locked.
void frmCompare::FocusWhatIsNext(int side) {
  if (list_) return SetFocus(grdRows);
  SetFocus(cmdSide(side == kLeft ? kRight : kLeft));
}

// The meter as it was just read stands on the side that shows it; else on one that shows nothing.
void frmCompare::ShowMeterSide(const Snapshot& meter) {
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

void frmCompare::SaveSnapshotTo(const std::string& path) {
  if (IsLineTaken()) return;
  Operation operation(app_, *this, cmdSnapshot.Name(), text::kReadingSide);
  const auto meter = ReadMeter(operation);
  if (!meter) return Tell(FormatText(app_.Text(text::kNoSnapshot), {stbCompare.Panel(1)}));
  const FileError error = WriteSnapshotFile(app_, path, *meter);
  const std::size_t unknown = UnknownIn(*meter);
  const std::string told =
      error == FileError::kGood
          ? FormatText(
                app_.Text(unknown == 0 ? text::kSnapshotSaved : text::kSnapshotPartial),
                {LastComponent(path), CountText(text::kOneRow, meter->rows.size(), app_.state.LangOffset),
                 std::to_string(unknown)})
          : NotWrittenText(app_, path, error);
  ShowMeterSide(*meter);
  operation.End(told);
  Tell(told);
  if (error != FileError::kGood) app_.Show(told, MessageIcon::kStop);
  LeaveIfAsked(error != FileError::kGood);
}

// --- sending -----------------------------------------------------------------------------------------------

bool frmCompare::HasTarget() {
  const bool target = list_ && list_->Compared().Right().kind == SideKind::kMeter;
  if (!target) app_.Show(app_.Text(text::kTargetFirst), MessageIcon::kInformation);
  return target;
}

void frmCompare::cmdSend_Click() {
  if (IsLineTaken() || !HasTarget()) return;
  const std::size_t count = list_->Chosen().size();
  if (count == 0) return app_.Show(app_.Text(text::kNoRowTicked), MessageIcon::kInformation);
  const std::string question = FormatText(
      app_.Text(text::kSendQuestion), {std::to_string(count), list_->Compared().Right().identity.id_number});
  AskAndSend(question, cmdSend.Name(), &frmCompare::SendChosen);
}

bool frmCompare::MayRestore() {
  if (IsLineTaken() || !HasTarget()) return false;
  const CompareSide& left = list_->Compared().Left();
  const CompareSide& right = list_->Compared().Right();
  if (left.kind != SideKind::kSnapshot) {
    app_.Show(app_.Text(text::kRestoreSource), MessageIcon::kInformation);
    return false;
  }
  if (SameMeter(left.identity, right.identity)) return true;
  app_.Show(FormatText(app_.Text(text::kRestoreOther), {left.identity.id_number, right.identity.id_number}),
            MessageIcon::kStop);
  return false;
}

void frmCompare::cmdRestore_Click() {
  if (!MayRestore()) return;
  const std::string question = FormatText(
      app_.Text(text::kRestoreQuestion),
      {list_->Compared().Right().identity.id_number,
       LastComponent(list_->Compared().Left().name) + ", " + list_->Compared().Left().identity.date});
  AskAndSend(question, cmdRestore.Name(), &frmCompare::RestoreLeft);
}

// The window may be gone, and the line taken, when the box is answered.
void frmCompare::AskAndSend(const std::string& question, const std::string& command,
                            std::string (frmCompare::*send)()) {
  if (!app_.AskOkCancel(question)) return;
  if (!List().Exists(this) || !list_ || IsLineTaken()) return;
  Operation operation(app_, *this, command, text::kSendingRows);
  if (!operation.OpenPortOrTell()) return Tell(CommunicationErrorText(app_));
  std::string end;
  {
    const Work work(*this);
    list_->ForgetResults();
    end = (this->*send)();
  }
  FillLists();
  operation.End(end);
  Tell(end);
  if (list_->AnyResult()) SetFilter(RowFilter::kSent);
  SetFocus(grdRows);
  if (!halt_.empty()) app_.Show(std::exchange(halt_, {}), MessageIcon::kStop);
  LeaveIfAsked(sent_);
}

std::string frmCompare::SendChosen() {
  const Comparison& compared = list_->Compared();
  const CompareSide source = compared.Left();
  const MeterIdentity expected = compared.Right().identity;
  const SendReport report = SendRows(app_, source, list_->Chosen(), Sender(), &expected);
  LookAgain(report);
  return EndText(report, {});
}

std::string frmCompare::RestoreLeft() {
  const CompareSide point = list_->Compared().Left();
  const RestoreReport report = RestoreMeter(app_, point, Sender());
  for (const SentRow& row : report.left) Ended(row);
  LookAgain(report.sent);
  std::string outcome = app_.Text(text::kRestoredUnproven);
  if (report.Equal()) {
    outcome = app_.Text(text::kRestoredEqual);
  } else if (report.verified) {
    outcome = FormatText(app_.Text(text::kRestoredLeft), {std::to_string(report.left.size())});
  }
  return EndText(report.sent, outcome);
}

void frmCompare::ShowMeterAs(const Snapshot& meter) {
  Hold(kRight, SideOfMeter(meter));
  CompareSides(true);
}

// What the meter holds now stands on the right side, or that it is not known.
void frmCompare::LookAgain(const SendReport& report) {
  sent_ = AnythingSent(report);
  if (!sent_) return;
  if (report.halt == SendHalt::kDone && !stop_) {
    const SnapshotResult result = ReadSnapshot(app_, Listener(text::kReadingSide));
    if (!result.stopped && AnyKnown(result.snapshot)) {
      return ShowMeterAs(result.snapshot);
    }
  }
  ShowMeterAs(AfterSending(report, app_.Text(text::kNotReadSince)));
}

std::string frmCompare::EndText(const SendReport& report, const std::string& outcome) {
  std::string told = outcome;
  const auto add = [&](const std::string& more) {
    if (more.empty()) return;
    told = told.empty() ? more : FormatText(app_.Text(text::kTwoSentences), {told, more});
  };
  add(report.reason);
  if (report.halt == SendHalt::kDone || AnythingSent(report)) {
    const auto count = [&](WriteEnd end) { return std::to_string(report.Count(end)); };
    add(FormatText(app_.Text(text::kSendCounts), {count(WriteEnd::kStored), count(WriteEnd::kRefused),
                                                  count(WriteEnd::kNotProven), count(WriteEnd::kNotSent)}));
  }
  if (!report.restore_point.empty()) {
    add(FormatText(app_.Text(text::kPointTold), {report.restore_point}));
  }
  if (report.Count(WriteEnd::kStored) > 0) add(app_.Text(text::kSaveAfterwards));
  if (report.halt != SendHalt::kDone && report.halt != SendHalt::kStopped) halt_ = report.reason;
  return told;
}

void frmCompare::SaveParameter_Click() {
  if (IsLineTaken()) return;
  Operation operation(app_, *this, SaveParameter.Name(), text::kSaveStarted);
  const bool saved = SaveToDevice(app_);
  operation.ShowNormalPointer();
  if (!saved) app_.Show(app_.Text(text::kNotSaved), MessageIcon::kStop);
  const std::string end = app_.Text(text::kSaveCompleted) + " " + app_.state.LastErrorText;
  operation.End(end);
  Tell(saved ? end : app_.Text(text::kNotSaved));
}

}  // namespace vlt
