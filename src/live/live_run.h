// SPDX-License-Identifier: GPL-3.0-or-later
// A run of a window that watches the meter: what is asked again and again until it is stopped. The measure
// page, the stations page and the waveform tab hold one each.
//
// Every exchange gives way to events, so Stop, or the end of the window, may come in the middle of any work.
// They only leave a note then: the work looks at GoesOn() between its exchanges, and what ends the run
// follows when it has returned. So no exchange lies inside another, and none starts in a destructor.
//
// What a run says beyond its window is the same for all of them: SharedState::StopRequest and PvRunning, the
// words of its state in a status bar, and the end of a process whose program is gone already.
//
// A run that can wait (ComeBack) survives the loss of its port. While it waits the port is closed: what a
// cycle asks fails at once, as on a line that is gone. Once a second the port is looked for; when it is back
// the meter must prove that it is the one from before, and only then the run goes on.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "link/port_return.h"
#include "meter/meter_mark.h"
#include "state/app.h"

namespace vlt {

class LiveRun {
 public:
  // `stopped` gives the window its controls back after each Stop, and behind work that came to an unforeseen
  // end, the run's lock being released. `may_ask` is false when the meter must be left alone: another
  // operation holds the lock, or the window is gone, or the run has ended by a fault.
  LiveRun(App& app, Form& form, std::function<void(bool may_ask)> stopped);
  ~LiveRun() { StopLooking(); }
  LiveRun(const LiveRun&) = delete;
  LiveRun& operator=(const LiveRun&) = delete;

  // False when no run may start now: work is under way, a run is on, or the window is leaving. Else a stop
  // that was asked for earlier is forgotten.
  bool MayStart();
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
  // Stop as a person or a failure asks for it: StopRequest is set, too, unless it would stop the run of
  // another window.
  void RequestStop();
  // Stop at the end of the window: nothing starts any more.
  void Leave();
  // Takes a stop that was asked for by StopRequest, by whomever. False when the run is to end.
  bool HeedRequest();
  // A stop that was asked for is no reason to end; one that was heeded stays.
  void ForgetRequest() { app_.state.StopRequest = 0; }

  // Another operation has the lock, and with it the meter: a window that closes must not ask for a stop then,
  // which would be the other's.
  bool IsForeignLock() const { return app_.state.UiLocked && !owns_lock_; }
  // Work is under way: the line is taken.
  bool Busy() const { return busy_; }
  bool Leaving() const { return leaving_; }
  // A run has begun, and its window has not got its controls back.
  bool Begun() const { return begun_; }
  // No Stop has come into the work under way.
  bool GoesOn() const { return !stop_pending_; }
  // Lets events run for so many milliseconds, or until a Stop comes. As GoesOn().
  bool Pause(int ms);

  // When SharedState::PvRunning tells of a run. One that never sets it is told by its timer (Form::IsLive):
  // its end comes with the last tick, by EndAlone().
  enum class Pv : std::uint8_t { kNever, kFromStart, kFromFirstCycle };
  // How a run is told beyond the controls that its window takes.
  struct Telling {
    StatusBar& bar;  // its first panel says the state of the run, with date and time
    // What stands behind the words of a state, with its blank in front; empty mostly.
    std::function<std::string(int words)> behind;
    Pv pv = Pv::kNever;
  };
  void TellBy(Telling telling) { telling_.emplace(std::move(telling)); }
  // Says a state of the run: `words` is a text id.
  void Say(int words);
  // The words with which the run that is on will end; without it those of an ordinary end.
  void EndWith(int words) { end_words_ = words; }
  // The words of the end, and the end of the process when the program is gone.
  void EndAlone();

  // What a run does when its port was lost.
  struct ComeBack {
    // Asks the meter whether it is the one of this run. Empty: whatever hangs on the port goes on, and the
    // window judges it by itself.
    std::function<MeterAnswer()> prove;
    // Told when the run begins to wait, when what it waits for changes, and when it goes on.
    std::function<void()> changed;
    // The ID number of who answers, for the mark in the log; empty when it is not known.
    std::function<std::string()> meter;
  };
  // From here on runs wait for their port.
  void WaitBy(ComeBack come_back) { come_back_ = std::move(come_back); }
  // The port is away, or not proven yet.
  bool Waiting() const { return waiting_; }
  // Why, in the language in force; empty while the run does not wait.
  std::string WaitText() const;
  // What the next record has to say of a gap, without a comma; empty mostly. A loss that was met just now is
  // taken. MarkLogged when the record was written.
  std::string GapMark();
  void MarkLogged();

  // How often a run asks a meter for its ID number before it leaves that alone.
  static constexpr int kMostNameQuestions = 3;

  int Running = 0;  // 1 while a run is on

 private:
  void Do(const std::function<void()>& work);
  void Finish(bool may_ask = true);
  void SetLock(bool locked);
  void HoldPv(Pv from);
  bool ReleasePv();
  // live_run_wait.cpp
  void StartLooking();
  void StopLooking();
  void Look();
  void TakeLoss();
  void TryReturn();
  void Prove(const LostPort& before);
  void GoOn(const LostPort& before);
  void TellWait();
  std::string MarkOfGap() const;

  App& app_;
  Form& form_;
  std::function<void(bool may_ask)> stopped_;
  bool busy_ = false;
  bool stop_pending_ = false;
  bool owns_lock_ = false;
  bool leaving_ = false;
  bool begun_ = false;  // from a start until its window has its controls back

  std::optional<Telling> telling_;
  int end_words_;
  bool holds_pv_ = false;

  ComeBack come_back_;
  EventQueue::TimerId looking_ = 0;
  bool waiting_ = false;
  Sight sight_ = Sight::kAway;            // of the adapter, while waiting
  MeterProof proof_ = MeterProof::kSame;  // of the last one that has failed; kSame: none has
  std::string differs_;
  std::int64_t ask_again_ms_ = 0;  // a meter that has failed its proof is left alone until then
  // The gap that is to be told in the log.
  std::string gap_port_;
  std::string gap_from_;
  std::string gap_to_;  // empty while it lasts
  bool begin_logged_ = false;
};

}  // namespace vlt
