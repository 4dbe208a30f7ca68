// SPDX-License-Identifier: GPL-3.0-or-later
#include "compare/compare_line.h"

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

#include "compare/compare_rows.h"
#include "files/settings_file.h"
#include "link/port.h"
#include "meter/store.h"
#include "resources/string_table.h"
#include "resources/text_ids.h"
#include "resources/text_ids_compare.h"
#include "resources/text_ids_compare_window.h"
#include "state/form_lock.h"

namespace vlt {
namespace {

bool AnyKnown(const Snapshot& snapshot) {
  return std::any_of(snapshot.rows.begin(), snapshot.rows.end(),
                     [](const SnapshotRow& row) { return row.Known(); });
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

// At work: Stop is there, and the sides stay what they are.
class CompareLine::Work {
 public:
  explicit Work(CompareLine& line) : line_(line) { Set(true); }
  ~Work() { Set(false); }
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

 private:
  void Set(bool on) {
    line_.busy_ = on;
    line_.stop_ = false;
    if (on) {
      line_.leave_ = line_.sent_ = false;
      // Closing is a way to stop.
      line_.window_.SetCloseCommand(true);
    }
    line_.cmdStop.SetEnabled(on);
    line_.window_.cmbSide.ForEach([on](ComboBox& list) { list.SetEnabled(!on); });
    line_.window_.pbWork.SetValue(0);
  }
  CompareLine& line_;
};

CompareLine::CompareLine(App& app, frmCompare& window) : FormPart(window), app_(app), window_(window) {
  cmdSend.on_click = [this] { cmdSend_Click(); };
  cmdRestore.on_click = [this] { cmdRestore_Click(); };
  SaveParameter.on_click = [this] { SaveParameter_Click(); };
  cmdStop.on_click = [this] { stop_ = true; };
}

void CompareLine::Form_Load() {
  window_.SetCaptions({{&cmdSend, text::kSendRows},
                       {&cmdRestore, text::kRestoreAll},
                       {&SaveParameter, text::kSaveInMeter},
                       {&cmdStop, text::kStop}});
  cmdStop.SetEnabled(false);
}

void CompareLine::Form_Unload(int& cancel) {
  if (!busy_) return;
  stop_ = leave_ = true;
  window_.Tell(app_.Text(text::kStaysWhileBusy));
  cancel = -1;
}

bool CompareLine::IsTaken() {
  if (IsLineFree(app_)) return false;
  window_.Tell(app_.Text(text::kMonitorRuns));
  app_.Status(app_.Text(text::kMonitorRuns));
  return true;
}

CompareRows& CompareLine::Rows() const { return CompareRows::Of(window_); }

const Comparison& CompareLine::Compared() const { return Rows().Shown()->Compared(); }

WorkListener CompareLine::Listener(int started) {
  WorkListener listener;
  listener.began = [this, started](int number, int count, const std::string& what) {
    ShowStep(started, number, count, what);
  };
  listener.stop = [this] { return stop_; };
  return listener;
}

void CompareLine::ShowStep(int doing, int number, int count, const std::string& what) {
  window_.pbWork.SetMax(count);
  window_.pbWork.SetValue(number);
  window_.Tell(FormatText(app_.Text(text::kProgress),
                          {app_.Text(doing), what, std::to_string(number), std::to_string(count)}));
}

// Sending reads the meter too; a step that bears the name of a row sends it.
SendListener CompareLine::Sender() {
  auto titles = std::make_shared<std::set<std::string>>();
  for (const ComparisonRow& row : Compared().Rows()) {
    titles->insert(PlaceTitle(row.place, app_.state.Spoken()));
  }
  SendListener listener;
  listener.began = [this, titles](int number, int count, const std::string& what) {
    ShowStep(titles->contains(what) ? text::kSendingRows : text::kReadingSide, number, count, what);
  };
  listener.stop = [this] { return stop_; };
  listener.ended = [this](const SentRow& row) { Rows().SetResult(row); };
  return listener;
}

// --- reading -----------------------------------------------------------------------------------------------

std::optional<Snapshot> CompareLine::ReadMeter(Operation& operation) {
  if (!operation.OpenPortOrTell()) {
    window_.Tell(CommunicationErrorText(app_));
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
  window_.Tell(failure);
  operation.End(failure);
  LeaveIfAsked(false);
  return std::nullopt;
}

void CompareLine::LeaveIfAsked(bool stays) {
  if (std::exchange(leave_, false) && !stays) window_.List().Unload(window_.Name());
}

void CompareLine::TakeMeter(int side) {
  if (IsTaken()) return;
  Operation operation(app_, window_, window_.cmdSide(side).FullName(), text::kReadingSide);
  const auto meter = ReadMeter(operation);
  if (!meter) return;
  window_.Put(side, SideOfMeter(*meter));
  operation.End(window_.stbCompare.Panel(1));
  FocusWhatIsNext(side);
  LeaveIfAsked(false);
}

// The button that began it could not keep the focus while it was locked.
void CompareLine::FocusWhatIsNext(int side) {
  if (Rows().Shown() != nullptr) return window_.SetFocus(Rows().grdRows);
  window_.SetFocus(window_.cmdSide(side == frmCompare::kLeft ? frmCompare::kRight : frmCompare::kLeft));
}

// --- sending -----------------------------------------------------------------------------------------------

void CompareLine::cmdSend_Click() {
  if (IsTaken() || !Rows().HasTarget()) return;
  const std::size_t count = Rows().Shown()->Chosen().size();
  if (count == 0) return app_.Show(app_.Text(text::kNoRowTicked), MessageIcon::kInformation);
  const std::string question = FormatText(app_.Text(text::kSendQuestion),
                                          {std::to_string(count), Compared().Right().identity.id_number});
  AskAndSend(question, cmdSend.Name(), &CompareLine::SendChosen);
}

bool CompareLine::MayRestore() {
  if (IsTaken() || !Rows().HasTarget()) return false;
  const CompareSide& left = Compared().Left();
  const CompareSide& right = Compared().Right();
  if (left.kind != SideKind::kSnapshot) {
    app_.Show(app_.Text(text::kRestoreSource), MessageIcon::kInformation);
    return false;
  }
  if (SameMeter(left.identity, right.identity)) return true;
  app_.Show(FormatText(app_.Text(text::kRestoreOther), {left.identity.id_number, right.identity.id_number}),
            MessageIcon::kStop);
  return false;
}

void CompareLine::cmdRestore_Click() {
  if (!MayRestore()) return;
  const std::string question =
      FormatText(app_.Text(text::kRestoreQuestion),
                 {Compared().Right().identity.id_number,
                  LastComponent(Compared().Left().name) + ", " + Compared().Left().identity.date});
  AskAndSend(question, cmdRestore.Name(), &CompareLine::RestoreLeft);
}

// The window may be gone, and the line taken, when the box is answered.
void CompareLine::AskAndSend(const std::string& question, const std::string& command,
                             std::string (CompareLine::*send)()) {
  if (!app_.AskOkCancel(question)) return;
  if (!window_.List().Exists(&window_) || Rows().Shown() == nullptr || IsTaken()) return;
  Operation operation(app_, window_, command, text::kSendingRows);
  if (!operation.OpenPortOrTell()) return window_.Tell(CommunicationErrorText(app_));
  std::string end;
  {
    const Work work(*this);
    Rows().ForgetResults();
    end = (this->*send)();
  }
  window_.FillLists();
  operation.End(end);
  window_.Tell(end);
  Rows().ShowSent();
  window_.SetFocus(Rows().grdRows);
  if (!halt_.empty()) app_.Show(std::exchange(halt_, {}), MessageIcon::kStop);
  LeaveIfAsked(sent_);
}

std::string CompareLine::SendChosen() {
  const CompareSide source = Compared().Left();
  const MeterIdentity expected = Compared().Right().identity;
  const SendReport report = SendRows(app_, source, Rows().Shown()->Chosen(), Sender(), &expected);
  LookAgain(report);
  return EndText(report, {});
}

std::string CompareLine::RestoreLeft() {
  const CompareSide point = Compared().Left();
  const RestoreReport report = RestoreMeter(app_, point, Sender());
  for (const SentRow& row : report.left) Rows().SetResult(row);
  LookAgain(report.sent);
  std::string outcome = app_.Text(text::kRestoredUnproven);
  if (report.Equal()) {
    outcome = app_.Text(text::kRestoredEqual);
  } else if (report.verified) {
    outcome = FormatText(app_.Text(text::kRestoredLeft), {std::to_string(report.left.size())});
  }
  return EndText(report.sent, outcome);
}

// What the meter holds now stands on the right side, or that it is not known.
void CompareLine::LookAgain(const SendReport& report) {
  sent_ = AnythingSent(report);
  if (!sent_) return;
  if (report.halt == SendHalt::kDone && !stop_) {
    const SnapshotResult result = ReadSnapshot(app_, Listener(text::kReadingSide));
    if (!result.stopped && AnyKnown(result.snapshot)) {
      return window_.ShowTarget(result.snapshot);
    }
  }
  window_.ShowTarget(AfterSending(report, app_.Text(text::kNotReadSince)));
}

std::string CompareLine::EndText(const SendReport& report, const std::string& outcome) {
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

void CompareLine::SaveParameter_Click() {
  if (IsTaken()) return;
  Operation operation(app_, window_, SaveParameter.Name(), text::kSaveStarted);
  const bool saved = SaveToDevice(app_);
  operation.ShowNormalPointer();
  if (!saved) app_.Show(app_.Text(text::kNotSaved), MessageIcon::kStop);
  const std::string end = app_.Text(text::kSaveCompleted) + " " + app_.state.LastErrorText;
  operation.End(end);
  window_.Tell(saved ? end : app_.Text(text::kNotSaved));
}

}  // namespace vlt
