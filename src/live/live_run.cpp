// SPDX-License-Identifier: GPL-3.0-or-later
#include "live/live_run.h"

#include <algorithm>
#include <utility>

#include "link/modbus.h"
#include "state/form_lock.h"

namespace vlt {
namespace {

constexpr int kPauseStepMs = 20;

}  // namespace

LiveRun::LiveRun(App& app, Form& form, std::function<void(bool may_ask)> stopped)
    : app_(app), form_(form), stopped_(std::move(stopped)) {}

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
    Running = 0;
    StopLooking();
    if (owns_lock_) SetLock(false);
    throw;
  }
  busy_ = false;
  if (app_.state.Lost.away && !stop_pending_) TakeLoss();
}

void LiveRun::Start(const std::function<bool()>& prepare, const std::function<void()>& first) {
  if (busy_ || leaving_) return;
  Do([&] {
    SetLock(true);
    if (!prepare()) stop_pending_ = true;
    if (stop_pending_) return;
    Running = 1;
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

void LiveRun::Leave() {
  leaving_ = true;
  Stop();
}

void LiveRun::Finish() {
  stop_pending_ = false;
  Running = 0;
  StopLooking();
  // A lock that another operation holds is not ours to release, and its exchange must not be cut into.
  const bool foreign = IsForeignLock();
  if (!foreign) SetLock(false);
  const bool exists = app_.windows.Exists(&form_);
  stopped_(!foreign && exists);
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
