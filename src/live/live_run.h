// SPDX-License-Identifier: GPL-3.0-or-later
// A run of a window that watches the meter: what is asked again and again until it is stopped. The measure
// page, the stations page and the waveform tab hold one each.
//
// Every exchange gives way to events, so Stop, or the end of the window, may come in the middle of any work.
// They only leave a note then: the work looks at GoesOn() between its exchanges, and what ends the run
// follows when it has returned. So no exchange lies inside another, and none starts in a destructor.
#pragma once

#include <functional>

#include "state/app.h"

namespace vlt {

class LiveRun {
 public:
  // `stopped` gives the window its controls back after each Stop, the run's lock being released. `may_ask` is
  // false when the meter must be left alone: another operation holds the lock, or the window is gone.
  LiveRun(App& app, Form& form, std::function<void(bool may_ask)> stopped);
  LiveRun(const LiveRun&) = delete;
  LiveRun& operator=(const LiveRun&) = delete;

  // Takes the lock and runs `prepare`, which asks the meter for what the run needs and opens its file. When
  // it returns true the run is on and `first` runs, in which a window makes its first cycle, or all of them.
  // When it returns false the run ends as by Stop. The port must be open. Nothing happens while work is under
  // way or the window is leaving.
  void Start(const std::function<bool()>& prepare, const std::function<void()>& first);
  // Runs `work`, one cycle, when a run is on and no work under way; a tick that falls into a cycle is lost.
  void Cycle(const std::function<void()>& work);
  // Runs `work`, a question outside of a run, when no work is under way. There is no run to stop meanwhile.
  void Ask(const std::function<void()>& work);
  // Ends the run, now or when the work under way has returned.
  void Stop();
  // Stop at the end of the window: nothing starts any more.
  void Leave();

  // Work is under way: the line is taken.
  bool Busy() const { return busy_; }
  bool Leaving() const { return leaving_; }
  // No Stop has come into the work under way.
  bool GoesOn() const { return !stop_pending_; }
  // Lets events run for so many milliseconds, or until a Stop comes. As GoesOn().
  bool Pause(int ms);

  int Running = 0;  // 1 while a run is on

 private:
  void Do(const std::function<void()>& work);
  void Finish();
  void SetLock(bool locked);

  App& app_;
  Form& form_;
  std::function<void(bool may_ask)> stopped_;
  bool busy_ = false;
  bool stop_pending_ = false;
  bool owns_lock_ = false;
  bool leaving_ = false;
};

}  // namespace vlt
