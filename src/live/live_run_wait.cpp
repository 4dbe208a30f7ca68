// SPDX-License-Identifier: GPL-3.0-or-later
// How a run waits for a port that was lost.
#include "link/port.h"
#include "live/live_run.h"
#include "platform/clock.h"
#include "resources/string_table.h"
#include "resources/text_ids_heal.h"

namespace vlt {
namespace {

constexpr int kAskAgainMs = 2000;  // behind a meter that was silent or another one

}  // namespace

void LiveRun::StartLooking() {
  waiting_ = false;
  gap_from_.clear();
  if (!come_back_.changed || looking_ != 0) return;
  looking_ = app_.platform.events.StartTimer(kPortLookMs, [this] { app_.windows.Run([this] { Look(); }); });
}

void LiveRun::StopLooking() {
  if (looking_ != 0) app_.platform.events.StopTimer(looking_);
  looking_ = 0;
  waiting_ = false;
}

// A tick between two cycles.
void LiveRun::Look() {
  if (busy_ || Running != 1) return;
  if (!waiting_ && IsPortLost(app_)) TakeLoss();
  if (!waiting_) return;
  Do([this] { TryReturn(); });
  if (stop_pending_) Finish();
}

void LiveRun::TakeLoss() {
  if (waiting_ || Running != 1 || looking_ == 0) return;
  waiting_ = true;
  sight_ = Sight::kAway;
  proof_ = MeterProof::kSame;
  ask_again_ms_ = 0;
  // A gap that no record has told yet goes on.
  if (gap_from_.empty()) {
    gap_from_ = DateTimeText(app_.state.Lost.since);
    begin_logged_ = false;
  }
  gap_port_ = "COM" + std::to_string(app_.state.Lost.port);
  gap_to_.clear();
  TellWait();
}

// Opening and asking give way to events: the line is taken meanwhile.
void LiveRun::TryReturn() {
  if (app_.platform.clock.NowMs() < ask_again_ms_) return;
  const LostPort before = app_.state.Lost;
  const std::optional<Sighting> found = LookForPortInTurn(app_);
  if (!found) return;
  if (OpenFound(app_, *found)) {
    Prove(before);
    return;
  }
  const Sight sight = found->sight == Sight::kUnsure ? Sight::kUnsure : Sight::kAway;
  const bool same = sight == sight_ && proof_ == MeterProof::kSame;
  sight_ = sight;
  proof_ = MeterProof::kSame;
  if (!same) TellWait();
}

void LiveRun::Prove(const LostPort& before) {
  const MeterAnswer answer = come_back_.prove ? come_back_.prove() : MeterAnswer{};
  if (answer.proof == MeterProof::kSame) {
    // It may have gone again while it was asked.
    if (!IsPortLost(app_)) GoOn(before);
    return;
  }
  CloseReturned(app_, before);
  ask_again_ms_ = app_.platform.clock.NowMs() + kAskAgainMs;
  const std::string differs = answer.proof == MeterProof::kOther ? answer.why : std::string();
  const bool told = answer.proof == proof_ && differs == differs_;
  proof_ = answer.proof;
  differs_ = differs;
  if (!told) TellWait();
}

void LiveRun::GoOn(const LostPort& before) {
  waiting_ = false;
  gap_to_ = DateTimeText(app_.platform.clock.Now());
  const std::int64_t away_ms = app_.platform.clock.NowMs() - before.since_ms;
  app_.Status(FormatText(app_.Text(text::kPortCameBack),
                         {LostPortName(app_), std::to_string((away_ms + 500) / 1000)}));
  come_back_.changed();
}

void LiveRun::TellWait() {
  app_.Status(WaitText());
  come_back_.changed();
}

std::string LiveRun::WaitText() const {
  if (!waiting_) return {};
  if (proof_ == MeterProof::kSame) return LossText(app_, sight_);
  const int id = proof_ == MeterProof::kSilent ? text::kMeterSilent : text::kMeterOther;
  return FormatText(app_.Text(id), {LostPortName(app_), differs_});
}

std::string LiveRun::GapMark() {
  if (app_.state.Lost.away) TakeLoss();
  const std::string mark = MarkOfGap();
  const std::string meter = mark.empty() || !come_back_.meter ? std::string() : come_back_.meter();
  return meter.empty() ? mark : FormatText(app_.Text(text::kGapOfMeter), {mark, meter});
}

std::string LiveRun::MarkOfGap() const {
  if (gap_from_.empty()) return {};
  if (!gap_to_.empty()) {
    return FormatText(app_.Text(text::kGapEnds), {gap_port_, gap_from_, gap_to_});
  }
  return begin_logged_ ? "" : FormatText(app_.Text(text::kGapBegins), {gap_port_, gap_from_});
}

void LiveRun::MarkLogged() {
  begin_logged_ = true;
  if (!gap_to_.empty()) gap_from_.clear();
}

}  // namespace vlt
