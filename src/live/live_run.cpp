// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/live_run.h"

#include <algorithm>
#include <utility>

#include "link/modbus.h"
#include "resources/text_ids.h"
#include "state/form_lock.h"

namespace vlt {
namespace {

constexpr int kPauseStepMs = 20;

}  // namespace

LiveRun::LiveRun(App& app, Form& form, std::function<void(bool may_ask)> stopped)
    : app_(app), form_(form), stopped_(std::move(stopped)), end_words_(text::kDisplayEnded) {}

void LiveRun::SetLock(bool locked) {
  FormLock(app_, form_, locked ? 0 : 1);
  owns_lock_ = locked;
}

// Work that comes to an unforeseen end takes the run with it: a lock that nobody gives back would stop the
// whole program.
void LiveRun::Do(const std::function<void()>& work) {
  busy_ = true;
  try {
    work();
  } catch (...) {
    busy_ = false;
    stop_pending_ = false;
    if (begun_) Finish(false);
    throw;
  }
  busy_ = false;
  if (app_.state.Lost.away && !stop_pending_) TakeLoss();
}

bool LiveRun::MayStart() {
  if (busy_ || leaving_ || Running == 1) return false;
  ForgetRequest();
  return true;
}

void LiveRun::HoldPv(Pv from) {
  if (!telling_ || telling_->pv != from) return;
  app_.state.PvRunning = 1;
  holds_pv_ = true;
}

// False when it was not held.
bool LiveRun::ReleasePv() {
  if (!holds_pv_) return false;
  holds_pv_ = false;
  app_.state.PvRunning = 0;
  return true;
}

void LiveRun::Start(const std::function<bool()>& prepare, const std::function<void()>& first) {
  if (busy_ || leaving_) return;
  begun_ = true;
  end_words_ = text::kDisplayEnded;
  HoldPv(Pv::kFromStart);
  Do([&] {
    SetLock(true);
    if (!prepare()) stop_pending_ = true;
    if (stop_pending_) return;
    Running = 1;
    HoldPv(Pv::kFromFirstCycle);
    StartLooking();
    first();
  });
  if (stop_pending_) Finish();
}

void LiveRun::Cycle(const std::function<void()>& work) {
  if (busy_ || Running != 1) return;
  Do([&] {
    if (waiting_) TryReturn();
    if (GoesOn()) work();
  });
  if (stop_pending_) Finish();
}

void LiveRun::Ask(const std::function<void()>& work) {
  if (busy_) return;
  Do(work);
  stop_pending_ = false;
}

void LiveRun::Stop() {
  Running = 0;
  if (busy_) {
    stop_pending_ = true;
  } else {
    Finish();
  }
}

void LiveRun::RequestStop() {
  if (app_.state.PvRunning == 0 || holds_pv_) app_.state.StopRequest = 1;
  Stop();
}

// Behind a foreign lock the request would be for whoever holds it.
void LiveRun::Leave() {
  leaving_ = true;
  IsForeignLock() ? Stop() : RequestStop();
}

bool LiveRun::HeedRequest() {
  if (app_.state.StopRequest != 1) return GoesOn();
  Stop();
  return false;
}

void LiveRun::Say(int words) {
  if (!telling_) return;
  telling_->bar.SetPanel(1, app_.Stamped(app_.Text(words) + telling_->behind(words)));
}

void LiveRun::EndAlone() {
  Say(end_words_);
  if (!app_.state.AppRunning) app_.platform.events.EndProcess();
}

void LiveRun::Finish(bool may_ask) {
  stop_pending_ = false;
  Running = 0;
  StopLooking();
  // A lock that another operation holds is not ours to release, and its exchange must not be cut into.
  const bool foreign = IsForeignLock();
  if (!foreign) SetLock(false);
  const bool exists = app_.windows.Exists(&form_);
  stopped_(may_ask && !foreign && exists);
  const bool begun = std::exchange(begun_, false);
  if (ReleasePv()) {
    EndAlone();
  } else if (begun) {
    Say(end_words_);
  }
  if (!foreign) app_.windows.RunHasEnded(form_);
}

bool LiveRun::Pause(int ms) {
  const std::int64_t end = app_.platform.clock.NowMs() + ms;
  for (std::int64_t left = ms; left > 0 && GoesOn(); left = end - app_.platform.clock.NowMs()) {
    WaitMs(app_, static_cast<int>(std::min<std::int64_t>(left, kPauseStepMs)));
  }
  return GoesOn();
}

}  // namespace vlt
